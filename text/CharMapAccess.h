// The characters of a grid as parts that a screen reader finds.
#pragma once

#include "platform/AccessibleParts.h"
#include "text/CharMapModel.h"

namespace kv {

/// What a screen reader's user does; each may delete the control.
class CharMapUser
{
public:
    virtual void PickCharacter(int index) = 0;
    virtual void FocusCharacter(int index) = 0;

protected:
    ~CharMapUser() = default;
};

class CharMapAccess : public AccessibleParts
{
public:
    CharMapAccess(QWidget& control, const CharMapModel& model, CharMapUser& user);

    QString ControlName() const override;
    int Count() const override { return m_model.Count(); }
    /// A part's key is its character.
    Key KeyAt(int index) const override { return m_model.Table()[static_cast<std::size_t>(index)].code; }
    int IndexOf(Key key) const override;
    AccessiblePart Describe(Key key) const override;
    std::optional<Key> FocusedPart() const override;
    void DoAction(Key key, const QString& action) override;

private:
    const CharMapModel& m_model;
    CharMapUser& m_user;
};

} // namespace kv
