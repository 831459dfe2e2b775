#!/usr/bin/env bash
# Builds everything (installing missing Debian packages when run as root) and
# runs every test: the default build, the AddressSanitizer + UBSan build, and
# the readers' fuzz target for 60 seconds when clang is installed.
# RW_QUICK=1 runs the default build's tests only; arguments go to ctest.
set -euo pipefail
cd "$(dirname "$0")"
scripts/build.sh
ctest --test-dir build --output-on-failure -j"$(nproc)" "$@"
if [ "${RW_QUICK:-0}" != 1 ]; then
  scripts/sanitize.sh "$@"
  scripts/fuzz.sh 60
fi
