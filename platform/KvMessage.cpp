#include "KvPlatform.h"

#include <QCoreApplication>
#include <QPointer>
#include <QVariant>

#include <utility>

namespace {

constexpr char kDlgItemIdProperty[] = "_q_kvDlgItemId"; // Qt Designer leaves such names alone

} // namespace

QString KvToQString(std::wstring_view text)
{
    QString result;
    result.reserve(static_cast<qsizetype>(text.size()));
    for (const wchar_t unit : text) {
        const auto code = static_cast<char32_t>(unit);
        if (code > 0x10FFFF) {
            result.append(QChar::ReplacementCharacter);
        } else if (code > 0xFFFF) {
            result.append(QChar(QChar::highSurrogate(code)));
            result.append(QChar(QChar::lowSurrogate(code)));
        } else {
            // A lone surrogate stays one: the toolkit's own conversion would replace it.
            result.append(QChar(static_cast<char16_t>(code)));
        }
    }
    return result;
}

std::wstring KvFromQString(QStringView text)
{
    std::wstring result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        if constexpr (sizeof(wchar_t) > 2) {
            if (QChar::isHighSurrogate(unit) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
                result.push_back(static_cast<wchar_t>(QChar::surrogateToUcs4(unit, text[i + 1].unicode())));
                ++i;
                continue;
            }
        }
        result.push_back(static_cast<wchar_t>(unit));
    }
    return result;
}

KvMessageEvent::KvMessageEvent(UINT messageNumber, WPARAM w, LPARAM l)
    : QEvent(EventType())
    , message(messageNumber)
    , wParam(w)
    , lParam(l)
{
    ignore();
}

KvMessageEvent::~KvMessageEvent() = default;

QEvent::Type KvMessageEvent::EventType()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

LRESULT KvSendMessage(HWND to, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!to)
        return 0;
    KvMessageEvent event(message, wParam, lParam);
    QCoreApplication::sendEvent(to, &event);
    return event.result;
}

KvMessageSink::KvMessageSink(QWidget* window, Handler handler)
    : QObject(window)
    , m_handler(std::move(handler))
{
    if (window)
        window->installEventFilter(this);
}

KvMessageSink::~KvMessageSink() = default;

bool KvMessageSink::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != KvMessageEvent::EventType() || !m_handler)
        return QObject::eventFilter(watched, event);
    auto& message = static_cast<KvMessageEvent&>(*event);
    // Copies: the handler may delete this sink and the window.
    const Handler handler = m_handler;
    const QPointer<QObject> window(watched);
    const std::optional<LRESULT> answer = handler(message.message, message.wParam, message.lParam);
    if (!answer)
        return window.isNull(); // nobody is left to hear it
    message.result = *answer;
    message.accept();
    return true;
}

void KvSetDlgItemId(HWND window, UINT id)
{
    if (window)
        window->setProperty(kDlgItemIdProperty, id);
}

UINT KvGetDlgItemId(HWND window)
{
    return window ? window->property(kDlgItemIdProperty).toUInt() : 0;
}

HWND KvGetDlgItem(HWND parent, UINT id)
{
    if (!parent || id == 0)
        return nullptr;
    for (QObject* child : parent->children()) {
        if (child->isWidgetType() && KvGetDlgItemId(static_cast<QWidget*>(child)) == id)
            return static_cast<QWidget*>(child);
    }
    return nullptr;
}
