#!/usr/bin/env bash
# Start-up time, memory and CPU of Quillmere at rest and in a round, under Xvfb and openbox
# (WM=none leaves the window manager out).
#   bench/ui/measure.sh <build dir> [seconds] [settle seconds]
# For the real quillmere binary, once with no sound server, then with a private PulseAudio
# daemon (one null sink, as the audio tests use) once with rain selected and once with all
# eight sounds (the round plays them), in one process each:
#   - window_ms: launch until its window is mapped
#   - then for each state (at rest, over REST_SECONDS (60); a round with the window shown; the
#     same round with the window unmapped, as a window manager does when it minimises), after
#     a settling period:
#     cpu_percent of the whole process tree over the window (process CPU time, in % of one
#     core), rss_mb of the tree at its end, the number of threads, wakeups_per_s (context
#     switches of all threads) and cpu_exact_percent (the scheduler's nanosecond run time of
#     the threads alive at both ends: cpu_percent counts 10 ms clock ticks, which at rest is
#     one or two in 30 s); with PulseAudio also the daemon's own pulse_cpu_percent (its run
#     time: it is spent because of us) and pulse_wakeups_per_s.
# Everything runs with a private D-Bus session bus, as on a desktop (without one, Qt starts
# dbus-launch for the tray's first question, which a user never waits for).
# Then, for reference, the same rest figures for an empty QApplication with a 0.25 s timer
# (Qt's floor on the machine at hand). Then the harness bench_ui_app (the app's own start-up path with measuring hooks) for the
# first painted frame and the same figures at rest, on the default (software) scene graph,
# and for the time the first play of ambient sound after rest takes to start the output
# (ambient_play_ms) and a play a few seconds after a stop (ambient_replay_ms);
# BACKENDS="software opengl" adds the GL one, and the median first frame of FIRST_FRAME_RUNS
# more starts (9). Defaults: 30 s windows after 5 s of settling. CASES="rain all latency" runs
# only those parts; latency is bench_audio_latency on the private null sink (how soon the
# ambient output first sounds, and how long a change takes to be heard).
set -euo pipefail
build=$(realpath "${1:?usage: measure.sh <build dir> [seconds] [settle seconds]}")
seconds=${2:-30}
settle=${3:-5}
backends=${BACKENDS:-software}
# CASES picks what runs: plain rain all latency harness (the last: the floor and the harness).
cases=${CASES:-plain rain all latency harness}
harness="$build/bench/ui/bench_ui_app"
app="$build/src/quillmere"
for tool in Xvfb xdotool; do
    command -v "$tool" >/dev/null || { echo "measure.sh needs $tool" >&2; exit 1; }
done

