#!/usr/bin/env bash
# Many municipalities in a batch that something goes against.
#   run_batch_faults.sh CAMPIVA SAMPLES WORK; the batch's program stands beside CAMPIVA
set -euo pipefail
. "$(dirname "$0")/batch.sh"
# says STATES: those of the table t, without the jobs' times, lines between commas.
says() {
  local got
  got=$(tail -n +2 t.resultados/estado.tsv | cut -f 3-6 | tr '\t' ' ' | paste -s -d ,)
  [ "$got" = "$1" ] || fail "not $1 but $got"
}
for folder in a b c; do mkdir "$folder" && cp "$samples/villanueva.txt" "$folder/entrada.txt"; done

# A log or a list that can't be read is its own job's fault.
printf '#!/bin/sh\n[ ! -e broken ] || ln -s /proc/self/mem entrada.ERR\n' > breaks
chmod +x breaks
touch a/broken && ln -s /proc/self/mem b/poligonos.txt
printf 'ida\ta\nvuelta\tb\nida\tc\n' > t
CAMPIVA=$work/breaks status 1 "$batch" -j 1 t
says "a 1 - -,b 0 - -,c 0 - -"
grep -q "entrada.ERR" t.resultados/salidas/1.err
rm a/broken a/entrada.ERR b/poligonos.txt

# A log of an earlier run isn't counted for a job that makes none.
cp "$samples/villanueva_lista.txt" b/entrada.txt
printf 'ida\ta\nida\tb\ttipo=lista\n' > t
for _ in 1 2; do
  status 0 "$batch" t
  says "a 0 0 0,b 0 4 5"
done
rm b/*.anterior # of the tables that the list, of whose holders some share a number, was written over
rm b/entrada.txt
status 1 "$batch" t
says "a 0 0 0,b 1 - -"
CAMPIVA=$work/breaks status 0 "$batch" t
says "a 0 - -,b 0 - -"

# However it is started, it hears of the ends of its own jobs and of no others'.
printf 'ida\ta\nida\tgone\n' > t
for way in "trap '' CHLD;" "sleep 0.3 &"; do
  for options in "-j 1" "--sshlogin :"; do
    status 1 bash -c "$way exec \"\$0\" $options t" "$batch"
    says "a 0 0 0,gone 1 - -"
  done
done
if [ -x "$report" ]; then
  cp "$samples"/villanueva_dibujos/* a
  (cd a && status 0 bash -c "trap '' CHLD; exec \"\$0\" --ensayo poligonos.txt" "$report")
fi

# Nobody need read what it says.
mkfifo nobody
exec 3<> nobody 4> nobody 3>&-
got=0
"$batch" t >&4 || got=$?
[ $got -eq 1 ] || fail "status $got where nobody reads"
exec 4>&-

# To Infograf, the log of the way back stays what it was: its rights, its time, and where it is a link.
for folder in c d; do
  rm -rf "$folder" && cp -r "$samples/villanueva_dibujos" "$folder"
  printf 'E1 of the way back\n' > "$folder/kept.ERR"
  chmod 600 "$folder/kept.ERR" && touch -d '1 hour ago' "$folder/kept.ERR"
  cp -p "$folder/kept.ERR" "before.$folder"
done
mv c/kept.ERR c/045127.ERR
ln -s kept.ERR d/045127.ERR
printf 'infograf\tc\ninfograf\td\n' > t
status 0 "$batch" t
[ "$(readlink d/045127.ERR)" = kept.ERR ] || fail "the link went"
for log in c/045127.ERR d/kept.ERR; do
  cmp "$log" "before.${log%%/*}"
  [ "$(stat -c '%a %Y' "$log")" = "$(stat -c '%a %Y' "before.${log%%/*}")" ] || fail "rights or time of $log"
done
! ls ./*/*.anterior 2> /dev/null || fail "what was given back stayed beside it, too"

# A list that is a pipe is the program's to wait for.
rm c/poligonos.txt && mkfifo c/poligonos.txt
exec 3<> c/poligonos.txt
printf 'vuelta\tc\n' > t
rm -r t.resultados # or what an earlier job said would pass for the sign that this one is at work
"$batch" t > said 2>&1 &
batch_pid=$!
wait_for '[ -e t.resultados/salidas/1.err ]'
kill -TERM $batch_pid
end 130
exec 3>&-
says "c 137 - -"

# A former state outlives a run that lacks what it needs.
printf 'ida\ta\nida\tgone\n' > t
status 1 "$batch" t
cp t.resultados/trabajos.log before.log && cp t.resultados/estado.tsv before.tsv
mkdir bin && ln -s "$batch" bin/campiva-lote
status 2 env PATH="$work/bin" campiva-lote --sshlogin : t
status 1 env TMPDIR="$work/t" "$batch" t
grep -q TMPDIR said || fail "the folder that can't be had isn't told"
cmp t.resultados/trabajos.log before.log
cmp t.resultados/estado.tsv before.tsv

