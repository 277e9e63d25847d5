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

} // namespace

TitleWorkspace::TitleWorkspace(Document& document)
    : m_canvas(new CanvasView(document))
    , m_media(new MediaPanel)
{
    m_media->setProperty("role", "panel");
    m_media->setAttribute(Qt::WA_StyledBackground);
    auto* splitter = new QSplitter(Qt::Horizontal);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    splitter->addWidget(m_media);
    splitter->addWidget(m_canvas);
    splitter->addWidget(BuildInspector(document));
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({kMediaWidth, 4 * kMediaWidth, kMediaWidth});
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(splitter);
}

QWidget* TitleWorkspace::BuildInspector(Document& document)
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
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(sections);
    area->setMinimumWidth(sections->minimumSizeHint().width() +
                          area->verticalScrollBar()->sizeHint().width());
    return area;
}

} // namespace titler
