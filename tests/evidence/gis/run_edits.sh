#!/usr/bin/env bash
# A parcel that is split, a boundary that is moved, a new parcel and one that is deleted, in the
# middle of a municipality: the way back must show each of them and nothing else.
#   run_edits.sh CAMPIVA FOLDER_OF_PLUGIN SAMPLES FOLDER_OF_PARCELS
set -euo pipefail
samples=$3 real=$4
. "$(dirname "$0")/work_folder.sh"

# The surfaces that the way back finds, a line for each parcel: polygon, parcel, square metres.
surfaces() {
  (
    cd "$1"
    no_tables
    "$campiva" 1 "${tables[@]}" lista.txt ortos.TOP 0 1 1 > out 2>&1 || true
    LC_ALL=C awk 'substr($0, 10, 2) == "PR" {
      print substr($0, 14, 3) + 0, substr($0, 17, 5) + 0, substr($0, 22, 9) + 0 }' ./*.R | sort
  )
}
asked() { ogrinfo -q -dialect sqlite -sql "$2" "$1" | sed -n 's/^  [a-z]* (.*) = //p'; }
fail() { echo "$1"; exit 1; }

edit() { # a folder with the municipality's drawings, which are listed in lista.txt
  local place=$1
  rm -rf before all.gpkg edited.gpkg
  cp -r "$place" before
  ogr2ogr -f GPKG -a_srs EPSG:25830 all.gpkg "$place/lista.txt" 2> told
  # Drawings that come as they were stay so, whatever layers come.
  for layers in "" parcelas "rotulos lineas"; do
    ogr2ogr -f Vexa "$place/lista.txt" all.gpkg $layers 2> told
    diff -r before "$place" || fail "an unedited $place changed: $layers"
  done

  # Two neighbours, and three parcels that have nothing to do with them.
  mapfile -t pair < <(asked all.gpkg "
    select a.parcela as n, b.parcela as m from parcelas a, parcelas b
    where a.poligono = 1 and b.poligono = 1 and a.parcela < b.parcela and a.valido and b.valido
      and a.piezas = 1 and b.piezas = 1 and a.area_contorno > 2000 and b.area_contorno > 2000
      and ST_Intersects(a.geom, b.geom) and ST_Length(ST_Intersection(a.geom, b.geom)) > 20
    order by a.parcela limit 1")
  local from=${pair[0]} to=${pair[1]}
  mapfile -t three < <(asked all.gpkg "
    select parcela as n from parcelas where poligono = 1 and valido and piezas = 1
      and parcela not in ($from, $to) and area_contorno > 500 order by area_contorno limit 2")
  local split=${three[0]} gone=${three[1]}
  local strip="(select ST_Buffer(geom, 3) from parcelas where poligono = 1 and parcela = $to)"
  local fields="poligono, entrada, codigo, numero"
  local half="BuildMbr(ST_MinX(geom) - 1, ST_MinY(geom) - 1,
                       (ST_MinX(geom) + ST_MaxX(geom)) / 2, ST_MaxY(geom) + 1)"
  ogr2ogr -f GPKG -nln parcelas -nlt PROMOTE_TO_MULTI edited.gpkg all.gpkg -dialect sqlite -sql "
    select ST_Intersection(geom, $half) as geom, $fields, parcela, rotulo, rotulo_x, rotulo_y
      from parcelas where poligono = 1 and parcela = $split
    union all select ST_Difference(geom, $half), $fields, 31001, rotulo, rotulo_x, rotulo_y
      from parcelas where poligono = 1 and parcela = $split
    union all select ST_Difference(geom, $strip), $fields, parcela, rotulo, rotulo_x, rotulo_y
      from parcelas where poligono = 1 and parcela = $from
    union all select ST_Union(geom, (select ST_Intersection(g.geom, $strip) from parcelas g
        where poligono = 1 and parcela = $from)), $fields, parcela, rotulo, rotulo_x, rotulo_y
      from parcelas where poligono = 1 and parcela = $to
    union all select ST_Translate(BuildMbr(0, 0, 30, 20), (select max(ST_MaxX(geom)) + 50
        from parcelas), (select max(ST_MaxY(geom)) from parcelas), 0), 1, null, null, null, 31002,
        null, null, null
    union all select geom, $fields, parcela, rotulo, rotulo_x, rotulo_y
      from parcelas where not (poligono = 1 and coalesce(parcela, -1) in ($split, $from, $to, $gone))" 2> told

  # The half that has a new number still has the old label: nobody guesses which one is meant.
  if ogr2ogr -f Vexa "$place/lista.txt" edited.gpkg 2> told; then fail "a contradiction went in"; fi
  grep -q "su campo parcela dice 31001 y su rótulo dice \"$split\"" told || fail "no contradiction told"
  diff -r before "$place" || fail "a refused edit changed $place"

  rm -rf was_place
  cp -r before was_place
  surfaces was_place > was
  ogr2ogr -f Vexa -dsco GANAN=NUMEROS "$place/lista.txt" edited.gpkg 2> told
  cmp before/001.SUB "$place/001.SUB" || fail "subparcels changed"
  cmp before/lista.txt "$place/lista.txt" || fail "the list changed"
  for other in before/0*.???; do
    case $other in before/001.BIN | before/001.PAR) ;; *) cmp "$other" "$place/${other#*/}" ;; esac
  done
  surfaces "$place" > is
  diff was is > changes || true
  LC_ALL=C awk -v split_="$split" -v gone="$gone" -v from="$from" -v to="$to" '
    /^[<>]/ && $2 != 1 { print "another polygon: " $0; failed = 1 }
    /^</ { was[$3] = $4 }
    /^>/ { is[$3] = $4 }
    function off(a, b) { return a - b > 1.5 || b - a > 1.5 }
    END {
      if (off(was[split_], is[split_] + is[31001]) || !is[31001]) { print "split"; failed = 1 }
      if (off(was[from] + was[to], is[from] + is[to]) || is[to] <= was[to]) { print "moved"; failed = 1 }
      if (is[31002] != 600) { print "new"; failed = 1 }
      if (!(gone in was) || gone in is) { print "deleted"; failed = 1 }
      delete was[split_]; delete was[from]; delete was[to]; delete was[gone]
      delete is[split_]; delete is[31001]; delete is[from]; delete is[to]; delete is[31002]
      for (key in was) { print "changed: " key; failed = 1 }
      for (key in is) { print "appeared: " key; failed = 1 }
      exit failed
    }' changes || { cat changes; fail "$place: something else changed"; }
}

