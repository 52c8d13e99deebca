#!/usr/bin/env bash
# Builds the program for 64-bit Windows and makes its two packages, a folder as a zip file and an
# installer: packaging/windows/make_packages.sh [FOLDER]
# They come to lie in FOLDER, by default in build/packages. Qt must lie where the preset `windows`
# finds it, see packaging/windows/build_qt.sh.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
mkdir -p "${1:-$top/build/packages}"
folder=$(realpath -- "${1:-$top/build/packages}")
cd "$top"

"$top/tools/install_packages.sh" build windows windows-packages
"$top/tools/fetch_windows_libraries.sh"
cmake --preset windows "-DCMAKE_CXX_COMPILER_LAUNCHER=$(command -v ccache || true)" >"$folder/build.log"
cmake --build build/windows --target tracksmith tracksmith-cli
version=$(sed -nE 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/windows/CMakeCache.txt)
[ -n "$version" ] || { echo "make_packages.sh: the project has no version" >&2; exit 1; }

name=Tracksmith-$version-win64
stage=$folder/$name
rm -rf "$stage"
mkdir -p "$stage/data" "$stage/licenses"
for program in tracksmith tracksmith-cli; do
    x86_64-w64-mingw32-strip -o "$stage/$program.exe" "build/windows/$program.exe"
done
cp -r data/voices data/drums data/identity data/demo "$stage/data/"
# The guides with their pictures, for Help > User Guide.
mkdir -p "$stage/docs/de"
cp docs/user-guide.md docs/benutzerhandbuch.md docs/*.png "$stage/docs/"
cp docs/de/*.png "$stage/docs/de/"
cp LICENSE README.md CHANGELOG.md "$stage/"
# What the programs are made of, each under its own licence.
for package in qt6-base-dev libcli11-dev nlohmann-json3-dev gcc-mingw-w64-x86-64-posix-runtime \
    mingw-w64-x86-64-dev; do
    cp "/usr/share/doc/$package/copyright" "$stage/licenses/$package.txt"
done
# The licences that those texts name only by a path.
cp /usr/share/common-licenses/{LGPL-2,LGPL-2.1,LGPL-3,GPL-2,GPL-3,GFDL-1.3,Apache-2.0} "$stage/licenses/"
cp build/windows-libraries/pugixml/LICENSE.md "$stage/licenses/pugixml.txt"

rm -f "$folder/$name.zip" "$folder/$name-setup.exe"
(cd "$folder" && zip -q -r -X "$name.zip" "$name")
makensis -V2 -INPUTCHARSET UTF8 "-DVERSION=$version" "-DSTAGE=$stage" "-DOUTPUT=$folder/$name-setup.exe" \
    packaging/windows/installer.nsi
ls -l "$folder/$name.zip" "$folder/$name-setup.exe"
