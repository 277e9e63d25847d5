#include "KvDialog.h"

#include "KvGuiRes.h"
#include "platform/DialogStyle.h"
#include "platform/DialogTemplate.h"
#include "platform/IdleUpdate.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <algorithm>
#include <vector>

namespace {

struct Item
{
    const kv::DialogItem* place;
    QPointer<QWidget> control;
};

// How a dialog ended; outlives the dialog that a handler deletes.
struct Ending
{
    bool hasEnded = false;
    int result = IDCANCEL;
};

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

struct CKvDialog::Impl
{
    explicit Impl(CKvDialog& owner) : dialog(owner) {}

    int MakeWindow(UINT number);
    void MakeItems();
    void ApplyTexts();
    void ApplyLook();
    void Measure();
    void LayOut();
    void OrderTabs();
    void Place();
    QWidget* FirstTabStop() const;

    CKvDialog& dialog;
    UINT modalTemplate = 0;
    kv::DialogTemplate shape{};
    QPointer<QWidget> parent;
    bool isCreated = false;
    std::vector<Item> items;
    kv::DialogUnits units{};
    QSize smallest;
    SKvGuiBasicSettings* settings = nullptr;
    std::shared_ptr<Ending> ending = std::make_shared<Ending>();
    std::unique_ptr<kv::IdleUpdate> idle;
    QMetaObject::Connection parentDies;
};

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
    const QPointer<CKvDialog> self(&dialog);
    const BOOL wantsFocus = dialog.OnInitDialog();
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

CKvDialog::CKvDialog(UINT templateNumber, CWnd* parent) : m_impl(std::make_unique<Impl>(*this))
{
    m_impl->modalTemplate = templateNumber;
    m_impl->parent = parent;
}

CKvDialog::~CKvDialog()
{
    CKvDialog::DestroyWindow();
}

int CKvDialog::DoModal()
{
    const QPointer<CKvDialog> self(this);
    const std::shared_ptr<Ending> ending = m_impl->ending;
    if (!m_impl->MakeWindow(m_impl->modalTemplate))
        return -1;
    if (self && !ending->hasEnded) {
        m_impl->Place();
        QDialog::exec();
    }
    // The application ends, or a host hid the window.
    if (self && !ending->hasEnded)
        OnCancel();
    if (self)
        DestroyWindow();
    if (self)
        destroy();
    return ending->result;
}

int CKvDialog::Create(UINT templateNumber, CWnd* parent)
{
    if (IsCreated())
        return 0;
    m_impl->parent = parent;
    const QPointer<CKvDialog> self(this);
    const int made = m_impl->MakeWindow(templateNumber);
    if (made && self && IsCreated())
        m_impl->Place();
    return made;
}

BOOL CKvDialog::IsCreated() const
{
    return m_impl->isCreated ? 1 : 0;
}

int CKvDialog::DestroyWindow()
{
    if (!m_impl->isCreated)
        return 0;
    m_impl->isCreated = false;
    m_impl->ending->hasEnded = true;
    disconnect(m_impl->parentDies);
    const std::vector<Item> items = std::exchange(m_impl->items, {});
    const QPointer<CKvDialog> self(this);
    hide();
    for (const Item& item : items)
        delete item.control;
    return 1;
}

void CKvDialog::EndDialog(int result)
{
    if (!m_impl->isCreated)
        return;
    *m_impl->ending = {true, result};
    if (!isVisible())
        return;
    const QPointer<CKvDialog> self(this);
    QDialog::done(result);
    if (self && result == IDCANCEL)
        Q_EMIT rejected(); // the toolkit's own number for it is another
}

UINT CKvDialog::GetDlgCtrlID() const
{
    return KvGetDlgItemId(const_cast<CKvDialog*>(this)); // reads only
}

HWND CKvDialog::GetDlgItem(UINT id) const
{
    return KvGetDlgItem(const_cast<CKvDialog*>(this), id); // reads only
}

CRect CKvDialog::MapDialogRect(const CRect& units) const
{
    return kv::ToPixels(kv::DialogUnitsOf(font()), units);
}

void CKvDialog::UpdateDialogControls()
{
    struct ItemState : CCmdUI
    {
        QWidget* control = nullptr;
        QWidget* refuge = nullptr;
        void Enable(BOOL enable) override
        {
            // Else the toolkit hands the focus to the next button, where the next Space does something else.
            if (!enable && control->hasFocus() && refuge && refuge != control)
                refuge->setFocus();
            control->setEnabled(enable != 0);
        }
    };
    const QPointer<CKvDialog> self(this);
    const std::vector<Item> items = m_impl->items;
    for (const Item& item : items) {
        if (!self)
            return;
        if (!item.control || item.place->id == kv::kNoDialogItem)
            continue;
        ItemState state;
        state.m_nID = item.place->id;
        state.control = item.control;
        state.refuge = m_impl->FirstTabStop();
        OnCmdUpdateUI(&state);
    }
}

BOOL CKvDialog::OnInitDialog()
{
    return 1;
}

void CKvDialog::OnOK()
{
    EndDialog(IDOK);
}

void CKvDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}

