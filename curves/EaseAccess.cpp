#include "curves/EaseAccess.h"

#include "KvPlatform.h"
#include "core/TextTables.h"
#include "curves/EaseWords.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kv {

namespace {

constexpr std::uint32_t kTextCurve = 20040;
constexpr double kSteps = 100; // in the range of values

EaseHandle HandleAt(AccessibleParts::Key key)
{
    return static_cast<EaseHandle>(key);
}

} // namespace

EaseAccess::EaseAccess(QWidget& control, EaseUser& user)
    : AccessibleParts(control, QAccessible::Grouping)
    , m_user(user)
{
}

void EaseAccess::Update()
{
    const int oldCount = std::exchange(m_seenCount, Count());
    if (oldCount != m_seenCount)
        PartsChanged();
    const EasePoints before = std::exchange(m_seen, m_user.Curve().points);
    for (Key key = 0; key < Key(m_seenCount); ++key) {
        const auto place = static_cast<std::size_t>(key);
        if (before[place].y != m_seen[place].y)
            ValueChanged(key);
        else if (before[place].x != m_seen[place].x)
            NameChanged(key); // makes a reader ask for the description, where the time stands
    }
    UpdateFocus();
}

void EaseAccess::TextsChanged()
{
    for (Key key = 0; key < Key(Count()); ++key)
        NameChanged(key);
}

QString EaseAccess::ControlName() const
{
    return KvToQString(LoadText(kTextCurve));
}

int EaseAccess::Count() const
{
    return IsSensible(m_user.Curve()) ? kEaseHandles : 0;
}

// A handle that is not locked may leave the range of values; as far again as the range is high is far enough
// for a slider, but where it stands always belongs to it.
AccessibleValue EaseAccess::ValueOf(EaseHandle handle) const
{
    const EaseCurve& curve = m_user.Curve();
    const double value = curve[handle].y;
    EaseRange limits = ValueLimits(curve, handle);
    if (std::isinf(limits.minimum)) {
        const double key = curve[KeyOf(handle)].y;
        limits = {key - curve.Span(), key + curve.Span()};
    }
    return {value, std::min(limits.minimum, value), std::max(limits.maximum, value), curve.Span() / kSteps};
}

AccessiblePart EaseAccess::Describe(Key key) const
{
    const EaseHandle handle = HandleAt(key);
    const EaseLayout layout = m_user.Layout();
    const SKvCurvePoint place = m_user.Curve()[handle];
    AccessiblePart part;
    part.role = QAccessible::Slider;
    part.name = KvToQString(HandleName(handle));
    part.description = KvToQString(PlaceText(layout, place));
    const SKvCurvePoint pixel = layout.ToPixel(place);
    const auto edge = [](double centre) {
        constexpr double far = 1e6; // outside every window
        return static_cast<int>(std::clamp(centre, -far, far)) - EaseLayout::kHandleBox / 2;
    };
    part.rect = {edge(pixel.x), edge(pixel.y), EaseLayout::kHandleBox, EaseLayout::kHandleBox};
    part.value = ValueOf(handle);
    part.selectable = m_user.CanMove(handle);
    part.selected = m_user.Selected() == handle;
    if (m_user.CanMove(handle))
        part.actions = {
            QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::setFocusAction(),
            QAccessibleActionInterface::increaseAction(), QAccessibleActionInterface::decreaseAction()};
    return part;
}

std::optional<AccessibleParts::Key> EaseAccess::FocusedPart() const
{
    const std::optional<EaseHandle> selected = m_user.Selected();
    return selected ? std::optional(static_cast<Key>(*selected)) : std::nullopt;
}

void EaseAccess::SetValue(Key key, double value)
{
    m_user.PlaceHandle(HandleAt(key), {m_user.Curve()[HandleAt(key)].x, value});
}

void EaseAccess::DoAction(Key key, const QString& action)
{
    if (action == QAccessibleActionInterface::pressAction() ||
        action == QAccessibleActionInterface::setFocusAction()) {
        m_user.FocusHandle(HandleAt(key));
        return;
    }
    const AccessibleValue range = ValueOf(HandleAt(key));
    const double step = action == QAccessibleActionInterface::increaseAction() ? range.step : -range.step;
    SetValue(key, std::clamp(range.current + step, range.minimum, range.maximum));
}

} // namespace kv
