#!/usr/bin/env bash
# Takes a picture of the program's window on Windows, playing the demo song, as Wine shows it on a
# screen of its own: tools/make_windows_screenshot.sh PROGRAM.exe [PICTURE]
# PICTURE is docs/windows-window.png by default; LANGUAGE_SHOWN=de makes a German one. Nothing is
# needed but what tools/install_packages.sh installs for windows and windows-pictures.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
program=$(realpath -- "${1:?usage: make_windows_screenshot.sh PROGRAM.exe [PICTURE]}")
picture=$(realpath -m -- "${2:-$top/docs/windows-window.png}")
scratch=$(mktemp -d)
screen=
on_wine() { "$top/tools/wine_test.sh" "$scratch/wine" "$@"; }
trap 'on_wine --stop >/dev/null 2>&1; [ -z "$screen" ] || kill "$screen"; rm -rf "$scratch"' EXIT

# The number of a free display is told when it is ready.
mkfifo "$scratch/display"
Xvfb -displayfd 3 -screen 0 1360x820x24 3>"$scratch/display" 2>/dev/null &
screen=$!
read -r number <"$scratch/display"
export DISPLAY=:$number

# set_value KEY NAME VALUE
set_value() {
    on_wine reg.exe add "HKCU\\$1" /v "$2" /d "$3" /f >/dev/null
}
# Tests have no window system; this has, and Wine draws the frame itself.
set_value 'Software\Wine\Drivers' Graphics x11
set_value 'Software\Wine\X11 Driver' Managed N
for font in 'Segoe UI' Tahoma 'MS Shell Dlg' 'MS Shell Dlg 2'; do
    set_value 'Software\Wine\Fonts\Replacements' "$font" 'DejaVu Sans'
done
set_value 'Software\Wine\Fonts\Replacements' 'Courier New' 'DejaVu Sans Mono'
own='SOFTWARE\Orlavo\Tracksmith 12'
set_value "$own" Language "${LANGUAGE_SHOWN:-en}"
set_value "$own" Theme dark
set_value "$own" MidiInstrument00 'Yamaha Genos'
on_wine --stop

on_wine "$program" --play 23 "Z:$top/data/demo/demo.mid" >/dev/null 2>&1 &
# There is no telling from outside when all is painted.
sleep "${SECONDS_TO_WAIT:-20}"
import -window root "$scratch/screen.png"
convert "$scratch/screen.png" -trim +repage "$picture"
colours=$(identify -format '%k' "$picture")
[ "$colours" -gt 100 ] || { echo "make_windows_screenshot.sh: nothing was shown" >&2; exit 1; }
echo "$picture"
