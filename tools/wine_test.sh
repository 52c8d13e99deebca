#!/usr/bin/env bash
# Runs a Windows program under Wine with a prefix of its own:
#   tools/wine_test.sh PREFIX_FOLDER PROGRAM.exe [ARGUMENT...]
#   tools/wine_test.sh PREFIX_FOLDER --stop
# The first call makes the prefix, as does the first after a change of this script, and leaves a
# Wine server running, which --stop ends: with it a program starts in a fraction of a second.
set -euo pipefail

WINEPREFIX=$(realpath -m -- "$1")
export WINEPREFIX WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml=;winedbg.exe='
export LC_ALL=C.UTF-8
shift

wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
server=/usr/lib/wine/wineserver64
[ -x "$server" ] || server=$(command -v wineserver)

if [ "$1" = --stop ]; then
    "$server" -k || true
    exit 0
fi

set_driver() {
    "$wine" reg.exe add 'HKCU\Software\Wine\Drivers' /v "$1" /d "$2" /f
}

make_prefix() {
    "$server" -k || true
    "$wine" wineboot.exe -i
    # No window system is needed: windows exist but are not drawn.
    set_driver Graphics null
    # The MIDI devices are those of wineloop.drv where it lies beside the program, else there are
    # none.
    set_driver Audio loop
    "$server" -w
}

mkdir -p "$WINEPREFIX"
(
    flock 9
    if [ ! "$WINEPREFIX/ready" -nt "$0" ]; then
        make_prefix </dev/null >/dev/null 2>&1
        touch "$WINEPREFIX/ready"
    fi
    # The server and the first program's services must not hold the caller's output open.
    "$server" -p </dev/null >/dev/null 2>&1 9>&- || true
    "$wine" cmd.exe /c exit </dev/null >/dev/null 2>&1 9>&-
) 9>"$WINEPREFIX.lock"

exec "$wine" "$@"
