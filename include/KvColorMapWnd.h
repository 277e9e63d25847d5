/// @file
/// The colour maps: a field of two channels, a slider of the third and a slider of alpha.
#pragma once

#include "KvWnd.h"

#include <QColor>

#include <memory>

/// What a colour map shows (`SetType`).
enum EKvColorMapType : int
{
    kKvColorMapField = 0,  ///< two channels, lock types 1 … 6
    kKvColorMapSlider = 2, ///< one channel, lock types 10 … 15
    kKvColorMapAlpha = 3,  ///< alpha over a checkerboard
};

/// Which channel a map locks (`SetLockType`): a field shows the other two, a slider that one.
enum EKvColorLock : int
{
    kKvLockFieldR = 1,            ///< G to the right, B upwards
    kKvLockFieldG = 2,            ///< R to the right, B upwards
    kKvLockFieldB = 3,            ///< R to the right, G upwards
    kKvLockFieldHue = 4,          ///< saturation to the right, brightness upwards
    kKvLockFieldSaturation = 5,   ///< hue to the right, brightness upwards
    kKvLockFieldBrightness = 6,   ///< hue to the right, saturation upwards
    kKvLockSliderR = 10,          ///< red; sliders are larger upwards
    kKvLockSliderG = 11,          ///< green
    kKvLockSliderB = 12,          ///< blue
    kKvLockSliderHue = 13,        ///< hue
    kKvLockSliderSaturation = 14, ///< saturation
    kKvLockSliderBrightness = 15, ///< brightness
};

/// A colour as a picture on which the user picks another one. It holds a whole colour, alpha included:
/// red, green, blue in 0 … 1, and hue and saturation of their own, which stay where the colour alone has lost
/// them (greys have no hue, black has no saturation).
///
/// A value is pixel / (size - 1) of the client rectangle in logical pixels, larger to the right and upwards;
/// points outside are clamped. Setters are silent and redraw. The user's own changes send the parent
/// WM_NOTIFY with a KvColorNotifyRecord (idFrom: the map's number, data: its colour): a press begins and sets
/// the colour, each move continues, the release ends without a change; Escape takes a drag back (the colour
/// as it was, then the end). Arrow keys (Shift: ten steps), Page Up and Down (ten steps up and down), Home
/// and End (to the left and right end of a field, the lower and upper one of a slider) and the wheel (up and
/// down; on a field with Alt right and left) are one-shot edits, which send all three phases; a step at the
/// end of a range changes and sends nothing. The wheel is the map's while it has the focus, else its
/// parent's. A setter called in a drag, but not by the parent's handler, is what Escape takes the drag back
/// to. A drag that loses the mouse ends from the event loop. The parent may delete the map in its handler.
class KV_API CKvColorMapWnd : public CKvWnd
{
    Q_OBJECT
    /// What the map shows: its type and the channel that it locks.
    Q_PROPERTY(Map map READ ShownMap WRITE SetMap)
    /// The colour with its alpha; see `SetValue`.
    Q_PROPERTY(QColor color READ Colour WRITE SetColour NOTIFY ColorEdited)

public:
    /// EKvColorMapType and EKvColorLock in one, by names for forms.
    enum Map
    {
        FieldRed = kKvLockFieldR,                   ///< see `kKvLockFieldR`
        FieldGreen = kKvLockFieldG,                 ///< see `kKvLockFieldG`
        FieldBlue = kKvLockFieldB,                  ///< see `kKvLockFieldB`
        FieldHue = kKvLockFieldHue,                 ///< see `kKvLockFieldHue`
        FieldSaturation = kKvLockFieldSaturation,   ///< see `kKvLockFieldSaturation`
        FieldBrightness = kKvLockFieldBrightness,   ///< see `kKvLockFieldBrightness`
        SliderRed = kKvLockSliderR,                 ///< see `kKvLockSliderR`
        SliderGreen = kKvLockSliderG,               ///< see `kKvLockSliderG`
        SliderBlue = kKvLockSliderB,                ///< see `kKvLockSliderB`
        SliderHue = kKvLockSliderHue,               ///< see `kKvLockSliderHue`
        SliderSaturation = kKvLockSliderSaturation, ///< see `kKvLockSliderSaturation`
        SliderBrightness = kKvLockSliderBrightness, ///< see `kKvLockSliderBrightness`
        AlphaSlider = 16,                           ///< see `kKvColorMapAlpha`
    };
    Q_ENUM(Map)

