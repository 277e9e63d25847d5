// The corners of a four-corner gradient as parts that a screen reader finds.
#pragma once

#include "color/QuadGradient.h"
#include "platform/AccessibleParts.h"

namespace kv {

class QuadModel;
struct QuadLayout;

/// What a screen reader's user does; it may delete the control.
class QuadUser
{
public:
    virtual void FocusCorner(int corner) = 0;

protected:
    ~QuadUser() = default;
};

class QuadAccess : public AccessibleParts
{
public:
    QuadAccess(QWidget& control, const QuadModel& model, const QuadLayout& layout, QuadUser& user);

    /// Compares colours and selection with those of the last call and tells what is different.
    void Update();
    /// The texts are in another language.
    void TextsChanged();

    QString ControlName() const override;
    int Count() const override;
    Key KeyAt(int index) const override { return static_cast<Key>(index); }
    AccessiblePart Describe(Key key) const override;
    std::optional<Key> FocusedPart() const override;
    void DoAction(Key key, const QString& action) override;

private:
    const QuadModel& m_model;
    const QuadLayout& m_layout;
    QuadUser& m_user;
    QuadColours m_seen;
};

} // namespace kv
