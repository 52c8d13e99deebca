#!/bin/sh
# Paints the pictures of the documents: the main window playing the demo song in both themes, the
# list of instruments, what preparing the demo song did, picking a voice, and what is shown when a
# file is refused or cannot be saved.
# usage: tools/make_screenshots.sh PROGRAM [FOLDER]
# PROGRAM is the built tracksmith; no screen is needed. FOLDER takes the pictures instead of docs;
# LANGUAGE_SHOWN=de makes German ones, QT_SCALE_FACTOR=1.5 larger ones.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
program=${1:?usage: make_screenshots.sh path/to/tracksmith}
folder=${2:-$root/docs}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$folder" "$scratch/tracksmith"

song=$root/data/demo/demo.mid

# picture NAME THEME OPTION...: of the window with $song.
picture() {
    # Settings of its own, so that neither the user's theme nor the recent files come in.
    printf '{"SOFTWARE\\\\Orlavo\\\\Tracksmith 12": {"Theme": "%s", "Language": "%s", %s}}\n' \
        "$2" "${LANGUAGE_SHOWN:-en}" '"MidiInstrument00": "Yamaha Genos"' \
        >"$scratch/tracksmith/settings.json"
    out=$folder/$1.png
    shift 2
    XDG_CONFIG_HOME=$scratch XDG_DATA_HOME=$scratch QT_QPA_PLATFORM=offscreen \
        SDL_AUDIODRIVER=dummy "$program" "$@" --screenshot "$out" "$song"
}

picture main-window-dark dark --play 23
picture main-window-light light --play 23
picture instrument-chooser dark --show MMI_ChooseInstrument
picture what-changed dark --show MMF_WhatChanged
picture voice-picker dark --show MMI_PickVoice

# A song that is cut off, and one in a folder that cannot be written.
head -c 3000 "$song" >"$scratch/Evening Waltz.mid"
song="$scratch/Evening Waltz.mid"
picture refused-file dark
