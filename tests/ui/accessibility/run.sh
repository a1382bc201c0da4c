#!/usr/bin/env bash
# Starts the real app on a virtual X server with the desktop accessibility bus and lets
# screen_reader.py read it the way a screen reader does. Usage: run.sh <quillmere binary>
set -euo pipefail
app=$1
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

# A display of its own: Xvfb picks a free number and reports it.
exec 3>"$work/display"
Xvfb -displayfd 3 -screen 0 1400x900x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
pids+=($!)
for _ in $(seq 100); do [ -s "$work/display" ] && break; sleep 0.1; done
export DISPLAY=":$(head -n1 "$work/display")"

# A private session bus, and the accessibility bus launched on it.
eval "$(dbus-launch --sh-syntax)"
pids+=("$DBUS_SESSION_BUS_PID")
/usr/libexec/at-spi-bus-launcher --launch-immediately >"$work/atspi.log" 2>&1 &
pids+=($!)

# A throwaway home: the app never sees a real data file, and plays into no device.
export HOME="$work/home" XDG_DATA_HOME="$work/data" XDG_CONFIG_HOME="$work/config"
export XDG_RUNTIME_DIR="$work/run" TMPDIR="$work/tmp"
mkdir -p "$HOME" "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR" "$TMPDIR"
chmod 700 "$XDG_RUNTIME_DIR"
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_ACCESSIBILITY=1 QT_QPA_PLATFORM=xcb
export SDL_AUDIODRIVER=dummy LC_ALL=C.UTF-8 NO_AT_BRIDGE=0

"$app" >"$work/app.log" 2>&1 &
app_pid=$!
pids+=("$app_pid")

status=0
# Debian's own Python, where python3-pyatspi lives.
/usr/bin/python3 "$here/screen_reader.py" || status=$?
if [ "$status" -ne 0 ]; then
  echo "--- app log"; tail -n 30 "$work/app.log"
fi
exit "$status"
