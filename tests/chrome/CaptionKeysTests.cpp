// What keys and screen readers do to the two caption bars.
#include "KvGuiRes.h"
#include "KvRibbonMenuBar.h"
#include "KvRibbonTitlebar.h"

#include <QAccessible>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QVBoxLayout>

#include <functional>
#include <gtest/gtest.h>

namespace {

/// Does something each time a popup has opened.
class PopupWatcher : public QObject
{
public:
    explicit PopupWatcher(std::function<void(QMenu&)> opened) : m_opened(std::move(opened))
    {
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (auto* menu = qobject_cast<QMenu*>(watched); menu && event->type() == QEvent::Show)
            QMetaObject::invokeMethod(
                menu, [this, menu] { m_opened(*menu); }, Qt::QueuedConnection);
        return false;
    }

private:
    std::function<void(QMenu&)> m_opened;
};

/// A frame away from the screen's corner with an editor that has the focus, and a caption bar above it.
/// What happens is written down in `heard`.
class CaptionKeys : public testing::Test
{
protected:
    void Show(CKvCaptionBar& caption)
    {
        bar = &caption;
        frame.setGeometry(130, 70, 900, 300);
        caption.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 900, 96), &frame, 7);
        edit.setGeometry(10, 200, 200, 30);
        edit.setText(QStringLiteral("text"));
        frame.show();
        QApplication::setActiveWindow(&frame);
        edit.setFocus();
    }

    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* focus = frame.focusWidget();
        QTest::keyClick(popup   ? popup
                        : focus ? focus
                                : const_cast<QWidget*>(&frame),
                        Qt::Key(key), modifiers);
    }

    /// "F10 Right Alt+2 Alt": each key in turn.
    void Keys(const QString& keys) const
    {
        for (const QString& name : keys.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            if (name == QLatin1String("Alt")) {
                Key(Qt::Key_Alt);
            } else {
                const QKeyCombination key = QKeySequence(name)[0];
                Key(key.key(), key.keyboardModifiers());
            }
        }
    }

    QAccessibleInterface& Accessible() const { return *QAccessible::queryAccessibleInterface(bar); }

    /// The accessible name of what has the focus; "edit" for the editor.
    std::string FocusName() const
    {
        // The offscreen platform takes a popup for another window, and does not come back.
        QApplication::setActiveWindow(const_cast<QWidget*>(&frame));
        QWidget* focus = QApplication::focusWidget();
        if (!focus || focus == &edit)
            return focus ? "edit" : "nothing";
        QAccessibleInterface* part = Accessible().focusChild();
        return part ? part->text(QAccessible::Name).toStdString() : "?";
    }

    QAccessibleInterface* Part(const QString& name) const
    {
        for (int i = 0; i < Accessible().childCount(); ++i) {
            if (Accessible().child(i)->text(QAccessible::Name) == name)
                return Accessible().child(i);
        }
        return nullptr;
    }

    QWidget frame;
    QLineEdit edit{&frame};
    CKvCaptionBar* bar = nullptr;
    std::string heard;
};

class TitleBarKeys : public CaptionKeys, protected IKvRibbonTitleBarSmartMenu
{
protected:
    TitleBarKeys()
    {
        auto* titlebar = new CKvRibbonTitlebar;
        title = titlebar;
        Show(*titlebar);
        Add(1, L"Titles", {L"Design", L"Animate", L"Rules"});
        Add(2, L"Media", {L"Clips"});
        titlebar->ActiveTitleBar(1, 1);
        titlebar->EnableRibbonItem(1, L"Animate", 0);
        QObject::connect(titlebar, &CKvRibbonTitlebar::RibbonItemSelected,
                         [this](quint32, const QString& name) { heard += name.toStdString() + " "; });
        KvGuiRes::RegisterMenu(L"keys", [] {
            auto menu = std::make_unique<QMenu>();
            menu->addAction(QStringLiteral("One"))->setData(101);
            return menu;
        });
    }
    ~TitleBarKeys() override { delete title; }

