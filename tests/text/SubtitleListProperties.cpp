// Whatever host and user do in turn: rows, colours, play row, selection and time codes keep in step with a
// model that does the same the plain way.
#include "TextListFixture.h"

#include <algorithm>
#include <optional>
#include <random>
#include <set>

namespace {

using namespace kv::test;

struct Row
{
    int id = 0;
    CString text;
    DWORD in = kNone;
    DWORD out = kNone;
    CString templateName;
    std::optional<DWORD> back;
};

/// What can be undone: rows that came or went, or a row that was edited.
struct Step
{
    enum Kind
    {
        kEdit,
        kInsert,
        kRemove
    } kind;
    Row before; ///< of an edit
    Row after;
    std::vector<Row> rows{};
    std::vector<int> marks{}; ///< for each the id of the next row that stayed; 0 for the end
    std::vector<int> lines{}; ///< where that one is gone
};

class Model
{
public:
    std::vector<Row> rows;
    int playId = 0;
    std::vector<Step> done;
    std::vector<Step> undone;

    int Count() const { return static_cast<int>(rows.size()); }
    int LineOf(int id) const
    {
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const Row& one) { return one.id == id; });
        return row == rows.end() ? -1 : static_cast<int>(row - rows.begin());
    }
    int NewId() { return ++m_lastId; }
    void Push(Step step)
    {
        undone.clear();
        Apply(step, true);
        done.push_back(std::move(step));
    }
    void Undo()
    {
        while (!done.empty()) {
            Step step = std::move(done.back());
            done.pop_back();
            if (Apply(step, false)) {
                undone.push_back(std::move(step));
                return;
            }
        }
    }
    void Redo()
    {
        while (!undone.empty()) {
            Step step = std::move(undone.back());
            undone.pop_back();
            if (Apply(step, true)) {
                done.push_back(std::move(step));
                return;
            }
        }
    }

private:
    bool Apply(Step& step, bool forward)
    {
        if (step.kind == Step::kEdit) {
            const int line = LineOf(step.after.id);
            if (line < 0)
                return false;
            // What the step did not touch is the host's.
            Row& row = rows[static_cast<std::size_t>(line)];
            const Row& to = forward ? step.after : step.before;
            const Row& from = forward ? step.before : step.after;
            row.text = to.text != from.text ? to.text : row.text;
            row.in = to.in != from.in ? to.in : row.in;
            row.out = to.out != from.out ? to.out : row.out;
            return true;
        }
        return (step.kind == Step::kInsert) == forward ? Insert(step) : Remove(step);
    }
    bool Insert(const Step& step)
    {
        std::vector<std::pair<int, Row>> placed;
        for (std::size_t i = 0; i < step.rows.size(); ++i) {
            const int mark = LineOf(step.marks[i]);
            placed.emplace_back(step.marks[i] == 0 ? Count()
                                : mark >= 0        ? mark
                                                   : std::min(step.lines[i], Count()),
                                step.rows[i]);
        }
        std::stable_sort(placed.begin(), placed.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        for (auto one = placed.rbegin(); one != placed.rend(); ++one)
            rows.insert(rows.begin() + one->first, one->second);
        return true;
    }
    bool Remove(Step& step)
    {
        std::set<int> gone;
        for (const Row& row : step.rows)
            gone.insert(LineOf(row.id));
        gone.erase(-1);
        if (gone.empty())
            return false;
        step.rows.clear();
        step.marks.clear();
        step.lines.clear();
        for (const int line : gone) {
            int next = line;
            while (gone.count(next) > 0)
                ++next;
            step.marks.push_back(next < Count() ? rows[static_cast<std::size_t>(next)].id : 0);
            step.lines.push_back(line - static_cast<int>(step.rows.size()));
            step.rows.push_back(rows[static_cast<std::size_t>(line)]);
        }
        for (auto line = gone.rbegin(); line != gone.rend(); ++line)
            rows.erase(rows.begin() + *line);
        return true;
    }

    int m_lastId = 0;
};

