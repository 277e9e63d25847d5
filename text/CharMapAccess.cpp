#include "text/CharMapAccess.h"

#include "KvPlatform.h"
#include "core/TextTables.h"
#include "text/CharMapTexts.h"
#include "text/CharNames.h"

namespace kv {

CharMapAccess::CharMapAccess(QWidget& control, const CharMapModel& model, CharMapUser& user)
    : AccessibleParts(control, QAccessible::List)
    , m_model(model)
    , m_user(user)
{
}

QString CharMapAccess::ControlName() const
{
    return KvToQString(LoadText(kTextCharacters));
}

int CharMapAccess::IndexOf(Key key) const
{
    return PlaceOf(m_model.Table(), static_cast<char32_t>(key));
}

AccessiblePart CharMapAccess::Describe(Key key) const
{
    const int index = IndexOf(key);
    AccessiblePart part;
    part.role = QAccessible::ListItem;
    part.name = CharCodeAndName(static_cast<char16_t>(key));
    if (const int cell = m_model.CellOf(index); cell >= 0)
        part.rect = CharCellRect(cell);
    part.selectable = true;
    part.selected = index == m_model.Selected();
    part.actions = {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::setFocusAction()};
    return part;
}

std::optional<AccessibleParts::Key> CharMapAccess::FocusedPart() const
{
    if (m_model.Selected() < 0)
        return std::nullopt;
    return KeyAt(m_model.Selected());
}

void CharMapAccess::DoAction(Key key, const QString& action)
{
    if (action == QAccessibleActionInterface::pressAction())
        m_user.PickCharacter(IndexOf(key));
    else if (action == QAccessibleActionInterface::setFocusAction())
        m_user.FocusCharacter(IndexOf(key));
}

} // namespace kv
