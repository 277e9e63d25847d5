// A cue's text as WebVTT writes it: character references in it, and tags that stay as they are.
#pragma once

#include <string>
#include <string_view>

namespace titler {

/// Resolves character references: by name &amp; &lt; &gt; &nbsp; &lrm; &rlm; &quot; &apos;, by number all
/// that stand for a character from U+0020 on. What is none stays as it is.
std::string FromVttText(std::string text);

/// The inverse: "&", an arrow's ">" and each "<" that begins no tag become references.
/// @param line without line ends.
void AppendVttText(std::string& out, std::string_view line);

} // namespace titler
