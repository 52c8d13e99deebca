#!/usr/bin/env bash
# Builds Tracksmith with all its tests and runs them; ends with the summary of ctest.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")"
tools/install_packages.sh build test
cmake --preset release -DCMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)"
cmake --build --preset release
exec ctest --preset release
