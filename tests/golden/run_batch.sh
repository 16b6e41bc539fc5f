#!/usr/bin/env bash
# Many municipalities in a batch: what is done, told, and done again.
#   run_batch.sh CAMPIVA SAMPLES WORK
set -euo pipefail
export CAMPIVA=$1
samples=$2 work=$3 batch=$(dirname "$0")/../../batch/campiva-lote
command -v parallel > /dev/null || exit 77
rm -rf "$work"
mkdir -p "$work/config/VexaSoft"
# What somebody chose in a dialog must not count.
export XDG_CONFIG_HOME=$work/config
printf '[CampivaAVexa]\nTipoEntrada=1\n' > "$XDG_CONFIG_HOME/VexaSoft/Campiva.ini"
batch=$(realpath "$batch")
cd "$work"

fail() { echo "$1" >&2 && exit 1; }
# status WANTED COMMAND...
status() {
  local wanted=$1 got=0
  shift
  "$@" > said 2>&1 || got=$?
  [ "$got" -eq "$wanted" ] || { cat said >&2 && fail "status $got, not $wanted: $*"; }
}
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
4 ida later 1 0 0
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
[ "$(wc -l < "a b/045127.CSP")" -gt 900 ] && grep -q "of the way back" "a b/045127.ERR"

# Nothing is begun where a line is wrong.
rm -r "a b"/*.txt
for line in 'vuelto\tc' 'ida' 'ida\tc\tentada=x' 'ida\tc\tentrada'; do
  printf "ida\tc\n$line\n" > wrong.tsv
  status 2 "$batch" wrong.tsv
  grep -q "línea 2" said
done
[ ! -e c/Parcelas.txt ] || fail "a job of a wrong table was done"
for options in "" "no.tsv" "-j x out.tsv" "--no out.tsv" "out.tsv on.tsv" "--reanuda wrong.tsv"; do
  # shellcheck disable=SC2086
  status 2 "$batch" $options
done
echo "all as they should"
