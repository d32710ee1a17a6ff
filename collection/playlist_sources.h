#pragma once
// Where a play list's entry points, worked out the way players that wrote
// it meant it: relative to the list's folder, as a file:// URL with escapes,
// with backslashes of another system, or as a stream URL kept as it is.

#include <string>
#include <string_view>

namespace velmora {

// The path (or the URL of a stream) an entry names; `folder` is the list's
// own folder, ending in '/'. Empty when the entry names nothing.
std::string Resolve_Source(std::string_view source, const std::string& folder);

// %XX escapes undone; a bad escape is kept as written.
std::string Percent_Decoded(std::string_view text);

// A local path as a file:// URL, escaping what a URL may not hold bare.
std::string File_Url(std::string_view path);

// "a/./b/../c" as "a/c": the dots of a relative entry taken out, so that
// the same file is one path in the Collection however the list reached it.
std::string Lexically_Normal(std::string_view path);

}  // namespace velmora