# Drawings with every fault there is, and tables: what nobody edited stays, whatever it came through.
cp -r "$samples/villanueva_dibujos_con_faltas" faults
cp "$samples"/villanueva_tablas_con_faltas/* faults
cp -r faults faults_were
ogr2ogr -f GPKG -a_srs EPSG:25830 through.gpkg faults/poligonos.txt 2> told
ogr2ogr -f GeoJSON through.geojson through.gpkg parcelas
ogr2ogr -f CSV -lco GEOMETRY=AS_WKT through.csv through.gpkg parcelas
ogr2ogr -f "ESRI Shapefile" shapes through.gpkg parcelas subparcelas -lco ENCODING=UTF-8 2> told
for through in through.gpkg through.geojson shapes \
  "through.csv -nln parcelas -oo GEOM_POSSIBLE_NAMES=geom,WKT"; do # by GDAL's version
  # shellcheck disable=SC2086 # options belong to one of them
  ogr2ogr -f Vexa faults/poligonos.txt $through 2> told || fail "refused: $through"
  diff -r faults faults_were || fail "unedited, and changed by $through"
done

cp -r "$samples/villanueva_dibujos" sample
mv sample/poligonos.txt sample/lista.txt
edit sample
compgen -G "$real/*.jsonl.xz" > /dev/null || { echo "equal, without real parcels"; exit 0; }
for set in "$real"/*.jsonl.xz; do
  rm -rf real
  drawn_of "$set" real
  edit real
done
echo "equal"
