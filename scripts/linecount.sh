#!/usr/bin/env bash
# Lines of the program's code and of its tests (C++ sources and headers that
# git tracks; benchmarks count as neither), and the tests' share of the code.
set -euo pipefail
cd "$(dirname "$0")/.."
count() { git ls-files '*.cpp' '*.h' | grep -E "$1" | xargs cat | wc -l; }
code=$(count '^(base|rates|casedata|engine|penalties|payments|reports|shell|casejson|ratebuild|qtprint|cli|ui|app|tools)/')
tests=$(count '^tests/')
echo "code $code lines, tests $tests lines: tests are $((100 * tests / code)) % of the code"
