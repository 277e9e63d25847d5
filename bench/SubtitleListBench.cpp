// The subtitle list with 100,000 rows beside QTableWidget and a QTableView over a model of its own.
#include "KvSubTitleTxtListEditor.h"
#include "KvTimecode.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTableView>
#include <QTableWidget>
#include <QUndoStack>

#include <benchmark/benchmark.h>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace {

constexpr int kRows = 100'000;
constexpr QSize kSize(1200, 800);
constexpr int kRowHeight = 24;
constexpr int kScrollStep = 137; // pixels

struct Subtitle
{
    std::wstring text;
    DWORD in;
    DWORD out;
};

const std::vector<Subtitle>& Subtitles()
{
    static const std::vector<Subtitle> subtitles = [] {
        constexpr const wchar_t* words[] = {L"tomorrow", L"we",  L"never", L"should", L"have", L"sailed",
                                            L"north",    L"the", L"light", L"again",  L"at",   L"dawn"};
        std::vector<Subtitle> made;
        unsigned seed = 1;
        const auto next = [&seed](unsigned end) {
            seed = seed * 1664525u + 1013904223u;
            return (seed >> 8) % end;
        };
        for (int i = 0; i < kRows; ++i) {
            std::wstring text = L"I thought";
            for (unsigned word = 3 + next(7); word > 0; --word)
                text += L" " + std::wstring(words[next(12)]);
            const auto in = static_cast<DWORD>(i * 60);
            made.push_back({text, in, in + 30 + next(25)});
        }
        return made;
    }();
    return subtitles;
}

QString TimeText(DWORD frame)
{
    std::wstring text;
    KvTimecode::ToText(frame, kKvFrameRate25, false, text);
    return KvToQString(text);
}

/// Counts what a widget is asked to paint.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++paints;
            for (const QRect& rect : static_cast<const QPaintEvent&>(*event).region())
                pixels += rect.width() * rect.height();
        }
        return false;
    }
    /// Lets the screen follow.
    void WaitForFrame()
    {
        const int before = paints;
        while (paints == before)
            QApplication::processEvents();
    }

    int paints = 0;
    qint64 pixels = 0;
};

class OurList : public CKvSubTitleTxtListEditor
{
public:
    OurList()
    {
        resize(kSize);
        Create({0, 0, kSize.width(), kSize.height()}, WS_VISIBLE, nullptr, 1);
    }
    void Load()
    {
        for (const Subtitle& one : Subtitles())
            InserItem(-1, one.text, one.in, one.out, L"Lower Third");
    }
    void ScrollTo(int y) { SetScrollOffset({0, y}); }
    int ScrollRange() const { return GetItemCount() * kRowHeight - kSize.height(); }
    QWidget& Canvas() { return *this; }
    QString TextOf(int row, int column) const { return KvToQString(GetItemText(row, column)); }
    void Play(int row) { SetPlayIndex(row); }
};

/// A model as a program would write it for this list.
class Model : public QAbstractTableModel
{
public:
    struct Row
    {
        QString text;
        DWORD in;
        DWORD out;
        QString templateName;
    };
    int rowCount(const QModelIndex&) const override { return static_cast<int>(m_rows.size()); }
    int columnCount(const QModelIndex&) const override { return 4; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        const Row& row = m_rows[static_cast<std::size_t>(index.row())];
        if (role == Qt::BackgroundRole && index.row() == m_play)
            return QColor(30, 74, 52);
        if (role != Qt::DisplayRole)
            return {};
        switch (index.column()) {
        case 0:
            return row.text;
        case 1:
            return TimeText(row.in);
        case 2:
            return TimeText(row.out);
        default:
            return row.templateName;
        }
    }
    void Append(Row row)
    {
        const int count = static_cast<int>(m_rows.size());
        beginInsertRows({}, count, count);
        m_rows.push_back(std::move(row));
        endInsertRows();
    }
    void Play(int row)
    {
        const int before = std::exchange(m_play, row);
        Q_EMIT dataChanged(index(before, 0), index(before, 3), {Qt::BackgroundRole});
        Q_EMIT dataChanged(index(row, 0), index(row, 3), {Qt::BackgroundRole});
    }

private:
    std::vector<Row> m_rows;
    int m_play = 0;
};

