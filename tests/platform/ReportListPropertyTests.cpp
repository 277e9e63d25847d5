// Random operations on a report list, against a plain vector that does the same; and after each of them the
// screen, on which only what changed is painted, against a whole painting.
#include "KvReportListCtrl.h"

#include <QApplication>
#include <QBackingStore>
#include <QTest>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <set>

namespace {

struct NaiveRow
{
    std::uint64_t id;
    std::wstring text;
    int height;
    std::uint64_t data = 0;
    DWORD back = 0; ///< 0 for none
    bool selected = false;
};

class PropertyList : public CKvReportListCtrl
{
public:
    explicit PropertyList(QWidget& window) : parent(window)
    {
        parent.resize(300, 200);
        Create({0, 0, 260, 180}, WS_CHILD | WS_VISIBLE, &parent, 5);
        InsertColumn(L"Text", 90);
        InsertColumn(L"Second", 60);
        parent.show();
        QApplication::setActiveWindow(&parent);
        setFocus();
        QApplication::processEvents();
    }

    void Step();
    void Compare();
    void CompareScreen();

protected:
    // Told before the operation returns, with the lines as they are by then: a derived list keeps data of its
    // own in step like this.
    void _OnNotifyItemModify(int kind, const CArray<int, int>& rows, int) override
    {
        if (kind == kKvReportInserted) {
            for (const int line : rows)
                told.insert(told.begin() + line, GetRowId(line));
        } else if (kind == kKvReportRemoved) {
            for (auto line = rows.rbegin(); line != rows.rend(); ++line)
                told.erase(told.begin() + *line);
        } else if (kind == kKvReportAllRemoved) {
            told.clear();
        } else if (kind == kKvReportOrderChanged) {
            std::vector<std::uint64_t> sorted;
            for (const int line : rows)
                sorted.push_back(told[static_cast<std::size_t>(line)]);
            told = sorted;
        }
    }

private:
    int Random(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    int Count() const { return static_cast<int>(naive.size()); }
    NaiveRow& At(int line) { return naive[static_cast<std::size_t>(line)]; }
    bool Accepts(const NaiveRow& row) const { return !isFiltered || (row.text.size() + row.data) % 3 != 0; }
    void Add(int count);
    void RemoveSome();
    void Sort();
    void ChangeOne(int line);
    void Look();

    QWidget& parent;
    std::mt19937 random{7};
    std::vector<NaiveRow> naive;
    std::vector<std::uint64_t> told;
    std::uint64_t lastId = 0;
    std::uint64_t currentId = 0; ///< 0 for none
    bool isFiltered = false;
};

void PropertyList::Add(int count)
{
    constexpr std::array<int, 3> kHeights{12, 24, 48};
    const int at = Random(Count() + 1);
    const int height = kHeights[static_cast<std::size_t>(Random(3))];
    std::vector<CStringArray> texts;
    for (int i = 0; i < count; ++i) {
        texts.push_back({std::wstring(static_cast<std::size_t>(Random(12)), L'x'), L"s"});
        naive.insert(naive.begin() + at + i, {++lastId, texts.back()[0], height});
    }
    const int where = at == Count() - count ? -1 : at;
    if (count == 1)
        ASSERT_EQ(InsertRow(where, {texts[0][0], texts[0][1]}, height), at);
    else
        ASSERT_EQ(InsertRows(where, texts, height), at);
}

void PropertyList::RemoveSome()
{
    std::set<int> lines;
    if (Random(2) == 0) {
        const int from = Random(Count());
        const int count = std::min(1 + Random(8), Count() - from);
        for (int line = from; line < from + count; ++line)
            lines.insert(line);
        ASSERT_EQ(RemoveRows(from, count), count);
    } else {
        CArray<int, int> asked;
        for (int i = Random(12); i >= 0; --i)
            asked.push_back(Random(Count()));
        lines.insert(asked.begin(), asked.end());
        ASSERT_EQ(RemoveRows(asked), static_cast<int>(lines.size()));
    }
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        currentId = At(*line).id == currentId ? 0 : currentId;
        naive.erase(naive.begin() + *line);
    }
}

void PropertyList::Sort()
{
    CArray<int, int> order(naive.size());
    std::iota(order.begin(), order.end(), 0);
    if (Random(2) == 0)
        std::shuffle(order.begin(), order.end(), random);
    else
        std::stable_sort(order.begin(), order.end(),
                         [this](int a, int b) { return At(a).text < At(b).text; });
    std::vector<NaiveRow> sorted;
    for (const int line : order)
        sorted.push_back(At(line));
    naive = sorted;
    ASSERT_EQ(SortRows(order), 1);
}

void PropertyList::ChangeOne(int line)
{
    NaiveRow& row = At(line);
    switch (Random(4)) {
    case 0:
        row.text = std::wstring(static_cast<std::size_t>(Random(12)), L'y');
        SetItemText(line, 0, row.text);
        break;
    case 1:
        row.height = 1 + Random(60);
        SetItemHeight(line, row.height);
        break;
    case 2:
        row.data = static_cast<std::uint64_t>(Random(3));
        SetItemData(line, row.data);
        break;
    default:
        row.back = Random(3) == 0 ? 0 : 0xFF000000u + static_cast<DWORD>(Random(0x1000000));
        if (row.back == 0)
            ClearCellColors(line, 0);
        else
            SetCellColors(line, 0, &row.back, nullptr);
    }
}

// What moves the view, the selection or the current line.
void PropertyList::Look()
{
    const int line = Random(Count());
    switch (Random(6)) {
    case 0: {
        const int last = std::min(line + Random(5), Count() - 1);
        const bool select = Random(2) == 0;
        SelectRange(line, last, select);
        for (int i = line; i <= last; ++i)
            At(i).selected = select;
        break;
    }
    case 1:
        SetSelItem(line);
        for (NaiveRow& row : naive)
            row.selected = false;
        At(line).selected = true;
        currentId = At(line).id;
        break;
    case 2:
        EnsureVisible(line);
        break;
    case 3:
        SetScrollOffset({GetScrollOffset().x, GetScrollOffset().y + Random(61) - 30});
        break;
    case 4:
        SetScrollOffset({0, Random(Count() * 24)});
        break;
    default:
        isFiltered = Random(2) == 0;
        if (isFiltered)
            SetRowFilter([](const KvReportRow& row) { return (row.Text(0).size() + row.Data()) % 3 != 0; });
        else
            SetRowFilter({});
    }
}

void PropertyList::Step()
{
    const int kind = Count() == 0 ? 0 : Random(12);
    if (kind < 2)
        Add(kind == 0 ? 1 : 2 + Random(30));
    else if (kind == 2)
        RemoveSome();
    else if (kind == 3 && Random(3) == 0)
        Sort();
    else if (kind < 7)
        ChangeOne(Random(Count()));
    else
        Look();
}

void PropertyList::Compare()
{
    ASSERT_EQ(GetItemCount(), Count());
    CArray<int, int> selected;
    int shown = 0;
    for (int line = 0; line < Count(); ++line) {
        const NaiveRow& row = At(line);
        ASSERT_EQ(GetRowId(line), row.id) << line;
        ASSERT_EQ(told[static_cast<std::size_t>(line)], row.id) << line;
        ASSERT_EQ(FindRow(row.id), line);
        ASSERT_EQ(GetItemText(line, 0), row.text) << line;
        ASSERT_EQ(GetItemHeight(line), row.height) << line;
        ASSERT_EQ(GetItemData(line), row.data) << line;
        DWORD back = 0;
        GetCellColors(line, 0, &back, nullptr);
        ASSERT_EQ(back, row.back) << line;
        ASSERT_EQ(IsItemSelected(line) != 0, row.selected) << line;
        ASSERT_EQ(IsRowShown(line) != 0, Accepts(row)) << line;
        shown += Accepts(row) ? 1 : 0;
        if (row.selected)
            selected.push_back(line);
    }
    CArray<int, int> lines;
    GetSelItems(lines);
    ASSERT_EQ(lines, selected);
    ASSERT_EQ(GetShownCount(), shown);
    ASSERT_EQ(GetRowId(GetCurrentItem()), currentId);
}

void PropertyList::CompareScreen()
{
    QApplication::sendPostedEvents();
    QEvent now(QEvent::UpdateRequest); // the toolkit would wait for some milliseconds
    QApplication::sendEvent(&parent, &now);
    const qreal ratio = devicePixelRatioF();
    const auto* window = static_cast<const QImage*>(parent.backingStore()->paintDevice());
    const QImage whole = grab().toImage();
    const QImage screen = window->copy(QRect(QPoint(), QSizeF(QSizeF(size()) * ratio).toSize()));
    ASSERT_EQ(screen.convertToFormat(QImage::Format_RGB32), whole.convertToFormat(QImage::Format_RGB32));
}

TEST(ReportListProperty, StaysInStepAndPaintsWhatChanged)
{
    QWidget parent;
    PropertyList list(parent);
    for (int step = 0; step < 400; ++step) {
        SCOPED_TRACE(step);
        list.Step();
        list.Compare();
        if (step % 3 == 0) // several changes come into one frame
            list.CompareScreen();
        if (testing::Test::HasFatalFailure())
            return;
    }
}

} // namespace
