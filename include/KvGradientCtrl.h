// The gradient control: a bar that shows a multi-stop gradient, markers for its stops and the mid points.
#pragma once

#include "KvWnd.h"

/// Code of the gradient control's notifications (-41).
inline constexpr std::uint32_t kKvGradientNotifyCode = 0xFFFFFFD7u;

/// What `hdr.idFrom` says.
enum EKvGradientEvent : std::uintptr_t
{
    kKvGradientDataSet = 0,      ///< the owner set the stops; data is the selected stop
    kKvGradientStopsEdited = 1,  ///< the stops were edited; no data
    kKvGradientStopSelected = 2, ///< a stop was selected; data is that stop
};

/// What `phase` says. A drag sends a run of one begin, any number of continues and one end; a one-shot edit
/// sends all three at once.
enum EKvGradientPhase : std::int32_t
{
    kKvPhaseBegin = 0,
    kKvPhaseContinue = 1,
    kKvPhaseEnd = 2,
};

/// Sent to the parent with WM_NOTIFY; wParam is the control's dialog item number, lParam this record's
/// address. It and what it points to are valid until the handler returns.
struct GradientNotifyRecord
{
    KvNotifyHeader hdr; ///< hwndFrom: the control; idFrom: an EKvGradientEvent; code: kKvGradientNotifyCode
    std::int32_t phase; ///< an EKvGradientPhase; 0 for events that come alone
    void* data;         ///< the SKvCGGradientKey concerned (its colour comes first), or null
    std::int32_t dataSize; ///< 4, the size of the colour, when `data` is set, else 0
};
static_assert(sizeof(void*) != 8 ||
              (offsetof(GradientNotifyRecord, phase) == 24 && offsetof(GradientNotifyRecord, data) == 32 &&
               offsetof(GradientNotifyRecord, dataSize) == 40 && sizeof(GradientNotifyRecord) == 48));

/// Edits a gradient of up to 255 stops.
///
/// The control sets no colour itself except that of a new stop; the owner edits the selected stop's colour
/// through `SetColor`. Setters are silent except `SetData` and `ResetDefault`. The parent may do anything in
/// its handler, including deleting the control.
///
/// Mouse: a click on a marker selects the stop, a drag moves it, a click elsewhere on the bar or the marker
/// strip adds one; the two mid points next to the selected stop are dragged in the strip above the bar, with
/// the left Ctrl key they snap to 0.25, 0.5 and 0.75. Escape takes a drag back.
///
/// Keyboard: Left/Right move the selected stop by a pixel (Shift: ten), Alt+Left/Right the mid point before
/// it and Alt+Shift+Left/Right the one after it by 0.01, Up/Down and Home/End select, Insert adds a stop,
/// Delete removes it, digits set its position in percent (Enter takes, Escape drops), Ctrl+C, Ctrl+V and
/// Ctrl+X copy, paste and cut its colour.
class KV_API CKvGradientCtrl : public CKvStatic
{
    Q_OBJECT

public:
    CKvGradientCtrl();
    ~CKvGradientCtrl() override;

    /// Where a mid point shows ticks and snaps to, as fractions of its segment.
    static constexpr float m_fAttachPos[3] = {0.25f, 0.5f, 0.75f};
    static constexpr int m_nAttachPosCount = 3;

    /// Creates the control as a child of `parent` and starts the marker's blinking (500 ms).
    /// @return 1; 0 when it was created before.
    int Create(UINT style, CWnd* parent, DWORD id) override;
    /// Lays out the three areas anew from the client rectangle and redraws them. Called by every resize.
    int RecalcLayout();

    /// Stores the stops that `ResetDefault` restores, at most 255; null or a count below 1 stores none.
    int SetDefaultData(int count, const SKvCGGradientKey* keys);
    /// Replaces the stops, without sorting them. A count below 0 or above 254 makes the count 255; below 0
    /// copies nothing, above 254 copies 255. The selection stays where it is within the count, else it
    /// becomes 0. Notifies the parent (kKvGradientDataSet), after ending a drag that is under way.
    /// @return 1; 0, nothing changed and nothing sent, for null with a count above 0.
    int SetData(int count, const SKvCGGradientKey* keys);
    /// Hands out the control's own array, valid until the control dies; do not free it.
    int GetData(int& count, SKvCGGradientKey** keys);
    /// @return the selected stop's colour, 0xAARRGGBB; 0 when no stop is selected.
    DWORD GetSelectedColor() const;
    /// @return the selected stop's index; -1 when no stop is selected.
    int GetSelectedKey() const;
    /// Selects a stop; silent, after ending a drag that is under way.
    /// @return 1; 0, nothing changed, when there is no such stop.
    int SetSelectedKey(int index);
    /// Sets the selected stop's colour, 0xAARRGGBB; silent. @return 1 when it changed.
    int SetColor(DWORD colour);
    /// Restores the default stops, selects the first and notifies the parent (begin, continue, end).
    /// @return 1; 0 when no default stops are stored.
    int ResetDefault();
    /// The orange frame shows while the control is editing or active.
    int SetEditing(int editing);
    int IsEditing() const;
    int SetActive(int active);

signals:
    /// From the same place as the message to the parent, with the same content.
    /// @param event an EKvGradientEvent; @param phase an EKvGradientPhase.
    void GradientChanged(int event, int phase);

protected:
private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
