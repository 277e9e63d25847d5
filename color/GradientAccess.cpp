#include "color/GradientAccess.h"

#include "KvPlatform.h"
#include "color/ColourWords.h"
#include "color/GradientLayout.h"
#include "color/GradientModel.h"
#include "color/PercentEntry.h"
#include "core/Text.h"
#include "core/TextTables.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kv {

namespace {

enum Texts : std::uint32_t
{
    kTextGradient = 20012,
    kTextStop = 20013,
    kTextPosition = 20014,
    kTextMidPoint = 20015,
    kTextMidPlace = 20017,
};

using Key = AccessibleParts::Key;

Key StopKey(std::uint32_t id)
{
    return Key{id} * 2;
}

Key MidPointKey(std::uint32_t id)
{
    return Key{id} * 2 + 1;
}

/// In percent, without the crumbs that the stored single precision leaves.
double Percent(float fraction)
{
    return std::round(100e4 * ClampPosition(fraction)) / 1e4;
}

bool IsMidPoint(Key key)
{
    return key % 2 == 1;
}

} // namespace

GradientAccess::GradientAccess(QWidget& control, const GradientModel& model, const GradientLayout& layout,
                               GradientUser& user)
    : AccessibleParts(control, QAccessible::Grouping)
    , m_model(model)
    , m_layout(layout)
    , m_user(user)
    , m_seen(Look())
{
}

std::vector<Key> GradientAccess::Keys() const
{
    std::vector<Key> keys;
    for (int stop = 0; stop < m_model.Count(); ++stop) {
        if (m_model.IsMidPointShown(stop))
            keys.push_back(MidPointKey(m_model.IdOf(stop)));
        keys.push_back(StopKey(m_model.IdOf(stop)));
    }
    return keys;
}

std::vector<GradientAccess::Seen> GradientAccess::Look() const
{
    std::vector<Seen> seen;
    for (int index = 0; index < m_model.Count(); ++index) {
        const SKvCGGradientKey& stop = m_model.Keys()[static_cast<std::size_t>(index)];
        const std::uint32_t id = m_model.IdOf(index);
        if (m_model.IsMidPointShown(index))
            seen.push_back({MidPointKey(id), stop.midPoint, {index, 0, 0}});
        seen.push_back({StopKey(id), stop.position, {index, m_model.Count(), stop.colour}});
    }
    return seen;
}

void GradientAccess::Update()
{
    // While nobody listens, too: the first change that somebody hears is compared with the one before.
    const std::vector<Seen> before = std::exchange(m_seen, Look());
    if (!QAccessible::isActive()) {
        // Interfaces that were asked for all the same must not outlive their stops.
        PartsChanged();
        return;
    }
    const auto sameKey = [](const Seen& a, const Seen& b) { return a.key == b.key; };
    if (!std::equal(before.begin(), before.end(), m_seen.begin(), m_seen.end(), sameKey))
        PartsChanged();
    for (const Seen& now : std::vector<Seen>(m_seen)) {
        const auto is = [&now](const Seen& old) { return old.key == now.key; };
        const auto old = std::find_if(before.begin(), before.end(), is);
        if (old == before.end())
            continue;
        if (old->value != now.value)
            ValueChanged(now.key);
        if (old->name != now.name)
            NameChanged(now.key);
    }
    UpdateFocus();
}

void GradientAccess::TextsChanged()
{
    for (const Key key : Keys())
        NameChanged(key);
}

QString GradientAccess::ControlName() const
{
    return KvToQString(LoadText(kTextGradient));
}

Key GradientAccess::KeyAt(int index) const
{
    return Keys()[static_cast<std::size_t>(index)];
}

int GradientAccess::IndexOf(Key key) const
{
    const std::vector<Key> keys = Keys();
    const auto found = std::find(keys.begin(), keys.end(), key);
    return found == keys.end() ? -1 : static_cast<int>(found - keys.begin());
}

int GradientAccess::StopOf(Key key) const
{
    return m_model.IndexOf(static_cast<std::uint32_t>(key / 2));
}

AccessiblePart GradientAccess::DescribeStop(int stop) const
{
    const SKvCGGradientKey& key = m_model.Keys()[static_cast<std::size_t>(stop)];
    AccessiblePart part;
    part.role = QAccessible::Slider;
    part.name = KvToQString(
        FillText(LoadText(kTextStop), {NumberText(std::int64_t{stop} + 1),
                                       NumberText(std::int64_t{m_model.Count()}), ColourWords(key.colour)}));
    part.description = KvToQString(FillText(LoadText(kTextPosition), {PercentText(key.position)}));
    part.rect = m_layout.KeyBox(key.position);
    part.value = AccessibleValue{Percent(key.position), 0, 100, 1};
    part.selectable = true;
    part.selected = stop == m_model.Selected();
    part.actions = {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::setFocusAction(),
                    QAccessibleActionInterface::increaseAction(),
                    QAccessibleActionInterface::decreaseAction()};
    return part;
}

AccessiblePart GradientAccess::DescribeMidPoint(int stop) const
{
    AccessiblePart part;
    part.role = QAccessible::Slider;
    part.name = KvToQString(FillText(LoadText(kTextMidPoint),
                                     {NumberText(std::int64_t{stop}), NumberText(std::int64_t{stop} + 1)}));
    part.description = KvToQString(FillText(LoadText(kTextMidPlace), {PercentText(m_model.MidPoint(stop))}));
    part.rect = m_layout.MidPointBox(m_model.MidPointPlace(stop));
    const double low = Percent(kMidPointMin);
    const double high = Percent(kMidPointMax);
    part.value = AccessibleValue{std::clamp(Percent(m_model.MidPoint(stop)), low, high), low, high, 1};
    part.actions = {QAccessibleActionInterface::increaseAction(),
                    QAccessibleActionInterface::decreaseAction()};
    return part;
}

AccessiblePart GradientAccess::Describe(Key key) const
{
    return IsMidPoint(key) ? DescribeMidPoint(StopOf(key)) : DescribeStop(StopOf(key));
}

std::optional<Key> GradientAccess::FocusedPart() const
{
    if (!m_model.HasSelection())
        return std::nullopt;
    return StopKey(m_model.IdOf(m_model.Selected()));
}

void GradientAccess::SetValue(Key key, double percent)
{
    if (IsMidPoint(key))
        m_user.SetMidPoint(StopOf(key), static_cast<float>(percent / 100));
    else
        m_user.PlaceStop(StopOf(key), percent / 100);
}

void GradientAccess::DoAction(Key key, const QString& action)
{
    if (action == QAccessibleActionInterface::pressAction() ||
        action == QAccessibleActionInterface::setFocusAction()) {
        m_user.FocusStop(StopOf(key));
        return;
    }
    const AccessiblePart part = Describe(key);
    const double step =
        action == QAccessibleActionInterface::increaseAction() ? part.value->step : -part.value->step;
    SetValue(key, std::clamp(part.value->current + step, part.value->minimum, part.value->maximum));
}

} // namespace kv
