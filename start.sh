#!/usr/bin/env bash
# Builds the program (installing missing Debian packages when run as root) and starts it.
set -euo pipefail
cd "$(dirname "$0")"
scripts/build.sh
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || [ "${QT_QPA_PLATFORM:-}" != "" ]; then
  exec build/qrat/qratcalc "$@"
fi
echo "No display to show the program's windows on (DISPLAY is not set)." >&2
echo "Start it under a virtual X server with:  xvfb-run -a build/qrat/qratcalc" >&2
echo "Meanwhile, the summary of the sample income-tax case, from the command-line tool:" >&2
exec build/qrat/qratcalc-cli report --reports summary build/qrat/DEMO_INC.INT
