// What the log list shows: filters, follow mode, search, and messages from other threads.
#include "AppLogListFixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QToolButton>

#include <random>
#include <thread>

namespace {

class AppLogListView : public LogFixture
{
protected:
    QPushButton* Badge() const
    {
        QApplication::processEvents();
        auto* badge = log.findChild<QPushButton*>("newMessages");
        return badge && badge->isVisible() ? badge : nullptr;
    }
    QString BadgeText() const { return Badge() ? Badge()->text() : QString(); }
    QWidget* FindBar() const
    {
        QApplication::processEvents();
        return log.findChild<QWidget*>("findBar");
    }
    QString FindCount() const { return FindBar()->findChild<QLabel*>()->text(); }
    std::vector<int> Shown() const
    {
        std::vector<int> shown;
        for (int line = 0; line < log.GetItemCount(); ++line) {
            if (log.IsRowShown(line))
                shown.push_back(line);
        }
        return shown;
    }
};

TEST_F(AppLogListView, FiltersHideAndNothingElse)
{
    log.AddTimeSeparateLine({2016, 3, 0, 1, 0, 0, 0, 0});                                    // 0
    log.AddAppLogMsg({Message(0, L"Apple"), Message(1, L"pear"), Message(2, L"apple pie")}); // 1 … 3
    log.AddEmptySeparateLine(1);                                                             // 4
    log.AddAppLogMsg(Message(9, L"Nine"));                                                   // 5
    using Lines = std::vector<int>;
    const struct
    {
        const char* what;
        DWORD mask;
        const wchar_t* text;
        BOOL matchCase;
        Lines shown;
    } rows[] = {
        {"all", 0xFFFFFFFFu, nullptr, 0, {0, 1, 2, 3, 4, 5}},
        {"ten bits are all", 0x3FFu, L"", 0, {0, 1, 2, 3, 4, 5}},
        {"no type", 0, nullptr, 0, {0}},
        {"types 0 and 9", 0x201u, nullptr, 0, {0, 1, 5}},
        {"text", 0x3FFu, L"APPLE", 0, {0, 1, 3}},
        {"text with its case", 0x3FFu, L"apple", 1, {0, 3}},
        {"both", 0x1u, L"apple", 0, {0, 1}},
        {"the time is not looked at", 0x3FFu, L"2016", 0, {0}},
    };
    for (const auto& row : rows) {
        log.SetTypeFilter(row.mask);
        log.SetTextFilter(row.text, row.matchCase);
        EXPECT_EQ(Shown(), row.shown) << row.what;
        EXPECT_EQ(log.GetItemCount(), 6) << row.what;
        EXPECT_EQ(Selected(), (Selection{5})) << row.what;
        EXPECT_EQ(log.GetTypeCount(1), 1) << row.what;
    }
    log.SetTextFilter(nullptr, 0);
    log.SetTypeFilter(2);
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Selected(), (Selection{0, 2})) << "all that are shown, and the date";
}

TEST_F(AppLogListView, AHiddenNewMessageIsSelectedButDoesNotScroll)
{
    Fill(30);
    log.SetTypeFilter(1);
    log.SetScrollOffset({0, 100});
    const int top = log.GetTopIndex();
    log.AddAppLogMsg(Message(4, L"hidden"));
    EXPECT_EQ(Selected(), (Selection{30}));
    EXPECT_TRUE(log.IsItemSelected(30));
    EXPECT_EQ(log.GetTopIndex(), top);
    log.SetTypeFilter(0x3FF);
    EXPECT_EQ(log.GetTopIndex(), top);
}

