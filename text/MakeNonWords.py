#!/usr/bin/env python3
"""Writes NonWordTable.h from the interpreter's Unicode character database.

A word is made of letters, marks, numbers and connecting punctuation. What is not assigned counts as either,
so that the ranges in between join.
"""

import pathlib
import sys
import unicodedata


def is_non_word(code_point):
    """None where the database says nothing."""
    category = unicodedata.category(chr(code_point))
    if category in ("Cn", "Co", "Cs"):
        return None
    return category[0] not in "LMN" and category != "Pc"


def non_word_ranges():
    """Ranges as [first, last]."""
    ranges, current = [], None
    for code_point in range(sys.maxunicode + 1):
        non_word = is_non_word(code_point)
        if non_word and current:
            current[1] = code_point
        elif non_word:
            current = [code_point, code_point]
            ranges.append(current)
        elif non_word is False:
            current = None
    return ranges


def main():
    texts = [f"{{0x{first:X}, 0x{last:X}}}" for first, last in non_word_ranges()]
    rows = "\n".join("    " + ", ".join(texts[at:at + 6]) + "," for at in range(0, len(texts), 6))
    out = f"""// Characters that part words. Made by MakeNonWords.py from version {unicodedata.unidata_version}; do not edit.
// Data of the Unicode Character Database, (c) Unicode, Inc.
// Terms of use: https://www.unicode.org/terms_of_use.html
#pragma once

#include <cstdint>

namespace kv {{

struct CodePointRange
{{
    std::uint32_t first;
    std::uint32_t last;
}};

// clang-format off
inline constexpr CodePointRange kNonWords[{len(texts)}] = {{
{rows}
}};
// clang-format on

}} // namespace kv
"""
    (pathlib.Path(__file__).parent / "NonWordTable.h").write_text(out, encoding="utf-8")


if __name__ == "__main__":
    main()
