#include "KvButtons.h"
#include "KvDialog.h"
#include "KvGuiRes.h"
#include "platform/CaptureWatcher.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

#include <utility>

struct CKvRadioBitmapButton::Press
{
    enum class Use
    {
        Click,
        Scrub,
        None, ///< a scrub has ended before the release
    };

    QPoint at;
    Use use = Use::Click;
    std::unique_ptr<kv::CaptureWatcher> capture; ///< of a scrub
};

CKvRadioBitmapButton::CKvRadioBitmapButton()
{
    setCheckable(true);
    connect(this, &QAbstractButton::toggled, this, [this] { ShowPicture(); });
}

CKvRadioBitmapButton::CKvRadioBitmapButton(QWidget* parent) : CKvRadioBitmapButton()
{
    CreateWhenShown(parent);
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

void CKvRadioBitmapButton::SetUncheckedPicture(const QString& name)
{
    m_unchecked = KvFromQString(name);
    ShowPicture();
}

void CKvRadioBitmapButton::SetCheckedPicture(const QString& name)
{
    m_checked = KvFromQString(name);
    ShowPicture();
}

void CKvRadioBitmapButton::ShowPicture()
{
    CKvBitmapButton::UpdateBitmap((isChecked() ? m_checked : m_unchecked).c_str());
}

void CKvRadioBitmapButton::EndScrub()
{
    FinishScrub(false);
}

void CKvRadioBitmapButton::StartScrub()
{
    m_press->use = Press::Use::Scrub;
    m_press->capture = std::make_unique<kv::CaptureWatcher>(*this, [this] { FinishScrub(false); });
    setDown(false); // no click follows
}

// The toolkit's press goes on until the release, but is nothing to it any more.
void CKvRadioBitmapButton::FinishScrub(bool cancelled)
{
    if (!IsScrubbing())
        return;
    m_press->use = Press::Use::None;
    m_press->capture.reset();
    emit ScrubEnded(cancelled);
}

// A loss that was not told yet, before other input. @return false when the button is gone.
bool CKvRadioBitmapButton::TellLoss()
{
    const QPointer<CKvRadioBitmapButton> self(this);
    if (m_press && m_press->capture)
        m_press->capture->TellLoss();
    return !self.isNull();
}

// @return false when the button is gone.
bool CKvRadioBitmapButton::EndPress()
{
    const QPointer<CKvRadioBitmapButton> self(this);
    FinishScrub(false);
    if (self)
        m_press.reset();
    return !self.isNull();
}

bool CKvRadioBitmapButton::IsScrubbing() const
{
    return m_press && m_press->use == Press::Use::Scrub;
}

bool CKvRadioBitmapButton::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && IsScrubbing() &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return CKvBitmapButton::event(event);
}

void CKvRadioBitmapButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        if (!EndPress())
            return;
        m_press = std::make_unique<Press>();
        m_press->at = event->position().toPoint();
    }
    CKvBitmapButton::mousePressEvent(event);
}

void CKvRadioBitmapButton::mouseMoveEvent(QMouseEvent* event)
{
    if (!TellLoss())
        return;
    const bool isReleased = !event->buttons().testFlag(Qt::LeftButton); // also where nobody saw it
    if (isReleased && !EndPress())
        return;
    if (!m_press) {
        CKvBitmapButton::mouseMoveEvent(event);
        return;
    }
    const QPoint way = event->position().toPoint() - m_press->at;
    if (m_press->use == Press::Use::Click && isDown() &&
        way.manhattanLength() >= QApplication::startDragDistance())
        StartScrub();
    if (m_press->use == Press::Use::Click) {
        CKvBitmapButton::mouseMoveEvent(event);
        return;
    }
    event->accept();
    if (IsScrubbing())
        emit Scrubbed(way.x() - way.y());
}

void CKvRadioBitmapButton::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && !EndPress())
        return;
    CKvBitmapButton::mouseReleaseEvent(event);
    event->accept();
}

void CKvRadioBitmapButton::keyPressEvent(QKeyEvent* event)
{
    if (!TellLoss())
        return;
    if (IsScrubbing() && event->key() == Qt::Key_Escape)
        FinishScrub(true);
    else if (!IsScrubbing())
        CKvBitmapButton::keyPressEvent(event);
}
