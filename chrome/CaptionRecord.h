// What a title bar's and a menu bar's record have in common, and the list that keeps such records.
#pragma once

#include "KvTypes.h"

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class IKvGuiWnd;

namespace kv {

inline constexpr std::size_t kLongestName = 63;   ///< characters of names and button texts
inline constexpr std::size_t kLongestLabel = 259; ///< characters of image keys and labels

/// The text, cut to what a name or label holds; null is empty.
std::wstring CutText(const wchar_t* text, std::size_t longest);

enum CaptionItemState : std::uint32_t
{
    kItemNormal = 0,
    kItemHovered = 1,
    kItemPressed = 3,
};

/// One text of the row: a tab, or a menu's top-level entry.
struct CaptionItem
{
    std::wstring text; ///< as it was given, a menu's "&" marker included
    CRect rect;        ///< its text box, client coordinates
    std::uint32_t state = kItemNormal;
    bool selected = false;
    bool disabled = false;
};

/// A tool window and its handle; either may be null.
struct ToolWindow
{
    IKvGuiWnd* window = nullptr;
    HWND handle = nullptr;
};

struct CaptionRecord
{
    std::wstring imageKey;
    std::wstring buttonText;
    std::wstring productLabel;
    std::wstring documentLabel;
    std::uint32_t id = 0;
    CRect titleRect; ///< the application button's text box
    ToolWindow advanced[2];
};

/// The records of one bar in registration order, at most one of them active, at most one under construction.
template <typename Record>
class CaptionRecords
{
public:
    int Count() const { return static_cast<int>(m_records.size()); }
    Record& At(int index) { return *m_records[static_cast<std::size_t>(index)]; }
    const Record& At(int index) const { return *m_records[static_cast<std::size_t>(index)]; }

    /// The first record with that identifier; -1 when there is none.
    int Find(std::uint32_t id) const
    {
        for (int i = 0; i < Count(); ++i) {
            if (At(i).id == id)
                return i;
        }
        return -1;
    }

    int ActiveIndex() const { return m_active; }
    Record* Active() const
    {
        return m_active < 0 ? nullptr : m_records[static_cast<std::size_t>(m_active)].get();
    }
    void Activate(int index) { m_active = index; }

    Record* UnderConstruction() const { return m_begun.get(); }
    /// @return the record that was begun before and never ended; null without one.
    std::unique_ptr<Record> Begin(std::unique_ptr<Record> record)
    {
        return std::exchange(m_begun, std::move(record));
    }
    std::unique_ptr<Record> TakeBegun() { return std::exchange(m_begun, nullptr); }
    Record& Add(std::unique_ptr<Record> record) { return *m_records.emplace_back(std::move(record)); }

    /// Takes a record out. When it stood at or before the active one, `ActiveIndex` is that of the record
    /// before the previously active position, counted after the removal (0 at least, -1 when none is left);
    /// the caller activates it.
    std::unique_ptr<Record> Remove(int index)
    {
        std::unique_ptr<Record> removed = std::move(m_records[static_cast<std::size_t>(index)]);
        m_records.erase(m_records.begin() + index);
        if (m_active >= 0 && index <= m_active)
            m_active = Count() == 0 ? -1 : (m_active > 0 ? m_active - 1 : 0);
        return removed;
    }

private:
    std::vector<std::unique_ptr<Record>> m_records; // records stay where they are while callbacks run
    std::unique_ptr<Record> m_begun;
    int m_active = -1;
};

} // namespace kv
