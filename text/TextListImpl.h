// The private part of the lists of texts: rows by key, undo steps, clipboard and drag.
#pragma once

#include "KvTextListBase.h"
#include "text/RegexMatcher.h"
#include "text/RowColours.h"
#include "text/RowKeys.h"
#include "text/RowOrder.h"

#include <QMimeData>
#include <QPointer>
#include <QUndoCommand>
#include <QUndoStack>

#include <deque>
#include <optional>
#include <span>
#include <unordered_map>

struct CKvTextListBase::Impl
{
    using Key = std::uint64_t;

    struct Theme
    {
        std::array<DWORD, kv::kRowColourCount> colours{};
        QColor drop;
        void Load();
    };
    /// A row apart from the list.
    struct Row
    {
        Key key = 0; ///< 0: a new one
        CStringArray texts;
        std::uint64_t data = 0;
        int height = 0; ///< 0: the list's own
        kv::RowColours colours;
    };
    /// Where a row stands, for when it is to stand there again.
    struct Place
    {
        Key before = 0; ///< the next row that stays; 0: the end
        int line = 0;   ///< where that row is gone: counted among the rows that stay
    };
    /// What a step restores beside the rows.
    struct View
    {
        std::vector<Key> selected;
        Key current = 0;
        CPoint scroll;
    };
    /// What the host is told of a step.
    struct Notice
    {
        enum class Kind
        {
            None,
            Cell,
            Rows
        } kind = Kind::None;
        Key key = 0;
        int column = 0;
        bool isSelectionOther = false;
    };
    /// A cell of a step, with its values before and after.
    struct CellChange
    {
        Key key;
        int column;
        CString before;
        CString after;
    };
    /// A row's text of a replacement: the one that the list does not show at the time.
    struct RowText
    {
        Key key;
        std::wstring text;
    };

    class Step;
    class CellStep;
    class ReplaceStep;
    class RowsStep;
    class HostStep;
    struct RowSet;
    class MoveStep;
    class FindTexts;

    explicit Impl(CKvTextListBase& control);
    ~Impl();

    // Rows.
    Key KeyAt(int line) const { return keys.KeyOf(list.GetRowId(line)); }
    int LineOf(Key key) const { return key == 0 ? -1 : list.FindRow(keys.NumberOf(key)); }
    std::vector<int> LinesOf(std::span<const Key> wanted) const;
    /// The line has no height of its own.
    bool FollowsFont(int line) const;
    Row Snapshot(int line) const;
    std::vector<Place> PlacesOf(const CArray<int, int>& lines) const;
    /// Takes the rows out, whose colours and keys the list forgets.
    void Remove(const CArray<int, int>& lines);
    /// Puts rows in where they are to stand then, ascending; takes their texts, and gives new ones their
    /// keys.
    void PutIn(const CArray<int, int>& lines, std::span<Row> rows);
    const kv::RowColours* ColoursOf(int line) const;
    std::optional<DWORD> OwnColour(int line, kv::RowColour which) const;
    DWORD ColourOf(int line, kv::RowColour which) const;
    void SetColours(int line, std::initializer_list<std::pair<kv::RowColour, const DWORD*>> changes);

    // View.
    std::vector<Key> SelectedKeys() const;
    View Remember() const;
    void Restore(const View& view);
    void SelectLines(const std::vector<int>& lines);

    // Steps.
    QUndoStack& Stack() { return hostStack ? *hostStack : *ownStack; }
    void Push(std::unique_ptr<QUndoCommand> step);
    /// @return false when none of the cells' rows is there.
    bool Apply(const std::vector<CellChange>& changes, CString CellChange::*value);
    void Tell(const Notice& notice);
    void Run(void (QUndoStack::*step)(), bool (QUndoStack::*isPossible)() const);
    void InsertRows(int line, std::vector<Row> rows, UINT text);
    void RemoveSelected(UINT text);
    /// @param lines ascending.
    void MoveRows(const CArray<int, int>& lines, int before, UINT text);
    void MoveSelectedBy(int step);
    void InsertEmpty(bool below);
    int LineBelowSelection() const;

