// titler's look: colours of the skin by key, and what follows from them.
#pragma once

#include <QColor>
#include <QString>

#include <optional>

class QApplication;

namespace titler {

struct Skin
{
    QColor window;
    QColor panel;
    QColor field;
    QColor border;
    QColor text;
    QColor dimText;
    QColor disabledText;
    QColor accent; ///< the focus ring, and what is switched on
    QColor selection;
    QColor canvas; ///< around the frame
    QColor checkLight;
    QColor checkDark;
    QColor actionSafe;
    QColor titleSafe;
    QColor playhead;
    QColor fault; ///< what is wrong, in words
    QColor key;   ///< in the time ruler; one at the current time is in the accent
};

/// The colours of the present skin; keys that it lacks have the colours of the built-in look.
Skin LoadSkin();

/// What the user chooses from.
enum class Theme
{
    Dark,
    Light,
};

/// The theme's name on the command line and in the settings.
QString ThemeName(Theme theme);
/// @return nothing for a name that is none.
std::optional<Theme> ThemeOf(const QString& name);

/// Dresses the whole program, also while it runs.
void ApplyTheme(QApplication& application, Theme theme);
/// What was applied last; dark at first.
Theme CurrentTheme();

} // namespace titler