class Properties : public SubtitleFixture
{
protected:
    int Below(int end) { return end <= 0 ? 0 : static_cast<int>(random() % static_cast<unsigned>(end)); }
    DWORD Frame() { return Below(5) == 0 ? kNone : static_cast<DWORD>(Below(1000)); }
    Row NewRow()
    {
        return {
            model.NewId(), L"text " + std::to_wstring(Below(20)), Frame(), Frame(), Below(2) ? L"Title" : L"",
            std::nullopt};
    }
    Row& At(int line) { return model.rows[static_cast<std::size_t>(line)]; }

    void Host(int action);
    void User(int action);
    void EditCell(int line, int column);
    void Sort(int column, bool ascending);
    void Check();

    std::mt19937 random;
    Model model;
};

void Properties::Sort(int column, bool ascending)
{
    std::stable_sort(model.rows.begin(), model.rows.end(), [&](const Row& a, const Row& b) {
        const Row& x = ascending ? a : b;
        const Row& y = ascending ? b : a;
        return column == 0 ? x.text < y.text : x.in < y.in;
    });
    list.SortItems(column, ascending);
}

void Properties::Host(int action)
{
    const int line = Below(model.Count());
    const bool isRow = model.Count() > 0;
    if (action < 4) {
        const Row row = NewRow();
        const int at = Below(model.Count() + 1);
        model.rows.insert(model.rows.begin() + at, row);
        ASSERT_EQ(list.InserItem(at, row.text, row.in, row.out, row.templateName.c_str()), at);
    } else if (action == 4 && isRow) {
        model.rows.erase(model.rows.begin() + line);
        list.DeleteItem(line);
    } else if (action == 5) {
        Sort(Below(2), Below(2) == 0);
    } else if (action == 6 && isRow) {
        At(line).back = 0xFF000000u + static_cast<DWORD>(Below(256));
        list.SetItemBkColor(line, &*At(line).back, nullptr);
    } else if (action == 7) {
        model.playId = isRow ? At(line).id : 0;
        list.SetPlayIndex(isRow ? line : -1);
    } else if (action == 8 && isRow) {
        At(line).out = Frame();
        list.SetTimeCode(line, At(line).out, 0);
    } else if (action == 9 && isRow) {
        At(line).text = L"host's";
        At(line).in = Frame();
        At(line).out = kNone;
        list.ModifyItem(line, L"host's", &At(line).in, nullptr, nullptr);
    }
}

void Properties::EditCell(int line, int column)
{
    Row after = At(line);
    CString text;
    if (column == 0)
        after.text = text = L"typed " + std::to_wstring(Below(1000));
    else
        (column == 1 ? after.in : after.out) = static_cast<DWORD>(Below(20));
    text = column == 0 ? text : std::to_wstring(column == 1 ? after.in : after.out);
    ASSERT_TRUE(list.EditCell(line, column));
    Editor()->setPlainText(KvToQString(text));
    ASSERT_TRUE(list.EndEdit(1));
    const Row& before = At(line);
    if (after.text == before.text && after.in == before.in && after.out == before.out)
        return;
    // Edits of one cell after one another are one step.
    Step* last = model.done.empty() ? nullptr : &model.done.back();
    const bool isSame = last && last->kind == Step::kEdit && last->after.id == after.id &&
                        (last->after.text != last->before.text) == (column == 0) &&
                        (last->after.in != last->before.in) == (column == 1) &&
                        (column != 0 || last->after.text == before.text) &&
                        (column != 1 || last->after.in == before.in) &&
                        (column != 2 || last->after.out == before.out);
    model.Push({Step::kEdit, before, after, {}});
    if (!isSame)
        return;
    const Row first = model.done[model.done.size() - 2].before;
    model.done.erase(model.done.end() - 2);
    Row& merged = model.done.back().before;
    merged.text = column == 0 ? first.text : merged.text;
    merged.in = column == 1 ? first.in : merged.in;
    merged.out = column == 2 ? first.out : merged.out;
    const Row& end = model.done.back().after;
    if (merged.text == end.text && merged.in == end.in && merged.out == end.out)
        model.done.pop_back();
}