TEST_F(AppLogListView, FollowsOnlyAtTheEnd)
{
    log.SetFollowMode(kKvAppLogFollowAtEnd);
    log.SetFollowMode(7);
    EXPECT_EQ(log.GetFollowMode(), kKvAppLogFollowAtEnd);
    Fill(30);
    EXPECT_EQ(Selected(), (Selection{29}));
    log.AddTimeSeparateLine({2016, 3, 0, 1, 0, 0, 0, 0});
    EXPECT_TRUE(log.IsEndInView()) << "a date line does not end the following";
    log.AddAppLogMsg(Message(0, L"at the end"));
    EXPECT_EQ(Selected(), (Selection{31}));
    EXPECT_FALSE(Badge());

    log.SetSelItem(3);
    log.SetScrollOffset({0, 100});
    const CPoint offset = log.GetScrollOffset();
    log.SetTypeFilter(0x1FF);
    log.AddAppLogMsg({Message(0, L"below"), Message(9, L"hidden"), Message(1, L"below", 2)});
    EXPECT_EQ(log.GetScrollOffset(), offset);
    EXPECT_EQ(Selected(), (Selection{3}));
    EXPECT_EQ(BadgeText(), "2 new") << "a hidden one is not there to be seen";
    for (const auto& [mask, text] :
         {std::pair(0x3FFu, "3 new"), std::pair(0x1FDu, "1 new"), std::pair(0x1FFu, "2 new")}) {
        log.SetTypeFilter(mask);
        EXPECT_EQ(BadgeText(), text) << "as the filter has it";
    }
    QTest::mouseClick(Badge(), Qt::LeftButton);
    EXPECT_TRUE(log.IsEndInView());
    EXPECT_FALSE(Badge());
    EXPECT_EQ(Selected(), (Selection{3})) << "only the view goes there";
    log.AddAppLogMsg(Message(0, L"again at the end", 2));
    EXPECT_EQ(log.GetLastSelItem(), log.GetItemCount() - 1);

    log.SetScrollOffset({0, 0});
    log.AddAppLogMsg(Message(0, L"below", 2));
    EXPECT_EQ(BadgeText(), "1 new");
    Key(Qt::Key_End);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Badge(); })) << "it goes with the next painting";
}

TEST_F(AppLogListView, AViewAtTheEndStaysThere)
{
    const struct
    {
        const char* what;
        std::function<void()> change;
    } rows[] = {
        {"find bar", [this] { log.ShowFindBar(1); }},
        {"lower", [this] { log.resize(600, 200); }},
        {"lower than a line", [this] { log.resize(600, 40); }},
        {"header alone", [this] { log.resize(600, 20); }},
    };
    log.SetFollowMode(kKvAppLogFollowAtEnd);
    Fill(30);
    for (const auto& row : rows) {
        row.change();
        Fill(1);
        EXPECT_EQ(log.GetLastSelItem(), log.GetItemCount() - 1) << row.what;
        log.ShowFindBar(0);
        log.resize(600, 264);
        EXPECT_TRUE(log.IsEndInView()) << row.what;
        EXPECT_FALSE(Badge()) << row.what;
    }
    log.SetScrollOffset({0, 100});
    log.resize(600, 200);
    EXPECT_EQ(log.GetScrollOffset(), CPoint(0, 100)) << "another one stays, too";
}

TEST_F(AppLogListView, ScrollingLeavesNoTraceOfTheBadge)
{
    log.SetFollowMode(kKvAppLogFollowAtEnd);
    Fill(60);
    log.SetScrollOffset({0, 0});
    Fill(3);
    ASSERT_TRUE(Badge());
    const auto screen = [this] {
        QApplication::processEvents();
        QApplication::processEvents();
        return parent.screen()->grabWindow(parent.winId()).toImage().convertToFormat(QImage::Format_RGB32);
    };
    for (const int y : {48, 240, 24}) {
        log.SetScrollOffset({0, y});
        const QImage scrolled = screen();
        ASSERT_FALSE(scrolled.isNull());
        log.repaint();
        EXPECT_EQ(scrolled, screen()) << y;
    }
}

