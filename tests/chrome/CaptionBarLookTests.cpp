// How both caption bars look: what is repainted, tool tips, texts, the skin, the host's font and colours.
#include "CaptionBarFixture.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

TEST_P(CaptionBar, OnlyWhatChangesIsRepainted)
{
    const QRect one = ItemRect(0, bar->fontMetrics());
    const QRect two = ItemRect(1, bar->fontMetrics());
    PaintWatcher watcher(*bar);
    watcher.Take();
    const QImage before = bar->grab().toImage();
    watcher.Take();
    Move(two.center());
    const QRect changed = watcher.Take().boundingRect();
    EXPECT_TRUE(changed.contains(two) && two.adjusted(-3, -1, 3, 1).contains(changed));
    EXPECT_NE(bar->grab(two).toImage(), before.copy(two));
    watcher.Take();
    Move(two.topLeft());
    EXPECT_TRUE(watcher.Take().isEmpty()) << "it is hovered already";
    Move(one.center(), Qt::LeftButton);
    EXPECT_TRUE(watcher.Take().isEmpty()) << "not while the left button is down";

    const auto leave = [&](bool toChild) {
        Move(two.center());
        QEvent event(toChild ? QEvent::Enter : QEvent::Leave);
        QApplication::sendEvent(toChild ? static_cast<QWidget*>(&Button(bar, kKvCaptionMenu)) : bar, &event);
        return bar->grab(two).toImage() == before.copy(two);
    };
    EXPECT_TRUE(leave(false));
    EXPECT_TRUE(leave(true)) << "the pointer went to a button at once";
    watcher.Take();
    Move(one.center());
    EXPECT_EQ(watcher.Take().isEmpty(), IsTitleBar()) << "a selected tab looks the same";

    SetSysTitle(1, L"New");
    const QRect label = watcher.Take().boundingRect();
    EXPECT_TRUE(label.contains(kFree) && label.left() > ItemRect(2, bar->fontMetrics()).right());
    Add(2);
    watcher.Take();
    SetDocTitle(2, L"other");
    EXPECT_TRUE(watcher.Take().isEmpty()) << "another record's";
}

TEST_P(CaptionBar, NoTextShowsThroughAButton)
{
    const auto ground = [this] {
        QImage image(bar->size(), QImage::Format_RGB32);
        bar->render(&image, {}, {}, {});
        return image.copy(Button(bar, kKvCaptionClose).geometry());
    };
    bar->resize(ItemRect(1, bar->fontMetrics()).center().x() + 20, bar->height());
    const QImage below = ground();
    Button(bar, kKvCaptionClose).hide();
    EXPECT_NE(ground(), below) << "an item is there";
    Button(bar, kKvCaptionClose).show();
    Remove(1);
    EXPECT_EQ(ground(), below);
}

TEST_P(CaptionBar, TheTitlesTipTellsWhatIsCut)
{
    const QPoint point(ItemRect(2, bar->fontMetrics()).right() + 160, 14);
    EXPECT_EQ(TipAt(*bar, point), "") << "all of it is seen";
    SetDocTitle(1, std::wstring(200, L'd').c_str());
    const QString product = IsTitleBar() ? "Kolva" : "Mirabo-";
    EXPECT_EQ(TipAt(*bar, point), product + QString(200, 'd'));
    SetSysTitle(1, L"New");
    EXPECT_EQ(TipAt(*bar, point), product + QString(200, 'd')) << "not renewed by this one";
    SetDocTitle(1, std::wstring(201, L'd').c_str());
    EXPECT_EQ(TipAt(*bar, point), "New" + QString(201, 'd'));
    EXPECT_EQ(TipAt(*bar, point + QPoint(0, 40)), "");
}

