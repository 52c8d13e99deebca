#!/usr/bin/env bash
# The part of test_deb.sh that runs in the clean root.
set -euo pipefail

package=/opt/check/tracksmith.deb
display=:93
step() { printf '\n== %s\n' "$*"; }
fail() {
    echo "FAILED: $*" >&2
    exit 1
}
as_user() { su musician -c "cd; export DISPLAY=$display SDL_AUDIODRIVER=dummy QT_QPA_PLATFORM=xcb; $*"; }
# Every file outside the user's folder and of what changes by itself.
files() {
    find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /run -o -path /tmp \
        -o -path /root -o -path /opt -o -path /home -o -path /var/cache -o -path /var/log \
        -o -path /var/lib/apt -o -path /var/lib/dpkg \) -prune -o -print | sort
}
# wait_for COMMAND...: until it succeeds, at most half a minute.
wait_for() {
    for _ in $(seq 60); do
        if "$@" >/dev/null 2>&1; then return; fi
        sleep 0.5
    done
    return 1
}
window() { DISPLAY=$display xdotool search --onlyvisible --name "$1" | head -1 | grep .; }

mount -t devpts devpts /dev/pts
step "what the package needs, and tools for this test"
apt-get update -q
apt-get install -y -q --no-install-recommends xvfb xdotool x11-utils desktop-file-utils
apt-get satisfy -y -q --no-install-recommends "$(dpkg-deb -f $package Depends)"
id musician 2>/dev/null || useradd --create-home musician
home=$(getent passwd musician | cut -d: -f6)
# What a run that failed has left.
! dpkg -s tracksmith >/dev/null 2>&1 || dpkg --purge tracksmith
rm -rf "$home/.config" "$home/.local" "$home/new"
files >/opt/check/before

step "install"
apt-get install -y -q --no-install-recommends $package
dpkg -s tracksmith | grep -E '^(Status|Version|Depends)'
version=$(dpkg-query -W -f '${Version}' tracksmith)
for file in $(dpkg -L tracksmith); do [ -e "$file" ] || fail "$file is missing"; done
for program in tracksmith tracksmith-cli; do
    told=$(as_user $program --version)
    echo "$told"
    [ "$(echo "$told" | head -1)" = "$program $version" ] || fail "$program tells another version"
    [ -f /usr/share/man/man1/$program.1.gz ] || fail "$program has no manual page"
done
[ -f /usr/share/bash-completion/completions/tracksmith-cli ] || fail "no bash completion"
grep -q tracksmith /usr/share/applications/mimeinfo.cache || fail "no MIME association"
for size in 16 22 24 32 48 64 128 256 512; do
    [ -f "/usr/share/icons/hicolor/${size}x$size/apps/io.github.tracksmith.Tracksmith.png" ] ||
        fail "no icon of size $size"
done

step "the command line"
as_user "tracksmith-cli info /usr/share/tracksmith/demo/demo.mid | head -3"
as_user "tracksmith-cli convert /usr/share/tracksmith/demo/demo.mid --instrument genos --out new"
as_user "tracksmith-cli voices genos grand | head -2"

step "the window"
Xvfb $display -screen 0 1400x900x24 >/dev/null 2>&1 &
x=$!
wait_for env DISPLAY=$display xprop -root || fail "no display"
as_user "tracksmith /usr/share/tracksmith/demo/demo.mid & echo \$! >started; wait \$!" >/opt/check/output 2>&1 &
wait_for window demo.mid || { cat /opt/check/output; fail "no window"; }
class=$(DISPLAY=$display xprop -id "$(window demo.mid)" WM_CLASS)
wanted=$(sed -n 's/^StartupWMClass=//p' /usr/share/applications/io.github.tracksmith.Tracksmith.desktop)
echo "$class, the desktop file says $wanted"
[[ $class == *"\"$wanted\"" ]] || fail "the desktop file names another window class"
DISPLAY=$display xdotool key --window "$(window demo.mid)" F1
wait_for window 'User Guide' || fail "F1 opens no guide"
echo "F1 opens: $(DISPLAY=$display xdotool getwindowname "$(window 'User Guide')")"
kill "$(cat "$home/started")"
wait %2 || fail "the window ended with $?"
kill $x
[ -f "$home/.config/tracksmith/settings.json" ] || fail "no settings were stored"

step "remove"
dpkg -L tracksmith >/opt/check/contents
apt-get remove -y -q tracksmith
while read -r file; do
    [ ! -e "$file" ] || [ -d "$file" ] || fail "$file stays after remove"
done </opt/check/contents

step "install once more and purge"
dpkg -i $package
apt-get purge -y -q tracksmith
! dpkg -s tracksmith >/dev/null 2>&1 || fail "dpkg still knows the package"
files >/opt/check/after
diff /opt/check/before /opt/check/after && echo "no file more or less than before" || fail "the files above differ"
find "$home" -newer /opt/check/before -type f | sort
[ -f "$home/.config/tracksmith/settings.json" ] || fail "the user's settings are gone"
[ -s "$home/new/demo.mid" ] || fail "the user's song is gone"
step "passed"
