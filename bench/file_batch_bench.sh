#!/usr/bin/env bash
# Copying and moving many files through velmora-cli, against cp in the same
# run on the same files. N files of 1 MB (2,000 by default) in one folder of
# a scratch folder under TMPDIR (one file system):
#   copy --all: at most 1.3 x `cp` of the same files (best of ROUNDS, 3 by default;
#   each round takes 2 x N MB more until the end, but on a tmpfs);
#   move --all --point: a rename each, under 1 s including the Collection's save.
#   usage: bench/file_batch_bench.sh [BUILD_DIR] [N]
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
n=${2:-2000}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cli=$build/velmora-cli

mkdir -p "$work/media"
head -c $((1024 * 1024)) /dev/urandom >"$work/one"
for ((i = 0; i < n; i++)); do cp "$work/one" "$work/media/t$i.mp3"; done
sync
"$cli" add "$work/c/bench.qel" "$work/media" >/dev/null

now() { date +%s.%N; }
best_cp=999 best_copy=999
time_cp() {
  local start end
  start=$(now); cp "$work"/media/*.mp3 "$1/"; sync; end=$(now)
  best_cp=$(awk "BEGIN { t = $end - $start; print (t < $best_cp ? t : $best_cp) }")
  echo "  round $round: cp + sync $(awk "BEGIN { printf \"%.2f\", $end - $start }") s"
}
time_copy() {
  local start end
  start=$(now); "$cli" copy "$work/c/bench.qel" "$1" --all >/dev/null 2>&1; sync; end=$(now)
  best_copy=$(awk "BEGIN { t = $end - $start; print (t < $best_copy ? t : $best_copy) }")
  echo "  round $round: copy $(awk "BEGIN { printf \"%.2f\", $end - $start }") s"
  [ "$(ls "$1" | wc -l)" -eq "$n" ] || { echo "copy: not every file arrived"; exit 1; }
}
# Each round writes into new folders and the old ones stay until the end:
# ext4 without a journal passes over every inode freed in the last minute
# each time it hands out a new one, so removing the last round's 4,000 files
# here would charge the two runs for that, unevenly. The order
# alternates so that neither always comes after the other's writeback.
for ((round = 0; round < ${ROUNDS:-3}; round++)); do
  mkdir -p "$work/cp$round" "$work/out$round"; sync
  if ((round % 2 == 0)); then
    time_cp "$work/cp$round"; time_copy "$work/out$round"
  else
    time_copy "$work/out$round"; time_cp "$work/cp$round"
  fi
  # On a tmpfs the copies are memory, and freed inodes cost nothing there.
  [ "$(stat -f -c %T "$work")" != tmpfs ] || rm -rf "$work/cp$round" "$work/out$round"
done
ratio=$(awk "BEGIN { printf \"%.2f\", $best_copy / $best_cp }")
echo "copy of $n files of 1 MB: $(printf %.2f "$best_copy") s, cp + sync $(printf %.2f "$best_cp") s: ${ratio} x (target 1.3)"

mkdir -p "$work/moved"
start=$(now); "$cli" move "$work/c/bench.qel" "$work/moved" --all --point >/dev/null 2>&1; end=$(now)
[ "$(ls "$work/moved" | wc -l)" -eq "$n" ] || { echo "move: not every file arrived"; exit 1; }
echo "move of $n files (renames) with the Collection's save: $(awk "BEGIN { printf \"%.2f\", $end - $start }") s (target 1)"