TEST_F(AppLogListView, WhenTheTopLineIsTrimmedTheViewGoesToTheFirst)
{
    log.SetFollowMode(kKvAppLogFollowAtEnd);
    log.SetMaxLogLineCounts(100, 0);
    Fill(99);
    log.SetSelItem(90);
    log.SetScrollOffset({0, 24 * 80});
    log.AddAppLogMsg(Message(0, L"full"));
    EXPECT_EQ(log.GetItemCount(), 25);
    EXPECT_EQ(log.GetTopIndex(), 80 - 75) << "what is in view stays there";
    EXPECT_EQ(Selected(), (Selection{90 - 75}));
    Fill(74);
    log.SetScrollOffset({0, 24 * 10});
    log.SetSelItem(10);
    log.AddAppLogMsg(Message(0, L"full again"));
    EXPECT_EQ(log.GetTopIndex(), 0);
    EXPECT_EQ(Selected(), Selection{});
    EXPECT_EQ(BadgeText(), QString("%1 new").arg(log.GetItemCount())) << "of those that are left";
}

TEST_F(AppLogListView, FindsForwardsAndBackwards)
{
    log.AddAppLogMsg({Message(0, L"one Fish"), Message(1, L"two"), Message(2, L"red fish, blue fish"),
                      Message(3, L"fish")});
    QSignalSpy told(&log, &CKvReportListCtrl::SelectionEdited);
    Key(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(FindBar());
    EXPECT_EQ(log.GetVisibleCount(), 4);
    auto* text = FindBar()->findChild<QLineEdit*>();
    EXPECT_TRUE(text->hasFocus());
    EXPECT_EQ(told.size(), 0);
    QTest::keyClicks(text, "fish");
    EXPECT_EQ(Selected(), (Selection{3})) << "from the current line on";
    EXPECT_EQ(FindCount(), "3 of 3 lines");
    EXPECT_GT(told.size(), 0);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(Selected(), (Selection{0})) << "and on from the other end";
    EXPECT_EQ(FindCount(), "1 of 3 lines");
    QTest::keyClick(text, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), (Selection{3}));
    FindBar()->findChild<QToolButton*>()->click();
    EXPECT_EQ(FindCount(), "2 of 2 lines");
    log.AddAppLogMsg(Message(0, L"more fish"));
    EXPECT_EQ(FindCount(), "2 of 3 lines") << "new ones are counted";
    log.SetTypeFilter(1u << 2);
    EXPECT_EQ(FindCount(), "1 lines") << "hidden ones are not";
    log.SetTypeFilter(0x3FF);
    log.SetMaxLogLineCounts(4, 1);
    EXPECT_EQ(FindCount(), "1 lines") << "nor those that went";
    text->setText("no such text");
    EXPECT_EQ(FindCount(), "Not found");
    QTest::keyClick(text, Qt::Key_Escape);
    EXPECT_FALSE(FindBar()->isVisible());
    EXPECT_TRUE(log.hasFocus());
}

TEST_F(AppLogListView, TheSearchGoesOnFromItsMatch)
{
    for (int i = 0; i < 6; ++i)
        log.AddAppLogMsg(Message(0, i % 2 ? L"needle" : L"hay"));
    log.SetSelItem(0);
    log.ShowFindBar(1);
    auto* text = FindBar()->findChild<QLineEdit*>();
    text->setText("needle");
    EXPECT_EQ(Selected(), (Selection{1}));
    log.AddAppLogMsg(Message(0, L"new"));
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(Selected(), (Selection{3})) << "a new message does not take it along";
    log.AddAppLogMsg(Message(0, L"new"));
    QApplication::processEvents();
    QTest::keyClick(text, Qt::Key_F3);
    EXPECT_EQ(Selected(), (Selection{5})) << "nor when it is told of later";
    const QRect first = log.GetCellRect(0, 3);
    QTest::mouseClick(&log, Qt::LeftButton, Qt::NoModifier, first.center());
    QTest::keyClick(&log, Qt::Key_F3);
    EXPECT_EQ(Selected(), (Selection{1})) << "but the user does";
    EXPECT_EQ(FindCount(), "1 of 3 lines");
    log.SetMaxLogLineCounts(12, 1);
    log.RemoveRows(0, 2);
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(Selected(), (Selection{1})) << "its match is gone: from the top";
}

