#include "text/TextFinder.h"

#include "edit/Document.h"
#include "project/Pages.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "window/Texts.h"

#include <QPlainTextEdit>
#include <QScrollArea>
#include <QTextCursor>

#include <algorithm>
#include <utility>

namespace titler {
namespace {

constexpr int kFoundWrapped = 1;
constexpr qsizetype kLongestName = 24; // of a text within the name of a step

QString Shortened(const QString& text)
{
    return text.size() > kLongestName ? text.left(kLongestName - 1) + QChar(0x2026) : text;
}

// From the last to the first: what stands before a replacement keeps its place.
QString Replaced(QString text, const std::vector<TextRange>& ranges, const QString& replacement)
{
    for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
        text.replace(range->begin, range->end - range->begin, replacement);
    return text;
}

} // namespace

TextFinder::TextFinder(Document& document, QPlainTextEdit& editor, SubtitlePanel& subtitles, TextStage stage)
    : m_document(document)
    , m_editor(editor)
    , m_subtitles(subtitles)
    , m_stage(std::move(stage))
{
}

int TextFinder::PageTotal() const
{
    return PageCount(m_document.Current());
}

int TextFinder::PlaceTotal() const
{
    return PageTotal() + m_subtitles.List().GetItemCount();
}

QString TextFinder::TextAt(int place) const
{
    const int row = place - PageTotal();
    return row < 0 ? PageAt(m_document.Current(), place).title.text
                   : QString::fromStdWString(m_subtitles.List().GetItemText(row, kKvSubTitleText));
}

int TextFinder::PlaceOf(const Hit& hit) const
{
    if (hit.page >= 0)
        return hit.page < PageTotal() ? hit.page : -1;
    const int row = m_subtitles.List().FindRowKey(hit.row);
    return row < 0 ? -1 : PageTotal() + row;
}

TextRange TextFinder::EditorSelection() const
{
    const QTextCursor cursor = m_editor.textCursor();
    return {cursor.selectionStart(), cursor.selectionEnd()};
}

// Whether the user is still where it was shown.
bool TextFinder::IsInSight(const Hit& hit) const
{
    const bool isSubtitle = hit.page < 0;
    const int place = PlaceOf(hit);
    if (place < 0 || isSubtitle != m_stage.areSubtitles())
        return false;
    return isSubtitle ? m_subtitles.List().GetCurrentItem() == place - PageTotal()
                      : m_document.Current().pageIndex == place && EditorSelection() == hit.range;
}

TextFinder::Start TextFinder::StartHere() const
{
    if (m_hit && IsInSight(*m_hit))
        return {PlaceOf(*m_hit), m_hit->range.end, m_hit->range.end};
    if (m_stage.areSubtitles() && m_subtitles.List().GetItemCount() > 0)
        return {PageTotal() + std::max(m_subtitles.List().GetCurrentItem(), 0), 0, 0};
    const bool hasCursor = m_editor.window()->focusWidget() == &m_editor;
    const qsizetype offset = hasCursor ? EditorSelection().end : 0;
    return {m_document.Current().pageIndex, offset, offset};
}

bool TextFinder::GoOn(const SubtitleMatches& matches, const Start& start, bool& hasWrapped)
{
    const int total = PlaceTotal();
    for (int step = 0; step <= total; ++step) {
        const int place = (start.place + step) % total;
        for (const TextRange& range : matches.In(TextAt(place))) {
            if ((step == 0 && range.begin < start.offset) || (step == total && range.begin >= start.end))
                continue;
            hasWrapped = start.place + step >= total;
            const bool isPage = place < PageTotal();
            m_hit = Hit{isPage ? place : -1, isPage ? 0 : m_subtitles.List().GetRowKey(place - PageTotal()),
                        range};
            return true;
        }
    }
    return false;
}

void TextFinder::ShowHit(const Hit& hit)
{
    if (hit.page < 0) {
        m_stage.show(Workspace::Subtitles);
        m_subtitles.ShowMatch(m_subtitles.List().FindRowKey(hit.row), hit.range);
        return;
    }
    m_stage.show(Workspace::Design); // animating has no text
    m_document.ChoosePage(hit.page);
    QTextCursor cursor = m_editor.textCursor();
    cursor.setPosition(static_cast<int>(hit.range.begin));
    cursor.setPosition(static_cast<int>(hit.range.end), QTextCursor::KeepAnchor);
    m_editor.setTextCursor(cursor);
    m_editor.setFocus();
    for (QWidget* outer = m_editor.parentWidget(); outer != nullptr; outer = outer->parentWidget())
        if (auto* area = qobject_cast<QScrollArea*>(outer))
            area->ensureWidgetVisible(&m_editor);
}

void TextFinder::ForgetHit()
{
    m_hit.reset();
    m_subtitles.List().ClearMatch();
}

int TextFinder::Find(const wchar_t* text, BOOL matchCase)
{
    m_stage.settle();
    const SubtitleMatches matches({QString::fromWCharArray(text), matchCase != 0});
    bool hasWrapped = false;
    if (!GoOn(matches, StartHere(), hasWrapped)) {
        ForgetHit();
        return kKvFindNotFound;
    }
    return Announce(hasWrapped);
}

int TextFinder::Announce(bool hasWrapped)
{
    ShowHit(*m_hit);
    const int place = PlaceOf(*m_hit);
    const bool isPage = m_hit->page >= 0;
    const QString where = Text(isPage ? kTextFoundInPage : kTextFoundInRow,
                               {QString::number((isPage ? place : place - PageTotal()) + 1),
                                WithContext(TextAt(place), m_hit->range)});
    emit Found(hasWrapped ? Text(kTextFoundAround, {where}) : where);
    return hasWrapped ? kFoundWrapped : 0;
}

int TextFinder::Replace(const wchar_t* text, const wchar_t* replacement, BOOL matchCase, BOOL all)
{
    m_stage.settle();
    const QString what = QString::fromWCharArray(text);
    const QString by = QString::fromWCharArray(replacement);
    const SubtitleMatches matches({what, matchCase != 0});
    const StepName step = [what = Shortened(what), by = Shortened(by)] {
        return Text(kStepReplaceText, {what, by});
    };
    if (all != 0)
        return ReplaceAll(matches, step, by);
    TakeSelection(matches);
    const int place = m_hit && IsInSight(*m_hit) ? PlaceOf(*m_hit) : -1;
    const QString before = place < 0 ? QString() : TextAt(place);
    const std::vector<TextRange> found = matches.In(before);
    if (place < 0 || std::find(found.begin(), found.end(), m_hit->range) == found.end())
        return Find(text, matchCase);

    const Hit hit = *m_hit;
    const QString after = Replaced(before, {hit.range}, by);
    if (hit.page < 0) {
        m_subtitles.SetTexts(step, {{place - PageTotal(), after}});
    } else if (after.size() > kLongestText) {
        RefuseLong(hit.page);
        return 0;
    } else {
        m_document.Edit(EditKind::Single, step, [&](Project& project) { project.title.text = after; });
    }
    bool hasWrapped = false;
    if (!GoOn(matches, {place, hit.range.begin + by.size(), hit.range.begin}, hasWrapped)) {
        ForgetHit();
        emit Found(Text(kTextReplacedLast));
        return 0;
    }
    return Announce(hasWrapped);
}

// A place that the user has selected is as good as one that was found.
void TextFinder::TakeSelection(const SubtitleMatches& matches)
{
    if (m_stage.areSubtitles() || (m_hit && IsInSight(*m_hit)))
        return;
    const int page = m_document.Current().pageIndex;
    const std::vector<TextRange> found = matches.In(TextAt(page));
    if (std::find(found.begin(), found.end(), EditorSelection()) != found.end())
        m_hit = Hit{page, 0, EditorSelection()};
}

void TextFinder::RefuseLong(int page)
{
    emit Reported(LogType::Warning,
                  Text(kTextReplacedTooLong, {QString::number(page + 1), QString::number(kLongestText)}));
}

int TextFinder::ReplaceAll(const SubtitleMatches& matches, const StepName& step, const QString& replacement)
{
    ForgetHit();
    std::vector<std::pair<int, QString>> pages;
    std::vector<std::pair<int, QString>> rows;
    int inPages = 0;
    int inRows = 0;
    bool isFound = false;
    bool isRefused = false;
    for (int place = 0; place < PlaceTotal(); ++place) {
        const QString text = TextAt(place);
        const std::vector<TextRange> found = matches.In(text);
        if (found.empty())
            continue;
        const QString after = Replaced(text, found, replacement);
        const bool isPage = place < PageTotal();
        isFound = true;
        if (after == text)
            continue;
        if (isPage && after.size() > kLongestText) {
            RefuseLong(place);
            isRefused = true;
            continue;
        }
        (isPage ? inPages : inRows) += static_cast<int>(found.size());
        (isPage ? pages : rows).emplace_back(isPage ? place : place - PageTotal(), after);
    }
    if (pages.empty() && rows.empty()) {
        if (isFound && !isRefused)
            emit Reported(LogType::Message, Text(kTextReplacedNone));
        return isFound ? 0 : kKvFindNotFound;
    }
    QStringList said;
    if (!pages.empty()) {
        m_document.Edit(EditKind::Single, step, [&](Project& project) {
            for (const auto& [page, text] : pages) {
                Page changed = PageAt(project, page);
                changed.title.text = text;
                ReplacePage(project, page, std::move(changed));
            }
        });
        said << Text(kTextReplacedInTitles, {QString::number(inPages)});
    }
    if (!rows.empty()) {
        m_subtitles.SetTexts(step, rows);
        said << Text(kTextReplacedInRows, {QString::number(inRows)});
    }
    emit Reported(LogType::Message, said.join(u' '));
    return 0;
}

QString TextFinder::SelectedText() const
{
    if (m_hit && IsInSight(*m_hit))
        return {};
    const auto* focus = qobject_cast<const QPlainTextEdit*>(m_editor.window()->focusWidget());
    const QString text = focus != nullptr ? focus->textCursor().selectedText() : QString();
    return text.contains(QChar::ParagraphSeparator) || text.contains(QChar::LineSeparator) ? QString() : text;
}

QRect TextFinder::PlaceOnScreen() const
{
    const SubtitleList& list = m_subtitles.List();
    if (!m_stage.areSubtitles())
        return {m_editor.mapToGlobal(QPoint()), m_editor.size()};
    const QRect row = QRect(list.GetCellRect(std::max(list.GetCurrentItem(), 0), kKvSubTitleText));
    const QRect shown = row.isEmpty() ? list.rect() : row.intersected(list.rect());
    return {list.mapToGlobal(shown.topLeft()), shown.size()};
}

} // namespace titler
