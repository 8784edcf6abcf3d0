#!/usr/bin/env bash
# Installs the plain build into a scratch prefix and builds a separate CMake
# project that finds orvo with find_package and links orvo::orvo.
set -euo pipefail
cd "$(dirname "$0")/.."
prefix=$PWD/build/consumer-prefix
rm -rf "$prefix" build/consumer
cmake --install build --prefix "$prefix" >/dev/null
cmake -S tests/consumer -B build/consumer -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build build/consumer
./build/consumer/orvo_consumer
PKG_CONFIG_PATH="$prefix/lib/pkgconfig" pkg-config --cflags --libs orvo >/dev/null
echo "consumer check passed"
