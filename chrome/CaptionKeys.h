// The keys of a caption strip: the way into it and out again, the walk over its parts, and the keys that
// press a part together with Alt.
#pragma once

#include "chrome/CaptionFocus.h"
#include "chrome/CaptionStrip.h"
#include "chrome/CaptionTips.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>
#include <vector>

class QKeyEvent;

namespace kv {

/// Hears every key of the frame before the widget that has the focus, but after the host's shortcuts and
/// never while a popup or another modal window is open. A part that is pressed gives the focus back first, so
/// that the command works on what the user worked on; when its popup is dismissed with Escape, the focus
/// comes back to the part. Menu entries with Alt are the menu bar's own; this class shows their letters only.
class CaptionKeys : public QObject
{
public:
    /// @param told called when the focus is on another part, came or went.
    CaptionKeys(CaptionStrip& strip, std::function<void()> told);

    /// The part that has the focus, while the bar or one of its buttons has it.
    const std::optional<CaptionHit>& Focused() const { return m_focus; }
    /// Puts the focus on a part; the widget that had it gets it back when the user leaves.
    void Focus(const CaptionHit& part);
    /// Gives the focus back; nothing when the bar does not have it.
    void Leave();
    /// Presses a part as a click would; nothing happens to a disabled one. May delete the bar.
    void Press(const CaptionHit& part);
    bool CanPress(const CaptionHit& part) const;
    bool OpensPopup(const CaptionHit& part) const;
    /// The part that is this button of the strip.
    std::optional<CaptionHit> ButtonPart(const QWidget* widget) const;
    /// The key that presses a part together with Alt; 0 for none.
    wchar_t KeyOf(const CaptionHit& part) const { return m_tips.KeyOf(part); }

    /// The ring round the item or flag that has the focus; buttons draw their own.
    void DrawFocus(Graphics& graphics) const;
    /// Parts came, went or moved.
    void PartsChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool OnKey(const QWidget& receiver, QKeyEvent& event);
    bool OnKeyOverride(const QWidget& receiver, QKeyEvent& event);
    bool OnKeyPress(const QWidget& receiver, const QKeyEvent& event);
    void OnKeyRelease(const QKeyEvent& event);
    bool OnFocusKey(const QKeyEvent& event);
    bool PressTip(const QKeyEvent& event);
    void OnPopup(bool opened);
    void OnFocusChanged(QWidget* old, QWidget* now);

    bool IsListening(const QWidget& receiver) const;
    bool IsOurs(const QWidget* widget) const;
    /// The item whose popup is open, else the part that was pressed.
    CaptionHit OpenPart(const CaptionHit& pressed) const;

    std::vector<CaptionStop> Stops() const;
    void Enter();
    void Step(CaptionStep step);
    void InvalidateFocus();

    CaptionStrip& m_strip;
    std::function<void()> m_told;
    std::optional<CaptionHit> m_focus;
    QPointer<QWidget> m_previous; ///< had the focus before
    CaptionHit m_pressed;         ///< the part that was pressed last
    /// Whose popup got Escape as its last key; not always that of the part that was pressed.
    std::optional<CaptionHit> m_escaped;
    std::optional<QKeyCombination> m_unclaimed;
    CaptionTips m_tips;
};

} // namespace kv
