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
    bool help = false;
};

/// True when the arguments only ask for pictures or for help: no display is needed for them.
bool NeedsNoDisplay(const QStringList& arguments);

/// @param arguments with the program's name first. @return nothing, and the reason in `fault`, when they make
/// no sense.
std::optional<Options> ParseCommandLine(const QStringList& arguments, QString& fault);

/// The text for "--help".
QString HelpText();

} // namespace titler
