// Why a project could not be loaded, in words.
#pragma once

#include "project/Project.h"

namespace titler {

/// One or two sentences that name the file and the place in it.
QString ErrorText(const QString& file, const ProjectError& error);

} // namespace titler
