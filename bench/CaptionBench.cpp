// The ribbon title bar at 1,920 × 96 with ten tabs: repainting it beside a widget that draws the same picture
// by itself, the pointer's step to the next tab, and a program's first window with and without a bar.
#include "KvGuiRes.h"
#include "KvRibbonTitlebar.h"
#include "ProgramStart.h"

#include <QApplication>
#include <QBackingStore>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 96;
constexpr int kTabBottom = 21;
constexpr int kSelected = 2;
constexpr unsigned kId = 7;
const QString kApplication = u"Titles"_qs;
const QString kTitle = u"Titles - evening news, opening.title"_qs;
const QStringList kTabs{"Design", "Animate", "Media",   "Titles",  "Effects",
                        "Colour", "Sound",   "Preview", "Publish", "Settings"};

// --- The bar and its twin ---

struct Window
{
    Window()
    {
        QCursor::setPos(kWidth / 2, 2 * kHeight); // over no button
        top.resize(kWidth, kHeight);
        bar.Create(WS_CHILD | WS_VISIBLE, {0, 0, kWidth, 0}, &top, 1);
        bar.BeginAddTitleBar(L"titler_titles", KvFromQString(kApplication).c_str(), nullptr, kId, nullptr);
        for (const QString& tab : kTabs)
            bar.AddRibbonItem(KvFromQString(tab).c_str(), nullptr, nullptr, tab == kTabs[kSelected]);
        bar.EndAddTitleBar();
        bar.ActiveTitleBar(kId, 1);
        bar.SetSysTitle(kId, L"");
        bar.SetDocTitle(kId, KvFromQString(kTitle).c_str());
        top.show();
        QApplication::processEvents(); // a window paints only once it is exposed
    }
    QRect Button(UINT number) { return KvGetDlgItem(&bar, number)->geometry(); }
    std::vector<QRect> Tabs()
    {
        const QFontMetrics metrics(bar.font());
        std::vector<QRect> tabs;
        int left = Button(kKvCaptionApplication).right() + 1 - 20 + 30;
        for (const QString& tab : kTabs) {
            tabs.emplace_back(left, kTabBottom - metrics.height(), metrics.horizontalAdvance(tab),
                              metrics.height());
            left += tabs.back().width() + 10;
        }
        return tabs;
    }

    QWidget top;
    CKvRibbonTitlebar bar;
};

QColor Colour(const wchar_t* key)
{
    DWORD colour = 0;
    KvGuiRes::LoadColor(key, colour);
    return QColor::fromRgba(colour);
}

// The same picture as one would draw it by hand for one bar: places, pictures and colours known beforehand.
class Twin : public QWidget
{
public:
    Twin(Window& window, QWidget* parent) : QWidget(parent), m_tabs(window.Tabs())
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        resize(kWidth, kHeight);
        m_background.fill(Colour(L"keWindowBKColor"));
        QPainter painter(&m_background);
        painter.setRenderHint(QPainter::Antialiasing);
        KvGuiRes::LoadImageW(L"ribbontitlebar_bk").Draw(painter, rect());
        constexpr const wchar_t* buttons[] = {L"wndclose", L"wndmaxmize", L"wndminmize", L"wndappmenu"};
        for (UINT i = 0; i < 4; ++i)
            AddPicture(buttons[i], window.Button(kKvCaptionClose + i));
        // The application button: picture, 4 pixels, text, in its middle.
        const QRect button = window.Button(kKvCaptionApplication);
        QRect picture(0, 0, 16, 16);
        picture.moveCenter(button.center());
        picture.moveLeft((button.width() - 20 - fontMetrics().horizontalAdvance(kApplication)) / 2 +
                         button.left());
        AddPicture(L"titler_titles", picture);
        m_application = {picture.right() + 5, button.top(), button.width(), button.height()};
        m_title = {m_tabs.back().right() + 101, 2, 900, 20};
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.drawPixmap(0, 0, m_background);
        painter.fillRect(0, 25, kWidth, 1, m_upper);
        painter.fillRect(0, 26, kWidth, 1, m_lower);
        for (const auto& [place, picture] : m_pictures)
            painter.drawPixmap(place, picture);
        painter.setPen(m_text);
        painter.drawText(m_application, Qt::AlignLeft | Qt::AlignVCenter, kApplication);
        painter.drawText(m_title, Qt::AlignLeft | Qt::AlignVCenter, kTitle);
        for (std::size_t i = 0; i < m_tabs.size(); ++i) {
            painter.setPen(i == kSelected ? m_selected : m_text);
            painter.drawText(m_tabs[i], Qt::AlignLeft | Qt::AlignVCenter, kTabs[static_cast<qsizetype>(i)]);
        }
        DrawFrame(painter, m_tabs[kSelected]);
    }

