// The language of the program's texts: chosen at run time, for all windows at once.
#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <span>

namespace titler {

struct Language
{
    const char* code; ///< of ISO 639-1; names the file with the texts
    const char* name; ///< in the language itself, UTF-8
};

/// What can be chosen. The first is English, whose texts are built in.
std::span<const Language> Languages();
const Language& CurrentLanguage();
/// The first of the user's languages in which there are texts, as the system tells them; else English.
const Language& SystemLanguage();
/// Nothing for a code that is none of `Languages`.
const Language* FindLanguage(const QString& code);

/// Shows all texts in that language, the toolkit's own too, and lays windows out in its direction. Call it
/// again for the application object that is there by then.
void ChooseLanguage(const Language& language);

/// Runs `show` now, and again in each language that is chosen while `owner` lives; in the order in which they
/// were given.
void InEachLanguage(QObject& owner, std::function<void()> show);

} // namespace titler
