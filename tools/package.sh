#!/usr/bin/env bash
# Builds the Debian package (build/package/quillmere_<version>_amd64.deb) and lints it.
# Install it with: sudo apt install ./build/package/quillmere_*_amd64.deb
set -euo pipefail
cd "$(dirname "$0")/.."

bash tools/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j"$(nproc)" --target quillmere ambient_recordings packaging_gzip
cpack --config build/CPackConfig.cmake -B build/package
if command -v lintian >/dev/null; then
  lintian --fail-on error build/package/quillmere_*_amd64.deb
fi
