#include "platform/AccessibleParts.h"

#include "platform/AccessibleContainer.h"

#include <QVariant>
#include <QWidget>

#include <utility>

namespace kv {

namespace {

constexpr char kPartsProperty[] = "_q_kvAccessibleParts"; // Qt Designer leaves such names alone

AccessibleParts* PartsOf(const QObject& control)
{
    return static_cast<AccessibleParts*>(control.property(kPartsProperty).value<void*>());
}

QAccessibleInterface* MakeContainer(const QString&, QObject* object)
{
    AccessibleParts* parts = PartsOf(*object);
    return parts ? new AccessibleContainer(*parts) : nullptr;
}

} // namespace

AccessibleParts::AccessibleParts(QWidget& control, QAccessible::Role role) : m_control(control), m_role(role)
{
    QAccessible::installFactory(MakeContainer);
    control.setProperty(kPartsProperty, QVariant::fromValue<void*>(this));
}

AccessibleParts::~AccessibleParts()
{
    m_control.setProperty(kPartsProperty, {});
    for (AccessibleContainer* container : std::exchange(m_containers, {})) {
        container->Detach();
        container->DropGone();
    }
}

const AccessibleParts* AccessibleParts::Of(const QWidget* control)
{
    return control ? PartsOf(*control) : nullptr;
}

int AccessibleParts::IndexOf(Key key) const
{
    const int count = Count();
    for (int index = 0; index < count; ++index) {
        if (KeyAt(index) == key)
            return index;
    }
    return -1;
}

void AccessibleParts::SetValue(Key, double) {}
void AccessibleParts::DoAction(Key, const QString&) {}

AccessibleContainer* AccessibleParts::Container() const
{
    if (QAccessible::isActive())
        QAccessible::queryAccessibleInterface(&m_control);
    return m_containers.empty() ? nullptr : m_containers.back();
}

void AccessibleParts::Tell(Key key, QAccessible::Event event)
{
    if (!QAccessible::isActive() || !Container() || IndexOf(key) < 0)
        return;
    if (event == QAccessible::ValueChanged) {
        const AccessiblePart part = Describe(key);
        QAccessibleValueChangeEvent change(Container()->Part(key), part.value ? part.value->current : 0.0);
        QAccessible::updateAccessibility(&change);
        return;
    }
    QAccessibleEvent change(Container()->Part(key), event);
    QAccessible::updateAccessibility(&change);
}

void AccessibleParts::PartsChanged()
{
    if (!Container())
        return;
    Container()->DropGone();
    if (!QAccessible::isActive())
        return;
    if (Table()) {
        // The bridge tells of a new order child by child and makes an object of each: too many in a list.
        QAccessibleTableModelChangeEvent change(Container(), QAccessibleTableModelChangeEvent::ModelReset);
        QAccessible::updateAccessibility(&change);
        return;
    }
    QAccessibleEvent change(Container(), QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&change);
}

void AccessibleParts::ValueChanged(Key key)
{
    Tell(key, QAccessible::ValueChanged);
}

void AccessibleParts::NameChanged(Key key)
{
    if (QAccessible::isActive() && Container() && Container()->KnownPart(key))
        Tell(key, QAccessible::NameChanged);
}

void AccessibleParts::StateChanged(Key key)
{
    if (!QAccessible::isActive() || IndexOf(key) < 0)
        return;
    const AccessiblePart part = Describe(key);
    QAccessible::State changed;
    changed.selected = part.selectable;
    changed.checked = part.checkable;
    changed.expanded = part.opensPopup;
    TellState(key, changed);
    if (part.selectable) // the bridge takes it from this event alone
        Tell(key, part.selected ? QAccessible::SelectionAdd : QAccessible::SelectionRemove);
}

void AccessibleParts::SelectionChanged()
{
    if (!QAccessible::isActive() || !Container())
        return;
    QAccessibleEvent change(Container(), QAccessible::SelectionWithin);
    QAccessible::updateAccessibility(&change);
    if (const std::optional<Key> focus = FocusedPart(); focus && m_control.hasFocus())
        StateChanged(*focus);
}

void AccessibleParts::EnabledChanged(Key key)
{
    QAccessible::State changed;
    changed.disabled = true;
    TellState(key, changed);
}

void AccessibleParts::TellState(Key key, const QAccessible::State& changed)
{
    if (!QAccessible::isActive() || !Container() || IndexOf(key) < 0)
        return;
    QAccessibleStateChangeEvent change(Container()->Part(key), changed);
    QAccessible::updateAccessibility(&change);
}

void AccessibleParts::FocusChanged()
{
    if (!QAccessible::isActive())
        return;
    // Queued: within the control's own focus event the toolkit's event for the control would come later and
    // take the focus back to the container.
    QMetaObject::invokeMethod(
        &m_control,
        [this] {
            const std::optional<Key> key = FocusedPart();
            if (key && m_control.hasFocus())
                Tell(*key, QAccessible::Focus);
        },
        Qt::QueuedConnection);
}

void AccessibleParts::UpdateFocus()
{
    const std::optional<Key> focus = FocusedPart();
    const std::optional<Key> oldFocus = std::exchange(m_seenFocus, focus);
    if (oldFocus == focus)
        return;
    for (const std::optional<Key>& key : {oldFocus, focus}) {
        if (key)
            StateChanged(*key);
    }
    FocusChanged();
}

} // namespace kv
