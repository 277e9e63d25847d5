#include "title/PaintInspector.h"

#include "KvQuadGradCtrl.h"
#include "edit/Document.h"
#include "title/GradientInspector.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Switch.h"
#include "window/Texts.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace titler {
namespace {

constexpr DWORD kCornersId = 1002;
constexpr int kCornersHeight = 104;

} // namespace

PaintInspector::PaintInspector(Document& document)
    : m_document(document)
    , m_kind(new Switch(kTextFill, {kTextFillNone, kTextFillSolid, kTextFillGradient, kTextFillCorners}))
    , m_gradient(new GradientInspector(document))
    , m_corners(new CKvQuadGradCtrl)
{
    auto* kind = new QHBoxLayout;
    kind->addWidget(FieldLabel(kTextFill, *m_kind));
    kind->addWidget(m_kind, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(kind);
    column->addWidget(m_gradient); // in the order in which Tab walks them
    BuildCorners();
    column->addWidget(m_corners);
    column->addStretch();
    connect(m_kind, &Switch::Chosen, this, &PaintInspector::ChooseKind);
    connect(&document, &Document::ProjectChanged, this, &PaintInspector::ShowProject);
    connect(&document, &Document::SelectionChanged, this, &PaintInspector::ShowProject);
    ShowProject();
}

void PaintInspector::BuildCorners()
{
    m_corners->Create(WS_CHILD | WS_TABSTOP, this, kCornersId);
    m_corners->setFixedHeight(kCornersHeight);
    InEachLanguage(*m_corners, [this] { m_corners->setAccessibleName(Text(kTextCorners)); });
    connect(m_corners, &CKvQuadGradCtrl::CornerSelected, this,
            [this](int corner) { m_document.Select(m_document.Selection().WithCorner(corner)); });
    connect(m_corners, &CKvQuadGradCtrl::CornersChanged, this, &PaintInspector::TakeCorners);
}

void PaintInspector::ChooseKind(int kind)
{
    const ColourTarget target = m_document.Selection().target;
    const UINT step = target == ColourTarget::Text ? kStepTextFill : kStepBackgroundFill;
    m_document.Edit(EditKind::Single, step, [&](Project& project) {
        if (Paint* paint = PaintOf(project, target))
            paint->kind = static_cast<PaintKind>(kind);
    });
}

// Exchanged, turned, pasted or dropped: the control has done it.
void PaintInspector::TakeCorners()
{
    const ColourTarget target = m_document.Selection().target;
    m_document.Edit(EditKind::Single, kStepCorners, [&](Project& project) {
        if (Paint* paint = PaintOf(project, target))
            m_corners->GetData(paint->corners.data());
    });
}

void PaintInspector::ShowProject()
{
    const ColourSelection& selection = m_document.Selection();
    const Paint* const paint = PaintOf(m_document.Current(), selection.target);
    if (paint == nullptr)
        return;
    m_kind->Button(static_cast<int>(PaintKind::None))
        .setVisible(selection.target == ColourTarget::Background);
    m_kind->Check(static_cast<int>(paint->kind));
    m_gradient->setVisible(paint->kind == PaintKind::Gradient);
    m_corners->setVisible(paint->kind == PaintKind::FourCorner);
    m_corners->SetData(paint->corners.data());
    m_corners->SetSelectedCorner(selection.Corner());
}

} // namespace titler
