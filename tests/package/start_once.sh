#!/usr/bin/env bash
# Run by check.sh on the test display: starts the program as a user does, waits
# for its set list, looks at it and closes it with Esc: start_once.sh PROGRAM
set -euo pipefail
"$1" >"$HOME/program.log" 2>&1 &
program=$!
window="$(timeout 60 xdotool search --sync --onlyvisible --name '^ZEL Hot Keys$' | head -n 1)" || {
  kill "$program" 2>/dev/null || true
  cat "$HOME/program.log"
  echo "package check: the set list did not show within 60 s"
  exit 1
}
xwininfo -id "$window" | grep -E 'Width|Height|Map State'
if [ -n "${HK_PACKAGE_SHOT:-}" ] && command -v import >/dev/null; then
  sleep 1
  import -window root "$HK_PACKAGE_SHOT"
fi
xdotool windowactivate --sync "$window" key Escape
timeout 30 tail --pid="$program" -f /dev/null || {
  kill "$program"
  echo "package check: Esc did not end the program"
  exit 1
}
wait "$program" || {
  cat "$HOME/program.log"
  echo "package check: the program ended with an error"
  exit 1
}
