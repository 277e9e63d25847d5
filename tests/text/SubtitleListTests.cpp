// The subtitle list as its host and its user see it.
#include "TextListFixture.h"

#include <QAccessible>
#include <QClipboard>
#include <QSignalSpy>

namespace {

using namespace kv::test;

constexpr DWORD kDay25 = 24u * 60 * 60 * 25;

using SubtitleList = SubtitleFixture;

TEST_F(SubtitleList, ColumnsAndName)
{
    EXPECT_EQ(list.objectName(), "KVSUBTITLEEDITOR");
    EXPECT_EQ(list.GetWindowClass(), L"KVSUBTITLEEDITOR");
    ASSERT_EQ(list.GetColumnCount(), 4);
    const wchar_t* headers[] = {L"SubTitle Text", L"In Time Code", L"Out Time Code", L"Template"};
    const int widths[] = {220, 100, 100, 80};
    for (int column = 0; column < 4; ++column) {
        EXPECT_EQ(list.GetHeaderText(column), headers[column]);
        EXPECT_EQ(list.GetColumnWidth(column), widths[column]);
    }
    const QFont font = list.font();
    QFont large = font;
    large.setPixelSize(32);
    list.setFont(large);
    const int code = QFontMetrics(large).horizontalAdvance("00:00:03:00");
    EXPECT_GE(list.GetColumnWidth(1), code + 2 * kKvReportTextMargin);
    list.SetColumnWidth(1, 100);
    large.setPixelSize(40);
    list.setFont(large);
    EXPECT_EQ(list.GetColumnWidth(1), 100) << "the host's stays";
    EXPECT_GT(list.GetColumnWidth(2), code + 2 * kKvReportTextMargin);
    list.setFont(font);
    EXPECT_EQ(list.GetColumnWidth(2), 100);
    list.SetColumnWidth(3, 180);
    EXPECT_EQ(list.GetColumnWidth(0), 120);
    list.resize(100, 144);
    EXPECT_EQ(list.GetColumnWidth(0), 40) << "at least";
    list.SetColumnWidth(0, 90);
    list.resize(600, 144);
    EXPECT_EQ(list.GetColumnWidth(0), 90) << "once set it stays";

    const QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&list);
    EXPECT_EQ(reader->text(QAccessible::Name), "Subtitles");
    list.setAccessibleName("Lines");
    list.OnSkinChanged();
    EXPECT_EQ(reader->text(QAccessible::Name), "Lines") << "the host's stays in another language";
}

TEST_F(SubtitleList, RowsByTheHost)
{
    const auto insert = [this](int line) { return list.InserItem(line, L"a", 25, kNone, nullptr); };
    for (const auto& [line, index] :
         {std::pair(-1, 0), std::pair(0, 0), std::pair(2, 2), std::pair(4, -1), std::pair(-2, -1)})
        EXPECT_EQ(insert(line), index) << line;
    EXPECT_EQ(TimesOf(0), Times(25, kNone));
    EXPECT_EQ(TimesOf(3), Times(1, 2)) << "out of range leaves both";
    const DWORD in = 75;
    EXPECT_EQ(list.ModifyItem(0, nullptr, &in, &in, L"Sub"), 1);
    EXPECT_EQ(list.GetItemText(0, 0), L"a") << "null leaves a text";
    EXPECT_EQ(TimesOf(0), Times(75, 75));
    EXPECT_EQ(list.ModifyItem(0, L"new", &in, nullptr, nullptr), 1);
    EXPECT_EQ(TimesOf(0), Times(75, kNone)) << "and empties a time code";
    EXPECT_EQ(list.GetItemText(0, 3), L"Sub");
    EXPECT_EQ(list.ModifyItem(3, L"x", nullptr, nullptr, nullptr) + list.DeleteItem(3) +
                  list.SetTimeCode(9, 5, 1),
              0);
    list.UpdateAllTemplateName(L"All");
    EXPECT_EQ(list.GetItemText(2, 3), L"All");
    list.EmptyAllTimeCode();
    EXPECT_EQ(TimesOf(0), Times(kNone, kNone));
    EXPECT_EQ(list.GetItemText(0, 1), L"");
    list.EmptyAll();
    EXPECT_EQ(list.GetItemCount(), 0);
    EXPECT_FALSE(list.GetUndoStack()->canUndo());
}

