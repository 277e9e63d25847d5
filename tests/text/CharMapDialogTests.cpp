// The character map: what is picked, found, scrolled and kept.
#include "CharMapFixture.h"
#include "KvGuiRes.h"
#include "KvScroll.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QTimer>

#include <functional>

namespace {

/// Writes down what it is sent.
class Target : public IKvCmdTarget
{
public:
    std::vector<unsigned> picked;
    std::function<void()> meanwhile = [] {};

    int OnCommand(unsigned id, WPARAM character, LPARAM lParam) override
    {
        EXPECT_EQ(id, KvCharMapCommand);
        EXPECT_EQ(lParam, 0);
        picked.push_back(static_cast<unsigned>(character));
        meanwhile();
        return 1;
    }
};

class CharMap : public testing::Test
{
protected:
    void SetUp() override
    {
        dialog = std::make_unique<CKvCharMapDlg>();
        dialog->SetFont(kTestFace);
        ASSERT_EQ(dialog->Create(nullptr, &target), 1);
        ASSERT_FALSE(dialog->isVisible());
        dialog->show();
        QApplication::setActiveWindow(dialog.get());
    }
    CKvCharMapPreviewWnd& Grid() { return *dialog->GetGrid(); }
    QLineEdit& Search() { return *qobject_cast<QLineEdit*>(dialog->GetDlgItem(kKvCharMapSearch)); }
    QString Status() { return qobject_cast<QLabel*>(dialog->GetDlgItem(kKvCharMapStatus))->text(); }
    CKvScrollBar& Bar() { return *qobject_cast<CKvScrollBar*>(dialog->GetDlgItem(kKvCharMapScrollBar)); }
    unsigned Selected() { return Grid().GetCode(Grid().GetSelected()); }
    void Find(const QString& query)
    {
        Search().clear();
        QTest::keyClicks(&Search(), query);
    }

