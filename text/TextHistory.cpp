#include "text/TextHistory.h"

namespace kv {

void TextHistory::Use(std::wstring_view text)
{
    StopWalk();
    if (text.empty())
        return;
    std::wstring kept(text);
    std::erase(m_texts, kept);
    m_texts.insert(m_texts.begin(), std::move(kept));
    if (m_texts.size() > kMost)
        m_texts.pop_back();
}

std::wstring TextHistory::Older(std::wstring_view current)
{
    if (m_place == kAtDraft)
        m_draft = current;
    std::size_t next = m_place + 1; // 0 from the draft
    if (m_place == kAtDraft && next < m_texts.size() && m_texts[next] == current)
        ++next; // a step that shows nothing new is none
    if (next >= m_texts.size())
        return std::wstring(current);
    m_place = next;
    return m_texts[m_place];
}

std::wstring TextHistory::Newer(std::wstring_view current)
{
    if (m_place == kAtDraft)
        return std::wstring(current);
    --m_place; // the draft from 0
    if (m_place == 0 && m_texts[m_place] == m_draft)
        m_place = kAtDraft;
    return m_place == kAtDraft ? m_draft : m_texts[m_place];
}

} // namespace kv