TEST_F(AppLogListView, MayDieWhenItTellsWhatWasFound)
{
    for (const Qt::Key key : {Qt::Key_N, Qt::Key_Return, Qt::Key_F3}) {
        TestLog* own = Doomed(L"needle");
        own->ShowFindBar(1);
        auto* text = own->findChild<QLineEdit*>();
        text->setText(key == Qt::Key_N ? "" : "needle");
        QApplication::processEvents();
        const QPointer<TestLog> alive(own);
        QObject::connect(own, &CKvReportListCtrl::SelectionEdited, &parent, [own] { delete own; });
        QTest::keyClick(text, key);
        QApplication::processEvents();
        EXPECT_TRUE(alive.isNull()) << key;
    }
}

TEST_F(AppLogListView, WhatIsFoundIsShapedAsWithout)
{
    DWORD back = 0xFF1F1F22u;
    DWORD ink = 0xFFE2E2E4u;
    KvGuiRes::LoadColor(L"keReportListBKColor", back);
    KvGuiRes::LoadColor(L"keWindowTextColor", ink);
    const auto line = [](const char* key, QColor colour) {
        return QString("%1=%2,%3,%4,255\n").arg(key).arg(colour.red()).arg(colour.green()).arg(colour.blue());
    };
    SetSkin((line("keApplogFoundBKColor", QColor::fromRgba(back)) +
             line("keApplogFoundTextColor", QColor::fromRgba(ink)))
                .toUtf8());
    log.AddAppLogMsg({Message(0, L"plain abc"), Message(0, L"tab\tand\nbreak\r\nabc"),
                      Message(0, L"\u05d0\u05d1\u05d2 abc \u05d3"), Message(0, L"\u0633\u0644abc\u0645"),
                      Message(0, L"long " + std::wstring(300, L'c'))});
    log.SetSelItem(-1);
    log.clearFocus();
    const auto content = [this] {
        QApplication::processEvents();
        return log.grab(QRect(log.GetCellRect(0, 3)).united(log.GetCellRect(4, 3))).toImage();
    };
    const QImage without = content();
    log.ShowFindBar(1);
    FindBar()->findChild<QLineEdit*>()->setText("c");
    log.SetSelItem(-1);
    const QImage with = content();
    EXPECT_EQ(with, without);
    KvGuiRes::SetSkinFolder(nullptr);
    EXPECT_NE(content(), without) << "in colours of its own";
}

TEST_F(AppLogListView, WhatIsFoundStandsOnItsOwnGround)
{
    log.AddAppLogMsg({Message(0, L"iiiiii WWWW"), Message(0, L"WWWW" + std::wstring(300, L'i') + L"MMMM")});
    log.SetSelItem(-1);
    log.ShowFindBar(1);
    auto* text = FindBar()->findChild<QLineEdit*>();
    const auto found = [&](int line, const char* needle) {
        text->setText(needle);
        log.SetSelItem(-1);
        const QImage image = log.grab(log.GetCellRect(line, 3)).toImage();
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                pixels += image.pixelColor(x, y) == QColor(255, 179, 71) ? 1 : 0;
        }
        return pixels;
    };
    EXPECT_EQ(found(0, "x"), 0);
    const int narrow = found(0, "i");
    EXPECT_GT(narrow, 0);
    EXPECT_GT(found(0, "ww"), narrow) << "by the widths of the letters";
    EXPECT_GT(found(1, "mmmm"), 0) << "what is cut off is found at the ellipsis";
}

