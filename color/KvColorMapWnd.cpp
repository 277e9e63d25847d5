#include "KvColorMapWnd.h"

#include "color/ColourText.h"
#include "color/KvColorMapWndImpl.h"
#include "platform/VirtualKey.h"

namespace {

kv::ColourState WithRgb(kv::ColourState colour, const kv::Rgb& rgb)
{
    colour.SetRgb(rgb, kv::LostHue::Kept);
    return colour;
}

kv::ColourState Entered(kv::ColourState colour, kv::ColourChannel channel, int value)
{
    colour.Enter(channel, value);
    return colour;
}

} // namespace

CKvColorMapWnd::CKvColorMapWnd() : m_impl(std::make_unique<Impl>(*this))
{
    setFocusPolicy(Qt::ClickFocus);
}

CKvColorMapWnd::CKvColorMapWnd(QWidget* parent) : CKvColorMapWnd()
{
    CreateWhenShown(parent);
}

CKvColorMapWnd::~CKvColorMapWnd() = default;

int CKvColorMapWnd::Create(UINT style, CWnd* parent, DWORD id)
{
    return CreateWnd(style, {}, parent, id);
}

int CKvColorMapWnd::CreateSelf()
{
    return Create(0, parentWidget(), GetDlgCtrlID());
}

void CKvColorMapWnd::SetType(int type)
{
    const bool isOne = type == kKvColorMapField || type == kKvColorMapSlider || type == kKvColorMapAlpha;
    if (!isOne || type == m_impl->type)
        return;
    m_impl->type = type;
    m_impl->access.NamesChanged();
    updateGeometry();
    update();
}

int CKvColorMapWnd::GetType() const
{
    return m_impl->type;
}

void CKvColorMapWnd::SetLockType(int lock)
{
    const int first = m_impl->IsField() ? kKvLockFieldR : kKvLockSliderR;
    if (m_impl->type == kKvColorMapAlpha || lock < first || lock > first + 5 || lock == GetLockType())
        return;
    const int channel = lock - first;
    constexpr int kChannels = kv::ColourPanelModel::kChannels;
    m_impl->model.SetMode(channel < kChannels ? kv::ColourMode::Rgb : kv::ColourMode::Hsb);
    m_impl->model.SetChannel(channel % kChannels);
    m_impl->access.NamesChanged();
    update();
}

int CKvColorMapWnd::GetLockType() const
{
    if (m_impl->IsField())
        return m_impl->model.MapLock();
    return m_impl->type == kKvColorMapSlider ? m_impl->model.MapSliderLock() : 0;
}

CKvColorMapWnd::Map CKvColorMapWnd::ShownMap() const
{
    return m_impl->type == kKvColorMapAlpha ? AlphaSlider : static_cast<Map>(GetLockType());
}

void CKvColorMapWnd::SetMap(Map map)
{
    if (map == AlphaSlider) {
        SetType(kKvColorMapAlpha);
        return;
    }
    SetType(map < SliderRed ? kKvColorMapField : kKvColorMapSlider);
    SetLockType(map);
}

void CKvColorMapWnd::SetValue(DWORD colour)
{
    kv::ColourState state = m_impl->Colour();
    state.SetValue(colour);
    m_impl->Set(state);
}

DWORD CKvColorMapWnd::GetValue() const
{
    return m_impl->model.Value();
}

void CKvColorMapWnd::SetR(int value)
{
    m_impl->Set(Entered(m_impl->Colour(), kv::ColourChannel::Red, value));
}

void CKvColorMapWnd::SetG(int value)
{
    m_impl->Set(Entered(m_impl->Colour(), kv::ColourChannel::Green, value));
}

void CKvColorMapWnd::SetB(int value)
{
    m_impl->Set(Entered(m_impl->Colour(), kv::ColourChannel::Blue, value));
}

void CKvColorMapWnd::SetA(int value)
{
    m_impl->Set(Entered(m_impl->Colour(), kv::ColourChannel::Alpha, value));
}

int CKvColorMapWnd::GetR() const
{
    return m_impl->Colour().Shown(kv::ColourChannel::Red);
}

int CKvColorMapWnd::GetG() const
{
    return m_impl->Colour().Shown(kv::ColourChannel::Green);
}

int CKvColorMapWnd::GetB() const
{
    return m_impl->Colour().Shown(kv::ColourChannel::Blue);
}

int CKvColorMapWnd::GetA() const
{
    return m_impl->Colour().Shown(kv::ColourChannel::Alpha);
}

double CKvColorMapWnd::GetHue() const
{
    return m_impl->Colour().GetHsb().hue;
}

double CKvColorMapWnd::GetSat() const
{
    return m_impl->Colour().GetHsb().saturation;
}

double CKvColorMapWnd::GetBri() const
{
    return m_impl->Colour().GetHsb().brightness;
}

