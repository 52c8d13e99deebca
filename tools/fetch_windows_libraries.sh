#!/usr/bin/env bash
# Fetches the sources of the libraries that Debian has no Windows package of, through apt but
# without touching the system: tools/fetch_windows_libraries.sh [FOLDER]
# They come to lie in FOLDER/<library>, by default in build/windows-libraries; what is there already
# is kept.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
mkdir -p "${1:-$top/build/windows-libraries}"
folder=$(realpath -- "${1:-$top/build/windows-libraries}")
scratch=
trap '[ -z "$scratch" ] || rm -rf "$scratch"' EXIT

# shellcheck source=tools/source_packages.sh
. "$top/tools/source_packages.sh"

fail() {
    echo "fetch_windows_libraries.sh: $*" >&2
    exit 1
}

# library NAME PACKAGE=VERSION ARCHIVE SHA256 PATH...: unpacks the paths of the archive, which has
# one folder at its top, into FOLDER/NAME.
library() {
    local name=$1 package=$2 archive=$3 sum=$4
    shift 4
    [ "$(cat "$folder/$name/archive.sha256" 2>/dev/null)" != "$sum" ] || return 0
    scratch=$(mktemp -d "$folder/fetching.XXXXXX")
    download "$package"
    echo "$sum  $scratch/$archive" | sha256sum --check --status ||
        fail "$archive is not the file that was expected: its SHA-256 is not $sum"
    mkdir "$scratch/$name"
    tar -xzf "$scratch/$archive" -C "$scratch/$name" --strip-components=1 --wildcards "${@/#/*/}" ||
        fail "$archive lacks one of: $*"
    echo "$sum" >"$scratch/$name/archive.sha256"
    rm -rf "${folder:?}/$name"
    mv "$scratch/$name" "$folder/$name"
    rm -rf "$scratch"
    scratch=
    echo "$folder/$name: $package"
}

library pugixml pugixml=1.13-0.2 pugixml_1.13.orig.tar.gz \
    5c5ad5d7caeb791420408042a7d88c2c6180781bf218feca259fd9d840a888e1 \
    LICENSE.md src/pugixml.cpp src/pugixml.hpp src/pugiconfig.hpp