TEST_F(AppLogListView, PostedMessagesLeaveWhatAddingLeaves)
{
    std::mt19937 random(7);
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    for (int round = 0; round < 120; ++round) {
        SCOPED_TRACE(round);
        TestLog one;
        TestLog posted;
        const int maximum = round;
        const int mode = round % 2;
        const auto both = [&](const auto& change) { change(one), change(posted); };
        both([&](TestLog& list) {
            list.Initialize(1);
            list.resize(600, 264);
            list.SetMaxLogLineCounts(static_cast<WORD>(maximum), 0);
            list.SetFollowMode(mode);
        });
        int waiting = 0;
        for (int i = below(300); i > 0; --i) {
            const SKvAppLogMsgData message =
                Message(below(12) - 1, std::to_wstring(i), static_cast<WORD>(below(3)));
            const int added = one.AddAppLogMsg(message);
            EXPECT_EQ(posted.PostAppLogMsg(message), added);
            waiting += added;
            const bool acts = below(50) == 0;
            // Of more than the maximum the older ones are not followed.
            if (acts || (mode == kKvAppLogFollowAtEnd && waiting >= maximum)) {
                posted.GetItemCount();
                waiting = 0;
            }
            if (!acts)
                continue;
            const int line = below(100);
            const auto mask = static_cast<DWORD>(random() | random());
            both([&](TestLog& list) {
                list.SetSelItem(line % 2 ? 0 : -1);
                list.SetTypeFilter(mask);
                list.SetScrollOffset({0, line * 24});
            });
        }
        ASSERT_EQ(posted.GetItemCount(), one.GetItemCount());
        for (int line = 0; line < one.GetItemCount(); ++line) {
            EXPECT_EQ(posted.GetItemText(line, 0), one.GetItemText(line, 0));
            EXPECT_EQ(posted.GetItemText(line, 3), one.GetItemText(line, 3));
            EXPECT_EQ(posted.IsItemSelected(line), one.IsItemSelected(line)) << line;
        }
        EXPECT_EQ(posted.GetScrollOffset(), one.GetScrollOffset());
        EXPECT_EQ(posted.IsEndInView(), one.IsEndInView());
    }
}

// By a host's font, at any time, and back.
TEST_F(AppLogListView, MessagesAreAsHighAsTheirLetters)
{
    const auto heights = [&] {
        std::vector<int> all;
        for (int line = 0; line < log.GetItemCount(); ++line)
            all.push_back(log.GetItemHeight(line));
        return all;
    };
    const auto setPixels = [&](int pixels) {
        QFont font = log.font();
        font.setPixelSize(pixels);
        log.setFont(font);
    };
    log.AddTimeSeparateLine({2016, 3, 0, 1, 0, 0, 0, 0});
    log.AddAppLogMsg(Message(0, L"before"));
    for (int pixels = 10; pixels < 48; ++pixels) { // also where a message is as high as a date
        setPixels(pixels);
        log.AddAppLogMsg(Message(0, L"behind"));
        const int message = std::max(24, log.fontMetrics().height() + 4);
        std::vector<int> expected(static_cast<std::size_t>(log.GetItemCount()), message);
        expected[0] = 48;
        EXPECT_EQ(heights(), expected) << pixels;
    }
    setPixels(10);
    EXPECT_EQ(heights()[0], 48);
    EXPECT_EQ(heights()[1], 24);
}

