#!/bin/sh
# Paints the pictures of the documents: the main window playing the demo song in both themes, the
# windows that the guides tell of, the first start, and what is shown when a file is refused.
# usage: tools/make_screenshots.sh PROGRAM [FOLDER [--sizes]]
# PROGRAM is the built tracksmith; no screen is needed. FOLDER takes the pictures instead of docs.
# The German ones go to the folder de in it. QT_SCALE_FACTOR=1.5 makes larger ones. With --sizes the
# main window, the first start and a refused file are painted instead, in windows of three sizes and
# with large letters, in both themes: to look at, not for documents.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
program=${1:?usage: make_screenshots.sh path/to/tracksmith}
folder=${2:-$root/docs}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$folder/de" "$scratch/tracksmith"

demo=$root/data/demo/demo.mid

# A song that is cut off, and one with faults: overlapping notes, one without end, a pedal left on.
mkdir "$scratch/cut" "$scratch/faulty"
cut="$scratch/cut/Evening Waltz.mid"
head -c 3000 "$demo" >"$cut"
faulty="$scratch/faulty/Evening Waltz.mid"
{
    printf 'MThd\000\000\000\006\000\000\000\001\001\340MTrk\000\000\000\051'
    printf '\000\300\000\000\260\100\177\000\220\074\144\140\220\074\144'
    printf '\140\200\074\100\140\200\074\100\000\220\100\144'
    printf '\203\140\220\103\144\203\140\200\103\100\000\377\057\000'
} >"$faulty"

# picture SONG NAME THEME OPTION...: of the window with the song, in both languages.
picture() {
    song=$1 name=$2 theme=$3
    shift 3
    for language in en de; do
        out=$folder/$name.png
        [ "$language" = en ] || out=$folder/$language/$name.png
        # Settings of its own, so that neither the user's theme nor the recent files come in.
        printf '{"SOFTWARE\\\\Orlavo\\\\Tracksmith 12": {"Theme": "%s", "Language": "%s", %s, %s}}\n' \
            "$theme" "$language" '"MidiInstrument00": "Yamaha Genos"' "\"TextSize\": $text" \
            >"$scratch/tracksmith/settings.json"
        XDG_CONFIG_HOME=$scratch XDG_DATA_HOME=$scratch QT_QPA_PLATFORM=offscreen \
            SDL_AUDIODRIVER=dummy "$program" "$@" --screenshot "$out" "$song"
    done
}

text=100
if [ "${3:-}" = --sizes ]; then
    for theme in dark light; do
        for size in 1024x700-100 1280x720-100 1280x720-200 3840x2160-100 3840x2160-200; do
            text=${size#*-}
            picture "$demo" "main-$theme-$size" "$theme" --play 23 --size "${size%-*}"
            picture "$demo" "first-start-$theme-$size" "$theme" --show MMF_FirstSteps --size "${size%-*}"
            picture "$cut" "refused-$theme-$size" "$theme" --size "${size%-*}"
        done
    done
    exit
fi

picture "$demo" main-window-dark dark --play 23
picture "$demo" main-window-light light --play 23
picture "$demo" instrument-chooser dark --show MMI_ChooseInstrument
picture "$demo" what-changed dark --show MMF_WhatChanged
picture "$demo" voice-picker dark --show MMI_PickVoice
picture "$demo" auto-revoicer dark --show MME_AutoRevoicer
picture "$demo" midi-and-sound dark --show MMS_MidiPorts
picture "$demo" instruments dark --show MMS_Instruments
picture "$demo" delete-range dark --play 17 --show MME_RangeDelete
picture "$demo" copy-range dark --play 17 --show MME_RangeCopy
picture "$demo" transpose-range dark --play 17 --show MME_RangeTranspose
picture "$demo" first-start dark --show MMF_FirstSteps
picture "$faulty" health dark --show MMF_Health
picture "$cut" refused-file dark
