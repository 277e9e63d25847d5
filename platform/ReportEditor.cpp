#include "platform/ReportEditor.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QPointer>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kv {

namespace {

constexpr int kFrame = 1;
constexpr int kMargin = 3; // with the frame

} // namespace

QString InOneLine(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    // The last two are breaks for a text document, too.
    for (const QChar lineBreak : {QChar(QChar::LineFeed), QChar(QChar::CarriageReturn),
                                  QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)})
        text.replace(lineBreak, QLatin1Char(' '));
    return text;
}

ReportEditor::ReportEditor(QWidget* port, bool isMultiLine, ReportEditorHooks hooks)
    : QPlainTextEdit(port)
    , m_isMultiLine(isMultiLine)
    , m_hooks(std::move(hooks))
{
    setFrameStyle(static_cast<int>(QFrame::Box) | static_cast<int>(QFrame::Plain));
    setLineWidth(kFrame);
    setLineWrapMode(NoWrap);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabChangesFocus(false);
    document()->setDocumentMargin(kMargin - kFrame);
    const auto changed = [this] {
        const auto tell = m_hooks.changed; // may let go of this editor
        tell();
    };
    connect(document(), &QTextDocument::contentsChanged, this, &ReportEditor::UpdateDirection);
    connect(this, &QPlainTextEdit::textChanged, this, changed);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, changed);
}

void ReportEditor::LetGo()
{
    m_hooks = {[] {}, [](int, bool) {}, [] {}, [](const QString&) { return false; }};
}

// As the first letter that has one reads, so that an Arabic or Hebrew text stands at the right.
void ReportEditor::UpdateDirection()
{
    QTextOption option = document()->defaultTextOption();
    const Qt::LayoutDirection direction =
        document()->toRawText().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
    if (option.textDirection() == direction)
        return;
    option.setTextDirection(direction);
    option.setAlignment(direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft);
    document()->setDefaultTextOption(option);
}

QSize ReportEditor::NaturalSize() const
{
    const QFontMetricsF metrics(font());
    qreal width = 0;
    qreal height = 0;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QString text = block.text();
        const QTextLayout& layout = *block.layout(); // knows what an input method is composing, too
        text.insert(layout.preeditAreaPosition(), layout.preeditAreaText());
        width = std::max(width, metrics.horizontalAdvance(text));
        // As it is laid out: a font that stands in for another may be higher, and what has no room would
        // scroll.
        height += std::max(metrics.lineSpacing(), blockBoundingRect(block).height());
    }
    return {static_cast<int>(std::ceil(width)) + 2 * kMargin + cursorWidth() + 1,
            static_cast<int>(std::ceil(height)) + 2 * kMargin};
}

bool ReportEditor::IsEndingKey(const QKeyEvent& event) const
{
    // With these keys the host's tabs and windows are changed, or nothing is.
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return !(m_isMultiLine && event.modifiers().testFlag(Qt::ShiftModifier));
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
        return true;
    default:
        return false;
    }
}

bool ReportEditor::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && IsEndingKey(static_cast<QKeyEvent&>(*event))) {
        event->accept(); // before a dialog closes by it
        return true;
    }
    // Tab would go to the next control before the key gets here.
    if (event->type() == QEvent::KeyPress && IsEndingKey(static_cast<QKeyEvent&>(*event))) {
        keyPressEvent(static_cast<QKeyEvent*>(event));
        return true;
    }
    return QPlainTextEdit::event(event);
}

void ReportEditor::keyPressEvent(QKeyEvent* event)
{
    if (!IsEndingKey(*event)) {
        TakeKey(*event);
        return;
    }
    event->accept();
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier) || event->key() == Qt::Key_Backtab;
    const int key = event->key() == Qt::Key_Backtab ? Qt::Key_Tab
                    : event->key() == Qt::Key_Enter ? Qt::Key_Return
                                                    : event->key();
    const auto ended = m_hooks.ended; // may delete this editor
    ended(key, shift);
}

void ReportEditor::TakeKey(QKeyEvent& event)
{
    const bool isPlain = !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (isPlain)
            insertPlainText(QStringLiteral("\n")); // a paragraph, not a line separator
        break;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        event.setAccepted(!event.modifiers().testFlag(Qt::ControlModifier)); // the host's tabs
        break;
    default:
        QPlainTextEdit::keyPressEvent(&event);
        break;
    }
}

void ReportEditor::inputMethodEvent(QInputMethodEvent* event)
{
    QPlainTextEdit::inputMethodEvent(event);
    const auto tell = m_hooks.changed; // a text that is being composed is no change of the document
    tell();
}

// The base lets the other buttons go on to the list, for which a press ends the editing.
void ReportEditor::mousePressEvent(QMouseEvent* event)
{
    QPlainTextEdit::mousePressEvent(event);
    event->accept();
}

void ReportEditor::mouseReleaseEvent(QMouseEvent* event)
{
    QPlainTextEdit::mouseReleaseEvent(event);
    event->accept();
}

void ReportEditor::focusOutEvent(QFocusEvent* event)
{
    QPlainTextEdit::focusOutEvent(event);
    const auto left = m_hooks.left;
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        left();
}

void ReportEditor::wheelEvent(QWheelEvent* event)
{
    event->ignore(); // the list scrolls
}

void ReportEditor::insertFromMimeData(const QMimeData* source)
{
    QString text = source->text();
    if (!m_isMultiLine)
        text = InOneLine(std::move(text));
    const QPointer<ReportEditor> self(this);
    const auto replaces = m_hooks.replaces; // may delete this editor
    const bool isWhole = replaces(text);
    if (!self)
        return;
    if (isWhole)
        selectAll();
    insertPlainText(text);
}

} // namespace kv
