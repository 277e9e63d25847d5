// The pictures of the colour family: swatch grid and four-corner control.
#include "KvQuadGradCtrl.h"
#include "KvSolidColorTemplate.h"
#include "Pictures.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTemporaryDir>

#include <functional>

namespace {

constexpr int kMargin = 16;
constexpr QSize kGridSize(112, 144);
constexpr QSize kQuadSize(320, 120);

/// A control on the skin's ground.
template <typename Control>
class Scene
{
public:
    explicit Scene(QSize size)
    {
        m_window.resize(size + QSize(2 * kMargin, 2 * kMargin));
        m_control.setGeometry(QRect(QPoint(kMargin, kMargin), size));
        m_control.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &m_window, 1);
        m_window.show();
        QApplication::setActiveWindow(&m_window);
        m_control.clearFocus();
    }

    Control& operator*() { return m_control; }
    Control* operator->() { return &m_control; }
    QWidget& Window() { return m_window; }
    void Mouse(QEvent::Type type, QPointF at) { SendMouse(m_control, type, at); }
    void DragOver(QPoint at)
    {
        m_dragged.setText(QStringLiteral("#ff8000"));
        QDragEnterEvent event(at, Qt::CopyAction, &m_dragged, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&m_control, &event);
    }

private:
    QWidget m_window;
    Control m_control; // dies before the window
    QMimeData m_dragged;
};

template <typename Control>
bool SaveScene(const Pictures& pictures, const char* name, QSize size,
               const std::function<void(Scene<Control>&)>& act)
{
    Scene<Control> scene(size);
    act(scene);
    return pictures.Save(scene.Window(), name);
}

bool SaveSwatches(const Pictures& pictures)
{
    QTemporaryDir folder;
    CKvSolidColorTemplate::SetSystemFolder(KvFromQString(folder.path()));
    if (!CKvSolidColorTemplate::InstallFactoryTemplate())
        return false;
    using Grid = Scene<CKvSolidColorTemplate>;
    const auto save = [&](const char* name, const std::function<void(Grid&)>& act) {
        return SaveScene<CKvSolidColorTemplate>(pictures, name, kGridSize, [&](Grid& scene) {
            scene->SetNumRect(4, 9);
            scene->InitialData(1);
            act(scene);
        });
    };
    const QPointF cell(42, 24);
    const bool saved =
        save("swatches", [](Grid&) {}) &&
        save("swatches-hovered", [&](Grid& scene) { scene.Mouse(QEvent::MouseMove, cell); }) &&
        save("swatches-pressed", [&](Grid& scene) { scene.Mouse(QEvent::MouseButtonPress, cell); }) &&
        save("swatches-focus", [](Grid& scene) { scene->setFocus(); }) &&
        save("swatches-drop", [&](Grid& scene) { scene.DragOver(cell.toPoint()); }) &&
        save("swatches-translucent",
             [](Grid& scene) {
                 for (int index = 0; index < 8; ++index)
                     scene->SetCellColor(index, (scene->GetCellColor(index) & 0xFFFFFFu) | 0x60000000u);
             }) &&
        save("swatches-disabled", [](Grid& scene) { scene->setEnabled(false); });
    CKvSolidColorTemplate::SetSystemFolder({});
    return saved;
}

bool SaveQuads(const Pictures& pictures)
{
    using Quad = Scene<CKvQuadGradCtrl>;
    const auto save = [&](const char* name, const std::function<void(Quad&)>& act) {
        return SaveScene<CKvQuadGradCtrl>(pictures, name, kQuadSize, act);
    };
    const QPoint last(kQuadSize.width() - 8, kQuadSize.height() - 8);
    return save("quad", [](Quad&) {}) && save("quad-focus", [](Quad& scene) { scene->setFocus(); }) &&
           save("quad-translucent",
                [](Quad& scene) {
                    const DWORD corners[] = {0xFFFFC24Bu, 0x80E0457Bu, 0x00FFFFFFu, 0xFF203A8Fu};
                    scene->SetData(corners);
                    scene->SetSelectedCorner(3);
                }) &&
           save("quad-none", [](Quad& scene) { scene->SetSelectedCorner(-1); }) &&
           save("quad-drop", [&](Quad& scene) { scene.DragOver(last); }) &&
           save("quad-disabled", [](Quad& scene) { scene->setEnabled(false); });
}

} // namespace

bool SaveColours(const Pictures& pictures)
{
    return SaveSwatches(pictures) && SaveQuads(pictures);
}
