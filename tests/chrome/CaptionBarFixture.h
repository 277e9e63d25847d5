// A bar of one of the two kinds in a frame, and what its tests do to it.
#pragma once

#include "CaptionFixture.h"
#include "KvGuiRes.h"
#include "KvWnd.h"

#include <QCloseEvent>
#include <QHelpEvent>
#include <QImage>
#include <QMouseEvent>
#include <QToolTip>

#include <memory>
#include <vector>

inline constexpr QPoint kFree(500, 14); ///< a free place of the caption band

class HostFrame : public CKvFrameWnd
{
public:
    bool agrees = true;
    bool answersClose = false;
    int closed = 0;
    std::vector<int> asked;

protected:
    BOOL OnShowStateRequest(int showCommand) override
    {
        asked.push_back(showCommand);
        return agrees ? 1 : 0;
    }
    BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        return (message == WM_CLOSE && answersClose) ||
               CKvFrameWnd::OnWndMsg(message, wParam, lParam, result);
    }
    void closeEvent(QCloseEvent* event) override
    {
        ++closed;
        event->ignore();
    }
};

/// What the bar was asked to paint, in its coordinates.
class PaintWatcher : public QObject
{
public:
    explicit PaintWatcher(QWidget& bar) { bar.installEventFilter(this); }
    QRegion Take()
    {
        QCoreApplication::processEvents();
        return std::exchange(m_region, {});
    }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            m_region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

private:
    QRegion m_region;
};

/// A bar of one of the two kinds in a frame of 900 × 300, with the items "One", "Two" and "Three".
class CaptionBar : public testing::TestWithParam<bool>
{
protected:
    CaptionBar()
    {
        menu = std::make_unique<QMenu>();
        for (const char* name : {"One", "Two", "Three"})
            AddEntry(*menu->addMenu(name), "x", 5);
        KvGuiRes::RegisterMenu(L"bars", [] {
            auto popup = std::make_unique<QMenu>();
            AddEntry(*popup, "x", 5);
            return popup;
        });
        titleSmart.menu = L"bars";
        Put();
        frame.resize(900, 300);
        frame.show();
        QApplication::setActiveWindow(&frame);
    }
    ~CaptionBar() override
    {
        host.onCall = nullptr;
        delete bar.data();
        KvGuiRes::SetSkinFolder(nullptr);
        KvGuiRes::RegisterMenu(L"bars", nullptr);
    }

    static bool IsTitleBar() { return GetParam(); }
    void Make()
    {
        title = IsTitleBar() ? new CKvRibbonTitlebar : nullptr;
        menuBar = IsTitleBar() ? nullptr : new CKvRibbonMenuBar;
        bar = IsTitleBar() ? static_cast<CKvCaptionBar*>(title) : menuBar;
        if (title)
            QObject::connect(
                title, &CKvRibbonTitlebar::RibbonItemSelected, &frame,
                [this](quint32, const QString& name) { host.Note("item" + name.toStdString()); });
    }
    void CreateBar()
    {
        EXPECT_EQ(bar->Create(WS_CHILD | WS_VISIBLE, {0, 0, 900, 30}, &frame, 77), 1);
        if (bar)
            frame.setMenuWidget(bar);
    }
    void Put()
    {
        Make();
        CreateBar();
        Add(1, nullptr, false);
        Activate(1);
    }

    // --- The two bars' operations of one meaning.
    int Begin(unsigned id, bool withSmart = true)
    {
        return title ? title->BeginAddTitleBar(L"key", L"Button", nullptr, id,
                                               withSmart ? &titleSmart : nullptr)
                     : menuBar->BeginAddMenuBar(L"key", L"Button", id, menu.get(),
                                                withSmart ? &menuSmart : nullptr);
    }
    // The title bar's one is that of the tab "One".
    int AddTool(Tool* tool)
    {
        return title  ? title->AddRibbonItem(L"One", tool, tool, 0)
               : tool ? menuBar->AddMenuBarToolWnd(tool, tool)
                      : 1;
    }
    int AddAdvanced(Tool* tool)
    {
        return title ? title->RegisterAdvToolWnd(tool, tool, nullptr, nullptr)
                     : menuBar->RegisterAdvToolWnd(tool, tool, nullptr, nullptr);
    }
    int End()
    {
        if (!title)
            return menuBar->EndAddMenuBar();
        return title->EndAddTitleBar();
    }
    void AddTabs()
    {
        for (const wchar_t* name : {L"Two", L"Three"}) {
            if (title)
                title->AddRibbonItem(name, nullptr, nullptr, 0);
        }
    }
    void Add(unsigned id, Tool* tool = nullptr, bool withSmart = true)
    {
        EXPECT_EQ(Begin(id, withSmart), 1);
        EXPECT_EQ(AddTool(tool), 1);
        AddTabs();
        EXPECT_EQ(End(), 1);
    }
    int Activate(unsigned id) { return title ? title->ActiveTitleBar(id, 1) : menuBar->ActiveMenuBar(id); }
    int Remove(unsigned id) { return title ? title->RemoveTitleBar(id) : menuBar->RemoveMenuBar(id); }
    int SetSysTitle(unsigned id, const wchar_t* text)
    {
        return title ? title->SetSysTitle(id, text) : menuBar->SetSysTitle(id, text);
    }
    int SetDocTitle(unsigned id, const wchar_t* text)
    {
        return title ? title->SetDocTitle(id, text) : menuBar->SetDocTitle(id, text);
    }

    std::wstring MaximisePicture() const { return Button(bar, kKvCaptionMaximise).GetBitmapName(); }
    static QRect ItemRect(int index, const QFontMetrics& metrics)
    {
        return ItemPlace(metrics, "Button", QStringList{"One", "Two", "Three"}.mid(0, index + 1));
    }
    void Move(QPoint point, Qt::MouseButtons buttons = Qt::NoButton) const
    {
        QMouseEvent move(QEvent::MouseMove, point, bar->mapToGlobal(point), Qt::NoButton, buttons, {});
        QApplication::sendEvent(bar, &move);
    }
    // What a tool tip at that place says.
    static QString TipAt(QWidget& widget, QPoint point)
    {
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
        QHelpEvent help(QEvent::ToolTip, point, widget.mapToGlobal(point));
        QApplication::sendEvent(&widget, &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }
    bool HasColour(const QRect& place, QRgb colour) const
    {
        const QImage picture = bar->grab(place).toImage();
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y) {
                if (picture.pixel(x, y) == colour)
                    return true;
            }
        }
        return false;
    }

    Host host;
    TitleSmart titleSmart{host};
    MenuSmart menuSmart{host};
    std::unique_ptr<QMenu> menu;
    HostFrame frame;
    QPointer<CKvCaptionBar> bar;
    CKvRibbonTitlebar* title = nullptr;
    CKvRibbonMenuBar* menuBar = nullptr;
};
