// The cells of a swatch grid as parts that a screen reader finds.
#pragma once

#include "color/SwatchLayout.h"
#include "platform/AccessibleParts.h"

namespace kv {

class SwatchStore;

/// What a screen reader's user does; each may delete the control.
class SwatchUser
{
public:
    /// The cell that has the focus when the grid has it.
    virtual SwatchCell CurrentCell() const = 0;
    virtual void PickCell(const SwatchCell& cell) = 0;
    virtual void FocusCell(const SwatchCell& cell) = 0;

protected:
    ~SwatchUser() = default;
};

class SwatchAccess : public AccessibleParts
{
public:
    SwatchAccess(QWidget& control, const SwatchStore& store, const SwatchLayout& layout, SwatchUser& user);

    void SwatchChanged(int index);

    QString ControlName() const override;
    int Count() const override { return Shown() + SwatchLayout::kAlphaCells; }
    Key KeyAt(int index) const override;
    int IndexOf(Key key) const override;
    AccessiblePart Describe(Key key) const override;
    std::optional<Key> FocusedPart() const override;
    void DoAction(Key key, const QString& action) override;

private:
    int Shown() const;

    const SwatchStore& m_store;
    const SwatchLayout& m_layout;
    SwatchUser& m_user;
};

} // namespace kv
