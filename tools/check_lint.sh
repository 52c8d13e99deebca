#!/usr/bin/env bash
# Runs clang-tidy over all product sources of a build folder that has compile_commands.json:
#   tools/check_lint.sh BUILD_FOLDER [CHECKS]
# CHECKS is added to the checks of .clang-tidy, for example '-clang-analyzer-*'.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:?the build folder is missing}
checks=${2:-}
[ -f "$build/compile_commands.json" ] || { echo "$build has no compile_commands.json" >&2; exit 1; }

# The plugin that keeps the checks out of the headers of libraries.
scope=$(realpath "$build")/lint_scope.so
if [ ! "$scope" -nt "$top/tools/lint_scope.cpp" ]; then
    c++ -std=c++17 -O1 -shared -fPIC -fno-rtti -fno-exceptions -Wall -Wextra -Werror \
        -isystem "$(llvm-config-14 --includedir)" "$top/tools/lint_scope.cpp" -o "$scope"
fi

# One file; what it prints comes in one piece.
lint() {
    local text status=0
    text=$(clang-tidy-14 -quiet --load "$scope" -p "$build" ${checks:+-checks="$checks"} "$1" 2>&1) ||
        status=1
    text=$(grep -vE '^[0-9]+ warnings? (generated|treated)|^Suppressed |^Use -|^$' <<<"$text") || true
    [ -z "$text" ] || printf '%s\n' "$text"
    return $status
}
export -f lint
export scope build checks

mapfile -t files < <(sed -nE 's/^ *"file": "(.*\.cpp)",?$/\1/p' "$build/compile_commands.json" |
    grep -F "$top/src/" | sort -u)
# A database without our files would otherwise pass.
[ ${#files[@]} -gt 0 ] || { echo "$build builds none of the sources" >&2; exit 1; }
status=0
printf '%s\0' "${files[@]}" | xargs -0 -P"$(nproc)" -I{} bash -c 'lint "$1"' - {} || status=1
echo "${#files[@]} files"
exit "$status"
