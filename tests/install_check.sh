#!/usr/bin/env bash
# Installs the build into a temporary prefix and checks what a desktop needs
# of it: both programs, a desktop entry its validator accepts, and the icon
# in the hicolor theme at several sizes.
#   usage: install_check.sh BUILD_DIR
set -u
build=${1:?build folder}
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
fail() { echo "install check: $*"; exit 1; }

cmake --install "$build" --prefix "$prefix" >/dev/null || fail "cmake --install failed"
for program in velmora velmora-cli; do
  [ -x "$prefix/bin/$program" ] || fail "bin/$program is missing"
done
entry=$prefix/share/applications/velmora.desktop
[ -f "$entry" ] || fail "the desktop entry is missing"
desktop-file-validate "$entry" || fail "desktop-file-validate rejects $entry"
grep -q '^Exec=velmora %F$' "$entry" || fail "the entry does not hand its files to the program"
grep -q '^MimeType=.*audio/mpeg;.*video/x-msvideo;' "$entry" || fail "the entry lacks the media types"
for size in 16 32 48 256; do
  png=$prefix/share/icons/hicolor/${size}x${size}/apps/velmora.png
  [ -s "$png" ] || fail "no ${size}px icon"
  # The PNG header holds the width at bytes 16 to 19.
  width=$(od -An -tu1 -j16 -N4 "$png" | awk '{print $1*16777216 + $2*65536 + $3*256 + $4}')
  [ "$width" = "$size" ] || fail "the ${size}px icon is $width pixels wide"
done
grep -q '<svg' "$prefix/share/icons/hicolor/scalable/apps/velmora.svg" || fail "no scalable icon"
echo "install check: clean"
