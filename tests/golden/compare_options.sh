#!/usr/bin/env bash
# Compares the options that completion offers for each installed program with those of its --help.
#   compare_options.sh PREFIX
set -euo pipefail
prefix=$1
compopt() { :; } # there is no line to complete
. "$prefix/share/bash-completion/completions/campiva"
status=0
for program in campiva campiva-informe campiva-lote show_drawing; do
  COMP_WORDS=("$program" --) COMP_CWORD=1 COMPREPLY=()
  "$(complete -p "$program" | sed 's/.*-F \([^ ]*\) .*/\1/')"
  offered=$(printf '%s\n' "${COMPREPLY[@]}" --help --version | sort -u)
  told=$({ "$prefix/bin/$program" --help; echo " --help --version"; } | grep -o '[[ ]--[a-z-]\+' | tr -d '[ ' | sort -u)
  [ "$offered" = "$told" ] || { diff <(echo "$offered") <(echo "$told") | sed "s/^/$program: /" >&2; status=1; }
done
exit $status
