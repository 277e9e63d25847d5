// A control without parts of its own, as a screen reader finds it.
#pragma once

#include "platform/AccessibleParts.h"

#include <functional>

namespace kv {

/// Gives a control a role, and a name where the host set none.
class NamedAccess : public AccessibleParts
{
public:
    NamedAccess(QWidget& control, QAccessible::Role role, std::function<QString()> name)
        : AccessibleParts(control, role)
        , m_name(std::move(name))
    {
    }

    QString ControlName() const override { return m_name(); }
    int Count() const override { return 0; }
    Key KeyAt(int) const override { return 0; }
    AccessiblePart Describe(Key) const override { return {}; }

private:
    std::function<QString()> m_name;
};

} // namespace kv
