// What the tests of the two caption bars share: hosts that note what they hear, popups, places.
#pragma once

#include "KvButtons.h"
#include "KvMenu.h"
#include "KvRibbonMenuBar.h"
#include "KvRibbonTitlebar.h"

#include <QAction>
#include <QApplication>
#include <QFontMetrics>
#include <QMenu>
#include <QPointer>
#include <QTest>

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>

/// Everything that a host hears, in order, parted by blanks.
class Host
{
public:
    int Note(const std::string& what)
    {
        heard += heard.empty() ? what : ' ' + what;
        if (onCall && what == onCallOf)
            std::exchange(onCall, nullptr)();
        return 0;
    }
    std::string Heard() { return std::exchange(heard, {}); }

    std::string onCallOf; ///< when this is heard, `onCall` is called, once
    std::function<void()> onCall;

private:
    std::string heard;
};

struct TitleSmart : IKvRibbonTitleBarSmartMenu
{
    explicit TitleSmart(Host& hears) : host(hears) {}
    int Release() override { return host.Note("release"); }
    int OnAttach(IKvRibbonTitleBarMgr* told, unsigned id) override
    {
        manager = told;
        return host.Note("attach" + std::to_string(id));
    }
    int OnDetach() override { return host.Note("detach"); }
    int GetMenuName(wchar_t name[260]) override
    {
        std::wcscpy(name, menu.c_str());
        host.Note("name");
        return named;
    }
    int OnCommand(unsigned command) override { return host.Note("command" + std::to_string(command)); }

    Host& host;
    IKvRibbonTitleBarMgr* manager = nullptr;
    std::wstring menu;
    int named = 1;
};

/// "Menu:" before its popup, "Menu?5" update, "Menu." closed, "Menu!5" command.
struct MenuSmart : IKvRibbonMenuBarSmartMenu
{
    explicit MenuSmart(Host& hears) : host(hears) {}
    int Release() override { return host.Note("release"); }
    int OnAttach(IKvRibbonMenuBarMgr* told, unsigned id) override
    {
        manager = told;
        return host.Note("attach" + std::to_string(id));
    }
    int OnDetach() override { return host.Note("detach"); }
    int OnUpdateCommand(HMENU popup, unsigned command) override
    {
        for (QAction* action : popup->actions()) {
            if (KvGetMenuCommand(action) == command && enable.count(command) != 0)
                action->setEnabled(enable[command]);
        }
        return host.Note(Title(popup) + '?' + std::to_string(command));
    }
    int OnCommand(HMENU popup, unsigned command) override
    {
        return host.Note(Title(popup) + '!' + std::to_string(command));
    }
    int OnPopupClosed(HMENU popup) override { return host.Note(Title(popup) + '.'); }
    int OnBeforePopup(HMENU popup) override { return host.Note(Title(popup) + ':'); }
    static std::string Title(const QMenu* popup)
    {
        return popup ? popup->title().remove('&').toStdString() : std::string();
    }

    Host& host;
    IKvRibbonMenuBarMgr* manager = nullptr;
    std::map<unsigned, bool> enable;
};

/// Notes "told:name" and, where it is asked to, that it is moved or resized next: "placed".
struct Tool : QWidget, IKvGuiWnd
{
    Tool(QWidget* bar, Host& hears, const char* name, QSize size = {50, 20}) : QWidget(bar), host(hears)
    {
        setObjectName(name);
        resize(size);
    }
    void SetToolWndManager(void* told) override
    {
        manager = told;
        host.Note("told:" + objectName().toStdString());
    }
    bool event(QEvent* event) override
    {
        const bool isPlaced = event->type() == QEvent::Move || event->type() == QEvent::Resize;
        if (isPlaced && isVisible() && std::exchange(tellsPlaces, false))
            host.Note("placed"); // it may be gone then
        return isPlaced || QWidget::event(event);
    }
    Host& host;
    void* manager = nullptr;
    bool tellsPlaces = false;
};

inline QAction* AddEntry(QMenu& menu, const QString& text, unsigned command)
{
    QAction* action = menu.addAction(text);
    action->setData(command);
    return action;
}

inline CKvButton& Button(const CKvCaptionBar* bar, UINT number)
{
    return *static_cast<CKvButton*>(KvGetDlgItem(const_cast<CKvCaptionBar*>(bar), number));
}

/// Where an item's text box stands, from the texts of the application button and the items before it.
inline QRect ItemPlace(const QFontMetrics& metrics, const QString& button, const QStringList& texts)
{
    int left = 4 + metrics.horizontalAdvance(button) + 30;
    for (const QString& before : texts.mid(0, texts.size() - 1))
        left += metrics.horizontalAdvance(before) + 10;
    const int top = std::max(0, 21 - metrics.height()); // the band grows with larger letters
    return {left, top, metrics.horizontalAdvance(texts.back()), metrics.height()};
}

/// Acts within the event loop of the popup that opens next; one that is open afterwards is closed.
inline void Then(std::function<void(QMenu&)> act)
{
    QMetaObject::invokeMethod(
        qApp,
        [act] {
            auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(popup) << "no popup opened";
            act(*popup);
            if (QWidget* open = QApplication::activePopupWidget())
                open->close();
        },
        Qt::QueuedConnection);
}

inline void Dismiss()
{
    Then([](QMenu& popup) { QTest::keyClick(&popup, Qt::Key_Escape); });
}

inline void Choose(QMenu& popup, UINT command)
{
    for (QAction* action : popup.actions()) {
        if (KvGetMenuCommand(action) == command)
            popup.setActiveAction(action);
    }
    QTest::keyClick(&popup, Qt::Key_Return);
}
