#!/usr/bin/env bash
# Fails when a script has a syntax error, the packaging files are invalid, or a file of the tree
# holds the absolute path of a developer's machine.
set -uo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
failed=0
fail() {
    echo "check_tree.sh: $*" >&2
    failed=1
}

mapfile -t files < <(git ls-files --cached --others --exclude-standard)
[ ${#files[@]} -gt 0 ] || fail "git lists no files"

scripts=0
for file in "${files[@]}"; do
    if [ -f "$file" ] && head -c 32 "$file" | tr -d '\0' | grep -qE '^#!.*\b(ba)?sh\b'; then
        scripts=$((scripts + 1))
        bash -n "$file" || fail "$file has a syntax error"
        [ -x "$file" ] || fail "$file is not executable"
    fi
done

# Places where people and build machines keep their checkouts and scratch files.
folders='(home|root|Users|work|workspace|tmp|mnt|srv)'
if git grep -nIE --untracked "(^|[^A-Za-z0-9_.\$})-])/$folders/[A-Za-z0-9_.]" -- . ':!LICENSE'; then
    fail "the lines above hold a path of one machine"
fi

desktop-file-validate packaging/*.desktop || fail "the desktop file is invalid"
appstreamcli validate --no-net packaging/*.metainfo.xml || fail "the metadata is invalid"

echo "${#files[@]} files, $scripts scripts"
exit "$failed"