TEST_F(AppLogListView, EveryQueryTakesInWhatWasPosted)
{
    CKvReportListCtrl& base = log;
    CArray<int, int> lines;
    const std::function<int()> queries[] = {
        [&] { return base.GetItemCount(); },
        [&] { return base.GetItemText(0, 3) == L"x" ? 1 : 0; },
        [&] { return base.GetItemHeight(0) / 24; },
        [&] { return base.GetCellColors(0, 3, nullptr, nullptr); },
        [&] { return base.FindItem(L"x", 3) + 1; },
        [&] { return base.GetSelItems(lines); },
        [&] { return base.GetAllSelItems(lines); },
        [&] { return base.IsItemSelected(0); },
        [&] { return base.GetSelCount(); },
        [&] { return base.GetLastSelItem() + 1; },
        [&] { return base.GetVisibleCount(); },
        [&] { return base.SetSelItem(0), base.GetSelCount(); },
        [&] { return log.GetTypeCount(3); },
        [&] { return log._CheckMaxLogLineCounts() + log.inserted; },
        [&] { return log._AddNewLogLine(Message(0, L"behind")); },
    };
    for (const auto& query : queries) {
        log.inserted = 0;
        log.PostAppLogMsg(Message(3, L"x"));
        EXPECT_EQ(query(), 1) << "query " << &query - queries;
        log.RemoveRows(0, log.GetItemCount());
    }
}

TEST_F(AppLogListView, PaintingLeavesTheLines)
{
    log.SetMaxLogLineCounts(100, 0);
    Fill(80);
    log.ShowFindBar(1);
    FindBar()->findChild<QLineEdit*>()->setText("message");
    QApplication::processEvents();
    int changes = 0;
    log.drawing = [&](int) {
        for (int i = 0; i < 3; ++i)
            log.PostAppLogMsg(Message(0, L"message"));
        log.GetTypeCount(0);
        changes += log.GetItemCount() == 80 ? 0 : 1;
    };
    log.repaint();
    log.drawing = {};
    EXPECT_EQ(changes, 0);
    EXPECT_LT(log.GetItemCount(), 80) << "what was posted is taken in afterwards, and trims";
    EXPECT_EQ(FindCount(), QString("%1 lines").arg(log.GetItemCount()));
}

TEST_F(AppLogListView, CountsWhatIsPostedWhileItSearches)
{
    Fill(3);
    log.PostAppLogMsg(Message(0, L"message"));
    Key(Qt::Key_F, Qt::ControlModifier);
    FindBar()->findChild<QLineEdit*>()->setText("message");
    log.SetSelItem(-1);
    log.PostAppLogMsg(Message(0, L"message"));
    QTest::keyClick(&log, Qt::Key_F3);
    EXPECT_EQ(FindCount().section(' ', 1), "of 5 lines");
    log.SetMaxLogLineCounts(6, 0);
    log.PostAppLogMsg(Message(0, L"message"));
    EXPECT_EQ(log._CheckMaxLogLineCounts(), 0) << "the posted one has trimmed";
    EXPECT_EQ(log.GetItemCount(), 1);
    EXPECT_EQ(FindCount(), "1 lines");
}

TEST_F(AppLogListView, MessagesOfManyThreadsAllArrive)
{
    constexpr int kThreads = 4;
    constexpr int kMessages = 2000;
    log.SetMaxLogLineCounts(65535, 0);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([this, thread] {
            for (int i = 0; i < kMessages; ++i)
                log.PostAppLogMsg(Message(thread, std::to_wstring(i)));
        });
    }
    for (int i = 0; i < 50; ++i) {
        QApplication::processEvents();
        log.GetItemCount();
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(log.GetItemCount(), kThreads * kMessages) << "a query takes in what was posted before it";
    int next[kThreads] = {};
    for (int line = 0; line < log.GetItemCount(); ++line) {
        const auto thread = static_cast<std::size_t>(log.GetItemText(line, 0)[0] - L'0');
        EXPECT_EQ(log.GetItemText(line, 3), std::to_wstring(next[thread]++))
            << "in the order of their thread";
    }
}

TEST_F(AppLogListView, PostedMessagesComeWithoutAQuestion)
{
    std::thread([this] { log.PostAppLogMsg(Message(0, L"x")); }).join();
    EXPECT_TRUE(QTest::qWaitFor([this] { return log.inserted == 1; }));
}

} // namespace