    kv::FindQuery QueryOf(const CString& find, bool matchCase,
                          std::optional<kv::RegexMatcher>& matcher) const;

    // Clipboard and drag.
    std::unique_ptr<QMimeData> SelectionAsMime() const;
    std::vector<Row> RowsOf(const QMimeData& data) const;
    bool IsOwnFormat(const QMimeData& data) const;
    bool CanTake(const QMimeData* data) const;
    void Copy();
    void Cut();
    void Paste();
    void RunCommand(UINT command);
    bool IsCommandEnabled(UINT command) const;
    CArray<int, int> DraggedLines() const;
    Qt::DropAction ActionFor(const QDropEvent& event) const;
    void DragTo(QDragMoveEvent& event);
    void ShowDropLine(int line);
    int DropLineAt(int y) const;
    int DropLineY(int line) const;

    CKvTextListBase& list;
    kv::RowKeys keys;
    std::unordered_map<Key, kv::RowColours> colours;
    Theme theme;

    QUndoStack* ownStack;
    QPointer<QUndoStack> hostStack;
    unsigned epoch = 0; ///< counts the removals of everything: steps before the latest one are void
    int running = 0;    ///< steps that are being done or undone
    bool isPushing = false;
    Notice pending;                ///< of the step that is being pushed
    HostStep* recording = nullptr; ///< takes down what the host does

    // What the user has made of the rows, by number: each step leads from one number to another, and undoing
    // it leads back.
    std::uint64_t content = 1;
    std::uint64_t lastContent = 1;
    std::uint64_t saved = 1; ///< what the host calls unmodified; 0 for nothing

    UINT findOptions = 0;
    CString findError;
    Key matchKey = 0;    ///< of the row where the current match stands; 0 for none
    kv::TextMatch match; ///< the current one; the row's index is another one by now

    int dropLine = -1; ///< before which the dragged rows would come; -1 for no drag
    int dropScroll = 0;
    std::vector<Key> dragged; ///< the rows that are
    bool movedInside = false; ///< the drag ended in the list itself
};

/// One step of the user's. It is done when it is pushed.
class CKvTextListBase::Impl::Step : public QUndoCommand
{
public:
    Step(Impl& impl, UINT text);
    Step(Impl& impl, const QString& name);
    void undo() final;
    void redo() final;

protected:
    /// Does or undoes it. @return false when nothing of it is left to do.
    virtual bool Do(Impl& impl) = 0;
    virtual bool Undo(Impl& impl) = 0;
    virtual Notice NoticeOf() const = 0;
    /// The host hears nothing of the first time.
    virtual bool IsSilentAtFirst() const { return false; }
    bool Continues(const Step& other) const;
    void TakeEndOf(const Step& other);
    /// Together with what it took up it leads nowhere.
    void Cancel();

private:
    void Run(bool forward);
    bool DoHeld(Impl& impl, bool forward);

    QPointer<CKvTextListBase> m_list;
    unsigned m_epoch;
    View m_before;
    std::optional<View> m_after; ///< once it was done
    std::uint64_t m_contentBefore;
    std::uint64_t m_contentAfter = 0;
};

/// A cell gets another value.
class CKvTextListBase::Impl::CellStep : public Step
{
public:
    CellStep(Impl& impl, CellChange change, UINT text);
    int id() const override;
    bool mergeWith(const QUndoCommand* other) override;

protected:
    bool Do(Impl& impl) override { return impl.Apply(m_change, &CellChange::after); }
    bool Undo(Impl& impl) override { return impl.Apply(m_change, &CellChange::before); }
    Notice NoticeOf() const override;

private:
    std::vector<CellChange> m_change; ///< one
};

