#!/usr/bin/env bash
# Installs Campiva without a word over older ones and removes it, for one user and for all, while people
# keep files of their own in every folder that it touches. Looks at what is there after each step.
#   run.sh installer version content samples golden work runner registry in_the_way cmake make_installer...
set -euo pipefail
installer=$1 version=$2 content=$3 samples=$4 golden=$5 work=$6 runner=$7 registry=$8 in_the_way=$9 cmake=${10}
shift 10
make_installer=("$@")
source=$(dirname "$0")/../../packaging/windows
entry='Software\Microsoft\Windows\CurrentVersion\Uninstall\Campiva'
rm -rf "$work"
mkdir -p "$work"

fail() {
  echo "FAILED: $*" >&2
  exit 1
}
windows() { "$runner" "$@" 2> /dev/null | tr -d '\r'; }
drive=$("$runner" --drive)
# All files but those that the system itself puts down and takes away when it likes.
files() { (cd "$drive" && find . -path '*/Temp/*' -prune -o -print | sort); }
in_registry() { windows reg query "$1" /v "$2" | sed -n "s/^ *$2 *REG_[A-Z_]* *//p"; } # key value
no_entry() { ! windows reg query "$1\\$entry" > /dev/null || fail "an entry in $1 stays"; }
installed() { # root version
  [ "$(in_registry "$1\\$entry" DisplayVersion)" = "$2" ] || fail "the entry in $1 isn't one of $2"
  (cd "$content" && find . -type f) | while read -r file; do
    [ -e "$folder/$file" ] || fail "there is no $file"
  done
  [ "$(find "$menu" -name '*Campiva*.lnk' | wc -l)" -eq 4 ] || fail "there aren't four entries in the menu"
}
waits() { # until the command holds
  for _ in $(seq 100); do "$@" && return; sleep 0.1; done
  fail "never: $*"
}
windows_path() { windows winepath -w "$1"; }
gone() { [ ! -e "$1" ]; }
unknown() { ! windows reg query "$1\\$entry" > /dev/null; } # root
removed() { # option
  local root=HKCU
  [ "$1" != /AllUsers ] || root=HKLM
  "$runner" "$folder/Desinstalar.exe" /S "$1" || fail "it isn't removed"
  waits gone "$folder/Desinstalar.exe"
  waits unknown "$root" # what goes last
}

