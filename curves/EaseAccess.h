// The ease curve's four handles as parts that a screen reader finds.
#pragma once

#include "curves/EaseLayout.h"
#include "platform/AccessibleParts.h"

#include <vector>

namespace kv {

/// The window as a screen reader's user knows it. What the user does is a user action as if by key and may
/// delete the control.
class EaseUser
{
public:
    virtual const EaseCurve& Curve() const = 0;
    virtual EaseLayout Layout() const = 0;
    /// False also for a curve that cannot be edited at all.
    virtual bool CanMove(EaseHandle handle) const = 0;
    virtual std::optional<EaseHandle> Selected() const = 0;
    virtual void PlaceHandle(EaseHandle handle, SKvCurvePoint place) = 0;
    virtual void FocusHandle(EaseHandle handle) = 0;

protected:
    ~EaseUser() = default;
};

class EaseAccess : public AccessibleParts
{
public:
    EaseAccess(QWidget& control, EaseUser& user);

    /// Compares with the last call and tells what is different.
    void Update();
    /// The texts are in another language.
    void TextsChanged();

    QString ControlName() const override;
    /// None while the curve makes no sense.
    int Count() const override;
    Key KeyAt(int index) const override { return static_cast<Key>(index); }
    AccessiblePart Describe(Key key) const override;
    std::optional<Key> FocusedPart() const override;
    void SetValue(Key key, double value) override;
    void DoAction(Key key, const QString& action) override;

private:
    AccessibleValue ValueOf(EaseHandle handle) const;

    EaseUser& m_user;
    EasePoints m_seen{};
    int m_seenCount = 0;
};

} // namespace kv
