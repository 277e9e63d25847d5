// A row of characters at hand: those used last, or the favourites.
#pragma once

#include "KvWnd.h"
#include "text/CharFace.h"

#include <QString>

#include <functional>
#include <memory>

namespace kv {

/// What a user does to a character of a row; each may delete the row.
struct CharShelfHooks
{
    std::function<void(char16_t)> select;
    std::function<void(char16_t)> pick;
    std::function<void(char16_t)> remove; ///< may be empty
    std::function<void(char16_t)> copy;
    std::function<void(QPoint)> openMenu; ///< of the one that was selected last, at a place of the screen
};

/// A press or an arrow selects, a double click or Enter picks, Delete removes, Ctrl+C copies.
class CharShelfWnd : public CKvStatic
{
public:
    explicit CharShelfWnd(CharShelfHooks hooks);
    ~CharShelfWnd() override;

    /// Shows the characters that the table has, by glyphs of the face. Silent.
    /// @param face must outlive the row, or be replaced.
    void SetCharacters(const CharFace& face, const CodeTable& table, const std::u16string& characters);
    void SetName(const QString& name);
    /// The one that has the focus when the row has it; 0 for none.
    char16_t Current() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    UINT OnGetDlgCode() override;

protected:
    void OnPaint(Graphics& graphics) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonDblClk(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnContextMenu(CPoint point) override;
    CPoint ContextMenuPoint() const override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    BOOL OnChar(UINT character) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;

private:
    class Access;
    int IndexAt(CPoint point) const;
    void SetCurrent(int index);
    void Step(UINT key);

    CharShelfHooks m_hooks;
    QString m_name;
    const CharFace* m_face = nullptr;
    CodeTable m_shown; ///< in the row's order
    int m_current = 0; ///< which one has the focus when the row has it
    std::unique_ptr<Access> m_access;
};

} // namespace kv
