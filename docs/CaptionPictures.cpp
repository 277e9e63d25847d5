// Pictures of the ribbon title bar, its key tips and switch window, and of the ribbon menu bar.
#include "KvGuiRes.h"
#include "KvRibbonMenuBar.h"
#include "KvRibbonTitlebar.h"
#include "Pictures.h"
#include "window/ToolStrip.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <iterator>

namespace {

constexpr QSize kBarSize(1060, 98);     // with the frame's line
constexpr QSize kWindowSize(1060, 320); // with what stands below the bar
constexpr int kPointSize = 20;          // of the title in the window

QAction* MakeTool(QWidget& owner, const wchar_t* picture, const char* name)
{
    const KvSkinImage image = KvGuiRes::LoadImageW(picture);
    const QPixmap pixmap = image.Pixmap(image.Size(), owner.devicePixelRatioF());
    return new QAction(QIcon(pixmap), QLatin1String(name), &owner);
}

titler::ToolStrip* MakeTools(QWidget& bar)
{
    return new titler::ToolStrip(
        bar,
        {MakeTool(bar, L"titler_tool_new", "New"), MakeTool(bar, L"titler_tool_open", "Open"),
         MakeTool(bar, L"titler_tool_save", "Save"), nullptr, MakeTool(bar, L"titler_tool_undo", "Undo"),
         MakeTool(bar, L"titler_tool_redo", "Redo"), nullptr, MakeTool(bar, L"titler_tool_addkey", "Add Key"),
         MakeTool(bar, L"titler_tool_clearkeys", "Remove Keys")});
}

/// What stands at the right end below the strip, whatever the tab: putting a title on air, and its time code.
QWidget* MakePanel(QWidget& bar, const QList<QWidget*>& parts)
{
    auto* panel = new QWidget(&bar);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(12, 0, 12, 0);
    for (QWidget* part : parts)
        row->addWidget(part);
    panel->resize(panel->sizeHint().width(), 64);
    return panel;
}

/// A main window that has nothing but a bar and a title.
class CaptionScene
{
public:
    explicit CaptionScene(QSize size)
    {
        m_frame.setMinimumSize(1, 1);
        m_frame.resize(size);
    }

    CKvFrameWnd& Frame() { return m_frame; }
    CKvCaptionBar& Bar() { return *m_bar; }

    void Show(CKvCaptionBar& bar)
    {
        m_bar = &bar;
        m_frame.setMenuWidget(&bar);
        auto* title = new QLabel(QStringLiteral("NORTHERN LIGHTS"));
        title->setAlignment(Qt::AlignCenter);
        title->setStyleSheet(
            QStringLiteral("background: #1a1a1c; color: #e2e2e4; font-size: %1pt").arg(kPointSize));
        title->setFocusPolicy(Qt::StrongFocus);
        title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
        m_frame.setCentralWidget(title);
        m_frame.show();
        QApplication::processEvents(); // the activation of windows
        QApplication::setActiveWindow(&m_frame);
        title->setFocus();
    }

    /// The middle of an item, in the bar's coordinates.
    QPoint Item(const char* name) const
    {
        const QAccessibleInterface* strip = QAccessible::queryAccessibleInterface(m_bar);
        for (int i = 0; i < strip->childCount(); ++i) {
            const QAccessibleInterface* part = strip->child(i);
            if (part->text(QAccessible::Name) == QLatin1String(name))
                return m_bar->mapFromGlobal(part->rect().center());
        }
        return {};
    }
    void Hover(const char* name) const
    {
        const QPointF at(Item(name));
        QMouseEvent move(QEvent::MouseMove, at, m_bar->mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(m_bar, &move);
    }

    /// The window with a popup over it.
    QPixmap With(QWidget& popup)
    {
        QPixmap picture = m_frame.grab();
        QPainter painter(&picture);
        painter.drawPixmap(m_frame.mapFromGlobal(popup.mapToGlobal(QPoint())), popup.grab());
        return picture;
    }

private:
    CKvFrameWnd m_frame;
    CKvCaptionBar* m_bar = nullptr; // the frame's
};

CKvRibbonTitlebar& AddTitleBar(CaptionScene& scene)
{
    constexpr unsigned kTitles = 1;
    constexpr unsigned kMedia = 2;
    auto* bar = new CKvRibbonTitlebar;
    bar->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, scene.Frame().width(), 0), &scene.Frame(), 1);
    bar->BeginAddTitleBar(L"titler_titles", L"Titles", nullptr, kTitles, nullptr);
    for (const wchar_t* name : {L"Design", L"Animate", L"Subtitles", L"On Air"}) {
        titler::ToolStrip* tools = MakeTools(*bar);
        bar->AddRibbonItem(name, tools, tools, 0);
    }
    bar->RegisterAdvToolWnd(nullptr, MakePanel(*bar, {new QPushButton("Take"), new QPushButton("Clear")}),
                            nullptr, MakePanel(*bar, {new QLabel("10:02:47:18")}));
    bar->EndAddTitleBar();
    bar->BeginAddTitleBar(L"titler_media", L"Media", L"Media and naming rules", kMedia, nullptr);
    bar->AddRibbonItem(L"Clips", nullptr, nullptr, 0);
    bar->EndAddTitleBar();
    bar->SetSysTitle(kTitles, L"titler – ");
    bar->SetDocTitle(kTitles, L"Northern lights.ktitle");
    bar->ActiveTitleBar(kTitles, 1);
    bar->ActiveRibbonItem(kTitles, L"Animate");
    bar->EnableRibbonItem(kTitles, L"On Air", 0);
    scene.Show(*bar);
    return *bar;
}

