// The layouts of a strip as parts that a screen reader finds.
#pragma once

#include "platform/AccessibleParts.h"

namespace kv {

enum StripTextNumber : std::uint32_t
{
    kTextLayouts = 20380,
    kTextLayout = 20381,
    kTextNamedLayout = 20382,
};

/// The strip, as a screen reader sees it. What its user does may delete the control.
class StripUser
{
public:
    virtual int LayoutCount() const = 0;
    /// Empty for a layout that has none, or that is not in view: its thumbnail would have to be made.
    virtual QString LayoutName(int index) = 0;
    /// Client coordinates.
    virtual QRect LayoutRect(int index) const = 0;
    virtual bool IsLayoutSelected(int index) const = 0;
    /// The layout that the keys start from; -1 without layouts.
    virtual int CurrentLayout() const = 0;
    virtual void PickLayout(int index) = 0;
    virtual void FocusLayout(int index) = 0;

protected:
    ~StripUser() = default;
};

class StripAccess : public AccessibleParts
{
public:
    StripAccess(QWidget& control, StripUser& user) : AccessibleParts(control, QAccessible::List), m_user(user)
    {
    }

    QString ControlName() const override;
    int Count() const override { return m_user.LayoutCount(); }
    Key KeyAt(int index) const override { return static_cast<Key>(index); }
    int IndexOf(Key key) const override;
    AccessiblePart Describe(Key key) const override;
    std::optional<Key> FocusedPart() const override;
    void DoAction(Key key, const QString& action) override;

private:
    StripUser& m_user;
};

} // namespace kv
