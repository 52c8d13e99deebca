#!/usr/bin/env bash
# Builds the static Qt that the Windows program is linked to, from the source package of the Qt that
# this machine has, with its tools: packaging/windows/build_qt.sh [FOLDER]
# It comes to lie in FOLDER, by default in build/windows-libraries/qt, where the preset `windows`
# finds it; one that is there already is kept. About 20 minutes on two cores, 1.5 GB meanwhile.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
folder=$(realpath -m -- "${1:-$top/build/windows-libraries/qt}")
scratch=
trap '[ -z "$scratch" ] || rm -rf "$scratch"' EXIT

fail() {
    echo "build_qt.sh: $*" >&2
    exit 1
}

# shellcheck source=tools/source_packages.sh
. "$top/tools/source_packages.sh"

if [ -e "$folder/lib/cmake/Qt6/Qt6Config.cmake" ]; then
    echo "$folder has a Qt already"
    exit 0
fi
"$top/tools/install_packages.sh" build windows
# Windows' Qt must be built with tools of its own version.
version=$(dpkg-query -W -f='${source:Version}' qt6-base-dev) || fail "qt6-base-dev is missing"
mkdir -p "$(dirname "$folder")"
scratch=$(mktemp -d "$(dirname "$folder")/building-qt.XXXXXX")
download "qt6-base=$version"
(cd "$scratch" && dpkg-source --no-check -x qt6-base_*.dsc source) >"$scratch/log" 2>&1 ||
    { cat "$scratch/log" >&2; fail "the source package cannot be unpacked"; }

# Nothing that is built here runs, so no Wine is needed.
cat >"$scratch/mingw64.cmake" <<EOF
include("$top/cmake/windows-mingw64.cmake")
unset(CMAKE_CROSSCOMPILING_EMULATOR)
EOF

left_out=()
for feature in sql network dbus opengl printsupport concurrent icu vulkan system_zlib pkg_config \
    tabletevent; do
    left_out+=("-DFEATURE_$feature=OFF")
done
host=$(dirname "$(dirname "$(dpkg -L qt6-base-dev | grep /Qt6/Qt6Config.cmake)")")
cmake -G Ninja -S "$scratch/source" -B "$scratch/build" \
    -DCMAKE_TOOLCHAIN_FILE="$scratch/mingw64.cmake" -DCMAKE_INSTALL_PREFIX="$folder" \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$host" \
    -DBUILD_SHARED_LIBS=OFF -DCMAKE_BUILD_TYPE=MinSizeRel \
    -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DINPUT_opengl=no "${left_out[@]}"
cmake --build "$scratch/build"
cmake --install "$scratch/build" >"$scratch/log"
echo "$folder: Qt $version"
