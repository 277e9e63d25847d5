#include "color/QuadAccess.h"

#include "KvPlatform.h"
#include "color/ColourWords.h"
#include "color/QuadLayout.h"
#include "color/QuadModel.h"
#include "color/SwatchTexts.h"
#include "core/Text.h"
#include "core/TextTables.h"

#include <utility>

namespace kv {

QuadAccess::QuadAccess(QWidget& control, const QuadModel& model, const QuadLayout& layout, QuadUser& user)
    : AccessibleParts(control, QAccessible::List)
    , m_model(model)
    , m_layout(layout)
    , m_user(user)
    , m_seen(model.Corners())
{
}

void QuadAccess::Update()
{
    const QuadColours before = std::exchange(m_seen, m_model.Corners());
    for (std::size_t corner = 0; corner < before.size(); ++corner) {
        if (before[corner] != m_model.Corners()[corner])
            NameChanged(static_cast<Key>(corner));
    }
    UpdateFocus();
}

void QuadAccess::TextsChanged()
{
    for (int corner = 0; corner < Count(); ++corner)
        NameChanged(KeyAt(corner));
}

QString QuadAccess::ControlName() const
{
    return KvToQString(LoadText(kTextQuadGradient));
}

int QuadAccess::Count() const
{
    return QuadModel::kCorners;
}

AccessiblePart QuadAccess::Describe(Key key) const
{
    const int corner = static_cast<int>(key);
    const std::uint32_t colour = m_model.Corners()[key];
    AccessiblePart part;
    part.role = QAccessible::ListItem;
    part.name = KvToQString(
        FillText(LoadText(kTextQuadCorner),
                 {LoadText(kTextFirstCorner + static_cast<std::uint32_t>(corner)), ColourWords(colour)}));
    part.description = ChannelsText(colour);
    part.rect = m_layout.corners[key];
    part.selectable = true;
    part.selected = corner == m_model.Selected();
    part.actions = {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::setFocusAction()};
    return part;
}

std::optional<AccessibleParts::Key> QuadAccess::FocusedPart() const
{
    return m_model.Selected() < 0 ? std::nullopt : std::optional(KeyAt(m_model.Selected()));
}

void QuadAccess::DoAction(Key key, const QString& action)
{
    if (action == QAccessibleActionInterface::pressAction() ||
        action == QAccessibleActionInterface::setFocusAction())
        m_user.FocusCorner(static_cast<int>(key));
}

} // namespace kv
