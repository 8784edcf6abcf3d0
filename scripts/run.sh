#!/usr/bin/env bash
# Builds orvo (Release) and runs the command-line tool on the bundled sample
# field dictionary and enum type file in data/.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/deps.sh
orvo_install_deps
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build -j "$(nproc)" --target orvo-dict
./build/tools/orvo-dict "$@"
