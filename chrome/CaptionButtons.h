// The five buttons of a caption strip.
#pragma once

#include "KvButtons.h"
#include "KvCaptionBar.h"

#include <QColor>

#include <array>

namespace kv {

struct ButtonTextColours
{
    QColor normal;
    QColor hovered;
    QColor disabled;
};

class CaptionButtons
{
public:
    /// Creates them as children of the bar. @param application where the application button stands at first.
    void Create(QWidget& bar, const CRect& application);
    bool Exist() const { return m_buttons[0] != nullptr; }
    /// @param number 10000 … 10004.
    CKvButton& Get(UINT number) const { return *m_buttons[number - kKvCaptionApplication]; }
    bool Contain(const QObject* object) const;

    /// Shows or hides one of them, or will once they are created.
    void Show(UINT number, bool visible);
    bool Shows(UINT number) const { return !m_hidden[number - kKvCaptionApplication]; }
    /// Places the four window buttons. @param growth see `CaptionGrowth`; they stand in its middle.
    void Layout(const CRect& band, int growth);
    /// "wndrestore"/"Restore" or "wndmaxmize"/"Maximize" on button 10002.
    void ShowMaximised(bool maximised);
    /// Of the application button's text, whatever a host's style sheet says of buttons.
    void SetTextFont(const QFont& font);
    /// Of the application button's text.
    void SetTextColours(const ButtonTextColours& colours);
    /// The skin or the texts changed.
    void Renew();
    /// Gives a button's tool tip the theme's colours for it; before the tip shows.
    static void ColourTip(QWidget& button);

private:
    std::array<CKvButton*, 5> m_buttons{}; ///< children of the bar
    std::array<bool, 5> m_hidden{};
    bool m_maximised = false;
    ButtonTextColours m_colours;
};

} // namespace kv
