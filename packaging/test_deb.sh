#!/usr/bin/env bash
# Installs the Debian package in a clean root, starts both programs, removes and purges it, and checks
# that nothing but the user's files stays: packaging/test_deb.sh PACKAGE.deb [ROOT]
# Needs root and debootstrap. ROOT is made where it does not exist, else used as it is; without it a
# fresh one is made and removed again.
set -euo pipefail

package=$(realpath -- "${1:?usage: test_deb.sh PACKAGE.deb [ROOT]}")
[ "$(id -u)" = 0 ] || { echo "test_deb.sh: a root needs root" >&2; exit 1; }
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=${2:-}
if [ -z "$root" ]; then
    root=$(mktemp -d)
    chmod 755 "$root" # a user starts the programs
    trap 'rm -rf --one-file-system "$root"' EXIT
fi

step() { printf '\n== %s\n' "$*"; }

# The archive of this machine's own configuration.
if [ ! -x "$root/usr/bin/apt-get" ]; then
    release=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
    archive=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' \
        "Codename: $release" 'Component: main' | head -1)
    step "a clean root of $release"
    debootstrap --variant=minbase "$release" "$root" "$archive" >"$root.log" 2>&1 ||
        { tail -5 "$root.log" >&2; exit 1; }
fi
step "$(basename "$package") in $(. "$root/etc/os-release" && echo "$PRETTY_NAME")"
mkdir -p "$root/opt/check"
cp "$package" "$root/opt/check/tracksmith.deb"
cp "$here/test_deb_inside.sh" "$root/opt/check/inside.sh"
# No service starts in there.
printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
chmod +x "$root/usr/sbin/policy-rc.d"
cp -f /etc/resolv.conf "$root/etc/resolv.conf"
unshare --mount --pid --fork --mount-proc="$root/proc" \
    chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive bash /opt/check/inside.sh
