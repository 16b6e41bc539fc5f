# A screen of its own with a window manager, and hands to work the program on it. To be sourced.
# Needs Xvfb, openbox, xdotool. The caller sets `work`, a folder that it may fill, and where the
# program is one for Windows `runner`, which runs it here. With CAMPIVA_SCREEN set, the screen that
# DISPLAY names is taken: whoever has many programs to run by Wine saves a start of it for each.

start_screen() { # size, as 1400x1000
  [ -z "${CAMPIVA_SCREEN:-}" ] || return 0
  mkdir -p "$work"
  # Without -noreset the server would begin anew whenever its last client of the moment goes.
  Xvfb -displayfd 9 -screen 0 "${1}x24" -nolisten tcp -noreset \
    9> "$work/display" 2> "$work/xvfb.log" &
  screen_pid=$!
  for _ in $(seq 100); do [ -s "$work/display" ] && break; sleep 0.1; done
  export DISPLAY=":$(cat "$work/display")"
  openbox --sm-disable > "$work/openbox.log" 2>&1 &
  manager_pid=$!
  for _ in $(seq 100); do xdotool get_num_desktops > /dev/null 2>&1 && break; sleep 0.1; done
  trap stop_screen EXIT
}

stop_screen() {
  [ -z "${runner:-}" ] || "$runner" --end 2> /dev/null || true # it is tied to its first screen
  kill ${program_pid:+"$program_pid"} "$manager_pid" "$screen_pid" 2> /dev/null || true
  wait 2> /dev/null || true
}

front_title() { xdotool getactivewindow getwindowname 2> /dev/null || true; }

# How long anything is waited for, in tenths of a second. Wine takes a minute and more for a window, its
# first one above all, when the machine does other things.
patience=300
[ -z "${runner:-}" ] || patience=1800

# Waits until a window whose title fits the pattern is in front, and a moment more for its focus.
await() {
  for _ in $(seq "$patience"); do
    if [[ $(front_title) == $1 ]]; then sleep 0.2; return; fi
    sleep 0.1
  done
  fail "no window \"$1\"; in front is \"$(front_title)\""
}

fail() {
  echo "FAILED: $*" >&2
  [ -z "${DISPLAY:-}" ] || import -window root "$work/failure.png" 2> /dev/null || true
  exit 1
}

keys() { xdotool key --delay 30 "$@"; }
# Replaces the text of the field in focus.
fill() { keys ctrl+a; xdotool type --delay 8 -- "$1"; }

# Answers an error box for each file that is missing or out of date, until the run is over.
past_errors() {
  until [ "$(front_title)" = "Fin del proceso" ]; do
    [ "$(front_title)" != Error ] || keys Return
    sleep 0.3
  done
}

# Starts the program in the folder run, with the arguments, away from its user's own settings.
start() {
  (cd "$work/run" && XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" \
    GSETTINGS_BACKEND=memory exec ${runner:-} "$program" "$@") \
    > "$work/stdout" 2> "$work/stderr" &
  program_pid=$!
}

# Waits for the program's end and looks at its exit status.
ended() {
  for _ in $(seq "$patience"); do
    if ! kill -0 "$program_pid" 2> /dev/null; then
      local status=0
      wait "$program_pid" || status=$?
      program_pid=
      [ "$status" -eq "${1:-0}" ] || fail "exit status $status"
      return
    fi
    sleep 0.1
  done
  fail "the program doesn't end"
}
