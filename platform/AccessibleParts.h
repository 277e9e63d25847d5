// Painted parts of a control (a stop, a handle, a tab, a cell) as children that a screen reader finds.
#pragma once

#include <QAccessible>
#include <QRect>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

class QWidget;

namespace kv {

class AccessibleContainer;
class AccessibleTable;

/// The value of a part that has one.
struct AccessibleValue
{
    double current;
    double minimum;
    double maximum;
    double step; ///< the smallest change; 0 for none
};

/// What a screen reader learns about a part.
struct AccessiblePart
{
    QAccessible::Role role = QAccessible::Button;
    QString name;
    QString description;
    QRect rect; ///< client coordinates; what lies outside the control is cut off
    std::optional<AccessibleValue> value;
    bool selectable = false;
    bool selected = false;
    bool checkable = false;
    bool checked = false;
    bool editable = false;   ///< its text can be edited
    bool disabled = false;   ///< on its own, in an enabled control; nothing can be done to it
    bool opensPopup = false; ///< its press action opens a menu
    bool expanded = false;   ///< the menu is open
    QStringList
        actions; ///< `QAccessibleActionInterface`'s names; with setFocusAction() it can take the focus
};

/// What a control knows about a button that is its child.
struct AccessibleButton
{
    bool opensPopup = false; ///< a click opens a menu, and comes back when that closed
    bool takesFocus = false; ///< by the keys of the control, whatever its own policy says
    QString shortcut;        ///< the keys that click it, as they are shown; empty for none
};

/// The parts of one control. A control derives from it, keeps one as long as it lives and tells of changes.
///
/// A part is known by a key of the control's choice that stays with it when the order changes. The functions
/// are called with keys that are in use; SetValue and DoAction may delete the control.
class AccessibleParts
{
public:
    using Key = std::uint64_t;

    /// @param role of the control itself, the container.
    AccessibleParts(QWidget& control, QAccessible::Role role);
    virtual ~AccessibleParts();
    AccessibleParts(const AccessibleParts&) = delete;
    AccessibleParts& operator=(const AccessibleParts&) = delete;

    /// The control's name where the host set none.
    virtual QString ControlName() const { return {}; }
    /// Parts in reading order.
    virtual int Count() const = 0;
    virtual Key KeyAt(int index) const = 0;
    /// @return -1 for a key that is not in use. Override it where a search would be slow.
    virtual int IndexOf(Key key) const;
    virtual AccessiblePart Describe(Key key) const = 0;
    /// The keys that press a part, as they are shown; empty for none.
    virtual QString Shortcut(Key /*key*/) const { return {}; }
    virtual AccessibleButton DescribeButton(const QWidget& /*button*/) const { return {}; }
    /// Where the parts are the cells of a table.
    virtual AccessibleTable* Table() { return nullptr; }
    /// The part that has the focus while the control has it.
    virtual std::optional<Key> FocusedPart() const { return std::nullopt; }
    /// @param value within the part's range.
    virtual void SetValue(Key key, double value);
    virtual void DoAction(Key key, const QString& action);

    /// Parts came, went or changed places.
    void PartsChanged();
    void ValueChanged(Key key);
    /// Nothing for a part that nobody has asked for.
    void NameChanged(Key key);
    void StateChanged(Key key);
    /// Other parts are selected than before: tells so, and the state of the focused part.
    void SelectionChanged();
    /// The part became disabled or enabled.
    void EnabledChanged(Key key);
    /// The focus is on another part.
    void FocusChanged();
    /// Compares the focused part with that of the last call and tells when it is another one: both change
    /// their state, and the focus moves.
    void UpdateFocus();

    /// Those of a control; null for one without.
    static const AccessibleParts* Of(const QWidget* control);

    QWidget& Control() const { return m_control; }
    QAccessible::Role Role() const { return m_role; }

private:
    friend class AccessibleContainer;
    AccessibleContainer* Container() const;
    void Tell(Key key, QAccessible::Event event);
    void TellState(Key key, const QAccessible::State& changed);

    QWidget& m_control;
    QAccessible::Role m_role;
    std::vector<AccessibleContainer*>
        m_containers; ///< the toolkit may make a second before it keeps the first
    std::optional<Key> m_seenFocus;
};

} // namespace kv
