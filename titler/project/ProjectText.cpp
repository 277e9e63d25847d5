#include "project/ProjectText.h"

#include "window/Texts.h"

#include <QDir>

namespace titler {
namespace {

QString ExpectedText(const ProjectError& error)
{
    const QString least = QString::number(error.least, 'g', 10);
    const QString most = QString::number(error.most, 'g', 10);
    switch (error.expected) {
    case Expected::Object:
        return Text(kTextWantObject);
    case Expected::List:
        return error.least < error.most ? Text(kTextWantList, {least, most})
                                        : Text(kTextWantExactList, {least});
    case Expected::Text:
        return Text(kTextWantText, {most});
    case Expected::Colour:
        return Text(kTextWantColour);
    case Expected::Flag:
        return Text(kTextWantFlag);
    case Expected::Number:
        return Text(kTextWantNumber, {least, most});
    case Expected::WholeNumber:
        return error.least < error.most ? Text(kTextWantWhole, {least, most}) : least;
    case Expected::Name:
        return Text(kTextWantName, {error.names.join(QStringLiteral(", "))});
    }
    return {};
}

QString FoundText(const ProjectError& error)
{
    if (error.length >= 0)
        return Text(error.expected == Expected::List ? kTextFoundElements : kTextFoundCharacters,
                    {QString::number(error.length)});
    return error.detail.isEmpty() ? Text(kTextMissing) : error.detail;
}

QString Reason(const ProjectError& error)
{
    switch (error.fault) {
    case ProjectFault::NoFile:
        return Text(kTextNoFile);
    case ProjectFault::Empty:
        return Text(kTextEmptyFile);
    case ProjectFault::CannotRead:
        return error.detail;
    case ProjectFault::TooLarge:
        return Text(kTextFileTooLarge, {QString::number(kLargestMegabytes)});
    case ProjectFault::BadJson:
        return Text(kTextBadJson, {QString::number(error.line), QString::number(error.column), error.detail});
    case ProjectFault::NewerVersion:
        return Text(kTextNewerVersion, {error.detail, QString::number(kProjectVersion)});
    case ProjectFault::BadField:
        return Text(kTextBadField, {error.path.isEmpty() ? Text(kTextWholeFile) : error.path,
                                    ExpectedText(error), FoundText(error)});
    }
    return {};
}

} // namespace

QString ErrorText(const QString& file, const ProjectError& error)
{
    return Text(kTextCannotOpen, {QDir::toNativeSeparators(file), Reason(error)});
}

} // namespace titler
