#!/usr/bin/env bash
# Drawings into a GeoPackage and out of it again: what the program makes of them must be the same to
# the byte.
#   run_tools.sh CAMPIVA FOLDER_OF_PLUGIN SAMPLES
set -euo pipefail
samples=$3
. "$(dirname "$0")/work_folder.sh"

cp "$samples/villanueva.txt" in.txt
"$campiva" 0 in.txt "${tables[@]}" > out
mkdir first again
cp -r "$samples/villanueva_dibujos" first/dibujos
mkdir again/dibujos
ogr2ogr -f GPKG all.gpkg first/dibujos/poligonos.txt
ogr2ogr -f Vexa -dsco PIEZAS=SI again/dibujos/poligonos.txt all.gpkg 2> told
grep -q "la parcela 13 del polígono 001 está en 2 recintos" told
for place in first again; do
  (
    cd $place
    cp "${tables[@]/#/../}" .
    "$campiva" 1 "${tables[@]}" dibujos/poligonos.txt dibujos/ortos.TOP 0 0 0 > out
    mv dibujos/045127.ERR back.ERR # the next run has a log of that name
    printf '%s\n' 1011 1 1003=dibujos/poligonos.txt 1005=dibujos/ortos.TOP 1 | "$campiva" > out
    mv dibujos/045127.* .
  )
done
for made in CSP R; do [ "$(wc -l < first/045127.$made)" -gt 900 ]; done
for made in 045127.R 045127.M 045127.CSP back.ERR; do cmp "first/$made" "again/$made"; done

# The layers tell what the run's log tells.
cp -r "$samples/villanueva_dibujos_con_faltas" faults
cp "$samples"/villanueva_tablas_con_faltas/* faults
(cd faults && "$campiva" 1 "${tables[@]}" poligonos.txt ortos.TOP 0 0 0 > out 2>&1) || true
asked() {
  ogrinfo -q faults/poligonos.txt -sql "select count(*) as n from mensajes $1" |
    sed -n 's/.*n (Integer.*) = //p'
}
[ "$(asked "")" -eq "$(wc -l < faults/045127.ERR)" ]
[ "$(asked "where numero = 'E106'")" -eq "$(grep -c ^E106 faults/045127.ERR)" ]
ogrinfo -q faults/poligonos.txt mensajes -where "numero = 'E106' and parcela = 9001" |
  grep -q "MULTIPOLYGON (((400"
echo "equal"
