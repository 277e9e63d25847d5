// The numbers of the lists' own texts and of their menu.
#pragma once

#include "KvTypes.h"

namespace kv {

inline constexpr UINT kTextListName = 20100;
inline constexpr UINT kSubtitleListName = 20101;
inline constexpr UINT kTextColumnText = 20102;
inline constexpr UINT kPlayedRow = 20103; ///< what a screen reader says of it

// The names of the undo steps.
inline constexpr UINT kEditTextStep = 20110;
inline constexpr UINT kEditTimecodeStep = 20111;
inline constexpr UINT kEditTemplateStep = 20112;
inline constexpr UINT kCutStep = 20113;
inline constexpr UINT kPasteStep = 20114;
inline constexpr UINT kDeleteStep = 20115;
inline constexpr UINT kInsertStep = 20116;
inline constexpr UINT kMoveStep = 20117;
inline constexpr UINT kDropStep = 20118;
inline constexpr UINT kReplaceStep = 20119;

/// Why a search found nothing.
inline constexpr UINT kCostlyPattern = 20120;

inline constexpr UINT kListMenu = 20100;
inline constexpr UINT kListCut = 33001;
inline constexpr UINT kListCopy = 33002;
inline constexpr UINT kListPaste = 33003;
inline constexpr UINT kListDelete = 33004;
inline constexpr UINT kListSelectAll = 33005;
inline constexpr UINT kListInsertAbove = 33006;
inline constexpr UINT kListInsertBelow = 33007;

} // namespace kv
