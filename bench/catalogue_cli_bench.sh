#!/usr/bin/env bash
# velmora-cli filter and search on the catalogue bench's Collection of
# 32,766 Tracks (5,000 artists, 2,000 albums, 300 genres), from start to
# exit, best of five, beside grep over the same rows as text.
# Usage: bench/catalogue_cli_bench.sh [BUILD_DIR]
set -euo pipefail
build=${1:-build}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
VELMORA_BENCH_WRITE="$folder" "$build/bench/catalogue_bench" --benchmark_filter=QueryOneArtist >/dev/null 2>&1
file="$folder/velmora_sylloges/catalogue.qel"
"$build/velmora-cli" filter "$file" >"$folder/rows.txt"

best() {
    local best_ms=999999
    for _ in 1 2 3 4 5; do
        local t0 t1
        t0=$(date +%s%N)
        "$@" >/dev/null
        t1=$(date +%s%N)
        local ms=$(((t1 - t0) / 1000000))
        ((ms < best_ms)) && best_ms=$ms
    done
    echo "$best_ms ms"
}

echo "velmora-cli filter --artist 'Artist 1234': $(best "$build/velmora-cli" filter "$file" --artist 'Artist 1234')"
echo "velmora-cli filter (every row):           $(best "$build/velmora-cli" filter "$file")"
echo "velmora-cli search 'κομμάτι 3276':         $(best "$build/velmora-cli" search "$file" 'κομμάτι 3276')"
echo "grep -i 'Artist 1234' over the rows:       $(best grep -i 'Artist 1234' "$folder/rows.txt")"
