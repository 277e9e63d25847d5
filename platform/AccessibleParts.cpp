#include "platform/AccessibleTable.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QVariant>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace kv {

namespace {

constexpr char kPartsProperty[] = "kvAccessibleParts";

using Key = AccessibleParts::Key;

AccessibleParts* PartsOf(const QObject& control)
{
    return static_cast<AccessibleParts*>(control.property(kPartsProperty).value<void*>());
}

} // namespace

/// The control's own interface: its real children first, then its parts. It outlives the parts when the
/// toolkit still asks while the control is being destroyed.
class AccessibleContainer : public QAccessibleWidget
{
public:
    explicit AccessibleContainer(AccessibleParts& parts)
        : QAccessibleWidget(&parts.Control(), parts.Role())
        , m_parts(&parts)
    {
        parts.m_containers.push_back(this);
    }
    ~AccessibleContainer() override;

    AccessibleParts* Parts() const { return m_parts; }
    void Detach()
    {
        m_parts = nullptr;
        m_table.reset();
    }
    /// The interface of a part, made on first use. Its id stays the same as long as the part is there.
    QAccessibleInterface* Part(Key key) const;
    /// The interface where somebody has asked for it before, else null.
    QAccessibleInterface* KnownPart(Key key) const;
    /// Ends the interfaces of parts that are gone.
    void DropGone();

    QString text(QAccessible::Text text) const override;
    QAccessible::State state() const override;
    int childCount() const override { return QAccessibleWidget::childCount() + PartCount(); }
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* focusChild() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

private:
    int PartCount() const { return m_parts ? m_parts->Count() : 0; }
    std::optional<Key> FocusedPart() const;

    AccessibleParts* m_parts;
    mutable std::map<Key, QAccessible::Id> m_ids;
    std::optional<AccessibleTableAdapter> m_table;
};

namespace {

class AccessiblePartInterface : public QAccessibleInterface,
                                public QAccessibleValueInterface,
                                public QAccessibleActionInterface
{
public:
    AccessiblePartInterface(const AccessibleContainer& container, Key key)
        : m_container(container)
        , m_key(key)
    {
    }

    Key PartKey() const { return m_key; }

    bool isValid() const override { return Index() >= 0; }
    // Never the control: it would take the container's place.
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_container.window(); }
    QAccessibleInterface* parent() const override { return const_cast<AccessibleContainer*>(&m_container); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    QString text(QAccessible::Text text) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return Describe().role; }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override { return Value().current; }
    QVariant minimumValue() const override { return Value().minimum; }
    QVariant maximumValue() const override { return Value().maximum; }
    QVariant minimumStepSize() const override { return Value().step; }
    void setCurrentValue(const QVariant& value) override;

    QStringList actionNames() const override;
    void doAction(const QString& action) override;
    QStringList keyBindingsForAction(const QString& action) const override;

private:
    int Index() const { return m_container.Parts() ? m_container.Parts()->IndexOf(m_key) : -1; }
    AccessiblePart Describe() const
    {
        return isValid() ? m_container.Parts()->Describe(m_key) : AccessiblePart();
    }
    QString Shortcut() const { return isValid() ? m_container.Parts()->Shortcut(m_key) : QString(); }
    AccessibleValue Value() const { return Describe().value.value_or(AccessibleValue{}); }
    bool CanAct() const
    {
        return isValid() && m_container.Parts()->Control().isEnabled() && !Describe().disabled;
    }

    const AccessibleContainer& m_container;
    const Key m_key;
    std::optional<AccessibleCellAdapter> m_cell;
};

QString AccessiblePartInterface::text(QAccessible::Text text) const
{
    switch (text) {
    case QAccessible::Name:
        return Describe().name;
    case QAccessible::Description:
        return Describe().description;
    case QAccessible::Accelerator:
        return Shortcut();
    default:
        return {};
    }
}

QRect AccessiblePartInterface::rect() const
{
    if (!isValid())
        return {};
    const QWidget& control = m_container.Parts()->Control();
    const QRect visible = Describe().rect & control.rect();
    return {control.mapToGlobal(visible.topLeft()), visible.size()};
}

QAccessible::State AccessiblePartInterface::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const AccessibleParts& parts = *m_container.Parts();
    const QWidget& control = parts.Control();
    const AccessiblePart part = Describe();
    state.invisible = !control.isVisible();
    state.offscreen = !part.rect.intersects(control.rect());
    state.disabled = !control.isEnabled() || part.disabled;
    state.hasPopup = part.opensPopup;
    state.expandable = part.opensPopup;
    state.expanded = part.expanded;
    state.focusable = !state.disabled && part.actions.contains(setFocusAction());
    state.focused = control.hasFocus() && parts.FocusedPart() == m_key;
    state.selectable = part.selectable;
    state.selected = part.selected;
    state.editable = part.editable;
    state.checkable = part.checkable;
    state.checked = part.checked;
    return state;
}

