// The character grid: what it shows of a face, how it looks, and what its parent hears.
#include "CharMapFixture.h"

#include <QAccessible>
#include <QClipboard>
#include <QDrag>
#include <QMimeData>
#include <QPointer>
#include <QTimer>

#include <functional>

namespace {

class Grid : public testing::Test
{
protected:
    void SetUp() override
    {
        parent = std::make_unique<QWidget>();
        grid = new CKvCharMapPreviewWnd; // the parent's
        grid->setGeometry(0, 0, 504, 264);
        ASSERT_EQ(grid->Create(WS_CHILD | WS_VISIBLE, parent.get(), 20001), 1);
        grid->SetFont(kTestFace);
        sink =
            new KvMessageSink(parent.get(), [this](UINT message, WPARAM w, LPARAM) -> std::optional<LRESULT> {
                if (message != WM_COMMAND || LOWORD(w) != 20001)
                    return std::nullopt;
                const char* names[] = {"?", "selected ", "picked ", "scrolled "};
                log += names[HIWORD(w) < 4 ? HIWORD(w) : 0];
                meanwhile();
                return 0;
            });
        parent->resize(504, 264);
        parent->show();
        QApplication::setActiveWindow(parent.get());
    }
    std::string Heard() { return std::exchange(log, {}); }
    void Click(QPoint at) { QTest::mouseClick(grid.data(), Qt::LeftButton, {}, at); }
    QRgb Pixel(const QImage& image, int x, int y) { return image.pixel(x, y) | 0xFF000000u; }

