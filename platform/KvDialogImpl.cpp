#include "platform/KvDialogImpl.h"

#include "KvButtons.h"
#include "KvGuiRes.h"
#include "platform/DialogItems.h"
#include "platform/DialogStyle.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace {

bool TakesTab(const QWidget* control)
{
    return control && (control->focusPolicy() & Qt::TabFocus) != 0;
}

} // namespace

int CKvDialog::Impl::MakeWindow(UINT number)
{
    const auto found = kv::FindDialog(number);
    if (isCreated || isMaking || !found)
        return 0;
    shape = *found;
    isCreated = true;
    *ending = {};
    if (parent) {
        parentDies = connect(parent, &QObject::destroyed, &dialog, [this] {
            const QPointer<CKvDialog> self(&dialog);
            dialog.OnCancel();
            if (self)
                self->DestroyWindow();
        });
    }
    TakeParentsFont();
    ApplyLook();
    MakeItems();
    HandFontOn();
    ApplyTexts();
    Measure();
    dialog.resize(smallest);
    LayOut(); // a hidden window hears of its size when it is shown
    const QPointer<CKvDialog> self(&dialog);
    isMaking = true;
    const BOOL wantsFocus = dialog.OnInitDialog();
    if (self) {
        isMaking = false;
        StyleLabels();
        HandFontOn();
        self->UpdateDialogControls(); // before anybody sees it
    }
    if (self && isCreated && wantsFocus) {
        if (QWidget* first = FirstTabStop())
            first->setFocus();
    }
    return 1;
}

int CKvDialog::Impl::RunModal()
{
    const QPointer<CKvDialog> self(&dialog);
    const std::shared_ptr<Ending> made = ending;
    if (!MakeWindow(modalTemplate))
        return -1;
    if (self && !made->hasEnded) {
        Place();
        self->QDialog::exec();
    }
    // The application ends, or a host hid the window.
    if (self && !made->hasEnded)
        self->OnCancel();
    if (self)
        self->DestroyWindow();
    if (self)
        self->destroy();
    return made->result;
}

void CKvDialog::Impl::MakeItems()
{
    for (const kv::DialogItem& item : kv::ItemsOf(shape.number)) {
        QWidget* control = kv::MakeDialogControl(item, &dialog).release(); // the dialog's
        KvSetDlgItemId(control, item.id);
        if (auto* button = qobject_cast<QPushButton*>(control)) {
            connect(button, &QPushButton::clicked, &dialog, [this, button, id = item.id] {
                KvSendMessage(&dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                              reinterpret_cast<LPARAM>(button));
            });
        }
        control->show();
        items.push_back({&item, control});
    }
}

void CKvDialog::Impl::ApplyTexts()
{
    const QString title = KvToQString(KvGuiRes::LoadDialogText(shape.number, kv::kDialogTitle));
    if (dialog.windowTitle() == std::exchange(shownTitle, title)) // a host may have given another
        dialog.setWindowTitle(title);
    for (Item& item : items) {
        if (item.control)
            kv::SetDialogTexts(*item.place, *item.control, item.texts);
    }
}

// Below a style sheet the toolkit hands no font on.
void CKvDialog::Impl::FontChanged()
{
    for (const Item& item : items) {
        if (item.control)
            item.control->setFont(dialog.font());
    }
    Measure();
    // A style sheet's font comes to the items, or goes, after it came to the dialog.
    QMetaObject::invokeMethod(
        &dialog, [this] { MeasureTexts(); }, Qt::QueuedConnection);
}

void CKvDialog::Impl::HandFontOn()
{
    for (const Item& item : items) {
        if (item.control && !item.control->testAttribute(Qt::WA_SetFont)) // which would be a host's own
            item.control->setFont(dialog.font());
    }
}

// Outside of style sheets the toolkit hands no font on to what has one of its own.
void CKvDialog::Impl::TakeParentsFont()
{
    QWidget* const around = dialog.isWindow() ? nullptr : dialog.parentWidget();
    if (!around)
        return;
    around->installEventFilter(&dialog);
    const bool isHosts = settings || (dialog.testAttribute(Qt::WA_SetFont) && !hasParentsFont);
    if (isHosts || around->testAttribute(Qt::WA_StyleSheet))
        return;
    dialog.setFont(around->font());
    hasParentsFont = true;
}

