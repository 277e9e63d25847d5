#include "chrome/HostMnemonics.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QTabBar>

namespace kv {

namespace {

class Letters
{
public:
    void AddKey(const QKeySequence& sequence)
    {
        if (sequence.isEmpty())
            return;
        const QKeyCombination key = sequence[0];
        const int code = key.key();
        const bool isLetter = code >= Qt::Key_A && code <= Qt::Key_Z;
        const bool isDigit = code >= Qt::Key_0 && code <= Qt::Key_9;
        if (key.keyboardModifiers() == Qt::AltModifier && (isLetter || isDigit))
            m_letters += static_cast<wchar_t>(code);
    }

    void AddText(const QString& text) { AddKey(QKeySequence::mnemonic(text)); }

    void AddActions(const QList<QAction*>& actions, int depth = 0)
    {
        constexpr int deepest = 8; // a menu may be within itself
        for (const QAction* action : actions) {
            for (const QKeySequence& sequence : action->shortcuts())
                AddKey(sequence);
            if (const QMenu* menu = action->menu(); menu && depth < deepest)
                AddActions(menu->actions(), depth + 1);
        }
    }

    void AddWidget(const QWidget& widget)
    {
        AddActions(widget.actions());
        if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            AddKey(button->shortcut());
        } else if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            if (label->buddy())
                AddText(label->text());
        } else if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
            AddText(group->title());
        } else if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
            for (int i = 0; i < tabs->count(); ++i)
                AddText(tabs->tabText(i));
        } else if (qobject_cast<const QMenuBar*>(&widget)) {
            for (const QAction* action : widget.actions())
                AddText(action->text());
        }
    }

    std::wstring Take() && { return std::move(m_letters); }

private:
    std::wstring m_letters;
};

} // namespace

std::wstring HostMnemonics(const QWidget& window)
{
    Letters letters;
    letters.AddWidget(window);
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() == &window && widget->isVisible())
            letters.AddWidget(*widget);
    }
    for (const QShortcut* shortcut : window.findChildren<QShortcut*>()) {
        const auto* parent = qobject_cast<const QWidget*>(shortcut->parent());
        if (parent && parent->window() == &window && parent->isVisible())
            letters.AddKey(shortcut->key());
    }
    return std::move(letters).Take();
}

} // namespace kv
