#!/usr/bin/env bash
# The report by its command line, on the samples: what the page says against log and tables.
#   run_program.sh CAMPIVA CAMPIVA-INFORME SAMPLES WORK SCHEMA
set -euo pipefail
campiva=$1 informe=$2 samples=$3 work=$4 schema=$5 check_json=$(dirname "$(realpath "$0")")/check_json.py
rm -rf "$work"
mkdir -p "$work"
cd "$work"
export XDG_CONFIG_HOME=$work/config
tables=(Modulos.txt Titulares.txt Parcelas.txt Subparcelas.txt Parajes.txt Cotitulares.txt)

failures=0
fail() {
  echo "$*" >&2
  failures=1
}
equal() { # what, got, expected
  [ "$2" = "$3" ] || fail "$1: $2 instead of $3"
}
status() { # expected, command...
  local status=0
  "${@:2}" > stdout 2> stderr || status=$?
  equal "status of ${*:2}" $status "$1"
}
whole() { # page: each place has a name of its own, and each link leads to one
  equal "names twice in $1" "$(grep -o ' id="[^"]*"' "$1" | sort | uniq -d)" ''
  equal "links to nowhere in $1" "$(comm -13 <(grep -o ' id="[^"]*"' "$1" | cut -d'"' -f2 | sort -u) \
    <(grep -o ' href="#[^"]*"' "$1" | cut -d'#' -f2 | cut -d'"' -f1 | sort -u))" ''
}
number() { # page, text in front of it: the number that stands in the next cell
  sed -n "s|.*<td>$2</td><td class=\"n\">\([0-9.]*\)</td>.*|\1|p" "$1" | head -1 | tr -d .
}

cp "$samples/villanueva_con_faltas.txt" entrada.txt
"$campiva" 0 entrada.txt "${tables[@]}" < /dev/null > /dev/null
status 0 "$informe" --csv entrada.csv --geojson entrada.geojson entrada.ERR
equal "lines of the sheet" "$(wc -l < entrada.csv)" $(($(wc -l < entrada.ERR) + 1))
grep -q '^entrada.ERR: ida, .* 0 sin explicar$' stdout || fail "the summary doesn't balance"
while read -r code count _; do
  equal "$code" "$count" "$(grep -c "^$code:" entrada.ERR)"
done < <(grep -E '^  [EW][0-9]{3} ' stdout)
for table in "${tables[@]}"; do
  [ $table = Cotitulares.txt ] || [ $table = Parcelas.txt ] ||
    equal "$table" "$(number entrada.html "filas de $table")" $(($(wc -l < $table) - 1))
done
whole entrada.html
equal "PR lines" "$(number entrada.html 'líneas PR')" "$(grep -ac ^PR entrada.txt)"
equal "E103" "$(number entrada.html 'sin su parcela (E103)')" "$(grep -c ^E103: entrada.ERR)"

cp -r "$samples/villanueva_dibujos_con_faltas" dibujos
cp -r "$samples/villanueva_tablas_con_faltas" tablas
"$campiva" 1 "${tables[@]/#/tablas/}" dibujos/poligonos.txt dibujos/ortos.TOP 0 0 0 \
  < /dev/null > /dev/null 2>&1 || [ $? -eq 1 ]
status 0 "$informe" --tablas tablas dibujos/045127.ERR
grep -q ': vuelta, .* 0 sin explicar$' stdout || fail "the way back doesn't balance"
whole dibujos/045127.html
equal "PR records" "$(number dibujos/045127.html 'registros PR')" \
  "$(cut -b10-11 dibujos/045127.R | grep -c PR)"

# For programs: by pipes too, and nothing else goes down them.
of_list=(--tablas tablas --lista dibujos/poligonos.txt --ortos dibujos/ortos.TOP)
if "$informe" --json - entrada.ERR > way_out.json 2> stderr; then
  python3 "$check_json" "$schema" way_out.json entrada.ERR || fail "the way out for programs"
  status 0 "$informe" --json way_back.json --tablas tablas dibujos/045127.ERR
  python3 "$check_json" "$schema" way_back.json dibujos/045127.ERR || fail "the way back for programs"
  python3 "${check_json%/*}/recount_surfaces.py" dibujos/poligonos.txt dibujos/045127.R way_back.json ||
    fail "another surface by a second count"
  rm dibujos/045127.html
  "$informe" --json - "${of_list[@]}" - < dibujos/045127.ERR > piped.json
  [ ! -e dibujos/045127.html ] || fail "a page that nobody asked for"
  equal "what is told of a piped log" "$(grep -v '"hecho"' piped.json | grep -cvxFf way_back.json)" 1 # its name
  # A batch of the two runs, and of a job that can't be done.
  printf 'ida\t.\nvuelta\tdibujos\nida\tno_hay\n' > lote.tsv
  cp tablas/* dibujos
  status 1 env CAMPIVA="$campiva" "$(dirname "$campiva")/campiva-lote" lote.tsv
  status 3 "$informe" --estricto --json lote.json --resumen lote.tsv.resultados
  python3 "$check_json" "$(dirname "$schema")/summary.schema.json" lote.json || fail "the batch for programs"
  equal "a piped summary" "$("$informe" --json - --sin-informes --resumen lote.tsv.resultados | grep -vc '"hecho"')" \
    "$(grep -vc '"hecho"' lote.json)"
  whole lote.tsv.resultados/informes/2.html
else
  equal "the build without --json" "$(grep -c 'nlohmann-json' stderr)" 1
fi
# Against another state, of whatever form: none differs from the one that it was made of.
cp "$samples/villanueva.txt" intercambio.txt
mkdir sus_tablas
"$campiva" 0 intercambio.txt "${tables[@]/#/sus_tablas/}" < /dev/null > /dev/null
cp -r "$samples/villanueva_dibujos" sus_dibujos
"$campiva" 1 "${tables[@]/#/sus_tablas/}" sus_dibujos/poligonos.txt sus_dibujos/ortos.TOP 0 0 0 \
  < /dev/null > /dev/null
forms=(intercambio.txt sus_tablas sus_dibujos/045127.R)
for now in "${forms[@]}"; do
  for before in "${forms[@]}"; do
    status 0 "$informe" --html cambios.html "$now" --contra "$before"
    equal "$now" "$(head -n 1 stdout)" "$now: sin cambios en titulares, participaciones, superficies, subparcelas ni parajes, contra $before"
  done
done
python3 "$(dirname "$check_json")/change_municipality.py" intercambio.txt cambiado.txt > expected.txt
status 0 "$informe" --cambios cambios.csv cambiado.txt --contra intercambio.txt
diff <(sed 1d cambios.csv | cut -d';' -f1 | sort | uniq -c) expected.txt || fail "the changes aren't those made"
whole cambiado_cambios.html
if "$informe" --json - cambiado.txt --contra intercambio.txt > changes.json 2> stderr; then
  python3 "$check_json" "$schema" changes.json || fail "the changes for programs"
  "$informe" --json - --tablas sus_tablas sus_dibujos/045127.ERR --contra cambiado.txt > changes.json
  python3 "$check_json" "$schema" changes.json sus_dibujos/045127.ERR || fail "those of a run"
fi
status 0 "$informe" --tablas sus_tablas sus_dibujos/045127.ERR --contra cambiado.txt
whole sus_dibujos/045127.html
equal "new parcels on the maps" "$(grep -c '<path id="p[0-9-]*" class="[a-z ]* nueva"' sus_dibujos/045127.html)" \
  "$(grep -c 'parcela desaparecida' expected.txt > /dev/null && awk '/desaparecida/ { print $1 }' expected.txt)"
equal "changed polygons on the map of all" \
  "$(grep -c '<title>Polígono [0-9]*: .*; 9 parcelas cambian</title>' sus_dibujos/045127.html)" 4
status 1 "$informe" intercambio.txt --contra no_hay
grep -q '^campiva-informe: no_hay no existe$' stderr || fail "a state that isn't there isn't told"
status 2 "$informe" intercambio.txt --cambios cambios.csv
mkfifo tuberia
for states in 'intercambio.txt --contra tuberia' 'tuberia --contra intercambio.txt' \
  'intercambio.txt --contra /dev/null' 'entrada.ERR --contra tuberia'; do
  status 1 timeout 20 "$informe" $states
  grep -q ' no es un fichero ni una carpeta$' stderr || fail "a state that is none isn't told of $states"
done
rm tuberia

# The way back is tried in a folder of its own: nothing changes but for the page, whatever comes of it.
mkdir tmp
sums() {
  find . -path ./tmp -prune -o -type f ! -name '*_ensayo.html' ! -name 'std*' ! -name cambios.csv -exec md5sum {} + | sort | md5sum
}
try() { # status, list, options: nothing of it is left
  local before=$(sums)
  TMPDIR=$work/tmp status "$1" "$informe" --ensayo "${@:2}"
  equal "the files behind the trial of $2" "$(sums)" "$before"
  equal "what is left of it" "$(ls tmp)" ''
}
try 0 dibujos/poligonos.txt --tablas tablas --cambios cambios.csv
whole dibujos/045127_ensayo.html
grep -q 'campiva-ensayo' dibujos/045127_ensayo.html && fail "the page names the folder of the trial"
grep -q '<p class="sobre">Ensayo: no se ha cambiado nada</p>' dibujos/045127_ensayo.html ||
  fail "the page doesn't say that it is a trial"
cp -r dibujos de_verdad
cp -r tablas tablas_de_verdad
"$campiva" 1 "${tables[@]/#/tablas_de_verdad/}" de_verdad/poligonos.txt de_verdad/ortos.TOP 1 0 0 \
  < /dev/null > /dev/null 2>&1 || [ $? -eq 1 ]
status 0 "$informe" --cambios hechos.csv tablas_de_verdad --contra tablas
equal "changes" "$(wc -l < hechos.csv)" 5
cmp cambios.csv hechos.csv || fail "the trial told other changes than the run made"
rm -r de_verdad tablas_de_verdad
# What a real run writes in the tables while a trial goes on hides no change.
mkdir bin
cp "$informe" bin
cp -r tablas tablas_de_otro
printf '#!/bin/sh\nsed -i 5d "%s"\nexec "%s" "$@"\n' "$work/tablas_de_otro/Parcelas.txt" "$campiva" > bin/campiva
chmod +x bin/campiva
status 0 bin/campiva-informe --ensayo --cambios cambios_aparte.csv dibujos/poligonos.txt --tablas tablas_de_otro
cmp tablas/Parcelas.txt tablas_de_otro/Parcelas.txt > /dev/null && fail "nobody wrote the tables"
cmp cambios.csv cambios_aparte.csv || fail "what is written while a trial goes on changes what it tells"
rm -r bin tablas_de_otro cambios_aparte.csv
try 0 sus_dibujos/poligonos.txt --tablas sus_tablas --conserva --crea --contra intercambio.txt
grep -q 'Cambios contra intercambio.txt: sin cambios en titulares' stdout || fail "the trial of what agrees changes something"
# Rows of subparcels that "Modificar" would drop are no part of a parcel that changes.
cp -r sus_tablas sin_parcela
sed -i 5d sin_parcela/Parcelas.txt
try 0 sus_dibujos/poligonos.txt --tablas sin_parcela
for where in stdout sus_dibujos/045127_ensayo.html; do
  grep -q 'subparcelas sin su parcela, que no se comparan: [1-9][0-9]* antes y 0 ahora' $where ||
    fail "$where doesn't tell of the rows that have no parcel"
done
# What the run would say of its inputs stands in the page and on the terminal, without the trial's folder.
cp -r sus_tablas en_utf8
for table in Titulares Parcelas; do iconv -f CP1252 -t UTF-8 sus_tablas/$table.txt > en_utf8/$table.txt; done
try 3 sus_dibujos/poligonos.txt --tablas en_utf8 --estricto
for table in 'Parcelas.txt' '[^ ]*en_utf8/Titulares.txt'; do
  for where in stdout sus_dibujos/045127_ensayo.html; do
    grep -q "El archivo $table parece estar en UTF-8" $where || fail "$where doesn't say what the trial said of $table"
  done
done
for name in dicho.txt Parcelas.txt lista tablas; do
  cp sus_dibujos/poligonos.txt sus_dibujos/$name
  try 0 sus_dibujos/$name --tablas sus_tablas
  rm sus_dibujos/$name
done
for mine in ERR R M; do
  try 1 dibujos/poligonos.txt --tablas tablas --csv dibujos/045127.$mine
  grep -q "045127.$mine no se escribe" stderr || fail "a trial that would write over $mine isn't told"
done
TMPDIR=tmp status 0 "$informe" --ensayo sus_dibujos/poligonos.txt --tablas sus_tablas
cp -r sus_dibujos sin_hojas
rm sin_hojas/ortos.*
TMPDIR=tmp status 0 "$informe" --ensayo sin_hojas/poligonos.txt --tablas sus_tablas
equal "what is left in a folder named from here" "$(ls tmp)" ''
# The page is long enough to find the pipe closed while it is written.
mkfifo tuberia
TMPDIR=$work/tmp "$informe" --html - --ensayo dibujos/poligonos.txt --tablas tablas > tuberia 2> stderr &
head -c 1 < tuberia > /dev/null
wait $! && fail "a page that nobody takes is none"
rm tuberia
equal "what is left behind a pipe that closes" "$(ls tmp)" ''
(trap '' XFSZ; ulimit -f 2; TMPDIR=$work/tmp exec "$informe" --ensayo dibujos/poligonos.txt --tablas tablas) 2> stderr &&
  fail "a trial without room for its copies came to an end"
grep -q 'escribir.*tablas/Parcelas.txt' stderr || fail "the copy that has no room isn't told"
try 1 dibujos/poligonos.txt --tablas sin_tablas
try 1 no_hay.txt --tablas tablas
grep -q 'no_hay.txt no existe' stderr || fail "a list that isn't there isn't told"
try 1 entrada.txt --tablas tablas
TMPDIR=$work/no_hay status 1 "$informe" --ensayo dibujos/poligonos.txt --tablas tablas
grep -q TMPDIR stderr || fail "a trial without room isn't told"
status 2 "$informe" --ensayo --detenido dibujos/poligonos.txt
status 2 "$informe" --crea entrada.ERR

"$informe" --html - "${of_list[@]}" dibujos/045127.ERR > piped.html
whole piped.html
equal "elements behind the page" "$(tail -n 1 piped.html)" '</html>'
status 0 "$informe" "${of_list[@]}" - < dibujos/045127.ERR
equal "its messages" "$(grep -o '<tr id="m[0-9]*" class="[a-z]*"' dibujos/045127.html | md5sum)" \
  "$(grep -o '<tr id="m[0-9]*" class="[a-z]*"' piped.html | md5sum)"
status 3 "$informe" --estricto "${of_list[@]}" dibujos/045127.ERR
status 0 "$informe" --estricto entrada.ERR
"$informe" --html piped.html --csv - entrada.ERR > piped.csv
equal "a piped sheet" "$(wc -l < piped.csv)" $(($(wc -l < entrada.ERR) + 1))
whole piped.html
status 2 "$informe" --html - --csv - entrada.ERR

status 0 "$informe" entrada.ERR dibujos/045127.ERR
equal "summaries" "$(grep -c 'Informe en' stdout)" 2
cp entrada.ERR entrada.ERR.anterior
rm entrada.html
status 1 "$informe" entrada.ERR entrada.ERR.anterior
grep -q 'entrada.html no se escribe' stderr || fail "two logs that have one page aren't told"
[ ! -e entrada.html ] || fail "one of the two pages was written"
echo "a cover of somebody's own" > entrada.html
status 1 "$informe" entrada.ERR
grep -q 'entrada.html queda en .*entrada.html.anterior' stderr || fail "a page of somebody's own went unseen"
equal "what was kept" "$(cat entrada.html.anterior)" "a cover of somebody's own"
whole entrada.html
status 0 "$informe" entrada.ERR
[ ! -e entrada.html.anterior.2 ] || fail "its own page was kept"
rm entrada.html.anterior
if [ -w /dev/full ]; then
  equal "what a full disk is told" "$("$informe" entrada.ERR 2>&1 > /dev/full)" \
    'campiva-informe: no se ha podido escribir en la salida'
fi
status 0 "$informe" --help
status 0 "$informe" --version
status 1 "$informe" no_hay.ERR
grep -q no_hay.ERR stderr || fail "the file that isn't there isn't told"
status 1 "$informe" --tablas no_hay entrada.ERR
rm tablas/Parcelas.txt
mkdir tablas/Parcelas.txt
cp dibujos/045127.html before.html
status 1 "$informe" --tablas tablas dibujos/045127.ERR
grep -q 'Parcelas.txt: Es un directorio$' stderr || fail "a table that can't be read isn't told"
cmp before.html dibujos/045127.html || fail "a page without the table that can't be read"
status 2 "$informe"
status 2 "$informe" --csv a.csv entrada.ERR dibujos/045127.ERR
exit $failures
