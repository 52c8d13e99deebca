#!/bin/sh
# Writes docs/instruments.md: which instrument has a voice table and which operations prepare a song
# for it, as the program itself lists them.
# usage: tools/make_instrument_table.sh path/to/tracksmith-cli
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
program=${1:?usage: make_instrument_table.sh path/to/tracksmith-cli}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
{
    cat <<'TEXT'
# Instruments

The catalogue in its order: the stable identifier, the name as it stands in the settings, how many
voices and drum kits the program's own table has (without one, the common set whose names are shown:
XG, GM2 or GM), and the operations that prepare a song for the instrument, in their order, each with
the option that decides it where there is one. Where the voices come from is told in [voice-tables.md](voice-tables.md).

After the operations, for every instrument that has any, come four steps that keep the sound of the
song. `PlaceResets` finds another track for a reset that the chosen one has no place for.
`KeepDrumParts` makes drums of the channels that the song makes drums in another family's way: by a
message for the part (GS), by bank select MSB 127 (XG) or 120 (GM2). `KeepChannelSettings` moves
what the song sets behind the reset, or repeats it where a note begins before. `CountEarlyNotes`
counts the notes that begin before the instrument is ready.

Written by `tools/make_instrument_table.sh`.

TEXT
    XDG_DATA_HOME=$scratch "$program" instruments --lang en --markdown
} >"$root/docs/instruments.md"
