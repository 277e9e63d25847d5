// The layout strip, 1,920 pixels wide: a frame, an insertion up to its picture, the wheel up to its picture.
// The peer is a QListView in icon mode, one row, uniform item sizes, per-pixel scrolling.
#include "KvLayoutSelector.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QListView>
#include <QPaintEvent>
#include <QPixmap>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include <benchmark/benchmark.h>
#include <cmath>
#include <vector>

namespace {

constexpr QSize kSize(1920, 110);
constexpr SIZE kLayoutSize(1920, 1080);
constexpr QSize kThumbSize(158, 89); ///< as the host has them, and as they are shown
constexpr int kMany = 10000;
constexpr int kFew = 13; ///< 12.1 thumbnails of 158 pixels fill the view

constexpr QSize kLargeThumbSize(480, 270); ///< or larger ones, which have to be scaled

/// Sixteen pictures of the host's, in turn.
std::vector<QImage> MakeImages(QSize size)
{
    std::vector<QImage> made;
    for (int index = 0; index < 16; ++index) {
        QImage image(size, QImage::Format_ARGB32);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                image.setPixel(x, y, qRgb((x * 3 + index * 40) & 255, (y * 5) & 255, (x ^ y) & 255));
        made.push_back(image);
    }
    return made;
}

const std::vector<QImage>& Images()
{
    static const std::vector<QImage> images = MakeImages(kThumbSize);
    return images;
}

const std::vector<QImage>& LargeImages()
{
    static const std::vector<QImage> images = MakeImages(kLargeThumbSize);
    return images;
}

class Thumb : public IKvThumbImage
{
public:
    explicit Thumb(const QImage& image) : m_image(image) {}
    int Lock(UINT& width, UINT& height, int& stride, const DWORD*& pixels) override
    {
        width = static_cast<UINT>(m_image.width());
        height = static_cast<UINT>(m_image.height());
        stride = static_cast<int>(m_image.bytesPerLine());
        pixels = reinterpret_cast<const DWORD*>(m_image.constBits());
        return 1;
    }
    void Unlock() override {}
    int Release() override { return 0; } // the host keeps them

private:
    const QImage& m_image;
};

class Layouts : public IKvLayoutSelectorData
{
public:
    Layouts(int layoutCount, const std::vector<QImage>& images) : count(layoutCount)
    {
        for (const QImage& image : images)
            m_thumbs.emplace_back(image);
    }
    int AddRef() override { return 2; } // outlives every strip
    int Release() override { return 1; }
    int GetCount() override { return count; }
    BOOL GetUnit(int index, wchar_t name[64], IKvThumbImage** thumbnail, IKvThumbImage**) override
    {
        const std::wstring text = L"Page " + std::to_wstring(index);
        text.copy(name, 63);
        *thumbnail = &m_thumbs[static_cast<std::size_t>(index) % m_thumbs.size()];
        return 1;
    }
    BOOL IsSelected(int index) override { return index == 3 ? 1 : 0; }
    int Select(int, BOOL) override { return 1; }

    int count;

private:
    std::vector<Thumb> m_thumbs;
};

/// Counts what a widget is asked to paint.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    void WaitForFrame()
    {
        const int before = paints;
        while (paints == before)
            QApplication::processEvents();
    }
    int paints = 0;
};

void SendWheel(QWidget& widget, int delta)
{
    const QPointF at(200, 40);
    QWheelEvent wheel(at, widget.mapToGlobal(at), {}, {0, delta}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &wheel);
}

class OurStrip : public CKvLayoutSelector
{
public:
    explicit OurStrip(int count, const std::vector<QImage>& images = Images()) : m_layouts(count, images)
    {
        resize(kSize);
        Create({0, 0, kSize.width(), kSize.height()}, 1, nullptr, WS_VISIBLE);
        SetData(kLayoutSize, &m_layouts);
        EnableSelect(1);
        show();
    }
    ~OurStrip() override { SetData({}, nullptr); }
    QWidget& Canvas() { return *this; }
    void RequestFrame() { EnableSelect(1); }
    void Insert(int)
    {
        ++m_layouts.count;
        UpdateScroll();
    }
    int Count() { return m_layouts.count; }
    bool IsPainted(const QImage& picture)
    {
        RECT rect;
        return _GetThumbRect(1, &rect) == 1 && picture.pixel(rect.left + 80, rect.top + 40) != 0xFF2B2B2Eu;
    }

private:
    Layouts m_layouts;
};