void Properties::User(int action)
{
    const int count = model.Count();
    const int first = Below(count);
    const int last = std::min(first + Below(4), count - 1);
    Lines lines;
    for (int line = first; line <= last; ++line)
        lines.push_back(line);
    if (action < 3 && count > 0) {
        EditCell(first, Below(3));
    } else if (action < 5 && count > 0) {
        list.SetSelItem(lines);
        Key(Qt::Key_Delete);
        model.Push({Step::kRemove, {}, {}, {model.rows.begin() + first, model.rows.begin() + last + 1}});
    } else if (action == 5 && count > 0) {
        list.SetSelItem(lines);
        Key(Qt::Key_C, Qt::ControlModifier);
        Key(Qt::Key_V, Qt::ControlModifier);
        Step step{Step::kInsert, {}, {}, {model.rows.begin() + first, model.rows.begin() + last + 1}};
        for (Row& row : step.rows)
            row.id = model.NewId();
        step.lines.assign(step.rows.size(), last + 1);
        step.marks.assign(step.rows.size(), last + 1 < count ? At(last + 1).id : 0);
        model.Push(std::move(step));
    } else if (action == 6 && count > 0) {
        list.SetSelItem(lines);
        Key(Below(2) ? Qt::Key_Up : Qt::Key_Down, Qt::AltModifier);
        if (list.GetUndoStack()->index() == static_cast<int>(model.done.size()) + 1) {
            Key(Qt::Key_Z,
                Qt::ControlModifier); // the rows are where they were; neither knows of it any more
            list.GetUndoStack()->clear();
            model.done.clear();
            model.undone.clear();
        }
    } else if (action < 9) {
        model.Undo();
        Key(Qt::Key_Z, Qt::ControlModifier);
    } else {
        model.Redo();
        Key(Qt::Key_Y, Qt::ControlModifier);
    }
}

void Properties::Check()
{
    ASSERT_EQ(list.GetItemCount(), model.Count());
    for (int line = 0; line < model.Count(); ++line) {
        const Row& row = At(line);
        ASSERT_EQ(list.GetItemText(line, 0), row.text) << line;
        ASSERT_EQ(list.GetItemText(line, 3), row.templateName) << line;
        DWORD in = 0;
        DWORD out = 0;
        list.GetTimeCode(line, in, out);
        ASSERT_EQ(in, row.in) << line;
        ASSERT_EQ(out, row.out) << line;
        ASSERT_EQ(list.GetItemText(line, 1).empty(), row.in == kNone) << line;
        DWORD back = 0;
        list.GetItemBkColor(line, &back, nullptr);
        DWORD own = 0;
        ASSERT_EQ(list.GetCellColors(line, 0, &own, nullptr) != 0, row.back.has_value()) << line;
        ASSERT_EQ(own, row.back.value_or(0)) << line;
        ASSERT_TRUE(!row.back || back == *row.back) << line;
    }
    ASSERT_EQ(list.GetPlayIndex(), model.LineOf(model.playId));
    const auto frame = static_cast<DWORD>(Below(1000));
    int plays = -1;
    for (int line = 0; line < model.Count(); ++line) {
        DWORD end = At(line).out;
        for (const Row& other : model.rows)
            end = At(line).out == kNone && other.in > At(line).in ? std::min(end, other.in) : end;
        if (At(line).in <= frame && frame < end && (plays < 0 || At(line).in >= At(plays).in))
            plays = line;
    }
    ASSERT_EQ(list.FindPlayIndex(frame), plays) << frame;
}

TEST_F(Properties, EverythingKeepsInStep)
{
    for (unsigned seed = 1; seed <= 8; ++seed) {
        random.seed(seed);
        list.EmptyAll();
        list.GetUndoStack()->clear();
        model = Model();
        for (int i = 0; i < 300; ++i) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", action " + std::to_string(i));
            if (Below(2))
                Host(Below(10));
            else
                User(Below(11));
            Check();
            if (HasFatalFailure())
                return;
        }
    }
}

} // namespace
