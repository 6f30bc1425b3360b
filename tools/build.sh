#!/usr/bin/env bash
# Configures and builds the program, the batch program, the tests and the benchmarks in build/.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
cmake --build build -j "$(nproc)"
