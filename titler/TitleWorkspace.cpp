#include "TitleWorkspace.h"

#include "CanvasView.h"
#include "GradientInspector.h"
#include "MediaPanel.h"
#include "TextInspector.h"
#include "Texts.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>

namespace titler {
namespace {

constexpr int kMediaWidth = 290;
constexpr int kNarrowestPanel = 90; // in a small window the panels give way before the canvas is gone

// What an area needs to show all its content beside its scroll bar.
int WholeWidth(const QScrollArea& area)
{
    return area.widget()->minimumSizeHint().width() + area.verticalScrollBar()->sizeHint().width();
}

} // namespace

TitleWorkspace::TitleWorkspace(Document& document)
    : m_canvas(new CanvasView(document))
    , m_media(new MediaPanel)
{
    m_media->setProperty("role", "panel");
    m_media->setAttribute(Qt::WA_StyledBackground);
    m_media->setMinimumWidth(kNarrowestPanel);
    QScrollArea* inspector = BuildInspector(document);
    auto* splitter = new QSplitter(Qt::Horizontal);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    splitter->addWidget(m_media);
    splitter->addWidget(m_canvas);
    splitter->addWidget(inspector);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({kMediaWidth, 4 * kMediaWidth, WholeWidth(*inspector)});
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(splitter);
}

QScrollArea* TitleWorkspace::BuildInspector(Document& document)
{
    auto* sections = new QWidget;
    sections->setProperty("role", "panel");
    auto* column = new QVBoxLayout(sections);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    auto* gradient = new GradientInspector(document);
    auto* text = new TextInspector(document);
    setFocusProxy(gradient);
    for (QWidget* section : {static_cast<QWidget*>(gradient), static_cast<QWidget*>(text)}) {
        section->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
        column->addWidget(section);
    }
    column->addStretch();

    auto* area = new QScrollArea;
    area->setProperty("role", "panel");
    area->setAccessibleName(Text(kTextInspector));
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(sections);
    area->setMinimumWidth(kNarrowestPanel);
    return area;
}

} // namespace titler
