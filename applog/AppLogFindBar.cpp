#include "applog/AppLogFindBar.h"

#include "KvButtons.h"
#include "applog/AppLogStyle.h"
#include "core/Text.h"
#include "core/TextTables.h"
#include "platform/DevicePixels.h"
#include "platform/SkinColours.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QToolButton>

#include <utility>

namespace kv {

namespace {

constexpr int kButtonSize = 20;

constexpr std::uint32_t kTextFind = 20204;
constexpr std::uint32_t kTextMatchCase = 20205;
constexpr std::uint32_t kTextPrevious = 20206;
constexpr std::uint32_t kTextNext = 20207;
constexpr std::uint32_t kTextClose = 20208;
constexpr std::uint32_t kTextPlace = 20209;
constexpr std::uint32_t kTextCount = 20210;
constexpr std::uint32_t kTextNone = 20211;
constexpr std::uint32_t kTextCaseSign = 20212;

QString TextOf(std::uint32_t number)
{
    return KvToQString(LoadText(number));
}

} // namespace

AppLogFindBar::AppLogFindBar(QWidget* list, AppLogFindHooks hooks)
    : QWidget(list)
    , m_hooks(std::move(hooks))
    , m_text(new QLineEdit(this))
    , m_case(new QToolButton(this))
    , m_count(new QLabel(this))
{
    setObjectName(QStringLiteral("findBar"));
    hide();
    setAttribute(Qt::WA_NoMousePropagation); // the list has nothing to do with a click here
    setCursor(Qt::ArrowCursor);
    m_count->hide();
    m_text->setClearButtonEnabled(false);
    m_text->installEventFilter(this);
    m_case->setCheckable(true);
    m_case->setFocusPolicy(Qt::StrongFocus);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 4, 6, 3);
    row->setSpacing(4);
    row->addWidget(m_text, 1);
    row->addWidget(m_case);
    row->addWidget(m_count);
    m_previous = AddButton(L"applog_find_previous", kTextPrevious, [this] { m_hooks.next(-1); });
    m_next = AddButton(L"applog_find_next", kTextNext, [this] { m_hooks.next(1); });
    m_close = AddButton(L"applog_find_close", kTextClose, [this] { m_hooks.closed(); });
    connect(m_text, &QLineEdit::textChanged, this, [this] { m_hooks.changed(); });
    connect(m_case, &QToolButton::toggled, this, [this] { m_hooks.changed(); });
    LoadSkin();
}

CKvBitmapButton* AppLogFindBar::AddButton(const wchar_t* image, std::uint32_t text,
                                          std::function<void()> pressed)
{
    auto* button = new CKvBitmapButton; // this window takes it
    button->CreateButton(text, this, {0, 0, kButtonSize, kButtonSize}, WS_CHILD | WS_VISIBLE | WS_TABSTOP,
                         image, nullptr);
    button->setFixedSize(kButtonSize, kButtonSize);
    button->setFocusPolicy(Qt::StrongFocus);
    layout()->addWidget(button);
    connect(button, &QAbstractButton::clicked, this, std::move(pressed));
    return button;
}

void AppLogFindBar::LoadSkin()
{
    setStyleSheet(AppLogStyleSheet());
    m_text->setPlaceholderText(TextOf(kTextFind));
    m_text->setAccessibleName(TextOf(kTextFind));
    m_case->setText(TextOf(kTextCaseSign));
    m_case->setToolTip(TextOf(kTextMatchCase));
    m_case->setAccessibleName(TextOf(kTextMatchCase));
    m_previous->setToolTip(TextOf(kTextPrevious));
    m_next->setToolTip(TextOf(kTextNext));
    m_close->setToolTip(TextOf(kTextClose));
}

void AppLogFindBar::TakeFont(const QFont& font)
{
    for (QWidget* part :
         {static_cast<QWidget*>(m_text), static_cast<QWidget*>(m_case), static_cast<QWidget*>(m_count)})
        part->setFont(font);
    layout()->invalidate();
}

std::wstring AppLogFindBar::Text() const
{
    return KvFromQString(m_text->text());
}

bool AppLogFindBar::MatchCase() const
{
    return m_case->isChecked();
}

void AppLogFindBar::FocusText()
{
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

void AppLogFindBar::ShowCount(int place, int count)
{
    const auto number = [](int value) { return NumberText(std::int64_t{value}); };
    if (place < 0)
        m_count->clear();
    else if (count == 0)
        m_count->setText(TextOf(kTextNone));
    else if (place == 0)
        m_count->setText(KvToQString(FillText(LoadText(kTextCount), {number(count)})));
    else
        m_count->setText(KvToQString(FillText(LoadText(kTextPlace), {number(place), number(count)})));
    m_count->setVisible(place >= 0); // an empty label does not follow its font
    m_previous->setEnabled(count > 0);
    m_next->setEnabled(count > 0);
}

bool AppLogFindBar::eventFilter(QObject* watched, QEvent* event)
{
    const bool isOverride = event->type() == QEvent::ShortcutOverride;
    if (!isOverride && event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool isReturn = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (!isReturn && key.key() != Qt::Key_Escape)
        return QWidget::eventFilter(watched, event);
    event->accept(); // before a dialog ends by it
    if (isOverride)
        return true;
    if (isReturn)
        m_hooks.next(key.modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
    else
        m_hooks.closed();
    return true;
}

void AppLogFindBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), SkinColour(L"keReportListHeaderBKColor", 0xFF323236u));
    painter.fillRect(DevicePixels(painter).Row(0, width(), 0),
                     SkinColour(L"keReportListGridColor", 0xFF333337u));
}

} // namespace kv
