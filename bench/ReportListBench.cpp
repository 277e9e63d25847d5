// The report list's base with 1,000,000 rows of mixed heights at 1,200 x 800: a frame, a text filter, an
// append that is followed, one line's repaint, and the memory of a row; the toolkit's views beside it.
#include "KvReportListCtrl.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QPaintEvent>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QTableView>

#include <array>
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int kRows = 1'000'000;
constexpr int kWidth = 1200;
constexpr int kHeight = 800;
constexpr std::array<int, 3> kHeights{12, 24, 48};
constexpr std::array<int, 3> kWidths{40, 60, 158};
constexpr int kTextColumn = 3;

// One row in 100 holds the text that the filter looks for.
const std::wstring kNeedle = L"Clip 77 was";

std::array<std::wstring, 4> Texts(int row)
{
    return {std::to_wstring(row % 10), std::to_wstring(row % 100), L"2026/03/01-09:05:07.042",
            L"Clip " + std::to_wstring(row % 100) + L" was rendered in " + std::to_wstring(row) + L" ms"};
}

int RowHeight(int row)
{
    return kHeights[static_cast<std::size_t>(row) % kHeights.size()];
}

class List : public CKvReportListCtrl
{
public:
    using CKvReportListCtrl::EnsureVisible;
    using CKvReportListCtrl::GetCellsRect;
    using CKvReportListCtrl::GetShownCount;
    using CKvReportListCtrl::SetRowFilter;
    using CKvReportListCtrl::SetScrollOffset;
    using CKvReportListCtrl::UpdateLine;

    explicit List(QWidget* parent)
    {
        Create({0, 0, kWidth, kHeight}, WS_CHILD | WS_VISIBLE, parent, 1);
        for (const int width : kWidths)
            InsertColumn(L"Column", width);
        InsertColumn(L"Content", 100);
        SetAutoSizeColumn(kTextColumn);
    }
    void Append(int row)
    {
        const std::array<std::wstring, 4> texts = Texts(row);
        InsertRow(-1, {texts[0], texts[1], texts[2], texts[3]}, RowHeight(row));
    }
    void Fill(int count)
    {
        for (int row = 0; row < count; ++row)
            Append(row);
    }
    void Follow(int row)
    {
        _PrivateEnableUpdate(0);
        Append(row);
        SetSelItem(GetItemCount() - 1);
        EnsureVisible(GetItemCount() - 1);
        _PrivateEnableUpdate(1);
    }
};

class Model : public QAbstractTableModel
{
public:
    explicit Model(int count)
    {
        m_rows.reserve(static_cast<std::size_t>(count));
        for (int row = 0; row < count; ++row)
            m_rows.push_back(Row(row));
    }
    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 4; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole)
            return {};
        return m_rows[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())];
    }
    void Append(int row)
    {
        beginInsertRows({}, rowCount(), rowCount());
        m_rows.push_back(Row(row));
        endInsertRows();
    }

private:
    static std::array<QString, 4> Row(int row)
    {
        const std::array<std::wstring, 4> texts = Texts(row);
        return {KvToQString(texts[0]), KvToQString(texts[1]), KvToQString(texts[2]), KvToQString(texts[3])};
    }
    std::vector<std::array<QString, 4>> m_rows;
};

// A million rows are made once.
struct Window
{
    Window()
    {
        top.resize(kWidth, kHeight);
        list = new List(&top);
        list->Fill(kRows);
        top.show();
        QApplication::processEvents(); // a window paints only once it is exposed
    }
    static Window& Shared()
    {
        static Window window;
        return window;
    }

    QWidget top;
    List* list;
};

/// Counts what a widget is asked to paint.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            for (const QRect& rect : static_cast<const QPaintEvent&>(*event).region())
                pixels += rect.width() * rect.height();
        }
        return false;
    }

    qint64 pixels = 0;
};

// Whatever is posted, and the painting that the toolkit would do some milliseconds later.
void Frame(QWidget& window)
{
    QApplication::sendPostedEvents();
    QEvent now(QEvent::UpdateRequest);
    QApplication::sendEvent(&window, &now);
}

std::unique_ptr<QTableView> MakeView(QAbstractItemModel& model)
{
    auto view = std::make_unique<QTableView>();
    view->resize(kWidth, kHeight);
    view->setModel(&model);
    view->verticalHeader()->hide();
    view->verticalHeader()->setDefaultSectionSize(28); // as many rows in view as ours has
    for (int column = 0; column < 3; ++column)
        view->setColumnWidth(column, kWidths[static_cast<std::size_t>(column)]);
    view->horizontalHeader()->setStretchLastSection(true);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->show();
    QApplication::processEvents();
    return view;
}

// --- A frame ---

// Somewhere else each time, so that everything is painted.
void FrameOurs(benchmark::State& state)
{
    Window& window = Window::Shared();
    Frame(window.top);
    PaintCounter counter(*window.list);
    static std::mt19937 random{1}; // goes on from run to run: the same place again would paint nothing
    for (auto _ : state) {
        window.list->SetScrollOffset({0, static_cast<int>(random() % (28u * kRows - kHeight))});
        Frame(window.top);
    }
    if (counter.pixels < static_cast<qint64>(state.iterations()) * kWidth * kHeight * 9 / 10)
        state.SkipWithError("not painted as a whole");
}
BENCHMARK(FrameOurs)->Unit(benchmark::kMicrosecond);

