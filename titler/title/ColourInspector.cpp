#include "title/ColourInspector.h"

#include "KvColorPanel.h"
#include "KvSolidColorTemplate.h"
#include "edit/Document.h"
#include "title/EffectInspectors.h"
#include "title/PaintInspector.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Switch.h"
#include "window/Texts.h"

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

namespace titler {
namespace {

constexpr UINT kPanelId = 1003;

// The name of a step that changes the selected colour.
UINT StepOf(const Project& project, ColourTarget target)
{
    switch (target) {
    case ColourTarget::Outline:
        return kStepOutlineColour;
    case ColourTarget::Shadow:
        return kStepShadowColour;
    default:
        break;
    }
    switch (PaintOf(project, target)->kind) {
    case PaintKind::Gradient:
        return kStepColour;
    case PaintKind::FourCorner:
        return kStepCornerColour;
    default:
        return target == ColourTarget::Text ? kStepTextColour : kStepBackgroundColour;
    }
}

} // namespace

ColourInspector::ColourInspector(Document& document, bool hsb)
    : m_document(document)
    , m_target(new Switch(kTextTarget,
                          {kTextTargetText, kTextTargetBackground, kTextTargetOutline, kTextTargetShadow}))
    , m_paint(new PaintInspector(document))
    , m_outline(new OutlineInspector(document))
    , m_shadow(new ShadowInspector(document))
    , m_panel(new CKvColorPanel)
{
    auto* column = new QVBoxLayout(this);
    column->addWidget(Heading(kTextColours));
    for (QWidget* part : std::initializer_list<QWidget*>{m_target, m_paint, m_outline, m_shadow})
        column->addWidget(part); // in the order in which Tab walks them, the panel last
    m_paint->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    BuildPanel(hsb);
    column->addWidget(m_panel);
    column->addStretch(); // takes what a part leaves that is hidden, until the section has shrunk
    connect(m_target, &Switch::Chosen, this, [this](int target) {
        m_document.Select(m_document.Selection().WithTarget(static_cast<ColourTarget>(target)));
    });
    connect(&document, &Document::ProjectChanged, this, &ColourInspector::ShowProject);
    connect(&document, &Document::SelectionChanged, this, &ColourInspector::ShowProject);
    ShowProject();
}

ColourInspector::~ColourInspector() = default;

void ColourInspector::BuildPanel(bool hsb)
{
    m_panel->SetInitialMode(hsb ? 1 : 0);
    m_panel->Create(this);
    m_panel->SetDlgCtrlID(kPanelId);
    InEachLanguage(*m_panel, [this] { m_panel->setAccessibleName(Text(kTextColours)); });
    m_panel->show();
    for (QWidget* child : m_panel->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        JoinProject(*child);
    // The panel's messages come to its parent: the colour, and in which phase of a drag.
    m_messages = std::make_unique<KvMessageSink>(this, [this](UINT message, WPARAM wParam, LPARAM lParam) {
        return OnMessage(message, wParam, lParam);
    });
}

bool ColourInspector::IsHsb() const
{
    return m_panel->IsHSBMode() != 0;
}

std::optional<LRESULT> ColourInspector::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_NOTIFY || wParam != kPanelId)
        return std::nullopt;
    const auto& record = *reinterpret_cast<const KvColorNotifyRecord*>(lParam);
    if (record.hdr.hwndFrom != m_panel || record.hdr.code != kKvColorNotifyCode)
        return std::nullopt;
    OnPanelNotify(record.phase, *static_cast<const DWORD*>(record.data));
    return 0;
}

// A run that an undo or another edit has ended goes on as a new one with the panel's next change; one during
// which another colour was selected does not.
void ColourInspector::OnPanelNotify(int phase, DWORD colour)
{
    const ColourSelection selection = m_document.Selection();
    if (phase == kKvPhaseBegin)
        m_gesture = {selection, colour};
    if (m_gesture.selection != selection) {
        ShowColour();
        return;
    }
    m_gesture.Count(phase, colour);
    if (phase != kKvPhaseEnd && !m_document.IsInRun(m_run))
        m_run = m_document.BeginRun(StepOf(m_document.Current(), selection.target));
    // The end of a typing may still change the number.
    if (m_document.IsInRun(m_run) && SelectedColour(m_document.Current(), selection) != colour)
        m_document.UpdateRun([&](Project& project) { SetSelectedColour(project, selection, colour); });
    if (phase != kKvPhaseEnd)
        return;
    if (m_document.IsInRun(m_run))
        m_document.EndRun(IsStep() ? EditKind::ColourStep : EditKind::Single);
    ShowColour();
}

// A held arrow key is one step of undo, as it is in a number; swatches are tried one by one.
bool ColourInspector::IsStep() const
{
    return m_gesture.isOneShot &&
           qobject_cast<CKvSolidColorTemplate*>(QApplication::focusWidget()) == nullptr;
}

// Keys and wheel notches tell all phases at once, with one colour; a press and its release have no phase
// between them.
void ColourInspector::Gesture::Count(int phase, DWORD colour)
{
    if (phase == kKvPhaseContinue)
        isOneShot = ++continues == 1 && colour == first;
}

void ColourInspector::ShowProject()
{
    const ColourTarget target = m_document.Selection().target;
    m_target->Check(static_cast<int>(target));
    m_paint->setVisible(PaintOf(m_document.Current(), target) != nullptr);
    m_outline->setVisible(target == ColourTarget::Outline);
    m_shadow->setVisible(target == ColourTarget::Shadow);
    ShowColour();
}

void ColourInspector::ShowColour()
{
    const Project& project = m_document.Current();
    const ColourSelection& selection = m_document.Selection();
    if (const std::optional<DWORD> colour = ColourAtRest(project, selection))
        m_panel->SetColor(*colour);
    m_panel->setEnabled(SelectedColour(project, selection).has_value());
}

} // namespace titler
