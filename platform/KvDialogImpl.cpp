#include "platform/KvDialogImpl.h"

#include "KvGuiRes.h"
#include "platform/DialogStyle.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <algorithm>

namespace {

std::unique_ptr<QWidget> MakeControl(const kv::DialogItem& item, QWidget* dialog)
{
    if (item.kind == kv::DialogItemKind::Static) {
        auto label = std::make_unique<QLabel>(dialog);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        return label;
    }
    auto button = std::make_unique<QPushButton>(dialog);
    button->setDefault(item.kind == kv::DialogItemKind::DefaultButton);
    // Enter presses the default button whatever else was clicked last, but does not keep what a person who
    // went to Cancel wants to drop.
    button->setAutoDefault(button->isDefault() || item.id == IDCANCEL);
    return button;
}

void SetText(const kv::DialogItem& item, QWidget& control)
{
    const QString text = KvToQString(KvGuiRes::LoadDialogText(item.dialog, item.text));
    if (auto* label = qobject_cast<QLabel*>(&control))
        label->setText(text);
    auto* button = qobject_cast<QPushButton*>(&control);
    if (!button)
        return;
    button->setText(text);
    const QString tip = KvToQString(KvGuiRes::LoadTip(item.id));
    button->setToolTip(tip);
    // A sign such as "|<" says nothing when it is read aloud.
    const bool hasWords =
        std::any_of(text.begin(), text.end(), [](QChar unit) { return unit.isLetterOrNumber(); });
    button->setAccessibleName(hasWords ? QString() : tip);
}

bool TakesTab(const QWidget* control)
{
    return control && (control->focusPolicy() & Qt::TabFocus) != 0;
}

} // namespace

int CKvDialog::Impl::MakeWindow(UINT number)
{
    const auto found = kv::FindDialog(number);
    if (isCreated || !found)
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
    ApplyLook();
    MakeItems();
    ApplyTexts();
    Measure();
    dialog.resize(smallest);
    LayOut(); // a hidden window hears of its size when it is shown
    const QPointer<CKvDialog> self(&dialog);
    const BOOL wantsFocus = dialog.OnInitDialog();
    if (self)
        self->UpdateDialogControls(); // before anybody sees it
    if (self && isCreated && wantsFocus) {
        if (QWidget* first = FirstTabStop())
            first->setFocus();
    }
    return 1;
}

void CKvDialog::Impl::MakeItems()
{
    for (const kv::DialogItem& item : kv::ItemsOf(shape.number)) {
        QWidget* control = MakeControl(item, &dialog).release(); // the dialog's
        KvSetDlgItemId(control, item.id);
        if (auto* button = qobject_cast<QPushButton*>(control)) {
            connect(button, &QPushButton::clicked, &dialog, [this, button, id = item.id] {
                KvSendMessage(&dialog, WM_COMMAND, MAKEWPARAM(id, 0), reinterpret_cast<LPARAM>(button));
            });
        }
        control->show();
        items.push_back({&item, control});
    }
}

void CKvDialog::Impl::ApplyTexts()
{
    dialog.setWindowTitle(KvToQString(KvGuiRes::LoadDialogText(shape.number, kv::kDialogTitle)));
    for (const Item& item : items) {
        if (item.control)
            SetText(*item.place, *item.control);
    }
}

void CKvDialog::Impl::ApplyLook()
{
    if (settings)
        dialog.setFont(settings->font);
    dialog.setStyleSheet(kv::DialogStyleSheet(settings));
}

void CKvDialog::Impl::Measure()
{
    dialog.ensurePolished(); // a style sheet may bring the font
    units = kv::DialogUnitsOf(dialog.font());
    smallest = kv::ToPixels(units, {0, 0, shape.width, shape.height}).size();
    dialog.setMinimumSize(smallest);
    LayOut();
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
        if (TakesTab(item.control) && item.control->isEnabled())
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
    dialog.winId();
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
}
