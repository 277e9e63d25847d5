#include "Fields.h"

#include "Texts.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace titler {
namespace {

class UndoKeys : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::ShortcutOverride)
            return false;
        const auto& key = static_cast<const QKeyEvent&>(*event);
        // Swallowed here and not accepted, the key goes on to the window's actions.
        event->ignore();
        return key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo);
    }
};

} // namespace

void NameField(QWidget& field, UINT nameId)
{
    field.setAccessibleName(Text(nameId).remove(u'&'));
    field.setToolTip(Text(nameId + 1));
}

QLabel* FieldLabel(UINT nameId, QWidget& field)
{
    auto* label = new QLabel(Text(nameId));
    label->setBuddy(&field);
    label->setToolTip(Text(nameId + 1));
    return label;
}

QLabel* RowLabel(UINT nameId, QWidget& field)
{
    QLabel* label = FieldLabel(nameId, field);
    label->setMinimumWidth(label->fontMetrics().averageCharWidth() * 11);
    return label;
}

QLabel* Heading(UINT textId)
{
    auto* label = new QLabel(Text(textId));
    label->setProperty("role", "heading");
    return label;
}

void UndoProjectFrom(QWidget& field)
{
    field.installEventFilter(new UndoKeys(&field));
    if (auto* edit = field.findChild<QLineEdit*>())
        edit->installEventFilter(new UndoKeys(edit));
}

} // namespace titler
