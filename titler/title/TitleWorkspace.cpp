#include "title/TitleWorkspace.h"

#include "pages/PageCommands.h"
#include "pages/PageStrip.h"
#include "time/TimeRuler.h"
#include "time/TransportBar.h"
#include "title/AnimationInspector.h"
#include "title/CanvasView.h"
#include "title/ColourInspector.h"
#include "title/TextInspector.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"
#include "window/ToolStrip.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

namespace titler {
namespace {

constexpr int kPageIcon = 18;
constexpr int kNarrowestPanel = 90; // in a small window the panels give way before the canvas is gone
constexpr int kLowestPages = 1;     // likewise, after all others

// What an area needs to show all its content beside its scroll bar.
int WholeWidth(const QScrollArea& area)
{
    return area.widget()->minimumSizeHint().width() + area.verticalScrollBar()->sizeHint().width();
}

// Longer texts widen the area, unless that would leave little beside it.
void GiveRoom(QSplitter& whole, const QScrollArea& area)
{
    const int needed = WholeWidth(area);
    if (area.width() < needed && whole.width() > 2 * needed)
        whole.setSizes({whole.width() - needed, needed});
}

// What is in it comes later: a change of a parent would style it all again.
QSplitter* Splitter(Qt::Orientation orientation, QWidget* parent)
{
    auto* splitter = new QSplitter(orientation, parent);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    return splitter;
}

} // namespace

TitleWorkspace::TitleWorkspace(Document& document, Transport& transport, bool hsb, QWidget* parent)
    : QWidget(parent)
    , m_canvas(new CanvasView(document, transport))
    , m_playback(new TransportBar(document, transport))
    , m_pageCommands(new PageCommands(document, *this))
{
    QSplitter* whole = Splitter(Qt::Horizontal, this);
    QSplitter* stage = Splitter(Qt::Vertical, whole);
    stage->addWidget(m_canvas);
    QWidget* time = BuildTime(*stage, document, transport);
    QScrollArea* inspector = BuildInspector(*whole, document, transport, hsb); // Tab comes there last
    for (QSplitter* splitter : {whole, stage})
        splitter->setStretchFactor(0, 1);
    stage->setSizes({8 * time->sizeHint().height(), time->sizeHint().height()});
    whole->setSizes({4 * WholeWidth(*inspector), WholeWidth(*inspector)});
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(whole, 1);
    m_pagePanel = BuildPages(document);
    column->addWidget(m_pagePanel);
    FocusFirst(*this, *m_canvas);
    Show(TitleTask::Design);
    InEachLanguage(*this, [this, whole, inspector] {
        if (window()->isVisible()) // once all parts know their new sizes
            QTimer::singleShot(0, this, [whole, inspector] { GiveRoom(*whole, *inspector); });
    });
}

bool TitleWorkspace::IsHsb() const
{
    return m_colour->IsHsb();
}

void TitleWorkspace::Show(TitleTask task)
{
    for (QWidget* widget : m_design)
        widget->setVisible(task == TitleTask::Design);
    for (QWidget* widget : m_animate)
        widget->setVisible(task == TitleTask::Animate);
}

QWidget* TitleWorkspace::BuildTime(QSplitter& parent, Document& document, Transport& transport)
{
    auto* panel = new QWidget(&parent);
    panel->setProperty("role", "panel");
    panel->setAttribute(Qt::WA_StyledBackground);
    m_animate << panel;
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_playback);
    column->addWidget(new TimeRuler(document, transport), 1);
    return panel;
}

void TitleWorkspace::ShowPages(bool show)
{
    // Else it goes on to whatever comes next, a tool for example, which the next key would use.
    if (!show && m_pagePanel->isAncestorOf(window()->focusWidget()))
        m_canvas->setFocus();
    m_pagePanel->setVisible(show);
}

QWidget* TitleWorkspace::BuildPages(Document& document)
{
    auto* panel = new QWidget(this);
    panel->setProperty("role", "panel");
    panel->setAttribute(Qt::WA_StyledBackground);
    panel->setMinimumHeight(kLowestPages);
    panel->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* tools = new QVBoxLayout;
    tools->setSpacing(1);
    for (QAction* command : m_pageCommands->Tools()) {
        auto* button = new ToolButton(*command);
        button->setProperty("role", "tool");
        button->setIconSize({kPageIcon, kPageIcon});
        button->setToolButtonStyle(Qt::ToolButtonIconOnly);
        InEachLanguage(*button,
                       [button, command] { button->setAccessibleName(WithoutMnemonic(command->text())); });
        tools->addWidget(button);
    }
    tools->addStretch();
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(4, 4, 4, 4);
    row->setSpacing(4);
    row->addLayout(tools);
    m_pages = new PageStrip(document, *panel);
    m_pages->SetMenu(m_pageCommands->Commands());
    connect(m_pageCommands, &PageCommands::Added, this, [this] { m_text->Field().selectAll(); });
    row->addWidget(m_pages, 1);
    return panel;
}

QScrollArea* TitleWorkspace::BuildInspector(QSplitter& parent, Document& document, Transport& transport,
                                            bool hsb)
{
    auto* area = new QScrollArea(&parent);
    area->setProperty("role", "panel");
    InEachLanguage(*area, [area] { area->setAccessibleName(Text(kTextInspector)); });
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setMinimumWidth(kNarrowestPanel);
    auto* sections = new QWidget;
    sections->setProperty("role", "panel");
    area->setWidget(sections);
    auto* column = new QVBoxLayout(sections);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    m_text = new TextInspector(document);
    m_colour = new ColourInspector(document, hsb);
    m_animation = new AnimationInspector(document, transport, *m_canvas);
    for (QWidget* section : std::initializer_list<QWidget*>{m_text, m_colour, m_animation}) {
        section->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
        column->addWidget(section);
    }
    m_design = {m_text, m_colour};
    m_animate << m_animation;
    column->addStretch();
    return area;
}

} // namespace titler
