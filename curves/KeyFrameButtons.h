// The table of the keyframe strip's buttons and where they stand.
#pragma once

#include "KvKeyFrameCtrl.h"

namespace kv::keyframe {

inline constexpr const wchar_t* kBackgroundKey = L"keKeyFrameBKColor"; ///< of the theme
inline constexpr int kThickness = 14;
inline constexpr int kButtonLength = 14;

// Places in the table of buttons, which is the order in which they stand.
enum : std::size_t
{
    kToggle,
    kPrevious,
    kOperator,
    kNext,
    kButtonCount,
};

struct ButtonKind
{
    UINT id; ///< also the number of its tool tip
    EKvKeyFrameCode code;
    const wchar_t* image;          ///< of a toggle: when checked
    const wchar_t* verticalImage;  ///< null where it is the same
    const wchar_t* uncheckedImage; ///< null for a button that does not toggle
};

inline constexpr ButtonKind kButtons[kButtonCount] = {
    {kKvKeyFrameToggleButton, kKvKeyFrameToggle, L"animation_chk", nullptr, L"animation_uck"},
    {kKvKeyFramePreviousButton, kKvKeyFramePrevious, L"prekey", L"prekey_verticle", nullptr},
    {kKvKeyFrameOperatorButton, kKvKeyFrameOperator, L"opkey_chk", nullptr, L"opkey_uck"},
    {kKvKeyFrameNextButton, kKvKeyFrameNext, L"nextkey", L"nextkey_verticle", nullptr},
};

// The buttons stand from the client origin on without gaps.
inline CRect ButtonRect(const CRect& client, std::size_t place, bool vertical)
{
    const int from = static_cast<int>(place) * kButtonLength;
    const int to = from + kButtonLength;
    return vertical ? CRect(client.left, client.top + from, client.right, client.top + to)
                    : CRect(client.left + from, client.top, client.left + to, client.bottom);
}

} // namespace kv::keyframe