    int GetMenuName(wchar_t name[260]) override
    {
        wcscpy(name, L"keys");
        return 1;
    }
    int OnCommand(unsigned command) override
    {
        heard += "command " + std::to_string(command) + " in " + FocusName() + " ";
        return 1;
    }

    void Add(unsigned id, const wchar_t* text, std::initializer_list<const wchar_t*> tabs)
    {
        title->BeginAddTitleBar(L"app", text, nullptr, id, this);
        for (const wchar_t* tab : tabs)
            title->AddRibbonItem(tab, nullptr, nullptr, 0);
        title->EndAddTitleBar();
    }

    QPointer<CKvRibbonTitlebar> title;
};

constexpr char kSwitch[] = "Switch Application (Alt+F1)";

TEST_F(TitleBarKeys, KeysWalkThePartsAndPressThem)
{
    struct
    {
        const char* keys;
        const char* focus;
        const char* heard;
    } const rows[] = {
        {"F10", "Design", ""},
        {"Alt", "Design", ""},
        {"F10 Right", "Rules", ""},
        {"F10 Right Right", kSwitch, ""},
        {"F10 Left", "Titles", ""},
        {"F10 Home", "Titles", ""},
        {"F10 End", "Close", ""},
        {"F10 End Left Left Left", "AppMenu", ""},
        {"F10 End Right", "Titles", ""},
        {"F10 Right Down", "Rules", ""},
        {"F10 Right Return", "edit", "Rules "},
        {"F10 Left Right Space", "edit", ""},
        {"Alt Escape", "edit", ""},
        {"Alt Alt", "edit", ""},
        {"F10 End F10", "edit", ""},
        {"F10 Tab", "edit", ""},
        {"Alt+3", "edit", "Rules "},
        {"Alt+2", "edit", ""},
        {"Alt+3 Alt+1", "edit", "Rules Design "},
        {"Shift+F10", "edit", ""},
        {"Right", "edit", ""},
    };
    for (const auto& row : rows) {
        title->ActiveRibbonItem(1, L"Design");
        edit.setFocus();
        heard.clear();
        Keys(QString::fromLatin1(row.keys));
        EXPECT_EQ(FocusName(), row.focus) << row.keys;
        EXPECT_EQ(heard, row.heard) << row.keys;
    }
    EXPECT_EQ(edit.text().toStdString(), "text") << "no key of the bar was typed";
}

TEST_F(TitleBarKeys, AltCountsOnlyAlone)
{
    QTest::keyPress(&edit, Qt::Key_Alt, Qt::NoModifier);
    QTest::mouseClick(&frame, Qt::LeftButton, {}, QPoint(500, 250));
    QTest::keyRelease(&edit, Qt::Key_Alt, Qt::AltModifier);
    EXPECT_EQ(FocusName(), "edit");
    QTest::keyPress(&edit, Qt::Key_Alt, Qt::NoModifier);
    QTest::keyClick(&edit, Qt::Key_Left, Qt::AltModifier);
    QTest::keyRelease(&edit, Qt::Key_Alt, Qt::AltModifier);
    EXPECT_EQ(FocusName(), "edit");
    Keys(QStringLiteral("Alt"));
    QTest::mousePress(&frame, Qt::LeftButton, {}, QPoint(500, 250));
    EXPECT_EQ(FocusName(), "edit") << "a click leaves the bar";
}

