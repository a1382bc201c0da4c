#!/usr/bin/env bash
# Builds the data file's fuzzer with clang and runs it for the given number of seconds
# (default 60), starting from the committed seed corpus. New inputs go to build-fuzz/corpus,
# never into the source tree; a crasher is written to build-fuzz/ and belongs, minimized
# (fuzz_datafile -minimize_crash=1), in tests/storage/fuzz/crashers/.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
cmake -S tests/storage/fuzz -B build-fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build-fuzz
mkdir -p build-fuzz/corpus
cd build-fuzz
./fuzz_datafile -max_total_time="$seconds" -print_final_stats=1 -max_len=65536 \
  corpus ../tests/storage/fuzz/corpus ../tests/storage/fuzz/crashers