work=$(mktemp -d)
pids=()
cleanup() {
    for p in "${pids[@]}"; do kill "$p" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 1' INT TERM
hz=$(getconf CLK_TCK)

# A private X server on the first free display from :90.
display=90
while [ -e /tmp/.X11-unix/X$display ] || [ -e /tmp/.X$display-lock ]; do display=$((display + 1)); done
Xvfb ":$display" -screen 0 1600x1000x24 -nolisten tcp >/dev/null 2>&1 &
pids+=($!)
export DISPLAY=":$display"
for _ in $(seq 50); do xdotool getmouselocation >/dev/null 2>&1 && break; sleep 0.1; done
# Under a window manager, as people run it: mapping a window then takes a round trip to it.
if [ "${WM:-openbox}" != none ] && command -v "${WM:-openbox}" >/dev/null; then
    "${WM:-openbox}" >/dev/null 2>&1 &
    pids+=($!)
    wm=$!
    sleep 1
fi

# A private session bus for everything below, so nothing the desktop installed adds its cost.
# shellcheck source=../../tools/private-session-bus.sh
source "$(dirname "$0")/../../tools/private-session-bus.sh"
if command -v dbus-daemon >/dev/null; then
    start_private_session_bus "$work"
fi

# Fresh, private homes for every run, so nothing of a real user's data is touched.
fresh_home() {
    local h="$work/home.$1"
    rm -rf "$h"
    mkdir -p "$h/data" "$h/run" "$h/home"
    chmod 700 "$h/run"
    export XDG_DATA_HOME="$h/data" XDG_RUNTIME_DIR="$h/run" HOME="$h/home"
}

# The process and all its descendants.
tree_of() {
    ps -e -o pid=,ppid= | awk -v root="$1" '
        { parent[$1] = $2 }
        END { want[root] = 1; changed = 1
              while (changed) { changed = 0
                  for (p in parent) if (!(p in want) && (parent[p] in want)) { want[p] = 1; changed = 1 } }
              for (p in want) print p }'
}

# Clock ticks of user and system time of the tree, its children that ended included.
tree_ticks() {
    local total=0 p f
    for p in $(tree_of "$1"); do
        f=$(cut -d')' -f2- "/proc/$p/stat" 2>/dev/null) || continue
        set -- $f
        total=$((total + ${12} + ${13} + ${14} + ${15}))
    done
    echo "$total"
}

tree_rss_kb() {
    local total=0 p
    for p in $(tree_of "$1"); do
        total=$((total + $(awk '/^VmRSS/ {print $2}' "/proc/$p/status" 2>/dev/null || echo 0)))
    done
    echo "$total"
}

tree_threads() {
    local total=0 p
    for p in $(tree_of "$1"); do
        total=$((total + $(ls "/proc/$p/task" 2>/dev/null | wc -l)))
    done
    echo "$total"
}

# "tid switches ns" for every thread of the tree: voluntary and forced context switches, and
# nanoseconds run.
thread_switches() {
    local p t
    for p in $(tree_of "$1"); do
        for t in /proc/"$p"/task/*; do
            awk -v t="${t##*/}" -v sched="$t/schedstat" '/ctxt_switches/ {s += $2}
                END {if (NR) { getline ns < sched; split(ns, f, " "); print t, s, f[1] + 0 } }' \
                "$t/status" 2>/dev/null
        done
    done | sort
}

# Switches and nanoseconds run between two snapshots, over the threads alive in both
# (pooled threads come and go).
switches_between() {
    join "$1" "$2" | awk '{d += $4 - $2; n += $5 - $3} END {print d + 0, n + 0}'
}

# Prints the figures of one state: settles, then measures for $4 seconds ($seconds if unset).
measure_state() {
    local name=$1 pid=$2 server=${3:-} span=${4:-$seconds}
    sleep "$settle"
    local t0 t1
    t0=$(tree_ticks "$pid"); thread_switches "$pid" >"$work/switches.0"
    [ -n "$server" ] && thread_switches "$server" >"$work/server.0"
    sleep "$span"
    t1=$(tree_ticks "$pid"); thread_switches "$pid" >"$work/switches.1"
    [ -n "$server" ] && thread_switches "$server" >"$work/server.1"
    local w ns sw=0 sns=0
    read -r w ns < <(switches_between "$work/switches.0" "$work/switches.1")
    [ -n "$server" ] && read -r sw sns < <(switches_between "$work/server.0" "$work/server.1")
    # THREADS=1: where the wake-ups come from, thread by thread (name, wake-ups a second).
    if [ -n "${THREADS:-}" ]; then
        for f in switches server; do
            [ -s "$work/$f.1" ] || continue
            join "$work/$f.0" "$work/$f.1" | while read -r t a _ b _; do
                printf '   %s %s/%s %.1f\n' "$f" "$(cat /proc/*/task/"$t"/comm 2>/dev/null | head -1)" \
                    "$t" "$(echo "($b - $a) / $span" | bc -l)"
            done
        done
    fi
    awk -v n="$name" -v d=$((t1 - t0)) -v w="$w" -v ns="$ns" -v sw="$sw" -v sns="$sns" \
        -v hz="$hz" -v s="$span" -v r="$(tree_rss_kb "$pid")" -v th="$(tree_threads "$pid")" \
        -v srv="$server" 'BEGIN {
            printf "%-14s cpu_percent=%.3f cpu_exact_percent=%.3f rss_mb=%.1f threads=%d",
                   n, 100 * d / hz / s, 100 * ns / 1e9 / s, r / 1024, th
            printf " wakeups_per_s=%.2f", w / s
            if (srv != "") printf " pulse_cpu_percent=%.3f pulse_wakeups_per_s=%.1f app_and_pulse_percent=%.3f",
                                  100 * sns / 1e9 / s, sw / s, 100 * (ns + sns) / 1e9 / s
            printf "\n" }'
}

