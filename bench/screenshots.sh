#!/usr/bin/env bash
# Makes a small Collection of generated media beside the screenshots program
# (its program folder), then draws the window into OUTDIR.
#   bench/screenshots.sh BUILD_DIR OUTDIR
set -euo pipefail
build=$(cd "$1" && pwd)
out=$2
media=$(mktemp -d)
trap 'rm -rf "$media"' EXIT
mkdir -p "$media/Ήχοι - Sounds" "$media/Films"
i=0
for tone in 220 330 440 550 660 770 880 990; do
    i=$((i + 1))
    ffmpeg -loglevel error -y -f lavfi -i "sine=frequency=$tone:duration=$((20 + i * 7))" \
        -metadata title="Τόνος $tone Hz" -metadata artist="Velmora Ensemble" -metadata album="Tones" \
        -metadata genre="Test" -metadata date=2026 -b:a 128k "$media/Ήχοι - Sounds/tone_$tone.mp3"
done
for n in 1 2; do
    ffmpeg -loglevel error -y -f lavfi -i "testsrc2=size=320x240:duration=$((10 * n))" \
        -f lavfi -i "sine=frequency=$((300 * n)):duration=$((10 * n))" -shortest \
        -metadata title="Film $n" "$media/Films/film_$n.mp4"
done
collection="$build/bench/velmora_sylloges/velmora.qel"
rm -f "$build/bench/velmora_sylloges/"velmora*
"$build/velmora-cli" add "$collection" "$media" --subdirs
"$build/velmora-cli" identify "$collection"
QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} "$build/bench/screenshots" "$out"
