// The editor of a report list's cell. It grows with its text; the list moves it.
#pragma once

#include <QPlainTextEdit>

#include <functional>

namespace kv {

/// What the editor asks of its list. Each may delete the editor.
struct ReportEditorHooks
{
    std::function<void()> changed;                     ///< the text or the caret
    std::function<void(int key, bool shift)> ended;    ///< Qt::Key_Return, Key_Tab or Key_Escape
    std::function<void()> left;                        ///< the focus went elsewhere
    std::function<bool(const QString& text)> replaces; ///< whether a pasted text takes the whole cell
};

/// A text in one line: its breaks are blanks.
QString InOneLine(QString text);

class ReportEditor : public QPlainTextEdit
{
public:
    /// Its parent shows the part of it that is in view.
    ReportEditor(QWidget* port, bool isMultiLine, ReportEditorHooks hooks);

    /// Asks nothing any more: the list is done with it, and it only waits for its end.
    void LetGo();

    /// The size that shows the whole text and the caret behind it.
    QSize NaturalSize() const;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void UpdateDirection();
    bool IsEndingKey(const QKeyEvent& event) const;
    void TakeKey(QKeyEvent& event);

    const bool m_isMultiLine;
    ReportEditorHooks m_hooks;
};

} // namespace kv
