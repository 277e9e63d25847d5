// What the command line asks for.
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

namespace titler {

struct Options
{
    QString project;
    QString media;
    QString screenshot;
    QString exportFrame;
    QSize windowSize{1440, 800};
    bool play = false; ///< the window plays the title from the begin, over and over
    bool help = false;

    /// True when nothing is shown, so that no display is needed.
    bool OnlyPictures() const { return !screenshot.isEmpty() || !exportFrame.isEmpty(); }
};

/// @param arguments with the program's name first. @return nothing, and the reason in `fault`, when they make
/// no sense.
std::optional<Options> ParseCommandLine(const QStringList& arguments, QString& fault);

/// The text for "--help"; needs a QCoreApplication.
QString HelpText();

} // namespace titler
