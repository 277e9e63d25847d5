// Colours, pictures and texts, and how an overlay reaches live windows.
#include "KvGuiRes.h"
#include "KvWnd.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>
#include <QWidget>

#include <gtest/gtest.h>
#include <utility>

namespace {

class SkinnedWnd : public CKvWnd
{
public:
    int changes = 0;
    std::function<void()> onChange;

protected:
    void OnSkinChanged() override
    {
        ++changes;
        if (onChange)
            onChange();
    }
};

class Skin : public testing::Test
{
protected:
    void Write(const char* name, const QByteArray& bytes)
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    std::wstring Path(const char* name = "") { return KvFromQString(folder.filePath(name)); }
    void TearDown() override
    {
        KvGuiRes::SetSkinFolder(nullptr);
        KvGuiRes::SetStringFile(nullptr);
    }

    QTemporaryDir folder;
};

TEST_F(Skin, OverlayWinsKeyByKeyAndBrokenLinesAreSkipped)
{
    Write("skin.ini",
          "[Colors]\nkeFocusColor = 1,2,3,4\nkeBroken=1,2,3\nkeTooBig=256,0,0,255\nkeText=a,b,c,d\n");
    ASSERT_EQ(KvGuiRes::SetSkinFolder(Path().c_str()), 1);
    DWORD colour = 5;
    EXPECT_EQ(KvGuiRes::LoadColor(L"keFocusColor", colour), 1);
    EXPECT_EQ(colour, 0x04010203u);
    EXPECT_EQ(KvGuiRes::LoadColor(L"keWindowBKColor", colour), 1) << "falls back to the built-in skin";
    colour = 5;
    for (const wchar_t* key : {L"keBroken", L"keTooBig", L"keText", L"keMissing"})
        EXPECT_EQ(KvGuiRes::LoadColor(key, colour), 0);
    EXPECT_EQ(KvGuiRes::LoadColor(nullptr, colour), 0);
    EXPECT_EQ(colour, 5u) << "a missing key leaves the colour alone";
    EXPECT_EQ(KvGuiRes::SetSkinFolder(Path("missing").c_str()), 0);
    EXPECT_EQ(KvGuiRes::LoadColor(L"keFocusColor", colour), 1);
    EXPECT_EQ(colour, 0x04010203u) << "a folder that is not there changes nothing";
}

TEST_F(Skin, PicturesPreferSvgAndStaySharp)
{
    Write("mark.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='4'>"
                      "<rect width='4' height='4' fill='#00ff00'/></svg>");
    QImage red(3, 3, QImage::Format_ARGB32);
    red.fill(Qt::red);
    red.save(folder.filePath("mark.png"));
    red.save(folder.filePath("dot.png"));
    KvGuiRes::SetSkinFolder(Path().c_str());

    const KvSkinImage mark = KvGuiRes::LoadImageW(L"mark");
    EXPECT_EQ(mark.Size(), QSize(8, 4));
    const QImage twice = mark.Pixmap({8, 4}, 2).toImage();
    EXPECT_EQ(twice.size(), QSize(16, 8));
    EXPECT_EQ(twice.pixelColor(7, 7), QColor(0, 255, 0)) << "rendered, not scaled up";
    EXPECT_EQ(twice.pixelColor(8, 0).alpha(), 0);
    EXPECT_EQ(KvGuiRes::LoadImageW(L"dot").Size(), QSize(3, 3));
    EXPECT_EQ(KvGuiRes::LoadImageW(L"dot.png").Size(), QSize(3, 3)) << "some keys carry an ending";
    Write("half.svg", "<svg");
    red.save(folder.filePath("half.png"));
    EXPECT_EQ(KvGuiRes::LoadImageW(L"half").Size(), QSize(3, 3)) << "a broken SVG does not hide the PNG";
    EXPECT_TRUE(KvGuiRes::LoadImageW(L"missing").IsNull());
    EXPECT_TRUE(KvGuiRes::LoadImageW(L"../dot").IsNull()) << "a name does not reach out of the folder";
    EXPECT_TRUE(KvGuiRes::LoadImageW(nullptr).IsNull());
}

TEST_F(Skin, BuiltInPicturesTakeItsColours)
{
    const auto middle = [](const wchar_t* name) {
        return KvGuiRes::LoadImageW(name).Pixmap({16, 16}, 1).toImage().pixelColor(7, 8);
    };
    const QColor builtIn = middle(L"titler_play");
    Write("skin.ini", "[Pictures]\n" + builtIn.name().mid(1).toUpper().toLatin1() +
                          " = 102030\n102030=ffffff\nffb347=red\n");
    Write("own.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='16' height='16'>"
                     "<rect width='16' height='16' fill='" +
                         builtIn.name().toLatin1() + "'/></svg>");
    ASSERT_EQ(KvGuiRes::SetSkinFolder(Path().c_str()), 1);
    EXPECT_EQ(middle(L"titler_play"), QColor(0x10, 0x20, 0x30)) << "once, whatever became of it";
    EXPECT_EQ(middle(L"own"), builtIn) << "the folder's own picture";
    EXPECT_EQ(KvGuiRes::SetSkinFolder(L":/kv/missing"), 0);
    EXPECT_EQ(KvGuiRes::SetSkinFolder(nullptr), 1);
    EXPECT_EQ(middle(L"titler_play"), builtIn);
}

TEST_F(Skin, ChangeReachesLiveWindowsThatMayDeleteOneAnother)
{
    Write("skin.ini", "[Colors]\n");
    Write("texts.ini", "[Strings]\n12072 = Einkanal\n[Menus]\n12002.32772 = &Kopieren\n[Tips]\n21 = Tipp\n"
                       "[Dialogs]\n12016.12077 = Linear\n");
    auto* first = new SkinnedWnd;
    auto* second = new SkinnedWnd;
    QPointer<SkinnedWnd> windows[] = {first, second};
    first->onChange = [&] { delete windows[1]; };
    second->onChange = [&] { delete windows[0]; };
    EXPECT_EQ(KvGuiRes::SetSkinFolder(Path().c_str()), 1);
    EXPECT_NE(windows[0].isNull(), windows[1].isNull()) << "one heard and deleted the other";
    SkinnedWnd* const survivor = windows[0] ? windows[0] : windows[1];
    survivor->onChange = {};
    EXPECT_EQ(KvGuiRes::SetStringFile(Path("texts.ini").c_str()), 1);
    EXPECT_EQ(survivor->changes, 2);
    EXPECT_EQ(KvGuiRes::LoadStringW(12072), L"Einkanal");
    EXPECT_EQ(KvGuiRes::LoadStringW(12073), L"Stereo");
    EXPECT_EQ(KvGuiRes::LoadMenuText(12002, 32772), L"&Kopieren");
    EXPECT_EQ(KvGuiRes::LoadTip(21), L"Tipp");
    EXPECT_EQ(KvGuiRes::LoadDialogText(12016, 12077), L"Linear");
    EXPECT_EQ(KvGuiRes::SetStringFile(Path("missing.ini").c_str()), 0);
    EXPECT_EQ(survivor->changes, 2);
    delete survivor;
}

class HostWindow : public QWidget
{
public:
    int languages = 0;

protected:
    void changeEvent(QEvent* event) override
    {
        languages += event->type() == QEvent::LanguageChange ? 1 : 0;
        QWidget::changeEvent(event);
    }
};

TEST_F(Skin, AnotherLanguageReachesTheHostAsATranslatorDoes)
{
    HostWindow window;
    HostWindow child;
    child.setParent(&window);
    const auto told = [&] { return std::pair(window.languages, child.languages); };
    EXPECT_EQ(KvGuiRes::SetStringFile(L":/kv/lang/de.ini"), 1);
    EXPECT_EQ(KvGuiRes::LoadStringW(12035), L"Schließen");
    EXPECT_TRUE(QTest::qWaitFor([&] { return told() == std::pair(1, 1); }));
    EXPECT_EQ(KvGuiRes::SetStringFile(L":/kv/lang/none.ini"), 0);
    EXPECT_EQ(KvGuiRes::LoadStringW(12035), L"Schließen");
    EXPECT_EQ(KvGuiRes::SetStringFile(L""), 1);
    EXPECT_EQ(KvGuiRes::LoadStringW(12035), L"Close");
    EXPECT_TRUE(QTest::qWaitFor([&] { return told() == std::pair(2, 2); }));
}

// It comes while the change is told, and the toolkit posts one event for the two.
TEST_F(Skin, ATranslatorThatAHostBringsMeanwhileIsHeardOf)
{
    struct Translator : QTranslator
    {
        bool isEmpty() const override { return false; }
    };
    struct Host : QObject
    {
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            if (watched == qApp && event->type() == QEvent::LanguageChange && !std::exchange(hasCome, true))
                QCoreApplication::installTranslator(&translator);
            return false;
        }
        Translator translator;
        bool hasCome = false;
    };
    struct Window : CKvWnd
    {
        void OnSkinChanged() override { ++changes; }
        int changes = 0;
    };
    Host host;
    Window window;
    window.CreateWnd(0, {}, nullptr, 0);
    qApp->installEventFilter(&host);
    const qsizetype before = qApp->children().size();
    KvGuiRes::SetStringFile(L":/kv/lang/de.ini");
    QCoreApplication::processEvents();
    EXPECT_EQ(window.changes, 2) << "the string file's and the translator's";
    QCoreApplication::removeTranslator(&host.translator);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.changes, 3);
    for (int i = 0; i < 9; ++i)
        KvGuiRes::SetStringFile(nullptr);
    EXPECT_LE(qApp->children().size(), before + 1);
}

