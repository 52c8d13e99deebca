# Functions for scripts that need the source of a Debian package, through apt but without touching
# the system. They want `scratch`, a folder of the caller's, and its function `fail MESSAGE...`.
# shellcheck shell=bash disable=SC2154 # the caller has them

# The package sources that the machine has configured, with source packages instead of binary ones.
source_package_sources() {
    mkdir -p "$scratch/sources.d"
    : >"$scratch/sources.list"
    local file
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ ! -r "$file" ] || sed -nE 's/^deb(-src)?([[:space:]])/deb-src\2/p' "$file" >>"$scratch/sources.list"
    done
    for file in /etc/apt/sources.list.d/*.sources; do
        [ ! -r "$file" ] ||
            sed -E 's/^Types:.*/Types: deb-src/' "$file" >"$scratch/sources.d/$(basename "$file")"
    done
}

# apt with lists and sources of its own, in the scratch folder.
own_apt() {
    apt-get -q -o Dir::Etc::SourceList="$scratch/sources.list" \
        -o Dir::Etc::SourceParts="$scratch/sources.d" -o Dir::State::Lists="$scratch/lists" \
        -o Dir::Cache="$scratch/cache" -o APT::Sandbox::User= -o Acquire::Retries=3 "$@"
}

# download PACKAGE=VERSION: its files come to lie in the scratch folder.
download() {
    local program
    for program in apt-get dpkg-source; do
        command -v "$program" >/dev/null || fail "$program is missing; this works on Debian only"
    done
    mkdir -p "$scratch/lists/partial" "$scratch/cache"
    source_package_sources
    (cd "$scratch" && own_apt --error-on=any update && own_apt --download-only source "$1") \
        >"$scratch/log" 2>&1 || { cat "$scratch/log" >&2; fail "$1 cannot be downloaded"; }
}
