#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test: once in a normal build and once
# under the address and undefined-behaviour sanitizers.
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/install-deps.sh
jobs=$(nproc)

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j"$jobs"
ctest --test-dir build --output-on-failure -j"$jobs"

# Qt's own caches look like leaks to LeakSanitizer, so only memory errors and UB fail here.
export ASAN_OPTIONS=detect_leaks=0:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
# The ambient loops are the same in both builds: the second one copies the first one's.
cmake -S . -B build-sanitize -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQUILL_SANITIZE=ON -DQUILL_BUILD_BENCH=OFF \
  -DQUILL_AMBIENT_RENDERED="$PWD/build/share/quillmere/Ambient"
cmake --build build-sanitize -j"$jobs"
ctest --test-dir build-sanitize --output-on-failure -j"$jobs"
