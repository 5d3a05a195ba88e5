#!/usr/bin/env bash
# Runs the real-display tests on a fresh X server (Xvfb) with the openbox window
# manager: run.sh TEST_PROGRAM [gtest options]
set -euo pipefail
if [ "${1:-}" != "--on-display" ]; then
  for tool in xvfb-run xauth openbox xdotool xprop xwininfo xmessage; do
    command -v "$tool" >/dev/null || {
      echo "$tool is missing: scripts/test installs it (scripts/deps.sh)"
      exit 1
    }
  done
  exec xvfb-run -a -s "-screen 0 1280x1024x24 -nolisten tcp" "$0" --on-display "$@"
fi
shift
# A fresh machine's first openbox start can take seconds (font caches); its own
# words are kept so a start that fails says why.
wm_log="$(mktemp)"
start_wm() {
  openbox --sm-disable >"$wm_log" 2>&1 &
  wm=$!
}
wm=
trap 'kill "$wm" 2>/dev/null || true; rm -f "$wm_log"' EXIT
# The window manager is up once it names itself on the root window.
wm_up() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }
for attempt in 1 2; do
  start_wm
  for _ in $(seq 300); do
    wm_up && break 2
    kill -0 "$wm" 2>/dev/null || break
    sleep 0.1
  done
  echo "openbox start $attempt did not come up:"; cat "$wm_log"
  kill "$wm" 2>/dev/null || true
done
wm_up || { echo "openbox did not start on the test display"; exit 1; }
export QT_QPA_PLATFORM=xcb
# A runtime folder of its own, and a stand-in browser that records the addresses
# the program opens (the help button opens a web page).
here="$(mktemp -d)"
trap 'kill "$wm" 2>/dev/null || true; rm -rf "$wm_log" "$here"' EXIT
mkdir -m 700 "$here/runtime" "$here/bin"
export XDG_RUNTIME_DIR="$here/runtime"
printf '#!/bin/sh\necho "$1" >> "$HK_DISPLAY_URLS"\n' >"$here/bin/xdg-open"
chmod +x "$here/bin/xdg-open"
export PATH="$here/bin:$PATH"
export HK_DISPLAY_SHOTS="${HK_DISPLAY_SHOTS:-$PWD/display-shots}"
# A modal loop that no step can reach must not hang the run.
status=0
timeout 110 "$@" || status=$?
[ "$status" != 124 ] || echo "display tests: still running after 110 s, stopped"
exit "$status"