# What people have, by the path and in the order in which it was put there; the content tells which it is.
people=() contents=()
puts() { # path content
  mkdir -p "$(dirname "$1")"
  printf '%s' "$2" > "$1"
  people+=("$1") contents+=("$2")
}
moved() { # index path: the installer made room and tells by the name
  people[$1]=$2
}
all_kept() {
  local i
  for i in "${!people[@]}"; do
    [ "$(cat "${people[$i]}" 2> /dev/null)" = "${contents[$i]}" ] || fail "lost: ${people[$i]}"
  done
}
# Nothing but what people have is more than there was before, and that they take away themselves.
only_theirs_stays() {
  all_kept
  rm -f -- "${people[@]}"
  for path in "${people[@]}"; do
    (cd "$drive" && rmdir -p --ignore-fail-on-non-empty "$(dirname "${path#"$drive"/}")" 2> /dev/null) || true
  done
  mkdir -p "$drive/$programs"
  people=() contents=()
  diff "$work/before" <(files) || fail "something stays, or went"
}

runs_a_sample() { # where the menu has it begin
  local samples_there="$documents/Muestras de Campiva"
  "$runner" "$folder/campiva-muestras.exe" /S || fail "the samples aren't copied"
  cmp "$samples/villanueva.txt" "$samples_there/villanueva.txt" || fail "no samples"
  printf 'suyo' > "$samples_there/villanueva_lista.txt"
  "$runner" "$folder/campiva-muestras.exe" /S || fail "the samples aren't copied again"
  [ "$(cat "$samples_there/villanueva_lista.txt")" = suyo ] || fail "a sample at work is written over"
  (cd "$samples_there" && "$runner" "$folder/campiva.exe" 0 villanueva.txt Modulos.txt \
    Titulares.txt Parcelas.txt Subparcelas.txt Parajes.txt Cotitulares.txt) \
    > "$work/stdout" 2>&1 || fail "the sample doesn't run"
  for table in Modulos Titulares Parcelas Subparcelas Parajes Cotitulares; do
    cmp "$golden/clean_municipality/expected/$table.txt" "$samples_there/$table.txt" ||
      fail "$table.txt isn't what it should be"
  done
  begins_in_the_documents "$1"
  rm -r "$samples_there"
}
# Started in its own folder, as by a click on it, it has its dialogs read and write among the documents.
begins_in_the_documents() {
  local program_folder
  program_folder=$(ls "$folder")
  (cd "$folder" && "$runner" campiva.exe << 'END'
1009
1
1000=Muestras de Campiva\villanueva.txt
1
END
  ) > "$work/stdout" 2>&1 || fail "its dialog doesn't run"
  [ "$(ls "$folder")" = "$program_folder" ] || fail "tables beside the program"
  cmp "$golden/clean_municipality/expected/Parcelas.txt" "$documents/Parcelas.txt" || fail "no tables"
  rm "$documents"/{Modulos,Titulares,Parcelas,Subparcelas,Parajes,Cotitulares}.txt
  tr -d '\0' < "$menu/Campiva.lnk" | grep -aqi "$1" || fail "the menu begins in another folder"
}

cycle() { # root of the registry, option, folder, menu, where the menu has it begin
  local root=$1 option=$2 begins=$5
  folder=$drive/$3 menu=$drive/$4/Campiva
  "$runner" "$work/first_release.exe" /S "$option" || fail "the first release isn't installed"
  puts "$folder/Muestras/Arroyo/GerMun.txt" "a municipality among the samples"
  puts "$folder/Muestras/villanueva.txt" "a sample that somebody changed"
  puts "$folder/Muestras/villanueva_dibujos/005.BIN" "a drawing more"
  puts "$folder/notas.txt" "beside the program"

  "$runner" "$work/older.exe" /S "$option" || fail "the older one isn't installed"
  installed "$root" 1.6.5
  all_kept
  gone "$folder/Muestras/villanueva_con_faltas.txt" || fail "a sample that nobody changed stays"
  gone "$folder/Muestras/villanueva_tablas_con_faltas" || fail "a folder of samples stays"
  [ -e "$folder/retirada.txt" ] || fail "the older one isn't whole"
  local readme=${#people[@]}
  puts "$folder/LEEME.txt" "with a note of one's own"
  puts "$folder/manual/notas.html" "beside the manual"
  puts "$menu/Otro.lnk" "in the menu"
  mkdir "$folder/vacía"

  "$runner" "$installer" /S "$option" || fail "the newer one isn't installed"
  moved $readme "$folder/LEEME.txt.anterior"
  installed "$root" "$version"
  all_kept
  gone "$folder/retirada.txt" || fail "a file of the older one stays"
  cmp "$content/LEEME.txt" "$folder/LEEME.txt" || fail "the text is the older one's"
  runs_a_sample "$begins"
  removed "$option"
  no_entry "$root"
  rmdir "$folder/vacía" || fail "an empty folder of theirs went"
  only_theirs_stays
}

# Over a folder that is there, with names in it that are the installer's own.
over_a_folder() {
  folder=$drive/Datos menu=$drive/$user_menu/Campiva
  local i
  local -r names=(campiva.txt LEEME.txt Desinstalar.exe manual/inicio.html)
  for i in "${!names[@]}"; do puts "$folder/${names[$i]}" "theirs, $i"; done
  puts "$folder/Muestras/villanueva.txt" "their village"
  puts "$folder/LEEME.txt.anterior" "an older text of theirs"
  "$runner" "$installer" /S '/D=C:\Datos' || fail "it isn't installed in Datos"
  for i in "${!names[@]}"; do moved "$i" "$folder/${names[$i]}.anterior"; done
  moved 1 "$folder/LEEME.txt.anterior2"
  installed HKCU "$version"
  all_kept
  removed /CurrentUser
  only_theirs_stays
}

# A list that is longer than an installer's own texts may be, with variables in it.
enters_the_path() {
  local -r key='HKCU\Environment'
  local list i
  list='%USERPROFILE%\bin'
  for i in $(seq 200); do list+=";C:\\Una carpeta de programas\\$i"; done
  windows reg add "$key" /v Path /t REG_EXPAND_SZ /d "$list" /f > /dev/null
  folder=$drive/$programs/Campiva menu=$drive/$user_menu/Campiva
  "$runner" "$installer" /S /Path || fail "it isn't installed with PATH"
  local place='C:\users\'"$(basename "$user")"'\AppData\Local\Programs\Campiva'
  [ "$(in_registry "$key" Path)" = "$list;$place" ] || fail "PATH is $(in_registry "$key" Path)"
  "$runner" "$installer" /S || fail "it isn't installed again"
  [ "$(in_registry "$key" Path)" = "$list;$place" ] || fail "PATH isn't kept by an upgrade"
  removed /CurrentUser
  [ "$(in_registry "$key" Path)" = "$list" ] || fail "PATH isn't as it was"
  windows reg query "$key" /v Path | grep -q REG_EXPAND_SZ || fail "PATH is of another type"
  windows reg delete "$key" /v Path /f > /dev/null
  only_theirs_stays
}

# The user's own one gives way to the one for all; one whose program is open stays as it is.
one_on_a_machine() {
  folder=$drive/$programs/Campiva menu=$drive/$user_menu/Campiva
  "$runner" "$installer" /S || fail "it isn't installed for the user"
  mkfifo "$work/typed"
  "$runner" "$folder/campiva.exe" < "$work/typed" > "$work/open" 2>&1 &
  exec 8> "$work/typed"
  waits grep -q 1011 "$work/open"
  local status=0
  "$runner" "$installer" /S /AllUsers || status=$?
  [ $status -eq 2 ] || fail "over an open program it ends with $status"
  installed HKCU "$version"
  no_entry HKLM
  exec 8>&-
  wait
  "$runner" "$installer" /S /AllUsers || fail "it isn't installed for all"
  waits gone "$folder"
  no_entry HKCU
  folder="$drive/Program Files/Campiva" menu=$drive/$all_menu/Campiva
  installed HKLM "$version"
  removed /AllUsers
  only_theirs_stays
}

# hold KIND NAME: has it in the way of whatever comes, until the descriptor 8 is closed.
hold() {
  rm -f "$work/holding"
  mkfifo "$work/holding"
  "$runner" "$in_the_way" "$@" < "$work/holding" > "$work/held" 2>&1 &
  exec 8> "$work/holding"
  waits grep -q held "$work/held"
}
# An upgrade and a removal that a viewer of the manual is in the way of leave what is there whole.
while_the_manual_is_shown() {
  folder=$drive/$programs/Campiva menu=$drive/$user_menu/Campiva
  "$runner" "$work/older.exe" /S || fail "the older one isn't installed"
  hold file "$(windows_path "$folder/campiva.chm")"
  local before status=0
  before=$(ls -R "$folder")
  "$runner" "$installer" /S || status=$?
  [ $status -eq 2 ] || fail "over an open manual it ends with $status"
  [ "$before" = "$(ls -R "$folder")" ] || fail "over an open manual the older one goes"
  status=0
  "$runner" "$folder/Desinstalar.exe" /S /CurrentUser "_?=$(windows_path "$folder")" || status=$?
  [ $status -eq 2 ] || fail "with the manual open its removal ends with $status"
  [ "$before" = "$(ls -R "$folder")" ] || fail "some of it went"
  installed HKCU 1.6.5
  exec 8>&-
  wait
}
# Of two at a time one would take what the other has just written for somebody's own.
waits_for_its_turn() {
  hold turn 'Global\Campiva.Instalador'
  "$runner" "$installer" /S 8>&- &
  local second=$!
  sleep 4
  kill -0 $second || fail "it doesn't wait for its turn"
  installed HKCU 1.6.5
  exec 8>&-
  wait $second || fail "it isn't installed after its turn has come"
  installed HKCU "$version"
  removed /CurrentUser
  only_theirs_stays
}

cp -r "$content" "$work/older"
echo "only in the older one" > "$work/older/retirada.txt"
echo "another text" > "$work/older/LEEME.txt"
"$cmake" -D "FOLDER=$work/older" -D NAME=CONTENT -D "LIST=$work/content.nsh" -P "$source/list_content.cmake"
"$cmake" -D "FOLDER=$samples" -D NAME=SAMPLE -D "LIST=$work/samples.nsh" -P "$source/list_content.cmake"
"${make_installer[@]}" -DVERSION=1.6.5 "-DCONTENT=$work/older" "-DLISTS=$work" "-DOUT=$work/older.exe" \
  "$source/campiva.nsi"
"${make_installer[@]}" "-DCONTENT=$content" "-DSAMPLES=$samples" "-DOUT=$work/first_release.exe" \
  "$(dirname "$0")/older.nsi"
printf '[Campiva]\r\nSuyo=2\r\n' > "$work/settings"
"$runner" "$registry" put "$work/settings"
windows reg query 'HKCU\Software' > /dev/null # it is awake, and its folders are made
user=$(cd "$drive" && echo users/[!P]*)
programs=$user/AppData/Local/Programs # the system's own folder for them
documents=$drive/$user/Documents
[ ! -L "$documents" ] || fail "the documents are those of whoever runs this"
user_menu="$user/AppData/Roaming/Microsoft/Windows/Start Menu/Programs"
all_menu="ProgramData/Microsoft/Windows/Start Menu/Programs"
mkdir -p "$drive/$programs"
files > "$work/before"
cycle HKCU /CurrentUser "$programs/Campiva" "$user_menu" '[\]Documents'
cycle HKLM /AllUsers "Program Files/Campiva" "$all_menu" 'Program Files[\]Campiva'
over_a_folder
enters_the_path
one_on_a_machine
while_the_manual_is_shown
waits_for_its_turn
[ "$(in_registry 'HKCU\Software\VexaSoft\Campiva\Campiva' Suyo)" = 2 ] ||
  fail "what the user stored is gone"
