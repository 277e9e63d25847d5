#!/usr/bin/env python3
"""Writes CaseFoldingTable.h from the Unicode character database (Debian: package unicode-data).

Usage: MakeCaseFolding.py [/usr/share/unicode/CaseFolding.txt]

The table has two stages: the upper bits of a code point choose a block, the lower bits a place in it, and
equal blocks are kept once. It holds 16-bit differences, since no simple folding leaves its plane.
"""

import pathlib
import sys


def read_folding(path):
    """The rows of status C and S as {code point: folded code point}, and the file's version line."""
    folding = {}
    lines = path.read_text(encoding="utf-8").splitlines()
    for line in lines:
        fields = [field.strip() for field in line.split("#")[0].split(";")]
        if len(fields) >= 3 and fields[1] in ("C", "S"):
            folding[int(fields[0], 16)] = int(fields[2], 16)
    return folding, lines[0].lstrip("# ").removesuffix(".txt")


def split(folding, shift):
    """Stage one (block number by upper bits) and the distinct blocks of differences."""
    size = 1 << shift
    blocks, numbers = [], []
    for start in range(0, max(folding) + 1, size):
        block = [(folding.get(c, c) - c) & 0xFFFF for c in range(start, start + size)]
        if block not in blocks:
            blocks.append(block)
        numbers.append(blocks.index(block))
    return numbers, blocks


def size_of(numbers, blocks):
    """Bytes of the table."""
    return len(numbers) + 2 * sum(map(len, blocks))


def rows(values, width):
    """The numbers as lines of a C++ initialiser."""
    text = [str(value) for value in values]
    lines = []
    for at in range(0, len(text), width):
        lines.append("    " + ", ".join(text[at:at + width]) + ",")
    return "\n".join(lines)


def main():
    path = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "/usr/share/unicode/CaseFolding.txt")
    folding, version = read_folding(path)
    for source, target in folding.items():
        assert source >> 16 == target >> 16, "a folding leaves its plane"
    shift = min(range(4, 10), key=lambda s: size_of(*split(folding, s)))
    numbers, blocks = split(folding, shift)
    assert len(blocks) < 256
    flat = [value for block in blocks for value in block]
    out = f"""// Simple case folding by code point. Made by MakeCaseFolding.py from {version}; do not edit.
// Data of the Unicode Character Database, (c) Unicode, Inc.
// Terms of use: https://www.unicode.org/terms_of_use.html
#pragma once

#include <cstdint>

namespace kv {{

// clang-format off
inline constexpr unsigned kCaseFoldingShift = {shift};

inline constexpr std::uint8_t kCaseFoldingBlock[{len(numbers)}] = {{
{rows(numbers, 24)}
}};

inline constexpr std::uint16_t kCaseFoldingDifference[{len(flat)}] = {{
{rows(flat, 15)}
}};
// clang-format on

}} // namespace kv
"""
    (pathlib.Path(__file__).parent / "CaseFoldingTable.h").write_text(out, encoding="utf-8")


if __name__ == "__main__":
    main()
