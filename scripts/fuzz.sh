#!/usr/bin/env bash
# Builds the readers' libFuzzer target with clang (build-fuzz/) and runs it for
# the given number of seconds (60 by default) on inputs up to 1 MB, seeded with
# the sample cases, the rate tables and the release file of the default build.
# Without clang it says so and succeeds.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"
if ! command -v clang++ >/dev/null 2>&1; then
  echo "fuzz: clang++ is not installed; the fuzz target is not run"
  exit 0
fi
CXX=clang++ cmake -S . -B build-fuzz -DRW_FUZZ=ON -DRW_BUILD_UI=OFF -DRW_BUILD_BENCH=OFF \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build-fuzz -j"$(nproc)" --target fuzz_readers
seeds=$(mktemp -d)
trap 'rm -rf "$seeds"' EXIT
cp data/cases/*.json "$seeds"/
cp build/qrat/*.INT build/qrat/fed.tbl build/qrat/qrat-release.txt "$seeds"/ 2>/dev/null || true
corpus=build-fuzz/corpus
mkdir -p "$corpus"
build-fuzz/tests/fuzz_readers -max_total_time="$seconds" -max_len=1048576 -print_final_stats=1 "$corpus" "$seeds" 2>&1 | tail -n 12
