// Between a project and its JSON.
#pragma once

#include "project/Project.h"

#include <QJsonArray>
#include <QJsonObject>

namespace titler {

/// The project's fields, with those of its source that we do not know.
QJsonObject ProjectToJson(const Project& project);
/// What belongs to every page.
QJsonObject HeadToJson(const Project& project);
/// A page's fields without the keys.
QJsonObject StillToJson(const Page& page);

/// `known` with the fields of `old` that it does not have, down to the innermost object. Lists are taken as
/// they are in `known`.
QJsonObject Overlay(const QJsonObject& old, const QJsonObject& known);

} // namespace titler
