#include "KvButtons.h"

#include "KvGuiRes.h"
#include "platform/AccessibleParts.h"
#include "platform/DevicePixels.h"
#include "platform/FocusRing.h"
#include "platform/SkinColours.h"
#include "platform/SkinPictures.h"
#include "platform/VirtualKey.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainterPath>

#include <utility>

namespace {

constexpr DWORD kDefaultHoverColour = 0x28FFFFFF;
constexpr DWORD kDefaultPressedColour = 0x70000000;
constexpr qreal kCornerRadius = 2.5;
constexpr qreal kDisabledOpacity = 0.4;
constexpr QSize kSizeWithoutPicture{16, 16};

/// How one state of a button looks.
struct Look
{
    const wchar_t* ending;   ///< of the state's own picture
    const wchar_t* plateKey; ///< colour of the plate under the common picture; null for none
    DWORD plateDefault;
    qreal opacity; ///< of the common picture
};

constexpr Look kNormal = {L"", nullptr, 0, 1};
constexpr Look kHover = {L"_hover", L"keButtonHoverColor", kDefaultHoverColour, 1};
constexpr Look kPressed = {L"_pressed", L"keButtonPressedColor", kDefaultPressedColour, 1};
constexpr Look kDisabled = {L"_disabled", nullptr, 0, kDisabledOpacity};

const Look& LookOf(const QAbstractButton& button)
{
    if (!button.isEnabled())
        return kDisabled;
    if (button.isDown())
        return kPressed;
    return button.underMouse() ? kHover : kNormal;
}

void DrawPicture(QPainter& painter, const KvSkinImage& picture, const QRect& room, qreal opacity = 1)
{
    QSize size = picture.Size();
    if (size.width() > room.width() || size.height() > room.height())
        size.scale(room.size(), Qt::KeepAspectRatio);
    QRect place(QPoint(), size);
    place.moveCenter(room.center());
    // As a whole: shapes that overlap would shine through one another.
    painter.setOpacity(opacity);
    kv::DrawSkinPicture(painter, picture, place);
    painter.setOpacity(1);
}

/// What a screen reader learns: the tool tip is the name, and an action is a click that the parent hears.
class ButtonInterface : public QAccessibleWidget
{
public:
    explicit ButtonInterface(QAbstractButton& button)
        : QAccessibleWidget(&button, QAccessible::Button)
        , m_button(button)
    {
    }

    QAccessible::Role role() const override
    {
        if (qobject_cast<const CKvRadioBitmapButton*>(&m_button))
            return QAccessible::RadioButton;
        return m_button.isCheckable() ? QAccessible::CheckBox : QAccessible::Button;
    }

    QString text(QAccessible::Text text) const override
    {
        if (text == QAccessible::Accelerator)
            return Known().shortcut;
        const QString given = QAccessibleWidget::text(text);
        const bool isName = text == QAccessible::Name;
        if (isName && given.isEmpty())
            return OwnName();
        // The toolkit describes a widget by its tool tip: the same words twice.
        return !isName && given == m_button.toolTip() ? QString() : given;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = m_button.isCheckable();
        state.checked = m_button.isChecked();
        state.pressed = m_button.isDown();
        const kv::AccessibleButton known = Known();
        state.hasPopup = known.opensPopup;
        if (known.takesFocus)
            state.focusable = true;
        return state;
    }

    QStringList actionNames() const override
    {
        if (!m_button.isEnabled() || !m_button.isVisible())
            return {};
        return {m_button.isCheckable() ? toggleAction() : pressAction(), setFocusAction()};
    }

    void doAction(const QString& action) override
    {
        if (!m_button.isEnabled() || !m_button.isVisible())
            return;
        const bool isClick = action == pressAction() || action == toggleAction();
        if (isClick && Known().opensPopup) // later: the menu waits for the user
            QMetaObject::invokeMethod(&m_button, &QAbstractButton::click, Qt::QueuedConnection);
        else if (isClick)
            m_button.click(); // this interface may be gone
        else
            QAccessibleWidget::doAction(action);
    }

    QStringList keyBindingsForAction(const QString& action) const override
    {
        const QString shortcut = Known().shortcut;
        return action == pressAction() && !shortcut.isEmpty() ? QStringList(shortcut) : QStringList();
    }

private:
    kv::AccessibleButton Known() const
    {
        const auto* parts = kv::AccessibleParts::Of(m_button.parentWidget());
        return parts ? parts->DescribeButton(m_button) : kv::AccessibleButton();
    }

    QString OwnName() const
    {
        const auto* button = qobject_cast<const CKvButton*>(&m_button);
        return m_button.toolTip().isEmpty() && button ? KvToQString(button->GetWindowText())
                                                      : m_button.toolTip();
    }

    QAbstractButton& m_button;
};

QAccessibleInterface* MakeInterface(const QString& className, QObject* object)
{
    if (className != QLatin1String(CKvBitmapButton::staticMetaObject.className()))
        return nullptr;
    return new ButtonInterface(*static_cast<CKvBitmapButton*>(object));
}

} // namespace

struct CKvBitmapButton::Impl
{
    std::wstring image;
    std::wstring backgroundKey;
    const SKvGuiBasicSettings* settings = nullptr;
    bool created = false;
    bool createsItself = false; ///< when it is first shown
    bool focusByKey = false;

    void DrawBackground(QPainter& painter, const QRect& room) const
    {
        painter.fillRect(room, settings ? QColor::fromRgba(settings->background)
                                        : kv::SkinColour(backgroundKey.c_str(), 0));
    }

