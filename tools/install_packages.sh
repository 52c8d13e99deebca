#!/usr/bin/env bash
# Installs what is missing of the Debian packages for the given purposes:
#   tools/install_packages.sh build|test|check|deb|windows|windows-packages|windows-pictures ...
set -euo pipefail

packages_for() {
    case $1 in
    build)
        echo cmake ninja-build g++ pkg-config
        echo qt6-base-dev qt6-wayland libfluidsynth-dev libsndfile1-dev
        echo libasound2-dev librtmidi-dev libjack-jackd2-dev libsdl2-dev
        echo libcli11-dev nlohmann-json3-dev libpugixml-dev
        echo timgm6mb-soundfont fonts-dejavu-core
        ;;
    test) echo libgtest-dev libbenchmark-dev jackd2 ;;
    check)
        echo ccache clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev
        echo libclang-14-dev llvm-14-dev
        echo desktop-file-utils appstream git
        ;;
    deb) echo dpkg-dev desktop-file-utils appstream lintian debootstrap xvfb xdotool x11-utils ;;
    windows) echo g++-mingw-w64-x86-64-posix wine64 googletest ;;
    windows-packages) echo nsis zip ;;
    windows-pictures) echo xvfb xauth imagemagick ;;
    *)
        echo "install_packages.sh: unknown purpose '$1' (see the top of this file)" >&2
        return 2
        ;;
    esac
}

installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        env DEBIAN_FRONTEND=noninteractive "$@"
    elif command -v sudo >/dev/null; then
        sudo env DEBIAN_FRONTEND=noninteractive ${http_proxy:+http_proxy="$http_proxy"} \
            ${https_proxy:+https_proxy="$https_proxy"} "$@"
    else
        echo "Please install these packages as root: ${missing[*]}" >&2
        return 1
    fi
}

apt_install() {
    as_root apt-get install -y -q --no-install-recommends "${missing[@]}"
}

wanted=()
for purpose in "$@"; do
    names=$(packages_for "$purpose")
    # shellcheck disable=SC2206 # the names are meant to be split
    wanted+=($names)
done

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    echo "This system has no apt. Tracksmith is built on Debian 12 from the packages below;" >&2
    echo "please make sure that you have their counterparts:" >&2
    echo "  ${wanted[*]}" >&2
    exit 0
fi

missing=()
for package in "${wanted[@]}"; do
    installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "Installing ${missing[*]}"
# The lists of packages are fetched only when they are absent or too old to install from.
if ! apt-cache show "${missing[@]}" >/dev/null 2>&1 || ! apt_install; then
    as_root apt-get update -q
    apt_install
fi