# A private PulseAudio daemon with one null sink, exported to what runs next; sets pulse_pid.
start_pulse() {
    local dir="$work/pulse"
    mkdir -p "$dir/runtime"
    chmod 700 "$dir/runtime"
    echo "autospawn = no" >"$dir/client.conf"
    export PULSE_SERVER="unix:$dir/native" PULSE_CLIENTCONFIG="$dir/client.conf" \
        PULSE_RUNTIME_PATH="$dir/runtime"
    HOME="$dir" XDG_RUNTIME_DIR="$dir/runtime" pulseaudio -n --daemonize=no --system=false \
        --exit-idle-time=-1 --use-pid-file=no --disallow-exit=yes --log-target=stderr \
        -L "module-native-protocol-unix socket=$dir/native auth-anonymous=1" \
        -L "module-null-sink sink_name=quill_null" >"$dir/log" 2>&1 &
    pulse_pid=$!
    pids+=("$pulse_pid")
    for _ in $(seq 100); do pactl info >/dev/null 2>&1 && break; sleep 0.1; done
    pactl set-default-sink quill_null >/dev/null
}

# Where the focus screen's start button is, asked of the harness (same window, same layout).
fresh_home locate
read -r start_x start_y < <(SDL_AUDIODRIVER=dummy "${LOCATOR:-$harness}" --locate focus.primary)

# Runs the real app with the sounds given (a JSON list of raw values) selected, so a round
# plays them; with no sounds, no sound server either.
measure_real_app() {
    local sounds=$1 server=""
    fresh_home "${2:-plain}"
    if [ -n "$sounds" ]; then
        command -v pulseaudio >/dev/null || { echo "   (no pulseaudio installed)"; return; }
        start_pulse
        server=$pulse_pid
        mkdir -p "$XDG_DATA_HOME/Quillmere"
        cat >"$XDG_DATA_HOME/Quillmere/focus-data.json" <<EOF
{"sessions": [], "settings": {"ambientSounds": [$sounds], "autoPlayMusic": false,
 "completionSound": "Hero", "microBreakSeconds": 10, "musicSource": "整个资料库",
 "playlistName": "", "reminderMaximumMinutes": 5, "reminderMinimumMinutes": 3,
 "reminderSound": "Glass", "selectedDurationMinutes": 50, "showNextReminder": false}}
EOF
    else
        # No server to find and none to spawn: SDL falls back to ALSA, as on a bare system.
        export PULSE_SERVER="unix:$work/no-such-server" PULSE_CLIENTCONFIG="$work/none.conf"
        echo "autospawn = no" >"$work/none.conf"
    fi
    local t0 pid wid t1
    t0=$(date +%s%N)
    "$app" >"$work/app.log" 2>&1 &
    pid=$!
    pids+=("$pid")
    # A Quillmere already running for this user takes over and this one quits at once.
    wid=$(timeout 60 xdotool search --sync --onlyvisible --pid "$pid" --name '^Quillmere$' |
        head -1) || true
    if [ -z "$wid" ]; then
        echo "no window: is another Quillmere running for this user?"
        return
    fi
    t1=$(date +%s%N)
    echo "window_ms=$(((t1 - t0) / 1000000))"
    measure_state rest "$pid" "$server" "${REST_SECONDS:-60}"
    xdotool mousemove --window "$wid" "$start_x" "$start_y" click 1
    measure_state round_shown "$pid" "$server"
    # A window manager minimises; without one, unmapping is what minimising does to a window.
    if [ -n "${wm:-}" ]; then xdotool windowminimize "$wid"; else xdotool windowunmap "$wid"; fi
    measure_state round_hidden "$pid" "$server"
    kill "$pid"; wait "$pid" 2>/dev/null || true
    if [ -n "$server" ]; then kill "$server"; wait "$server" 2>/dev/null || true; fi
    unset PULSE_SERVER PULSE_CLIENTCONFIG PULSE_RUNTIME_PATH
}

