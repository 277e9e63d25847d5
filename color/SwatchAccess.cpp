#include "color/SwatchAccess.h"

#include "KvPlatform.h"
#include "color/ColourWords.h"
#include "color/SwatchStore.h"
#include "color/SwatchTexts.h"
#include "core/Text.h"
#include "core/TextTables.h"

namespace kv {

namespace {

using Key = AccessibleParts::Key;
using Kind = SwatchCell::Kind;

// The alpha cells come first, so that a swatch keeps its key when swatches come and go.
Key KeyOf(const SwatchCell& cell)
{
    const Key index = static_cast<Key>(cell.index);
    return cell.kind == Kind::Alpha ? index : index + SwatchLayout::kAlphaCells;
}

SwatchCell CellOf(Key key)
{
    if (key < SwatchLayout::kAlphaCells)
        return {Kind::Alpha, static_cast<int>(key)};
    return {Kind::Swatch, static_cast<int>(key - SwatchLayout::kAlphaCells)};
}

} // namespace

SwatchAccess::SwatchAccess(QWidget& control, const SwatchStore& store, const SwatchLayout& layout,
                           SwatchUser& user)
    : AccessibleParts(control, QAccessible::List)
    , m_store(store)
    , m_layout(layout)
    , m_user(user)
{
}

void SwatchAccess::SwatchChanged(int index)
{
    if (index < Shown())
        NameChanged(KeyOf({Kind::Swatch, index}));
}

QString SwatchAccess::ControlName() const
{
    return KvToQString(LoadText(kTextSwatches));
}

int SwatchAccess::Shown() const
{
    return m_layout.ShownSwatches(m_store.Count());
}

Key SwatchAccess::KeyAt(int index) const
{
    const int shown = Shown();
    return index < shown ? KeyOf({Kind::Swatch, index}) : KeyOf({Kind::Alpha, index - shown});
}

int SwatchAccess::IndexOf(Key key) const
{
    const int shown = Shown();
    const SwatchCell cell = CellOf(key);
    if (cell.kind == Kind::Alpha)
        return shown + cell.index;
    return cell.index < shown ? cell.index : -1;
}

AccessiblePart SwatchAccess::Describe(Key key) const
{
    const SwatchCell cell = CellOf(key);
    AccessiblePart part;
    part.role = QAccessible::ListItem;
    part.rect = m_layout.RectOf(cell);
    if (cell.kind == Kind::Alpha) {
        part.name = AlphaText(cell.index);
    } else {
        const std::uint32_t colour = m_store.Colours()[static_cast<std::size_t>(cell.index)];
        part.name = KvToQString(
            FillText(LoadText(kTextSwatch), {NumberText(std::int64_t{cell.index} + 1),
                                             NumberText(std::int64_t{Shown()}), ColourWords(colour)}));
        part.description = ChannelsText(colour);
    }
    part.actions = {QAccessibleActionInterface::pressAction(), QAccessibleActionInterface::setFocusAction()};
    return part;
}

std::optional<Key> SwatchAccess::FocusedPart() const
{
    return KeyOf(m_user.CurrentCell());
}

void SwatchAccess::DoAction(Key key, const QString& action)
{
    if (action == QAccessibleActionInterface::pressAction())
        m_user.PickCell(CellOf(key));
    else if (action == QAccessibleActionInterface::setFocusAction())
        m_user.FocusCell(CellOf(key));
}

} // namespace kv
