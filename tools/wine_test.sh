#!/usr/bin/env bash
# Runs a Windows program under Wine with a prefix of its own:
#   tools/wine_test.sh PREFIX_FOLDER PROGRAM.exe [ARGUMENT...]
#   tools/wine_test.sh PREFIX_FOLDER --stop
# The first call makes the prefix and leaves a Wine server running, which --stop ends: with it a
# program starts in a fraction of a second.
set -euo pipefail

WINEPREFIX=$(realpath -m -- "$1")
export WINEPREFIX WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml='
export LC_ALL=C.UTF-8
shift

wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
server=/usr/lib/wine/wineserver64
[ -x "$server" ] || server=$(command -v wineserver)

if [ "$1" = --stop ]; then
    "$server" -k || true
    exit 0
fi

make_prefix() {
    "$wine" wineboot.exe -i
    # No window system is needed: windows exist but are not drawn.
    "$wine" reg.exe add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
    "$server" -w
}

mkdir -p "$WINEPREFIX"
(
    flock 9
    if [ ! -f "$WINEPREFIX/ready" ]; then
        make_prefix </dev/null >/dev/null 2>&1
        touch "$WINEPREFIX/ready"
    fi
    # The server and the first program's services must not hold the caller's output open.
    "$server" -p </dev/null >/dev/null 2>&1 9>&- || true
    "$wine" cmd.exe /c exit </dev/null >/dev/null 2>&1 9>&-
) 9>"$WINEPREFIX.lock"

exec "$wine" "$@"
