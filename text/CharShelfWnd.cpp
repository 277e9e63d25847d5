#include "text/CharShelfWnd.h"

#include "platform/AccessibleParts.h"
#include "platform/DevicePixels.h"
#include "platform/FocusRing.h"
#include "platform/VirtualKey.h"
#include "text/CharMapLayout.h"
#include "text/CharMapPainter.h"
#include "text/CharNames.h"

#include <QPointer>

#include <algorithm>

namespace kv {

namespace {

constexpr int kTop = 1; // the upper line's device pixel may begin a little above
constexpr int kBottom = kTop + kCharCellSide;

// Below the grid's columns.
CRect ShelfCell(int index)
{
    const int left = kCharOrigin + index * kCharCellSide;
    return {left, kTop, left + kCharCellSide, kBottom};
}

bool IsShelfKey(UINT key, Qt::KeyboardModifiers modifiers)
{
    return HeldModifiers(modifiers) == Qt::NoModifier &&
           (key == VK_LEFT || key == VK_RIGHT || key == VK_HOME || key == VK_END || key == VK_RETURN ||
            key == VK_DELETE);
}

} // namespace

class CharShelfWnd::Access : public AccessibleParts
{
public:
    explicit Access(CharShelfWnd& row) : AccessibleParts(row, QAccessible::List), m_row(row) {}

    QString ControlName() const override { return m_row.m_name; }
    int Count() const override { return static_cast<int>(m_row.m_shown.size()); }
    Key KeyAt(int index) const override { return m_row.m_shown[static_cast<std::size_t>(index)].code; }
    AccessiblePart Describe(Key key) const override
    {
        AccessiblePart part;
        part.role = QAccessible::ListItem;
        part.name = CharCodeAndName(static_cast<char16_t>(key));
        part.rect = ShelfCell(IndexOf(key));
        part.actions = {QAccessibleActionInterface::pressAction()};
        return part;
    }
    std::optional<Key> FocusedPart() const override
    {
        return m_row.m_current < Count() ? std::optional(KeyAt(m_row.m_current)) : std::nullopt;
    }
    void DoAction(Key key, const QString&) override { m_row.m_hooks.pick(static_cast<char16_t>(key)); }

private:
    CharShelfWnd& m_row;
};

CharShelfWnd::CharShelfWnd(CharShelfHooks hooks)
    : m_hooks(std::move(hooks))
    , m_access(std::make_unique<Access>(*this))
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

CharShelfWnd::~CharShelfWnd() = default;

void CharShelfWnd::SetCharacters(const CharFace& face, const CodeTable& table,
                                 const std::u16string& characters)
{
    m_face = &face;
    const auto current = static_cast<std::size_t>(m_current);
    const char16_t code = current < m_shown.size() ? m_shown[current].code : u'\0';
    m_shown.clear();
    for (const char16_t one : characters) {
        if (const int place = PlaceOf(table, one); place >= 0)
            m_shown.push_back(table[static_cast<std::size_t>(place)]);
    }
    // The focus stays at its character.
    const auto found = std::find_if(m_shown.begin(), m_shown.end(),
                                    [code](const auto& entry) { return entry.code == code; });
    if (found != m_shown.end())
        m_current = static_cast<int>(found - m_shown.begin());
    m_current = std::clamp(m_current, 0, std::max(0, static_cast<int>(m_shown.size()) - 1));
    m_access->PartsChanged();
    m_access->UpdateFocus();
    update();
}

char16_t CharShelfWnd::Current() const
{
    return m_shown.empty() ? u'\0' : m_shown[static_cast<std::size_t>(m_current)].code;
}

void CharShelfWnd::SetName(const QString& name)
{
    m_name = name;
}

QSize CharShelfWnd::sizeHint() const
{
    return {kCharGridRight + kCharOrigin, kBottom + 1};
}

UINT CharShelfWnd::OnGetDlgCode()
{
    return DLGC_WANTARROWS;
}

void CharShelfWnd::OnPaint(Graphics& graphics)
{
    const CharMapLook look = CharLookOf(GuiBasicSettings(), isEnabled());
    const DevicePixels pixels(graphics);
    const QColor line = CharLineColour();
    graphics.fillRect(pixels.Row(kCharOrigin, kCharGridRight, kTop), line);
    graphics.fillRect(pixels.Row(kCharOrigin, kCharGridRight + 1, kBottom), line);
    for (int x = kCharOrigin; x <= kCharGridRight; x += kCharCellSide)
        graphics.fillRect(pixels.Column(x, kTop, kBottom), line);
    graphics.setPen(look.text);
    for (int index = 0; index < static_cast<int>(m_shown.size()); ++index) {
        const QRectF cell = QRectF(QRect(ShelfCell(index))).adjusted(1, 1, 0, 0);
        DrawCentredGlyph(graphics, m_face->Cells(), m_shown[static_cast<std::size_t>(index)].glyph, cell);
    }
    if (hasFocus())
        DrawFocusRing(graphics, QRectF(QRect(ShelfCell(m_current))).adjusted(0, 0, 1, 1));
}

int CharShelfWnd::IndexAt(CPoint point) const
{
    const CRect all(ShelfCell(0).left, kTop, ShelfCell(static_cast<int>(m_shown.size())).left, kBottom);
    return all.PtInRect(point) ? (point.x - all.left) / kCharCellSide : -1;
}

void CharShelfWnd::SetCurrent(int index)
{
    m_current = index;
    update();
    m_access->UpdateFocus();
    m_hooks.select(m_shown[static_cast<std::size_t>(index)].code);
}

void CharShelfWnd::OnLButtonDown(Qt::KeyboardModifiers, CPoint point)
{
    if (const int index = IndexAt(point); index >= 0)
        SetCurrent(index);
}

void CharShelfWnd::OnLButtonDblClk(Qt::KeyboardModifiers, CPoint point)
{
    if (const int index = IndexAt(point); index >= 0)
        m_hooks.pick(m_shown[static_cast<std::size_t>(index)].code);
}

void CharShelfWnd::Step(UINT key)
{
    const int last = static_cast<int>(m_shown.size()) - 1;
    const int next = key == VK_HOME ? 0 : key == VK_END ? last : m_current + (key == VK_LEFT ? -1 : 1);
    SetCurrent(std::clamp(next, 0, last));
}

BOOL CharShelfWnd::OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers)
{
    if (!IsShelfKey(key, modifiers) || m_shown.empty())
        return CKvStatic::OnKeyDown(key, modifiers);
    const char16_t code = m_shown[static_cast<std::size_t>(m_current)].code;
    if (key == VK_RETURN)
        m_hooks.pick(code);
    else if (key != VK_DELETE)
        Step(key);
    else if (m_hooks.remove)
        m_hooks.remove(code);
    return 1;
}

