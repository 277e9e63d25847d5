#include "text/TextListImpl.h"

#include "platform/KvReportListImpl.h"
#include "platform/SkinColours.h"
#include "text/TextLines.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kFewKeys = 8;

} // namespace

void CKvTextListBase::Impl::Theme::Load()
{
    const auto set = [this](kv::RowColour which, const QColor& colour) {
        colours[static_cast<std::size_t>(which)] = colour.rgba();
    };
    set(kv::RowColour::Back, kv::SkinColour(L"keReportListBKColor", 0xFF1F1F22u));
    set(kv::RowColour::SelectedBack, kv::SkinColour(L"keReportListSelectedBKColor", 0xFF4A5568u));
    set(kv::RowColour::Text, kv::TextColour());
    set(kv::RowColour::SelectedText, kv::SkinColour(L"keReportListSelectedTextColor", 0xFFFFFFFFu));
    set(kv::RowColour::DisabledText, kv::DisabledTextColour());
    drop = kv::FocusColour();
}

CKvTextListBase::Impl::Impl(CKvTextListBase& control) : list(control), ownStack(new QUndoStack)
{
    theme.Load();
}

CKvTextListBase::Impl::~Impl()
{
    if (running > 0)
        ownStack->deleteLater(); // it is on the way out of the step that the host answered so
    else
        delete ownStack;
}

std::vector<int> CKvTextListBase::Impl::LinesOf(std::span<const Key> wanted) const
{
    std::vector<int> lines(wanted.size(), -1);
    if (wanted.size() <= kFewKeys) {
        std::transform(wanted.begin(), wanted.end(), lines.begin(), [this](Key key) { return LineOf(key); });
        return lines;
    }
    // One pass over the rows; mostly they stand in the order of the keys.
    const int count = list.GetItemCount();
    std::size_t next = 0;
    for (int line = 0; line < count && next < wanted.size(); ++line) {
        for (const Key key = KeyAt(line); next < wanted.size() && wanted[next] == key; ++next)
            lines[next] = line;
    }
    if (next == wanted.size())
        return lines;
    std::unordered_map<Key, int> found;
    for (const Key key : wanted.subspan(next))
        found.emplace(key, -1);
    for (int line = 0; line < count; ++line) {
        const auto place = found.find(KeyAt(line));
        if (place != found.end())
            place->second = line;
    }
    for (; next < wanted.size(); ++next)
        lines[next] = found[wanted[next]];
    return lines;
}

bool CKvTextListBase::Impl::FollowsFont(int line) const
{
    return list.CKvReportListCtrl::m_impl->rows.Row(line).followsFont;
}

CKvTextListBase::Impl::Row CKvTextListBase::Impl::Snapshot(int line) const
{
    Row row;
    row.key = KeyAt(line);
    for (int column = 0; column < list.GetColumnCount(); ++column)
        row.texts.push_back(list.GetItemText(line, column));
    row.data = list.GetItemData(line);
    row.height = FollowsFont(line) ? 0 : list.GetItemHeight(line); // the font's may be another then
    if (const kv::RowColours* own = ColoursOf(line))
        row.colours = *own;
    return row;
}

// Where these lines, ascending, stand among those that stay.
std::vector<CKvTextListBase::Impl::Place> CKvTextListBase::Impl::PlacesOf(const CArray<int, int>& lines) const
{
    std::vector<Place> places(lines.size());
    Key before = 0;
    for (std::size_t i = lines.size(); i-- > 0;) {
        const int next = lines[i] + 1;
        if (i + 1 == lines.size() || lines[i + 1] != next)
            before = next < list.GetItemCount() ? KeyAt(next) : 0;
        places[i] = {before, lines[i] - static_cast<int>(i)};
    }
    return places;
}

void CKvTextListBase::Impl::Remove(const CArray<int, int>& lines)
{
    std::vector<std::uint64_t> numbers;
    numbers.reserve(lines.size());
    for (const int line : lines)
        numbers.push_back(list.GetRowId(line));
    list.RemoveRows(lines);
    for (const std::uint64_t number : numbers) {
        colours.erase(keys.KeyOf(number));
        keys.Forget(number);
    }
}

void CKvTextListBase::Impl::PutIn(const CArray<int, int>& lines, std::span<Row> rows)
{
    std::vector<CStringArray> texts;
    texts.reserve(rows.size());
    for (Row& row : rows) {
        row.texts.resize(static_cast<std::size_t>(list.GetColumnCount()));
        texts.push_back(std::move(row.texts));
    }
    list.CKvReportListCtrl::InsertRows(lines, texts);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        Row& row = rows[i];
        const int line = lines[i];
        const std::uint64_t number = list.GetRowId(line);
        if (row.key == 0)
            row.key = number;
        else
            keys.Bind(number, row.key);
        if (!row.colours.IsEmpty())
            colours[row.key] = row.colours;
        list.SetItemData(line, row.data);
        if (row.height > 0 && (row.height != list.GetItemHeight(line) || FollowsFont(line)))
            list.SetItemHeight(line, row.height);
        list._UpdateRowTexts(line);
    }
}