/// Holds Alt down until the key tips show.
void WaitForTips(CaptionScene& scene)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Alt, Qt::AltModifier);
    QApplication::sendEvent(&scene.Frame(), &press);
    while (!scene.Bar().findChild<QWidget*>(QStringLiteral("kvKeyTips")))
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

bool SaveTitleBar(const Pictures& pictures)
{
    CaptionScene scene(kBarSize);
    CKvRibbonTitlebar& bar = AddTitleBar(scene);
    scene.Hover("Design");
    const QPixmap plain = scene.Frame().grab();
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&bar, &leave);
    WaitForTips(scene);
    const QPixmap tips = scene.Frame().grab();
    scene.Frame().resize(kWindowSize);
    bar.ShowAppSwitchWindow();
    QWidget& list = *QApplication::activePopupWidget();
    const QPixmap switching = scene.With(list);
    list.close();
    return pictures.Save(plain, "title-bar") && pictures.Save(tips, "title-bar-key-tips") &&
           pictures.Save(switching, "application-switch");
}

/// Adds an entry. @param text with its shortcut behind a tab.
QAction& AddEntry(QMenu& menu, const char* text, bool enabled = true)
{
    static unsigned command = 100;
    QAction& entry = *menu.addAction(QLatin1String(text));
    entry.setData(++command);
    entry.setEnabled(enabled);
    return entry;
}

void FillMenu(QMenu& menu)
{
    for (const char* name : {"&File", "&Edit", "&Title", "&Animation", "&View", "&Help"}) {
        QMenu& popup = *menu.addMenu(QLatin1String(name));
        AddEntry(popup, "About");
    }
    QMenu& animation = *menu.actions()[3]->menu();
    animation.clear();
    AddEntry(animation, "&Add Key\tCtrl+K");
    AddEntry(animation, "&Remove Keys");
    AddEntry(animation, "&Paste Keys\tCtrl+Shift+V", false);
    animation.addSeparator();
    AddEntry(*animation.addMenu(QStringLiteral("Ease &Presets")), "Ease In");
    QAction& loop = AddEntry(animation, "&Loop");
    loop.setCheckable(true);
    loop.setChecked(true);
}

bool SaveMenuBar(const Pictures& pictures)
{
    QMenu menu;
    FillMenu(menu);
    CaptionScene scene(kWindowSize);
    auto* bar = new CKvRibbonMenuBar;
    bar->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, kWindowSize.width(), 0), &scene.Frame(), 1);
    bar->BeginAddMenuBar(L"titler_icon", L"titler", 1, &menu, nullptr);
    titler::ToolStrip* tools = MakeTools(*bar);
    bar->AddMenuBarToolWnd(tools, tools);
    bar->EndAddMenuBar();
    bar->SetSysTitle(1, L"titler – ");
    bar->SetDocTitle(1, L"Northern lights.ktitle");
    bar->ActiveMenuBar(1);
    tools->resize(tools->width(), bar->height() - tools->y());
    scene.Show(*bar);
    QPixmap open;
    QTimer::singleShot(0, bar, [&] { // once the popup waits for its user
        QMenu& popup = *menu.actions()[3]->menu();
        popup.setActiveAction(popup.actions()[1]);
        open = scene.With(popup);
        popup.close();
    });
    SendMouse(*bar, QEvent::MouseButtonPress, scene.Item("Animation"));
    WaitForTips(scene);
    scene.Frame().resize(kBarSize);
    return pictures.Save(open, "menu-bar") && pictures.Save(scene.Frame(), "menu-bar-key-tips");
}

} // namespace

bool SaveCaptions(const Pictures& pictures)
{
    return SaveTitleBar(pictures) && SaveMenuBar(pictures);
}
