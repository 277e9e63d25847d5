#include "chrome/KvAppSwitchWnd.h"

#include "KvGuiRes.h"
#include "chrome/CaptionStrip.h"
#include "platform/SkinColours.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int kPictureRole = Qt::UserRole;
constexpr int kMargin = 6;
constexpr int kLeastWidth = 240;
constexpr Qt::WindowFlags kPopup = Qt::Popup | Qt::FramelessWindowHint;

constexpr const char* kSheet = R"(
CKvAppSwitchWnd { background: %1; border: 1px solid %2; border-radius: 0; padding: 0; margin: 0; }
CKvAppSwitchWnd > QListWidget { background: transparent; border: none; padding: 0; margin: 0; outline: 0;
    color: %3; }
CKvAppSwitchWnd > QListWidget::item { padding: 6px 12px 6px 8px; border: 1px solid transparent;
    border-radius: 4px; }
CKvAppSwitchWnd > QListWidget::item:hover { background: %4; }
CKvAppSwitchWnd > QListWidget::item:selected { background: %4; border-color: %5; color: %6; }
)";

QString Sheet()
{
    return QString::fromLatin1(kSheet).arg(
        kv::SkinColour(L"keWindowBKColor", 0xFF2B2B2Eu).name(), kv::CaptionFrameColour().name(),
        kv::TextColour().name(), kv::SkinColour(L"keButtonHoverColor", 0x28FFFFFFu).name(QColor::HexArgb),
        kv::FocusColour().name(), kv::HoverTextColour().name());
}

// The same picture in every state: the toolkit would tint that of the selected row.
QIcon Icon(const KvSkinImage& picture, qreal ratio)
{
    QIcon icon;
    if (!picture.IsNull()) {
        const QPixmap pixmap = picture.Pixmap(picture.Size(), ratio);
        icon.addPixmap(pixmap);
        icon.addPixmap(pixmap, QIcon::Selected);
    }
    return icon;
}

} // namespace

CKvAppSwitchWnd::CKvAppSwitchWnd() : m_list(new QListWidget(this))
{
    setWindowFlags(kPopup);
    setFocusProxy(m_list);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setSpacing(1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addWidget(m_list);
    connect(m_list, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { Choose(m_list->row(item)); });
}

void CKvAppSwitchWnd::AddApplication(const std::wstring& picture, const std::wstring& name)
{
    auto* item = new QListWidgetItem(KvToQString(name), m_list);
    item->setData(kPictureRole, KvToQString(picture));
}

void CKvAppSwitchWnd::RemoveApplication(int row)
{
    delete m_list->takeItem(row);
}

void CKvAppSwitchWnd::Open(QWidget& frame, int current)
{
    if (parentWidget() != &frame)
        setParent(&frame, kPopup);
    Renew();
    FitRows(frame);
    m_list->setCurrentRow(current);
    show();
    m_list->setFocus(Qt::PopupFocusReason);
}

// Skin and texts may have changed since it was open.
void CKvAppSwitchWnd::Renew()
{
    const QString title = KvToQString(kv::SwitchText());
    setWindowTitle(title);
    setAccessibleName(title);
    m_list->setAccessibleName(title);
    setStyleSheet(Sheet());
    QSize largest;
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem& item = *m_list->item(row);
        const std::wstring name = KvFromQString(item.data(kPictureRole).toString());
        const KvSkinImage picture = KvGuiRes::LoadImageW(name.c_str());
        item.setIcon(Icon(picture, devicePixelRatioF()));
        largest = largest.expandedTo(picture.Size());
    }
    m_list->setIconSize(largest);
}

void CKvAppSwitchWnd::FitRows(const QWidget& frame)
{
    ensurePolished();
    m_list->ensurePolished();
    const int gap = m_list->spacing();
    QSize rows(m_list->sizeHintForColumn(0) + 2 * gap, gap);
    for (int row = 0; row < m_list->count(); ++row)
        rows.rheight() += m_list->sizeHintForRow(row) + gap;
    const QSize whole = rows.grownBy(layout()->contentsMargins()).grownBy(contentsMargins());
    const QRect room = frame.screen()->availableGeometry();
    QRect place(QPoint(), whole.expandedTo({kLeastWidth, 0}));
    place.setSize(place.size().boundedTo(room.size()));
    const QPoint centre = frame.mapToGlobal(QPoint(frame.width() / 2, frame.height() / 2));
    place.moveTopLeft(centre - QPoint(place.width() / 2, place.height() / 2));
    setGeometry(place);
}

void CKvAppSwitchWnd::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Choose(m_list->currentRow());
    else
        QFrame::keyPressEvent(event);
}

void CKvAppSwitchWnd::Choose(int row)
{
    hide();
    if (row >= 0)
        emit Chosen(row);
}
