#!/usr/bin/env bash
# Builds the Debian package: packaging/make_deb.sh [FOLDER]; the file lies in FOLDER or build/deb.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
tools/install_packages.sh build deb
cmake --preset release -B build/deb -DBUILD_TESTING=OFF -DTRACKSMITH_BENCHMARKS=OFF \
    -DCMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)"
cmake --build build/deb --target tracksmith tracksmith-cli
folder=${1:-build/deb}
rm -f "$folder"/tracksmith_*.deb
cpack --config build/deb/CPackConfig.cmake -G DEB -B "$folder" >build/deb/cpack.log 2>&1 || {
    cat build/deb/cpack.log >&2
    exit 1
}
rm -rf "${folder:?}/_CPack_Packages"
package=$(echo "$folder"/tracksmith_*.deb)
desktop-file-validate packaging/*.desktop
appstreamcli validate --no-net packaging/*.metainfo.xml
lintian --fail-on error --suppress-tags initial-upload-closes-no-bugs "$package"
echo "$package"
