#!/usr/bin/env bash
# Works campiva-gui by its keyboard on a screen of its own and looks at what it leaves on disk.
#   run_case.sh case program samples golden make_municipality work [runner registry]
# A program for Windows comes with what runs it here, and with what knows its settings.
set -euo pipefail
case=$1 program=$2 samples=$3 golden=$4 make_municipality=$5 work=$6 runner=${7:-}
registry=${8:-}
rm -rf "$work"
mkdir -p "$work/run" "$work/config/VexaSoft"
settings=$work/config/VexaSoft/Campiva.ini
. "$(dirname "$0")/screen.sh"

same() { # file, as expected in
  cmp "$work/run/$1" "$2/$1" || fail "$1 isn't what a batch run writes"
}
put_settings() { [ -z "$registry" ] || $runner "$registry" put "$settings"; }
show_settings() {
  [ -z "$registry" ] || $runner "$registry" show "$settings"
  [ -s "$settings" ]
}
stored() { # section line
  show_settings || fail "nothing is stored"
  awk -v s="[$1]" '/^\[/ {in_it = ($0 ~ "^" "\\" s)} in_it' "$settings" | tr -d '\r' |
    grep -qxF "$2" || fail "not stored: $2 in $1"
}
eventually() { # command
  for _ in $(seq "$patience"); do "$@" && return; sleep 0.1; done
  fail "never: $*"
}
choose() { # letter, title
  await Campiva
  keys "alt+$1" alt+a
  await "$2"
}
dismiss() { # title of a box
  await "$1"
  keys Return
}
start_way_out() { # input
  start
  choose c "Catastro campiva a Vexa"
  keys Tab
  fill "$1"
}
leave() { # the program, by its dialog
  keys Escape
  ended
}

case_catastro_to_vexa() {
  cp "$samples/villanueva.txt" "$work/run"
  start_way_out '"villanueva.txt"' # as the Explorer copies a path
  keys alt+a
  dismiss "Fin del proceso"
  await "Catastro campiva a Vexa"
  keys Return # the focus is back in the field, where Enter runs once more and closes nothing
  dismiss "Fin del proceso"
  await "Catastro campiva a Vexa"
  leave
  for table in Modulos Titulares Parcelas Subparcelas Parajes Cotitulares; do
    same "$table.txt" "$golden/clean_municipality/expected"
  done
  stored Campiva TipoTraduccion=0
  stored CampivaAVexa ArchivoEntrada=villanueva.txt
}

# Has the program of the user's choice for texts and folders, which notes what it is told to open.
note_what_is_opened() {
  mkdir -p "$work/data/applications"
  printf '#!/bin/sh\necho "$1" >> "%s"\n' "$work/opened" > "$work/open"
  chmod +x "$work/open"
  printf '[Desktop Entry]\nType=Application\nName=Open\nExec="%s" %%f\nMimeType=%s\n' "$work/open" \
    'text/plain;text/html;inode/directory;' > "$work/data/applications/open.desktop"
  printf '[Default Applications]\ntext/plain=open.desktop\ntext/html=open.desktop\ninode/directory=open.desktop\n' \
    > "$work/config/mimeapps.list"
}
opened() { [ -e "$work/opened" ] && grep -qxF "$1" "$work/opened"; }

twice_begun() { [ "$(wc -l < "$work/reports")" -eq 2 ]; }
twice_made() { [ "$(wc -l < "$work/made")" -eq 2 ]; }