TEST_F(SubtitleList, TimeCodesAreShownInFormatAndOffset)
{
    list.InserItem(-1, L"a", 1800, kDay25 + 1, nullptr);
    EXPECT_EQ(list.GetItemText(0, 2), L"00:00:00:01") << "a new day begins again";
    list.SetTimecodeOffset(25);
    list.InserItem(-1, L"b", 0, kNone, nullptr);
    EXPECT_EQ(list.GetItemText(0, 1), L"00:01:13:00");
    EXPECT_EQ(list.GetItemText(1, 1), L"00:00:01:00");
    EXPECT_EQ(TimesOf(0), Times(1800, kDay25 + 1)) << "for display only";
    list.SetTimecodeOffset(0);
    EXPECT_EQ(list.SetTimecodeFormat(kKvFrameRate29_97, 1), 1);
    EXPECT_EQ(list.SetTimecodeFormat(static_cast<EKvFrameRate>(8), 0), 0);
    EXPECT_EQ(list.GetItemText(0, 1), L"00:01:00;02");
}

TEST_F(SubtitleList, TypedTimeCodes)
{
    list.InserItem(-1, L"a", 100, kNone, nullptr);
    list.SetTimecodeOffset(25);
    for (const auto& [text, frame] : {std::pair("2:00", DWORD{25}), std::pair("+10", DWORD{110}),
                                      std::pair("", kNone), std::pair("25:00:00:00", DWORD{100})}) {
        list.SetTimeCode(0, 100, 1);
        list.EditCell(0, 1);
        Editor()->clear();
        QTest::keyClicks(Editor(), QLatin1String(text));
        QTest::keyClick(Editor(), Qt::Key_Return);
        EXPECT_EQ(list.IsEditing() != 0, frame == 100) << text << ": one that is refused stays open";
        list.EndEdit(0);
        EXPECT_EQ(TimesOf(0).first, frame) << text;
    }
    list.SetTimeCode(0, kDay25 + 7, 0);
    Type(0, 2, "", Qt::Key_Return);
    EXPECT_EQ(TimesOf(0).second, kDay25 + 7) << "an unchanged text changes nothing";
    QApplication::clipboard()->setText(QStringLiteral("00:00:03:00"));
    list.EditCell(0, 1);
    QTest::keyClick(Editor(), Qt::Key_End);
    Editor()->paste();
    EXPECT_EQ(Editor()->toPlainText(), "00:00:03:00") << "a whole one replaces";
}

TEST_F(SubtitleList, SignalsTellOfTheUserOnly)
{
    list.InserItem(-1, L"a", 100, kNone, nullptr);
    list.InserItem(-1, L"b", 200, kNone, nullptr);
    QSignalSpy texts(&list, &CKvTextListBase::TextEdited);
    QSignalSpy times(&list, &CKvSubTitleTxtListEditor::TimeCodeEdited);
    QSignalSpy rows(&list, &CKvTextListBase::RowsEdited);
    QSignalSpy selections(&list, &CKvReportListCtrl::SelectionEdited);
    list.SetTimeCode(0, 7, 1);
    list.SetPlayIndex(1);
    list.SetSelItem(1);
    list.SortItems(1, 0);
    list.FindReplace(0, 2, L"a", L"z", 1);
    EXPECT_EQ(texts.size() + times.size() + rows.size() + selections.size(), 0);
    Type(0, 2, "10:00", Qt::Key_Tab);
    ASSERT_EQ(times.size(), 1);
    EXPECT_EQ(times[0][0].toInt(), 0);
    EXPECT_FALSE(times[0][1].toBool());
    EXPECT_EQ(list.GetEditColumn(), 3) << "Tab opens the next cell";
    QTest::keyClicks(Editor(), "Title");
    QTest::keyClick(Editor(), Qt::Key_Return);
    EXPECT_EQ(texts.size(), 1) << "a template is a text";
    Undo();
    Undo();
    EXPECT_EQ(times.size(), 2);
    EXPECT_EQ(texts.size(), 2);
    EXPECT_EQ(TimesOf(0), Times(200, kNone));
    Undo();
    EXPECT_EQ(list.GetItemText(1, 0), L"a") << "the replacement is a step, too";
}

