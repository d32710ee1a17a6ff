#!/usr/bin/env bash
# Fails when a model file includes a Qt, mpv, TagLib or FFmpeg header.
set -u
root=${1:-.}
dirs=(base core app collection playback ratings catalogue intake fileops metadata timed desktop)
hits=$(cd "$root" && grep -rnE '^\s*#\s*include\s*[<"](Q[A-Za-z]|qt|mpv/|taglib/|tag\.h|fileref\.h|libav)' \
  --include='*.h' --include='*.cpp' "${dirs[@]}" 2>/dev/null | grep -v '^desktop/qt/')
if [ -n "$hits" ]; then
  echo "model files include platform headers:"
  echo "$hits"
  exit 1
fi
echo "model includes: clean"