# A report takes its time, in which the user goes on, and a second one isn't asked for.
case_slow_report() {
  note_what_is_opened
  mkdir "$work/bin"
  cp "$program" "$work/bin"
  program=$work/bin/campiva-gui
  cat > "$work/bin/campiva-informe" <<END
#!/bin/sh
echo begun >> "$work/reports"
for _ in \$(seq $patience); do [ ! -e "$work/go" ] || break; sleep 0.1; done
[ -e "$work/fails" ] || echo '<!DOCTYPE html>' > "\$2" # behind --html; an empty file is no page to some systems
echo done >> "$work/made"
END
  chmod +x "$work/bin/campiva-informe"
  cp "$samples/villanueva.txt" "$work/run"
  start_way_out villanueva.txt
  keys alt+a
  dismiss "Fin del proceso"
  await "Catastro campiva a Vexa"
  keys alt+f
  eventually test -e "$work/reports"
  keys alt+a
  dismiss "Fin del proceso"
  await "Catastro campiva a Vexa"
  keys alt+f
  sleep 0.5
  [ "$(wc -l < "$work/reports")" -eq 1 ] || fail "two reports are made at a time"
  touch "$work/go"
  eventually opened "$work/run/villanueva.html"
  rm "$work/go"
  touch "$work/fails"
  keys alt+f
  eventually twice_begun
  keys alt+a
  await "Fin del proceso"
  touch "$work/go"
  eventually twice_made
  sleep 1
  [ "$(front_title)" = "Fin del proceso" ] || fail "a report's box stands before a run that goes on"
  keys Return
  dismiss "Error"
  await "Catastro campiva a Vexa"
  leave
}

