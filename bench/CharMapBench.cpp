// The character map over a face of some 57,000 characters: its code table, painting a page, and a key press
// in the search box.
#include "KvCharMapDlg.h"

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QPainter>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr wchar_t kLargeFace[] = L"Unifont";
constexpr int kPage = 200;

struct Grid
{
    Grid()
    {
        grid.setGeometry(0, 0, 504, 264);
        grid.Create(WS_CHILD | WS_VISIBLE, &window, 1);
        grid.SetFont(kLargeFace);
        if (grid.GetCodeCount() < 50000) {
            std::fprintf(stderr, "Needs the font Unifont (package fonts-unifont).\n");
            std::exit(1);
        }
        window.resize(504, 264);
        window.show();
        QApplication::processEvents();
    }
    void Paint()
    {
        QPainter painter(&image);
        grid.render(&painter);
    }

    QWidget window;
    CKvCharMapPreviewWnd grid; // dies before the window
    QImage image{504, 264, QImage::Format_ARGB32_Premultiplied};
};

// Every page shows glyphs that nobody has drawn before, so there is one run of them.
void PageCold(benchmark::State& state)
{
    Grid scene;
    int first = 0;
    for (auto _ : state) {
        scene.grid.SetFirst(first);
        scene.Paint();
        first += kPage;
    }
}

void PageWarm(benchmark::State& state)
{
    Grid scene;
    scene.grid.SetFirst(20000);
    scene.grid.SetSelected(20090);
    for (auto _ : state)
        scene.Paint();
}

// Back and forth between pages that were drawn before.
void PageScrolled(benchmark::State& state)
{
    Grid scene;
    int first = 20000;
    for (auto _ : state) {
        scene.grid.SetFirst(first);
        scene.Paint();
        first = first == 20000 ? 20000 + kPage : 20000;
    }
}

// The plain way: each character by drawText, in a font without fallbacks.
void PageWarmByDrawText(benchmark::State& state)
{
    Grid scene;
    QFont font(KvToQString(kLargeFace));
    font.setPixelSize(16);
    font.setStyleStrategy(QFont::NoFontMerging);
    for (auto _ : state) {
        QPainter painter(&scene.image);
        painter.fillRect(0, 0, 504, 264, Qt::black);
        painter.setPen(Qt::white);
        painter.setFont(font);
        for (int cell = 0; cell < kPage; ++cell) {
            const QRect rect(12 + cell % 20 * 24, 12 + cell / 20 * 24, 24, 24);
            const auto code = static_cast<char16_t>(scene.grid.GetCode(20000 + cell));
            painter.drawText(rect, Qt::AlignCenter, QString(QChar(code)));
        }
    }
}

// With the face loaded: what the font database finds again, and the table.
void CodeTable(benchmark::State& state)
{
    Grid scene;
    for (auto _ : state)
        scene.grid.UpdateCodeTable();
    state.counters["characters"] = scene.grid.GetCodeCount();
}

// The text of the box, the search, the selection and the repaint of the whole dialog.
void KeyPress(benchmark::State& state)
{
    static constexpr const char* kQueries[] = {"e acute",          "heart",           "zzz",   "cjk zzz",
                                               "halfwidth hangul", "letter sign zzz", "U+FFEE"};
    const QString query = QLatin1String(kQueries[state.range(0)]);
    CKvCharMapDlg dialog;
    dialog.SetFont(kLargeFace);
    dialog.Create(nullptr, nullptr);
    dialog.show();
    QApplication::processEvents();
    auto* search = qobject_cast<QLineEdit*>(dialog.GetDlgItem(kKvCharMapSearch));
    QImage image(dialog.size(), QImage::Format_ARGB32_Premultiplied);
    bool isShort = false;
    for (auto _ : state) {
        isShort = !isShort; // a press adds a letter, or takes one back
        search->setText(isShort ? query.chopped(1) : query);
        dialog.render(&image);
    }
    state.SetLabel(kQueries[state.range(0)]);
}

} // namespace

BENCHMARK(PageCold)->Unit(benchmark::kMicrosecond)->Iterations(280)->Repetitions(1);
BENCHMARK(PageWarm)->Unit(benchmark::kMicrosecond);
BENCHMARK(PageScrolled)->Unit(benchmark::kMicrosecond);
BENCHMARK(PageWarmByDrawText)->Unit(benchmark::kMicrosecond);
BENCHMARK(CodeTable)->Unit(benchmark::kMicrosecond);
BENCHMARK(KeyPress)->DenseRange(0, 6)->Unit(benchmark::kMicrosecond);