TEST_P(CaptionBar, TheButtonsLabelIsLevelWithTheItemsAndTheTitleIsCentred)
{
    for (const int size : {9, 12, 14}) { // pixels
        SKvGuiBasicSettings settings{0xFF000000, 0xFFFFFFFF, 0xFFFFFFFF, bar->font()};
        settings.font.setPixelSize(size);
        bar->SetGuiBasicSettings(&settings);
        SetSysTitle(1, L"One");
        SetDocTitle(1, L"");
        frame.resize(901 + size, 300); // lays out
        const QImage picture = bar->grab().toImage();
        const auto lowest = [&](const QRect& room) {
            int y = room.bottom();
            const auto isDark = [&](int x) { return qGray(picture.pixel(x, y)) < 128; };
            for (; y > room.top(); --y) {
                int x = room.left();
                while (x <= room.right() && isDark(x))
                    ++x;
                if (x <= room.right())
                    break;
            }
            return y;
        };
        const QFontMetrics metrics(settings.font);
        const QRect one = ItemRect(0, metrics);
        const int titleLeft = ItemRect(2, metrics).right() + 1 + (IsTitleBar() ? 100 : 150);
        const QRect room(titleLeft, 2, metrics.horizontalAdvance("One"), 21);
        EXPECT_EQ(lowest(Button(bar, kKvCaptionApplication).geometry()), lowest(one)) << size;
        // A font's odd height goes either way.
        EXPECT_NEAR(lowest(room) - room.top() - (room.height() - one.height()) / 2.0, lowest(one) - one.top(),
                    1)
            << size;
        bar->SetGuiBasicSettings(nullptr);
    }
}

TEST_P(CaptionBar, OnlyTheTitleBarColoursItsTips)
{
    CKvButton& button = Button(bar, kKvCaptionClose);
    EXPECT_EQ(TipAt(button, button.rect().center()), "Close");
    DWORD text = 0;
    ASSERT_EQ(KvGuiRes::LoadColor(L"keButtonTipsText", text), 1);
    EXPECT_EQ(button.styleSheet().contains("color: " + QColor::fromRgb(text).name()), IsTitleBar());
}

