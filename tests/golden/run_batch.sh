#!/usr/bin/env bash
# Many municipalities in a batch: what is done, told, and done again.
#   run_batch.sh CAMPIVA SAMPLES WORK; the batch's program stands beside CAMPIVA
set -euo pipefail
. "$(dirname "$0")/batch.sh"
# What somebody chose in a dialog must not count.
mkdir "$XDG_CONFIG_HOME/VexaSoft"
printf '[CampivaAVexa]\nTipoEntrada=1\n' > "$XDG_CONFIG_HOME/VexaSoft/Campiva.ini"
# The state of each job, without its time.
states() { tail -n +2 "$1.resultados/estado.tsv" | cut -f 1-6 | tr '\t' ' '; }

for folder in "a b" c; do
  mkdir "$folder"
  cp "$samples"/villanueva_dibujos/* "$folder"
  cp "$samples/villanueva.txt" "$folder/entrada.txt"
done
mkdir lista && cp "$samples/villanueva_lista.txt" lista/entrada.txt
cp -r "$samples/villanueva_dibujos_con_faltas" faults && cp "$samples"/villanueva_tablas_con_faltas/* faults

printf '# ida\r\n\nida\ta b\nida\tc\nida\tlista\ttipo=lista\nida\tlater\nvuelta\tfaults\n' > out.tsv
status 1 "$batch" -j 2 out.tsv
[ "$(states out.tsv)" = "1 ida a b 0 0 0
2 ida c 0 0 0
3 ida lista 0 4 5
4 ida later 1 - -
5 vuelta faults 1 420 3" ] || { states out.tsv >&2 && fail "the states are others"; }
grep -q "002.BIN no existe" out.tsv.resultados/salidas/5.err

# What failed is done again, and nothing else.
mkdir later && cp "$samples/villanueva.txt" later/entrada.txt
rm -r faults && cp -r "a b" faults
rm c/Parcelas.txt
status 0 "$batch" --reanuda out.tsv
[ "$(states out.tsv | sed -n 4,5p)" = "4 ida later 0 0 0
5 vuelta faults 0 0 0" ] || fail "what failed wasn't done again"
[ ! -e c/Parcelas.txt ] || fail "what was done was done again"

# To Infograf, without a word lost of what the way back told.
printf 'E1 of the way back\n' > "a b/045127.ERR"
printf 'infograf\ta b\n' > on.tsv
status 0 "$batch" on.tsv
[ "$(wc -l < "a b/045127.CSP")" -gt 900 ]
grep -q "of the way back" "a b/045127.ERR"
# One without a message keeps its time, against which what the way back wrote is held.
: > "a b/045127.ERR"
touch -d '2 hours ago' "a b/045127.ERR"
written=$(stat -c %Y "a b/045127.ERR")
status 0 "$batch" on.tsv
[ "$(stat -c %Y "a b/045127.ERR")" -eq "$written" ] || fail "an empty log is another's by its time"

# Nothing is begun where a line is wrong.
rm -r "a b"/*.txt
while IFS='|' read -r line says; do
  printf "ida\tc\n$line\n" > wrong.tsv
  status 2 "$batch" wrong.tsv
  grep -q "línea 2: .*$says" said || { cat said >&2 && fail "not: $says"; }
done << 'END'
vuelto\tc|vuelto
ida|carpeta
ida\tc\tentada=x|entada
ida\tc\tentrada|entrada
ida\tc\ttipo=Lista|tipo ha de ser catastro o lista, no "Lista"
ida\tc\ttipo=1|tipo ha de ser
ida\tc\ttipo=|tipo ha de ser
vuelta\tc\tmodificar=si|modificar ha de ser 0 o 1, no "si"
vuelta\tc\tno_en_bd=2|no_en_bd ha de ser 0 o 1, no "2"
vuelta\tc\tconcentradas=|concentradas ha de ser
vuelta\tc\tlista=|falta el valor de lista
ida\tc\tentrada=|falta el valor de entrada
ida\tc\tlista=x|el campo lista no es de la traducción ida
ida\tc\tmodificar=1|el campo modificar no es de la traducción ida
vuelta\tc\ttipo=lista|el campo tipo no es de la traducción vuelta
vuelta\tc\tentrada=x|el campo entrada no es de la traducción vuelta
infograf\tc\tparcelas=x|el campo parcelas no es de la traducción infograf
ida\tc\tentrada=a\tentrada=b|el campo entrada está dos veces
infograf\tc\tno_en_bd=1|el campo no_en_bd no es de la traducción infograf
END
[ ! -e c/Parcelas.txt ] || fail "a job of a wrong table was done"
printf 'ida\tc\n\nida\tc\n' > wrong.tsv
status 2 "$batch" wrong.tsv
grep -q "línea 3: repite el trabajo de la línea 1" said
for options in "" "no.tsv" "-j x out.tsv" "--no out.tsv" "out.tsv on.tsv" "--reanuda wrong.tsv" \
  "--resultados --reanuda out.tsv"; do
  # shellcheck disable=SC2086
  status 2 "$batch" $options
done

# A job is known by what its line says, whatever bytes that are and wherever it stands.
strange=$'pe\xf1a'
mkdir "$strange" && cp "$samples/villanueva.txt" "$strange/entrada.txt"
printf '\xef\xbb\xbfida\t%s\r\nida\tnowhere\r\n' "$strange" > known.tsv
status 1 "$batch" known.tsv
[ "$(states known.tsv)" = "1 ida $strange 0 0 0
2 ida nowhere 1 - -" ] || { states known.tsv >&2 && fail "the states are others"; }
grep -q nowhere known.tsv.resultados/salidas/2.err
rm "$strange/Parcelas.txt"
mkdir nowhere && cp "$samples/villanueva.txt" nowhere/entrada.txt
printf 'ida\tc\n# and now\nida\tnowhere\nida\t%s\n' "$strange" > known.tsv
status 0 "$batch" --reanuda known.tsv
[ "$(states known.tsv)" = "1 ida c 0 0 0
2 ida nowhere 0 0 0
3 ida $strange 0 0 0" ] || { states known.tsv >&2 && fail "the states are others"; }
[ -e c/Parcelas.txt ] && [ ! -e "$strange/Parcelas.txt" ] || fail "another job than the new one was done"

# Whoever stops it, or kills it, gets no state that isn't of this run, and can go on.
printf '#!/bin/sh\n[ -e ready ] || exec sleep 20\n' > slow
chmod +x slow
mkdir s1 s2 s3 && touch s1/ready
printf 'ida\ts1\nida\ts2\nida\ts3\n' > slow.tsv
for signal in TERM HUP KILL; do
  printf 'of an older run\n' | tee slow.tsv.resultados/estado.tsv > said 2> /dev/null || true
  CAMPIVA=$work/slow "$batch" -j 1 slow.tsv > said 2>&1 &
  batch_pid=$!
  wait_for '[ "$({ wc -l < slow.tsv.resultados/trabajos.log; } 2> /dev/null)" = 1 ]'
  status 2 "$batch" slow.tsv # at the same results
  grep -q "otro campiva-lote trabaja" said
  kill -$signal $batch_pid
  if [ $signal = KILL ]; then
    end 137
    [ ! -e slow.tsv.resultados/estado.tsv ] || fail "a state of another run"
  else
    end 130
    [ "$(states slow.tsv | cut -d ' ' -f 3,4)" = "s1 0
s2 137
s3 -" ] || { states slow.tsv >&2 && fail "the states are others"; }
  fi
done
rm s1/ready && touch s2/ready s3/ready
CAMPIVA=$work/slow status 0 "$batch" --reanuda slow.tsv
[ "$(states slow.tsv | cut -d ' ' -f 3,4)" = "s1 0
s2 0
s3 0" ] || fail "it didn't go on where it was"

# Ctrl-C at a terminal goes to the batch's whole group; a job hears of it once, and ends as it should.
printf '#!/bin/sh\ntrap "echo heard >> signals" INT TERM\ntouch began\nwhile [ ! -e signals ]; do sleep 0.05; done\nsleep 0.3\n' > listens
chmod +x listens
mkdir s4 && printf 'ida\ts4\n' > group.tsv
set -m
CAMPIVA=$work/listens "$batch" group.tsv > said 2>&1 &
batch_pid=$!
set +m
wait_for '[ -e s4/began ]'
kill -INT -- -$batch_pid
end 130
[ "$(wc -l < s4/signals)" = 1 ] || fail "signals: $(cat s4/signals)"

# Who kills the batch kills its jobs: what one had in hand stays as it was.
mkdir left && mkfifo left/entrada.txt && printf 'of before\n' > left/Parcelas.txt
printf 'ida\tleft\n' > left.tsv
exec 9<> left/entrada.txt                   # the job waits for more
head -c 4000 "$samples/villanueva.txt" >&9 # as much as any pipe takes that nobody reads
"$batch" left.tsv > said 2>&1 9>&- &
batch_pid=$!
in_hand() { compgen -G 'left/Parcelas.txt.~*' > /dev/null; }
wait_for in_hand
kill -KILL $batch_pid
end 137
wait_for '! in_hand' # else a job outlives its batch
exec 9>&-
[ "$(cat left/Parcelas.txt)" = "of before" ] || fail "a job writes where nobody looks any more"

# What is no batch's stays in the folder of the results.
mkdir -p mine/salidas mine/partes/2026 && touch mine/salidas/{nota.err,7.err,8.txt} mine/partes/{nota,3.txt,2026/nota} mine/{nota,trabajos.log}
printf 'ida\tc\n' > mine.tsv
status 0 "$batch" --resultados mine mine.tsv
status 0 "$batch" --resultados mine --sshlogin : mine.tsv
[ "$(ls mine mine/salidas | tr '\n' ' ')" = "mine: estado.tsv nota parallel.txt partes salidas trabajos.log trabajos.tsv  mine/salidas: 1.err 8.txt nota.err " ] ||
  { ls -R mine >&2 && fail "files of others went"; }
ls mine/partes/{nota,3.txt,2026/nota} > /dev/null

# In parts, by GNU parallel; here for this machine alone.
rm c/Parcelas.txt
printf 'ida\tc\nida\tlista\ttipo=lista\nida\tfar\n' > parts.tsv
status 1 "$batch" --sshlogin : -j 1 parts.tsv
[ "$(states parts.tsv)" = "1 ida c 0 0 0
2 ida lista 0 4 5
3 ida far 1 - -" ] || { states parts.tsv >&2 && fail "the states are others"; }
[ -e c/Parcelas.txt ]
grep -q far parts.tsv.resultados/salidas/3.err
mkdir far && cp "$samples/villanueva.txt" far/entrada.txt
rm c/Parcelas.txt
status 0 "$batch" --sshlogin : --reanuda parts.tsv
[ "$(states parts.tsv | tail -n 1)" = "3 ida far 0 0 0" ]
[ ! -e c/Parcelas.txt ]
# A line may begin with a tab, and the folder be called as a part of the translation.
mkdir a && cp "$samples/villanueva.txt" a/entrada.txt
printf '\tida\ta\n' > tab.tsv
status 0 "$batch" --sshlogin : tab.tsv
[ -e a/Parcelas.txt ]
# The programs may stand where a shell would take the name for more than one.
mkdir "a; touch theirs;" && cp "$batch" "a; touch theirs;" && rm a/Parcelas.txt
status 0 "a; touch theirs;/campiva-lote" --sshlogin : tab.tsv
[ -e a/Parcelas.txt ]
[ -z "$(find . -name theirs)" ] || fail "a shell took a folder's name for a command"
status 2 "$batch" --sshlogin "" tab.tsv
# Who kills it finds what had ended by then, and is told where a part goes on by itself.
printf '#!/bin/sh\necho x >> runs\nwhile [ ! -e go ]; do sleep 0.05; done\n' > waits
chmod +x waits
mkdir p1 p2 && touch p1/go
printf 'ida\tp1\nida\tp2\n' > killed.tsv
CAMPIVA=$work/waits "$batch" --sshlogin : killed.tsv > said 2>&1 &
batch_pid=$!
wait_for 'grep -q p1 killed.tsv.resultados/trabajos.log 2> /dev/null && [ -e p2/runs ]'
kill -KILL $batch_pid
end 137
for again in "" --reanuda; do
  # shellcheck disable=SC2086
  CAMPIVA=$work/waits status 2 "$batch" $again killed.tsv
  grep -q "otro campiva-lote trabaja en .*/partes/2" said
