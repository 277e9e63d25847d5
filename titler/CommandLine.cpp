#include "CommandLine.h"

#include "Texts.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>

namespace titler {
namespace {

constexpr int kSmallestWindow = 320;
constexpr int kLargestWindow = 16384;

struct Parser
{
    QCommandLineParser parser;
    QCommandLineOption media{QStringLiteral("media"), Text(kTextOptionMedia), QStringLiteral("DIR")};
    QCommandLineOption screenshot{QStringLiteral("screenshot"), Text(kTextOptionScreenshot),
                                  QStringLiteral("OUT.png")};
    QCommandLineOption exportFrame{QStringLiteral("export-frame"), Text(kTextOptionExport),
                                   QStringLiteral("OUT.png")};
    QCommandLineOption size{QStringLiteral("size"), Text(kTextOptionSize), QStringLiteral("WxH")};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}, Text(kTextOptionHelp)};

    Parser()
    {
        parser.setApplicationDescription(Text(kTextUsage));
        parser.addOptions({media, screenshot, exportFrame, size, help});
        parser.addPositionalArgument(QStringLiteral("project"), Text(kTextOptionProject),
                                     QStringLiteral("[project]"));
    }
};

std::optional<QSize> ParseSize(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})[xX](\\d{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const auto isSane = [](int length) { return length >= kSmallestWindow && length <= kLargestWindow; };
    return isSane(size.width()) && isSane(size.height()) ? std::optional(size) : std::nullopt;
}

} // namespace

bool NeedsNoDisplay(const QStringList& arguments)
{
    return std::any_of(arguments.begin() + 1, arguments.end(), [](const QString& argument) {
        const auto asksFor = [&](const char* option) {
            return argument == QLatin1String(option) || argument.startsWith(QLatin1String(option) + u'=');
        };
        return asksFor("--screenshot") || asksFor("--export-frame") || asksFor("--help") || asksFor("-h");
    });
}

std::optional<Options> ParseCommandLine(const QStringList& arguments, QString& fault)
{
    Parser p;
    if (!p.parser.parse(arguments)) {
        fault = p.parser.errorText();
        return std::nullopt;
    }
    Options options;
    const QStringList projects = p.parser.positionalArguments();
    if (projects.size() > 1) {
        fault = Text(kTextTooManyProjects, {projects[1]});
        return std::nullopt;
    }
    options.project = projects.value(0);
    options.media = p.parser.value(p.media);
    options.screenshot = p.parser.value(p.screenshot);
    options.exportFrame = p.parser.value(p.exportFrame);
    options.help = p.parser.isSet(p.help);
    if (p.parser.isSet(p.size)) {
        const std::optional<QSize> size = ParseSize(p.parser.value(p.size));
        if (!size) {
            fault = Text(kTextBadSize, {p.parser.value(p.size), QString::number(kSmallestWindow),
                                        QString::number(kLargestWindow)});
            return std::nullopt;
        }
        options.windowSize = *size;
    }
    return options;
}

QString HelpText()
{
    return Parser().parser.helpText();
}

} // namespace titler