BOOL CharShelfWnd::OnChar(UINT character)
{
    if (character != kCtrlC || m_shown.empty())
        return CKvStatic::OnChar(character);
    m_hooks.copy(m_shown[static_cast<std::size_t>(m_current)].code);
    return 1;
}

bool CharShelfWnd::WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const
{
    return (IsShelfKey(key, modifiers) || character == kCtrlC) && !m_shown.empty();
}

void CharShelfWnd::OnContextMenu(CPoint point)
{
    const int index = IndexAt(point);
    if (index < 0)
        return;
    const QPointer<CharShelfWnd> alive(this);
    SetCurrent(index);
    if (alive)
        m_hooks.openMenu(mapToGlobal(QPoint(point)));
}

CPoint CharShelfWnd::ContextMenuPoint() const
{
    return m_shown.empty() ? CPoint(-1, -1) : CPoint(QRect(ShelfCell(m_current)).center());
}

void CharShelfWnd::OnSetFocus()
{
    update();
    m_access->FocusChanged();
}

void CharShelfWnd::OnKillFocus()
{
    update();
}

QString CharShelfWnd::ToolTipAt(CPoint point, CRect& area) const
{
    const int index = IndexAt(point);
    if (index < 0)
        return {};
    area = ShelfCell(index);
    return CharCodeAndName(m_shown[static_cast<std::size_t>(index)].code);
}

} // namespace kv
