#!/usr/bin/env bash
# Kills a loop of tag writes at random moments, 200 times by default, and
# checks after each kill that the file under the name still decodes whole
# with libavformat (ffmpeg) and has the length it had. Run by hand:
#
#   bench/tag_kill_test.sh [BUILD_DIR] [KILLS]
#
# Prints one line per format and exits 1 on the first damaged file.
set -u
build=${1:-build}
kills=${2:-200}
loop="$build/bench/tag_write_loop"
[ -x "$loop" ] || { echo "no $loop: build the tag_write_loop target" >&2; exit 2; }
dir=$(mktemp -d /tmp/velmora-kill-XXXXXX)
trap 'rm -rf "$dir"' EXIT

formats=(mp3 ogg opus flac m4a wma wav)
declare -A codec=([mp3]="-b:a 128k" [ogg]="-c:a libvorbis" [opus]="-c:a libopus" [flac]=""
                  [m4a]="-c:a aac" [wma]="-c:a wmav2" [wav]="")
for ext in "${formats[@]}"; do
    ffmpeg -v error -y -f lavfi -i sine=frequency=440:duration=60 ${codec[$ext]} "$dir/tone.$ext" || exit 2
done

seconds() { ffprobe -v error -show_entries format=duration -of default=nw=1:nk=1 "$1"; }
decodes() { [ -z "$(ffmpeg -v error -i "$1" -map 0:a -f null - 2>&1)" ]; }

per=$(( (kills + ${#formats[@]} - 1) / ${#formats[@]} ))
done_kills=0
for ext in "${formats[@]}"; do
    file="$dir/tone.$ext"
    want=$(seconds "$file")
    mid=0
    for ((k = 0; k < per && done_kills < kills; k++)); do
        "$loop" "$file" 2>"$dir/err" &
        pid=$!
        # Between 5 and 300 ms: past the start, into a write somewhere.
        sleep "0.$(printf '%03d' $(( 5 + RANDOM % 296 )))"
        kill -9 "$pid" 2>/dev/null
        wait "$pid" 2>/dev/null
        if [ -s "$dir/err" ]; then echo "the loop failed: $(cat "$dir/err")" >&2; exit 1; fi
        # A copy left beside the file by a kill mid-write; the next write replaces it.
        [ -e "$dir/.tone.$ext.velmora-tag" ] && mid=$((mid + 1))
        got=$(seconds "$file")
        if ! decodes "$file" || [ "$(awk -v a="$want" -v b="$got" 'BEGIN { print (a - b < 0.05 && b - a < 0.05) }')" != 1 ]; then
            echo "$ext: damaged after kill $((k + 1)) (length $got, was $want)" >&2
            exit 1
        fi
        done_kills=$((done_kills + 1))
    done
    echo "$ext: $k kills, $mid of them in the middle of a write (a copy was left beside the file); decodes whole"
done
left=$(ls -A "$dir" | grep -c 'velmora-tag' || true)
echo "$done_kills kills, every file whole; $left copies left over from the last kill of each format"
