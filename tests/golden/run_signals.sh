#!/usr/bin/env bash
# What signals do to a run: it ends by the signal and leaves nothing half written behind, or passes over
# what it was started to pass over. A topology that is a pipe holds the run while the signals arrive.
#   run_signals.sh PROGRAM SAMPLES WORK
set -euo pipefail
set -m # else what runs behind would be started to pass over Ctrl-C
program=$1 samples=$2 work=$3
rm -rf "$work"
mkdir -p "$work"
cd "$work"
export XDG_CONFIG_HOME=$work/config
folder=villanueva_dibujos
printf '%s\n' 1011 1 1003=$folder/poligonos.txt 1005=$folder/no_hay.TOP 1 2 > commands

fail() { echo "FAILED: $*" >&2; exit 1; }

run() { # name, status, the record file must be there or not, signals; before: what the run is started with
  rm -rf $folder
  cp -r "$samples/$folder" .
  rm $folder/001.PAR
  mkfifo $folder/001.PAR
  ${before:-} "$program" < commands > stdout 2> stderr &
  local pid=$!
  for _ in $(seq 1500); do compgen -G "$folder/*.CSP*" > /dev/null && break; sleep 0.02; done
  compgen -G "$folder/*.CSP*" > /dev/null || fail "$1: the run never began to write"
  for signal in "${@:4}"; do
    kill -s "$signal" $pid
    sleep 0.1 # two at once would be one
  done
  local writer="" status=0
  if [ "$2" -lt 128 ]; then
    : > $folder/001.PAR & # lets the run go on; one that is to end waits no longer
    writer=$!
  fi
  wait $pid || status=$?
  [ -z "$writer" ] || kill $writer 2> /dev/null || true
  [ $status -eq "$2" ] || fail "$1: status $status instead of $2"
  local left
  left=$(cd $folder && ls | grep CSP || true)
  [ "$left" = "$3" ] || fail "$1: \"$left\" was left instead of \"$3\""
}

run "the system goes down"      143 "" TERM
run "the terminal is closed"    129 "" HUP
run "Ctrl-C, and nobody to ask" 130 "" INT
! grep -q '(s/n)' stdout || fail "a question was put to nobody"

held() { # name, how many bytes a table, which is a pipe, holds already; with none nobody has it open
  local tables=(Modulos.txt Titulares.txt Parcelas.txt Subparcelas.txt Parajes.txt Cotitulares.txt) status=0
  rm -rf out
  mkdir out
  mkfifo out/Parcelas.txt
  cp "$samples/villanueva.txt" out
  if [ "$2" -gt 0 ]; then
    exec 9<> out/Parcelas.txt
    head -c "$2" /dev/zero >&9
  fi
  "$program" 0 out/villanueva.txt "${tables[@]/#/out/}" > stdout 2> stderr 9>&- &
  local pid=$!
  for _ in $(seq 1500); do compgen -G "out/*.~*" > /dev/null && break; sleep 0.02; done
  sleep 0.2 # the run is at the pipe, or comes there with the signal behind it
  kill -s TERM $pid
  for _ in $(seq 500); do kill -0 $pid 2> /dev/null || break; sleep 0.02; done
  ! kill -s KILL $pid 2> /dev/null || fail "$1: the run waits on"
  wait $pid || status=$?
  exec 9>&-
  [ $status -eq 143 ] || fail "$1: status $status"
  [ "$(ls out | tr '\n' ' ')" = "Parcelas.txt villanueva.ERR villanueva.txt " ] || fail "$1: left $(ls out)"
}
held "a pipe that nobody reads" 0
held "a pipe that is full" 65536
before=nohup
run "started to outlive the terminal" 1 045127.CSP HUP
pass_over() { (trap '' INT; exec "$@"); }
before=pass_over
run "started to pass over Ctrl-C" 1 045127.CSP INT INT
echo "all signals did what they should"