void CKvColorMapWnd::SetHSBValue(double hue, double sat, double bri)
{
    const double inRange = hue >= 0 ? std::min(hue, 360.0) : 0.0;
    kv::ColourState state = m_impl->Colour();
    state.SetHsb({inRange, sat, bri});
    m_impl->Set(state);
}

void CKvColorMapWnd::GetHPValue(double& red, double& green, double& blue) const
{
    const kv::Rgb& rgb = m_impl->Colour().GetRgb();
    red = rgb.red;
    green = rgb.green;
    blue = rgb.blue;
}

void CKvColorMapWnd::SetHPValue(double red, double green, double blue)
{
    m_impl->Set(WithRgb(m_impl->Colour(), {red, green, blue}));
}

void CKvColorMapWnd::DrawPan()
{
    m_impl->painter.Invalidate();
    update();
}

void CKvColorMapWnd::RGBToHSB(double r, double g, double b, double& hue, double& sat, double& bri)
{
    const kv::Hsb hsb = kv::RgbToHsb(kv::InRange(kv::Rgb{r, g, b}));
    hue = hsb.hue;
    sat = hsb.saturation;
    bri = hsb.brightness;
}

void CKvColorMapWnd::HSBToRGB(double hue, double sat, double bri, double& r, double& g, double& b)
{
    const kv::Rgb rgb = kv::HsbToRgb(kv::InRange(kv::Hsb{hue, sat, bri}));
    r = rgb.red;
    g = rgb.green;
    b = rgb.blue;
}

UINT CKvColorMapWnd::OnGetDlgCode()
{
    return DLGC_WANTARROWS;
}

QSize CKvColorMapWnd::sizeHint() const
{
    return m_impl->IsField() ? QSize(128, 128) : QSize(16, 128);
}

QSize CKvColorMapWnd::minimumSizeHint() const
{
    return m_impl->IsField() ? QSize(32, 32) : QSize(12, 32);
}

void CKvColorMapWnd::OnPaint(Graphics& graphics)
{
    m_impl->painter.Paint(graphics, m_impl->Shape(), m_impl->Colour(), isEnabled(), hasFocus());
}

void CKvColorMapWnd::OnSize(int, int)
{
    update();
}

void CKvColorMapWnd::OnLButtonDown(Qt::KeyboardModifiers, CPoint point)
{
    if (!m_impl->EndDrag())
        return;
    SetCapture();
    m_impl->DragTo(point);
}

void CKvColorMapWnd::OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (m_impl->dragFrom)
        m_impl->EndDrag();
    else
        CKvWnd::OnLButtonUp(modifiers, point);
}

void CKvColorMapWnd::OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point)
{
    if (m_impl->dragFrom)
        m_impl->DragTo(point);
    else
        CKvWnd::OnMouseMove(modifiers, point);
}

void CKvColorMapWnd::OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point)
{
    if (m_impl->dragFrom)
        return;
    if (!hasFocus()) { // else scrolling past it would change the colour
        CKvWnd::OnMouseWheel(modifiers, delta, point);
        return;
    }
    const int steps = m_impl->wheel.Turn(delta);
    if (steps == 0)
        return;
    const bool sideways = m_impl->IsField() && modifiers.testFlag(Qt::AltModifier);
    sideways ? m_impl->Step(steps, 0) : m_impl->Step(0, steps);
}

BOOL CKvColorMapWnd::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    if (m_impl->dragFrom) {
        if (key == VK_ESCAPE)
            m_impl->CancelDrag();
        return 1;
    }
    return m_impl->RunKey(key, modifiers) ? 1 : 0;
}

bool CKvColorMapWnd::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT) const
{
    if (m_impl->dragFrom)
        return key == VK_ESCAPE;
    return !kv::IsCommand(modifiers) &&
           (kv::IsArrow(key) || key == VK_PRIOR || key == VK_NEXT || key == VK_HOME || key == VK_END);
}

void CKvColorMapWnd::OnSetFocus()
{
    update();
    m_impl->access.FocusChanged();
}

void CKvColorMapWnd::OnKillFocus()
{
    update();
}

void CKvColorMapWnd::OnEnable(BOOL)
{
    update();
}

void CKvColorMapWnd::OnCaptureChanged()
{
    m_impl->EndDrag();
}

void CKvColorMapWnd::OnSkinChanged()
{
    m_impl->access.NamesChanged();
}

QString CKvColorMapWnd::ToolTipAt(CPoint point, CRect& area) const
{
    area = {point.x, point.y, point.x + 1, point.y + 1};
    const kv::ColourState there = m_impl->ColourAt(point);
    const kv::ColourMapShape shape = m_impl->Shape();
    const auto text = [&there](kv::ColourChannel channel) {
        return kv::ChannelText(channel, there.Shown(channel));
    };
    QString tip;
    if (const auto right = kv::ChannelToTheRight(shape))
        tip = text(*right) + QStringLiteral(", ");
    return tip + text(kv::ChannelUpwards(shape)) + u'\n' + KvToQString(kv::ColourText(there.Value()));
}
