#include "color/ColourMapAccess.h"

#include "KvColorMapWnd.h"
#include "color/ColourWords.h"
#include "core/Text.h"
#include "core/TextTables.h"

#include <algorithm>
#include <cmath>

namespace kv {

namespace {

enum Texts : std::uint32_t
{
    kTextFirstChannel = 20340, ///< red, green, blue, hue, saturation, brightness, alpha
    kTextNumber = 20347,
    kTextDegrees = 20348,
    kTextPercent = 20349,
    kTextField = 20350,
    kTextSlider = 20351,
    kTextAlphaSlider = 20352,
};

ColourChannel ChannelOf(AccessibleParts::Key key)
{
    return static_cast<ColourChannel>(key);
}

AccessibleParts::Key KeyOf(ColourChannel channel)
{
    return static_cast<AccessibleParts::Key>(channel);
}

} // namespace

QString ChannelName(ColourChannel channel)
{
    return KvToQString(LoadText(kTextFirstChannel + static_cast<std::uint32_t>(channel)));
}

QString ChannelText(ColourChannel channel, int value)
{
    const std::uint32_t text = channel == ColourChannel::Hue ? kTextDegrees
                               : IsHsb(channel)              ? kTextPercent
                                                             : kTextNumber;
    return KvToQString(
        FillText(LoadText(text), {KvFromQString(ChannelName(channel)), NumberText(std::int64_t{value})}));
}

ColourMapAccess::ColourMapAccess(QWidget& control, ColourMapUser& user)
    : AccessibleParts(control, QAccessible::Grouping)
    , m_user(user)
{
}

void ColourMapAccess::Update()
{
    const ColourState before = std::exchange(m_seen, m_user.Colour());
    for (int i = 0; i < Count(); ++i) {
        const ColourChannel channel = ChannelOf(KeyAt(i));
        if (before.Shown(channel) != m_seen.Shown(channel))
            ValueChanged(KeyOf(channel));
    }
}

void ColourMapAccess::FollowChannel(ColourChannel channel)
{
    m_followed = channel;
    UpdateFocus();
}

void ColourMapAccess::NamesChanged()
{
    PartsChanged();
    for (int i = 0; i < Count(); ++i)
        NameChanged(KeyAt(i));
}

QString ColourMapAccess::ControlName() const
{
    const int type = m_user.Shape().type;
    return KvToQString(LoadText(type == kKvColorMapField    ? kTextField
                                : type == kKvColorMapSlider ? kTextSlider
                                                            : kTextAlphaSlider));
}

int ColourMapAccess::Count() const
{
    return ChannelToTheRight(m_user.Shape()) ? 2 : 1;
}

AccessibleParts::Key ColourMapAccess::KeyAt(int index) const
{
    const ColourMapShape shape = m_user.Shape();
    const auto right = ChannelToTheRight(shape);
    return KeyOf(right && index == 0 ? *right : ChannelUpwards(shape));
}

AccessiblePart ColourMapAccess::Describe(Key key) const
{
    const ColourChannel channel = ChannelOf(key);
    const int value = m_user.Colour().Shown(channel);
    AccessiblePart part;
    part.role = QAccessible::Slider;
    part.name = ChannelName(channel);
    part.description = ChannelText(channel, value) + QStringLiteral(", ") +
                       KvToQString(ColourWords(m_user.Colour().Value()));
    part.rect = m_user.Shape().client;
    part.value = AccessibleValue{double(value), 0, double(MostOf(channel)), 1};
    part.actions = {QAccessibleActionInterface::setFocusAction(),
                    QAccessibleActionInterface::increaseAction(),
                    QAccessibleActionInterface::decreaseAction()};
    return part;
}

std::optional<AccessibleParts::Key> ColourMapAccess::FocusedPart() const
{
    for (int i = 0; i < Count(); ++i) {
        if (m_followed && KeyAt(i) == KeyOf(*m_followed))
            return KeyAt(i);
    }
    return KeyAt(0);
}

void ColourMapAccess::SetValue(Key key, double value)
{
    m_user.EnterValue(ChannelOf(key), static_cast<int>(std::lround(value)));
}

void ColourMapAccess::DoAction(Key key, const QString& action)
{
    if (action == QAccessibleActionInterface::setFocusAction()) {
        FollowChannel(ChannelOf(key));
        Control().setFocus();
        return;
    }
    const ColourChannel channel = ChannelOf(key);
    const int step = action == QAccessibleActionInterface::increaseAction() ? 1 : -1;
    m_user.EnterValue(channel, std::clamp(m_user.Colour().Shown(channel) + step, 0, MostOf(channel)));
}

} // namespace kv
