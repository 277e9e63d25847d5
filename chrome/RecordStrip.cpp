#include "chrome/RecordStrip.h"

#include <algorithm>
#include <utility>

namespace kv {

RecordStrip::RecordStrip(const CaptionForm& form, void* manager)
    : CaptionStrip(form)
    , m_manager(manager)
    , m_watcher(std::make_unique<QObject>())
{
}

RecordStrip::~RecordStrip() = default;

void RecordStrip::Close()
{
    m_closing = true;
    ClosePopups(); // they may be the host's and outlive the bar
    OnClose();
    m_watcher.reset();
    m_records.Activate(-1);
    std::vector<std::unique_ptr<CaptionRecord>> records;
    records.push_back(m_records.TakeBegun());
    while (m_records.Count() > 0)
        records.push_back(m_records.Remove(0));
    for (std::unique_ptr<CaptionRecord>& record : records)
        LetGo(std::move(record));
}

void RecordStrip::LetGo(std::unique_ptr<CaptionRecord> record)
{
    if (record && record->letGo)
        record->letGo();
}

// --- Adding and removing ---

bool RecordStrip::Begin(std::unique_ptr<CaptionRecord> record)
{
    if (m_closing)
        return false;
    CaptionRecord& begun = *record;
    const Run run(Bar(), begun);
    LetGo(m_records.Begin(std::move(record)));
    if (run.Lives())
        TellAttached(begun);
    return run.Lives();
}

bool RecordStrip::End()
{
    std::unique_ptr<CaptionRecord> record = m_records.TakeBegun();
    if (!record)
        return false;
    if (record->ItemCount() == 0) {
        LetGo(std::move(record));
        return false;
    }
    m_records.Add(std::move(record));
    OnAdded();
    return true;
}

bool RecordStrip::Remove(std::uint32_t id)
{
    const CaptionRecord* record = m_records.Find(id);
    if (!record)
        return false;
    const Run run(Bar(), *record);
    if (record == Active())
        ClosePopups();
    if (!run.Lives())
        return true; // the host removed it meanwhile
    const int index = m_records.IndexOf(*record);
    const bool wasActive = index == m_records.ActiveIndex();
    std::unique_ptr<CaptionRecord> removed = m_records.Remove(index);
    for (const ToolWindow* tool : removed->Tools())
        Leave(tool->handle);
    OnRemoved(index);
    if (wasActive)
        ActivateAt(m_records.ActiveIndex());
    else
        ShowToolWindows();
    if (run.bar)
        Layout();              // the flag may be gone
    LetGo(std::move(removed)); // last: the host may delete the bar
    return true;
}

// --- Activation ---

bool RecordStrip::Activate(std::uint32_t id)
{
    const CaptionRecord* record = m_records.Find(id);
    if (!record)
        return false;
    const Run run(Bar(), *record);
    if (record != Active())
        ClosePopups();
    if (!run.Lives())
        return false;
    ActivateAt(m_records.IndexOf(*record));
    return true;
}

void RecordStrip::ActivateAt(int index)
{
    m_records.Activate(index);
    for (int i = 0; i < ItemCount(); ++i)
        Item(i).state = kItemNormal;
    OnActivated();
    UpdateTitleTip();
    if (index < 0)
        ShowNoApplication();
    const QPointer<CKvCaptionBar> bar(&Bar());
    Remeasure();
    if (bar)
        ShowToolWindows();
}

void RecordStrip::Measure(CaptionRecord& record) const
{
    record.titleRect = ApplicationTitleRect(Band(), TextSize(KvToQString(record.buttonText)).cx);
}

void RecordStrip::Remeasure()
{
    if (CaptionRecord* record = Active(); record && HasButtons()) {
        Measure(*record);
        ShowApplication(*record);
    }
    Layout();
}

int RecordStrip::ItemCount() const
{
    return Active() ? Active()->ItemCount() : 0;
}

CaptionItem& RecordStrip::Item(int index) const
{
    return Active()->ItemAt(index);
}

// --- Labels ---

bool RecordStrip::SetProductLabel(std::uint32_t id, const wchar_t* text)
{
    CaptionRecord* record = m_records.Find(id);
    if (!record)
        return false;
    record->productLabel = CutText(text, kLongestLabel);
    if (record == Active()) {
        UpdateWholeWidth();
        Invalidate(StaticTitle());
    }
    return true;
}

bool RecordStrip::SetDocumentLabel(std::uint32_t id, const wchar_t* text)
{
    CaptionRecord* record = m_records.Find(id);
    if (!record)
        return false;
    record->documentLabel = CutText(text, kLongestLabel);
    if (record == Active()) {
        UpdateTitleTip();
        UpdateWholeWidth();
        Invalidate(StaticTitle());
    }
    return true;
}

// --- Tool windows ---

bool RecordStrip::SetAdvanced(const ToolWindow& first, const ToolWindow& second)
{
    CaptionRecord* record = m_records.UnderConstruction();
    if (!record)
        return false;
    record->advanced[0] = first;
    record->advanced[1] = second;
    const Run run(Bar(), *record);
    const QPointer<QWidget> secondHandle(second.handle); // the first one's host may destroy it
    Adopt(first);
    if (run.Lives() && secondHandle)
        Adopt(second);
    return true;
}

void RecordStrip::Adopt(const ToolWindow& tool, const QRect& place)
{
    HWND const handle = tool.handle;
    if (!handle)
        return;
    if (m_watched.insert(handle).second)
        QObject::connect(handle, &QObject::destroyed, m_watcher.get(), [this, handle] { Forget(handle); });
    const QPointer<QWidget> lives(handle);
    const QPointer<CKvCaptionBar> bar(&Bar());
    if (!place.isNull())
        handle->setGeometry(place);
    const auto isSeen = [&] {
        const std::vector<HWND> seen = Seen();
        return std::find(seen.begin(), seen.end(), handle) != seen.end();
    };
    if (bar && lives && !isSeen())
        handle->hide();
    if (bar && lives && tool.window)
        tool.window->SetToolWndManager(m_manager);
}

void RecordStrip::Forget(HWND handle)
{
    m_watched.erase(handle);
    bool known = false;
    m_records.ForEach([&](CaptionRecord& record) { known = record.Forget(handle) || known; });
    if (known)
        Layout();
}

std::vector<HWND> RecordStrip::Seen() const
{
    return Active() ? Active()->Seen() : std::vector<HWND>();
}

void RecordStrip::ShowToolWindows()
{
    struct Change
    {
        QPointer<QWidget> window;
        bool visible;
    };
    std::vector<Change> changes;
    const std::vector<HWND> seen = Seen();
    for (HWND window : seen) {
        if (window && window->isHidden())
            changes.push_back({window, true});
    }
    const auto hide = [&](QWidget* window) {
        if (window && !window->isHidden() && std::find(seen.begin(), seen.end(), window) == seen.end())
            changes.push_back({window, false});
    };
    m_records.ForEach([&](CaptionRecord& record) {
        for (const ToolWindow* tool : record.Tools())
            hide(tool->handle);
    });
    for (const QPointer<QWidget>& window : m_leaving)
        hide(window);
    // The windows are the host's: any of them may destroy others or the bar, or make others be seen, whose
    // own run then has done everything.
    const unsigned run = ++m_showing;
    const QPointer<CKvCaptionBar> bar(&Bar());
    for (const Change& change : changes) {
        if (change.window)
            change.window->setVisible(change.visible);
        if (!bar || run != m_showing)
            return;
    }
    m_leaving.clear();
}

} // namespace kv