class Model : public QAbstractListModel
{
public:
    explicit Model(int count) : m_count(count)
    {
        for (const QImage& image : Images())
            m_pictures.push_back(QPixmap::fromImage(image));
    }
    int rowCount(const QModelIndex&) const override { return m_count; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role == Qt::DisplayRole)
            return QStringLiteral("Page %1").arg(index.row());
        if (role == Qt::DecorationRole)
            return m_pictures[static_cast<std::size_t>(index.row()) % m_pictures.size()];
        return {};
    }
    void Insert(int at)
    {
        beginInsertRows({}, at, at);
        ++m_count;
        endInsertRows();
    }

private:
    int m_count;
    std::vector<QPixmap> m_pictures; ///< ready in the size that is shown
};

class View : public QListView
{
public:
    explicit View(int count) : m_model(count)
    {
        setViewMode(IconMode);
        setFlow(LeftToRight);
        setWrapping(false);
        setMovement(Static);
        setUniformItemSizes(true);
        setIconSize(kThumbSize);
        setSpacing(2);
        setHorizontalScrollMode(ScrollPerPixel);
        setModel(&m_model);
        resize(kSize);
        show();
    }
    QWidget& Canvas() { return *viewport(); }
    void RequestFrame() { viewport()->update(); }
    void Insert(int at) { m_model.Insert(at); }
    int Count() { return m_model.rowCount({}); }

private:
    Model m_model;
};

template <typename Strip>
void Frame(benchmark::State& state)
{
    Strip strip(static_cast<int>(state.range(0)));
    PaintCounter counter(strip.Canvas());
    counter.WaitForFrame();
    QApplication::processEvents();
    for (auto _ : state) {
        strip.RequestFrame();
        counter.WaitForFrame();
    }
}
BENCHMARK(Frame<OurStrip>)->Arg(kFew)->Arg(kMany)->Unit(benchmark::kMicrosecond);
BENCHMARK(Frame<View>)->Arg(kFew)->Arg(kMany)->Unit(benchmark::kMicrosecond);

// In the middle; ours asks the host for everything in view again.
template <typename Strip>
void Insertion(benchmark::State& state)
{
    Strip strip(kMany);
    PaintCounter counter(strip.Canvas());
    counter.WaitForFrame();
    QApplication::processEvents();
    int inserted = 0;
    for (auto _ : state) {
        strip.Insert(kMany / 2);
        counter.WaitForFrame();
        ++inserted;
    }
    if (strip.Count() != kMany + inserted)
        state.SkipWithError("not what was inserted");
}
BENCHMARK(Insertion<OurStrip>)->Unit(benchmark::kMicrosecond);
BENCHMARK(Insertion<View>)->Unit(benchmark::kMicrosecond);

void InsertionLargeThumbs(benchmark::State& state)
{
    OurStrip strip(kMany, LargeImages());
    PaintCounter counter(strip.Canvas());
    counter.WaitForFrame();
    for (auto _ : state) {
        strip.Insert(kMany / 2);
        counter.WaitForFrame();
    }
}
BENCHMARK(InsertionLargeThumbs)->Unit(benchmark::kMicrosecond);

// Notches one way to the end, so that each brings layouts into view that are not kept.
template <typename Strip>
void Wheel(benchmark::State& state)
{
    Strip strip(1'000'000);
    PaintCounter counter(strip.Canvas());
    counter.WaitForFrame();
    QApplication::processEvents();
    for (auto _ : state) {
        SendWheel(strip.Canvas(), -120);
        counter.WaitForFrame();
    }
}
BENCHMARK(Wheel<OurStrip>)->Unit(benchmark::kMicrosecond);

// The same place again and again: what is in view is kept.
void WheelCached(benchmark::State& state)
{
    OurStrip strip(kMany);
    PaintCounter counter(strip.Canvas());
    counter.WaitForFrame();
    QApplication::processEvents();
    int delta = -120;
    for (auto _ : state) {
        SendWheel(strip.Canvas(), delta);
        counter.WaitForFrame();
        delta = -delta;
    }
    if (!strip.IsPainted(strip.grab().toImage()))
        state.SkipWithError("nothing painted");
}
BENCHMARK(WheelCached)->Unit(benchmark::kMicrosecond);

} // namespace