done
grep -q p1 killed.tsv.resultados/trabajos.log || fail "what was known of the jobs is gone"
touch p2/go
wait_for '[ -e killed.tsv.resultados/partes/2/estado.tsv ]'
sleep 0.2 # for its lock
CAMPIVA=$work/waits status 0 "$batch" --reanuda killed.tsv
[ "$(wc -l < p1/runs)" = 1 ] || fail "a job that had ended was done again"
# A summary at the end, where the report's program is; what it says changes nothing of the jobs.
rows() { tail -n +2 "$1.resultados/resumen.csv" | tr -d '\r' | cut -d ';' -f 1-11; }
rm -rf c && cp -r "$samples/villanueva_dibujos_con_faltas" c && cp "$samples"/villanueva_tablas_con_faltas/* c
cp -r c d
printf 'vuelta\td\nvuelta\tgone\nvuelta\tc\n' > sum.tsv
if [ -x "$report" ]; then
  status 1 "$batch" --resumen sum.tsv
  grep -q "3 trabajos, 3 fallaron, .* perdidos en .* de 2 trabajos, 840 errores, 6 warnings, 0 sin explicar" said
  ! grep -q "No hay resumen" said || fail "a summary that came to its end is told as cut short"
  [ "$(rows sum.tsv | cut -d ';' -f 1,2,6,10,11 | tr '\n' ' ')" = "1;d;0;420;3 3;c;0;420;3 2;gone;;; suma;;0;840;6 " ] ||
    { rows sum.tsv >&2 && fail "the summary is another"; }
  [ "$(ls sum.tsv.resultados/informes | tr '\n' ' ')" = "1.html 3.html " ]
  # To Infograf: nothing of it is taken for the way back's, nor the other way round.
  printf 'infograf\tc\ninfograf\td\n' > to.tsv
  touch -d '1 hour ago' c/* d/*
  status 1 "$batch" --resumen to.tsv
  grep -q "2 trabajos, 2 fallaron, .* 0 errores, 0 warnings, 0 sin explicar" said
  ! grep -q 'id="m1"' to.tsv.resultados/informes/1.html || fail "messages of the way back in Infograf's report"
  cp sum.tsv.resultados/resumen.csv before.csv
  mkdir elsewhere
  (cd elsewhere && status 0 "$report" --resumen ../sum.tsv.resultados)
  cmp before.csv sum.tsv.resultados/resumen.csv || fail "the summary of the way back is another behind Infograf"
  # Another run of the batch leaves no summary of the one before.
  status 1 "$batch" sum.tsv
  [ "$(ls sum.tsv.resultados sum.tsv.resultados/informes | tr '\n' ' ')" = "sum.tsv.resultados: estado.tsv informes salidas trabajos.log trabajos.tsv  sum.tsv.resultados/informes: " ] || { ls -R sum.tsv.resultados >&2 && fail "a summary of before"; }
fi
mkdir alone && cp "$batch" alone
PATH=/bin:/usr/bin status 1 alone/campiva-lote --resumen sum.tsv
grep -q "No hay resumen" said
[ "$(states sum.tsv | wc -l)" = 3 ]
echo "all as they should"
