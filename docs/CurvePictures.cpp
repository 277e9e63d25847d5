// Pictures of the ease window, the ease dialog and the keyframe strip in their states.
#include "KvButtons.h"
#include "KvKeyFrameCtrl.h"
#include "KvParamBezierCtrlDlg.h"
#include "KvParamBezierWnd.h"
#include "Pictures.h"

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int kMargin = 16;
constexpr QSize kEaseSize(480, 300);
constexpr double kFrame = 1 / 25.0; // seconds

/// Opacity from 0 to 1 within two seconds.
class Segment : public IKvParamBezierInfo
{
public:
    explicit Segment(bool locked) : m_locked(locked) {}

    int GetCurve(double points[8], double& minimum, double& maximum, std::uint32_t& lock,
                 std::uint32_t& kind) override
    {
        constexpr double kPoints[] = {1, 0, 1.9, 0.05, 2.2, 0.98, 3, 1};
        std::copy(std::begin(kPoints), std::end(kPoints), points);
        minimum = 0;
        maximum = 1;
        lock = m_locked;
        kind = 4;
        return 1;
    }

private:
    bool m_locked;
};

class EaseScene
{
public:
    explicit EaseScene(bool locked = false) : m_segment(locked), m_control(&m_segment, nullptr)
    {
        m_window.resize(kEaseSize + QSize(2 * kMargin, 2 * kMargin));
        m_control.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, QRect(QPoint(kMargin, kMargin), kEaseSize),
                         &m_window, 1);
        m_window.show();
    }

    CKvParamBezierWnd& Control() { return m_control; }
    QWidget& Window() { return m_window; }
    /// The middle of a handle: start key, its tangent, the end key's tangent, end key.
    QPointF Handle(int index)
    {
        const QAccessibleInterface* control = QAccessible::queryAccessibleInterface(&m_control);
        return m_control.mapFromGlobal(control->child(index)->rect().toRectF().center());
    }
    void Drag(int handle, QPointF by)
    {
        const QPointF from = Handle(handle);
        SendMouse(m_control, QEvent::MouseButtonPress, from);
        SendMouse(m_control, QEvent::MouseMove, from + by / 2);
        SendMouse(m_control, QEvent::MouseMove, from + by);
    }
    void Release(QPointF at) { SendMouse(m_control, QEvent::MouseButtonRelease, at); }
    void Zoom(int notches)
    {
        const QPointF at(m_control.rect().center());
        QWheelEvent event(at, m_control.mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&m_control, &event);
    }

private:
    QWidget m_window;
    Segment m_segment;
    CKvParamBezierWnd m_control; // dies before the window
};

bool SaveEaseWindow(const Pictures& pictures)
{
    EaseScene plain;
    EaseScene dragging;
    dragging.Drag(1, {60, -40});
    EaseScene locked(true);
    locked.Drag(2, {-120, 40});
    EaseScene zoomed;
    zoomed.Control().SetFrameLength(kFrame);
    zoomed.Control().ShowSpeed(1);
    zoomed.Control().ShowInitialCurve(1);
    zoomed.Drag(1, {-60, -60});
    zoomed.Release(zoomed.Handle(1));
    zoomed.Zoom(-3);
    return pictures.Save(plain.Window(), "ease") && pictures.Save(dragging.Window(), "ease-dragging") &&
           pictures.Save(locked.Window(), "ease-locked") && pictures.Save(zoomed.Window(), "ease-zoomed");
}

/// The parameter that the dialog edits, between others before and after.
class Parameter : public IKvDataOperator
{
public:
    int GetEaseData(const wchar_t*, const wchar_t*, SKvParamEaseData& data) override
    {
        data = {4, 0.4, -0.02, 0.45, 0.05, 1, 0, 3, 1, 0, 1, 0};
        return 1;
    }
    int CanGoPrevKey(const wchar_t*, const wchar_t*) override { return 1; }
};

bool SaveEaseDialog(const Pictures& pictures)
{
    Parameter parameter;
    CKvParamBezierCtrlDlg dialog(&parameter, L"title", L"opacity", nullptr);
    dialog.Create(kKvParamBezierDialog, nullptr);
    dialog.show();
    dialog.UpdateDialogControls();
    return pictures.Save(dialog, "ease-dialog");
}

/// Strips beside what they show.
class StripScene
{
public:
    StripScene() { m_window.resize(2 * kColumn, kMargin + 8 * kRow); }

    QWidget& Window() { return m_window; }
    void Label(const char* text, QPoint at)
    {
        auto* label = new QLabel(QLatin1String(text), &m_window);
        label->setGeometry(at.x(), at.y() - 3, kColumn - kMargin, 20);
    }
    CKvKeyFrameCtrl& AddAt(QPoint at, bool vertical = false)
    {
        auto* strip = new CKvKeyFrameCtrl; // the window owns it
        strip->SetVerticle(vertical);
        strip->setGeometry(QRect(at, strip->sizeHint()));
        strip->Create(1, &m_window, WS_CHILD | WS_VISIBLE);
        return *strip;
    }
    /// A strip that is on, in the next row.
    CKvKeyFrameCtrl& Add(const char* text, bool atKey)
    {
        const int y = kMargin + kRow * m_rows++;
        Label(text, {kMargin, y});
        CKvKeyFrameCtrl& strip = AddAt({kColumn, y});
        strip.SetToggleCheck(1);
        strip.SetKeyOperatorCheck(atKey);
        return strip;
    }
    static CKvBitmapButton& Button(CKvKeyFrameCtrl& strip, UINT id)
    {
        return *static_cast<CKvBitmapButton*>(KvGetDlgItem(&strip, id));
    }

    static constexpr int kRow = 24;
    static constexpr int kColumn = 160;

private:
    QWidget m_window;
    int m_rows = 0;
};

bool SaveStrip(const Pictures& pictures)
{
    StripScene scene;
    scene.Add("Not animated", true).SetToggleCheck(0);
    scene.Add("A key at this time", true);
    scene.Add("Between keys", false);
    scene.Add("At the last key", true).EnableNextKeyCtrl(0);
    scene.Add("Disabled", true).setEnabled(false);
    CKvKeyFrameCtrl& hovered = scene.Add("Under the pointer", false);
    StripScene::Button(hovered, kKvKeyFrameOperatorButton).setAttribute(Qt::WA_UnderMouse);
    CKvKeyFrameCtrl& pressed = scene.Add("Pressed", false);
    StripScene::Button(pressed, kKvKeyFrameOperatorButton).setDown(true);
    CKvKeyFrameCtrl& focused = scene.Add("Keyboard focus", true);
    const QPoint vertical(StripScene::kColumn + 88, kMargin);
    scene.Label("Vertical", vertical);
    scene.AddAt(vertical + QPoint(0, StripScene::kRow), true);
    scene.AddAt(vertical + QPoint(24, StripScene::kRow), true).SetToggleCheck(1);
    scene.Window().show();
    QApplication::setActiveWindow(&scene.Window());
    StripScene::Button(focused, kKvKeyFrameToggleButton).setFocus();
    return pictures.Save(scene.Window(), "keyframe-strip");
}

} // namespace

bool SaveCurves(const Pictures& pictures)
{
    return SaveEaseWindow(pictures) && SaveEaseDialog(pictures) && SaveStrip(pictures);
}
