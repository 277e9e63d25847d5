#include "naming/MediaRules.h"

#include "core/RefCounted.h"

#include <utility>

namespace kv {

MediaPattern::MediaPattern(std::wstring_view text) : m_pattern(text)
{
    for (const PatternToken& token : m_pattern.Tokens()) {
        if (token.kind != TokenKind::Literal)
            continue;
        m_literalLength += token.length;
        if (m_pattern.TokenText(token).find(L'<') != std::wstring_view::npos)
            m_literalsHoldNoLabelStart = false;
    }
}

bool MediaPattern::Derive(const NameValues& values, std::wstring& specification) const
{
    const std::optional<std::wstring_view> file = values.First(TokenKind::File);
    // Where a "<" could make a label of the text around a value, only the textual substitution knows.
    if (!m_literalsHoldNoLabelStart || (file && file->find(L'<') != std::wstring_view::npos)) {
        std::optional<std::wstring> derived =
            DeriveSpecification(m_pattern.Text(), {values.data(), values.size()});
        if (derived)
            specification = std::move(*derived);
        return derived.has_value();
    }
    specification.clear();
    for (const PatternToken& token : m_pattern.Tokens()) {
        if (token.kind == TokenKind::Literal)
            specification += m_pattern.TokenText(token);
        else if (token.kind == TokenKind::File && file)
            specification += *file;
        else
            specification += WildcardPiece(token.kind);
    }
    return !specification.empty() && specification.size() < kKvNamingTextSize;
}

std::vector<MediaRule> ReadMediaRules(IKvFileNamingRuleCollection& collection)
{
    std::vector<MediaRule> rules;
    wchar_t text[kKvNamingTextSize] = {};
    const unsigned int count = collection.GetRuleCount();
    for (unsigned int i = 0; i < count; ++i) {
        IKvFileNamingRule* taken = nullptr;
        if (!collection.GetRule(i, &taken) || !taken)
            continue;
        const Reference<IKvFileNamingRule> rule(taken);
        if (!rule->GetMainRule(text) || !*text)
            continue;
        MediaRule read = {i, rule->GetClass(), MediaPattern(text), {}};
        const unsigned int additions = rule->GetAdditionRuleCount();
        for (unsigned int j = 0; j < additions; ++j) {
            if (rule->GetAdditionRule(j, text) && *text)
                read.additions.emplace_back(text);
        }
        if (!read.additions.empty())
            rules.push_back(std::move(read));
    }
    return rules;
}

} // namespace kv
