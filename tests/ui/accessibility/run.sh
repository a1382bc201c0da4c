#!/usr/bin/env bash
# Starts the real app on a virtual X server with the desktop accessibility bus and lets
# screen_reader.py read it the way a screen reader does; before that, the window crawl (every
# state pressed through the same accessible interfaces) runs on the same bridge.
# Usage: run.sh <quillmere binary> [<window crawl test binary>]
set -euo pipefail
app=$1
crawl=${2:-}
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

# A display of its own: Xvfb picks a free number and reports it. Other tests start X
# servers the same way at the same moment, and once the reported display did not take a
# connection, so a server is only used after a client got through, else it is replaced.
# -noreset: the probe is the server's only client, and the reset after it leaves refused the
# next client now and then.
start_display() {
  : >"$work/display"
  Xvfb -displayfd 3 -screen 0 1400x900x24 -nolisten tcp -noreset 3>"$work/display" >>"$work/xvfb.log" 2>&1 &
  xvfb_pid=$!
  pids+=("$xvfb_pid")
  for _ in $(seq 100); do [ -s "$work/display" ] && break; sleep 0.1; done
  export DISPLAY=":$(head -n1 "$work/display")"
  for _ in $(seq 30); do
    xdotool getmouselocation >/dev/null 2>&1 && return 0
    sleep 0.1
  done
  kill "$xvfb_pid" 2>/dev/null || true
  return 1
}
for attempt in 1 2 3; do
  start_display && break
  echo "display $DISPLAY took no connection (attempt $attempt)"
  [ "$attempt" -lt 3 ] || exit 1
done

# A private session bus; the accessibility bus is launched on it.
# shellcheck source=../../../tools/private-session-bus.sh
source "$here/../../../tools/private-session-bus.sh"
start_private_session_bus "$work"
/usr/libexec/at-spi-bus-launcher --launch-immediately >"$work/atspi.log" 2>&1 &
pids+=($!)

# A throwaway home: the app never sees a real data file, and plays into no device.
export HOME="$work/home" XDG_DATA_HOME="$work/data" XDG_CONFIG_HOME="$work/config"
export XDG_RUNTIME_DIR="$work/run" TMPDIR="$work/tmp"
mkdir -p "$HOME" "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR" "$TMPDIR"
chmod 700 "$XDG_RUNTIME_DIR"
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_ACCESSIBILITY=1 QT_QPA_PLATFORM=xcb
export SDL_AUDIODRIVER=dummy LC_ALL=C.UTF-8 NO_AT_BRIDGE=0

status=0
if [ -n "$crawl" ]; then
  "$crawl" || status=$?
  QT_SCALE_FACTOR=2 "$crawl" --gtest_filter='*ScreenPixels*' || status=$?
fi

"$app" >"$work/app.log" 2>&1 &
app_pid=$!
pids+=("$app_pid")

# Debian's own Python, where python3-pyatspi lives.
reader=0
/usr/bin/python3 "$here/screen_reader.py" || reader=$?
[ "$reader" -eq 0 ] || status=$reader
if [ "$reader" -ne 0 ]; then
  echo "--- app log"; tail -n 30 "$work/app.log"
fi
exit "$status"
