#include "title/AnimationInspector.h"

#include "KvKeyFrameCtrl.h"
#include "KvParamBezierCtrlDlg.h"
#include "edit/Document.h"
#include "edit/PropertyText.h"
#include "time/Transport.h"
#include "time/TransportBar.h"
#include "title/CanvasView.h"
#include "window/DialogPlace.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QScreen>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

#include <numeric>
#include <string>
#include <utility>

namespace titler {
namespace {

constexpr UINT kFirstStripId = 1100; // the strips' numbers follow the properties
constexpr QSize kStrip(56, 14);
constexpr int kEaseIcon = 14;
constexpr int kCaption = 36; // what a window manager puts over a dialog, or less

// The dialog beside the picture that it changes, with what helps to time a title: a mark for each frame, the
// speed, and the curve as it was.
class EaseDialog : public CKvParamBezierCtrlDlg
{
public:
    EaseDialog(EaseOperator& ease, const std::wstring& property, const CanvasView& canvas, QWidget* parent)
        : CKvParamBezierCtrlDlg(&ease, EaseOperator::kObject, property.c_str(), parent)
        , m_canvas(canvas)
    {
    }

    BOOL OnInitDialog() override
    {
        const BOOL result = CKvParamBezierCtrlDlg::OnInitDialog();
        if (CKvParamBezierWnd* curve = GetCurveWnd()) {
            curve->SetFrameLength(1);
            curve->ShowSpeed(1);
            curve->ShowInitialCurve(1);
        }
        return result;
    }

    void setVisible(bool visible) override
    {
        if (visible && !isVisible())
            Place();
        CKvParamBezierCtrlDlg::setVisible(visible);
    }

private:
    void Place()
    {
        const QRect frame = m_canvas.FrameRect().toAlignedRect().intersected(m_canvas.viewport()->rect());
        const QRect seen(m_canvas.viewport()->mapToGlobal(frame.topLeft()), frame.size());
        move(PlaceBeside(seen, size() + QSize(0, kCaption), m_canvas.screen()->availableGeometry()));
    }

