#!/usr/bin/env bash
# Fails when an #include points up the folder ranks of the README's layout
# table, or sideways between two folders of one rank: then no two folders can
# ever include each other, and a newcomer reads the dependencies off the table.
#   usage: check_include_order.sh [ROOT]   (ROOT holds README.md and the folders)
set -u
root=${1:-.}
cd "$root" || exit 2

# "| 3 | `catalogue/` | ..." gives catalogue rank 3.
declare -A rank
while IFS= read -r line; do
  n=$(sed -E 's/^\|[[:space:]]*([0-9]+)[[:space:]]*\|.*/\1/' <<<"$line")
  cell=$(cut -d'|' -f3 <<<"$line")
  for folder in $(grep -oE '`[a-z/]+/`' <<<"$cell" | tr -d '`'); do
    rank[${folder%/}]=$n
  done
done < <(grep -E '^\|[[:space:]]*[0-9]+[[:space:]]*\|' README.md)
if [ ${#rank[@]} -eq 0 ]; then
  echo "no ranked folders found in the README's layout table"
  exit 2
fi

folder_of() {  # the ranked folder a path belongs to; desktop/qt/ is one of its own
  case $1 in
    desktop/qt/*) echo desktop/qt ;;
    */*) echo "${1%%/*}" ;;
  esac
}

bad=0
while IFS= read -r file; do
  from=$(folder_of "$file")
  [ -n "${rank[$from]:-}" ] || continue
  while IFS=: read -r num inc; do
    to=$(folder_of "$inc")
    # Includes outside the ranked folders (the tests' support) are not ranked.
    [ -n "$to" ] && [ -n "${rank[$to]:-}" ] && [ "$to" != "$from" ] || continue
    if [ "${rank[$to]}" -ge "${rank[$from]}" ]; then
      echo "$file:$num: includes $inc ($to/ is rank ${rank[$to]}, $from/ is rank ${rank[$from]})"
      bad=1
    fi
  done < <(grep -nE '^[[:space:]]*#[[:space:]]*include[[:space:]]*"' "$file" | sed -E 's/^([0-9]+):.*"([^"]+)".*/\1:\2/')
done < <(find . -type f \( -name '*.h' -o -name '*.cpp' \) -not -path './build*' -printf '%P\n' | sort)

if [ $bad -ne 0 ]; then
  echo "every include must point to a folder of a lower rank (README, Layout)"
  exit 1
fi
echo "include order: clean (${#rank[@]} ranked folders)"
