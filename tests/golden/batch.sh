# What the tests of the batch have in common; to be read with their arguments, CAMPIVA SAMPLES WORK. The batch's
# program stands beside CAMPIVA.
export CAMPIVA=$1
samples=$2 work=$3 batch=$(realpath "$(dirname "$1")/campiva-lote") report=$(realpath "$(dirname "$1")")/campiva-informe
rm -rf "$work"
mkdir -p "$work/config" "$work/tmp"
export XDG_CONFIG_HOME=$work/config TMPDIR=$work/tmp # where a killed batch leaves its settings
cd "$work"

fail() { echo "$1" >&2 && exit 1; }
# status WANTED COMMAND...; what hangs is no end
status() {
  local wanted=$1 got=0
  shift
  timeout -k 1 60 "$@" > said 2>&1 || got=$?
  [ "$got" -eq "$wanted" ] || { cat said >&2 && fail "status $got, not $wanted: $*"; }
}
wait_for() { # a condition
  for _ in $(seq 400); do
    eval "$1" && return
    sleep 0.05
  done
  fail "waited in vain: $1"
}
# end STATUS: that of the batch in the background, whose number is in batch_pid
end() {
  local got=0
  wait "$batch_pid" 2> /dev/null || got=$?
  [ $got -eq "$1" ] || { cat said >&2 && fail "status $got, not $1"; }
}