private:
    void AddPicture(const wchar_t* name, const QRect& place)
    {
        m_pictures.emplace_back(place.topLeft(), KvGuiRes::LoadImageW(name).Pixmap(place.size(), 1));
    }

    void DrawFrame(QPainter& painter, const QRect& tab)
    {
        const int right = tab.x() + tab.width();
        const int bottom = tab.y() + tab.height();
        painter.fillRect(tab.x(), tab.y(), 1, tab.height() + 1, m_inner);
        painter.fillRect(tab.x(), tab.y(), tab.width() + 1, 1, m_inner);
        painter.fillRect(right, tab.y(), 1, tab.height() + 1, m_inner);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(m_outer, 1.8, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        const QPointF corners[] = {{tab.x() - 0.5, bottom + 4.5},
                                   {tab.x() - 0.5, tab.y() - 1.5},
                                   {right + 1.5, tab.y() - 1.5},
                                   {right + 1.5, bottom + 4.5}};
        painter.drawPolyline(corners, 4);
    }

    QPixmap m_background{kWidth, kHeight};
    std::vector<std::pair<QPoint, QPixmap>> m_pictures;
    std::vector<QRect> m_tabs;
    QRect m_application;
    QRect m_title;
    QColor m_upper = Colour(L"keRibbonTitleBarSeperatorTopColor");
    QColor m_lower = Colour(L"keRibbonTitleBarSeperatorBtmColor");
    QColor m_text = Colour(L"keWindowTextColor");
    QColor m_selected = Colour(L"keWindowTextSelectedColor");
    QColor m_inner = Colour(L"keRibbonTitleBarTabFrameDarkColor");
    QColor m_outer = Colour(L"keRibbonTitleBarTabFrameLightColor");
};

QImage Rendered(QWidget& widget)
{
    QImage picture(widget.size(), QImage::Format_RGB32);
    widget.render(&picture);
    return picture;
}

int DifferentPixels(const QImage& one, const QImage& other)
{
    int count = 0;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x)
            count += one.pixel(x, y) != other.pixel(x, y);
    }
    return count;
}

/// Counts the pixels that a widget is asked to paint.
class PaintCounter : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++paints;
            for (const QRect& rect : static_cast<const QPaintEvent&>(*event).region())
                pixels += rect.width() * rect.height();
        }
        return false;
    }

    int paints = 0;
    qint64 pixels = 0;
};

void Repaint(benchmark::State& state, bool isOurs)
{
    Window window;
    Twin twin(window, &window.top);
    const int different = DifferentPixels(Rendered(window.bar), Rendered(twin));
    if (different != 0)
        state.SkipWithError((std::to_string(different) + " pixels differ").c_str());
    twin.setVisible(!isOurs);
    QApplication::processEvents();
    QWidget& widget = isOurs ? static_cast<QWidget&>(window.bar) : twin;
    PaintCounter counter;
    PaintCounter buttons;
    widget.installEventFilter(&counter);
    for (UINT number = kKvCaptionApplication; number <= kKvCaptionMenu; ++number)
        KvGetDlgItem(&window.bar, number)->installEventFilter(&buttons);
    for (auto _ : state)
        widget.repaint();
    const auto paints = static_cast<qint64>(state.iterations());
    if (counter.pixels != qint64{kWidth} * kHeight * paints || buttons.paints != (isOurs ? 5 * paints : 0))
        state.SkipWithError("not painted as a whole");
}
BENCHMARK_CAPTURE(Repaint, bar, true)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Repaint, by_hand, false)->Unit(benchmark::kMicrosecond);

// The pointer goes to the next tab, and what is invalid is painted.
void HoverStep(benchmark::State& state)
{
    Window window;
    const std::vector<QRect> tabs = window.Tabs();
    PaintCounter counter;
    std::size_t tab = 0;
    qint64 pixels = 0; // of the two tabs, each with the overhang of its text
    const auto step = [&] {
        const QRect left = tabs[tab];
        tab = (tab + 1) % tabs.size();
        pixels += (left.width() + 4 + tabs[tab].width() + 4) * left.height();
        const QPointF at = tabs[tab].center();
        QMouseEvent event(QEvent::MouseMove, at, window.bar.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&window.bar, &event);
        QApplication::sendPostedEvents();
    };
    step();
    pixels = 0;
    window.bar.installEventFilter(&counter);
    for (auto _ : state)
        step();
    const auto steps = static_cast<int>(state.iterations());
    const auto* screen = static_cast<const QImage*>(window.top.backingStore()->paintDevice());
    if (counter.paints != steps || counter.pixels != pixels)
        state.SkipWithError("a step painted something else than the two tabs");
    else if (DifferentPixels(*screen, Rendered(window.bar)) != 0)
        state.SkipWithError("something that changed was not painted");
    state.counters["pixels"] = static_cast<double>(counter.pixels) / steps;
}
BENCHMARK(HoverStep)->Unit(benchmark::kMicrosecond);

// --- The first window of a process ---

void FirstWindow(benchmark::State& state)
{
    CompareStarts(state, {"first_window_plain"}, {"first_window_bar"});
}
BENCHMARK(FirstWindow)->Iterations(21)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
