#include "KvGradientCtrl.h"

#include "KvMenu.h"
#include "color/GradientBlend.h"
#include "color/GradientColour.h"
#include "color/GradientRaster.h"
#include "color/GradientText.h"
#include "color/KvGradientCtrlImpl.h"
#include "platform/ColourClipboard.h"

#include <QPointer>

#include <utility>

namespace {

constexpr int kBlinkMilliseconds = 500;
constexpr UINT kMenu = 12002;

} // namespace

CKvGradientCtrl::CKvGradientCtrl() : m_impl(std::make_unique<Impl>(*this))
{
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

CKvGradientCtrl::CKvGradientCtrl(QWidget* parent) : CKvGradientCtrl()
{
    CreateWhenShown(parent);
}

CKvGradientCtrl::~CKvGradientCtrl() = default;

int CKvGradientCtrl::Create(UINT style, CWnd* parent, DWORD id)
{
    if (!CKvStatic::Create(style, parent, id))
        return 0;
    RecalcLayout();
    SetTimer(kv::kGradientBlinkTimer, kBlinkMilliseconds);
    return 1;
}

int CKvGradientCtrl::RecalcLayout()
{
    m_impl->layout = kv::GradientLayout(GetClientRect());
    m_impl->RedrawAll();
    return 1;
}

int CKvGradientCtrl::SetDefaultData(int count, const SKvCGGradientKey* keys)
{
    m_impl->model.SetDefaultData(count, keys);
    return 1;
}

int CKvGradientCtrl::SetData(int count, const SKvCGGradientKey* keys)
{
    if (!keys && count > 0)
        return 0;
    if (!m_impl->EndInput())
        return 1;
    m_impl->model.SetData(count, keys);
    m_impl->toldStop = GetSelectedKey();
    m_impl->RedrawAll();
    m_impl->Notify(kKvGradientDataSet, kKvPhaseBegin, m_impl->model.SelectedKey());
    return 1;
}

QString CKvGradientCtrl::StopsText() const
{
    return KvToQString(kv::GradientText(m_impl->model.Keys()));
}

void CKvGradientCtrl::SetStopsText(const QString& text)
{
    const auto keys = kv::ParseGradientText(KvFromQString(text));
    if (!keys || keys->size() > kv::GradientModel::kMaxKeys) {
        qWarning("CKvGradientCtrl: no stops in \"%.80s\"", qUtf8Printable(text));
        return;
    }
    if (!m_impl->EndInput())
        return;
    m_impl->model.SetData(static_cast<int>(keys->size()), keys->data());
    m_impl->toldStop = GetSelectedKey();
    m_impl->RedrawAll();
}

int CKvGradientCtrl::GetData(int& count, SKvCGGradientKey** keys)
{
    count = m_impl->model.Count();
    if (keys)
        *keys = m_impl->model.Data();
    return 1;
}

DWORD CKvGradientCtrl::GetSelectedColor() const
{
    return m_impl->model.SelectedColour();
}

int CKvGradientCtrl::GetSelectedKey() const
{
    return m_impl->model.HasSelection() ? m_impl->model.Selected() : -1;
}

int CKvGradientCtrl::SetSelectedKey(int index)
{
    if (index < 0 || index >= m_impl->model.Count())
        return 0;
    if (index == m_impl->model.Selected() || !m_impl->EndInput())
        return 1;
    // The handler of the drag's end may have taken the stop away.
    const bool selected = m_impl->model.Select(index);
    m_impl->toldStop = GetSelectedKey();
    m_impl->RedrawAll();
    return selected ? 1 : 0;
}

int CKvGradientCtrl::SetColor(DWORD colour)
{
    if (!m_impl->model.SetSelectedColour(colour))
        return 0;
    m_impl->Redraw(kv::GradientPainter::Palette);
    m_impl->Redraw(kv::GradientPainter::KeyStrip);
    m_impl->access.Update();
    return 1;
}

int CKvGradientCtrl::ResetDefault()
{
    if (!m_impl->model.HasDefaults())
        return 0;
    return m_impl->EditOnce([](kv::GradientModel& stops) { return stops.ResetDefault(); }) ? 1 : 0;
}

int CKvGradientCtrl::SetEditing(int editing)
{
    const bool on = editing != 0;
    const bool changed = std::exchange(m_impl->editing, on) != on;
    if (changed && !(on && m_impl->active))
        DrawPalette();
    return 1;
}

int CKvGradientCtrl::IsEditing() const
{
    return m_impl->editing ? 1 : 0;
}

int CKvGradientCtrl::SetActive(int active)
{
    m_impl->active = active != 0;
    DrawPalette();
    return 1;
}

QSize CKvGradientCtrl::sizeHint() const
{
    return {320, 60};
}

QSize CKvGradientCtrl::minimumSizeHint() const
{
    return {80, 40};
}

QGradientStops CKvGradientCtrl::MakeSampleBrush() const
{
    QGradientStops stops;
    for (const kv::BlendEntry& entry : kv::MakeBlend(m_impl->model.Keys(), isEnabled()))
        stops.append({entry.position, QColor::fromRgba(entry.colour)});
    return stops;
}

int CKvGradientCtrl::GetDisplayPos(double position) const
{
    return m_impl->layout.GetDisplayPos(position);
}

DWORD CKvGradientCtrl::MixColor(DWORD a, DWORD b)
{
    return kv::MixColour(a, b);
}

DWORD CKvGradientCtrl::GetDisplayColor(DWORD colour) const
{
    return kv::DisplayColour(colour, isEnabled());
}

void CKvGradientCtrl::SortKeys()
{
    m_impl->model.SortKeys();
    m_impl->RedrawAll();
}

void CKvGradientCtrl::DrawPalette()
{
    m_impl->Redraw(kv::GradientPainter::Palette);
}

void CKvGradientCtrl::DrawMidPointArea()
{
    m_impl->Redraw(kv::GradientPainter::MidStrip);
}

void CKvGradientCtrl::DrawKeyArea()
{
    m_impl->Redraw(kv::GradientPainter::KeyStrip);
}

void CKvGradientCtrl::DrawMidPointPointer(Graphics& graphics, int x, DWORD colour)
{
    kv::DrawSharply(graphics, QRect(x - 4, 0, 9, 11), [&](kv::PixelView pixels, const kv::DeviceGrid& grid) {
        kv::DrawMidPointPointer(pixels, grid, 4, colour);
    });
}

void CKvGradientCtrl::DrawKeyPointer(Graphics& graphics, int x, int y, DWORD colour)
{
    kv::DrawSharply(graphics, QRect(x - 5, y - 10, 11, 12),
                    [&](kv::PixelView pixels, const kv::DeviceGrid& grid) {
                        kv::DrawKeyPointer(pixels, grid, 5, 10, colour);
                    });
}

int CKvGradientCtrl::CheckSelectKey(CPoint point)
{
    if (!m_impl->EndInput())
        return 0;
    const int hit = m_impl->layout.HitKey(m_impl->model, point);
    if (hit < 0)
        return 0;
    m_impl->SelectKey(hit);
    return 1;
}

int CKvGradientCtrl::AddKey(CPoint point)
{
    if (!m_impl->EndInput() || !m_impl->model.CanAdd())
        return 0;
    m_impl->AddKeyAt(m_impl->layout.PositionAt(point.x));
    return 1;
}

int CKvGradientCtrl::MoveMidPoint(CPoint point)
{
    if (!m_impl->drag || m_impl->drag->kind != kv::GradientDrag::MidPoint)
        return 0;
    m_impl->DragTo(point);
    return 1;
}

int CKvGradientCtrl::DeleteCurrentKey()
{
    return m_impl->EditOnce([](kv::GradientModel& stops) { return stops.DeleteCurrentKey(); }) ? 1 : 0;
}

int CKvGradientCtrl::CopyColor()
{
    return m_impl->model.HasSelection() && kv::CopyColour(m_impl->model.SelectedColour()) ? 1 : 0;
}

int CKvGradientCtrl::PasteColor()
{
    const std::optional<std::uint32_t> colour = kv::ClipboardColour();
    return colour && m_impl->Paste(*colour) ? 1 : 0;
}

void CKvGradientCtrl::DoMenu(CPoint point)
{
    const int count = m_impl->model.Count();
    const int selected = m_impl->model.Selected();
    const bool byKey = std::exchange(m_impl->menuByKey, false);
    CKvMenu menu;
    menu.LoadMenu(kMenu);
    const auto enable = [&menu](kv::GradientMenuCommand command, bool enabled) {
        menu.EnableMenuItem(command, enabled ? 1 : 0);
    };
    enable(kv::kGradientPaste, kv::ClipboardHasColour());
    enable(kv::kGradientCut, count >= 3);
    enable(kv::kGradientDelete, count >= 3);
    enable(kv::kGradientSameSpace, count >= 3);
    enable(kv::kGradientExchangeBefore, selected != 0);
    // With the first stop selected the last one is not looked for: a lone stop may be exchanged, with
    // nothing.
    enable(kv::kGradientExchangeAfter, selected == 0 || selected != count - 1);

    const QPointer<CKvGradientCtrl> alive(this);
    const UINT command =
        menu.TrackPopupMenu(TPM_RIGHTBUTTON | TPM_RETURNCMD, CPoint(mapToGlobal(QPoint(point))), this);
    if (!alive)
        return;
    if (command != 0)
        m_impl->RedrawAll();
    m_impl->RunMenuCommand(command, point, byKey);
}

int CKvGradientCtrl::ReverseKeys()
{
    return m_impl->EditOnce([](kv::GradientModel& stops) { return stops.Reverse(), true; }) ? 1 : 0;
}

int CKvGradientCtrl::AddReverse()
{
    return m_impl->EditOnce([](kv::GradientModel& stops) { return stops.Reflect(), true; }) ? 1 : 0;
}

int CKvGradientCtrl::ExchangeColor(BOOL withNext)
{
    return m_impl->EditOnce([withNext](kv::GradientModel& stops) {
        return withNext ? stops.ExchangeAfter() : stops.ExchangeBefore();
    })
               ? 1
               : 0;
}

int CKvGradientCtrl::SameSpace()
{
    return m_impl->EditOnce([](kv::GradientModel& stops) { return stops.SameSpace(); }) ? 1 : 0;
}
