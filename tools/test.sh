#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test: the unit and
# end-to-end tests, then the same tests under AddressSanitizer and UBSan with
# clang, and the fuzz targets briefly: they share FUZZ_BUDGET seconds (900 by
# default, at least 15 each), or each runs FUZZ_SECONDS when that is set.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/install-deps.sh
jobs=$(nproc)

echo "== build and test (g++)"
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j "$jobs"
(cd build && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$jobs")

echo "== sanitizer build, tests and fuzz targets (clang)"
CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZD_SANITIZE=ON -DZD_FUZZ=ON -DZD_GUI=OFF -DZD_BENCH=OFF >/dev/null
cmake --build build-fuzz -j "$jobs"
(cd build-fuzz && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 ctest --output-on-failure -j "$jobs")

targets=$(find build-fuzz/fuzz -maxdepth 2 -type f -executable -name 'fuzz_*' | sort)
count=$(echo "$targets" | wc -w)
seconds=${FUZZ_SECONDS:-$(( ${FUZZ_BUDGET:-900} / (count > 0 ? count : 1) ))}
[ "$seconds" -ge 15 ] || seconds=15
mkdir -p build-fuzz/corpus
for target in $targets; do
  name=$(basename "$target")
  seeds=fuzz/seeds/$name
  corpus=build-fuzz/corpus/$name
  mkdir -p "$corpus"
  echo "-- $name ($seconds s)"
  args=("$corpus")
  [ -d "$seeds" ] && args+=("$seeds")
  "$target" -max_total_time="$seconds" -rss_limit_mb=2048 -timeout=10 -print_final_stats=0 "${args[@]}" \
    > "build-fuzz/corpus/$name.log" 2>&1 || { tail -50 "build-fuzz/corpus/$name.log"; echo "FUZZ FAILURE: $name"; exit 1; }
done
echo "All fuzz targets ran ${seconds}s without a finding."