TEST_F(TitleBarKeys, ShortcutsOfTheHostComeFirst)
{
    QShortcut third(QKeySequence(QStringLiteral("Alt+3")), &frame);
    QShortcut menu(QKeySequence(Qt::Key_F10), &frame);
    QShortcut escape(QKeySequence(Qt::Key_Escape), &frame);
    int escapes = 0;
    for (QShortcut* shortcut : {&third, &menu, &escape})
        QObject::connect(shortcut, &QShortcut::activated, [&, shortcut] {
            if (shortcut == &escape)
                ++escapes;
            else
                heard += "host ";
        });
    Keys(QStringLiteral("Alt+3 F10"));
    EXPECT_EQ(heard, "host host ");
    EXPECT_EQ(FocusName(), "edit");
    Keys(QStringLiteral("Alt Escape"));
    EXPECT_EQ(FocusName(), "edit");
    EXPECT_EQ(escapes, 0) << "the bar has the focus: Escape is its own";
}

TEST_F(TitleBarKeys, TipsLeaveTheHostItsMnemonics)
{
    const auto key = [this](const char* name) {
        return Part(QString::fromLatin1(name))->text(QAccessible::Accelerator).toStdString();
    };
    EXPECT_EQ(key("Maximize"), "Alt+X");
    EXPECT_EQ(key(kSwitch), "Alt+S");
    EXPECT_EQ(key("Close"), "") << "a letter that closes the window is missed too easily";
    QLabel label(QStringLiteral("Te&xt"), &frame);
    label.setBuddy(&edit);
    QPushButton button(QStringLiteral("&Size"), &frame);
    QGroupBox group(QStringLiteral("&Align"), &frame);
    QAction action(&frame);
    action.setShortcut(QKeySequence(QStringLiteral("Alt+3")));
    frame.addAction(&action);
    EXPECT_EQ(key("Maximize"), "Alt+X") << "not while they are hidden";
    for (QWidget* widget :
         {static_cast<QWidget*>(&label), static_cast<QWidget*>(&button), static_cast<QWidget*>(&group)})
        widget->show();
    EXPECT_EQ(key("Maximize"), "Alt+Z");
    EXPECT_EQ(key(kSwitch), "Alt+W");
    EXPECT_EQ(key("AppMenu"), "Alt+M");
    EXPECT_EQ(key("Rules"), "Alt+R");
}

TEST_F(TitleBarKeys, EscapeFromAPopupComesBackToItsButton)
{
    PopupWatcher dismiss([this](QMenu&) { Keys(QStringLiteral("Escape")); });
    edit.selectAll();
    Keys(QStringLiteral("F10 End Left Left Left Space"));
    EXPECT_EQ(heard, "command 0 in edit ");
    EXPECT_EQ(FocusName(), "AppMenu");
    Keys(QStringLiteral("Escape"));
    EXPECT_EQ(FocusName(), "edit");
    EXPECT_EQ(edit.selectedText().toStdString(), "text");
}

TEST_F(TitleBarKeys, TipsShowWhileAltIsDown)
{
    const auto tips = [this] { return title->findChild<QWidget*>(QStringLiteral("kvKeyTips")); };
    QTest::keyPress(&edit, Qt::Key_Alt, Qt::NoModifier);
    EXPECT_FALSE(tips()) << "not for a quick Alt with a letter";
    EXPECT_TRUE(QTest::qWaitFor([&] { return tips() != nullptr; }));
    EXPECT_EQ(QApplication::widgetAt(title->mapToGlobal(QPoint(300, 10))), title.data())
        << "clicks go through";
    QTest::keyClick(&edit, Qt::Key_3, Qt::AltModifier);
    EXPECT_FALSE(tips());
    EXPECT_EQ(heard, "Rules ");
    QTest::keyRelease(&edit, Qt::Key_Alt, Qt::AltModifier);
    EXPECT_EQ(FocusName(), "edit");
}

TEST_F(TitleBarKeys, TheBarMayDieAtAKey)
{
    QObject::connect(title, &CKvRibbonTitlebar::RibbonItemSelected, [this] { delete title; });
    Keys(QStringLiteral("F10 Right Return F10 Alt"));
    EXPECT_FALSE(title);
    EXPECT_EQ(QApplication::focusWidget(), &edit);
}

