#!/usr/bin/env bash
# The include check itself: it passes a downward include and fails an upward
# one and one between two folders of the same rank, on a scratch tree ranked
# by the real README.
set -u
check=$(dirname "$0")/check_include_order.sh
readme=${1:?usage: check_include_order_test.sh README.md}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$readme" "$scratch/README.md"
mkdir -p "$scratch"/{base,core,ratings,catalogue,collection,fileops}
fail=0
expect() {  # expect pass|fail FILE TEXT
  printf '#include "%s"\n' "$3" >"$scratch/$2"
  "$check" "$scratch" >/dev/null
  local rc=$?
  rm "$scratch/$2"
  if { [ "$1" = pass ] && [ $rc -ne 0 ]; } || { [ "$1" = fail ] && [ $rc -ne 1 ]; }; then
    echo "FAILED: $2 including $3 should $1 (exit $rc)"
    fail=1
  fi
}
expect pass core/a.cpp base/signal.h
expect pass ratings/a.cpp catalogue/track_list_totals.h
expect fail base/a.h core/app_context.h
expect fail catalogue/a.cpp ratings/rating_marks.h
expect fail collection/a.cpp fileops/file_engine.h
expect fail core/a.h desktop/qt/main_window.h
[ $fail -eq 0 ] && echo "include check: 6 cases as expected"
exit $fail
