#include "title/GradientInspector.h"

#include "KvGradientCtrl.h"
#include "edit/Document.h"
#include "title/StopInspector.h"
#include "window/Fields.h"
#include "window/Texts.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <cstring>

namespace titler {
namespace {

constexpr DWORD kGradientId = 1001;
constexpr int kControlHeight = 76;

GradientStops StopsOf(CKvGradientCtrl& control)
{
    int count = 0;
    SKvCGGradientKey* keys = nullptr;
    control.GetData(count, &keys);
    return NormalisedStops(GradientStops(keys, keys + count));
}

bool Shows(CKvGradientCtrl& control, const GradientStops& stops)
{
    int count = 0;
    SKvCGGradientKey* keys = nullptr;
    control.GetData(count, &keys);
    return static_cast<std::size_t>(count) == stops.size() &&
           std::memcmp(keys, stops.data(), stops.size() * sizeof(SKvCGGradientKey)) == 0;
}

QDoubleSpinBox* NumberField(UINT nameId, double most, double step, UINT unitId)
{
    auto* field = new QDoubleSpinBox;
    NameField(*field, nameId);
    field->setRange(-most, most);
    field->setDecimals(1);
    field->setSingleStep(step);
    field->setSuffix(Text(unitId));
    field->setKeyboardTracking(false);
    JoinProject(*field);
    return field;
}

} // namespace

GradientInspector::GradientInspector(Document& document)
    : m_document(document)
    , m_control(new CKvGradientCtrl)
    , m_stop(new StopInspector)
    , m_angle(NumberField(kTextAngle, 360, 15, kTextDegrees))
{
    BuildControl();
    BuildFields();
    ConnectStop();
    connect(&document, &Document::ProjectChanged, this, &GradientInspector::ShowProject);
    connect(&document, &Document::StopSelected, this, &GradientInspector::ShowProject);
    ShowProject();
}

GradientInspector::~GradientInspector() = default;

void GradientInspector::BuildControl()
{
    m_control->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, this, kGradientId);
    m_control->setFixedHeight(kControlHeight);
    m_control->setMinimumWidth(220);
    m_control->setAccessibleName(Text(kTextGradient));
    const GradientStops defaults = NewProject().title.fill.stops;
    m_control->SetDefaultData(static_cast<int>(defaults.size()), defaults.data());

    // The control's messages come to its parent: what changed, and in which phase of a drag.
    m_messages = std::make_unique<KvMessageSink>(
        this, [this](UINT message, WPARAM, LPARAM lParam) { return OnMessage(message, lParam); });
    // The typed signal tells the same; here it keeps the fields below the control up to date.
    connect(m_control, &CKvGradientCtrl::GradientChanged, this, &GradientInspector::ShowSelectedStop);
}

void GradientInspector::BuildFields()
{
    auto* direction = new QHBoxLayout;
    direction->addWidget(RowLabel(kTextAngle, *m_angle));
    direction->addWidget(m_angle, 1);
    direction->addStretch(1);
    connect(m_angle, &QDoubleSpinBox::valueChanged, this, [this](double degrees) {
        m_document.Edit(EditKind::GradientAngle, Text(kStepAngle),
                        [&](Project& project) { project.title.fill.angle = degrees; });
    });

    auto* column = new QVBoxLayout(this);
    column->addWidget(Heading(kTextGradient));
    column->addWidget(m_control);
    column->addWidget(m_stop);
    column->addLayout(direction);
    setFocusProxy(m_control);
}

