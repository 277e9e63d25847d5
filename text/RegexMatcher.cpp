#include "text/RegexMatcher.h"

#include "KvGuiRes.h"
#include "text/ListTexts.h"

namespace kv {

namespace {

constexpr std::chrono::milliseconds kSlowMatch{1};
constexpr std::chrono::seconds kSlowMatches{1};

} // namespace

RegexMatcher::RegexMatcher(const std::wstring& pattern, bool matchCase)
    : m_regex(KvToQString(pattern), QRegularExpression::UseUnicodePropertiesOption |
                                        QRegularExpression::MultilineOption |
                                        (matchCase ? QRegularExpression::NoPatternOption
                                                   : QRegularExpression::CaseInsensitiveOption))
{
    if (!m_regex.isValid())
        m_error = KvFromQString(m_regex.errorString());
}

qsizetype RegexMatcher::ToQt(std::size_t place) const
{
    if (m_text.size() == static_cast<std::size_t>(m_copy.size()))
        return static_cast<qsizetype>(place);
    return KvToQString(std::wstring_view(m_text).substr(0, place)).size();
}

std::size_t RegexMatcher::FromQt(qsizetype place) const
{
    if (m_text.size() == static_cast<std::size_t>(m_copy.size()))
        return static_cast<std::size_t>(place);
    return KvFromQString(QStringView(m_copy).left(place)).size();
}

QRegularExpressionMatch RegexMatcher::MatchAt(std::wstring_view text, std::size_t from)
{
    if (m_text != text) {
        m_text = text;
        m_copy = KvToQString(text);
    }
    using namespace std::chrono;
    const auto start = steady_clock::now();
    QRegularExpressionMatch match = m_regex.match(m_copy, ToQt(from));
    if (const nanoseconds time = steady_clock::now() - start; time >= kSlowMatch)
        m_slow += time;
    const bool isCostly = !match.isValid() || m_slow > kSlowMatches; // invalid: beyond the limit of steps
    if (isCostly && m_error.empty())
        m_error = KvGuiRes::LoadStringW(kCostlyPattern);
    return match;
}

std::optional<TextSpan> RegexMatcher::Find(std::wstring_view text, std::size_t from)
{
    if (HasFailed())
        return std::nullopt;
    const QRegularExpressionMatch match = MatchAt(text, from);
    if (!match.hasMatch())
        return std::nullopt;
    const std::size_t start = FromQt(match.capturedStart());
    return TextSpan{start, FromQt(match.capturedEnd()) - start};
}

std::wstring RegexMatcher::Replacement(std::wstring_view text, TextSpan match, std::wstring_view replace)
{
    const QRegularExpressionMatch groups = MatchAt(text, match.start);
    std::wstring result;
    for (std::size_t i = 0; i < replace.size(); ++i) {
        const wchar_t next = replace[i] == L'\\' && i + 1 < replace.size() ? replace[i + 1] : L'\0';
        if (next >= L'0' && next <= L'9')
            result += KvFromQString(groups.capturedView(next - L'0'));
        else if (next == L'n' || next == L'\\')
            result += next == L'n' ? L'\n' : L'\\';
        else
            result += replace[i];
        i += (next >= L'0' && next <= L'9') || next == L'n' || next == L'\\' ? 1 : 0;
    }
    return result;
}

} // namespace kv
