#!/usr/bin/env bash
# Works campiva-gui by its keyboard on a screen of its own and looks at what it leaves on disk.
#   run_case.sh case program samples golden make_municipality work
set -euo pipefail
case=$1 program=$2 samples=$3 golden=$4 make_municipality=$5 work=$6
rm -rf "$work"
mkdir -p "$work/run" "$work/config/VexaSoft"
settings=$work/config/VexaSoft/Campiva.ini
. "$(dirname "$0")/screen.sh"

same() { # file, as expected in
  cmp "$work/run/$1" "$2/$1" || fail "$1 isn't what a batch run writes"
}
stored() { # section line
  awk -v s="[$1]" '/^\[/ {in_it = ($0 ~ "^" "\\" s)} in_it' "$settings" | tr -d '\r' |
    grep -qxF "$2" || fail "not stored: $2 in $1"
}
eventually() { # command
  for _ in $(seq 150); do "$@" && return; sleep 0.2; done
  fail "never: $*"
}
choose() { # letter, title
  await Campiva
  keys "alt+$1" alt+a
  await "$2"
}

case_catastro_to_vexa() {
  cp "$samples/villanueva.txt" "$work/run"
  start
  choose c "Catastro campiva a Vexa"
  keys Tab
  fill villanueva.txt
  keys alt+a
  await "Fin del proceso"
  keys Return
  await "Catastro campiva a Vexa"
  keys space # the focus stayed on the button, which is "Salir" again
  ended
  for table in Modulos Titulares Parcelas Subparcelas Parajes Cotitulares; do
    same "$table.txt" "$golden/clean_municipality/expected"
  done
  stored Campiva TipoTraduccion=0
  stored CampivaAVexa ArchivoEntrada=villanueva.txt
}

case_vexa_to_catastro() {
  cp -r "$samples"/villanueva_{tablas,dibujos}_con_faltas "$work/run"
  start
  choose v "Vexa a Catastro campiva"
  for table in Modulos Titulares Parcelas Subparcelas Parajes Cotitulares; do
    fill "villanueva_tablas_con_faltas/$table.txt"
    keys Tab Tab
  done
  fill villanueva_dibujos_con_faltas/poligonos.txt
  keys Tab Tab
  fill villanueva_dibujos_con_faltas/ortos.TOP
  keys alt+m alt+i alt+p alt+o alt+a
  for _ in $(seq 40); do # an error box for each file that is missing or out of date
    case $(front_title) in
      Error) await Error; keys Return ;;
      "Fin del proceso") break ;;
    esac
    sleep 0.2
  done
  await "Fin del proceso"
  keys Return
  await Error # some parcels couldn't be stored
  keys Return
  await "Vexa a Catastro campiva"
  keys Escape
  ended
  (cd "$golden/drawings_disagree_all_options/expected" && find . -type f) | while read -r name; do
    same "$name" "$golden/drawings_disagree_all_options/expected"
  done
  stored VexaACampiva2 ModificarConcentradas=1
  stored VexaACampiva2 ArchivoOrtos=villanueva_dibujos_con_faltas/ortos.TOP
}

case_vexa_to_infograf() {
  cp -r "$samples/villanueva_dibujos" "$work/run"
  start
  choose i "Vexa a Infograf"
  fill villanueva_dibujos/poligonos.txt
  keys Tab Tab
  fill villanueva_dibujos/ortos.TOP
  keys alt+a
  eventually cmp -s "$work/run/villanueva_dibujos/045127.CSP" \
    "$golden/dialog_infograf/expected/villanueva_dibujos/045127.CSP"
  keys alt+a # once more; no box told of the end of the first
  await "Vexa a Infograf"
  sleep 1
  keys alt+F4
  ended
  same villanueva_dibujos/045127.CSP "$golden/dialog_infograf/expected"
  stored VexaAInfograf ArchivoTren=villanueva_dibujos/poligonos.txt
}

# A run long enough to be stopped, with the question answered No, then Yes.
long_run() {
  "$make_municipality" --parcels 400000 "$work/run/larga.txt"
  start
  choose c "Catastro campiva a Vexa"
  keys Tab
  fill larga.txt
  keys alt+a
  sleep 0.5
  keys space # the focus is on "Detener"
  await "Pausa de usuario"
  keys alt+n
  await "Catastro campiva a Vexa"
  keys Escape
  await "Pausa de usuario"
  keys alt+s
}

case_stop() {
  long_run
  await "Fin del proceso"
  keys Return
  await "Catastro campiva a Vexa"
  keys alt+F4
  ended
  [ "$(wc -l < "$work/run/Parcelas.txt")" -lt 400000 ] || fail "the run wasn't stopped"
  stored CampivaAVexa ArchivoEntrada=larga.txt
}

case_closed_while_choosing() {
  start
  await Campiva
  keys alt+i Escape
  ended
  [ ! -e "$settings" ] || fail "a choice that wasn't accepted is stored"
}

case_no_button_marked() {
  printf '[Campiva]\r\nTipoTraduccion=7\r\n' > "$settings"
  start
  await Campiva
  keys alt+a
  ended
  stored Campiva TipoTraduccion=-1
}

case_typed_and_left() {
  start
  choose i "Vexa a Infograf"
  fill a_medias.txt
  keys alt+s
  ended
  stored VexaAInfograf ArchivoTren=
  stored Campiva TipoTraduccion=2
}

popup_is_there() { # pale yellow, over at least so many points of the screen
  [ "$(import -window root png:- |
    convert png:- -fill black +opaque '#FFFFD0' -format '%[fx:int(mean*w*h)]' info:)" -gt 2000 ]
}
popup_is_gone() { ! popup_is_there; }

case_help() {
  start
  choose v "Vexa a Catastro campiva"
  keys F1
  eventually popup_is_there
  keys Escape # takes the popup away and nothing else
  eventually popup_is_gone
  keys alt+c
  await "Acerca de Campiva..."
  keys Return
  await "Vexa a Catastro campiva"
  keys alt+y
  await "Ayuda: Campiva"
  keys alt+F4
  await "Vexa a Catastro campiva"
  keys alt+s
  ended
}

case_damaged_help() { # by one byte at which the reader of such files would die
  mkdir "$work/bin"
  cp "$program" "$(dirname "$program")"/campiva.chm* "$work/bin"
  program=$work/bin/campiva-gui
  printf '\0' | dd of="$work/bin/campiva.chm" bs=1 seek=1019 conv=notrunc status=none
  start
  choose v "Vexa a Catastro campiva"
  keys F1 alt+y
  await Ayuda
  keys Return
  await "Vexa a Catastro campiva"
  keys Escape
  ended
}

case_batch() {
  cp "$samples/villanueva.txt" "$work/run"
  start 0 villanueva.txt m t p s j no_hay/c
  await Error
  keys Return
  await "Fin del proceso"
  keys Return
  ended 1
  [ ! -e "$settings" ] || fail "a batch run stored something"
  cmp "$work/run/p" "$golden/clean_municipality/expected/Parcelas.txt"
}

start_screen 1400x1000
"case_$case"
# The toolkit below the library has complaints of its own, about the help's window and the machine.
! grep -vE '^$|(CRITICAL|WARNING) \*\*' "$work/stderr" || fail "the program complains"

