#include "KvQuadGradCtrl.h"

#include "KvMenu.h"
#include "color/ColourDrag.h"
#include "color/GradientPainter.h"
#include "color/GradientRaster.h"
#include "color/KvQuadGradCtrlImpl.h"
#include "color/SwatchTexts.h"
#include "core/TextTables.h"
#include "platform/ColourClipboard.h"
#include "platform/VirtualKey.h"

#include <QDropEvent>
#include <QPointer>

#include <algorithm>

namespace {

constexpr UINT kMenu = 20300;

std::optional<kv::PixelFormat> PixelFormatOf(const QImage& image)
{
    switch (image.format()) {
    case QImage::Format_ARGB32:
        return kv::PixelFormat::Argb32;
    case QImage::Format_ARGB32_Premultiplied:
        return kv::PixelFormat::Argb32Premultiplied;
    case QImage::Format_RGB32:
        return kv::PixelFormat::Rgb32;
    default:
        return std::nullopt;
    }
}

kv::QuadColours ColoursOf(const DWORD corners[4])
{
    kv::QuadColours colours;
    std::copy(corners, corners + colours.size(), colours.begin());
    return colours;
}

bool IsWalk(UINT key, Qt::KeyboardModifiers modifiers)
{
    return kv::IsArrow(key) && kv::HeldModifiers(modifiers) == Qt::NoModifier;
}

} // namespace

void KvFillQuadGradient(QImage& image, const CRect& rect, const DWORD corners[4])
{
    const std::optional<kv::PixelFormat> format = PixelFormatOf(image);
    if (!format || !corners || !(image.devicePixelRatio() > 0))
        return;
    kv::FillQuadGradient(kv::PixelsOf(image), *format, kv::DeviceGrid(image.devicePixelRatio()), rect,
                         ColoursOf(corners));
}

CKvQuadGradCtrl::CKvQuadGradCtrl() : m_impl(std::make_unique<Impl>(*this))
{
    setFocusPolicy(Qt::ClickFocus);
    setAcceptDrops(true);
}

CKvQuadGradCtrl::CKvQuadGradCtrl(QWidget* parent) : CKvQuadGradCtrl()
{
    CreateWhenShown(parent);
}

CKvQuadGradCtrl::~CKvQuadGradCtrl() = default;

int CKvQuadGradCtrl::Create(UINT style, CWnd* parent, DWORD id)
{
    if (!CKvStatic::Create(style, parent, id))
        return 0;
    RecalcLayout();
    return 1;
}

void CKvQuadGradCtrl::RecalcLayout()
{
    m_impl->layout = kv::QuadLayout(GetClientRect());
    m_impl->RedrawAll();
}

void CKvQuadGradCtrl::SetData(const DWORD corners[4])
{
    if (corners && m_impl->model.SetCorners(ColoursOf(corners)))
        m_impl->RedrawAll();
}

void CKvQuadGradCtrl::GetData(DWORD corners[4]) const
{
    if (corners)
        std::copy(m_impl->model.Corners().begin(), m_impl->model.Corners().end(), corners);
}

QColor CKvQuadGradCtrl::CornerColour(std::size_t corner) const
{
    return QColor::fromRgba(m_impl->model.Corners()[corner]);
}

void CKvQuadGradCtrl::SetCornerColour(std::size_t corner, const QColor& colour)
{
    kv::QuadColours corners = m_impl->model.Corners();
    corners[corner] = colour.rgba();
    SetData(corners.data());
}

void CKvQuadGradCtrl::SetColor(DWORD colour)
{
    if (!m_impl->model.SetSelectedColour(colour))
        return;
    DrawControl(m_impl->model.Selected());
    DrawPalette();
    m_impl->access.Update();
}

DWORD CKvQuadGradCtrl::GetSelectedColor() const
{
    return m_impl->model.SelectedColour();
}

int CKvQuadGradCtrl::GetSelectedCorner() const
{
    return m_impl->model.Selected();
}

void CKvQuadGradCtrl::SetSelectedCorner(int corner)
{
    if (corner >= -1 && corner < kv::QuadModel::kCorners && m_impl->model.Select(corner))
        m_impl->RedrawAll();
}

UINT CKvQuadGradCtrl::OnGetDlgCode()
{
    return DLGC_WANTARROWS | DLGC_WANTCHARS;
}

QSize CKvQuadGradCtrl::sizeHint() const
{
    return {240, 120};
}

QSize CKvQuadGradCtrl::minimumSizeHint() const
{
    return {96, 48};
}

void CKvQuadGradCtrl::DrawAllControls()
{
    for (int corner = 0; corner < kv::QuadModel::kCorners; ++corner)
        DrawControl(corner);
}

void CKvQuadGradCtrl::DrawControl(int corner)
{
    if (corner < 0 || corner >= kv::QuadModel::kCorners)
        return;
    const auto at = static_cast<std::size_t>(corner);
    m_impl->corners[at].Invalidate();
    update(m_impl->layout.corners[at]);
}

void CKvQuadGradCtrl::DrawPalette()
{
    m_impl->palette.Invalidate();
    update(m_impl->layout.palette);
}

