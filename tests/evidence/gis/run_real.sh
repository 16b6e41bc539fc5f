#!/usr/bin/env bash
# Real parcels into drawings and through the way back: each must come out with the surface that its
# outline has, and drawings made from the drawings must be taken alike to the byte.
#   run_real.sh CAMPIVA FOLDER_OF_PLUGIN FOLDER_OF_PARCELS
set -euo pipefail
real=$3
compgen -G "$real/*.jsonl.xz" > /dev/null || exit 77
. "$(dirname "$0")/work_folder.sh"

for set in "$real"/*.jsonl.xz; do
  rm -rf ./*
  drawn_of "$set" first
  mkdir again
  ogr2ogr -f GPKG all.gpkg first/lista.txt
  ogr2ogr -f Vexa -dsco PIEZAS=SI again/lista.txt all.gpkg 2> told_again
  for place in first again; do
    (
      cd $place
      no_tables
      "$campiva" 1 "${tables[@]}" lista.txt ortos.TOP 0 1 1 > out 2>&1 || true
      mv 045155.ERR back.ERR
      printf '%s\n' 1011 1 1003=lista.txt 1005=ortos.TOP 1 | "$campiva" > out 2>&1 || true
    )
  done
  for made in 045155.R 045155.M 045155.CSP back.ERR; do cmp "first/$made" "again/$made"; done

  # The surfaces of the PR records against those that GEOS finds in the outlines as they came: the
  # last piece of each parcel. Rounding to hundredths may move one by half a metre and its share of
  # the boundary.
  ogr2ogr -f CSV -lco STRING_QUOTING=IF_NEEDED areas.csv parcelas.geojson -dialect sqlite \
    -sql "select poligono, parcela, ST_Area(geometry) as area, ST_Perimeter(geometry) as borde
          from parcelas"
  LC_ALL=C awk -F, '
    FNR == NR { if (FNR > 1) { area[$1 + 0, $2 + 0] = $3; border[$1 + 0, $2 + 0] = $4 } next }
    substr($0, 10, 2) == "PR" {
      ++records
      key = substr($0, 14, 3) + 0 SUBSEP substr($0, 17, 5) + 0
      if (!(key in area)) { print "unknown: " $0; failed = 1; next }
      off = substr($0, 22, 9) - area[key]
      if (off < 0) off = -off
      if (off > 0.5 + border[key] * 0.01) { print "differs: " off " " area[key] " " $0; failed = 1 }
      delete area[key]
    }
    END {
      for (key in area) { print "missing: " key; failed = 1 }
      print records " parcels"
      exit failed || !records
    }' areas.csv first/045155.R
done
