#include "window/Fields.h"

#include "KvColorMapWnd.h"
#include "KvParamEdit.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QTextDocument>

namespace titler {
namespace {

// Shows a field's value instead of what is typed. @return false when there is no such text.
bool DropTyped(QWidget& field)
{
    const auto* edit = qobject_cast<QLineEdit*>(&field);
    if (edit == nullptr)
        edit = field.findChild<QLineEdit*>();
    if (edit == nullptr)
        return false;
    const QString typed = edit->text();
    if (auto* whole = qobject_cast<QSpinBox*>(&field))
        whole->setSuffix(whole->suffix()); // shows the value anew
    else if (auto* real = qobject_cast<QDoubleSpinBox*>(&field))
        real->setSuffix(real->suffix());
    else if (auto* text = qobject_cast<QLineEdit*>(&field))
        while (text->isUndoAvailable())
            text->undo();
    return edit->text() != typed;
}

class FieldEvents : public QObject
{
public:
    explicit FieldEvents(QWidget& field)
        : QObject(&field)
        , m_field(field)
        , m_number(qobject_cast<QAbstractSpinBox*>(&field))
        , m_colourNumber(qobject_cast<CKvParamEdit*>(&field))
        , m_hasWheel(HasWheel(field))
    {
    }

    bool HasWheel() const { return m_hasWheel; }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::ShortcutOverride:
            return OnShortcut(static_cast<QKeyEvent&>(*event));
        case QEvent::KeyPress: // a shortcut that was ours, or that the window refuses while a key is held
            return IsWindows(static_cast<QKeyEvent&>(*event));
        case QEvent::Wheel:
            event->ignore();
            return m_hasWheel && !m_field.hasFocus();
        default:
            return false;
        }
    }

private:
    static bool HasWheel(const QWidget& field)
    {
        return qobject_cast<const QAbstractSpinBox*>(&field) != nullptr ||
               qobject_cast<const QComboBox*>(&field) != nullptr ||
               qobject_cast<const QAbstractSlider*>(&field) != nullptr ||
               qobject_cast<const CKvParamEdit*>(&field) != nullptr ||
               qobject_cast<const CKvColorMapWnd*>(&field) != nullptr;
    }
    bool IsWindows(const QKeyEvent& key) const
    {
        return key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo) || IsBlank(key);
    }
    bool IsBlank(const QKeyEvent& key) const
    {
        const bool isNumber = m_number != nullptr || m_colourNumber != nullptr;
        return isNumber && key.key() == Qt::Key_Space && key.modifiers() == Qt::NoModifier;
    }
    // Swallowed and not accepted, a key goes on to the window's actions.
    bool OnShortcut(QKeyEvent& key)
    {
        key.ignore();
        if (IsBlank(key) && m_number != nullptr)
            m_number->interpretText(); // before playback moves the time
        if (IsBlank(key) && m_colourNumber != nullptr)
            m_colourNumber->EndTyping();
        if (key.matches(QKeySequence::Undo) && DropTyped(m_field))
            key.accept();
        return IsWindows(key);
    }

    QWidget& m_field;
    QAbstractSpinBox* m_number;   ///< or null, as the next one
    CKvParamEdit* m_colourNumber; ///< of the colour panel
    bool m_hasWheel;
};

class FocusGiver : public QObject
{
public:
    FocusGiver(QWidget& whole, QWidget& part) : QObject(&whole), m_part(part)
    {
        whole.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn)
            m_part.setFocus(static_cast<QFocusEvent*>(event)->reason());
        return false;
    }

private:
    QWidget& m_part;
};

} // namespace

void FocusFirst(QWidget& whole, QWidget& part)
{
    new FocusGiver(whole, part); // the whole deletes it
}

void TabAtChecked(QButtonGroup& group)
{
    const auto update = [&group] {
        for (QAbstractButton* button : group.buttons())
            button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    };
    QObject::connect(&group, &QButtonGroup::idToggled, &group, update);
    update();
}

void NameField(QWidget& field, UINT nameId)
{
    InEachLanguage(field, [&field, nameId] {
        field.setAccessibleName(WithoutMnemonic(Text(nameId)));
        field.setToolTip(Text(nameId + 1));
    });
}

void NameButton(QAbstractButton& button, UINT nameId)
{
    InEachLanguage(button, [&button, nameId] {
        button.setText(Text(nameId));
        button.setAccessibleName(WithoutMnemonic(button.text())); // the toolkit leaves a letter in brackets
        button.setToolTip(Text(nameId + 1));
    });
}

QLabel* FieldLabel(UINT nameId, QWidget& field)
{
    auto* label = new QLabel;
    label->setBuddy(&field);
    InEachLanguage(*label, [label, nameId] {
        label->setText(Text(nameId));
        label->setAccessibleName(WithoutMnemonic(label->text()));
        label->setToolTip(Text(nameId + 1));
    });
    return label;
}

QLabel* RowLabel(UINT nameId, QWidget& field)
{
    QLabel* label = FieldLabel(nameId, field);
    label->setMinimumWidth(label->fontMetrics().averageCharWidth() * 11);
    return label;
}

QString PlainTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QLabel* Heading(UINT textId)
{
    auto* label = new QLabel;
    InEachLanguage(*label, [label, textId] {
        label->setText(Text(textId));
        label->setAccessibleName(WithoutMnemonic(label->text())); // it may be a field's
    });
    label->setProperty("role", "heading");
    return label;
}

void JoinProject(QWidget& field)
{
    auto* events = new FieldEvents(field);
    field.installEventFilter(events);
    if (auto* edit = field.findChild<QLineEdit*>())
        edit->installEventFilter(events);
    if (events->HasWheel())
        field.setFocusPolicy(Qt::StrongFocus);
}

void PrepareNumber(QDoubleSpinBox& field, UINT nameId, double least, double most, UINT unitId)
{
    NameField(field, nameId);
    field.setRange(least, most);
    field.setDecimals(1);
    InEachLanguage(field, [&field, unitId] { field.setSuffix(Text(unitId)); });
    field.setKeyboardTracking(false);
    JoinProject(field);
}

void CommitFields(QWidget& window)
{
    for (CKvParamEdit* number : window.findChildren<CKvParamEdit*>())
        number->EndTyping();
    for (QAbstractSpinBox* number : window.findChildren<QAbstractSpinBox*>())
        number->interpretText();
    for (QLineEdit* edit : window.findChildren<QLineEdit*>())
        if (edit->isModified())
            emit edit->editingFinished();
}

} // namespace titler
