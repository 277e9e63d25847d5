// The pictures of the layout strip.
#include "KvLayoutSelector.h"
#include "Pictures.h"
#include "media/Ref.h"
#include "pages/LentPicture.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <functional>

namespace {

constexpr int kMargin = 16;
constexpr QSize kRowSize(620, 112);
constexpr QSize kColumnSize(150, 330);
constexpr SIZE kLayoutSize(1920, 1080);

// The strip wants straight alpha.
IKvThumbImage* Lent(const QImage& image)
{
    return new titler::LentPicture(image.convertToFormat(QImage::Format_ARGB32));
}

QImage LayoutPicture(int index)
{
    constexpr QColor grounds[][2] = {{QColor(38, 30, 84), QColor(209, 52, 91)},
                                     {QColor(16, 42, 67), QColor(36, 123, 160)},
                                     {QColor(244, 241, 232), QColor(214, 206, 186)},
                                     {QColor(20, 20, 22), QColor(44, 44, 48)}};
    const auto& ground = grounds[index % 4];
    const bool isLight = ground[0].lightness() > 128;
    QImage image(320, 180, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    QLinearGradient shade(0, 0, 320, 180);
    shade.setColorAt(0, ground[0]);
    shade.setColorAt(1, ground[1]);
    painter.fillRect(image.rect(), shade);
    const QColor line = isLight ? QColor(60, 60, 64) : QColor(240, 240, 244);
    painter.fillRect(QRect(40, 76, 140 + index * 37 % 90, 18), line);
    painter.fillRect(QRect(40, 104, 90 + index * 53 % 110, 8), line);
    return image;
}

QImage CheckMark()
{
    QImage image(48, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(52, 112, 90));
    painter.drawEllipse(4, 4, 40, 40);
    painter.setPen(QPen(Qt::white, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({{14, 25}, {21, 32}, {34, 17}}));
    return image;
}

/// The pages of a film's titles; the fourth has no thumbnail yet.
class Pages : public titler::Counted<IKvLayoutSelectorData>
{
public:
    int GetCount() override { return 24; }
    BOOL GetUnit(int index, wchar_t name[64], IKvThumbImage** thumbnail, IKvThumbImage** mark) override
    {
        if (index == 3)
            return 0;
        constexpr const wchar_t* names[] = {L"Opening", L"Cast", L"Dedication to the crew", L"", L"Thanks"};
        const std::wstring text = names[std::min(index, 4)];
        std::copy(text.begin(), text.end(), name);
        *thumbnail = Lent(LayoutPicture(index));
        if (index == 1)
            *mark = Lent(CheckMark());
        return 1;
    }
    BOOL IsSelected(int index) override { return index == m_selected ? 1 : 0; }
    int Select(int index, BOOL) override
    {
        m_selected = index;
        return 1;
    }

private:
    int m_selected = -1;
};

class Scene
{
public:
    Scene(QSize size, bool hasData)
    {
        m_window.resize(size + QSize(2 * kMargin, 2 * kMargin));
        m_strip.Create(QRect(QPoint(kMargin, kMargin), size), 1, &m_window,
                       WS_CHILD | WS_VISIBLE | WS_TABSTOP);
        if (hasData) {
            auto* pages = new Pages;
            m_strip.SetData(kLayoutSize, pages);
            pages->Release();
            m_strip.EnableSelect(1);
        }
        m_window.show();
        QApplication::setActiveWindow(&m_window);
        m_strip.clearFocus();
    }

    CKvLayoutSelector& Strip() { return m_strip; }
    QWidget& Window() { return m_window; }
    void Mouse(QEvent::Type type, QPointF at) { SendMouse(m_strip, type, at); }
    void Click(QPointF at)
    {
        Mouse(QEvent::MouseButtonPress, at);
        Mouse(QEvent::MouseButtonRelease, at);
    }
    void Key(Qt::Key key)
    {
        QKeyEvent press(QEvent::KeyPress, key, {});
        QApplication::sendEvent(&m_strip, &press);
    }

private:
    QWidget m_window;
    CKvLayoutSelector m_strip; // dies before the window
};

bool SaveStrip(const Pictures& pictures, const char* name, QSize size, bool hasData,
               const std::function<void(Scene&)>& act)
{
    Scene scene(size, hasData);
    act(scene);
    return pictures.Save(scene.Window(), name);
}

void HoverWithoutFocus(Scene& scene, QPointF at)
{
    QMouseEvent move(QEvent::MouseMove, at, scene.Strip().mapToGlobal(at), Qt::NoButton, {}, {});
    QApplication::sendEvent(&scene.Strip(), &move);
    scene.Strip().clearFocus();
}

} // namespace

bool SaveLayouts(const Pictures& pictures)
{
    const QPointF second(230, 30);
    return SaveStrip(pictures, "layouts", kRowSize, true, [](Scene&) {}) &&
           SaveStrip(pictures, "layouts-hovered", kRowSize, true,
                     [&](Scene& scene) { HoverWithoutFocus(scene, second); }) &&
           SaveStrip(pictures, "layouts-selected", kRowSize, true,
                     [&](Scene& scene) {
                         scene.Click(second);
                         scene.Strip().clearFocus();
                     }) &&
           SaveStrip(pictures, "layouts-focus", kRowSize, true,
                     [](Scene& scene) {
                         scene.Strip().setFocus();
                         scene.Key(Qt::Key_Right);
                         scene.Key(Qt::Key_Right);
                     }) &&
           SaveStrip(pictures, "layouts-disabled", kRowSize, true,
                     [](Scene& scene) { scene.Strip().setEnabled(false); }) &&
           SaveStrip(pictures, "layouts-empty", kRowSize, false, [](Scene&) {}) &&
           SaveStrip(pictures, "layouts-column", kColumnSize, true, [](Scene& scene) {
               scene.Click({40, 120});
           });
}
