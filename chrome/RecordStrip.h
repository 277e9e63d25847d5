// A caption strip with its records: how they come and go, which one is active, and their tool windows.
// Whatever calls the host may find records removed or the bar deleted afterwards.
#pragma once

#include "chrome/CaptionRecord.h"
#include "chrome/CaptionStrip.h"

#include <QPointer>

#include <memory>
#include <unordered_set>
#include <vector>

namespace kv {

/// Notices whether the bar and one of its records outlived a call of the host.
struct Run
{
    Run(CKvCaptionBar& owner, const CaptionRecord& of) : bar(&owner), record(&of), life(of.life) {}
    bool Lives() const { return bar && !life.expired(); }

    QPointer<CKvCaptionBar> bar;
    const CaptionRecord* record; ///< while it lives
    std::weak_ptr<const int> life;
};

class RecordStrip : public CaptionStrip
{
public:
    /// @param manager what tool windows are told.
    RecordStrip(const CaptionForm& form, void* manager);
    ~RecordStrip() override;

    /// Lets go of everything that the host gave; from the bar's destructor.
    void Close();

    bool Begin(std::unique_ptr<CaptionRecord> record);
    bool SetAdvanced(const ToolWindow& first, const ToolWindow& second);
    bool End();
    bool Activate(std::uint32_t id);
    bool Remove(std::uint32_t id);
    bool SetProductLabel(std::uint32_t id, const wchar_t* text);
    bool SetDocumentLabel(std::uint32_t id, const wchar_t* text);

    CaptionRecord* Active() const override { return m_records.Active(); }
    int ItemCount() const override;
    CaptionItem& Item(int index) const override;
    void Remeasure() override;

protected:
    // --- What the bars do differently.
    /// Tells a record's smart menu that it is held.
    virtual void TellAttached(CaptionRecord& record) = 0;
    /// The active record is about to give way: closes what is open for it.
    virtual void ClosePopups() {}
    virtual void OnAdded() {}
    virtual void OnRemoved(int /*index*/) {}
    /// The active record, if there is one, was activated.
    virtual void OnActivated() {}
    /// The bar goes.
    virtual void OnClose() {}

    // --- What they share.
    CaptionRecords& Records() { return m_records; }
    const CaptionRecords& Records() const { return m_records; }
    /// @param index -1 leaves none active.
    void ActivateAt(int index);
    void Measure(CaptionRecord& record) const;
    /// Places a tool window, hides it unless it is to be seen, and tells it its manager, as the last thing.
    /// @param place null leaves it where it is.
    void Adopt(const ToolWindow& tool, const QRect& place = {});
    /// No record knows the window any more: the next `ShowToolWindows` hides it.
    void Leave(HWND handle) { m_leaving.emplace_back(handle); }
    void ShowToolWindows(); ///< those of the active record, and hides all the others

private:
    static void LetGo(std::unique_ptr<CaptionRecord> record);
    void Forget(HWND handle);
    std::vector<HWND> Seen() const;

    void* m_manager;
    CaptionRecords m_records;
    std::unique_ptr<QObject> m_watcher; ///< hears of tool windows that are destroyed
    std::unordered_set<HWND> m_watched;
    std::vector<QPointer<QWidget>> m_leaving;
    unsigned m_showing = 0; ///< the run of ShowToolWindows
    bool m_closing = false;
};

} // namespace kv
