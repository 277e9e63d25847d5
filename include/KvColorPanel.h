/// @file
/// The colour panel: maps, numbers and swatches that edit one colour together.
#pragma once

#include "KvDialog.h"

#include <QColor>

#include <memory>

/// Which part of the colour can be edited; any other value is none.
enum EKvColorPanelState : std::int32_t
{
    kKvColorPanelAll = 0,    ///< colour and alpha
    kKvColorPanelColour = 1, ///< red, green, blue; alpha stays
    kKvColorPanelAlpha = 2,  ///< alpha; the colour stays
};

/// The panel's template, for `CKvDialog`.
inline constexpr UINT kKvColorPanelDialog = 14010;

/// Edits one colour, 0xAARRGGBB, in RGB or HSB: a map of two channels, a slider of the third, a slider of
/// alpha, a number for each, and the swatch grid. All of them view one colour. The swatches come from the
/// grid's file: call `CKvSolidColorTemplate::InstallFactoryTemplate` before the first panel.
///
/// The user's changes send the parent WM_NOTIFY with a KvColorNotifyRecord: wParam and idFrom are the panel's
/// own number (`SetDlgCtrlID`), the phase is that of the child that was used, data points to the colour. Runs
/// never nest: a child that begins one ends what is open in another first. What the user has open also ends,
/// from the event loop, when the panel is hidden, disabled, moved to another parent or loses the mouse, and
/// before `DestroyWindow` returns; a panel that is destroyed says nothing.
/// Picks, presets, wheel notches and keys are one-shot edits with all three phases. Setters, another mode and
/// another channel send nothing. The parent may call any setter in its handler, or delete the panel.
///
/// A press on a channel's button that is dragged scrubs the channel's number. A pasted `#rgb`, `#rrggbb`,
/// `#aarrggbb` or `rgb(r, g, b)` sets the colour, as far as the state allows. Escape takes a drag or a typing
/// back; neither it nor Enter hides the panel, and those that it has no use for go on to the host.
///
/// Unlike a dialog the panel is a child of its parent, which destroys it. Its smallest size is about
/// 300 x 220 at 100 %; in a larger one the map takes what is free.
class KV_API CKvColorPanel : public CKvDialog
{
    Q_OBJECT
    /// The number by which the parent knows the panel.
    Q_PROPERTY(uint itemId READ GetDlgCtrlID WRITE SetDlgCtrlID)
    /// Whether it edits HSB.
    Q_PROPERTY(bool hsbMode READ IsHsb WRITE SetHsb NOTIFY ModeEdited)
    /// The colour with its alpha; see `SetColor`.
    Q_PROPERTY(QColor color READ Colour WRITE SetColour NOTIFY ColorEdited)
    /// Which part of the colour can be edited.
    Q_PROPERTY(EditablePart editablePart READ Editable WRITE SetEditable)

public:
    /// EKvColorPanelState by names for forms.
    enum EditablePart
    {
        ColourAndAlpha = kKvColorPanelAll, ///< everything
        ColourOnly = kKvColorPanelColour,  ///< alpha stays
        AlphaOnly = kKvColorPanelAlpha,    ///< the colour stays
    };
    Q_ENUM(EditablePart)

    /// Opaque black, RGB, not created yet.
    CKvColorPanel();
    /// A panel that creates itself when it or what it is in is first shown, unless `Create` comes before.
    /// What is set until then stays, as far as its smallest size lets it, which is what its items need unless
    /// another one is set. The panel paints its ground unless its own style sheet, by "background",
    /// `autoFillBackground` or, where there is no style sheet, its own palette gives it one. @param parent of
    /// which it is a child; may be null.
    explicit CKvColorPanel(QWidget* parent);
    ~CKvColorPanel() override;

    /// Creates the panel, hidden. @param parent of which it becomes a child.
    /// @return 1; 0 when it was created before.
    virtual int Create(CWnd* parent);
    /// The mode in which a panel is created. @param hsb 0 for RGB, the default. Counts before `Create`.
    void SetInitialMode(int hsb);
    /// @return 1 while the panel edits HSB. A host keeps it for the next `SetInitialMode`.
    int IsHSBMode() const;

    /// Silent. @param colour 0xAARRGGBB. One whose lower 24 bits are the panel's own changes alpha alone.
    void SetColor(DWORD colour);
    /// @return 0xAARRGGBB; 0xFF000000 at first.
    DWORD GetColor() const;
    /// In force before it returns. @param state an EKvColorPanelState.
    void SetEnableState(EKvColorPanelState state);
    /// @return the state in force.
    EKvColorPanelState GetEnableState() const;

    /// @param id the number by which the parent knows the panel; 0 until it is set.
    void SetDlgCtrlID(UINT id);

    /// Enables or disables the command whose number is an item's, as the state says; items that it does not
    /// govern are left alone. @param command the item's.
    void OnUpdateCmdUI(CCmdUI* command);
    /// Enables or disables every child. @param enable with 1 the state applies again, which waits meanwhile.
    void OnEnable(int enable);
    /// @param message not looked at. @return 0: a press is each child's own.
    virtual int PreTranslateMessage(MSG* message);

    void OnOK() override;
    void OnCancel() override;
    void OnAnswer(int result) override;
    QSize sizeHint() const override;
    void setVisible(bool visible) override;

Q_SIGNALS:
    /// After each message to the parent. @param phase an EKvColorPhase.
    void ColorChanged(int phase);
    /// The user's colour is another one, after the message that says so. @param color it.
    void ColorEdited(const QColor& color);
    /// The user switched between RGB and HSB. @param hsb which it is now.
    void ModeEdited(bool hsb);

protected:
    /// Puts the children into the places of the template's items. @return 1.
    virtual BOOL OnSubclassControls();
    /// @param phase as it goes into the record. The panel may be gone afterwards.
    void _NotifyChangeColor(int phase);
    /// Takes the colour of a map over. @param id the map's number.
    void _ProcessColorMapNotify(UINT id);

    BOOL OnInitDialog() override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void OnCmdUpdateUI(CCmdUI* command) override;
    void OnSkinChanged() override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void TakeFocusAt();
    bool IsHsb() const { return IsHSBMode() != 0; }
    void SetHsb(bool hsb);
    QColor Colour() const { return QColor::fromRgba(GetColor()); }
    void SetColour(const QColor& colour) { SetColor(colour.rgba()); }
    EditablePart Editable() const { return static_cast<EditablePart>(GetEnableState()); }
    void SetEditable(EditablePart part) { SetEnableState(static_cast<EKvColorPanelState>(part)); }

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
