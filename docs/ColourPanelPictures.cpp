// Pictures of the colour panel in its modes and states.
#include "KvButtons.h"
#include "KvColorPanel.h"
#include "KvParamEdit.h"
#include "KvSolidColorTemplate.h"
#include "Pictures.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTemporaryDir>

#include <functional>

namespace {

constexpr DWORD kColour = 0xB0D1345Bu;
constexpr UINT kMap = 14023;
constexpr UINT kThirdEdit = 14028;
constexpr UINT kSecondChannel = 14033;

/// A panel in a window of its size.
class PanelScene
{
public:
    explicit PanelScene(bool hsb)
    {
        m_panel.SetInitialMode(hsb ? 1 : 0);
        m_panel.Create(&m_window);
        m_panel.SetColor(kColour);
        Resize({});
        m_panel.show();
        m_window.show();
        QApplication::setActiveWindow(&m_window);
    }

    CKvColorPanel& Panel() { return m_panel; }
    QWidget& Window() { return m_window; }
    QWidget& Child(UINT id) { return *m_panel.GetDlgItem(id); }
    void Resize(QSize larger)
    {
        m_panel.resize(m_panel.minimumSize() + larger);
        m_window.resize(m_panel.size());
    }

private:
    QWidget m_window;
    CKvColorPanel m_panel; // dies before the window
};

bool SavePanel(const Pictures& pictures, const char* name, bool hsb,
               const std::function<void(PanelScene&)>& act)
{
    PanelScene scene(hsb);
    act(scene);
    return pictures.Save(scene.Window(), name);
}

void DragOnMap(PanelScene& scene)
{
    QWidget& map = scene.Child(kMap);
    map.setFocus();
    SendMouse(map, QEvent::MouseButtonPress, QPointF(10, 10));
    SendMouse(map, QEvent::MouseMove, QPointF(map.width() * 0.6, map.height() * 0.3));
}

void TypeNumber(PanelScene& scene)
{
    auto& line = *scene.Child(kThirdEdit).findChild<QLineEdit*>();
    line.setFocus();
    line.selectAll();
    for (const Qt::Key digit : {Qt::Key_2, Qt::Key_3, Qt::Key_4}) {
        QKeyEvent press(QEvent::KeyPress, digit, Qt::NoModifier, QString(QChar(digit)));
        QApplication::sendEvent(&line, &press);
    }
}

} // namespace

bool SaveColourPanel(const Pictures& pictures)
{
    const auto state = [](int number) {
        return [number](PanelScene& scene) {
            scene.Panel().SetEnableState(static_cast<EKvColorPanelState>(number));
        };
    };
    // The library's own swatches, whatever the user has.
    const QTemporaryDir folder;
    CKvSolidColorTemplate::SetSystemFolder(KvFromQString(folder.path()));
    CKvSolidColorTemplate::InstallFactoryTemplate();
    CKvSolidColorTemplate().InitialData(1);
    return SavePanel(pictures, "colour-panel", false, [](PanelScene&) {}) &&
           SavePanel(pictures, "colour-panel-hsb", true, DragOnMap) &&
           SavePanel(pictures, "colour-panel-channel", true,
                     [](PanelScene& scene) {
                         static_cast<CKvRadioBitmapButton&>(scene.Child(kSecondChannel)).click();
                         scene.Child(kSecondChannel).setFocus(Qt::TabFocusReason);
                     }) &&
           SavePanel(pictures, "colour-panel-typing", false, TypeNumber) &&
           SavePanel(pictures, "colour-panel-colour-only", false, state(kKvColorPanelColour)) &&
           SavePanel(pictures, "colour-panel-alpha-only", false, state(kKvColorPanelAlpha)) &&
           SavePanel(pictures, "colour-panel-disabled", false,
                     [](PanelScene& scene) { scene.Panel().OnEnable(0); }) &&
           SavePanel(pictures, "colour-panel-large", true, [](PanelScene& scene) {
               scene.Resize({160, 80});
           });
}
