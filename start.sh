#!/usr/bin/env bash
# Builds the program (installing missing Debian packages when run as root) and starts it.
set -euo pipefail
cd "$(dirname "$0")"
scripts/build.sh
if [ -x build/qrat/qratcalc ]; then
  exec build/qrat/qratcalc "$@"
fi
# Until the desktop program is built, show the detailed analysis of the example case.
exec build/qrat/qratcalc-cli detail data/cases/example.json
