#!/usr/bin/env bash
# Builds the AddressSanitizer + UBSan preset (build-asan/) and runs every test in it.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset asan >/dev/null
cmake --build --preset asan -j"$(nproc)"
ctest --preset asan -j"$(nproc)" "$@"