TEST_F(SubtitleList, PlayRowStandsApart)
{
    for (int i = 0; i < 4; ++i)
        list.InserItem(-1, L"row", kNone, kNone, nullptr);
    const DWORD own = 0xFF402020u;
    list.SetItemBkColor(1, &own, nullptr);
    const auto back = [&](int line) {
        const QPoint inside = QRect(list.GetCellRect(line, 3)).topRight() - QPoint(8, -4);
        return list.grab().toImage().pixel(inside);
    };
    const auto rest = [&](int line) {
        return list.grab().toImage().pixel(QRect(list.GetCellRect(line, 3)).topRight() + QPoint(8, 4));
    };
    list.SetColumnWidth(0, 100);
    EXPECT_EQ(back(1), own);
    EXPECT_EQ(rest(1), own) << "beside the columns";
    list.SetPlayIndex(1);
    const QRgb played = back(1);
    EXPECT_NE(played, own) << "beats the row's own colour";
    EXPECT_EQ(rest(1), played);
    EXPECT_EQ(list._GetItemDescription(1), L"Playing") << "colours are not for everybody";
    EXPECT_EQ(list._GetItemDescription(0), L"");
    list.SetSelItem(Lines{1, 2});
    EXPECT_NE(back(1), played) << "selection still shows";
    EXPECT_NE(back(1), back(2));
    DWORD normal = 0;
    list.GetItemBkColor(1, &normal, nullptr);
    EXPECT_EQ(normal, own);
    list.SetPlayIndex(99);
    EXPECT_EQ(list.GetPlayIndex(), -1);
}

TEST_F(SubtitleList, HostsStepKeepsTimesAndTheUsersSelection)
{
    for (int i = 0; i < 20; ++i)
        list.InserItem(-1, L"row", static_cast<DWORD>(i), kNone, nullptr);
    list.SetSelItem(7);
    const auto change = [&] {
        list.SetTimeCode(3, 100, 1);
        list.SetTimeCode(3, 200, 0);
        list.ModifyItem(4, L"other", nullptr, nullptr, nullptr);
        list.DeleteItem(0);
        list.SetTimeCode(2, 101, 1);
    };
    EXPECT_EQ(list.RunAsStep(L"times", change), 1);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(TimesOf(2), Times(101, 200));
        EXPECT_EQ(list.GetItemText(3, 0), L"other");
        EXPECT_EQ(TimesOf(3), Times(kNone, kNone));
        Undo();
        EXPECT_EQ(TimesOf(3), Times(3, kNone));
        EXPECT_EQ(TimesOf(4), Times(4, kNone));
        EXPECT_EQ(list.GetItemCount(), 20);
        EXPECT_EQ(list.GetLastSelItem(), 7);
        Redo();
    }
}

TEST_F(SubtitleList, FollowsPlaybackUntilTheUserScrolls)
{
    for (int i = 0; i < 50; ++i)
        list.InserItem(-1, L"row", static_cast<DWORD>(i * 10), kNone, nullptr);
    list.SetPlayIndex(20);
    EXPECT_EQ(list.GetTopIndex(), 0) << "off at first";
    list.SetFollowPlayback(1);
    EXPECT_EQ(list.GetTopIndex(), 16);
    list.SetPlayIndex(30);
    EXPECT_EQ(list.GetTopIndex(), 26);
    QWheelEvent wheel({50, 50}, list.mapToGlobal(QPointF(50, 50)), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &wheel);
    const int scrolled = list.GetTopIndex();
    list.SetPlayIndex(40);
    EXPECT_EQ(list.GetTopIndex(), scrolled);
    list.SetFollowPlayback(1);
    EXPECT_EQ(list.GetTopIndex(), 36);
    list.SortItems(1, 0);
    EXPECT_EQ(list.GetTopIndex(), 9) << "sorted";
    list.EnsureVisible(0);
    list.resize(500, 120);
    EXPECT_EQ(list.GetTopIndex(), 6) << "another size";
    for (const BOOL commit : {0, 1}) {
        list.EnsureVisible(40);
        list.EditCell(40, 0);
        QTest::keyClicks(Editor(), "typed");
        list.SetPlayIndex(9 + commit);
        EXPECT_EQ(list.GetTopIndex(), 37) << "waits for the open cell";
        list.EndEdit(commit);
        QApplication::processEvents();
        EXPECT_EQ(list.GetTopIndex(), 9 + commit);
    }
    list.resize(500, 144);
    list.SortItems(1, 1);
    list.SetPlayIndex(40);
    EXPECT_EQ(list.GetTopIndex(), 36);
    list.EnsureVisible(0);
    list.SetPlayIndex(40);
    EXPECT_EQ(list.GetTopIndex(), 0) << "set before";
    list.SetPlayIndex(41);
    EXPECT_EQ(list.GetTopIndex(), 37);
    Key(Qt::Key_Home);
    list.SetPlayIndex(40);
    EXPECT_EQ(list.GetTopIndex(), 0) << "a key has scrolled";
    list.SetFollowPlayback(1);
    list.SetFollowPlayback(0);
    list.SetPlayIndex(0);
    EXPECT_EQ(list.GetTopIndex(), 36);
}