case_vexa_to_catastro() {
  note_what_is_opened
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
  keys alt+m alt+i alt+p alt+o
  if [ -z "$runner" ] && [ -e "$(dirname "$program")/campiva-informe" ]; then # tried first, by what the dialog holds
    tables=$(cat "$work/run/villanueva_tablas_con_faltas/"* | md5sum)
    keys alt+n
    eventually opened "$work/run/villanueva_dibujos_con_faltas/poligonos_ensayo.html"
    grep -q 'Ensayo: no se ha cambiado nada' "$work/run/villanueva_dibujos_con_faltas/poligonos_ensayo.html" ||
      fail "the page is no trial's"
    [ "$tables" = "$(cat "$work/run/villanueva_tablas_con_faltas/"* | md5sum)" ] || fail "the trial changes a table"
  fi
  keys alt+a
  past_errors
  dismiss "Fin del proceso"
  dismiss Error # some parcels couldn't be stored
  dismiss Observaciones # a row couldn't be read
  dismiss Observaciones # and so on, as far as a box has room for it
  await "Vexa a Catastro campiva"
  keys alt+r
  if [ -n "$runner" ]; then # what Wine has for texts
    await '*045127*'
    keys alt+F4
    await "Vexa a Catastro campiva"
  else
    eventually opened "$work/run/villanueva_dibujos_con_faltas/045127.ERR"
    keys alt+e
    eventually opened "$work/run/villanueva_dibujos_con_faltas"
    if [ -e "$(dirname "$program")/campiva-informe" ]; then
      keys alt+f
      eventually opened "$work/run/villanueva_dibujos_con_faltas/045127.html"
      grep -q 'registros PR</td><td' "$work/run/villanueva_dibujos_con_faltas/045127.html" ||
        fail "the report knows nothing of the tables"
    fi
  fi
  leave
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

# Lets the program work an eighth of the time, so that no key comes too late for its run.
slow_down() {
  while kill -STOP "$program_pid" 2> /dev/null; do
    sleep 0.07
    kill -CONT "$program_pid"
    sleep 0.01
  done &
  slower_pid=$!
}
go_on_as_usual() {
  kill "$slower_pid"
  kill -CONT "$program_pid"
}

# A run long enough to be stopped, with the question answered No, then Yes.
long_run() {
  $runner "$make_municipality" --parcels 400000 "$work/run/larga.txt"
  start_way_out larga.txt
  slow_down
  keys alt+a
  await '[1-9]* % - Catastro campiva a Vexa'
  keys space # the focus is on "Detener"
  await "Pausa de usuario"
  keys n
  await '[1-9]* % - Catastro campiva a Vexa'
  keys "${leave_key:-Escape}"
  await "Pausa de usuario"
  keys s
  go_on_as_usual
}

case_stop() {
  # On Windows a run takes the user's messages one by one, and knows no keys of the dialog's own.
  [ -z "$runner" ] || local leave_key=alt+F4
  long_run
  dismiss "Fin del proceso"
  dismiss Observaciones # not all is written
  await "Catastro campiva a Vexa"
  keys alt+F4
  ended
  [ "$(wc -l < "$work/run/Parcelas.txt")" -lt 400000 ] || fail "the run wasn't stopped"
  stored CampivaAVexa ArchivoEntrada=larga.txt
}

# Whoever ends a session finds no box that keeps the program from its end.
case_told_to_end() {
  head -c -9 "$samples/villanueva.txt" > "$work/run/cortada.txt" # so that there are observations, too
  start_way_out cortada.txt
  keys alt+a
  await "Fin del proceso"
  kill -s TERM "$program_pid"
  ended 143
}

# A run that emptied the tables, as its list is another municipality's, tells it and what it kept in a box,
# to the last word.
case_observations() {
  local folder=$(printf 'municipios_de_la_provincia_%d/' 1 2 3) fresh=$work/fresh
  mkdir -p "$work/run/$folder" "$fresh"
  cp "$samples"/villanueva_tablas_con_faltas/* "$fresh"
  cp "$samples"/villanueva_dibujos_con_faltas/* "$work/run/$folder"
  sed -i 's/045127/045128/' "$work/run/${folder}poligonos.txt"
  {
    printf '[Campiva]\r\nTipoTraduccion=1\r\n[VexaACampiva2]\r\nModificar=1\r\n'
    for table in Modulos Titulares Parcelas Subparcelas Parajes Cotitulares; do
      printf 'Archivo%s=%s%s.txt\r\n' "$table" "$folder" "$table"
    done
    printf 'ArchivoTren=%spoligonos.txt\r\nArchivoOrtos=%sortos.TOP\r\n' "$folder" "$folder"
  } > "$settings"
  put_settings
  start
  choose v "Vexa a Catastro campiva"
  for run in once again last; do
    rm -f "$work/run/$folder"*.{R,M,anterior}
    cp "$fresh"/* "$work/run/$folder"
    # What is told last ends in another way where an older copy keeps its name.
    [ "$run" != last ] || echo older > "$work/run/${folder}Subparcelas.txt.anterior"
    keys alt+a
    past_errors
    keys Return
    await Observaciones
    measure
    [ $((Y + HEIGHT)) -le 1000 ] || fail "the box passes the screen's bottom"
    settled_look "$run"
    keys Return
    await "Vexa a Catastro campiva"
  done
  same_look once again || fail "the same is told in another way"
  ! same_look once last || fail "the end of what is told doesn't show"
  leave
}

case_closed_while_choosing() {
  start
  await Campiva
  keys alt+i Escape
  ended
  ! show_settings || fail "a choice that wasn't accepted is stored"
}

case_no_button_marked() {
  printf '[Campiva]\r\nTipoTraduccion=7\r\n' > "$settings"
  put_settings
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

browse() { # path; from the field to its button
  keys Tab space
  await Abrir
  [ -n "$runner" ] || keys ctrl+l # to write the path
  sleep 0.2
  xdotool type --delay 8 -- "$1"
  keys Return
  await "Vexa a Infograf"
}

case_browse() {
  cp -r "$samples/villanueva_dibujos" "$work/run"
  start
  choose i "Vexa a Infograf"
  local folder=$work/run/villanueva_dibujos/
  [ -z "$runner" ] || folder=Z:${folder//\//\\}
  browse "${folder}poligonos.txt"
  keys Tab
  browse ortos.TOP # the box of an empty field is in the folder of the file before
  leave
  stored VexaAInfograf "ArchivoOrtos=${folder}ortos.TOP"
}

popup_is_there() { # pale yellow, over at least so many points of the screen
  [ "$(import -window root png:- |
    convert png:- -fill black +opaque '#FFFFD0' -format '%[fx:int(mean*w*h)]' info:)" -gt 2000 ]
}
popup_is_gone() { ! popup_is_there; }

case_help() {
  [ -z "$runner" ] || local leave_help=alt+F4
  start
  choose v "Vexa a Catastro campiva"
  keys F1
  eventually popup_is_there
  keys Escape # takes the popup away and nothing else
  eventually popup_is_gone
  keys alt+c
  await "Acerca de Campiva..."
  keys F1
  await "Ayuda*Campiva"
  keys "${leave_help:-Escape}" # takes the help away and nothing else
  dismiss "Acerca de Campiva..."
  await "Vexa a Catastro campiva"
  keys alt+y
  await "Ayuda*Campiva"
  keys alt+F4
  await "Vexa a Catastro campiva"
  keys alt+s
  ended
}

look() { import -window "$(xdotool getactivewindow)" "$work/$1.png"; }
same_look() { cmp -s <(convert "$work/$1.png" rgb:-) <(convert "$work/$2.png" rgb:-); }

# A picture of the window when nothing changes in it any more: what is typed comes with a delay.
settled_look() {
  look "$1"
  for _ in $(seq "$patience"); do
    sleep 0.7 # longer than a caret stands
    look "$1.again"
    ! same_look "$1" "$1.again" || return 0
    mv "$work/$1.again.png" "$work/$1.png"
  done
  fail "the window never comes to rest"
}

case_long_path() {
  local tail=/$(printf 'carpeta_%d/' $(seq 20))parcelas.txt
  start
  choose i "Vexa a Infograf"
  for path in "uno$tail" "dos$tail" "dos${tail%.txt}.TXT"; do
    fill "$path"
    keys Tab # leaves no caret in the picture
    settled_look "${path:0:3}${path: -3}"
    keys shift+Tab
  done
  same_look unotxt dostxt || fail "the beginning of a long path shows"
  ! same_look dostxt dosTXT || fail "the end of a long path doesn't show"
  leave
}

# Presses "Salir", at the right of the lowest row of the template, where it must be.
press_leave() { # pixels above the window's bottom
  xdotool mousemove --window "$(xdotool getactivewindow)" $((WIDTH - 70)) $((HEIGHT - $1)) click 1
}
measure() { eval "$(xdotool getactivewindow getwindowgeometry --shell)"; }

case_wider() {
  start
  choose i "Vexa a Infograf"
  measure
  local before=$WIDTH height=$HEIGHT
  xdotool getactivewindow windowsize 1100 $((HEIGHT + 200))
  sleep 0.5
  measure
  [ "$before" -lt 1100 ] && [ "$WIDTH" -eq 1100 ] || fail "$before wide at first, then $WIDTH"
  if [ -z "$runner" ]; then # Wine lets a window's limits be passed over
    [ "$HEIGHT" -eq "$height" ] || fail "$HEIGHT high, not $height"
  fi
  press_leave $((HEIGHT - height + 67))
  ended
}

case_low_screen() {
  export GDK_DPI_SCALE=1.25
  start
  choose v "Vexa a Catastro campiva"
  measure
  [ $((Y + HEIGHT)) -le 600 ] || fail "the window passes the screen's bottom"
  keys shift+Tab # from the first control to the last one
  [ ! -e "$(dirname "$program")/campiva-informe" ] || keys shift+Tab # which stands before the trial's
  sleep 0.3
  press_leave 80
  ended
}

# Where letters are larger than usual, too, its rows come so near that all of the dialog is there.
case_laptop_screen() {
  export GDK_DPI_SCALE=1.25
  start
  choose v "Vexa a Catastro campiva"
  measure
  press_leave 80
  ended
}

case_box_on_narrow_screen() {
  local folder=$(printf 'municipios_de_la_provincia_%d/' $(seq 8))
  mkdir -p "$work/run/${folder}045127.ERR" # no log can be created there
  cp "$samples/villanueva.txt" "$work/run/${folder}045127.txt"
  start_way_out "${folder}045127.txt"
  keys alt+a
  await Error
  measure
  [ "$X" -ge 0 ] && [ $((X + WIDTH)) -lt 640 ] || fail "the box passes the screen: $WIDTH wide at $X"
  keys Return
  await "Catastro campiva a Vexa"
  leave
}

# What is pasted as several lines, here of the manual, is the first of them.
case_pasted_lines() {
  start
  choose c "Catastro campiva a Vexa"
  keys alt+y
  await "Ayuda*Campiva"
  measure
  local help=$(xdotool getactivewindow) from=$((HEIGHT / 6)) to=$((HEIGHT * 3 / 4))
  xdotool mousemove --window "$help" $((WIDTH * 3 / 4)) "$from" mousedown 1 sleep 0.2 \
    mousemove --window "$help" $((WIDTH * 3 / 4)) "$to" sleep 0.2 mouseup 1 # marked is copied
  keys Escape
  await "Catastro campiva a Vexa"
  measure
  xdotool mousemove --window "$(xdotool getactivewindow)" $((WIDTH / 4)) $((HEIGHT * 18 / 100)) click 2
  sleep 0.3
  keys alt+a
  dismiss Error # there is no such file
  await "Catastro campiva a Vexa"
  leave
  grep -q 'ArchivoEntrada=..' "$settings" || fail "nothing was pasted"
}

case_damaged_help() { # by one byte at which the reader of such files would die
  mkdir "$work/bin"
  cp "$program" "$(dirname "$program")"/campiva.chm* "$work/bin"
  program=$work/bin/campiva-gui
  printf '\0' | dd of="$work/bin/campiva.chm" bs=1 seek=1019 conv=notrunc status=none
  start
  choose v "Vexa a Catastro campiva"
  keys F1 alt+y
  dismiss Ayuda
  await "Vexa a Catastro campiva"
  leave
}

# Windows: without its help file the program says so, and with the manual's pages it has those shown.
case_no_help() {
  local classes='HKLM\Software\Classes'
  mkdir -p "$work/bin"
  cp "$program" "$work/bin"
  program=$work/bin/campiva-gui.exe
  {
    $runner reg add "$classes\.html" /ve /d pagina /f
    $runner reg add "$classes\pagina\shell\open\command" /ve /f \
      /d "cmd.exe /c echo %1 > \"Z:${work//\//\\}\\opened\""
  } > /dev/null 2>&1
  start
  choose v "Vexa a Catastro campiva"
  keys F1
  dismiss Ayuda
  await "Vexa a Catastro campiva"
  keys alt+y
  await Ayuda
  look no_help
  keys Return
  await "Vexa a Catastro campiva"
  [ ! -e "$work/opened" ] || fail "something is shown that isn't there"
  mkdir "$work/bin/manual"
  echo '<html><body>inicio</body></html>' > "$work/bin/manual/inicio.html"
  keys alt+y
  eventually grep -qs 'manual[\/]inicio.html' "$work/opened"
  for class in .html pagina; do $runner reg delete "$classes\\$class" /f > /dev/null 2>&1; done
  await "Vexa a Catastro campiva"
  leave
}

case_batch() {
  cp "$samples/villanueva.txt" "$work/run"
  start 0 villanueva.txt m t p s j no_hay/c
  dismiss Error
  dismiss "Fin del proceso"
  ended 1
  ! show_settings || fail "a batch run stored something"
  cmp "$work/run/p" "$golden/clean_municipality/expected/Parcelas.txt"
  : > "$work/run/vacia.txt"
  start 0 vacia.txt m t p s j c
  dismiss "Fin del proceso"
  ended # what it has observed holds nobody up
  grep -q 'El archivo vacia.txt está vacío' "$work/stderr" || fail "nothing is told of an empty input"
  : > "$work/stderr"
}

put_settings
case $case in
  low_screen) start_screen 1024x600 ;;
  laptop_screen) start_screen 1366x768 ;;
  box_on_narrow_screen) start_screen 640x480 ;;
  *) start_screen 1400x1000 ;;
esac
"case_$case"
! grep -v '^wine: ' "$work/stderr" || fail "the program complains"