const kv::RowColours* CKvTextListBase::Impl::ColoursOf(int line) const
{
    if (colours.empty())
        return nullptr;
    const auto own = colours.find(KeyAt(line));
    return own == colours.end() ? nullptr : &own->second;
}

std::optional<DWORD> CKvTextListBase::Impl::OwnColour(int line, kv::RowColour which) const
{
    const kv::RowColours* own = ColoursOf(line);
    return own ? own->Get(which) : std::nullopt;
}

DWORD CKvTextListBase::Impl::ColourOf(int line, kv::RowColour which) const
{
    return OwnColour(line, which).value_or(theme.colours[static_cast<std::size_t>(which)]);
}

void CKvTextListBase::Impl::SetColours(int line,
                                       std::initializer_list<std::pair<kv::RowColour, const DWORD*>> changes)
{
    if (list.GetRowId(line) == 0)
        return;
    bool hasChanged = false;
    for (const auto& [which, colour] : changes) {
        if (!colour || OwnColour(line, which) == *colour)
            continue;
        colours[KeyAt(line)].Set(which, *colour);
        hasChanged = true;
    }
    if (!hasChanged)
        return;
    list.UpdateLine(line);
    list.CKvReportListCtrl::m_impl->TellChanged(kKvReportTextChanged, {&line, 1});
}

std::vector<CKvTextListBase::Impl::Key> CKvTextListBase::Impl::SelectedKeys() const
{
    CArray<int, int> lines;
    list.GetSelItems(lines);
    std::vector<Key> selected;
    selected.reserve(lines.size());
    for (const int line : lines)
        selected.push_back(KeyAt(line));
    return selected;
}

CKvTextListBase::Impl::View CKvTextListBase::Impl::Remember() const
{
    View view;
    view.selected = SelectedKeys();
    const int current = list.GetCurrentItem();
    view.current = current < 0 ? 0 : KeyAt(current);
    view.scroll = list.GetScrollOffset();
    return view;
}

void CKvTextListBase::Impl::Restore(const View& view)
{
    std::vector<int> lines = LinesOf(view.selected);
    std::erase(lines, -1);
    SelectLines(lines);
    list.SetCurrentItem(LineOf(view.current));
    list.SetScrollOffset(view.scroll);
}

// Run by run: a step may have touched very many rows.
void CKvTextListBase::Impl::SelectLines(const std::vector<int>& lines)
{
    list.SetSelItem(-1);
    for (std::size_t begin = 0; begin < lines.size();) {
        std::size_t end = begin + 1;
        while (end < lines.size() && lines[end] == lines[end - 1] + 1)
            ++end;
        list.SelectRange(lines[begin], lines[end - 1], 1);
        begin = end;
    }
    if (!lines.empty())
        list.SetCurrentItem(lines.front());
}

void CKvTextListBase::Impl::Push(std::unique_ptr<QUndoCommand> step)
{
    const QPointer<CKvTextListBase> self(&list);
    isPushing = true;
    ++running;
    if (recording)
        step->redo(); // a part of what the host makes one step of
    else
        Stack().push(step.release());
    if (!self)
        return;
    --running;
    isPushing = false;
    Tell(std::exchange(pending, {}));
}

// The last thing that a step does: the host may delete the list.
void CKvTextListBase::Impl::Tell(const Notice& notice)
{
    if (isPushing) {
        pending = notice; // told once the step stands on the stack
        return;
    }
    const QPointer<CKvTextListBase> self(&list);
    const int line = LineOf(notice.key);
    if (notice.kind == Notice::Kind::Rows)
        Q_EMIT list.RowsEdited();
    else if (notice.kind == Notice::Kind::Cell && line >= 0)
        list._TellCellEdited(line, notice.column);
    if (self && notice.isSelectionOther)
        Q_EMIT list.SelectionEdited();
}

// Undoes or redoes; a step whose rows are gone is passed over.
void CKvTextListBase::Impl::Run(void (QUndoStack::*step)(), bool (QUndoStack::*isPossible)() const)
{
    const QPointer<CKvTextListBase> self(&list);
    const QPointer<QUndoStack> stack(&Stack());
    for (bool isVoid = true; isVoid && (stack->*isPossible)();) {
        const int count = stack->count();
        ++running;
        (stack->*step)();
        if (!self)
            return;
        --running;
        isVoid = stack && stack->count() < count;
    }
}

void CKvTextListBase::Impl::InsertRows(int line, std::vector<Row> rows, UINT text)
{
    if (!rows.empty())
        Push(std::make_unique<RowsStep>(*this, line, std::move(rows), text));
}

void CKvTextListBase::Impl::RemoveSelected(UINT text)
{
    CArray<int, int> lines;
    if (list.GetSelItems(lines) > 0)
        Push(std::make_unique<RowsStep>(*this, lines, text));
}

void CKvTextListBase::Impl::MoveRows(const CArray<int, int>& lines, int before, UINT text)
{
    const bool isTogether =
        !lines.empty() && lines.back() - lines.front() + 1 == static_cast<int>(lines.size());
    if (lines.empty() || (isTogether && before >= lines.front() && before <= lines.back() + 1))
        return;
    Push(std::make_unique<MoveStep>(*this, lines, before, text));
}
