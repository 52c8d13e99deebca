#!/usr/bin/env bash
# Runs clang-tidy over all product sources of a build folder that has compile_commands.json:
#   tools/check_lint.sh BUILD_FOLDER [CHECKS]
# CHECKS is added to the checks of .clang-tidy, for example '-clang-analyzer-*'.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:?the build folder is missing}
[ -f "$build/compile_commands.json" ] || { echo "$build has no compile_commands.json" >&2; exit 1; }
log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
run-clang-tidy-14 -quiet -j"$(nproc)" -p "$build" ${2:+-checks="$2"} "^$top/src/.*\.cpp$" \
    >"$log" 2>&1 || status=$?
sed -i 's/\x1b\[[0-9;]*m//g' "$log"
grep -vE '^clang-tidy-14 |^[0-9]+ warnings? (generated|treated)|^Suppressed |^Use -|^$' "$log" || true
echo "$(grep -c '^clang-tidy-14 ' "$log") files"
# A database without our files would otherwise pass.
grep -q '^clang-tidy-14 ' "$log" || status=1
exit "$status"
