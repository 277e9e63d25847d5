// Saves the pictures of the documentation at the scale that the program runs at.
#pragma once

#include <QDir>
#include <QEvent>
#include <QPointF>
#include <QString>

class QPixmap;
class QWidget;

class Pictures
{
public:
    /// @param scale "1" adds nothing to the names of the files, another one its percentage.
    Pictures(const QString& folder, const QString& scale);

    /// Renders a widget into `<name>.png`; the outcome is printed. @return false when it cannot be written.
    bool Save(QWidget& widget, const char* name) const;
    bool Save(const QPixmap& picture, const char* name) const;

private:
    QDir m_folder;
    QString m_ending;
};

/// Sends a widget an event of the left button; a move is one of a drag.
void SendMouse(QWidget& widget, QEvent::Type type, QPointF at);

/// The swatch grid and the four-corner control.
bool SaveColours(const Pictures& pictures);

/// The ease window, the ease dialog and the keyframe strip.
bool SaveCurves(const Pictures& pictures);

/// The log list.
bool SaveAppLog(const Pictures& pictures);

/// The ribbon title bar with its key tips and switch window, and the ribbon menu bar.
bool SaveCaptions(const Pictures& pictures);

/// The subtitle list and the text list.
bool SaveLists(const Pictures& pictures);

/// The find and replace dialog and the character map.
bool SaveTextTools(const Pictures& pictures);

/// The colour panel.
bool SaveColourPanel(const Pictures& pictures);

/// The layout strip.
bool SaveLayouts(const Pictures& pictures);

/// Colour maps, numbers, buttons, scroll bars and the report list.
bool SaveParts(const Pictures& pictures);