# A disk that takes nothing more is told as such.
if [ -c /dev/full ]; then
  mkdir full && touch full/estado.tsv && ln -s /dev/full full/trabajos.log
  status 1 "$batch" --resultados full t
  grep -q "full/trabajos.log.*No queda espacio en el dispositivo" <(tr '\n' ' ' < said) || { cat said >&2 && fail "no reason"; }
fi

# Nobody's own files are taken for results, by whatever name they come.
for name in trabajos.tsv estado.tsv trabajos.log salidas/1.err; do
  mkdir -p own/salidas && touch own/trabajos.log
  printf 'ida\ta\n' > "own/$name"
  ln -sfr "own/$name" table
  for spelling in "own/$name" "own/../own//$name" table; do
    status 2 "$batch" --resultados own "$spelling"
    grep -q "es un fichero de los resultados" said
  done
  [ "$(cat "own/$name")" = $'ida\ta' ] || fail "the table $name is another"
  rm -r own
done
mkdir -p own/salidas own/informes && touch own/salidas/1.err own/informes/1.html
status 2 "$batch" --resultados own t
grep -q "no son resultados" said
[ "$(ls own own/* | tr '\n' ' ')" = "own: informes salidas  own/informes: 1.html  own/salidas: 1.err " ] ||
  { ls -R own >&2 && fail "files of others went"; }
mkdir empty && status 1 "$batch" --resultados empty t && status 1 "$batch" --resultados empty t

# Two jobs that write the same files, by whatever names, are none; nor is anything begun. One that reads a table which
# another one writes would read the old one or the new one by chance.
cp -r "$samples/villanueva_dibujos" g
cp g/poligonos.txt g/otra.txt
declare -A says=([written]='línea [23]: escribe .*, como el trabajo de la línea [12]'
  [read]='línea [12]: lee .*, que escribe el trabajo de la línea [12]; han de ir en tablas')
while IFS='|' read -r kind jobs; do
  printf "$jobs" > t
  rm -rf t.resultados
  status 2 "$batch" t
  grep -q "t, ${says[$kind]}" said || { cat said >&2 && fail "$jobs"; }
  [ ! -e t.resultados ] || fail "results of a table that is none"
done << 'END'
written|ida\ta\nida\tb/../a/\tentrada=otra.txt\n
written|vuelta\tg\n\nvuelta\tg\tlista=otra.txt\n
written|ida\ta\nida\tb\tparajes=../a/Parajes.txt\n
written|infograf\tg\ninfograf\t./g\n
written|vuelta\tg\ninfograf\tg\n
written|ida\tg\tentrada=045127.txt\ninfograf\tg\n
written|vuelta\tg\nvuelta\tb\tlista=no_hay\tparcelas=../p\tmodificar=1\nvuelta\tc\tsubparcelas=../p\tmodificar=1\n
read|ida\ta\nvuelta\ta\n
read|vuelta\tg\tparajes=../b/Parajes.txt\nida\tb\n
read|vuelta\tg\tmodificar=1\nvuelta\tb\tsubparcelas=../g/./Subparcelas.txt\n
END
printf 'ida\ta\nvuelta\tg\nida\ta\tentrada=x\tparcelas=1\tsubparcelas=2\tparajes=3\tmodulos=4\ttitulares=5\tcotitulares=6\n' > t
status 1 "$batch" t

# The same lines, from another folder, are other jobs.
mkdir -p y1 y2 && cp -r a y1 && cp -r a y2 && rm -f y2/a/*.ERR
printf 'ida\ta\n' > t
(cd y1 && status 0 "$batch" ../t)
(cd y2 && status 2 "$batch" --reanuda ../t && grep -q "empezó en la carpeta $(realpath ../y1)" said) || fail "other jobs passed for done"
(cd y1 && status 0 "$batch" --reanuda ../t)
printf 'ida\t%s\n' "$work/y1/a" > t
(cd y2 && status 0 "$batch" --reanuda ../t)
printf 'ida\ta\n' > t
(cd y1 && status 0 "$batch" ../t)
mv y1 y3
(cd y3 && status 0 "$batch" --reanuda ../t)

# What was said of a job goes with it when the table has another order.
printf '#!/bin/sh\nbasename "$PWD"\n' > says_where
chmod +x says_where
export CAMPIVA=$work/says_where
mkdir -p e t.resultados/informes
printf 'ida\ta\nida\tb\nida\tc\n' > t
status 0 "$batch" t
for n in 1 2 3; do cp t.resultados/salidas/$n.err t.resultados/informes/$n.html; done
printf 'ida\tc\nida\ta\nida\te\n' > t
status 0 "$batch" --reanuda t
[ "$(cd t.resultados && head salidas/* informes/* | paste -s -d ' ')" = \
  "==> salidas/1.err <== c  ==> salidas/2.err <== a  ==> salidas/3.err <== e  ==> informes/1.html <== c  ==> informes/2.html <== a" ] ||
  { head t.resultados/*/* >&2 && fail "what was said is others'"; }
echo "all as they should"