    const CanvasView& m_canvas;
};

} // namespace

AnimationInspector::AnimationInspector(Document& document, Transport& transport, const CanvasView& canvas)
    : m_document(document)
    , m_transport(transport)
    , m_canvas(canvas)
    , m_operator(document, transport)
    , m_frame(transport.Frame())
{
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    for (int i = 0; i < kProperties; ++i)
        BuildRow(static_cast<Property>(i), *grid);
    auto* column = new QVBoxLayout(this);
    column->addWidget(Heading(kTextAnimation));
    column->addLayout(grid);

    // The strips' clicks come to their parent.
    m_messages = std::make_unique<KvMessageSink>(
        this, [this](UINT message, WPARAM, LPARAM lParam) { return OnMessage(message, lParam); });
    connect(&document, &Document::ProjectClosing, this, &AnimationInspector::ShowProject);
    connect(&document, &Document::ProjectChanged, this, &AnimationInspector::ShowProject);
    connect(&transport, &Transport::FrameChanged, this, &AnimationInspector::OnFrameChanged);
    InEachLanguage(*this, [this] { ShowProject(); });
}

AnimationInspector::~AnimationInspector() = default;

// In the order in which Tab walks them.
void AnimationInspector::BuildRow(Property property, QGridLayout& grid)
{
    BuildValue(property);
    BuildStrip(property);
    BuildEase(property);
    const Row& row = RowOf(property);
    const int line = static_cast<int>(property);
    grid.addWidget(RowLabel(LookOf(property).labelId, *row.value), line, 0);
    grid.addWidget(row.value, line, 1);
    grid.addWidget(row.strip, line, 2);
    grid.addWidget(row.ease, line, 3);
}

void AnimationInspector::BuildValue(Property property)
{
    const PropertyTraits& traits = TraitsOf(property);
    const PropertyLook& look = LookOf(property);
    auto* field = new QDoubleSpinBox(this);
    RowOf(property).value = field;
    field->setObjectName(QLatin1String(traits.name));
    NameField(*field, look.labelId);
    field->setDecimals(look.decimals);
    field->setRange(traits.least * look.factor, traits.most * look.factor);
    field->setSingleStep(look.step);
    InEachLanguage(*field, [field, property, &look] {
        field->setAccessibleName(PropertyName(property));
        field->setSuffix(Text(look.unitId));
    });
    field->setKeyboardTracking(false);
    JoinProject(*field);
    connect(field, &QDoubleSpinBox::valueChanged, this,
            [this, property, &look](double shown) { SetValue(property, shown / look.factor); });
    // What is typed is meant for the frame that the user sees.
    connect(field->findChild<QLineEdit*>(), &QLineEdit::textEdited, &m_transport, &Transport::Pause);
}

void AnimationInspector::BuildStrip(Property property)
{
    auto* strip = new CKvKeyFrameCtrl;
    RowOf(property).strip = strip;
    strip->resize(kStrip);
    strip->Create(kFirstStripId + static_cast<UINT>(property), this, WS_CHILD | WS_VISIBLE | WS_TABSTOP);
    strip->setFixedSize(kStrip);
    InEachLanguage(
        *strip, [strip, property] { strip->setAccessibleName(Text(kTextKeys, {PropertyName(property)})); });
}

void AnimationInspector::BuildEase(Property property)
{
    auto* button = new QToolButton(this);
    RowOf(property).ease = button;
    button->setObjectName(QStringLiteral("ease-") + QLatin1String(TraitsOf(property).name));
    button->setProperty("role", "small");
    button->setIcon(SkinIcon(L"titler_ease"));
    button->setIconSize({kEaseIcon, kEaseIcon});
    button->setFocusPolicy(Qt::StrongFocus);
    InEachLanguage(*button, [button, property] {
        button->setAccessibleName(Text(kTextEase, {PropertyName(property)}));
    });
    connect(button, &QToolButton::clicked, this, [this, property] { OpenEaseDialog(property); });
}

std::optional<LRESULT> AnimationInspector::OnMessage(UINT message, LPARAM lParam)
{
    if (message != WM_NOTIFY)
        return std::nullopt;
    const auto& header = *reinterpret_cast<const KvNotifyHeader*>(lParam);
    for (int i = 0; i < kProperties; ++i) {
        const auto property = static_cast<Property>(i);
        if (header.hwndFrom != RowOf(property).strip)
            continue;
        OnStripClicked(property, header.code);
        return 0;
    }
    return std::nullopt;
}

void AnimationInspector::OnStripClicked(Property property, UINT code)
{
    m_transport.Pause();
    const Animated& animated = m_document.Current().title[property];
    switch (code) {
    case kKvKeyFrameToggle: {
        const bool on = RowOf(property).strip->GetToggleCheck() != 0;
        m_document.Edit(
            EditKind::Single, PropertyStep(on ? kStepAnimate : kStepStopAnimating, property),
            [&](Project& project) { SetAnimated(project.title[property], property, m_frame, on); });
        break;
    }
    case kKvKeyFramePrevious:
        GoTo(PreviousKeyFrame(animated, m_frame));
        break;
    case kKvKeyFrameOperator:
        ToggleKey(property);
        break;
    case kKvKeyFrameNext:
        GoTo(NextKeyFrame(animated, m_frame));
        break;
    default:
        break;
    }
    ShowRow(property); // the toggles have flipped, whether there was something to do or not
}

void AnimationInspector::GoTo(const std::optional<int>& frame)
{
    if (frame && *frame <= m_transport.LastFrame())
        m_transport.Seek(*frame);
}

void AnimationInspector::ToggleKey(Property property)
{
    if (!HasRoom(property))
        return;
    const int key = KeyAt(m_document.Current().title[property], m_frame);
    m_document.Edit(EditKind::Single, PropertyStep(key < 0 ? kStepAddKey : kStepRemoveKey, property),
                    [&](Project& project) {
                        Animated& animated = project.title[property];
                        key < 0 ? AddKey(animated, property, m_frame) : RemoveKey(animated, key);
                    });
}

// Whether there is a key at the current frame or can be one; else tells the user.
bool AnimationInspector::HasRoom(Property property)
{
    const Animated& animated = m_document.Current().title[property];
    if (animated.keys.size() < kMostKeys || KeyAt(animated, m_frame) >= 0)
        return true;
    emit Refused(Text(kTextTooManyKeys, {QLocale().toString(kMostKeys), PropertyWord(property)}));
    return false;
}

void AnimationInspector::SetValue(Property property, double value)
{
    m_transport.Pause();
    if (!HasRoom(property)) {
        ShowRow(property);
        return;
    }
    if (std::exchange(m_editedFrame, m_frame) != m_frame)
        m_document.EndSession(); // another key is another step
    m_document.Edit(EditKindOf(property), PropertyStep(kStepValue, property),
                    [&](Project& project) { SetValueAt(project.title[property], property, m_frame, value); });
    ShowRow(property);
}

// A number that is still being typed belongs to the frame at which it was.
void AnimationInspector::OnFrameChanged(int frame)
{
    for (const Row& row : m_rows)
        row.value->interpretText();
    m_frame = frame;
    ShowProject();
}

void AnimationInspector::ShowProject()
{
    for (int i = 0; i < kProperties; ++i)
        ShowRow(static_cast<Property>(i));
}

void AnimationInspector::ShowRow(Property property)
{
    const Row& row = RowOf(property);
    const Animated& animated = m_document.Current().title[property];
    const QSignalBlocker blocker(row.value);
    row.value->setValue(ValueAt(animated, property, m_frame) * LookOf(property).factor);
    // A key behind the project's end cannot be gone to.
    const auto isElsewhere = [&](const std::optional<int>& frame) {
        return frame && *frame != m_frame && *frame <= m_transport.LastFrame();
    };
    row.strip->SetToggleCheck(animated.IsAnimated());
    row.strip->SetKeyOperatorCheck(KeyAt(animated, m_frame) >= 0);
    row.strip->EnablePreviousKeyCtrl(isElsewhere(PreviousKeyFrame(animated, m_frame)));
    row.strip->EnableNextKeyCtrl(isElsewhere(NextKeyFrame(animated, m_frame)));
    const bool hasSegment = animated.keys.size() > 1;
    row.ease->setEnabled(hasSegment);
    row.ease->setToolTip(Text(hasSegment ? kTextEaseTip : kTextNoEaseTip));
}

// At a key, and outside the keys, every ease looks the same.
void AnimationInspector::GoIntoSegment(Property property)
{
    const Animated& animated = m_document.Current().title[property];
    const int frame = m_transport.Frame();
    const int index = SegmentAt(animated, frame);
    if (index < 0)
        return;
    const int start = animated.keys[index].frame;
    const int end = animated.keys[index + 1].frame;
    const bool isWithin = frame > start && frame < end;
    if (!isWithin && end - start > 1 && start < m_transport.LastFrame())
        m_transport.Seek(std::midpoint(start, end));
}

void AnimationInspector::OpenEaseDialog(Property property)
{
    m_transport.Pause();
    const int before = m_transport.Frame();
    GoIntoSegment(property);
    const std::wstring name = QString::fromLatin1(TraitsOf(property).name).toStdWString();
    EaseDialog dialog(m_operator, name, m_canvas, window());
    if (dialog.DoModal() != IDOK)
        m_transport.Seek(before);
}

} // namespace titler
