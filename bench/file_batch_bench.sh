#!/usr/bin/env bash
# Copying and moving many files through velmora-cli, against cp in the same
# run on the same files. N files of 1 MB (2,000 by default) in one folder of
# a scratch folder under TMPDIR (one file system):
#   copy --all: at most 1.3 x `cp` of the same files (best of ROUNDS, 3 by default);
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
for ((round = 0; round < ${ROUNDS:-3}; round++)); do
  rm -rf "$work/cp" "$work/out"; mkdir -p "$work/cp" "$work/out"; sync
  start=$(now); cp "$work"/media/*.mp3 "$work/cp/"; sync; end=$(now)
  best_cp=$(awk "BEGIN { t = $end - $start; print (t < $best_cp ? t : $best_cp) }")
  start=$(now); "$cli" copy "$work/c/bench.qel" "$work/out" --all >/dev/null 2>&1; sync; end=$(now)
  best_copy=$(awk "BEGIN { t = $end - $start; print (t < $best_copy ? t : $best_copy) }")
done
[ "$(ls "$work/out" | wc -l)" -eq "$n" ] || { echo "copy: not every file arrived"; exit 1; }
ratio=$(awk "BEGIN { printf \"%.2f\", $best_copy / $best_cp }")
echo "copy of $n files of 1 MB: $(printf %.2f "$best_copy") s, cp + sync $(printf %.2f "$best_cp") s: ${ratio} x (target 1.3)"

mkdir -p "$work/moved"
start=$(now); "$cli" move "$work/c/bench.qel" "$work/moved" --all --point >/dev/null 2>&1; end=$(now)
[ "$(ls "$work/moved" | wc -l)" -eq "$n" ] || { echo "move: not every file arrived"; exit 1; }
echo "move of $n files (renames) with the Collection's save: $(awk "BEGIN { printf \"%.2f\", $end - $start }") s (target 1)"
