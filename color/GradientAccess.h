// The gradient's stops and the mid points that are shown, as parts that a screen reader finds.
#pragma once

#include "platform/AccessibleParts.h"

#include <vector>

namespace kv {

class GradientModel;
struct GradientLayout;

/// What a screen reader's user does; each is a user action as if by key and may delete the control.
class GradientUser
{
public:
    virtual void PlaceStop(int stop, double position) = 0;
    virtual void SetMidPoint(int stop, float midPoint) = 0;
    virtual void FocusStop(int stop) = 0;

protected:
    ~GradientUser() = default;
};

class GradientAccess : public AccessibleParts
{
public:
    GradientAccess(QWidget& control, const GradientModel& model, const GradientLayout& layout,
                   GradientUser& user);

    /// Compares the stops with those of the last call and tells what is different.
    void Update();
    /// The texts are in another language.
    void TextsChanged();

    QString ControlName() const override;
    int Count() const override { return static_cast<int>(Keys().size()); }
    Key KeyAt(int index) const override;
    int IndexOf(Key key) const override;
    AccessiblePart Describe(Key key) const override;
    std::optional<Key> FocusedPart() const override;
    void SetValue(Key key, double percent) override;
    void DoAction(Key key, const QString& action) override;

private:
    /// What a part's name is made of.
    struct NameParts
    {
        int stop;
        int count;
        std::uint32_t colour;
        bool operator==(const NameParts&) const = default;
    };
    struct Seen
    {
        Key key;
        float value;
        NameParts name;
    };

    std::vector<Key> Keys() const;
    std::vector<Seen> Look() const;
    /// The stop that a key speaks of; a mid point is that of the stop behind it.
    int StopOf(Key key) const;
    AccessiblePart DescribeStop(int stop) const;
    AccessiblePart DescribeMidPoint(int stop) const;

    const GradientModel& m_model;
    const GradientLayout& m_layout;
    GradientUser& m_user;
    std::vector<Seen> m_seen;
};

} // namespace kv
