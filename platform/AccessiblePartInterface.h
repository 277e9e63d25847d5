// The interface of one painted part, as the toolkit asks for it.
#pragma once

#include "platform/AccessibleContainer.h"

namespace kv {

class AccessiblePartInterface : public QAccessibleInterface,
                                public QAccessibleValueInterface,
                                public QAccessibleActionInterface
{
public:
    using Key = AccessibleParts::Key;

    AccessiblePartInterface(const AccessibleContainer& container, Key key)
        : m_container(container)
        , m_key(key)
    {
    }

    Key PartKey() const { return m_key; }

    bool isValid() const override { return IsThere() || m_isLeaving; }
    /// The part is gone; its end can be told only of a valid interface.
    void Leave() { m_isLeaving = true; }
    // Never the control: it would take the container's place.
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_container.window(); }
    QAccessibleInterface* parent() const override { return const_cast<AccessibleContainer*>(&m_container); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QString text(QAccessible::Text text) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return Describe().role; }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override { return Value().current; }
    QVariant minimumValue() const override { return Value().minimum; }
    QVariant maximumValue() const override { return Value().maximum; }
    QVariant minimumStepSize() const override { return Value().step; }
    void setCurrentValue(const QVariant& value) override;

    QStringList actionNames() const override;
    void doAction(const QString& action) override;
    QStringList keyBindingsForAction(const QString& action) const override;

private:
    bool IsThere() const { return m_container.Parts() && m_container.Parts()->IndexOf(m_key) >= 0; }
    AccessiblePart Describe() const
    {
        return IsThere() ? m_container.Parts()->Describe(m_key) : AccessiblePart();
    }
    QString Shortcut() const { return IsThere() ? m_container.Parts()->Shortcut(m_key) : QString(); }
    AccessibleValue Value() const { return Describe().value.value_or(AccessibleValue{}); }
    bool CanAct() const
    {
        return IsThere() && m_container.Parts()->Control().isEnabled() && !Describe().disabled;
    }

    const AccessibleContainer& m_container;
    const Key m_key;
    bool m_isLeaving = false;
    std::optional<AccessibleCellAdapter> m_cell;
};

} // namespace kv
