// Whether two files belong together by the rules, and by which.
#pragma once

#include "media/NamingRules.h"

namespace titler {

enum class Trial
{
    Together,
    NotTogether,
    NoMainFile, ///< no rule's main pattern fits the first name
};

struct TrialResult
{
    Trial trial = Trial::NoMainFile;
    int rule = -1; ///< the first rule that puts them together
    QString addition;
};

/// @param main the name of a main file, by a rule of any class. @param other the name of a file that may
/// belong to it. Folders before the names do not count.
TrialResult TryRules(const QVector<NamingRule>& rules, const QString& main, const QString& other);

} // namespace titler
