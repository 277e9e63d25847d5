// What a title bar's and a menu bar's record have in common, and the list that keeps such records. Pure.
#pragma once

#include "KvTypes.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
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
    bool opensPopup = false; ///< a menu's entry with a sub-menu
    bool open = false;       ///< its popup is
};

/// A tool window and its handle; either may be null.
struct ToolWindow
{
    IKvGuiWnd* window = nullptr;
    HWND handle = nullptr;
};

/// What one application put into a bar.
struct CaptionRecord
{
    CaptionRecord() = default;
    virtual ~CaptionRecord();
    CaptionRecord(const CaptionRecord&) = delete;
    CaptionRecord& operator=(const CaptionRecord&) = delete;

    virtual int ItemCount() const = 0;
    virtual CaptionItem& ItemAt(int index) = 0;
    /// Every place for a tool window.
    virtual std::vector<ToolWindow*> Tools();
    /// The windows that are seen while the record is active; some may be null.
    virtual std::vector<HWND> Seen() const;
    /// Forgets a tool window that was destroyed. @return true when it was known.
    bool Forget(HWND handle);

    /// Its smart menu, which may be null, is held from now on: `letGo` will tell it.
    template <typename SmartMenu>
    void Hold(SmartMenu* menu)
    {
        if (!menu)
            return;
        letGo = [menu] {
            menu->OnDetach();
            menu->Release();
        };
    }

    std::wstring imageKey;
    std::wstring buttonText;
    std::wstring productLabel;
    std::wstring documentLabel;
    std::uint32_t id = 0;
    CRect titleRect; ///< the application button's text box
    ToolWindow advanced[2];
    std::function<void()> letGo; ///< tells its smart menu that it is held no longer; empty without one
    /// Expires with the record, for whoever called the host meanwhile.
    std::shared_ptr<const int> life = std::make_shared<const int>(0);
};

/// The records of one bar in registration order, at most one of them active, at most one under construction.
class CaptionRecords
{
public:
    int Count() const { return static_cast<int>(m_records.size()); }
    CaptionRecord& At(int index) const { return *m_records[static_cast<std::size_t>(index)]; }
    /// The first record with that identifier; null when there is none.
    CaptionRecord* Find(std::uint32_t id) const;
    /// @return -1 for a record that is not in the list.
    int IndexOf(const CaptionRecord& record) const;

    int ActiveIndex() const { return m_active; }
    CaptionRecord* Active() const { return m_active < 0 ? nullptr : &At(m_active); }
    void Activate(int index) { m_active = index; }

    CaptionRecord* UnderConstruction() const { return m_begun.get(); }
    /// @return the record that was begun before and never ended; null without one.
    std::unique_ptr<CaptionRecord> Begin(std::unique_ptr<CaptionRecord> record);
    std::unique_ptr<CaptionRecord> TakeBegun();
    void Add(std::unique_ptr<CaptionRecord> record) { m_records.push_back(std::move(record)); }

    /// Takes a record out. When it stood at or before the active one, `ActiveIndex` is that of the record
    /// before the previously active position, counted after the removal (0 at least, -1 when none is left);
    /// the caller activates it.
    std::unique_ptr<CaptionRecord> Remove(int index);

    /// Those of the list and the one under construction.
    template <typename Visit>
    void ForEach(Visit visit) const
    {
        for (const std::unique_ptr<CaptionRecord>& record : m_records)
            visit(*record);
        if (m_begun)
            visit(*m_begun);
    }

private:
    std::vector<std::unique_ptr<CaptionRecord>> m_records; // they stay where they are while callbacks run
    std::unique_ptr<CaptionRecord> m_begun;
    int m_active = -1;
};

} // namespace kv
