#!/usr/bin/env bash
# Fails when a script has a syntax error, the packaging files are invalid or name another version or
# fewer components than the program, a guide names a caption that is not there, or a file of the tree
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

tools/check_guides.py || fail "the guides do not fit the program"
desktop-file-validate packaging/*.desktop || fail "the desktop file is invalid"
appstreamcli validate --no-net packaging/*.metainfo.xml || fail "the metadata is invalid"

version=$(sed -nE 's/^project\(tracksmith VERSION ([0-9.]+) .*/\1/p' CMakeLists.txt)
[ -n "$version" ] || fail "CMakeLists.txt names no version"
grep -qF "<release version=\"$version\"" packaging/*.metainfo.xml || fail "the metadata lack $version"
grep -qF "## [$version]" CHANGELOG.md || fail "CHANGELOG.md lacks $version"

components=0
while IFS='|' read -r name licence; do
    components=$((components + 1))
    tr '\n' ' ' <packaging/debian/copyright | tr -s ' ' | grep -qF "$name" ||
        fail "packaging/debian/copyright does not name $name ($licence)"
done < <(sed -nE 's/^ *\{"([^"]+)", "([^"]+)", Part::.*/\1|\2/p' src/app/components.cpp)
[ "$components" -gt 0 ] || fail "src/app/components.cpp names no components"

echo "${#files[@]} files, $scripts scripts"
exit "$failed"
