#!/usr/bin/env bash
# What a person at a terminal sees and a script doesn't: boxes that wait, the progress line, the names of
# what a run wrote, the manual in the pager.
#   run_terminal.sh PROGRAM SAMPLES WORK
set -euo pipefail
program=$1 samples=$2 work=$3
rm -rf "$work"
mkdir -p "$work/bin" "$work/carpeta"
cp "$program" "$work/bin"
seq -f "renglón %g" 100 > "$work/bin/campiva.txt" # for the manual
cd "$work/carpeta"
cp "$samples/villanueva.txt" .
cp "$samples/villanueva_con_faltas.txt" faltas.txt
program=$work/bin/campiva
export XDG_CONFIG_HOME=$work/config
mkfifo ../keys
exec 3<> ../keys # never at its end: what waits for a key that isn't typed, waits for ever

fail() { echo "FAILED: $*; see $work/seen" >&2; exit 1; }

at_terminal() { # what is typed, command; what was seen stands in ../seen
  printf "$1" >&3
  status=0
  timeout 20 script -qefc "$2" ../seen <&3 > /dev/null || status=$?
  [ $status -ne 124 ] || fail "it waited for a key: $2"
  tr '\r' '\n' < ../seen > ../lines
}
sees() { grep -qF -- "$1" ../lines || fail "\"$1\" isn't seen"; }
sees_no() { ! grep -qF -- "$1" ../lines || fail "\"$1\" is seen"; }

tables="m t p s j ../c"
at_terminal '\n' "$program 0 villanueva.txt $tables"
[ $status -eq 0 ] || fail "status $status"
sees "Leyendo Base de datos"
sees "Avisos: $PWD/villanueva.ERR (vacío: no hay ninguno)"
sees "Escrito en $PWD: t p m s j"
sees "Escrito en $work: c"
at_terminal '\n' "$program 0 faltas.txt $tables"
sees "Avisos: $PWD/faltas.ERR"
sees_no "vacío"

# A narrow terminal: no line of the progress, which has no line end of its own, reaches its last column.
at_terminal '\n' "stty cols 40; $program 0 villanueva.txt $tables"
sees "Leyendo Base de datos"
grep -a ' %  ' ../lines | while IFS= read -r line; do
  columns=$(printf %s "$line" | LC_ALL=C tr -d '\200-\277' | wc -c)
  [ "$columns" -lt 40 ] || fail "a progress line of $columns columns"
done

# Ctrl-C at the closing box ends the program, when all is told.
head -c -9 villanueva.txt > cortada.txt
rm ../seen
(for _ in $(seq 500); do grep -qs "Fin del proceso" ../seen && break; sleep 0.02; done; printf '\003' >&3) &
at_terminal '' "$program 0 cortada.txt $tables"
[ $status -eq 130 ] || fail "status $status behind Ctrl-C"
sees "cortada.txt acaba a mitad de una línea"

# What goes elsewhere waits for nobody and names nothing.
at_terminal '' "$program 0 villanueva.txt $tables > ../out"
! grep -q Escrito ../out || fail "a run names its files in a file"
at_terminal '' "$program 0 no_hay.txt $tables | cat"

at_terminal '1\n57670\n99\n2\n' "PAGER='head -2 | sed s/^/pagina:/' $program"
[ $status -eq 0 ] || fail "status $status: a person saw what went wrong"
sees "pagina:renglón 2"
sees_no "renglón 3"
# The way back can be tried first, where the program that does it is there.
printf '#!/bin/sh\n' > "$work/bin/campiva-informe"
chmod +x "$work/bin/campiva-informe"
at_terminal '1010\n1\n2\n2\n' "$program"
sees "campiva-informe --ensayo LISTA"
at_terminal '1009\n1\n2\n2\n' "$program"
sees_no "--ensayo"

at_terminal '1\n57670\n2\n' "PAGER=no_hay_tal_programa $program"
sees "renglón 100"
