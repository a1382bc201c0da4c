#!/usr/bin/env bash
# Measures the app's start-up, memory and CPU under Xvfb with both scene-graph backends.
#   bench/ui/measure.sh <build dir> [seconds]
# Runs bench_ui_app (the app's own start-up path with measuring hooks) idle and with a
# round running, and the real quillmere binary idle, on a private data folder.
set -euo pipefail
build=${1:?usage: measure.sh <build dir> [seconds]}
seconds=${2:-20}
harness="$build/bench/ui/bench_ui_app"
app="$build/src/quillmere"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_DATA_HOME="$work/data" XDG_RUNTIME_DIR="$work/run" HOME="$work/home"
mkdir -p "$XDG_DATA_HOME" "$XDG_RUNTIME_DIR" "$HOME"
chmod 700 "$XDG_RUNTIME_DIR"
export SDL_AUDIODRIVER=${SDL_AUDIODRIVER:-dummy}

run_under_x() {
    timeout $((seconds + 90)) xvfb-run -a -s "-screen 0 1920x1080x24" "$@"
}

# The real binary: resident memory and CPU of the process from outside, after it settled.
measure_real_app() {
    run_under_x bash -c '
        "$1" & pid=$!
        sleep 3
        read -r _ _ _ _ _ _ _ _ _ _ _ _ _ u0 s0 _ < <(cut -d")" -f2- /proc/$pid/stat)
        sleep "$2"
        read -r _ _ _ _ _ _ _ _ _ _ _ _ _ u1 s1 _ < <(cut -d")" -f2- /proc/$pid/stat)
        rss=$(awk "/VmRSS/ {print \$2}" /proc/$pid/status)
        kill $pid; wait $pid 2>/dev/null || true
        hz=$(getconf CLK_TCK)
        awk -v d=$(( (u1 + s1) - (u0 + s0) )) -v hz=$hz -v s="$2" -v r="$rss" \
            "BEGIN { printf \"cpu_percent=%.2f\nrss_mb=%.1f\n\", 100*d/hz/s, r/1024 }"
    ' _ "$app" "$seconds"
}

# The app draws with the software scene graph unless QT_QUICK_BACKEND names another.
for backend in opengl software; do
    if [ "$backend" = opengl ]; then
        export QT_QUICK_BACKEND=rhi QSG_RHI_BACKEND=opengl
    else
        export QT_QUICK_BACKEND=software
        unset QSG_RHI_BACKEND
    fi
    echo "== backend: $backend"
    echo "-- harness, idle";  run_under_x "$harness" --seconds "$seconds" | sed 's/^/   /'
    echo "-- harness, round"; run_under_x "$harness" --round --seconds "$seconds" | sed 's/^/   /'
    echo "-- harness, ambient sound playing"
    run_under_x "$harness" --ambient --seconds "$seconds" | sed 's/^/   /'
    echo "-- quillmere, idle"; measure_real_app | sed 's/^/   /'
done
