// The list of subtitles as the workspace has it: playback keeps its keys, and signs say what is wrong.
#pragma once

#include "KvSubTitleTxtListEditor.h"
#include "subtitles/SubtitleCheck.h"
#include "subtitles/SubtitleMatches.h"
#include "subtitles/SubtitleState.h"
#include "subtitles/SubtitleText.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace titler {

/// What to say of a row.
QStringList FaultTexts(const SubtitleFaults& faults);

class SubtitleList : public CKvSubTitleTxtListEditor
{
    Q_OBJECT

public:
    using CKvSubTitleTxtListEditor::EditCell;
    using CKvSubTitleTxtListEditor::EnsureVisible;
    using CKvSubTitleTxtListEditor::GetCellRect;
    using CKvSubTitleTxtListEditor::GetCurrentItem;
    using CKvSubTitleTxtListEditor::IsEditing;

    /// Commits the open cell. @return false when its text is refused; the cell then stays open.
    bool Settle() { return !IsEditing() || EndEdit(1) != 0; }
    /// A row and the text in its open cell; nothing where that is the row's own.
    std::optional<std::pair<int, QString>> Typed() const;
    SubtitleTimes Times(int row) const;
    void SetTimes(int row, const SubtitleTimes& times);
    /// Signs in the rows, by `GetRowKey`; rows that are not in it have none.
    void SetFaults(std::unordered_map<std::uint64_t, SubtitleFaults> faults);
    /// Marks a part of the row's text; one at a time.
    void ShowMatch(int row, const TextRange& range);
    void ClearMatch();
    /// The rows that came, went or changed since the last call, ascending; those that went by where they
    /// were.
    std::vector<int> TakeTouchedRows();
    /// That row alone is selected, current and in view.
    void GoTo(int row);
    /// A row as the workspace has it.
    using RowCopy = std::shared_ptr<const SubtitleState::Row>;
    /// A place for a copy of the row, for whoever reads it. Null at first, and again when the row's cells
    /// change or it goes. Valid until the list changes.
    RowCopy& CopyOf(int row);
    /// The clipboard's name for whole rows.
    QString RowFormat() const;

signals:
    /// The selected rows are picked up to be dragged.
    void RowsPickedUp();
    /// The text in an open cell changed, or the cell is closed.
    void CellTyped();

protected:
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void DrawItem(Graphics* graphics, int line, int column) override;
    QString ToolTipAt(CPoint point, CRect& area) const override;
    CString _GetItemDescription(int line) const override;
    void _OnItemsModifying(int kind, const int* lines, int count) override;
    void _OnNotifyItemModify(int kind, const CArray<int, int>& rows, int column) override;
    void _UpdateTextWidth() override;
    void _OnEditClosed() override;
    BOOL _BeginRowDrag(int line) override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    BOOL OnChar(UINT character) override;
    void OnContextMenu(CPoint point) override;

private:
    SubtitleFaults FaultsOf(int row) const;
    QRect SignsRect(int row) const;
    std::vector<KvReportMark> MarksOf(int row) const;
    void DrawSigns(Graphics& graphics, int row) const;
    bool TypeOver(UINT character);

    std::unordered_map<std::uint64_t, SubtitleFaults> m_faults;
    std::uint64_t m_matchRow = 0; ///< its key; 0 for none
    TextRange m_match{0, 0};
    std::vector<int> m_touched;
    std::vector<RowCopy> m_copies;     ///< by the rows' keys
    std::uint64_t m_firstCopyKey = 0;  ///< of the first of them
    Qt::KeyboardModifiers m_modifiers; ///< of the key that is being pressed
};

} // namespace titler
