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
openbox --sm-disable >/dev/null 2>&1 &
wm=$!
trap 'kill "$wm" 2>/dev/null || true' EXIT
# The window manager is up once it names itself on the root window.
wm_up() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }
for _ in $(seq 100); do
  wm_up && break
  sleep 0.05
done
wm_up || { echo "openbox did not start on the test display"; exit 1; }
export QT_QPA_PLATFORM=xcb
export HK_DISPLAY_SHOTS="${HK_DISPLAY_SHOTS:-$PWD/display-shots}"
"$@"
