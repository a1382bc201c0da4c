#!/usr/bin/env bash
# Start-up on a long history: the first painted frame and resident memory of bench_ui_app
# opening N synthetic sessions (default 100,000), RUNS starts (default 5) under Xvfb with a
# private session bus and data folder; then, for comparison, the same on an empty history.
#   bench/ui/measure-history.sh <build dir> [sessions]
set -euo pipefail
build=$(realpath "${1:?usage: measure-history.sh <build dir> [sessions]}")
sessions=${2:-100000}
runs=${RUNS:-5}
bench="$build/bench/ui/bench_ui_app"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME="$work/home" XDG_RUNTIME_DIR="$work/run" SDL_AUDIODRIVER=dummy
mkdir -p "$HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
# A private bus that lists no installed services: a desktop's notification server must not
# start on demand (and hold the process for its timeout).
echo "<busconfig><type>session</type><listen>unix:dir=$work</listen><auth>EXTERNAL</auth>
<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>
<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>" >"$work/bus.conf"
for n in "$sessions" 0; do
    export XDG_DATA_HOME="$work/data-$n"
    [ "$n" -gt 0 ] && "$bench" -platform offscreen --write-history "$n"
    echo "== $n sessions, file $(du -h "$XDG_DATA_HOME/Quillmere/focus-data.json" 2>/dev/null | cut -f1)"
    for _ in $(seq "$runs"); do
        xvfb-run -a -s "-screen 0 1600x1000x24" dbus-run-session --config-file="$work/bus.conf" -- \
            "$bench" --settle 0 --seconds 1 | grep -E '^(first_frame_ms|sessions|rss_mb)=' | tr '\n' ' '
        echo
    done
done
