#!/usr/bin/env bash
# Builds everything (installing missing Debian packages when run as root) and runs every test.
set -euo pipefail
cd "$(dirname "$0")"
scripts/build.sh
ctest --test-dir build --output-on-failure -j"$(nproc)" "$@"
