#include "title/GradientInspector.h"

#include "KvGradientCtrl.h"
#include "edit/Document.h"
#include "window/Fields.h"
#include "window/Language.h"
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

} // namespace

GradientInspector::GradientInspector(Document& document)
    : m_document(document)
    , m_control(new CKvGradientCtrl)
    , m_position(new QDoubleSpinBox)
    , m_angle(new QDoubleSpinBox)
{
    BuildControl();
    BuildFields();
    connect(&document, &Document::ProjectChanged, this, &GradientInspector::ShowProject);
    connect(&document, &Document::SelectionChanged, this, &GradientInspector::ShowProject);
    InEachLanguage(*this, [this] { ShowProject(); });
}

GradientInspector::~GradientInspector() = default;

void GradientInspector::BuildControl()
{
    m_control->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, this, kGradientId);
    m_control->SetActive(0); // the accent is for the focus here
    m_control->setFixedHeight(kControlHeight);
    m_control->setMinimumWidth(220);
    InEachLanguage(*m_control, [this] { m_control->setAccessibleName(Text(kTextGradient)); });
    const GradientStops defaults = NewProject().title.fill.stops;
    m_control->SetDefaultData(static_cast<int>(defaults.size()), defaults.data());

    // The control's messages come to its parent: what changed, and in which phase of a drag.
    m_messages = std::make_unique<KvMessageSink>(
        this, [this](UINT message, WPARAM, LPARAM lParam) { return OnMessage(message, lParam); });
    // The typed signal tells the same; here it keeps the position up to date.
    connect(m_control, &CKvGradientCtrl::GradientChanged, this, &GradientInspector::ShowPosition);
}

void GradientInspector::BuildFields()
{
    PrepareNumber(*m_position, kTextPosition, 0, 100, kTextPercent);
    m_position->setDecimals(2);
    m_position->setObjectName(QStringLiteral("position"));
    PrepareNumber(*m_angle, kTextAngle, -360, 360, kTextDegrees);
    m_angle->setSingleStep(15);
    m_angle->setObjectName(QStringLiteral("angle"));
    connect(m_position, &QDoubleSpinBox::valueChanged, this,
            [this](double percent) { MoveStop(percent / 100); });
    connect(m_angle, &QDoubleSpinBox::valueChanged, this, [this](double degrees) {
        const ColourTarget target = m_document.Selection().target;
        m_document.Edit(EditKind::GradientAngle, kStepAngle, [&](Project& project) {
            if (Paint* paint = PaintOf(project, target))
                paint->angle = degrees;
        });
    });

    auto* fields = new QHBoxLayout;
    fields->addWidget(RowLabel(kTextPosition, *m_position));
    fields->addWidget(m_position, 1);
    fields->addSpacing(8);
    fields->addWidget(FieldLabel(kTextAngle, *m_angle));
    fields->addWidget(m_angle, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_control);
    column->addLayout(fields);
    setFocusProxy(m_control);
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
        m_document.Select(m_document.Selection().WithStop(m_control->GetSelectedKey()));
        break;
    case kKvGradientStopsEdited:
        if (record.phase == kKvPhaseBegin)
            m_run = m_document.BeginRun(kStepGradient);
        if (record.phase == kKvPhaseEnd)
            m_document.EndRun();
        else
            TakeStops();
        break;
    default: // kKvGradientDataSet: we set the stops ourselves, in an undo for example
        break;
    }
}

void GradientInspector::TakeStops()
{
    const ColourTarget target = m_document.Selection().target;
    m_document.UpdateRun(
        [&](Project& project) {
            if (Paint* paint = PaintOf(project, target))
                SetStops(*paint, StopsOf(*m_control));
        },
        m_document.Selection().WithStop(m_control->GetSelectedKey()));
}

const Paint* GradientInspector::Shown() const
{
    return PaintOf(m_document.Current(), m_document.Selection().target);
}

void GradientInspector::ShowProject()
{
    const Paint* const paint = Shown();
    if (paint == nullptr)
        return;
    const QSignalBlocker angle(m_angle);
    m_angle->setValue(paint->angle);
    // In its own run the control is ahead of us; to write its stops back would end the drag.
    if (!m_document.IsInRun(m_run)) {
        if (!Shows(*m_control, paint->stops))
            m_control->SetData(static_cast<int>(paint->stops.size()), paint->stops.data());
        if (m_control->GetSelectedKey() != m_document.Selection().Stop())
            m_control->SetSelectedKey(m_document.Selection().Stop());
    }
    ShowPosition();
}

void GradientInspector::ShowPosition()
{
    int count = 0;
    SKvCGGradientKey* keys = nullptr;
    m_control->GetData(count, &keys);
    const int selected = m_control->GetSelectedKey();
    const bool isStop = selected >= 0 && selected < count;
    m_position->setEnabled(isStop);
    if (!isStop)
        return;
    const QSignalBlocker blocker(m_position);
    m_position->setValue(static_cast<double>(keys[selected].position) * 100);
    m_position->setAccessibleDescription(
        Text(kTextStopOfMany, {QString::number(selected + 1), QString::number(count)}));
}

void GradientInspector::MoveStop(double position)
{
    const ColourSelection selection = m_document.Selection();
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
        EditKind::StopPosition, kStepPosition,
        [&](Project& project) {
            if (Paint* paint = PaintOf(project, selection.target))
                SetStops(*paint, stops);
        },
        selection.WithStop(index));
}

} // namespace titler
