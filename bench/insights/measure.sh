#!/usr/bin/env bash
# Measures the insights and history screens on histories of 10,000 and 100,000 sessions
# under Xvfb, on the default scene graph, with a private data folder.
#   bench/insights/measure.sh <build dir>
set -euo pipefail
build=${1:?usage: measure.sh <build dir>}
bench="$build/bench/insights/bench_insights_screens"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_RUNTIME_DIR="$work/run" HOME="$work/home"
mkdir -p "$XDG_RUNTIME_DIR" "$HOME"
chmod 700 "$XDG_RUNTIME_DIR"
export SDL_AUDIODRIVER=${SDL_AUDIODRIVER:-dummy}

for n in 10000 100000; do
    echo "== $n sessions"
    export XDG_DATA_HOME="$work/data-$n"
    timeout 600 xvfb-run -a -s "-screen 0 1920x1080x24" "$bench" --sessions "$n" | sed 's/^/   /'
done
