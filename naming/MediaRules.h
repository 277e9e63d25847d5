// Naming rules made ready for many names.
#pragma once

#include "naming/NamePattern.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kv {

/// A pattern of a rule, prepared to derive specifications without allocating.
class MediaPattern
{
public:
    explicit MediaPattern(std::wstring_view text);

    const NamePattern& Pattern() const { return m_pattern; }
    /// As DeriveSpecification. @return false when there is no specification.
    bool Derive(const NameValues& values, std::wstring& specification) const;
    /// The number of literal characters: of two patterns that fit, the one with more says more about a name.
    std::size_t LiteralLength() const { return m_literalLength; }

private:
    NamePattern m_pattern;
    std::size_t m_literalLength = 0;
    bool m_literalsHoldNoLabelStart = true;
};

/// A rule whose main pattern can fit a name.
struct MediaRule
{
    std::uint32_t index; ///< its place in the collection
    unsigned int ruleClass;
    MediaPattern main;
    std::vector<MediaPattern> additions; ///< those that can name a sibling, in order
};

/// The rules of a collection in order. Left out are additions that are empty or too long to be handed out,
/// and rules whose main pattern is so or that have no addition left.
std::vector<MediaRule> ReadMediaRules(IKvFileNamingRuleCollection& collection);

} // namespace kv