void CKvDialog::Impl::ApplyLook()
{
    if (settings)
        dialog.setFont(settings->font);
    dialog.update();
    if (paintsGround) {
        StyleLabels();
        return;
    }
    QString hosts = kv::WithoutDialogStyle(dialog.styleSheet());
    if (!hosts.isEmpty() && !hosts.contains(u'{')) // declarations without a selector do not stand among rules
        hosts = QStringLiteral("CKvDialog, CKvDialog * { %1 }").arg(hosts);
    ownSheet = kv::DialogStyleSheet(settings);
    dialog.setStyleSheet(ownSheet + hosts); // whose rules go before
}

void CKvDialog::Impl::KeepLook()
{
    if (!paintsGround && !dialog.styleSheet().contains(ownSheet))
        ApplyLook();
}

void CKvDialog::Impl::StyleLabels()
{
    if (!paintsGround)
        return;
    const QString sheet = kv::DialogStyleSheet(settings);
    for (const Item& item : items) {
        if (qobject_cast<QLabel*>(item.control))
            item.control->setStyleSheet(sheet);
    }
}

void CKvDialog::Impl::Measure()
{
    dialog.ensurePolished(); // a style sheet may bring the font
    units = UnitsForTexts();
    smallest = kv::ToPixels(units, {0, 0, shape.width, shape.height}).size();
    // Each side for itself, as forms set them.
    if (dialog.minimumWidth() == ownMinimum.width())
        dialog.setMinimumWidth(smallest.width());
    if (dialog.minimumHeight() == ownMinimum.height())
        dialog.setMinimumHeight(smallest.height());
    ownMinimum = smallest;
    LayOut();
}

kv::DialogUnits CKvDialog::Impl::UnitsForTexts() const
{
    kv::DialogUnits wide = kv::DialogUnitsOf(dialog.font());
    const auto isWhole = [&wide](const Item& item) {
        return !item.control ||
               kv::IsTextWhole(*item.control, kv::ItemRect(*item.place, wide, {0, 0}).size());
    };
    const int widest = wide.x + wide.x / 2;
    while (wide.x < widest && !std::all_of(items.begin(), items.end(), isWhole))
        ++wide.x;
    return wide;
}

void CKvDialog::Impl::MeasureTexts()
{
    if (UnitsForTexts().x == units.x)
        return;
    const bool wasSmallest = dialog.size() == smallest;
    Measure();
    if (wasSmallest)
        dialog.resize(smallest);
}

void CKvDialog::Impl::LayOut()
{
    const QSize growth = (dialog.size() - smallest).expandedTo({0, 0});
    for (const Item& item : items) {
        if (item.control)
            item.control->setGeometry(QStyle::visualRect(dialog.layoutDirection(), dialog.rect(),
                                                         kv::ItemRect(*item.place, units, growth)));
    }
}

void CKvDialog::Impl::OrderTabs()
{
    QWidget* last = nullptr;
    for (const Item& item : items) {
        if (!TakesTab(item.control))
            continue;
        if (last)
            QWidget::setTabOrder(last, item.control);
        last = item.control;
    }
}

QWidget* CKvDialog::Impl::FirstTabStop() const
{
    for (const Item& item : items) {
        if (TakesTab(item.control) && item.control->isEnabledTo(&dialog))
            return item.control;
    }
    return nullptr;
}

// Over the middle of the parent's window and on its screen. The parent does not own this window, so the
// window system hears of the two here.
void CKvDialog::Impl::Place()
{
    if (!parent)
        return;
    const QWidget* owner = parent->window();
    isPlaced = owner->isVisible();
    dialog.create(); // asked for its number it would stay a native window, also as a child
    if (QWindow* window = dialog.windowHandle())
        window->setTransientParent(owner->windowHandle());
    QRect rect(QPoint(), dialog.size());
    rect.moveCenter(owner->frameGeometry().center());
    if (const QScreen* screen = owner->screen()) {
        const QRect room = screen->availableGeometry();
        rect.moveLeft(std::max(room.left(), std::min(rect.left(), room.right() - rect.width())));
        rect.moveTop(std::max(room.top(), std::min(rect.top(), room.bottom() - rect.height())));
    }
    dialog.move(rect.topLeft());
    dialog.setAttribute(Qt::WA_Moved, isPlaced);
}
