#include "chrome/CaptionRecord.h"

#include <utility>

namespace kv {

std::wstring CutText(const wchar_t* text, std::size_t longest)
{
    if (!text)
        return {};
    std::size_t length = 0;
    while (length < longest && text[length] != 0)
        ++length;
    return std::wstring(text, length);
}

CaptionRecord::~CaptionRecord() = default;

std::vector<ToolWindow*> CaptionRecord::Tools()
{
    return {&advanced[0], &advanced[1]};
}

std::vector<HWND> CaptionRecord::Seen() const
{
    return {advanced[0].handle, advanced[1].handle};
}

bool CaptionRecord::Forget(HWND handle)
{
    bool known = false;
    for (ToolWindow* tool : Tools()) {
        if (tool->handle != handle)
            continue;
        *tool = {};
        known = true;
    }
    return known;
}

CaptionRecord* CaptionRecords::Find(std::uint32_t id) const
{
    for (const std::unique_ptr<CaptionRecord>& record : m_records) {
        if (record->id == id)
            return record.get();
    }
    return nullptr;
}

int CaptionRecords::IndexOf(const CaptionRecord& record) const
{
    for (int i = 0; i < Count(); ++i) {
        if (&At(i) == &record)
            return i;
    }
    return -1;
}

std::unique_ptr<CaptionRecord> CaptionRecords::Begin(std::unique_ptr<CaptionRecord> record)
{
    return std::exchange(m_begun, std::move(record));
}

std::unique_ptr<CaptionRecord> CaptionRecords::TakeBegun()
{
    return std::exchange(m_begun, nullptr);
}

std::unique_ptr<CaptionRecord> CaptionRecords::Remove(int index)
{
    std::unique_ptr<CaptionRecord> removed = std::move(m_records[static_cast<std::size_t>(index)]);
    m_records.erase(m_records.begin() + index);
    if (m_active >= 0 && index <= m_active)
        m_active = Count() == 0 ? -1 : (m_active > 0 ? m_active - 1 : 0);
    return removed;
}

} // namespace kv
