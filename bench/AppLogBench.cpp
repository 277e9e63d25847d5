// Messages into a log that keeps 60,000 lines: each is appended in its colours, selected and scrolled into
// view, and every 16 ms the window is painted. Beside ours a QTableView over a model that rolls in the same
// way, and a QTableWidget.
#include "KvAppLogListCtrl.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QTableView>
#include <QTableWidget>

#include <benchmark/benchmark.h>
#include <chrono>
#include <deque>
#include <string>

namespace {

constexpr int kMaximum = 60000;
constexpr int kKeep = kMaximum / 4;
constexpr int kFilled = 50000; ///< lines before it is measured
constexpr QSize kWindow(1200, 800);
constexpr std::chrono::milliseconds kFrame(16);

/// The text of a message differs from line to line, as in a real log.
void Write(SKvAppLogMsgData& message, int number)
{
    message.type = number % 4;
    message.level = static_cast<WORD>(number % 10);
    message.time = {2016,
                    3,
                    2,
                    1,
                    9,
                    static_cast<WORD>(number / 60000 % 60),
                    static_cast<WORD>(number / 1000 % 60),
                    static_cast<WORD>(number % 1000)};
    std::wstring text =
        L"Frame " + std::to_wstring(number) + L" of clip \"Northern lights\" was rendered in time";
    text.copy(message.text, text.size());
    message.text[text.size()] = L'\0';
}

/// Lets the window paint once a frame.
class Frames
{
public:
    void Step()
    {
        const auto now = std::chrono::steady_clock::now();
        if (now < m_next)
            return;
        m_next = now + kFrame;
        ++m_count;
        QApplication::processEvents(); // what is queued first, then the painting that it asked for
        QApplication::processEvents();
    }
    int Count() const { return m_count; }

private:
    std::chrono::steady_clock::time_point m_next{};
    int m_count = 0;
};

/// Counts the paintings of a widget.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

template <typename Add>
void Measure(benchmark::State& state, QWidget& painted, Add add)
{
    SKvAppLogMsgData message{};
    int number = 0;
    const auto next = [&] {
        Write(message, number++);
        add(message);
    };
    for (int i = 0; i < kFilled; ++i)
        next();
    QApplication::processEvents();
    PaintCounter paints(painted);
    Frames frames;
    for (auto _ : state) {
        next();
        frames.Step();
    }
    state.SetItemsProcessed(state.iterations());
    if (paints.count < frames.Count() - 1)
        state.SkipWithError("a frame was not painted");
}

void Ours(benchmark::State& state)
{
    QWidget window;
    window.resize(kWindow);
    CKvAppLogListCtrl list;
    list.Create({0, 0, kWindow.width(), kWindow.height()}, WS_CHILD | WS_VISIBLE, &window, 1);
    list.Initialize(1);
    list.SetMaxLogLineCounts(kMaximum, 0);
    window.show();
    Measure(state, list, [&](const SKvAppLogMsgData& message) { list.AddAppLogMsg(message); });
    if (list.GetLastSelItem() != list.GetItemCount() - 1)
        state.SkipWithError("the last message is not selected");
}
BENCHMARK(Ours)->Iterations(400000)->Unit(benchmark::kMicrosecond);

struct Record
{
    int type;
    QString cells[4];
};

Record RecordOf(const SKvAppLogMsgData& message)
{
    const SYSTEMTIME& time = message.time;
    const auto two = [](int value) { return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0')); };
    return {message.type,
            {QString::number(message.type), two(message.level),
             QString::number(time.wYear) + '/' + two(time.wMonth) + '/' + two(time.wDay) + '-' +
                 two(time.wHour) + ':' + two(time.wMinute) + ':' + two(time.wSecond) + '.' +
                 QStringLiteral("%1").arg(time.wMilliseconds, 3, 10, QLatin1Char('0')),
             QString::fromWCharArray(message.text)}};
}

const QColor kBack[] = {{31, 31, 34}, {28, 48, 70}, {66, 52, 26}, {74, 32, 32}};
const QColor kText[] = {{226, 226, 228}, {169, 212, 255}, {255, 216, 138}, {255, 184, 176}};

class RollingModel : public QAbstractTableModel
{
public:
    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_records.size());
    }
    int columnCount(const QModelIndex& = {}) const override { return 4; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        const Record& record = m_records[static_cast<std::size_t>(index.row())];
        if (role == Qt::DisplayRole)
            return record.cells[index.column()];
        if (index.column() == 3 && role == Qt::BackgroundRole)
            return kBack[record.type];
        if (index.column() == 3 && role == Qt::ForegroundRole)
            return kText[record.type];
        return {};
    }
    void Add(const SKvAppLogMsgData& message)
    {
        const int row = rowCount();
        beginInsertRows({}, row, row);
        m_records.push_back(RecordOf(message));
        endInsertRows();
        if (row + 1 < kMaximum)
            return;
        beginRemoveRows({}, 0, row - kKeep);
        m_records.erase(m_records.begin(), m_records.end() - kKeep);
        endRemoveRows();
    }

private:
    std::deque<Record> m_records;
};

void SetUp(QTableView& view)
{
    view.resize(kWindow);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setWordWrap(false);
    view.verticalHeader()->hide();
    view.verticalHeader()->setMinimumSectionSize(1);
    view.verticalHeader()->setDefaultSectionSize(24);
    view.horizontalHeader()->setStretchLastSection(true);
    view.show();
}

/// @param ownHeights a height for each row, as the log has it, or one for all.
void Roll(benchmark::State& state, bool ownHeights)
{
    RollingModel model;
    QTableView view;
    view.setModel(&model);
    SetUp(view);
    if (!ownHeights)
        view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    bool isMeasured = false;
    Measure(state, *view.viewport(), [&](const SKvAppLogMsgData& message) {
        model.Add(message);
        if (!isMeasured && model.rowCount() < kFilled)
            return; // not to wait for minutes
        isMeasured = true;
        const int last = model.rowCount() - 1;
        if (ownHeights)
            view.setRowHeight(last, 24);
        view.selectRow(last);
        view.scrollToBottom();
    });
}

void TableView(benchmark::State& state)
{
    Roll(state, true);
}
BENCHMARK(TableView)->Iterations(20000)->Unit(benchmark::kMicrosecond);

void TableViewOneHeight(benchmark::State& state)
{
    Roll(state, false);
}
BENCHMARK(TableViewOneHeight)->Iterations(20000)->Unit(benchmark::kMicrosecond);

void TableWidget(benchmark::State& state)
{
    QTableWidget table(0, 4);
    SetUp(table);
    bool isMeasured = false;
    Measure(state, *table.viewport(), [&](const SKvAppLogMsgData& message) {
        const int row = table.rowCount();
        table.insertRow(row);
        const Record record = RecordOf(message);
        for (int column = 0; column < 4; ++column) {
            auto* item = new QTableWidgetItem(record.cells[column]);
            if (column == 3) {
                item->setBackground(kBack[record.type]);
                item->setForeground(kText[record.type]);
            }
            table.setItem(row, column, item);
        }
        if (row + 1 >= kMaximum)
            table.model()->removeRows(0, row + 1 - kKeep);
        if (!isMeasured && table.rowCount() < kFilled)
            return;
        isMeasured = true;
        const int last = table.rowCount() - 1;
        table.setRowHeight(last, 24);
        table.selectRow(last);
        table.scrollToBottom();
    });
}
BENCHMARK(TableWidget)->Iterations(20000)->Unit(benchmark::kMicrosecond);

} // namespace
