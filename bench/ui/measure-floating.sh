#!/usr/bin/env bash
# Measures the floating timer under Xvfb with openbox managing the screen (so minimising
# really iconifies the main window and only the panel is drawn):
#   bench/ui/measure-floating.sh <build dir> [seconds]
set -euo pipefail
build=${1:?usage: measure-floating.sh <build dir> [seconds]}
seconds=${2:-20}
bench="$build/bench/ui/bench_ui_floating"

work=$(mktemp -d)
trap 'kill $wm $xvfb 2>/dev/null || true; rm -rf "$work"' EXIT
export XDG_DATA_HOME="$work/data" XDG_RUNTIME_DIR="$work/run" HOME="$work/home"
mkdir -p "$XDG_DATA_HOME" "$XDG_RUNTIME_DIR" "$HOME"
chmod 700 "$XDG_RUNTIME_DIR"
export SDL_AUDIODRIVER=${SDL_AUDIODRIVER:-dummy}

exec 3< <(Xvfb -displayfd 1 -screen 0 1920x1080x24 -nolisten tcp 2>/dev/null)
xvfb=$!
read -r display <&3
export DISPLAY=":$display"
openbox --sm-disable 2>/dev/null & wm=$!
sleep 1

for variant in "" --signals; do
    echo "-- floating panel ${variant:-countdown only}"
    timeout $((seconds + 30)) "$bench" --seconds "$seconds" $variant | sed 's/^/   /'
done