TEST_F(TitleBarKeys, ScreenReadersFindTheParts)
{
    EXPECT_EQ(Accessible().role(), QAccessible::PageTabList);
    struct
    {
        const char* name;
        QAccessible::Role role;
        bool selected;
        bool disabled;
    } const rows[] = {
        {"Design", QAccessible::PageTab, true, false},
        {"Animate", QAccessible::PageTab, false, true},
        {"Rules", QAccessible::PageTab, false, false},
        {kSwitch, QAccessible::Button, false, false},
        {"Close", QAccessible::Button, false, false},
        {"KolvaUntitled", QAccessible::StaticText, false, false},
    };
    const QRect whole = Accessible().rect();
    EXPECT_EQ(whole.topLeft(), title->mapToGlobal(QPoint()));
    for (const auto& row : rows) {
        QAccessibleInterface* part = Part(QString::fromLatin1(row.name));
        ASSERT_TRUE(part) << row.name;
        EXPECT_EQ(part->role(), row.role) << row.name;
        EXPECT_EQ(part->state().selected, row.selected) << row.name;
        EXPECT_EQ(part->state().disabled, row.disabled) << row.name;
        EXPECT_TRUE(whole.contains(part->rect())) << row.name;
        EXPECT_EQ(Accessible().childAt(part->rect().center().x(), part->rect().center().y()), part)
            << row.name;
        EXPECT_EQ(Accessible().child(Accessible().indexOfChild(part)), part) << row.name;
        EXPECT_EQ(part->parent(), &Accessible()) << row.name;
    }
    EXPECT_EQ(Part(QStringLiteral("Rules"))->text(QAccessible::Accelerator).toStdString(), "Alt+3");
}

TEST_F(TitleBarKeys, ScreenReadersPressAndFocusTabs)
{
    QAccessibleInterface* rules = Part(QStringLiteral("Rules"));
    ASSERT_TRUE(rules && rules->actionInterface());
    rules->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([this] { return heard == "Rules "; }));
    EXPECT_TRUE(rules->state().selected);
    rules->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(rules->state().focused);
    EXPECT_FALSE(Accessible().state().focused) << "one only";
    QAccessibleInterface* animate = Part(QStringLiteral("Animate"));
    EXPECT_TRUE(!animate->actionInterface() || animate->actionInterface()->actionNames().isEmpty());
    const QAccessible::Id id = QAccessible::uniqueId(rules);
    title->ActiveTitleBar(2, 1);
    EXPECT_FALSE(QAccessible::accessibleInterface(id)) << "another application's tabs are others";
    EXPECT_TRUE(Part(QStringLiteral("Clips")));
}

class MenuBarKeys : public CaptionKeys, protected IKvRibbonMenuBarSmartMenu
{
protected:
    MenuBarKeys()
    {
        auto* menubar = new CKvRibbonMenuBar;
        menus = menubar;
        Show(*menubar);
        menu.addMenu(QStringLiteral("&File"))->addAction(QStringLiteral("Save"))->setData(201);
        menu.addMenu(QStringLiteral("&view"))->addAction(QStringLiteral("Copy"))->setData(202);
        Register(1);
    }
    ~MenuBarKeys() override { delete menus; }

    /// The menu as it is now.
    void Register(unsigned id)
    {
        menus->BeginAddMenuBar(L"app", L"Titles", id, &menu, this);
        menus->EndAddMenuBar();
        menus->ActiveMenuBar(id);
    }

    int OnCommand(HMENU, unsigned command) override
    {
        heard += "command " + std::to_string(command) + " in " + FocusName() + " ";
        return 1;
    }

    int OnBeforePopup(HMENU popup) override
    {
        opened += popup->title() == QLatin1String("&Off");
        return 1;
    }

    QMenu menu;
    QPointer<CKvRibbonMenuBar> menus;
    int opened = 0; ///< how often the popup of "Off" was
};

