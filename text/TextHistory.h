// The texts that an entry field had before: newest first, each once.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

class TextHistory
{
public:
    static constexpr std::size_t kMost = 10;

    /// An action used the text: it is the newest now, and the walk begins anew. An empty one is not kept.
    void Use(std::wstring_view text);
    /// The user typed: the walk begins anew from what stands in the field then.
    void StopWalk() { m_place = kAtDraft; }
    /// One step to an older text. @param current what stands in the field; it comes back by `Newer`.
    /// @return what is to stand there; `current` itself when there is no older one.
    std::wstring Older(std::wstring_view current);
    /// One step back towards what was typed, likewise.
    std::wstring Newer(std::wstring_view current);

    /// Newest first.
    const std::vector<std::wstring>& Texts() const { return m_texts; }

private:
    static constexpr std::size_t kAtDraft = static_cast<std::size_t>(-1);

    std::vector<std::wstring> m_texts;
    std::size_t m_place = kAtDraft; ///< which text stands in the field
    std::wstring m_draft;           ///< what stood there when the walk began
};

} // namespace kv
