// What a caption strip is made of.
#pragma once

#include "chrome/CaptionAccess.h"
#include "chrome/CaptionButtons.h"
#include "chrome/CaptionKeys.h"
#include "chrome/CaptionPainter.h"
#include "chrome/CaptionStrip.h"
#include "chrome/CaptionTexts.h"

namespace kv {

inline constexpr const wchar_t* kCaptionSeparatorPicture = L"ribbontitlebar_seperator";

struct CaptionStrip::Impl
{
    CaptionButtons buttons;
    CaptionPainter painter;
    CaptionTexts texts;
    CRect staticTitle;
    AdvancedLayout advanced;
    int growth = 0;
    int wholeWidth = 0;
    QString titleTip;
    bool flagHovered = false;
    const SKvGuiBasicSettings* settings = nullptr;
    QPointer<QWidget> frame;               ///< the one that is watched
    std::unique_ptr<CaptionKeys> keys;     ///< from CreateButtons on
    std::unique_ptr<CaptionAccess> access; ///< likewise
};

} // namespace kv