TEST_F(MenuBarKeys, KeysOpenTheItems)
{
    struct
    {
        const char* keys;
        const char* inPopups; ///< what each popup gets, "," between two
        const char* heard;
        const char* focus;
    } const rows[] = {
        {"F10 Down", "Down Return", "command 201 in edit ", "edit"},
        {"Alt Right Return", "Down Return", "command 202 in edit ", "edit"},
        {"F10 Right Alt+F", "Down Return", "command 201 in edit ", "edit"},
        {"F10 Right Escape", "", "", "edit"},
        {"F10 Left", "", "", "Titles"},
        {"F10 Right Right Right", "", "", "AppMenu"},
        {"F10 Right Down", "Escape", "", "view"},
        {"F10 Down", "Right,Escape", "", "view"},
        {"F10 Down", "Left,Right,Escape", "", "File"},
    };
    QStringList popups;
    PopupWatcher choose(
        [&](QMenu&) { Keys(popups.isEmpty() ? QStringLiteral("Escape") : popups.takeFirst()); });
    // Passed over: one that opens nothing, one that is disabled, one that has nothing to show.
    menu.addAction(QStringLiteral("&Plain"));
    menu.addMenu(QStringLiteral("&Off"))->addAction(QStringLiteral("Not"));
    menu.actions().back()->setEnabled(false);
    menu.addMenu(QStringLiteral("&Empty"));
    Register(2);
    for (const auto& row : rows) {
        heard.clear();
        popups = QString::fromLatin1(row.inPopups).split(u',', Qt::SkipEmptyParts);
        edit.setFocus();
        Keys(QString::fromLatin1(row.keys));
        EXPECT_EQ(heard, row.heard) << row.keys;
        EXPECT_EQ(FocusName(), row.focus) << row.keys << " " << row.inPopups;
    }
    Keys(QStringLiteral("Alt+O"));
    EXPECT_EQ(opened, 0) << "disabled";
}

TEST_F(MenuBarKeys, ScreenReadersFindTheItems)
{
    menu.addAction(QStringLiteral("&Plain"));
    menu.addMenu(QStringLiteral("&Off"))->menuAction()->setEnabled(false);
    Register(2);
    EXPECT_EQ(Accessible().role(), QAccessible::MenuBar);
    struct
    {
        const char* name;
        bool opens;
        bool disabled;
        const char* key;
    } const rows[] = {
        {"File", true, false, "Alt+F"},      {"view", true, false, ""},
        {"Plain", false, false, ""},         {"Off", true, true, ""},
        {"Titles", true, false, "Alt+T"},    {"AppMenu", true, false, "Alt+A"},
        {"Minimize", false, false, "Alt+M"},
    };
    const auto check = [this](const auto& row) {
        QAccessibleInterface* part = Part(QString::fromLatin1(row.name));
        ASSERT_TRUE(part) << row.name;
        EXPECT_EQ(part->state().hasPopup, row.opens) << row.name;
        EXPECT_EQ(part->state().disabled, row.disabled) << row.name;
        EXPECT_EQ(part->text(QAccessible::Accelerator).toStdString(), row.key) << row.name;
    };
    for (const auto& row : rows)
        check(row);
    EXPECT_FALSE(Part(QStringLiteral("Plain"))->actionInterface()) << "it does nothing";
    menu.actions().back()->setEnabled(true);
    EXPECT_FALSE(Part(QStringLiteral("Off"))->state().disabled) << "at once";

    QAccessibleInterface* file = Part(QStringLiteral("File"));
    PopupWatcher choose([this, file](QMenu&) {
        heard += file->state().expanded ? "expanded " : "collapsed ";
        Keys(QStringLiteral("Down Return"));
    });
    file->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(heard, "") << "a screen reader does not wait for the user";
    EXPECT_TRUE(QTest::qWaitFor([this] { return heard == "expanded command 201 in edit "; })) << heard;
    EXPECT_FALSE(file->state().expanded);
    EXPECT_EQ(file->role(), QAccessible::MenuItem);
}

} // namespace
