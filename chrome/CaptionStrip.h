// The strip that both caption bars are made of: buttons, items, static title, hover, drag, keys. What a bar
// does differently is in the virtual functions. Callbacks into the host may delete the bar.
#pragma once

#include "KvButtons.h"
#include "KvCaptionBar.h"
#include "KvMenu.h"
#include "chrome/CaptionLayout.h"
#include "chrome/CaptionRecord.h"

#include <QColor>
#include <QFont>
#include <QPointer>
#include <QString>

#include <memory>
#include <optional>
#include <span>
#include <string>

namespace kv {

inline constexpr EKvCaptionButton kCaptionButtons[] = {
    kKvCaptionApplication, kKvCaptionClose, kKvCaptionMaximise, kKvCaptionMinimise, kKvCaptionMenu};
inline constexpr auto kWindowButtons = std::span(kCaptionButtons).subspan<1>();

/// Of the flag and of the window that it opens.
std::wstring SwitchText();

class CaptionStrip
{
public:
    explicit CaptionStrip(const CaptionForm& form);
    virtual ~CaptionStrip();
    CaptionStrip(const CaptionStrip&) = delete;
    CaptionStrip& operator=(const CaptionStrip&) = delete;

    /// Called once by the bar's constructor, before anything else.
    void Attach(CKvCaptionBar& bar);
    /// Called by the bar's destructor, while the strip is still whole: what hears events lets go.
    void Detach();
    CKvCaptionBar& Bar() const { return *m_bar; }
    const CaptionForm& Form() const { return m_form; }

    // --- What the bars do differently.
    virtual CaptionRecord* Active() const = 0;
    virtual int ItemCount() const = 0; ///< of the active record; 0 without one
    virtual CaptionItem& Item(int index) const = 0;
    /// As drawn and measured: without a menu's "&" marker.
    virtual QString ItemLabel(int index) const = 0;
    /// Its text for a screen reader.
    virtual QString ItemName(int index) const { return ItemLabel(index); }
    virtual bool ShowsFlag() const { return false; }
    /// What the flag opens is open.
    virtual bool IsFlagOpen() const { return false; }
    /// The left button went down on an item, or a key or screen reader pressed it.
    virtual void PressItem(int index) = 0;
    virtual void PressFlag() {}
    /// Button 10004 was clicked.
    virtual void OpenMenuButtonMenu() = 0;
    /// Makes menu 12027 fit for button 10000.
    virtual void PrepareApplicationMenu(CKvMenu& menu) = 0;
    /// A command of that menu which the strip itself does not know.
    virtual void DoApplicationCommand(UINT command) = 0;
    /// The frame of the selected or open item, over the items' texts.
    virtual void DrawItemFrame(Graphics& graphics) = 0;
    /// Places the tool windows of the active record, the last ones by `LayoutAdvanced`; called by `Layout`.
    /// The bar may be gone afterwards.
    virtual void LayoutToolWindows() = 0;
    /// The font, the skin or the texts changed: measures again what is kept, then `Layout`. The bar may be
    /// gone afterwards.
    virtual void Remeasure() = 0;

    // --- What they share.
    /// The buttons, the bar's height; from `Create`.
    void CreateButtons();
    /// Everything again from the client rectangle: buttons, items, static title, tool windows, repaint.
    /// Nothing before `CreateButtons`. The bar may be gone afterwards.
    void Layout();
    bool HasButtons() const;
    /// Places the advanced tool windows of the active record and their separators.
    void LayoutAdvanced(const CRect& area);
    /// Of the band and with it of the bar, for the letters; taken from the font before `CreateButtons`.
    int Growth() const;
    void TakeGrowth();
    /// Of a bar in which everything has its room; 0 without items.
    int WholeWidth() const;
    /// What it depends on changed. `Layout` does it.
    void UpdateWholeWidth();
    CRect Band() const;
    CRect ToolArea() const;
    CRect FlagRect() const;
    CRect StaticTitle() const;
    CRect TitleText() const;                   ///< the part of it that the flag leaves to the text
    CaptionParts Parts() const;                ///< for the hit test
    CSize TextSize(const QString& text) const; ///< in the window font, as drawn
    QFont Font() const;                        ///< the window font: the host's, else the bar's
    QColor TextColour() const;                 ///< the normal one
    /// By its state: disabled, selected or pressed, hovered, normal.
    QColor ItemColour(const CaptionItem& item) const;
    QString Title() const; ///< both labels of the active record
    /// Picture, text and place of button 10000 for a record; nothing before `CreateButtons`.
    void ShowApplication(const CaptionRecord& record);
    void ShowNoApplication();
    CKvButton& Button(UINT number) const; ///< 10000 … 10004, from `CreateButtons` on
    /// Shows or hides one of them; kept before `CreateButtons`.
    void ShowButton(UINT number, bool visible);
    bool ShowsButton(UINT number) const;
    /// "wndrestore"/"Restore" or "wndmaxmize"/"Maximize" on button 10002.
    void ShowMaximised(bool maximised);
    void UpdateTitleTip(); ///< the static title's tool tip becomes the labels of now
    void Invalidate(const CRect& rect);
    QWidget* Frame() const; ///< `window()`

    // --- What the bar tells.
    void SetSettings(const SKvGuiBasicSettings* settings);
    void Paint(Graphics& graphics);
    void SkinChanged();
    void FontChanged();
    /// The bar may be in another frame.
    void WatchFrame();
    void FrameStateChanged();
    /// The pointer is at a point; nowhere on the strip without one.
    void Hover(std::optional<CPoint> point);
    /// Likewise in screen coordinates, where it may be over another window: while a popup is open, the bar
    /// hears nothing of the pointer.
    void HoverAt(const QPoint& screen);
    /// A popup, whosever, opened or closed.
    void PopupsChanged();
    /// The text under a point for the tool tip, and the area for which it holds.
    QString TipAt(CPoint point, CRect& area) const;
    /// A button's command. The bar may be gone afterwards. @return false for another command.
    bool Command(UINT number);
    /// Maximises or restores the frame.
    void RequestMaximised(bool maximise);
    bool IsButton(const QObject* object) const;
    /// Parts came, went or moved: the keys' focus and screen readers learn of it. `Layout` does it.
    void PartsChanged();

private:
    void AccessLater();
    void SetApplication(const std::wstring& picture, const std::wstring& text, const CRect& place);
    void StyleApplication();
    bool Grow();
    QColor DisabledColour() const;
    QColor Legible(const QColor& ofTheme) const;
    void LayoutItems();
    void DrawItems(Graphics& graphics);
    void DrawFlag(Graphics& graphics) const;
    void OpenApplicationMenu();
    void Click(UINT number);

    CaptionForm m_form;
    CKvCaptionBar* m_bar = nullptr;
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace kv