TEST_F(Skin, ALanguageIsLookedUpOnce)
{
    QWidget host;
    SkinnedWnd window;
    window.CreateWnd(0, {}, &host, 0);
    const auto changes = [&window] {
        QApplication::processEvents();
        return std::exchange(window.changes, 0);
    };
    KvGuiRes::SetStringFile(L":/kv/lang/de.ini");
    EXPECT_EQ(changes(), 1);
    KvGuiRes::SetStringFile(L":/kv/lang/fr.ini");
    KvGuiRes::SetStringFile(nullptr);
    EXPECT_EQ(changes(), 2);
    QEvent change(QEvent::LanguageChange);
    QApplication::sendEvent(qApp, &change); // a host's translator
    EXPECT_EQ(changes(), 1);
    KvGuiRes::SetStringFile(L":/kv/lang/de.ini");
    QApplication::sendEvent(qApp, &change); // whose texts the window has not seen
    EXPECT_EQ(changes(), 2);
}

TEST_F(Skin, AHostAddsItsOwnTextsAndAStringFileTranslatesThem)
{
    const KvStringEntry own[] = {{60000, L"Lower third"}, {60001, L"Crawl"}};
    const KvStringEntry torn[] = {{60002, L"Roll"}, {60003, nullptr}};
    EXPECT_EQ(KvGuiRes::AddStrings(own, 2), 1);
    EXPECT_EQ(KvGuiRes::AddStrings(torn, 2), 0);
    EXPECT_EQ(KvGuiRes::AddStrings(nullptr, 1), 0);
    EXPECT_EQ(KvGuiRes::LoadStringW(60002), L"") << "nothing of a torn table";
    Write("texts.ini", "[Strings]\n60001 = Laufband\n");
    EXPECT_EQ(KvGuiRes::SetStringFile(Path("texts.ini").c_str()), 1);
    EXPECT_EQ(KvGuiRes::LoadStringW(60000), L"Lower third");
    EXPECT_EQ(KvGuiRes::LoadStringW(60001), L"Laufband");
}

} // namespace
