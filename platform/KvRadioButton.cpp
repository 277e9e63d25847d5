#include "KvButtons.h"
#include "KvDialog.h"
#include "KvGuiRes.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

#include <utility>

CKvRadioBitmapButton::CKvRadioBitmapButton()
{
    setCheckable(true);
    connect(this, &QAbstractButton::toggled, this, [this] { ShowPicture(); });
}

CKvRadioBitmapButton::~CKvRadioBitmapButton() = default;

int CKvRadioBitmapButton::SubClassButton(UINT id, CWnd* parent, const wchar_t* unchecked,
                                         const wchar_t* checked)
{
    QWidget* const item = KvGetDlgItem(parent, id);
    if (!item || !CreateButton(id, parent, item->geometry(), WS_VISIBLE | WS_TABSTOP, unchecked, nullptr))
        return 0;
    if (auto* dialog = dynamic_cast<CKvDialog*>(parent); dialog && dialog->ReplaceDlgItem(id, this)) {
        UpdateBitmap(unchecked, checked);
        return 1;
    }
    setTabOrder(item, this);
    delete item;
    UpdateBitmap(unchecked, checked);
    return 1;
}

int CKvRadioBitmapButton::UpdateBitmap(const wchar_t* unchecked, const wchar_t* checked)
{
    m_unchecked = unchecked ? unchecked : L"";
    m_checked = checked ? checked : L"";
    ShowPicture();
    const auto exists = [](const std::wstring& name) { return !KvGuiRes::LoadImageW(name.c_str()).IsNull(); };
    return exists(m_unchecked) && exists(m_checked) ? 1 : 0;
}

void CKvRadioBitmapButton::SetCheck(BOOL check)
{
    setChecked(check != 0);
}

BOOL CKvRadioBitmapButton::GetCheck() const
{
    return isChecked() ? 1 : 0;
}

void CKvRadioBitmapButton::ShowPicture()
{
    CKvBitmapButton::UpdateBitmap((isChecked() ? m_checked : m_unchecked).c_str());
}

void CKvRadioBitmapButton::EndScrub(bool cancelled)
{
    if (std::exchange(m_isScrubbing, false))
        emit ScrubEnded(cancelled);
}

bool CKvRadioBitmapButton::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        if (m_isScrubbing && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            event->accept();
            return true;
        }
        break;
    case QEvent::UngrabMouse:
    case QEvent::WindowDeactivate:
    case QEvent::WindowBlocked:
    case QEvent::EnabledChange:
    case QEvent::Hide: {
        const QPointer<CKvRadioBitmapButton> self(this);
        EndScrub(false);
        if (!self)
            return true;
        break;
    }
    default:
        break;
    }
    return CKvBitmapButton::event(event);
}

void CKvRadioBitmapButton::mousePressEvent(QMouseEvent* event)
{
    m_press = event->position().toPoint();
    CKvBitmapButton::mousePressEvent(event);
}

void CKvRadioBitmapButton::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint way = event->position().toPoint() - m_press;
    const bool isDragged = event->buttons().testFlag(Qt::LeftButton) &&
                           way.manhattanLength() >= QApplication::startDragDistance();
    if (isDragged && isDown())
        m_isScrubbing = true;
    if (!m_isScrubbing) {
        CKvBitmapButton::mouseMoveEvent(event);
        return;
    }
    setDown(false); // no click follows
    event->accept();
    emit Scrubbed(way.x() - way.y());
}

void CKvRadioBitmapButton::mouseReleaseEvent(QMouseEvent* event)
{
    const QPointer<CKvRadioBitmapButton> self(this);
    EndScrub(false);
    if (self)
        CKvBitmapButton::mouseReleaseEvent(event);
    event->accept();
}

void CKvRadioBitmapButton::keyPressEvent(QKeyEvent* event)
{
    if (m_isScrubbing && event->key() == Qt::Key_Escape)
        EndScrub(true);
    else if (!m_isScrubbing)
        CKvBitmapButton::keyPressEvent(event);
}