void* AccessiblePartInterface::interface_cast(QAccessible::InterfaceType type)
{
    const AccessiblePart part = Describe();
    if (type == QAccessible::ValueInterface && part.value)
        return static_cast<QAccessibleValueInterface*>(this);
    if (type == QAccessible::ActionInterface && !part.actions.isEmpty())
        return static_cast<QAccessibleActionInterface*>(this);
    AccessibleTable* table = isValid() ? m_container.Parts()->Table() : nullptr;
    if (type != QAccessible::TableCellInterface || !table)
        return nullptr;
    if (!m_cell) {
        const auto partOf = [this](Key key) { return m_container.Part(key); };
        m_cell.emplace(*table, m_key, partOf, *parent());
    }
    return static_cast<QAccessibleTableCellInterface*>(&*m_cell);
}

void AccessiblePartInterface::setCurrentValue(const QVariant& value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    const std::optional<AccessibleValue> range = Describe().value;
    if (!CanAct() || !range || !isNumber || qIsNaN(number))
        return;
    m_container.Parts()->SetValue(m_key, std::clamp(number, range->minimum, range->maximum));
}

QStringList AccessiblePartInterface::actionNames() const
{
    return CanAct() ? Describe().actions : QStringList();
}

QStringList AccessiblePartInterface::keyBindingsForAction(const QString& action) const
{
    const QString shortcut = Shortcut();
    return action == pressAction() && !shortcut.isEmpty() ? QStringList(shortcut) : QStringList();
}

void AccessiblePartInterface::doAction(const QString& action)
{
    if (actionNames().contains(action))
        m_container.Parts()->DoAction(m_key, action);
}

QAccessibleInterface* MakeContainer(const QString&, QObject* object)
{
    AccessibleParts* parts = PartsOf(*object);
    return parts ? new AccessibleContainer(*parts) : nullptr;
}

} // namespace

AccessibleContainer::~AccessibleContainer()
{
    if (m_parts)
        std::erase(m_parts->m_containers, this);
    for (const auto& [key, id] : m_ids)
        QAccessible::deleteAccessibleInterface(id);
}

QAccessibleInterface* AccessibleContainer::Part(Key key) const
{
    if (QAccessibleInterface* known = KnownPart(key))
        return known;
    auto* part = new AccessiblePartInterface(*this, key); // the toolkit's cache owns it
    m_ids[key] = QAccessible::registerAccessibleInterface(part);
    return part;
}

QAccessibleInterface* AccessibleContainer::KnownPart(Key key) const
{
    const auto known = m_ids.find(key);
    return known == m_ids.end() ? nullptr : QAccessible::accessibleInterface(known->second);
}

void AccessibleContainer::DropGone()
{
    std::vector<Key> gone;
    for (const auto& [key, id] : m_ids) {
        if (!m_parts || m_parts->IndexOf(key) < 0)
            gone.push_back(key);
    }
    for (const Key key : gone) {
        QAccessibleEvent event(KnownPart(key), QAccessible::ObjectDestroyed);
        QAccessible::updateAccessibility(&event);
        QAccessible::deleteAccessibleInterface(m_ids[key]);
        m_ids.erase(key);
    }
}

QString AccessibleContainer::text(QAccessible::Text text) const
{
    const QString given = QAccessibleWidget::text(text);
    return given.isEmpty() && text == QAccessible::Name && m_parts ? m_parts->ControlName() : given;
}

QAccessibleInterface* AccessibleContainer::child(int index) const
{
    const int part = index - QAccessibleWidget::childCount();
    if (part < 0)
        return QAccessibleWidget::child(index);
    return part < PartCount() ? Part(m_parts->KeyAt(part)) : nullptr;
}

int AccessibleContainer::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* part = dynamic_cast<const AccessiblePartInterface*>(child);
    if (!part)
        return QAccessibleWidget::indexOfChild(child);
    if (!m_parts || child->parent() != this)
        return -1;
    const int index = m_parts->IndexOf(part->PartKey());
    return index < 0 ? -1 : QAccessibleWidget::childCount() + index;
}

std::optional<Key> AccessibleContainer::FocusedPart() const
{
    if (!m_parts || !m_parts->Control().hasFocus())
        return std::nullopt;
    const std::optional<Key> key = m_parts->FocusedPart();
    return key && m_parts->IndexOf(*key) >= 0 ? key : std::nullopt;
}

QAccessible::State AccessibleContainer::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    if (FocusedPart())
        state.focused = false; // only one says so, else a reader hears the container again and again
    return state;
}

void* AccessibleContainer::interface_cast(QAccessible::InterfaceType type)
{
    AccessibleTable* table = m_parts ? m_parts->Table() : nullptr;
    if (type != QAccessible::TableInterface || !table)
        return QAccessibleWidget::interface_cast(type);
    if (!m_table)
        m_table.emplace(*table, [this](Key key) { return Part(key); });
    return static_cast<QAccessibleTableInterface*>(&*m_table);
}

QAccessibleInterface* AccessibleContainer::focusChild() const
{
    const std::optional<Key> key = FocusedPart();
    return key ? Part(*key) : QAccessibleWidget::focusChild();
}

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
    QAccessibleEvent change(Container(), QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&change);
}

void AccessibleParts::ValueChanged(Key key)
{
    Tell(key, QAccessible::ValueChanged);
}

void AccessibleParts::NameChanged(Key key)
{
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
