// Between a project and its JSON.
#pragma once

#include "Project.h"

#include <QJsonArray>
#include <QJsonObject>

namespace titler {

/// The project's fields, with those of its source that we do not know.
QJsonObject ProjectToJson(const Project& project);

/// `known` with the fields of `old` that it does not have. Elements of a list belong to the old element that
/// holds the same values, else to the one at the same place, so that they follow a stop that moved.
QJsonObject Overlay(const QJsonObject& old, const QJsonObject& known);

} // namespace titler
