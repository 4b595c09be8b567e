#!/usr/bin/env bash
# Configures and builds into build/ (or build-sanitize/ with --sanitize).
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=build
cmake_args=(-G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo)
if [[ "${1:-}" == "--sanitize" ]]; then
    build_dir=build-sanitize
    cmake_args+=(-DQUORVANE_SANITIZE=ON)
fi
if [[ "$(uname -s)" == "Darwin" ]] && command -v brew >/dev/null; then
    cmake_args+=(-DCMAKE_PREFIX_PATH="$(brew --prefix qt)")
fi

scripts/install-deps.sh >&2
cmake -S . -B "$build_dir" "${cmake_args[@]}" >&2
# New sources that include generated form headers are only seen when the
# code generator scans again; its own dependency file does not list them.
rm -f "$build_dir"/src/quorvane_core_autogen/timestamp
cmake --build "$build_dir" --parallel >&2
echo "$build_dir"
