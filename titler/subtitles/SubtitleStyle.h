// How a subtitle looks: the templates that a row can name.
#pragma once

#include "project/Project.h"

#include <QString>
#include <QStringList>

namespace titler {

/// A text with the name of its template.
struct Subtitle
{
    QString text;
    QString templateName;

    bool operator==(const Subtitle&) const = default;
};

/// The names of the templates; the first is taken for a name that is none of them.
QStringList SubtitleTemplates();

/// A project that shows the subtitle alone, at rest: format and font are those of `project`, and so is the
/// gradient where the template takes it.
Project SubtitleProject(const Project& project, const Subtitle& subtitle);

} // namespace titler
