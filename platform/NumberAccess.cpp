#include "platform/NumberAccess.h"

#include "KvParamEdit.h"

#include <QAccessibleWidget>

namespace kv {

namespace {

class NumberInterface : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit NumberInterface(CKvParamEdit& edit)
        : QAccessibleWidget(&edit, QAccessible::SpinBox)
        , m_edit(edit)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text text) const override
    {
        // Without a description of its own the toolkit takes the tool tip, which is the name once more.
        const QString found = QAccessibleWidget::text(text);
        const bool isRepeated = text == QAccessible::Description && found == this->text(QAccessible::Name);
        return isRepeated ? QString() : found;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.focused = false; // the text says so; with two a reader hears both
        return state;
    }

    QVariant currentValue() const override { return m_edit.GetValue(); }
    void setCurrentValue(const QVariant& value) override
    {
        bool isNumber = false;
        const int number = value.toInt(&isNumber);
        if (isNumber && m_edit.isEnabled())
            m_edit.EnterValue(number);
    }
    QVariant minimumValue() const override { return m_edit.GetMinimum(); }
    QVariant maximumValue() const override { return m_edit.GetMaximum(); }
    QVariant minimumStepSize() const override { return m_edit.GetStep(); }

private:
    CKvParamEdit& m_edit;
};

QAccessibleInterface* MakeInterface(const QString& className, QObject* object)
{
    if (className != QLatin1String(CKvParamEdit::staticMetaObject.className()))
        return nullptr;
    return new NumberInterface(*static_cast<CKvParamEdit*>(object));
}

} // namespace

void InstallNumberAccess()
{
    QAccessible::installFactory(MakeInterface);
}

void TellNumberChanged(CKvParamEdit& edit)
{
    QAccessibleValueChangeEvent change(&edit, edit.GetValue());
    QAccessible::updateAccessibility(&change);
}

} // namespace kv
