// The keys that press the parts of a caption strip together with Alt, and their labels while Alt is down.
#pragma once

#include "chrome/CaptionFocus.h"
#include "chrome/CaptionStrip.h"
#include "chrome/KeyTips.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace kv {

class KeyTipOverlay;

struct CaptionTip
{
    CaptionStop stop;
    KeyTipKind kind;
    wchar_t key;
};

class CaptionTips
{
public:
    /// @param stops the parts as they are walked.
    CaptionTips(CaptionStrip& strip, std::function<std::vector<CaptionStop>()> stops);
    ~CaptionTips();

    /// The parts that have a key, disabled ones too. What the window's own widgets hold is left to them.
    std::vector<CaptionTip> All() const;
    /// The key that presses a part; 0 for none, and for a disabled one.
    wchar_t KeyOf(const CaptionHit& part) const;

    /// Alt went down; the labels show after a while.
    void Begin(Qt::KeyboardModifiers modifiers);
    /// Alt was released, or something else happened. @return Alt had been alone until now.
    bool End();
    /// Parts came, went or moved.
    void PartsChanged();

private:
    void Show();

    CaptionStrip& m_strip;
    std::function<std::vector<CaptionStop>()> m_stops;
    bool m_alone = false; ///< Alt is down, and nothing else happened since
    QTimer m_timer;
    std::unique_ptr<KeyTipOverlay> m_overlay;
};

} // namespace kv
