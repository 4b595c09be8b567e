#!/usr/bin/env bash
# Builds Quorvane (installing what is missing) and runs the whole test suite.
# With --sanitize the suite runs in an AddressSanitizer/UBSan build.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=$(scripts/build.sh "$@" | tail -n 1)
export QT_QPA_PLATFORM=offscreen
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --test-dir "$build_dir" --output-on-failure --timeout 300
