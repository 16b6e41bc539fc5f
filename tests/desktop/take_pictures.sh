#!/usr/bin/env bash
# Takes pictures of all dialogs of campiva-gui, worked by its keyboard.
#   take_pictures.sh program make_municipality folder work [runner]
# A program for Windows comes with what runs it here.
set -euo pipefail
program=$(realpath "$1") make_municipality=$(realpath "$2")
pictures=$(realpath -m "$3") work=$(realpath -m "$4") runner=${5:-}
cd "$(dirname "$(realpath "$0")")/../.."
rm -rf "$work"
mkdir -p "$work/run" "$pictures"
cp samples/villanueva_{tablas,dibujos}_con_faltas/* "$work/run"
$runner "$make_municipality" --parcels 1200000 "$work/run/villanueva.txt"
. tests/desktop/screen.sh

picture() { # name
  sleep 0.4
  import -frame -window "$(xdotool getactivewindow)" "$pictures/$1.png"
}
main_window() { main=$(xdotool getactivewindow); }
# The main window with what stands before it.
picture_all() { # name
  sleep 0.6
  local place left right top bottom
  IFS=' ,' read -r left right top bottom < <(xprop -id "$main" _NET_FRAME_EXTENTS | sed 's/.*= //')
  place=$(xwininfo -id "$main" | awk -v l="$left" -v r="$right" -v t="$top" -v b="$bottom" '
    /Absolute upper-left X/ {x = $NF - l} /Absolute upper-left Y/ {y = $NF - t}
    /Width/ {w = $NF + l + r} /Height/ {h = $NF + t + b} END {print w "x" h "+" x "+" y}')
  import -window root -crop "$place" +repage "$pictures/$1.png"
}

start_screen "${SCREEN:-1400x1000}"
start
await Campiva
picture choice
keys alt+c alt+a
await "Catastro campiva a Vexa"
main_window
keys Tab
fill villanueva.txt
picture catastro_to_vexa
keys alt+c
await "Acerca de Campiva..."
picture about
keys Return
await "Catastro campiva a Vexa"
keys alt+a
await '[1-9]* % - Catastro campiva a Vexa'
sleep 2.2 # long enough to foretell its end
keys space
await "Pausa de usuario"
picture_all stop
keys alt+s
await "Fin del proceso"
picture_all summary
keys Return
await Observaciones # it was stopped
keys Return
await "Catastro campiva a Vexa"
keys Escape
ended

start
await Campiva
keys alt+v alt+a
await "Vexa a Catastro campiva"
main_window
for table in Modulos Titulares Parcelas Subparcelas Parajes Cotitulares; do
  fill "$table.txt"
  keys Tab Tab
done
fill poligonos.txt
keys Tab Tab
fill ortos.TOP
keys Tab Tab
xdotool mousemove 0 0 # the help stands by the control
keys F1
picture_all vexa_to_catastro
keys Escape
sleep 0.5
keys alt+a
past_errors
keys Return
await "Vexa a Catastro campiva"
picture done
keys Escape
ended

start
await Campiva
keys alt+i alt+a
await "Vexa a Infograf"
fill no_hay.txt
picture vexa_to_infograf
keys alt+a
await Error
picture error
keys Return
await "Vexa a Infograf"
keys alt+y
await "Ayuda*Campiva"
picture help
keys alt+F4
await "Vexa a Infograf"
keys Escape
ended
