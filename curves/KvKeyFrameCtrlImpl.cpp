#include "curves/KvKeyFrameCtrlImpl.h"

#include "KvGuiRes.h"
#include "core/TextTables.h"
#include "platform/OwnSizes.h"

#include <utility>

using namespace kv::keyframe;

namespace {

constexpr std::uint32_t kTextKeyFrames = 20047;

} // namespace

CKvKeyFrameCtrl::Impl::Impl(CKvKeyFrameCtrl& owner)
    : strip(owner)
    , access(owner, QAccessible::Grouping, [] { return KvToQString(kv::LoadText(kTextKeyFrames)); })
{
}

void CKvKeyFrameCtrl::Impl::CreateButton(std::size_t place)
{
    const ButtonKind& kind = kButtons[place];
    Record& record = records[place];
    record.state = 1;
    record.button = new CKvBitmapButton; // the strip owns it
    kv::KeepOwnSizes(*record.button);
    record.button->CreateButton(kind.id, &strip, ButtonRect(strip.GetClientRect(), place, vertical),
                                WS_CHILD | WS_VISIBLE, ImageOf(place), KvGuiRes::LoadTip(kind.id).c_str());
    record.button->setCheckable(kind.uncheckedImage != nullptr);
    record.button->SetBackgroundKey(kBackgroundKey);
    record.button->SetGuiBasicSettings(settings);
    record.button->installEventFilter(&strip);
}

void CKvKeyFrameCtrl::Impl::ApplyPreset()
{
    strip.SetToggleCheck(preset.animated ? 1 : 0);
    strip.SetKeyOperatorCheck(preset.hasKey ? 1 : 0);
    strip.EnablePreviousKeyCtrl(preset.previousEnabled ? 1 : 0);
    strip.EnableNextKeyCtrl(preset.nextEnabled ? 1 : 0);
}

void CKvKeyFrameCtrl::Impl::Turn(bool toVertical)
{
    if (Most() == mostThickness)
        SetMost(QWIDGETSIZE_MAX);
    const QSize size = strip.size();
    const QSize least = strip.minimumSize();
    const QSize most = strip.maximumSize();
    strip.setMinimumSize(0, 0);
    strip.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    vertical = toVertical;
    // The host's: a limit of the length stays one of the length.
    strip.setMaximumSize(most.transposed());
    strip.setMinimumSize(least.transposed());
    strip.resize(size.transposed());
    strip.CKvKeyFrameCtrl::OnSize(strip.width(), strip.height());
    for (std::size_t place = 0; place < kButtonCount; ++place)
        ShowState(place);
    strip.updateGeometry();
}

int CKvKeyFrameCtrl::Impl::Most() const
{
    return vertical ? strip.maximumWidth() : strip.maximumHeight();
}

void CKvKeyFrameCtrl::Impl::SetMost(int thickness)
{
    mostThickness = thickness;
    vertical ? strip.setMaximumWidth(thickness) : strip.setMaximumHeight(thickness);
}

// By a largest thickness alone, as a smallest one would stand in the way of a host's smaller largest one.
void CKvKeyFrameCtrl::Impl::FixThickness()
{
    const int least = vertical ? strip.minimumWidth() : strip.minimumHeight();
    if (Most() == mostThickness)
        SetMost(least > kThickness ? QWIDGETSIZE_MAX : kThickness);
    const QSize size = vertical ? QSize(kThickness, strip.height()) : QSize(strip.width(), kThickness);
    strip.resize(size); // as far as a host's limits let it
}

const wchar_t* CKvKeyFrameCtrl::Impl::ImageOf(std::size_t place) const
{
    const ButtonKind& kind = kButtons[place];
    if (kind.uncheckedImage && !records[place].state)
        return kind.uncheckedImage;
    return vertical && kind.verticalImage ? kind.verticalImage : kind.image;
}

void CKvKeyFrameCtrl::Impl::ShowState(std::size_t place)
{
    CKvBitmapButton& button = *records[place].button;
    button.UpdateBitmap(ImageOf(place));
    if (button.isCheckable())
        button.setChecked(records[place].state != 0);
}

void CKvKeyFrameCtrl::Impl::SetState(std::size_t place, BOOL check)
{
    records[place].state = check ? 1 : 0;
    ShowState(place);
}

int CKvKeyFrameCtrl::Impl::EnableButton(std::size_t place, BOOL enable)
{
    if (!HasButtons())
        return 0;
    if (!enable)
        Leave(place, Instead(place));
    records[place].button->setEnabled(enable != 0);
    return 1;
}

bool CKvKeyFrameCtrl::Impl::IsUsable(std::size_t place) const
{
    const CKvBitmapButton* button = records[place].button;
    return button && !button->isHidden() && button->isEnabledTo(&strip);
}

std::size_t CKvKeyFrameCtrl::Impl::UsableFrom(std::size_t place, int step) const
{
    for (std::size_t next = place + static_cast<std::size_t>(step); next < kButtonCount;
         next += static_cast<std::size_t>(step)) {
        if (IsUsable(next))
            return next;
    }
    return place;
}

void CKvKeyFrameCtrl::Impl::MakeCurrent(std::size_t place)
{
    current = place;
    for (std::size_t other = 0; other < kButtonCount; ++other)
        records[other].button->setFocusPolicy(other == place ? Qt::StrongFocus : Qt::ClickFocus);
    strip.setFocusProxy(records[place].button);
}

void CKvKeyFrameCtrl::Impl::OrderTabs()
{
    QWidget* last = &strip;
    for (const Record& record : records) {
        QWidget::setTabOrder(last, record.button);
        last = record.button;
    }
}

std::size_t CKvKeyFrameCtrl::Impl::Instead(std::size_t place) const
{
    // Whoever steps through the keys by Space is not to remove one, or the whole animation, at the end.
    for (const std::size_t next : {kPrevious, kNext, kOperator}) {
        if (next != place && IsUsable(next))
            return next;
    }
    return kToggle;
}

void CKvKeyFrameCtrl::Impl::Leave(std::size_t place, std::size_t next)
{
    const CKvBitmapButton* const left = records[place].button;
    if (IsUsable(next) && strip.window()->focusWidget() == left)
        records[next].button->setFocus(left->IsFocusShown() ? Qt::OtherFocusReason : Qt::MouseFocusReason);
    if (current == place)
        MakeCurrent(next);
}

bool CKvKeyFrameCtrl::Impl::OwnStateChanged()
{
    const bool now = !strip.testAttribute(Qt::WA_ForceDisabled);
    return std::exchange(enabled, now) != now;
}

void CKvKeyFrameCtrl::Impl::HearOwnState()
{
    if (OwnStateChanged())
        strip.OnEnable(enabled ? 1 : 0);
}

// While an ancestor is disabled the toolkit tells the strip nothing; it tells the parent when that ends.
void CKvKeyFrameCtrl::Impl::WatchParent()
{
    if (watchedParent)
        watchedParent->removeEventFilter(&strip);
    watchedParent = strip.parentWidget();
    if (watchedParent)
        watchedParent->installEventFilter(&strip);
}