    /// A field that is not created yet.
    CKvColorMapWnd();
    /// A control that creates itself, see `CKvWnd`. @param parent its parent; may be null.
    explicit CKvColorMapWnd(QWidget* parent);
    ~CKvColorMapWnd() override;

    /// @param style, parent, id see `CKvWnd::CreateWnd`. @return 1; 0 when it was created before.
    int Create(UINT style, CWnd* parent, DWORD id);

    /// @param type an EKvColorMapType; others are ignored.
    void SetType(int type);
    /// @return an EKvColorMapType.
    int GetType() const;
    /// @param lock an EKvColorLock of the map's type; others are ignored.
    void SetLockType(int lock);
    /// @return an EKvColorLock.
    int GetLockType() const;

    /// Sets the whole colour. @param colour 0xAARRGGBB. One whose lower 24 bits are the map's own changes
    /// alpha alone; of another one hue and saturation become those of the colour (0 where it has none).
    void SetValue(DWORD colour);
    /// @return 0xAARRGGBB, rounded to the nearest.
    DWORD GetValue() const;
    ///@{
    /// One channel. @param value 0 … 255, clamped.
    void SetR(int value);
    void SetG(int value);
    void SetB(int value);
    void SetA(int value);
    ///@}
    ///@{
    /// @return one channel, 0 … 255, rounded to the nearest.
    int GetR() const;
    int GetG() const;
    int GetB() const;
    int GetA() const;
    ///@}
    /// @return degrees, 0 … 360.
    double GetHue() const;
    ///@{
    /// @return 0 … 1.
    double GetSat() const;
    double GetBri() const;
    ///@}
    /// @param hue degrees, 0 … 360; @param sat, bri 0 … 1; clamped, not a number is 0.
    void SetHSBValue(double hue, double sat, double bri);
    /// Full precision. @param red, green, blue receive 0 … 1.
    void GetHPValue(double& red, double& green, double& blue) const;
    /// Full precision. @param red, green, blue 0 … 1, clamped, not a number is 0.
    void SetHPValue(double red, double green, double blue);
    /// Draws the map anew.
    void DrawPan();

    /// The hexagonal model. @param r, g, b 0 … 1. @param hue receives degrees, 0 … 360, 0 for greys.
    /// @param sat, bri receive 0 … 1; the former is 0 for black.
    static void RGBToHSB(double r, double g, double b, double& hue, double& sat, double& bri);
    /// Its inverse; 360 degrees are red. @param hue degrees, 0 … 360. @param sat, bri 0 … 1.
    /// @param r, g, b receive 0 … 1.
    static void HSBToRGB(double hue, double sat, double bri, double& r, double& g, double& b);

    UINT OnGetDlgCode() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Before a drag or a one-shot edit begins. An owner of several controls ends the runs of the others
    /// here; the change counts from the colour that it leaves.
    void RunBeginning();
    /// After each message to the parent. @param phase an EKvColorPhase.
    void ColorChanged(int phase);
    /// The user's colour is another one, after the message that says so. @param color it.
    void ColorEdited(const QColor& color);

protected:
    int CreateSelf() override;
    void OnPaint(Graphics& graphics) override;
    void OnSize(int width, int height) override;
    void OnLButtonDown(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnLButtonUp(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseMove(Qt::KeyboardModifiers modifiers, CPoint point) override;
    void OnMouseWheel(Qt::KeyboardModifiers modifiers, int delta, CPoint point) override;
    BOOL OnKeyDown(UINT key, Qt::KeyboardModifiers modifiers) override;
    bool WantsShortcut(UINT key, Qt::KeyboardModifiers modifiers, UINT character) const override;
    void OnSetFocus() override;
    void OnKillFocus() override;
    void OnEnable(BOOL enabled) override;
    void OnCaptureChanged() override;
    void OnSkinChanged() override;
    QString ToolTipAt(CPoint point, CRect& area) const override;

private:
    Map ShownMap() const;
    void SetMap(Map map);
    QColor Colour() const { return QColor::fromRgba(GetValue()); }
    void SetColour(const QColor& colour) { SetValue(colour.rgba()); }

    friend class CKvColorPanel;
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
