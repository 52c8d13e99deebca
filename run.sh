#!/usr/bin/env bash
# Builds Tracksmith and starts it: ./run.sh [song.mid]
# Without a display the command line works on the song instead, with its results in output/.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
song=$(realpath -m -- "${1:-$top/data/demo/demo.mid}")
if [ ! -f "$song" ]; then
    echo "run.sh: there is no file $song" >&2
    exit 2
fi

cd "$top"
tools/install_packages.sh build
cmake --preset release -B build/run -DBUILD_TESTING=OFF -DTRACKSMITH_BENCHMARKS=OFF \
    -DCMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)"
cmake --build build/run --target tracksmith tracksmith-cli

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec build/run/tracksmith "$song"
fi

cli=build/run/tracksmith-cli
name=$(basename "$song")
wav=output/${name%.*}.wav
mkdir -p output/format0 output/format1

echo
echo "No display: tracksmith-cli describes, converts and renders the song."
echo
"$cli" info "$song"
"$cli" --yes convert "$song" --format 0 --out output/format0
"$cli" --yes convert "$song" --format 1 --out output/format1
"$cli" --yes render "$song" --out "$wav"

echo
echo "The results:"
for result in "output/format0/$name" "output/format1/$name" "$wav"; do
    [ -s "$result" ] || { echo "run.sh: $top/$result was not written" >&2; exit 1; }
    printf '  %s (%s bytes)\n' "$top/$result" "$(stat -c %s "$result")"
done