    std::unique_ptr<QWidget> parent;
    QPointer<CKvCharMapPreviewWnd> grid;
    KvMessageSink* sink = nullptr;
    std::string log;
    std::function<void()> meanwhile = [] {};
};

TEST_F(Grid, ShowsTheFacesCharactersWithoutTheLeadingSpace)
{
    EXPECT_EQ(grid->GetCode(0), u'!');
    EXPECT_GT(grid->GetCodeCount(), 3000);
    EXPECT_EQ(grid->GetFirst(), 0);
    EXPECT_EQ(grid->GetSelected(), -1);
    for (int index = 1; index < grid->GetCodeCount(); ++index)
        ASSERT_LT(grid->GetCode(index - 1), grid->GetCode(index));
    EXPECT_EQ(grid->FindCode(7), -1); // no control code, which the face does not map
    EXPECT_EQ(grid->GetCode(-1), 0u);
    EXPECT_EQ(grid->GetCode(grid->GetCodeCount()), 0u);
    grid->SetSelected(grid->FindCode(0xE9));
    grid->SetFont(L"No such face anywhere");
    EXPECT_EQ(grid->GetCodeCount(), 0);
    EXPECT_EQ(grid->GetSelected(), -1);
    EXPECT_EQ(grid->Select(CellMiddle(0)), 0);
    const QImage empty = grid->grab().toImage();
    EXPECT_EQ(Pixel(empty, 30, 30), Pixel(empty, 2, 2)); // nothing is drawn by another face
    grid->SetFont(L"dejavu sans");                       // as fonts are named: capitals do not count
    EXPECT_EQ(grid->GetCode(0), u'!');
}

TEST_F(Grid, LooksAsItShould)
{
    const QRgb line = 0xFF808080u;
    SKvGuiBasicSettings settings{0xFF102030u, 0xFFE0E0E0u, 0xFF505050u, {}};
    grid->SetGuiBasicSettings(&settings);
    const QImage image = grid->grab().toImage();
    struct Place
    {
        int x, y;
        bool isLine;
    };
    const Place places[] = {{12, 12, true},    {11, 12, false}, {12, 11, false},  {36, 20, true},
                            {35, 13, false},   {492, 12, true}, {493, 12, false}, {492, 252, true},
                            {493, 252, false}, {12, 252, true}, {20, 252, true},  {492, 251, true},
                            {12, 253, false},  {480, 228, true}};
    for (const Place& place : places)
        EXPECT_EQ(Pixel(image, place.x, place.y) == line, place.isLine) << place.x << ',' << place.y;
    EXPECT_EQ(Pixel(image, 3, 3), 0xFF102030u);
    const auto ink = [&](const QImage& of, QRect in, QRgb ground) {
        QRect found;
        for (int y = in.top(); y <= in.bottom(); ++y) {
            for (int x = in.left(); x <= in.right(); ++x) {
                if (Pixel(of, x, y) != ground)
                    found |= QRect(x, y, 1, 1);
            }
        }
        return found;
    };
    const QRect cell(13 + 9 * 24, 13, 23, 23); // "*", the tenth
    const QRect star = ink(image, cell, 0xFF102030u);
    ASSERT_FALSE(star.isEmpty());
    EXPECT_LE(std::abs(star.left() - cell.left() - (cell.right() - star.right())), 1); // in the middle
    // Inverted, at the same place.
    grid->SetSelected(9);
    const QImage inverted = grid->grab().toImage();
    EXPECT_EQ(Pixel(inverted, cell.left(), cell.top()), 0xFFE0E0E0u);
    EXPECT_EQ(ink(inverted, cell, 0xFFE0E0E0u), star);
    // The preview to the right, three cells wide.
    EXPECT_EQ(Pixel(inverted, 12 + 10 * 24 + 1, 20), 0xFFE0E0E0u);
    EXPECT_EQ(Pixel(inverted, 12 + 10 * 24 + 2, 20), 0xFF102030u);
    EXPECT_EQ(Pixel(inverted, 12 + 13 * 24, 20), 0xFFE0E0E0u);
    EXPECT_FALSE(ink(inverted, {12 + 10 * 24 + 3, 3, 68, 66}, 0xFF102030u).isEmpty());
    grid->SetGuiBasicSettings(nullptr);
}

TEST_F(Grid, TellsWhatTheUserDoes)
{
    Click(CellMiddle(21));
    EXPECT_EQ(grid->GetSelected(), 21);
    EXPECT_EQ(Heard(), "selected ");
    Click(CellMiddle(21));
    EXPECT_EQ(Heard(), "");
    for (const QPoint outside : {QPoint(5, 5), QPoint(500, 100), QPoint(100, 258)})
        Click(outside);
    EXPECT_EQ(Heard(), "");
    EXPECT_EQ(grid->GetSelected(), 21);
    QTest::mouseDClick(grid.data(), Qt::LeftButton, {}, CellMiddle(21));
    EXPECT_EQ(Heard(), "picked ");
    QTest::mouseDClick(grid.data(), Qt::LeftButton, {}, CellMiddle(5)); // no second press on the same one
    EXPECT_EQ(Heard(), "selected ");
    QTest::keyClick(grid.data(), Qt::Key_Right);
    QTest::keyClick(grid.data(), Qt::Key_Return);
    QTest::keyClick(grid.data(), Qt::Key_Enter);
    EXPECT_EQ(grid->GetSelected(), 6);
    EXPECT_EQ(Heard(), "selected picked picked ");
    QTest::keyClick(grid.data(), Qt::Key_PageDown);
    EXPECT_EQ(grid->GetSelected(), 206);
    EXPECT_EQ(grid->GetFirst(), 20);
    EXPECT_EQ(Heard(), "selected scrolled ");
    QTest::keyClick(grid.data(), Qt::Key_Home);
    QTest::keyClick(grid.data(), Qt::Key_Home);
    EXPECT_EQ(Heard(), "selected scrolled ");
    SendWheel(*grid, {100, 100}, -120);
    EXPECT_EQ(grid->GetFirst(), 20);
    EXPECT_EQ(grid->GetSelected(), 0);
    EXPECT_EQ(Heard(), "scrolled ");
    grid->SetFirst(59);
    grid->SetSelected(7);
    grid->UpdateCodeTable();
    EXPECT_EQ(Heard(), ""); // operations are silent
    grid->SetSelected(grid->FindCode(0xE9));
    QTest::keyClick(grid.data(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("é"));
    EXPECT_EQ(Heard(), "");
}

TEST_F(Grid, TheParentMayDeleteItAtAnyMoment)
{
    meanwhile = [this] { delete grid.data(); };
    QTest::mousePress(grid.data(), Qt::LeftButton, {}, CellMiddle(3));
    EXPECT_FALSE(grid);
    for (const int action : {0, 1, 2}) {
        parent.reset();
        SetUp();
        grid->SetSelected(3);
        log.clear();
        if (action == 0)
            QTest::keyPress(grid.data(), Qt::Key_Return);
        else if (action == 1)
            QTest::keyPress(grid.data(), Qt::Key_End);
        else
            SendWheel(*grid, {50, 50}, -240);
        EXPECT_FALSE(grid) << action;
    }
}

TEST_F(Grid, ACharacterIsDraggedOutAsText)
{
    const QPoint from = CellMiddle(grid->FindCode(0xE9));
    QString text;
    QTest::mousePress(grid.data(), Qt::LeftButton, {}, from);
    SendMove(*grid, from + QPoint(2, 0), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(grid->findChild<QDrag*>(), nullptr); // not yet
    SendMove(*grid, from + QPoint(40, 0), Qt::LeftButton);
    QTimer::singleShot(0, grid.data(), [&] {
        if (const auto* drag = grid->findChild<QDrag*>())
            text = drag->mimeData()->text();
        QTest::keyClick(parent.get(), Qt::Key_Escape); // ends the toolkit's drag
    });
    QApplication::processEvents();
    EXPECT_EQ(text, QStringLiteral("é"));
    EXPECT_EQ(Heard(), "selected ");
    // A release, or Escape, comes before the drag begins.
    QTest::mousePress(grid.data(), Qt::LeftButton, {}, from);
    SendMove(*grid, from + QPoint(40, 0), Qt::LeftButton);
    QTest::keyClick(grid.data(), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_EQ(grid->findChild<QDrag*>(), nullptr);
}

TEST_F(Grid, ThePreviewGivesWayToThePointer)
{
    grid->SetSelected(45);
    const QPoint over = CellMiddle(47);
    const QRgb shown = Pixel(grid->grab().toImage(), 12 + 6 * 24 + 1, 60);
    SendMove(*grid, over);
    EXPECT_NE(Pixel(grid->grab().toImage(), 12 + 6 * 24 + 1, 60), shown);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(grid.data(), &leave);
    EXPECT_EQ(Pixel(grid->grab().toImage(), 12 + 6 * 24 + 1, 60), shown);
}

TEST_F(Grid, ItsCharactersAreAccessible)
{
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(grid.data());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->childCount(), grid->GetCodeCount());
    const int index = grid->FindCode(0xE9);
    QAccessibleInterface* letter = list->child(index);
    EXPECT_EQ(letter->text(QAccessible::Name), QStringLiteral("U+00E9 LATIN SMALL LETTER E WITH ACUTE"));
    EXPECT_FALSE(letter->state().selected);
    letter->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(letter->state().selected);
    EXPECT_EQ(grid->GetSelected(), index);
    EXPECT_EQ(grid->mapFromGlobal(letter->rect().center()),
              CellMiddle(index - grid->GetFirst()) - QPoint(1, 1));
    Heard();
    letter->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(Heard(), "picked ");
}

} // namespace