void SetUp(QTableView& view)
{
    view.resize(kSize);
    view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.verticalHeader()->hide();
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.verticalHeader()->setDefaultSectionSize(kRowHeight);
    view.horizontalHeader()->resizeSection(0, kSize.width() - 300);
    view.setWordWrap(false);
    view.show();
}

class View : public QTableView
{
public:
    View()
    {
        setModel(&m_model);
        SetUp(*this);
    }
    void Load()
    {
        for (const Subtitle& one : Subtitles())
            m_model.Append({KvToQString(one.text), one.in, one.out, QStringLiteral("Lower Third")});
    }
    void ScrollTo(int y) { verticalScrollBar()->setValue(y); }
    int ScrollRange() const { return verticalScrollBar()->maximum(); }
    QWidget& Canvas() { return *viewport(); }
    int GetItemCount() const { return m_model.rowCount({}); }
    QString TextOf(int row, int column) const { return m_model.index(row, column).data().toString(); }
    void Play(int row) { m_model.Play(row); }

private:
    Model m_model;
};

class Table : public QTableWidget
{
public:
    Table() : QTableWidget(0, 4) { SetUp(*this); }
    void Load()
    {
        for (const Subtitle& one : Subtitles()) {
            const int row = rowCount();
            insertRow(row);
            const QString texts[] = {KvToQString(one.text), TimeText(one.in), TimeText(one.out),
                                     QStringLiteral("Lower Third")};
            for (int column = 0; column < 4; ++column)
                setItem(row, column, new QTableWidgetItem(texts[column]));
        }
    }
    void ScrollTo(int y) { verticalScrollBar()->setValue(y); }
    int ScrollRange() const { return verticalScrollBar()->maximum(); }
    QWidget& Canvas() { return *viewport(); }
    int GetItemCount() const { return rowCount(); }
    QString TextOf(int row, int column) const { return item(row, column)->text(); }
    void Play(int row)
    {
        for (int column = 0; column < 4; ++column) {
            item(m_play, column)->setData(Qt::BackgroundRole, {});
            item(row, column)->setBackground(QColor(30, 74, 52));
        }
        m_play = row;
    }

private:
    int m_play = 0;
};

template <typename List>
bool IsRight(const List& list)
{
    const Subtitle& last = Subtitles().back();
    return list.GetItemCount() == kRows && list.TextOf(kRows - 1, 0) == KvToQString(last.text) &&
           list.TextOf(kRows - 1, 2) == TimeText(last.out);
}

