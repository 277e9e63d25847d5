#include "CommandLine.h"

#include "Texts.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace titler {
namespace {

// Narrower or lower than this the panels do not give way.
constexpr QSize kSmallestWindow(320, 320);
constexpr QSize kLargestWindow(16384, 16384);

struct Parser
{
    QCommandLineParser parser;
    QCommandLineOption media{QStringLiteral("media"), Text(kTextOptionMedia), QStringLiteral("DIR")};
    QCommandLineOption screenshot{QStringLiteral("screenshot"), Text(kTextOptionScreenshot),
                                  QStringLiteral("OUT.png")};
    QCommandLineOption exportFrame{QStringLiteral("export-frame"), Text(kTextOptionExport),
                                   QStringLiteral("OUT.png")};
    QCommandLineOption size{QStringLiteral("size"), Text(kTextOptionSize), QStringLiteral("WxH")};
    QCommandLineOption play{QStringLiteral("play"), Text(kTextOptionPlay)};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}, Text(kTextOptionHelp)};

    Parser()
    {
        parser.setApplicationDescription(Text(kTextUsage));
        parser.addOptions({media, screenshot, exportFrame, size, play, help});
        parser.addPositionalArgument(QStringLiteral("project"), Text(kTextOptionProject),
                                     QStringLiteral("[project]"));
    }

    // An empty text, or what makes no sense.
    QString Read(Options& options) const;
    QString ReadPicture(const QCommandLineOption& option, QString& file) const;
    QString ReadValue(const QCommandLineOption& option, QString& value) const;
    QString ReadSize(QSize& window) const;
    QString ReadProject(QString& project) const;
};

QString Parser::ReadValue(const QCommandLineOption& option, QString& value) const
{
    value = parser.value(option);
    const bool isGiven = !value.isEmpty() || !parser.isSet(option);
    return isGiven ? QString() : Text(kTextEmptyValue, {option.names().constFirst()});
}

QString Parser::ReadPicture(const QCommandLineOption& option, QString& file) const
{
    const QString fault = ReadValue(option, file);
    const bool isPng = file.isEmpty() || file.endsWith(QLatin1String(".png"), Qt::CaseInsensitive);
    return isPng ? fault : Text(kTextNotPng, {file});
}

QString Parser::ReadSize(QSize& window) const
{
    if (!parser.isSet(size))
        return {};
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})[xX](\\d{1,5})$"));
    const QString text = parser.value(size);
    const QRegularExpressionMatch match = form.match(text);
    window = {match.captured(1).toInt(), match.captured(2).toInt()};
    if (window == window.expandedTo(kSmallestWindow).boundedTo(kLargestWindow))
        return {};
    const auto asText = [](QSize s) { return QStringLiteral("%1x%2").arg(s.width()).arg(s.height()); };
    return Text(kTextBadSize, {text, asText(kSmallestWindow), asText(kLargestWindow)});
}

QString Parser::ReadProject(QString& project) const
{
    const QStringList projects = parser.positionalArguments();
    project = projects.value(0);
    if (projects.size() > 1)
        return Text(kTextTooManyProjects, {projects[1]});
    return projects.isEmpty() || !project.isEmpty() ? QString() : Text(kTextNoProjectName);
}

QString Parser::Read(Options& options) const
{
    options.help = parser.isSet(help);
    options.play = parser.isSet(play);
    for (const QString& fault : {ReadProject(options.project), ReadValue(media, options.media),
                                 ReadPicture(screenshot, options.screenshot),
                                 ReadPicture(exportFrame, options.exportFrame), ReadSize(options.windowSize)})
        if (!fault.isEmpty())
            return fault;
    return {};
}

} // namespace

std::optional<Options> ParseCommandLine(const QStringList& arguments, QString& fault)
{
    Parser p;
    Options options;
    fault = p.parser.parse(arguments) ? p.Read(options) : p.parser.errorText();
    return fault.isEmpty() ? std::optional(options) : std::nullopt;
}

QString HelpText()
{
    return Parser().parser.helpText();
}

} // namespace titler