TEST_F(SubtitleList, OnlyTheRowsThatChangeAreRepainted)
{
    for (int i = 0; i < 5; ++i)
        list.InserItem(-1, L"row", kNone, kNone, nullptr);
    class Painted : public QObject
    {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Paint)
                region += static_cast<QPaintEvent*>(event)->region();
            return false;
        }
        QRegion region;
    } painted;
    list.installEventFilter(&painted);
    const auto next = [&] {
        painted.region = {};
        EXPECT_TRUE(QTest::qWaitFor([&] { return !painted.region.isEmpty(); }));
        QApplication::processEvents();
        return painted.region;
    };
    next();
    do {
        painted.region = {};
        QApplication::processEvents();
    } while (!painted.region.isEmpty());
    list.SetPlayIndex(1);
    EXPECT_EQ(next(), QRegion(0, 48, 500, 24));
    list.SetPlayIndex(3);
    EXPECT_EQ(next(), QRegion(0, 48, 500, 24) + QRegion(0, 96, 500, 24));
}

TEST_F(SubtitleList, RowsKeepAllThatIsTheirsOnTheClipboard)
{
    list.InserItem(-1, L"two\nlines", 25, 50, L"Title");
    const DWORD own = 0xFF402020u;
    list.SetItemBkColor(0, &own, nullptr);
    list.SetSelItem(0);
    Key(Qt::Key_C, Qt::ControlModifier);
    list.SetTimecodeOffset(25);
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(list.GetItemText(1, 0), L"two\nlines");
    EXPECT_EQ(TimesOf(1), Times(25, 50));
    EXPECT_EQ(list.GetItemText(1, 1), L"00:00:02:00") << "shown as of now";
    EXPECT_EQ(list.GetItemText(1, 3), L"Title");
    DWORD normal = 0;
    list.GetItemBkColor(1, &normal, nullptr);
    EXPECT_EQ(normal, own);
    CKvTextEditListCtrl other;
    other.Create({0, 0, 100, 100}, WS_CHILD | WS_VISIBLE, &parent, 6);
    other.setFocus();
    QTest::keyClick(&other, Qt::Key_V, Qt::ControlModifier);
    CStringArray texts;
    other.GetString(texts);
    EXPECT_EQ(texts, (CStringArray{L"two", L"lines"})) << "another class takes the text alone";
}

TEST_F(SubtitleList, AnOpenCellShowsAllItsLines)
{
    list.InserItem(-1, L"first\nsecond", kNone, kNone, nullptr);
    list.EditCell(0, 0);
    QTest::keyClick(Editor(), Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(Editor(), " and more");
    const int second = Editor()->cursorRect().top();
    QTest::keyClick(Editor(), Qt::Key_Home, Qt::ControlModifier);
    EXPECT_GE(Editor()->cursorRect().top(), 0);
    EXPECT_LT(Editor()->cursorRect().top(), second);
    EXPECT_GE(second, QFontMetrics(list.font()).lineSpacing()) << "below the first line";
}

} // namespace