// Row by row, as an import does, up to the first picture.
template <typename List>
void Load(benchmark::State& state)
{
    Subtitles();
    for (auto _ : state) {
        state.PauseTiming();
        auto list = std::make_unique<List>();
        QApplication::processEvents();
        PaintCounter counter(list->Canvas());
        state.ResumeTiming();
        list->Load();
        counter.WaitForFrame();
        state.PauseTiming();
        if (!IsRight(*list))
            state.SkipWithError("not what was loaded");
        list.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(Load<OurList>)->Unit(benchmark::kMillisecond);
BENCHMARK(Load<View>)->Unit(benchmark::kMillisecond);
BENCHMARK(Load<Table>)->Unit(benchmark::kMillisecond)->Iterations(1);

template <typename List>
void ScrollFrame(benchmark::State& state)
{
    List list;
    list.Load();
    PaintCounter counter(list.Canvas());
    counter.WaitForFrame();
    const int range = list.ScrollRange();
    int y = 0;
    for (auto _ : state) {
        y = (y + kScrollStep) % range;
        list.ScrollTo(y);
        counter.WaitForFrame();
    }
    state.counters["pixels"] = static_cast<double>(counter.pixels) / static_cast<double>(counter.paints);
}
BENCHMARK(ScrollFrame<OurList>)->Unit(benchmark::kMicrosecond);
BENCHMARK(ScrollFrame<View>)->Unit(benchmark::kMicrosecond);
BENCHMARK(ScrollFrame<Table>)->Unit(benchmark::kMicrosecond);

// Far enough that nothing on the screen can be used again.
template <typename List>
void JumpFrame(benchmark::State& state)
{
    List list;
    list.Load();
    PaintCounter counter(list.Canvas());
    counter.WaitForFrame();
    const int range = list.ScrollRange();
    int y = 0;
    for (auto _ : state) {
        y = (y + 100 * kSize.height() + kScrollStep) % range;
        list.ScrollTo(y);
        counter.WaitForFrame();
    }
}
BENCHMARK(JumpFrame<OurList>)->Unit(benchmark::kMicrosecond);
BENCHMARK(JumpFrame<View>)->Unit(benchmark::kMicrosecond);

// The mark goes to the next row in view, and what is invalid is painted.
template <typename List>
void PlayStep(benchmark::State& state)
{
    List list;
    list.Load();
    PaintCounter counter(list.Canvas());
    counter.WaitForFrame();
    QApplication::processEvents();
    int row = 0;
    list.Play(row);
    QApplication::processEvents();
    counter.pixels = counter.paints = 0;
    for (auto _ : state) {
        row = (row + 1) % 20;
        list.Play(row);
        counter.WaitForFrame();
    }
    const qint64 most = qint64{2} * kRowHeight * kSize.width();
    if (std::is_same_v<List, OurList> && counter.pixels > most * counter.paints)
        state.SkipWithError("more than two rows");
    state.counters["pixels"] = static_cast<double>(counter.pixels) / static_cast<double>(counter.paints);
}
BENCHMARK(PlayStep<OurList>)->Unit(benchmark::kMicrosecond);
BENCHMARK(PlayStep<View>)->Unit(benchmark::kMicrosecond);

void FindPlayed(benchmark::State& state)
{
    OurList list;
    list.Load();
    DWORD frame = 0;
    for (auto _ : state) {
        frame = (frame + 7919 * 60) % (kRows * 60);
        const int row = list.FindPlayIndex(frame + 1);
        if (row != static_cast<int>(frame / 60))
            state.SkipWithError("another row");
    }
}
BENCHMARK(FindPlayed);

// The first question after a time code has changed.
void FindPlayedAfterChange(benchmark::State& state)
{
    OurList list;
    list.Load();
    for (auto _ : state) {
        list.SetTimeCode(kRows / 2, kRows / 2 * 60 + 1, 1);
        benchmark::DoNotOptimize(list.FindPlayIndex(5));
    }
}
BENCHMARK(FindPlayedAfterChange)->Unit(benchmark::kMicrosecond);

// Up to the step of undo, in turn there and back.
void ReplaceAll(benchmark::State& state, const wchar_t* word, const wchar_t* other)
{
    OurList list;
    list.Load();
    QApplication::processEvents();
    const wchar_t* words[] = {word, other};
    state.counters["places"] = list.CountMatches(word, 1);
    int turn = 0;
    for (auto _ : state) {
        if (list.FindReplace(0, 2, words[turn], words[1 - turn], 1) != 0)
            state.SkipWithError("nothing found");
        turn = 1 - turn;
        state.PauseTiming();
        list.GetUndoStack()->clear();
        QApplication::processEvents();
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(ReplaceAll, in_some_rows, L"dawn", L"dusk")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReplaceAll, in_every_row, L"thought", L"believed")->Unit(benchmark::kMillisecond);

// Every second row is removed outside of the timer, and undo puts them back.
void UndoScatteredRemoval(benchmark::State& state)
{
    OurList list;
    list.Load();
    CArray<int, int> odd;
    for (int row = 1; row < list.GetItemCount(); row += 2)
        odd.push_back(row);
    const int count = list.GetItemCount();
    for (auto _ : state) {
        state.PauseTiming();
        list.SetSelItem(odd);
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
        QApplication::sendEvent(&list, &key);
        QApplication::processEvents();
        state.ResumeTiming();
        list.GetUndoStack()->undo();
        if (list.GetItemCount() != count)
            state.SkipWithError("not all came back");
    }
}
BENCHMARK(UndoScatteredRemoval)->Unit(benchmark::kMillisecond);

void HostStepOfOneTimeCode(benchmark::State& state)
{
    OurList list;
    list.Load();
    DWORD frame = 0;
    for (auto _ : state) {
        if (list.RunAsStep(L"in", [&] { list.SetTimeCode(5, ++frame, 1); }) != 1)
            state.SkipWithError("no step");
    }
    list.GetUndoStack()->clear();
}
BENCHMARK(HostStepOfOneTimeCode)->Unit(benchmark::kMicrosecond);

void OffsetOfAll(benchmark::State& state)
{
    OurList list;
    list.Load();
    DWORD offset = 0;
    for (auto _ : state)
        list.SetTimecodeOffset(++offset);
}
BENCHMARK(OffsetOfAll)->Unit(benchmark::kMillisecond);

} // namespace
