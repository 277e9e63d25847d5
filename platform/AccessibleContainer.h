// The interface of a control that paints parts, as the toolkit asks for it.
#pragma once

#include "platform/AccessibleTable.h"

#include <QAccessibleWidget>
#include <QWidget>

#include <map>
#include <optional>

namespace kv {

/// The control's own interface: its real children first, then its parts. It outlives the parts when the
/// toolkit still asks while the control is being destroyed.
class AccessibleContainer : public QAccessibleWidget
{
public:
    using Key = AccessibleParts::Key;

    explicit AccessibleContainer(AccessibleParts& parts)
        : QAccessibleWidget(&parts.Control(), parts.Role())
        , m_parts(&parts)
    {
        parts.m_containers.push_back(this);
    }
    ~AccessibleContainer() override;

    AccessibleParts* Parts() const { return m_parts; }
    void Detach()
    {
        m_parts = nullptr;
        m_table.reset();
    }
    /// The interface of a part, made on first use. Its id stays the same as long as the part is there.
    QAccessibleInterface* Part(Key key) const;
    /// The interface where somebody has asked for it before, else null.
    QAccessibleInterface* KnownPart(Key key) const;
    /// Ends the interfaces of parts that are gone.
    void DropGone();

    QString text(QAccessible::Text text) const override;
    QAccessible::State state() const override;
    int childCount() const override { return QAccessibleWidget::childCount() + PartCount(); }
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* focusChild() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

private:
    int PartCount() const { return m_parts ? m_parts->Count() : 0; }
    std::optional<Key> FocusedPart() const;

    AccessibleParts* m_parts;
    mutable std::map<Key, QAccessible::Id> m_ids;
    std::optional<AccessibleTableAdapter> m_table;
};

} // namespace kv
