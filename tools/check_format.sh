#!/usr/bin/env bash
# Fails when a C++ file is not formatted by .clang-format; with --fix formats them instead.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
mode=(--dry-run -Werror)
[ "${1:-}" != --fix ] || mode=(-i)
mapfile -t files < <(find src tests fuzz benchmarks tools -name '*.cpp' -o -name '*.h' | sort)
[ ${#files[@]} -gt 0 ] || { echo "no C++ files found" >&2; exit 1; }
clang-format-14 "${mode[@]}" "${files[@]}"
echo "${#files[@]} files"
