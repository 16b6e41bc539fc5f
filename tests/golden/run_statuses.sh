#!/usr/bin/env bash
# The exit status for commands that come by a pipe: a row each.
#   run_statuses.sh PROGRAM SAMPLES WORK
set -euo pipefail
program=$1 samples=$2 work=$3
rm -rf "$work"
mkdir -p "$work"
cd "$work"
cp "$samples/villanueva.txt" .
export XDG_CONFIG_HOME=$work/config

failures=0
row() { # status, reason, commands
  local status=0
  printf '%s\n' "${@:3}" | "$program" > stdout 2> stderr || status=$?
  if [ $status -ne "$1" ]; then
    echo "$2: status $status instead of $1" >&2
    failures=1
  fi
  # What was told is told in its place, and only then.
  if [ "$1" -eq 0 ] && [ -s stderr ] || [ "$1" -ne 0 ] && [ ! -s stderr ]; then
    echo "$2: the standard error doesn't fit the status" >&2
    failures=1
  fi
}

row 0 "a run, without a word of farewell"  1009 1 1000=villanueva.txt 1
row 0 "a choice and nothing more"          1
row 0 "a farewell is a command"            2
row 2 "nothing but empty lines"            "" ""
row 1 "an error box"                       1009 1 1000=no_hay.txt 1 2
row 1 "an error box, then all went well"   1009 1 1000=no_hay.txt 1 1000=villanueva.txt 1 2
row 1 "a word that is no command"          hola 2
row 1 "a control that isn't there"         99 2
row 1 "the help of one that isn't there"   "? 99" 2
row 1 "a field that takes no text"         1009 1 1=texto 2
row 1 "an item that the list hasn't"       1009 1 1019=Otra 2
row 1 "a field pressed"                    1009 1 1000 2
row 1 "a file chosen that isn't there"     1009 1 1001 no_hay.txt 2
row 0 "a file chosen, and none"            1009 1 1001 villanueva.txt 1001 "" 2

# A file past the limit of its user is told as one that can't be written, and no output is left.
mkdir limited
status=0
(ulimit -f 8 && exec "$program" 0 villanueva.txt limited/{Modulos,Titulares,Parcelas,Subparcelas,Parajes,Cotitulares}.txt) \
  > stdout 2> stderr || status=$?
if [ $status -ne 1 ] || [ ! -s stderr ] || [ -n "$(ls limited)" ]; then
  echo "a limit on files: status $status, left: $(ls limited)" >&2
  failures=1
fi
exit $failures