    void DrawState(QPainter& painter, const QRect& room, const QRect& pictureRoom, const Look& look) const
    {
        const KvSkinImage own = KvGuiRes::LoadImageW((image + look.ending).c_str());
        if (!own.IsNull()) {
            DrawPicture(painter, own, pictureRoom);
            return;
        }
        if (look.plateKey) {
            QPainterPath plate;
            plate.addRoundedRect(kv::DevicePixels(painter).Snapped(room), kCornerRadius, kCornerRadius);
            painter.fillPath(plate, kv::SkinColour(look.plateKey, look.plateDefault));
        }
        DrawPicture(painter, KvGuiRes::LoadImageW(image.c_str()), pictureRoom, look.opacity);
    }
};

CKvBitmapButton::CKvBitmapButton() : m_impl(std::make_unique<Impl>())
{
    QAccessible::installFactory(MakeInterface);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::ClickFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QAbstractButton::clicked, this, [this] {
        KvSendMessage(parentWidget(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), BN_CLICKED),
                      reinterpret_cast<LPARAM>(static_cast<QWidget*>(this)));
    });
    connect(this, &QAbstractButton::toggled, this, [this] {
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent change(this, changed);
        QAccessible::updateAccessibility(&change);
    });
}

CKvBitmapButton::CKvBitmapButton(QWidget* parent) : CKvBitmapButton()
{
    CreateWhenShown(parent);
}

CKvBitmapButton::~CKvBitmapButton() = default;

void CKvBitmapButton::CreateWhenShown(QWidget* parent)
{
    setParent(parent);
    setFocusPolicy(Qt::StrongFocus);
    m_impl->createsItself = true;
}

int CKvBitmapButton::CreateButton(UINT id, CWnd* parent, const CRect& rect, UINT style,
                                  const wchar_t* imageName, const wchar_t* toolTip)
{
    if (std::exchange(m_impl->created, true))
        return 0;
    setParent(parent);
    KvSetDlgItemId(this, id);
    setGeometry(rect);
    setToolTip(toolTip ? KvToQString(toolTip) : QString());
    UpdateBitmap(imageName);
    if (style & WS_TABSTOP)
        setFocusPolicy(Qt::StrongFocus);
    if (style & WS_DISABLED)
        setEnabled(false);
    setVisible((style & WS_VISIBLE) != 0);
    return 1;
}

int CKvBitmapButton::UpdateBitmap(const wchar_t* imageName)
{
    const std::wstring image = imageName ? imageName : L"";
    if (std::exchange(m_impl->image, image) != image) {
        updateGeometry();
        update();
    }
    return KvGuiRes::LoadImageW(imageName).IsNull() ? 0 : 1;
}

std::wstring CKvBitmapButton::GetBitmapName() const
{
    return m_impl->image;
}

UINT CKvBitmapButton::GetDlgCtrlID() const
{
    return KvGetDlgItemId(const_cast<CKvBitmapButton*>(this)); // reads only
}

void CKvBitmapButton::SetDlgCtrlID(UINT id)
{
    KvSetDlgItemId(this, id);
}

bool CKvBitmapButton::IsFocusShown() const
{
    return m_impl->focusByKey && hasFocus();
}

QString CKvBitmapButton::BackgroundKey() const
{
    return KvToQString(m_impl->backgroundKey);
}

void CKvBitmapButton::SetBackgroundKey(const wchar_t* key)
{
    m_impl->backgroundKey = key ? key : L"";
    update();
}

void CKvBitmapButton::SetGuiBasicSettings(SKvGuiBasicSettings* settings)
{
    m_impl->settings = settings;
    update();
}

QSize CKvBitmapButton::sizeHint() const
{
    const QSize picture = KvGuiRes::LoadImageW(m_impl->image.c_str()).Size();
    return picture.isEmpty() ? kSizeWithoutPicture : picture;
}

QSize CKvBitmapButton::minimumSizeHint() const
{
    return sizeHint();
}

QRect CKvBitmapButton::PictureRoom() const
{
    return rect();
}

void CKvBitmapButton::nextCheckState() {}

bool CKvBitmapButton::event(QEvent* event)
{
    if (event->type() == QEvent::Polish && m_impl->createsItself)
        m_impl->created = true; // it has all that it needs
    if (event->type() == QEvent::ToolTipChange) {
        QAccessibleEvent change(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&change);
    }
    if (event->type() == QEvent::ShortcutOverride && IsFocusShown()) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (key.key() == Qt::Key_Space && key.modifiers() == Qt::NoModifier) {
            event->accept();
            return true;
        }
    }
    return QAbstractButton::event(event);
}

void CKvBitmapButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    m_impl->DrawBackground(painter, rect());
    m_impl->DrawState(painter, rect(), PictureRoom(), LookOf(*this));
    if (IsFocusShown())
        kv::DrawFocusRing(painter, rect());
}

void CKvBitmapButton::keyPressEvent(QKeyEvent* event)
{
    const bool isArrow = kv::IsArrow(kv::VirtualKey(*event));
    const bool isPlain = kv::HeldModifiers(event->modifiers()) == Qt::NoModifier;
    if (event->key() == Qt::Key_Space || (isPlain && isArrow)) {
        m_impl->focusByKey = true;
        update();
    }
    if (isArrow)
        event->ignore(); // the parent knows which way its buttons stand
    else if (event->key() != Qt::Key_Space || !event->isAutoRepeat()) // a held press goes nowhere
        QAbstractButton::keyPressEvent(event);
}

void CKvBitmapButton::focusInEvent(QFocusEvent* event)
{
    const Qt::FocusReason reason = event->reason();
    // A window or a popup gives back what it took.
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        m_impl->focusByKey = reason != Qt::MouseFocusReason;
    QAbstractButton::focusInEvent(event);
}
