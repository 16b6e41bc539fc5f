# shellcheck shell=bash disable=SC2034,SC2164 # who sources it has set -e, and takes what it sets
# Sourced by the others: a folder of its own that goes with the script, the driver's plugin and the program.
#   CAMPIVA FOLDER_OF_PLUGIN
campiva=$1
export GDAL_DRIVER_PATH=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_CONFIG_HOME=$work/config
cd "$work"
tables=(Modulos.txt Titulares.txt Parcelas.txt Subparcelas.txt Parajes.txt Cotitulares.txt)

no_tables() { # none knows a parcel, so that the drawing makes them all
  for table in "${tables[@]}"; do printf 'Ger\tMun\r\n' > "$table"; done
}

drawn_of() { # makes drawings in a folder of a set of real parcels, which become parcelas.geojson
  xz -dc "$1" | python3 -c '
import json, sys
features = [{"type": "Feature", "properties": {"poligono": d["polig"], "parcela": d["parcela"]},
             "geometry": {"type": "Polygon", "coordinates": d["rings"]}}
            for d in map(json.loads, sys.stdin)]
json.dump({"type": "FeatureCollection", "name": "parcelas", "features": features,
           "crs": {"type": "name", "properties": {"name": "urn:ogc:def:crs:EPSG::25830"}}},
          sys.stdout)' > parcelas.geojson
  mkdir "$2"
  ogr2ogr -f Vexa -dsco GER=45 -dsco MUN=155 -dsco PIEZAS=SI "$2/lista.txt" parcelas.geojson 2> told
}