LRESULT CKvDialog::OnKickIdle(WPARAM, LPARAM)
{
    return 0;
}

void CKvDialog::OnCmdUpdateUI(CCmdUI*) {}

void CKvDialog::SetGuiBasicSettings(SKvGuiBasicSettings* settings)
{
    if (m_impl->settings && !settings)
        setFont({});
    m_impl->settings = settings;
    if (m_impl->isCreated) {
        m_impl->ApplyLook();
        m_impl->Measure();
    }
}

int CKvDialog::exec()
{
    return DoModal() == IDOK ? Accepted : Rejected;
}

void CKvDialog::accept()
{
    OnOK();
}

void CKvDialog::reject()
{
    OnCancel();
}

BOOL CKvDialog::OnNotify(WPARAM, LPARAM, LRESULT*)
{
    return 0;
}

BOOL CKvDialog::OnCommand(WPARAM wParam, LPARAM, LRESULT*)
{
    switch (LOWORD(wParam)) {
    case IDOK:
        OnOK();
        return 1;
    case IDCANCEL:
        OnCancel();
        return 1;
    default:
        return 0;
    }
}

BOOL CKvDialog::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    switch (message) {
    case WM_NOTIFY:
        return OnNotify(wParam, lParam, result);
    case WM_COMMAND:
        return OnCommand(wParam, lParam, result);
    case WM_KICKIDLE:
        *result = OnKickIdle(wParam, lParam);
        return 1;
    case WM_CLOSE:
        OnCancel();
        return 1;
    default:
        return 0;
    }
}

void CKvDialog::OnSkinChanged()
{
    if (!m_impl->isCreated)
        return;
    m_impl->ApplyLook();
    m_impl->ApplyTexts();
}

int CKvDialog::ReplaceDlgItem(UINT id, QWidget* control)
{
    const auto item = std::find_if(m_impl->items.begin(), m_impl->items.end(),
                                   [id](const Item& one) { return one.place->id == id; });
    if (item == m_impl->items.end() || !control)
        return 0;
    delete item->control;
    item->control = control;
    KvSetDlgItemId(control, id);
    m_impl->LayOut();
    m_impl->OrderTabs();
    return 1;
}

bool CKvDialog::event(QEvent* event)
{
    if (event->type() == KvMessageEvent::EventType()) {
        auto& message = static_cast<KvMessageEvent&>(*event);
        LRESULT result = 0;
        const bool handled = OnWndMsg(message.message, message.wParam, message.lParam, &result) != 0;
        message.result = handled ? result : 0;
        message.setAccepted(handled);
        return handled;
    }
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::FontChange && m_impl->isCreated)
        m_impl->Measure();
    else if (event->type() == QEvent::LayoutDirectionChange && m_impl->isCreated)
        m_impl->LayOut();
    return handled;
}

void CKvDialog::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    if (m_impl->isCreated)
        m_impl->LayOut();
}

void CKvDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    m_impl->idle = std::make_unique<kv::IdleUpdate>(
        [this](int count) { return KvSendMessage(this, WM_KICKIDLE, 0, count) != 0; });
}

void CKvDialog::hideEvent(QHideEvent* event)
{
    m_impl->idle.reset();
    QDialog::hideEvent(event);
}