void FrameTableView(benchmark::State& state)
{
    Model model(kRows);
    const auto view = MakeView(model);
    PaintCounter counter(*view->viewport());
    static std::mt19937 random{1}; // goes on from run to run: the same place again would paint nothing
    for (auto _ : state) {
        view->verticalScrollBar()->setValue(static_cast<int>(random() % (28u * kRows - kHeight)));
        Frame(*view);
    }
    if (counter.pixels < static_cast<qint64>(state.iterations()) * kWidth * kHeight * 9 / 10)
        state.SkipWithError("not painted as a whole");
}
BENCHMARK(FrameTableView)->Unit(benchmark::kMicrosecond);

// By three lines, as a notch of the wheel does: most of the picture is moved.
void WheelStep(benchmark::State& state)
{
    Window& window = Window::Shared();
    PaintCounter counter(*window.list);
    int offset = 0;
    for (auto _ : state) {
        offset = (offset + 72) % 10'000'000;
        window.list->SetScrollOffset({0, offset});
        Frame(window.top);
    }
    state.counters["pixels"] = static_cast<double>(counter.pixels) / static_cast<double>(state.iterations());
}
BENCHMARK(WheelStep)->Unit(benchmark::kMicrosecond);

void UpdateOneLine(benchmark::State& state)
{
    Window& window = Window::Shared();
    window.list->SetScrollOffset({0, 12'000'000});
    Frame(window.top);
    const int line = window.list->GetTopIndex() + 5;
    PaintCounter counter(*window.list);
    for (auto _ : state) {
        window.list->UpdateLine(line);
        Frame(window.top);
    }
    const int pixels = window.list->GetCellsRect().Width() * window.list->GetItemHeight(line);
    if (counter.pixels != static_cast<qint64>(state.iterations()) * pixels)
        state.SkipWithError("something else than the line was painted");
}
BENCHMARK(UpdateOneLine)->Unit(benchmark::kMicrosecond);

// --- A filter ---

void FilterOurs(benchmark::State& state)
{
    Window& window = Window::Shared();
    for (auto _ : state) {
        window.list->SetRowFilter([](const KvReportRow& row) {
            return row.Text(kTextColumn).find(kNeedle) != std::wstring_view::npos;
        });
        state.PauseTiming();
        if (window.list->GetShownCount() != kRows / 100)
            state.SkipWithError("not what the filter should show");
        window.list->SetRowFilter({});
        state.ResumeTiming();
    }
}
BENCHMARK(FilterOurs)->Unit(benchmark::kMillisecond);

class Proxy : public QSortFilterProxyModel
{
public:
    explicit Proxy(Model& model)
    {
        setFilterKeyColumn(kTextColumn);
        setFilterCaseSensitivity(Qt::CaseSensitive);
        setSourceModel(&model);
    }
};

void FilterPeer(benchmark::State& state, bool hasView)
{
    Model model(kRows);
    Proxy proxy(model);
    if (proxy.rowCount() != kRows)
        state.SkipWithError("not all are shown");
    const auto view = hasView ? MakeView(proxy) : nullptr;
    for (auto _ : state) {
        proxy.setFilterFixedString(KvToQString(kNeedle));
        state.PauseTiming();
        if (proxy.rowCount() != kRows / 100)
            state.SkipWithError("not what the filter should show");
        proxy.setFilterFixedString({});
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(FilterPeer, alone, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FilterPeer, with_view, true)->Unit(benchmark::kMillisecond)->Iterations(1);

// --- An append that is followed ---

void AppendOurs(benchmark::State& state)
{
    Window& window = Window::Shared();
    int row = window.list->GetItemCount();
    for (auto _ : state) {
        window.list->Follow(row++);
        Frame(window.top);
    }
    if (!window.list->IsItemSelected(row - 1))
        state.SkipWithError("the last line is not selected");
}
BENCHMARK(AppendOurs)->Unit(benchmark::kMicrosecond);

void AppendTableView(benchmark::State& state)
{
    Model model(kRows);
    const auto view = MakeView(model);
    int row = kRows;
    for (auto _ : state) {
        model.Append(row++);
        view->selectRow(row - 1);
        view->scrollToBottom();
        Frame(*view);
    }
}
BENCHMARK(AppendTableView)->Unit(benchmark::kMicrosecond);

// --- Changes of many rows ---

// Every tenth of 1,000,000 goes.
void RemoveScattered(benchmark::State& state)
{
    CArray<int, int> lines;
    for (int line = 0; line < kRows; line += 10)
        lines.push_back(line);
    struct Removing : List
    {
        using CKvReportListCtrl::RemoveRows;
        using List::List;
    };
    for (auto _ : state) {
        state.PauseTiming();
        QWidget top;
        auto* list = new Removing(&top);
        list->Fill(kRows);
        state.ResumeTiming();
        list->RemoveRows(lines);
        state.PauseTiming();
        if (list->GetItemCount() != kRows * 9 / 10)
            state.SkipWithError("not what should be left");
        state.ResumeTiming();
    }
}
BENCHMARK(RemoveScattered)->Unit(benchmark::kMillisecond)->Iterations(3);

// --- Memory ---

std::size_t TextBytes()
{
    std::size_t bytes = 0;
    for (int row = 0; row < kRows; ++row) {
        for (const std::wstring& text : Texts(row))
            bytes += text.size() * sizeof(wchar_t);
    }
    return bytes;
}

void Memory(benchmark::State& state)
{
    const auto text = static_cast<double>(TextBytes());
    double used = 0;
    for (auto _ : state) {
        QWidget top;
        List list(&top);
        const std::size_t before = mallinfo2().uordblks;
        list.Fill(kRows);
        used = static_cast<double>(mallinfo2().uordblks - before);
    }
    state.counters["over_text"] = (used - text) / kRows;
    state.counters["text"] = text / kRows;
}
BENCHMARK(Memory)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
