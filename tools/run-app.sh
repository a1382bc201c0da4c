#!/usr/bin/env bash
# Installs what is missing, builds the app and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j"$(nproc)" --target quillmere
exec ./build/src/quillmere "$@"
