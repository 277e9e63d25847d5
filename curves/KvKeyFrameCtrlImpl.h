// The keyframe strip's private part: its four buttons.
#pragma once

#include "KvButtons.h"
#include "KvKeyFrameCtrl.h"
#include "curves/KeyFrameButtons.h"
#include "platform/NamedAccess.h"

#include <QPointer>

#include <array>
#include <memory>

struct CKvKeyFrameCtrl::Impl
{
    /// What `Create` begins with.
    struct Preset
    {
        bool animated = false;
        bool hasKey = true;
        bool previousEnabled = true;
        bool nextEnabled = true;
    };

    struct Record
    {
        UINT state = 0; ///< of a toggle: checked
        CKvBitmapButton* button = nullptr;
    };

    explicit Impl(CKvKeyFrameCtrl& owner);

    bool HasButtons() const { return records[kv::keyframe::kToggle].button != nullptr; }
    void CreateButton(std::size_t place);
    void ApplyPreset();
    void Turn(bool toVertical);
    /// Unless the host has set limits of its own.
    void FixThickness();
    /// The largest thickness, the strip's own or a host's.
    int Most() const;
    void SetMost(int thickness);
    bool IsEnabled(std::size_t place) const { return records[place].button->isEnabledTo(&strip); }
    const wchar_t* ImageOf(std::size_t place) const;
    void ShowState(std::size_t place);
    void SetState(std::size_t place, BOOL check);
    int EnableButton(std::size_t place, BOOL enable);
    bool IsUsable(std::size_t place) const;
    /// The nearest usable button before (step -1) or after (1) a place; the place itself when there is none.
    std::size_t UsableFrom(std::size_t place, int step) const;
    /// A usable button other than that one, where Space does the least harm; the toggle when there is none.
    std::size_t Instead(std::size_t place) const;
    /// The buttons are made later than what a form has behind the strip, and stand before it all the same.
    void OrderTabs();
    /// Tab finds this button from now on.
    void MakeCurrent(std::size_t place);
    /// Moves the focus, if it is there, and the stop for Tab off a button that is about to vanish or to be
    /// disabled.
    void Leave(std::size_t place, std::size_t next);
    /// Whether the strip itself was enabled or disabled since the last call.
    bool OwnStateChanged();
    /// Tells `OnEnable` when it was; the strip may be gone then.
    void HearOwnState();
    void WatchParent();

    CKvKeyFrameCtrl& strip;
    kv::NamedAccess access;
    std::array<Record, kv::keyframe::kButtonCount> records;
    SKvGuiBasicSettings* settings = nullptr;
    bool vertical = false;
    // The largest thickness that was set last: another one is the host's, and stays.
    int mostThickness = QWIDGETSIZE_MAX;
    Preset preset;
    bool enabled = true; ///< the strip itself, whatever its ancestors are
    QPointer<QWidget> watchedParent;
    std::size_t current = kv::keyframe::kToggle;
};
