#include "layout/StripAccess.h"

#include "KvPlatform.h"
#include "core/Text.h"
#include "core/TextTables.h"

namespace kv {

QString StripAccess::ControlName() const
{
    return KvToQString(LoadText(kTextLayouts));
}

int StripAccess::IndexOf(Key key) const
{
    return key < static_cast<Key>(Count()) ? static_cast<int>(key) : -1;
}

AccessiblePart StripAccess::Describe(Key key) const
{
    const int index = static_cast<int>(key);
    const QString name = m_user.LayoutName(index);
    const std::wstring number = NumberText(std::int64_t{index} + 1);
    const std::wstring count = NumberText(std::int64_t{Count()});
    AccessiblePart part;
    part.role = QAccessible::ListItem;
    part.name = KvToQString(name.isEmpty()
                                ? FillText(LoadText(kTextLayout), {number, count})
                                : FillText(LoadText(kTextNamedLayout), {KvFromQString(name), number, count}));
    part.rect = m_user.LayoutRect(index);
    part.selectable = true;
    part.selected = m_user.IsLayoutSelected(index);
    part.actions = {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::setFocusAction()};
    return part;
}

std::optional<StripAccess::Key> StripAccess::FocusedPart() const
{
    const int current = m_user.CurrentLayout();
    return current < 0 ? std::nullopt : std::optional<Key>(static_cast<Key>(current));
}

void StripAccess::DoAction(Key key, const QString& action)
{
    const int index = static_cast<int>(key);
    if (action == QAccessibleActionInterface::pressAction())
        m_user.PickLayout(index);
    else if (action == QAccessibleActionInterface::setFocusAction())
        m_user.FocusLayout(index);
}

} // namespace kv
