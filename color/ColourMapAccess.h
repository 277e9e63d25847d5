// The channels of a colour map as sliders that a screen reader finds.
#pragma once

#include "color/ColourMapPainter.h"
#include "platform/AccessibleParts.h"

namespace kv {

/// The everyday name of a channel, from the string table.
QString ChannelName(ColourChannel channel);
/// Name and number, with the unit where there is one.
QString ChannelText(ColourChannel channel, int value);

/// What a screen reader asks for and does.
class ColourMapUser
{
public:
    virtual ColourMapShape Shape() const = 0;
    virtual const ColourState& Colour() const = 0;
    /// A user action as if by key; may delete the control.
    virtual void EnterValue(ColourChannel channel, int value) = 0;

protected:
    ~ColourMapUser() = default;
};

/// The parts' keys are the channels.
class ColourMapAccess : public AccessibleParts
{
public:
    ColourMapAccess(QWidget& control, ColourMapUser& user);

    /// Compares the values with those of the last call and tells which changed.
    void Update();
    /// The channel that the user turns to is the part that has the focus; at first that is the first one.
    void FollowChannel(ColourChannel channel);
    /// Other channels or another language.
    void NamesChanged();

    QString ControlName() const override;
    int Count() const override;
    Key KeyAt(int index) const override;
    AccessiblePart Describe(Key key) const override;
    std::optional<Key> FocusedPart() const override;
    void SetValue(Key key, double value) override;
    void DoAction(Key key, const QString& action) override;

private:
    ColourMapUser& m_user;
    ColourState m_seen;
    std::optional<ColourChannel> m_followed;
};

} // namespace kv
