#!/usr/bin/env bash
# Installs an older program without a word, works with it, puts the newer one over it and removes that:
# for one user, then for all. Looks at what is there after each step.
#   run.sh installer version samples golden work runner registry make_installer...
set -euo pipefail
installer=$1 version=$2 samples=$3 golden=$4 work=$5 runner=$6 registry=$7
shift 7
make_installer=("$@")
entry='Software\Microsoft\Windows\CurrentVersion\Uninstall\Campiva'
rm -rf "$work"
mkdir -p "$work/older"

fail() {
  echo "FAILED: $*" >&2
  exit 1
}
windows() { "$runner" "$@" 2> /dev/null | tr -d '\r'; }
drive=$("$runner" --drive)
# All files but those that the system itself puts down and takes away when it likes.
files() { (cd "$drive" && find . -path '*/Temp/*' -prune -o -print | sort); }
in_entry() { # root value
  windows reg query "$1\\$entry" /v "$2" | sed -n "s/^ *$2 *REG_[A-Z]* *//p"
}
no_entry() { ! windows reg query "$1\\$entry" > /dev/null || fail "an entry in $1 stays"; }
installed() { # root version
  [ "$(in_entry "$1" DisplayVersion)" = "$2" ] || fail "the entry in $1 isn't one of $2"
  [ -e "$folder/campiva-gui.exe" ] && [ -e "$folder/campiva.chm" ] || fail "no program in $folder"
  cmp "$samples/villanueva.txt" "$folder/Muestras/villanueva.txt" || fail "no samples"
  [ "$(find "$menu" -name '*.lnk' | wc -l)" -eq 3 ] || fail "no entries in the menu"
}
runs_a_sample() {
  (cd "$folder/Muestras" && "$runner" "$folder/campiva.exe" 0 villanueva.txt Modulos.txt \
    Titulares.txt Parcelas.txt Subparcelas.txt Parajes.txt Cotitulares.txt) \
    > "$work/stdout" 2>&1 || fail "the sample doesn't run"
  for table in Modulos Titulares Parcelas Subparcelas Parajes Cotitulares; do
    cmp "$golden/clean_municipality/expected/$table.txt" "$folder/Muestras/$table.txt" ||
      fail "$table.txt isn't what it should be"
  done
}
waits() { # until the command holds
  for _ in $(seq 100); do "$@" && return; sleep 0.1; done
  fail "never: $*"
}
gone() { [ ! -e "$1" ]; }

cycle() { # root of the registry, option, folder, menu
  local root=$1 option=$2
  folder=$drive/$3 menu=$drive/$4/Campiva
  "$runner" "$work/older.exe" /S $option || fail "the older one isn't installed"
  installed "$root" 1.0.0
  [ -e "$folder/Muestras/retirada.txt" ] || fail "the older one isn't whole"
  "$runner" "$installer" /S $option || fail "the newer one isn't installed"
  installed "$root" "$version"
  gone "$folder/Muestras/retirada.txt" || fail "a file of the older one stays"
  runs_a_sample
  "$runner" "$folder/Desinstalar.exe" /S ${option:-/CurrentUser} || fail "it isn't removed"
  waits gone "$folder"
  no_entry "$root"
  diff "$work/before" <(files) || fail "something stays, or went"
  [ "$(windows reg query 'HKCU\Software\VexaSoft\Campiva\Campiva' /v TipoTraduccion |
    grep -c 2)" -ge 1 ] || fail "what the user stored is gone"
}

cp "$samples/villanueva.txt" "$work/older"
echo "only in the older one" > "$work/older/retirada.txt"
"${make_installer[@]}" -DVERSION=1.0.0 "-DSAMPLES=$work/older" "-DOUT=$work/older.exe" \
  "$(dirname "$0")/../../packaging/windows/campiva.nsi"
printf '[Campiva]\r\nTipoTraduccion=2\r\n' > "$work/settings"
"$runner" "$registry" put "$work/settings"
windows reg query 'HKCU\Software' > /dev/null # it is awake, and its folders are made
user=$(cd "$drive" && echo users/[!P]*)
mkdir -p "$drive/$user/AppData/Local/Programs" # the system's own folder for them
files > "$work/before"
cycle HKCU "" "$user/AppData/Local/Programs/Campiva" \
  "$user/AppData/Roaming/Microsoft/Windows/Start Menu/Programs"
cycle HKLM /AllUsers "Program Files/Campiva" "ProgramData/Microsoft/Windows/Start Menu/Programs"
