#!/usr/bin/env bash
# The walk past a drive that is gone: a Collection of N Tracks (32,766 by
# default) whose files have all disappeared, played by one press until the
# cycle ends, in the terminal (velmora-cli play) and in the window
# (window_walk_bench, offscreen). Targets: under 2 s and under 4 s.
#   usage: bench/gone_drive_bench.sh [BUILD_DIR] [N]
# The window part replaces the Collection in BUILD_DIR/bench/, its program folder.
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
n=${2:-32766}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Empty files in folders of 100: the add takes them by name, unread.
for ((d = 0; d * 100 < n; d++)); do
  mkdir -p "$work/media/d$d"
  for ((i = 0; i < 100 && d * 100 + i < n; i++)); do : >"$work/media/d$d/t$i.mp3"; done
done
"$build/velmora-cli" add "$work/c/gone.qel" "$work/media" --subdirs >/dev/null
rm -rf "$work/media"

start=$(date +%s.%N)
"$build/velmora-cli" play "$work/c/gone.qel" --ao null >"$work/play.log" 2>&1
end=$(date +%s.%N)
grep -q "Every file has been reproduced" "$work/play.log" || { echo "terminal: the cycle did not end"; exit 1; }
echo "terminal: $n missing Tracks walked in $(awk "BEGIN { printf \"%.2f\", $end - $start }") s (load and save included)"

if [ -x "$build/bench/window_walk_bench" ]; then
  folder=$build/bench/velmora_sylloges
  mkdir -p "$folder"
  rm -f "$folder"/velmora.qel "$folder"/velmora_*.qqel "$folder"/default.qr
  cp "$work/c/gone.qel" "$folder/velmora.qel"
  cp "$work/c/gone_files.qqel" "$folder/velmora_files.qqel"
  cp "$work/c/gone_filters.qqel" "$folder/velmora_filters.qqel" 2>/dev/null || true
  QT_QPA_PLATFORM=offscreen timeout 600 "$build/bench/window_walk_bench"
fi