void CKvQuadGradCtrl::OnPaint(Graphics& graphics)
{
    m_impl->Paint(graphics);
}

void CKvQuadGradCtrl::OnSize(int, int)
{
    RecalcLayout();
    update();
}

void CKvQuadGradCtrl::OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point)
{
    const int corner = m_impl->layout.HitCorner(point);
    if (corner >= 0)
        m_impl->SelectByUser(corner);
    else
        CKvStatic::OnLButtonDown(modifiers, point);
}

void CKvQuadGradCtrl::OnContextMenu(CPoint point)
{
    const int hit = m_impl->layout.HitCorner(point);
    const int corner = hit >= 0 ? hit : m_impl->model.Selected();
    CKvMenu menu;
    menu.LoadMenu(kMenu);
    menu.EnableMenuItem(kv::kQuadCopy, corner >= 0 ? 1 : 0);
    menu.EnableMenuItem(kv::kQuadPaste, corner >= 0 && kv::ClipboardHasColour() ? 1 : 0);
    const bool isOther = corner != m_impl->model.Selected() && m_impl->model.Selected() >= 0;
    menu.EnableMenuItem(kv::kQuadExchangeWithSelected, isOther ? 1 : 0);
    const QPointer<CKvQuadGradCtrl> alive(this);
    const UINT command =
        menu.TrackPopupMenu(TPM_RIGHTBUTTON | TPM_RETURNCMD, CPoint(mapToGlobal(QPoint(point))), this);
    if (alive)
        m_impl->RunMenuCommand(command, corner);
}

CPoint CKvQuadGradCtrl::ContextMenuPoint() const
{
    const int selected = m_impl->model.Selected();
    if (selected < 0)
        return CKvStatic::ContextMenuPoint();
    const CRect& corner = m_impl->layout.corners[static_cast<std::size_t>(selected)];
    return {(corner.left + corner.right) / 2, (corner.top + corner.bottom) / 2};
}

BOOL CKvQuadGradCtrl::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    if (!IsWalk(key, modifiers))
        return CKvStatic::OnKeyDown(key, modifiers);
    const kv::ArrowKey arrow = key == VK_LEFT    ? kv::ArrowKey::Left
                               : key == VK_UP    ? kv::ArrowKey::Up
                               : key == VK_RIGHT ? kv::ArrowKey::Right
                                                 : kv::ArrowKey::Down;
    m_impl->SelectByUser(m_impl->model.Neighbour(arrow));
    return 1;
}

BOOL CKvQuadGradCtrl::OnChar(UINT character)
{
    if (character == kv::kCtrlC)
        m_impl->RunMenuCommand(kv::kQuadCopy, m_impl->model.Selected());
    else if (character == kv::kCtrlV)
        m_impl->Paste(m_impl->model.Selected());
    else
        return CKvStatic::OnChar(character);
    return 1;
}

bool CKvQuadGradCtrl::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const
{
    return IsWalk(key, modifiers) || character == kv::kCtrlC || character == kv::kCtrlV;
}

void CKvQuadGradCtrl::OnSetFocus()
{
    update();
    m_impl->access.FocusChanged();
}

void CKvQuadGradCtrl::OnKillFocus()
{
    update();
}

void CKvQuadGradCtrl::OnEnable(BOOL enabled)
{
    if (!enabled)
        m_impl->DropOver(-1);
    m_impl->RedrawAll();
    update();
}

void CKvQuadGradCtrl::OnSkinChanged()
{
    m_impl->access.TextsChanged();
}

QString CKvQuadGradCtrl::ToolTipAt(CPoint point, CRect& area) const
{
    const int corner = m_impl->layout.HitCorner(point);
    if (corner < 0)
        return {};
    area = m_impl->layout.corners[static_cast<std::size_t>(corner)];
    const std::uint32_t text = kv::kTextFirstCorner + static_cast<std::uint32_t>(corner);
    return KvToQString(kv::LoadText(text)) + u'\n' + kv::ChannelsText(m_impl->ColourOf(corner));
}

void CKvQuadGradCtrl::dragEnterEvent(QDragEnterEvent* event)
{
    dragMoveEvent(event);
    // Also beside the corners: the pointer may go on to one.
    event->setAccepted(isEnabled() && kv::DroppedColour(event->mimeData()).has_value());
}

void CKvQuadGradCtrl::dragMoveEvent(QDragMoveEvent* event)
{
    m_impl->DropOver(m_impl->DropCorner(*event));
    kv::AnswerDrag(*event, m_impl->dropTarget >= 0);
}

void CKvQuadGradCtrl::dragLeaveEvent(QDragLeaveEvent*)
{
    m_impl->DropOver(-1);
}

void CKvQuadGradCtrl::dropEvent(QDropEvent* event)
{
    m_impl->DropOver(-1);
    const int corner = m_impl->DropCorner(*event);
    kv::AnswerDrag(*event, corner >= 0);
    if (corner < 0)
        return;
    const std::uint32_t colour = *kv::DroppedColour(event->mimeData());
    m_impl->Edit([&](kv::QuadModel& quad) { return quad.SetCorner(corner, colour); });
}