void GradientInspector::ConnectStop()
{
    connect(m_stop, &StopInspector::ColourEdited, this, &GradientInspector::SetStopColour);
    connect(m_stop, &StopInspector::ColourEditEnded, this, [this] { m_document.EndSession(); });
    connect(m_stop, &StopInspector::PositionEdited, this, &GradientInspector::MoveStop);
    connect(m_stop, &StopInspector::ColourDialogOpened, this,
            [this] { m_document.BeginRun(Text(kStepColour)); });
    connect(m_stop, &StopInspector::ColourTried, this, [this](DWORD colour) {
        m_control->SetColor(colour);
        m_document.UpdateRun([&](Project& project) { SetStops(project.title.fill, StopsOf(*m_control)); },
                             m_control->GetSelectedKey());
    });
    connect(m_stop, &StopInspector::ColourDialogClosed, this,
            [this](bool keep) { keep ? m_document.EndRun() : m_document.CancelRun(); });
}

std::optional<LRESULT> GradientInspector::OnMessage(UINT message, LPARAM lParam)
{
    if (message != WM_NOTIFY)
        return std::nullopt;
    const auto& header = *reinterpret_cast<const KvNotifyHeader*>(lParam);
    if (header.hwndFrom != m_control || header.code != kKvGradientNotifyCode)
        return std::nullopt;
    OnGradientNotify(*reinterpret_cast<const GradientNotifyRecord*>(lParam));
    return 0;
}

void GradientInspector::OnGradientNotify(const GradientNotifyRecord& record)
{
    switch (record.hdr.idFrom) {
    case kKvGradientStopSelected:
        m_document.SelectStop(m_control->GetSelectedKey());
        break;
    case kKvGradientStopsEdited:
        if (record.phase == kKvPhaseBegin)
            m_document.BeginRun(Text(kStepGradient));
        if (record.phase == kKvPhaseEnd)
            m_document.EndRun();
        else
            m_document.UpdateRun([&](Project& project) { SetStops(project.title.fill, StopsOf(*m_control)); },
                                 m_control->GetSelectedKey());
        break;
    default: // kKvGradientDataSet: we set the stops ourselves, in an undo for example
        break;
    }
}

void GradientInspector::ShowProject()
{
    const Paint& fill = m_document.Current().title.fill;
    const QSignalBlocker angle(m_angle);
    m_angle->setValue(fill.angle);
    // In a run the control is ahead of us; to write its own stops back would end the drag.
    if (!m_document.IsInRun()) {
        if (!Shows(*m_control, fill.stops))
            m_control->SetData(static_cast<int>(fill.stops.size()), fill.stops.data());
        if (m_control->GetSelectedKey() != m_document.SelectedStop())
            m_control->SetSelectedKey(m_document.SelectedStop());
    }
    ShowSelectedStop();
}

void GradientInspector::ShowSelectedStop()
{
    int count = 0;
    SKvCGGradientKey* keys = nullptr;
    m_control->GetData(count, &keys);
    const int selected = m_control->GetSelectedKey();
    if (selected >= 0 && selected < count)
        m_stop->ShowStop(keys[selected], selected, count);
    else
        m_stop->ShowStop(std::nullopt, 0, count);
}

void GradientInspector::SetStopColour(DWORD colour)
{
    m_control->SetColor(colour);
    m_document.Edit(EditKind::StopColour, Text(kStepColour),
                    [&](Project& project) { SetStops(project.title.fill, StopsOf(*m_control)); });
}

void GradientInspector::MoveStop(double position)
{
    const int selected = m_control->GetSelectedKey();
    GradientStops stops = StopsOf(*m_control);
    if (selected < 0 || static_cast<std::size_t>(selected) >= stops.size())
        return;
    SKvCGGradientKey moved = stops[static_cast<std::size_t>(selected)];
    moved.position = static_cast<float>(position);
    stops.erase(stops.begin() + selected);
    const auto place = std::upper_bound(stops.begin(), stops.end(), moved.position,
                                        [](float value, const auto& stop) { return value < stop.position; });
    const auto index = static_cast<int>(place - stops.begin());
    stops.insert(place, moved);
    m_document.Edit(
        EditKind::StopPosition, Text(kStepPosition),
        [&](Project& project) { SetStops(project.title.fill, stops); }, index);
}

} // namespace titler
