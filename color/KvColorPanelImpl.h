// What stands behind the colour panel: its children, which all view one colour.
#pragma once

#include "KvButtons.h"
#include "KvColorMapWnd.h"
#include "KvColorPanel.h"
#include "KvParamEdit.h"
#include "KvSolidColorTemplate.h"
#include "color/ColourPanelModel.h"
#include "color/ColourPreview.h"
#include "platform/NamedAccess.h"

#include <QPointer>

#include <array>

namespace kv {

/// The numbers of the panel's items.
enum ColourPanelItem : UINT
{
    kPanelMap = 14023,
    kPanelSlider = 14024,
    kPanelAlpha = 14025,
    kPanelFirstEdit = 14026, ///< three channels and alpha
    kPanelSwatches = 14030,
    kPanelFirstChannel = 14032,
    kPanelRgb = 14035,
    kPanelHsb = 14036,
    kPanelPreview = 14128,
};

} // namespace kv

// Functions that notify may delete the panel; then nothing of it may be touched, and those with a result
// return false.
struct CKvColorPanel::Impl
{
    explicit Impl(CKvColorPanel& owner);

    void CreateSelf();
    void MakeMaps();
    void MakeButtons();
    void MakeEdits();
    void MakeSwatches();

    /// Shows the model's colour in every child that shows another one.
    /// @param typedEdit the edit that is being typed in, -1 for none.
    void ShowColour(int typedEdit = -1);
    /// Shows mode and channel: pictures, names, ranges, lock types.
    void ShowMode();
    void ShowButtons();
    void NameChildren();

    void NotifyRun();
    /// Ends every drag, scrub and typing but those of one child. @param besides null for none.
    bool EndRuns(const QWidget* besides = nullptr);
    /// @return false when the panel is gone or is in that mode already.
    bool SetMode(kv::ColourMode mode);
    /// The same by the user.
    void EditMode(kv::ColourMode mode);
    void SetChannel(int channel);
    void TakeEdit(int edit, int phase);
    /// The host set the model's colour of its own accord: nothing leads back to an earlier one.
    void TakeHostsColour();
    void TakeSwatch(const KvSwatchNotifyRecord& record);
    /// @return true when the clipboard holds a colour of which the state allows a part.
    bool CanPaste() const;
    void Paste();
    void ScrubChannel(int channel, int steps);
    /// An arrow key on a group of buttons. @return false when it is none.
    bool WalkButtons(const QKeyEvent& key);
    /// The focus goes to the next of the host's controls that the Tab key reaches, if there is one.
    void FocusBehind();

    CKvColorMapWnd* MapOf(UINT id) const;
    bool IsChild(UINT id, const QWidget* sender) const { return sender && panel.GetDlgItem(id) == sender; }

    CKvColorPanel& panel;
    kv::NamedAccess access;
    kv::ColourPanelModel model;
    kv::ColourState runFrom;    ///< the colour when the open run of an edit began
    QPointer<QWidget> listener; ///< who heard of the begin of the open run; null without
    bool createsItself = false; ///< when it is first shown
    bool isCreatingItself = false;
    DWORD told = 0xFF000000u; ///< the colour that `ColorEdited` told last, or the host's since
    bool isNotifying = false;
    bool isDying = false;                 ///< the destructor is at work
    bool isDestroying = false;            ///< the children are about to go
    bool isEnabled = true;                ///< as `OnEnable` was told last
    Qt::FocusPolicy policy = Qt::NoFocus; ///< the host's, kept while no part takes the focus
    // The children are the dialog's items, which go before the panel does.
    QPointer<CKvColorMapWnd> map;
    QPointer<CKvColorMapWnd> slider;
    QPointer<CKvColorMapWnd> alpha;
    std::array<QPointer<CKvRadioBitmapButton>, kv::ColourPanelModel::kChannels> channels;
    std::array<QPointer<CKvRadioBitmapButton>, 2> modes; ///< RGB, HSB
    std::array<QPointer<CKvParamEdit>, kv::ColourPanelModel::kEdits> edits;
    QPointer<CKvSolidColorTemplate> swatches;
    QPointer<kv::ColourPreview> preview;
};