TEST_P(CaptionBar, ANewSkinKeepsTheHeightOfBarsThatLive)
{
    EXPECT_EQ(bar->height(), 96);
    QTemporaryDir folder;
    QFile file(folder.filePath("ribbontitlebar_bk.svg"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='50'>"
               "<rect width='8' height='50' fill='#ff0000'/></svg>");
    file.close();
    ASSERT_EQ(KvGuiRes::SetSkinFolder(KvFromQString(folder.path()).c_str()), 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(bar->height(), 96);
    EXPECT_TRUE(HasColour({kFree.x(), 95, 1, 1}, qRgb(255, 0, 0))) << "stretched";
    delete bar;
    Put();
    QCoreApplication::processEvents();
    EXPECT_EQ(bar->height(), 50);
}

TEST_P(CaptionBar, TheHostsFontAndColoursAreUsed)
{
    constexpr QRgb green = qRgb(0, 255, 0);
    SKvGuiBasicSettings settings{0xFF102030u, 0xFF00FF00u, 0xFF000000u, bar->font()};
    settings.font.setPixelSize(16);
    settings.font.setBold(true);
    const QRect before = ItemRect(2, bar->fontMetrics());
    bar->SetGuiBasicSettings(&settings);
    const QRect three = ItemRect(2, QFontMetrics(settings.font));
    const QRect button = Button(bar, kKvCaptionApplication).geometry();
    ASSERT_GT(three.right(), before.right());
    EXPECT_TRUE(HasColour(three, green));
    EXPECT_TRUE(HasColour(button, green));
    Move(three.topRight());
    EXPECT_FALSE(HasColour(three, green)) << "the theme's colour is legible on a dark background";
    settings.background = 0xFFFFFFFFu;
    settings.textColour = 0xFF008000u;
    bar->SetGuiBasicSettings(&settings);
    EXPECT_TRUE(HasColour(three, qRgb(0, 128, 0))) << "on a light one it is not";
    bar->SetGuiBasicSettings(nullptr);
    EXPECT_FALSE(HasColour(button, qRgb(0, 128, 0)) || HasColour(before, qRgb(0, 128, 0)));
}

TEST_P(CaptionBar, LargeLettersHaveTheirRoom)
{
    Tool tool(bar, host, "tool");
    Add(2, &tool);
    Activate(2);
    Remove(1);
    const auto settle = [] { QCoreApplication::processEvents(); };
    settle();
    const QSize hint = bar->sizeHint();
    const int toolTop = tool.y();
    EXPECT_EQ(hint.height(), 96);
    EXPECT_EQ(bar->minimumSizeHint(), QSize(240, 96));
    EXPECT_EQ(toolTop, 27);
    const auto isTitleWhole = [&](int width) {
        bar->resize(width, bar->height());
        return TipAt(*bar, {Button(bar, kKvCaptionMenu).x() - 55, 14}).isEmpty();
    };
    EXPECT_TRUE(isTitleWhole(hint.width()));
    EXPECT_FALSE(isTitleWhole(hint.width() - 1));
    SetDocTitle(2, L"a much longer name of a document");
    EXPECT_TRUE(isTitleWhole(bar->sizeHint().width()));
    SetDocTitle(2, L"Untitled");
    EXPECT_EQ(bar->sizeHint(), hint);

    QFont large = frame.font();
    large.setPixelSize(40);
    frame.setFont(large);
    settle();
    const int growth = QFontMetrics(large).height() - 21;
    EXPECT_EQ(bar->height(), 96 + growth);
    EXPECT_EQ(bar->sizeHint().height(), 96 + growth);
    EXPECT_TRUE(isTitleWhole(bar->sizeHint().width()));
    EXPECT_FALSE(isTitleWhole(bar->sizeHint().width() - 1));
    EXPECT_EQ(tool.y(), toolTop + growth);
    EXPECT_GE(Button(bar, kKvCaptionApplication).height(), QFontMetrics(large).height());
    EXPECT_EQ(Button(bar, kKvCaptionApplication).font().pixelSize(), 40);
    const QRect close = Button(bar, kKvCaptionClose).geometry();
    EXPECT_EQ(close.top(), growth / 2);
    // The picture's edge stays at the line below the strip: above it the ground is one run of shades.
    const QImage ground = bar->grab(QRect(close.right() + 2, 0, 1, bar->height())).toImage();
    for (int y = 4; y < 25 + growth - 1; ++y)
        EXPECT_NEAR(qGray(ground.pixel(0, y)), qGray(ground.pixel(0, y + 1)), 1) << y;
    const QImage picture = bar->grab(ItemRect(2, QFontMetrics(large))).toImage();
    const auto isPlain = [&picture](int y) {
        for (int x = 1; x < picture.width(); ++x) {
            if (qGray(picture.pixel(x, y)) > qGray(picture.pixel(0, 0)) + 40)
                return false;
        }
        return true;
    };
    EXPECT_TRUE(isPlain(0) && isPlain(picture.height() - 1)) << "nothing is cut";
    EXPECT_FALSE(isPlain(picture.height() / 2));

    bar->resize(bar->width(), 150); // of the host's own
    SKvGuiBasicSettings settings{0xFF102030u, 0xFF00FF00u, 0xFF000000u, QFont()};
    bar->SetGuiBasicSettings(&settings);
    EXPECT_EQ(tool.y(), toolTop);
    EXPECT_EQ(bar->height(), 150);
    bar->SetGuiBasicSettings(nullptr);
    frame.setFont({});
    settle();
    EXPECT_EQ(bar->height(), 96);
    EXPECT_EQ(bar->sizeHint(), hint);

    const QWidget& button = Button(bar, kKvCaptionApplication);
    frame.setStyleSheet("QAbstractButton { font: italic 30px }"); // the strip has no room for those
    settle();
    EXPECT_EQ(button.fontInfo().pixelSize(), bar->fontInfo().pixelSize());
    EXPECT_FALSE(button.font().italic());
    QHelpEvent tip(QEvent::ToolTip, {}, {}); // brings colours of its own
    QApplication::sendEvent(&Button(bar, kKvCaptionApplication), &tip);
    EXPECT_EQ(button.fontInfo().pixelSize(), bar->fontInfo().pixelSize());
}

} // namespace
