// Saves the pictures of the documentation at the scale, in the theme and the language that the program runs
// in.
#pragma once

#include "KvTypes.h"

#include <QDir>
#include <QEvent>
#include <QPointF>
#include <QString>

#include <span>

class QPixmap;
class QWidget;

class Pictures
{
public:
    /// @param ending of the names of the files.
    /// @param only the names of the pictures that are saved; nothing for all.
    Pictures(const QString& folder, const char* ending, std::span<const char* const> only);

    /// Renders a widget into `<name>.png`; the outcome is printed. @return false when it cannot be written.
    bool Save(QWidget& widget, const char* name) const;
    bool Save(const QPixmap& picture, const char* name) const;

private:
    QDir m_folder;
    QString m_ending;
    std::span<const char* const> m_only;
};

/// A colour that a host gives, to suit the theme: 0xAARRGGBB.
DWORD InTheme(DWORD dark, DWORD light);

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