    Target target;
    std::unique_ptr<CKvCharMapDlg> dialog;
};

using Codes = std::vector<unsigned>;

TEST_F(CharMap, SendsEachPickOnce)
{
    std::vector<unsigned> emitted;
    QObject::connect(dialog.get(), &CKvCharMapDlg::CharPicked,
                     [&](quint32 code) { emitted.push_back(code); });
    QTest::mouseClick(&Grid(), Qt::LeftButton, {}, CellMiddle(0));
    EXPECT_EQ(target.picked, Codes{}); // selected alone
    EXPECT_EQ(Status(), QStringLiteral("U+0021 EXCLAMATION MARK"));
    QTest::mouseDClick(&Grid(), Qt::LeftButton, {}, CellMiddle(0));
    QTest::keyClick(&Grid(), Qt::Key_Right);
    QTest::keyClick(&Grid(), Qt::Key_Return);
    Find(QStringLiteral("e acute small"));
    QTest::keyClick(&Search(), Qt::Key_Return);
    EXPECT_EQ(target.picked, (Codes{'!', '"', 0xE9}));
    EXPECT_EQ(emitted, target.picked);
    EXPECT_EQ(dialog->GetRecent(), L"\u00E9\"!");
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(Selected(), 0xE9u);
}

TEST_F(CharMap, NobodyNeedHearAndWhoHearsMayDelete)
{
    target.meanwhile = [this] { dialog.reset(); };
    Grid().SetSelected(4);
    QTest::keyPress(&Grid(), Qt::Key_Return);
    EXPECT_FALSE(dialog);
    dialog = std::make_unique<CKvCharMapDlg>();
    dialog->SetFont(kTestFace);
    dialog->Create(nullptr, nullptr);
    Grid().SetSelected(4);
    QTest::keyClick(&Grid(), Qt::Key_Return);
    EXPECT_EQ(dialog->GetRecent(), L"%");
    EXPECT_EQ(dialog->DestroyWindow(), 1);
    EXPECT_EQ(dialog->GetGrid(), nullptr);
    EXPECT_EQ(dialog->OnMouseWheel(120, {}), 0);
    dialog->OnVScroll(SB_LINEDOWN, 0);
    dialog->SetFavorites(L"ab");
    EXPECT_EQ(dialog->Create(nullptr, nullptr), 1);
    EXPECT_EQ(dialog->GetFavorites(), L"ab");
}

TEST_F(CharMap, ScrollsByBarAndWheel)
{
    const int last = Grid().GetLastFirst();
    struct Step
    {
        UINT code;
        UINT position;
        int first;
    };
    const Step steps[] = {{SB_LINEUP, 0, 0},
                          {SB_LINEDOWN, 0, 20},
                          {SB_PAGEDOWN, 0, 220},
                          {SB_PAGEUP, 0, 20},
                          {SB_THUMBTRACK, 7, 140},
                          {SB_THUMBPOSITION, 3, 60},
                          {SB_THUMBTRACK, 0xFFFF, last},
                          {SB_LINEDOWN, 0, last},
                          {SB_TOP, 0, 0},
                          {SB_BOTTOM, 0, last},
                          {SB_ENDSCROLL, 0, last},
                          {99, 0, last}};
    for (const Step& step : steps) {
        dialog->OnVScroll(step.code, step.position);
        EXPECT_EQ(Grid().GetFirst(), step.first) << step.code << ' ' << step.position;
        EXPECT_EQ(Bar().GetScrollPos() * 20, step.first);
    }
    EXPECT_EQ(last % 20, 0);
    EXPECT_EQ(last, (Grid().GetCodeCount() + 19) / 20 * 20 - 200);
    dialog->OnVScroll(SB_TOP, 0);
    Bar().triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(Grid().GetFirst(), 200);
    EXPECT_EQ(dialog->OnMouseWheel(60, {}), 1);
    EXPECT_EQ(Grid().GetFirst(), 200);
    dialog->OnMouseWheel(60, {});
    EXPECT_EQ(Grid().GetFirst(), 180);
    SendWheel(Grid(), {100, 100}, -240);
    EXPECT_EQ(Bar().GetScrollPos(), 11);
    QTest::keyClick(&Grid(), Qt::Key_End);
    EXPECT_EQ(Bar().GetScrollPos() * 20, last);
    dialog->SetFont(L"No such face anywhere");
    EXPECT_EQ(Bar().GetScrollRange(), 0);
    EXPECT_TRUE(Status().contains(QStringLiteral("No such face anywhere")));
}

TEST_F(CharMap, SearchJumpsAndNeverFilters)
{
    const int count = Grid().GetCodeCount();
    Find(QStringLiteral("U+20AC"));
    EXPECT_EQ(Selected(), 0x20ACu);
    EXPECT_EQ(Status(), QStringLiteral("U+20AC EURO SIGN"));
    EXPECT_EQ(Search().accessibleDescription(), QString());
    Search().setText(QStringLiteral("no such name"));
    EXPECT_EQ(Search().accessibleDescription(), QStringLiteral("No match"));
    EXPECT_EQ(Selected(), 0x20ACu);
    Search().setText(QStringLiteral("heart"));
    const unsigned first = Selected();
    QTest::keyClick(&Search(), Qt::Key_F3);
    EXPECT_GT(Selected(), first);
    while (Selected() != first)
        QTest::keyClick(&Search(), Qt::Key_F3);
    EXPECT_EQ(Grid().GetCodeCount(), count);
    const int at = Grid().GetSelected() - Grid().GetFirst();
    EXPECT_TRUE(at >= 0 && at < 200);
    QTest::keyClick(&Search(), Qt::Key_Down);
    EXPECT_TRUE(Grid().hasFocus());
}

TEST_F(CharMap, KeepsCharactersAtHand)
{
    int changes = 0;
    QObject::connect(dialog.get(), &CKvCharMapDlg::FavoritesChanged, [&] { ++changes; });
    dialog->SetFavorites(L"\u266A\U0001F600");
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(dialog->GetFavorites(), L"\u266A");
    Grid().SetSelected(Grid().FindCode(0xE9));
    Grid().setFocus();
    QTest::keyClick(&Grid(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(dialog->GetFavorites(), L"\u266A\u00E9");
    QTest::keyClick(&Grid(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(dialog->GetFavorites(), L"\u266A");
    EXPECT_EQ(changes, 2);
    QTest::keyClick(&Grid(), Qt::Key_Space);
    QTest::keyClick(&Grid(), Qt::Key_Left);
    QTest::keyClick(&Grid(), Qt::Key_Space);
    EXPECT_EQ(dialog->GetCollected(), L"\u00E9\u00E8");
    EXPECT_EQ(target.picked, Codes{});
    EXPECT_EQ(dialog->GetRecent(), L"\u00E8\u00E9");
    for (QAbstractButton* button : dialog->findChildren<QAbstractButton*>()) {
        if (button->text() == QStringLiteral("Copy"))
            button->click();
    }
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("éè"));
}

TEST_F(CharMap, TheRowsPickAndGiveBack)
{
    const auto row = [this](const QString& name) -> QWidget* {
        for (CKvStatic* one : dialog->findChildren<CKvStatic*>()) {
            if (QAccessible::queryAccessibleInterface(one)->text(QAccessible::Name) == name)
                return one;
        }
        return nullptr;
    };
    QWidget* recent = row(QStringLiteral("Recent:"));
    QWidget* favorites = row(QStringLiteral("Favorites:"));
    ASSERT_TRUE(recent && favorites);
    dialog->SetRecent(L"xyz");
    dialog->SetFavorites(L"ab\uFDD0"); // the face lacks the last one, which is kept all the same
    QTest::mouseDClick(recent, Qt::LeftButton, {}, CellMiddle(1) - QPoint(0, 11));
    EXPECT_EQ(target.picked, Codes{'y'});
    EXPECT_EQ(dialog->GetRecent(), L"xyz") << "a row does not move under the pointer";
    QTest::mouseClick(recent, Qt::LeftButton, {}, CellMiddle(3) - QPoint(0, 11)); // an empty cell
    EXPECT_EQ(Selected(), unsigned{'y'});
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(favorites);
    ASSERT_EQ(list->childCount(), 2);
    EXPECT_EQ(list->child(1)->text(QAccessible::Name), QStringLiteral("U+0062 LATIN SMALL LETTER B"));
    favorites->setFocus();
    QTest::keyClick(favorites, Qt::Key_Right);
    EXPECT_EQ(Selected(), unsigned{'b'});
    QTest::keyClick(favorites, Qt::Key_Return);
    EXPECT_EQ(target.picked, (Codes{'y', 'b'}));
    QTest::keyClick(favorites, Qt::Key_Delete);
    EXPECT_EQ(Selected(), unsigned{'b'}) << "still";
    QTest::keyClick(favorites, Qt::Key_Space);
    EXPECT_EQ(dialog->GetCollected(), L"a") << "the one that has the focus now";
    QTest::keyClick(favorites, Qt::Key_Delete);
    QTest::keyClick(favorites, Qt::Key_Delete);
    EXPECT_EQ(dialog->GetFavorites(), L"\uFDD0");
    recent->setFocus();
    QTest::keyClick(recent, Qt::Key_End);
    const CString before = dialog->GetRecent();
    QTest::keyClick(recent, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(recent, Qt::Key_Space);
    EXPECT_EQ(QApplication::clipboard()->text().toStdWString(), before.substr(before.size() - 1));
    EXPECT_EQ(dialog->GetRecent(), before) << "nor under the focus";
}

TEST_F(CharMap, SelectingAnewWhatWasScrolledAwayShowsIt)
{
    Grid().setFocus();
    QTest::keyClick(&Grid(), Qt::Key_Home);
    dialog->OnVScroll(SB_BOTTOM, 0);
    const QImage below = Grid().grab().toImage();
    QTest::keyClick(&Grid(), Qt::Key_Home); // selected already
    EXPECT_EQ(Grid().GetFirst(), 0);
    EXPECT_EQ(Bar().GetScrollPos(), 0);
    EXPECT_NE(Grid().grab().toImage(), below);
    // What a host does to the grid shows around it.
    Grid().SetSelected(Grid().FindCode('A'));
    EXPECT_EQ(Status(), QStringLiteral("U+0041 LATIN CAPITAL LETTER A"));
    Grid().SetFirst(Grid().GetLastFirst());
    EXPECT_EQ(Bar().GetScrollPos(), Bar().GetScrollRange());
    Grid().SetFont(L"no such face");
    EXPECT_EQ(Status(), QStringLiteral("The font \"no such face\" is not installed."));
    EXPECT_EQ(Bar().GetScrollRange(), 0);
}

TEST_F(CharMap, EnterInTheBoxPicksOnlyWhatItFound)
{
    Grid().SetSelected(Grid().FindCode('A'));
    Search().setText(QStringLiteral("no such character"));
    QTest::keyClick(&Search(), Qt::Key_Return);
    EXPECT_EQ(target.picked, Codes{});
    KvGuiRes::SetStringFile(nullptr); // as a change of the texts does
    EXPECT_EQ(Selected(), unsigned{'A'});
    Find(QStringLiteral("comma"));
    QTest::keyClick(&Search(), Qt::Key_Return);
    EXPECT_EQ(target.picked, Codes{','});
    QTest::keyClick(&Search(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(dialog->GetFavorites(), L",");
    EXPECT_EQ(Search().text(), QStringLiteral("comma"));
    dialog->SetFavorites(L"abcdefghijklmnopqrst");
    QTest::keyClick(&Search(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_TRUE(Status().startsWith(QStringLiteral("There is no room")));
    EXPECT_EQ(dialog->GetFavorites().size(), 20u);
}

TEST_F(CharMap, WhoeverHearsOfAPickMayDelete)
{
    const auto button = [this]() -> QWidget* {
        for (QAbstractButton* one : dialog->findChildren<QAbstractButton*>())
            if (one->text() == QStringLiteral("Insert"))
                return one;
        return nullptr;
    };
    const std::function<void()> ways[] = {
        [&] { QTest::mouseClick(button(), Qt::LeftButton); },
        [&] { QTest::keyClick(button(), Qt::Key_Return); },
        [&] { QTest::keyClick(&Search(), Qt::Key_Return); },
        [&] { QTest::mouseDClick(&Grid(), Qt::LeftButton, {}, CellMiddle(4)); },
    };
    for (const auto& pick : ways) {
        SetUp();
        Grid().SetSelected(4);
        target.meanwhile = [this] { dialog.reset(); };
        pick();
        EXPECT_FALSE(dialog);
        target.meanwhile = [] {};
    }
}

TEST_F(CharMap, TheMenuDoesWhatTheKeysDo)
{
    const auto choose = [this](const QString& choice) {
        QTimer::singleShot(0, dialog.get(), [choice] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (QAction* action : menu->actions()) {
                if (action->text().section(u'\t', 0, 0).remove(u'&') == choice && action->isEnabled())
                    menu->setActiveAction(action);
            }
            QTest::keyClick(menu, menu->activeAction() ? Qt::Key_Return : Qt::Key_Escape);
        });
        const QPoint at = CellMiddle(32); // "A"
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, Grid().mapToGlobal(at));
        QApplication::sendEvent(&Grid(), &event);
    };
    choose(QStringLiteral("Insert"));
    EXPECT_EQ(target.picked, Codes{'A'});
    choose(QStringLiteral("Copy"));
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("A"));
    choose(QStringLiteral("Collect"));
    EXPECT_EQ(dialog->GetCollected(), L"A");
    choose(QStringLiteral("Remove from Favorites")); // it is none
    choose(QStringLiteral("Add to Favorites"));
    EXPECT_EQ(dialog->GetFavorites(), L"A");
    choose(QStringLiteral("Add to Favorites"));
    choose(QStringLiteral("Remove from Favorites"));
    EXPECT_EQ(dialog->GetFavorites(), L"");
}

} // namespace
