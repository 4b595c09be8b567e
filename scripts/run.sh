#!/usr/bin/env bash
# Builds Quorvane (installing what is missing) and launches it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh >/dev/null
if [[ "$(uname -s)" == "Darwin" && -d build/src/quorvane.app ]]; then
    exec build/src/quorvane.app/Contents/MacOS/quorvane "$@"
fi
exec build/src/quorvane "$@"
