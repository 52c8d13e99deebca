#!/bin/sh
# Paints the main window playing the demo song into docs/main-window-dark.png and -light.png.
# usage: tools/make_screenshots.sh PROGRAM [FOLDER]
# PROGRAM is the built tracksmith; no screen is needed. FOLDER takes the pictures instead of docs;
# LANGUAGE_SHOWN=de makes German ones, QT_SCALE_FACTOR=1.5 larger ones.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
program=${1:?usage: make_screenshots.sh path/to/tracksmith}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

mkdir -p "$root/docs"
for theme in dark light; do
    # Settings of its own, so that neither the user's theme nor the recent files come in.
    mkdir -p "$scratch/$theme/tracksmith"
    printf '{"SOFTWARE\\\\Orlavo\\\\Tracksmith 12": {"Theme": "%s", "Language": "%s"}}\n' \
        "$theme" "${LANGUAGE_SHOWN:-en}" > "$scratch/$theme/tracksmith/settings.json"
    XDG_CONFIG_HOME="$scratch/$theme" QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy "$program" \
        --play 23 --screenshot "${2:-$root/docs}/main-window-$theme.png" "$root/data/demo/demo.mid"
done
