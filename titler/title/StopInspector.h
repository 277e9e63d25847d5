// Colour, opacity and position of the selected stop.
#pragma once

#include "KvTypes.h"

#include <QWidget>

#include <optional>

class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QSlider;
class QSpinBox;
class QToolButton;

namespace titler {

/// Shows a stop and says what the user wants of it; it changes nothing itself.
class StopInspector : public QWidget
{
    Q_OBJECT

public:
    StopInspector();

    /// @param stop nothing disables the fields. @param index from 0. @param count how many stops there are.
    void ShowStop(const std::optional<SKvCGGradientKey>& stop, int index, int count);

signals:
    /// One edit; edits of a dragged slider come one by one, up to `ColourEditEnded`.
    void ColourEdited(DWORD colour);
    void ColourEditEnded();
    /// The colour dialog: live while it is open, then kept or not.
    void ColourDialogOpened();
    void ColourTried(DWORD colour);
    void ColourDialogClosed(bool keep);
    /// 0 to 1.
    void PositionEdited(double position);

private:
    void BuildFields();
    void Connect();
    void OnHexEdited();
    void OnOpacityEdited(int percent);
    void ChooseColour();
    void ShowColour();

    QToolButton* m_swatch;
    QLineEdit* m_hex;
    QSlider* m_opacitySlider;
    QSpinBox* m_opacity;
    QDoubleSpinBox* m_position;
    QLabel* m_place;
    DWORD m_colour = 0;
};

} // namespace titler
