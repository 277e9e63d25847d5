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

void RegexMatcher::Begin(std::wstring_view text)
{
    m_text = text;
    m_copy = KvToQString(text);
    m_place = {};
    m_match = {};
    if (m_copy.isValidUtf16())
        return;
    // Half a character would end the search; of the same length its stand-in moves nothing.
    for (qsizetype i = 0; i < m_copy.size(); ++i) {
        if (i + 1 < m_copy.size() && m_copy[i].isHighSurrogate() && m_copy[i + 1].isLowSurrogate())
            ++i;
        else if (m_copy[i].isSurrogate())
            m_copy[i] = QChar::ReplacementCharacter;
    }
}

template <typename IsBefore>
RegexMatcher::Place RegexMatcher::GoTo(IsBefore isBefore)
{
    const auto units = [this](std::size_t at) {
        const auto code = static_cast<char32_t>(m_text[at]);
        return code > 0xFFFF && code <= 0x10FFFF ? 2 : 1;
    };
    while (m_place.own > 0 && !isBefore(m_place)) {
        --m_place.own;
        m_place.copy -= units(m_place.own);
    }
    while (m_place.own < m_text.size() && isBefore(m_place)) {
        m_place.copy += units(m_place.own);
        ++m_place.own;
    }
    return m_place;
}

qsizetype RegexMatcher::ToCopy(std::size_t place)
{
    if (m_text.size() == static_cast<std::size_t>(m_copy.size()))
        return static_cast<qsizetype>(place);
    return GoTo([place](const Place& at) { return at.own < place; }).copy;
}

std::size_t RegexMatcher::FromCopy(qsizetype place)
{
    if (m_text.size() == static_cast<std::size_t>(m_copy.size()))
        return static_cast<std::size_t>(place);
    return GoTo([place](const Place& at) { return at.copy < place; }).own;
}

std::optional<TextSpan> RegexMatcher::Find(std::size_t from)
{
    if (HasFailed())
        return std::nullopt;
    using namespace std::chrono;
    const auto start = steady_clock::now();
    // The toolkit would look through the whole text for each match.
    m_match = m_regex.match(m_copy, ToCopy(from), QRegularExpression::NormalMatch,
                            QRegularExpression::DontCheckSubjectStringMatchOption);
    if (const nanoseconds time = steady_clock::now() - start; time >= kSlowMatch)
        m_slow += time;
    if (!m_match.isValid() || m_slow > kSlowMatches) // invalid: beyond the limit of steps
        m_error = KvGuiRes::LoadStringW(kCostlyPattern);
    if (HasFailed() || !m_match.hasMatch())
        return std::nullopt;
    const std::size_t begin = FromCopy(m_match.capturedStart());
    return TextSpan{begin, FromCopy(m_match.capturedEnd()) - begin};
}

std::wstring RegexMatcher::Replacement(std::wstring_view replace)
{
    std::wstring result;
    for (std::size_t i = 0; i < replace.size(); ++i) {
        const wchar_t next = replace[i] == L'\\' && i + 1 < replace.size() ? replace[i + 1] : L'\0';
        if (next >= L'0' && next <= L'9') {
            const int group = next - L'0';
            if (m_match.capturedStart(group) >= 0) {
                const std::size_t begin = FromCopy(m_match.capturedStart(group));
                result += m_text.substr(begin, FromCopy(m_match.capturedEnd(group)) - begin);
            }
        } else if (next == L'n' || next == L'\\') {
            result += next == L'n' ? L'\n' : L'\\';
        } else {
            result += replace[i];
        }
        i += (next >= L'0' && next <= L'9') || next == L'n' || next == L'\\' ? 1 : 0;
    }
    return result;
}

} // namespace kv