wants() { [[ " $cases " == *" $1 "* ]]; }
if wants plain; then
    echo "== quillmere, no sound server, nothing selected"
    measure_real_app "" plain | sed 's/^/   /'
fi
if wants rain; then
    echo "== quillmere, PulseAudio null sink, rain alone playing in the round"
    measure_real_app '"rain"' rain | sed 's/^/   /'
fi
if wants all; then
    echo "== quillmere, PulseAudio null sink, all eight playing in the round"
    measure_real_app '"rain", "waves", "stream", "wind", "fire", "birds", "crickets", "brownNoise"' \
        all | sed 's/^/   /'
fi
if wants latency && [ -x "$build/bench/audio/bench_audio_latency" ] &&
    command -v pulseaudio >/dev/null; then
    fresh_home latency
    echo "== ambient output (bench_audio_latency): first sound, and a change until heard"
    start_pulse
    timeout 120 "$build/bench/audio/bench_audio_latency" 15 | sed 's/^/   /'
    kill "$pulse_pid"; wait "$pulse_pid" 2>/dev/null || true
    unset PULSE_SERVER PULSE_CLIENTCONFIG PULSE_RUNTIME_PATH
fi
wants harness || exit 0

# The floor on this machine: a bare QApplication with the same 0.25 s step and nothing else.
fresh_home floor
echo "== Qt floor (bench_ui_qt_floor: an empty QApplication with a 0.25 s timer)"
"$build/bench/ui/bench_ui_qt_floor" >/dev/null 2>&1 &
floor_pid=$!
pids+=("$floor_pid")
measure_state rest "$floor_pid" | sed 's/^/   /'
kill "$floor_pid"; wait "$floor_pid" 2>/dev/null || true

if command -v pulseaudio >/dev/null; then
    fresh_home harness-sound
    echo "== harness (bench_ui_app), first play of ambient sound after rest, PulseAudio"
    start_pulse
    server=$pulse_pid
    # The harness sits in bench/ui, not beside share/, so it is shown the build's recordings.
    XDG_DATA_DIRS="$build/share:${XDG_DATA_DIRS:-/usr/local/share:/usr/share}" \
        timeout $((seconds + settle + 30)) "$harness" --ambient --settle "$settle" --seconds 8 |
        grep ambient_ | sed 's/^/   /'
    fresh_home harness-sound-prepared
    echo "   the same, the pointer on the ambient card a second before the click:"
    XDG_DATA_DIRS="$build/share:${XDG_DATA_DIRS:-/usr/local/share:/usr/share}" \
        timeout $((seconds + settle + 30)) "$harness" --ambient --prepared --settle "$settle" \
        --seconds 8 | grep ambient_play | sed 's/^/   /'
    kill "$server"; wait "$server" 2>/dev/null || true
    unset PULSE_SERVER PULSE_CLIENTCONFIG PULSE_RUNTIME_PATH
fi

for backend in $backends; do
    if [ "$backend" = opengl ]; then
        export QT_QUICK_BACKEND=rhi QSG_RHI_BACKEND=opengl
    else
        export QT_QUICK_BACKEND=software
        unset QSG_RHI_BACKEND
    fi
    fresh_home "harness"
    echo "== harness (bench_ui_app), backend: $backend, no sound server"
    SDL_AUDIODRIVER=dummy timeout $((seconds + settle + 30)) \
        "$harness" --settle "$settle" --seconds "$seconds" | sed 's/^/   /'
    # One start-up varies by a fifth on a shared machine: the median of several.
    runs=${FIRST_FRAME_RUNS:-9}
    for _ in $(seq "$runs"); do
        fresh_home "harness"
        SDL_AUDIODRIVER=dummy timeout 30 "$harness" --settle 0 --seconds 0 |
            sed -n 's/^first_frame_ms=//p'
    done | sort -n | awk -v n="$runs" '{ v[NR] = $1 }
        END { if (NR) printf "   first_frame_ms_median=%s (%d starts, %s to %s)\n", v[int((NR + 1) / 2)], NR, v[1], v[NR] }'
done