/// Rows get other texts, as many as there are.
class CKvTextListBase::Impl::ReplaceStep : public Step
{
public:
    /// @param show selects what was found behind the replacements, the first time.
    ReplaceStep(Impl& impl, std::deque<RowText> texts, std::function<void()> show);

protected:
    bool Do(Impl& impl) override;
    bool Undo(Impl& impl) override { return Do(impl); }
    Notice NoticeOf() const override;
    bool IsSilentAtFirst() const override { return true; }

private:
    std::deque<RowText> m_texts;
    std::function<void()> m_show;
};

/// Rows that come and go together.
struct CKvTextListBase::Impl::RowSet
{
    std::vector<Row> rows; ///< as they were when they last went; while they are there the keys alone count
    std::vector<Place> places;

    bool PutIn(Impl& impl);
    /// @return false when none of them is there.
    bool TakeOut(Impl& impl);
};

/// Rows come or go.
class CKvTextListBase::Impl::RowsStep : public Step
{
public:
    /// New rows before a line.
    RowsStep(Impl& impl, int line, std::vector<Row> rows, UINT text);
    /// Removes the rows of these lines, ascending.
    RowsStep(Impl& impl, const CArray<int, int>& lines, UINT text);

protected:
    bool Do(Impl& impl) override { return m_inserts ? m_set.PutIn(impl) : m_set.TakeOut(impl); }
    bool Undo(Impl& impl) override { return m_inserts ? m_set.TakeOut(impl) : m_set.PutIn(impl); }
    Notice NoticeOf() const override { return {Notice::Kind::Rows}; }

private:
    bool m_inserts;
    RowSet m_set;
};

/// What the host did; it is done before it is pushed. While the host is at it the step takes down what it
/// touches.
class CKvTextListBase::Impl::HostStep : public Step
{
public:
    HostStep(Impl& impl, const CString& name);
    /// Those lines are about to change; as `_OnItemsModifying` has it.
    void Note(Impl& impl, int kind, std::span<const int> lines);
    /// Finds out what the host has done. @return false when it is nothing.
    bool Finish(Impl& impl);

protected:
    bool Do(Impl& impl) override;
    bool Undo(Impl& impl) override;
    Notice NoticeOf() const override { return {Notice::Kind::Rows}; }
    bool IsSilentAtFirst() const override { return true; }

private:
    /// A row as it was before the host touched it.
    struct Touched
    {
        Row row;
        CStringArray cells; ///< their values
        int line;           ///< where it stood then
    };
    /// A row that went.
    struct Gone
    {
        Key key;
        Place place; ///< before whatever row stayed then, also one of the host's own or one that went later
        bool isNew;
    };
    struct Section;
    bool IsNew(const Impl& impl, int line) const { return impl.list.GetRowId(line) >= m_firstNew; }
    void Touch(Impl& impl, int line);
    void FindChanges(Impl& impl);
    std::vector<Section> SectionsOfGone() const;
    void FindRemoved(Impl& impl);
    void FindInserted(Impl& impl);

    // Until `Finish`.
    std::uint64_t m_firstNew; ///< rows from this number on are the host's own
    int m_count;              ///< of rows before
    bool m_isVoid = false;
    std::vector<Touched> m_touched;
    std::unordered_map<Key, std::size_t> m_touchedAt;
    std::vector<Gone> m_gone; ///< as they went; of several that went together the last one first

    std::vector<CellChange> m_changes;
    RowSet m_removed;
    RowSet m_inserted;
    bool m_isDone = true;
};

/// Rows go to another place.
class CKvTextListBase::Impl::MoveStep : public Step
{
public:
    MoveStep(Impl& impl, const CArray<int, int>& lines, int before, UINT text);

protected:
    bool Do(Impl& impl) override;
    bool Undo(Impl& impl) override { return Arrange(impl, m_from); }
    Notice NoticeOf() const override { return {Notice::Kind::Rows}; }

private:
    bool Arrange(Impl& impl, const std::vector<Place>& places);

    std::vector<Key> m_keys;
    std::vector<Place> m_from;
    std::vector<Place> m_to;
};
