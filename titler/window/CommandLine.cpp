#include "window/CommandLine.h"

#include "project/Pages.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>

namespace titler {
namespace {

// Narrower or lower than this the panels do not give way.
constexpr QSize kSmallestWindow(320, 320);
constexpr QSize kLargestWindow(16384, 16384);

// Digits alone: no sign, no blank.
std::optional<int> WholeNumber(const QString& text, int least, int most)
{
    static const QRegularExpression form(QStringLiteral("^\\d{1,9}$"));
    const int number = text.toInt();
    const bool isGood = form.match(text).hasMatch() && number >= least && number <= most;
    return isGood ? std::optional(number) : std::nullopt;
}

QString LanguageCodes()
{
    QStringList codes;
    for (const Language& language : Languages())
        codes << QLatin1String(language.code);
    return codes.join(QStringLiteral(", "));
}

struct Parser
{
    QCommandLineParser parser;
    QCommandLineOption media{QStringLiteral("media"), Text(kTextOptionMedia), QStringLiteral("DIR")};
    QCommandLineOption screenshot{QStringLiteral("screenshot"), Text(kTextOptionScreenshot),
                                  QStringLiteral("OUT.png")};
    QCommandLineOption exportFrame{QStringLiteral("export-frame"), Text(kTextOptionExport),
                                   QStringLiteral("OUT.png")};
    QCommandLineOption exportFrames{QStringLiteral("export-frames"), Text(kTextOptionFrames),
                                    QStringLiteral("DIR")};
    QCommandLineOption range{QStringLiteral("range"), Text(kTextOptionRange), QStringLiteral("A-B")};
    QCommandLineOption threads{QStringLiteral("threads"), Text(kTextOptionThreads), QStringLiteral("N")};
    QCommandLineOption frame{QStringLiteral("frame"), Text(kTextOptionFrame), QStringLiteral("N")};
    QCommandLineOption page{QStringLiteral("page"), Text(kTextOptionPage), QStringLiteral("N")};
    QCommandLineOption size{QStringLiteral("size"), Text(kTextOptionSize), QStringLiteral("WxH")};
    QCommandLineOption settings{QStringLiteral("settings"), Text(kTextOptionSettings),
                                QStringLiteral("FILE")};
    QCommandLineOption subtitles{QStringLiteral("subtitles"), Text(kTextOptionSubtitles),
                                 QStringLiteral("FILE")};
    QCommandLineOption encoding{QStringLiteral("encoding"), Text(kTextOptionEncoding),
                                QStringLiteral("NAME")};
    QCommandLineOption rules{QStringLiteral("rules"), Text(kTextOptionRules), QStringLiteral("FILE")};
    QCommandLineOption menuBar{QStringLiteral("menubar"), Text(kTextOptionMenuBar)};
    QCommandLineOption workspace{QStringLiteral("workspace"), Text(kTextOptionWorkspace),
                                 QStringLiteral("NAME")};
    QCommandLineOption theme{QStringLiteral("theme"), Text(kTextOptionTheme), QStringLiteral("NAME")};
    QCommandLineOption play{QStringLiteral("play"), Text(kTextOptionPlay)};
    QCommandLineOption tour{QStringLiteral("selftest-tour"), Text(kTextOptionTour), QStringLiteral("DIR")};
    QCommandLineOption film{QStringLiteral("selftest-animation"), Text(kTextOptionFilm),
                            QStringLiteral("DIR")};
    QCommandLineOption firstFrame{QStringLiteral("first-frame"), Text(kTextOptionFirstFrame)};
    QCommandLineOption gallery{QStringLiteral("gallery"), Text(kTextOptionGallery)};
    QCommandLineOption language{QStringLiteral("language"), Text(kTextOptionLanguage, {LanguageCodes()}),
                                QStringLiteral("CODE")};
    QCommandLineOption version{QStringLiteral("version"), Text(kTextOptionVersion)};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}, Text(kTextOptionHelp)};

    Parser()
    {
        parser.setApplicationDescription(Text(kTextUsage));
        parser.addOptions({media, screenshot, exportFrame, exportFrames, range,   threads,  frame,     page,
                           size,  settings,   subtitles,   encoding,     rules,   menuBar,  workspace, theme,
                           play,  tour,       film,        firstFrame,   gallery, language, version,   help});
        parser.addPositionalArgument(QStringLiteral("project"), Text(kTextOptionProject),
                                     QStringLiteral("[project]"));
    }

    // An empty text, or what makes no sense.
    QString Read(Options& options) const;
    QString ReadPicture(const QCommandLineOption& option, QString& file) const;
    QString ReadValue(const QCommandLineOption& option, QString& value) const;
    QString ReadRange(std::optional<FrameRange>& frames) const;
    QString ReadThreads(int& count) const;
    QString ReadFrame(std::optional<int>& number) const;
    QString ReadPage(int& number) const;
    QString ReadSize(QSize& window) const;
    QString ReadWorkspace(std::optional<Workspace>& wanted) const;
    QString ReadTheme(std::optional<Theme>& wanted) const;
    QString ReadEncoding(QString& name) const;
    QString ReadProject(QString& project) const;
    QString ReadTour(QString& folder) const;
    QString ReadFilm(QString& folder) const;
    QString ReadGallery(bool& wanted) const;
    QString ReadLanguage(const Language*& wanted) const;
    bool IsAlone(const QCommandLineOption& option, const QStringList& besides) const;
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

QString Parser::ReadRange(std::optional<FrameRange>& frames) const
{
    if (!parser.isSet(range))
        return {};
    if (!parser.isSet(exportFrames))
        return Text(kTextNeedsFrames, {QStringLiteral("range")});
    const QString text = parser.value(range);
    static const QRegularExpression form(QStringLiteral("^(\\d{1,6})-(\\d{1,6})$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return Text(kTextBadRange, {text, QString::number(kLongestDuration - 1)});
    frames = FrameRange{match.captured(1).toInt(), match.captured(2).toInt()};
    return frames->Count() > 0 ? QString() : Text(kTextReversedRange, {text});
}

QString Parser::ReadThreads(int& count) const
{
    if (!parser.isSet(threads))
        return {};
    if (!parser.isSet(exportFrames))
        return Text(kTextNeedsFrames, {QStringLiteral("threads")});
    const std::optional<int> number = WholeNumber(parser.value(threads), 1, kMostThreads);
    count = number.value_or(0);
    return number ? QString() : Text(kTextBadThreads, {parser.value(threads), QString::number(kMostThreads)});
}

QString Parser::ReadFrame(std::optional<int>& number) const
{
    if (!parser.isSet(frame))
        return {};
    if (!parser.isSet(exportFrame) && !parser.isSet(screenshot))
        return Text(kTextNeedsPicture);
    number = WholeNumber(parser.value(frame), 0, kLongestDuration - 1);
    return number ? QString()
                  : Text(kTextBadFrame, {parser.value(frame), QString::number(kLongestDuration - 1)});
}

QString Parser::ReadPage(int& number) const
{
    if (!parser.isSet(page))
        return {};
    if (!parser.isSet(exportFrame) && !parser.isSet(exportFrames) && !parser.isSet(screenshot))
        return Text(kTextPageNeedsPicture);
    const std::optional<int> read = WholeNumber(parser.value(page), 1, kMostPages);
    number = read.value_or(1);
    return read ? QString() : Text(kTextBadPage, {parser.value(page), QString::number(kMostPages)});
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

QString Parser::ReadWorkspace(std::optional<Workspace>& wanted) const
{
    if (!parser.isSet(workspace))
        return {};
    wanted = WorkspaceOf(parser.value(workspace));
    QStringList names;
    for (const Workspace one : kWorkspaces)
        names << QLatin1String(TraitsOf(one).name);
    return wanted ? QString()
                  : Text(kTextBadWorkspace, {parser.value(workspace), names.join(QStringLiteral(", "))});
}

QString Parser::ReadTheme(std::optional<Theme>& wanted) const
{
    wanted = ThemeOf(parser.value(theme));
    return wanted || !parser.isSet(theme) ? QString() : Text(kTextBadTheme, {parser.value(theme)});
}

QString Parser::ReadEncoding(QString& name) const
{
    const bool isInPlace = parser.isSet(subtitles) || !parser.isSet(encoding);
    return isInPlace ? ReadValue(encoding, name) : Text(kTextNeedsSubtitles);
}

QString Parser::ReadProject(QString& project) const
{
    const QStringList projects = parser.positionalArguments();
    project = projects.value(0);
    if (projects.size() > 1)
        return Text(kTextTooManyProjects, {projects[1]});
    return projects.isEmpty() || !project.isEmpty() ? QString() : Text(kTextNoProjectName);
}

// It is about the program alone.
QString Parser::ReadTour(QString& folder) const
{
    if (!parser.isSet(tour))
        return {};
    return IsAlone(tour, size.names() + language.names()) ? ReadValue(tour, folder) : Text(kTextTourAlone);
}

QString Parser::ReadFilm(QString& folder) const
{
    if (!parser.isSet(film))
        return {};
    return IsAlone(film, size.names() + language.names()) ? ReadValue(film, folder) : Text(kTextFilmAlone);
}

QString Parser::ReadGallery(bool& wanted) const
{
    wanted = parser.isSet(gallery);
    return !wanted || IsAlone(gallery, size.names() + screenshot.names() + theme.names() + language.names())
               ? QString()
               : Text(kTextGalleryAlone);
}

QString Parser::ReadLanguage(const Language*& wanted) const
{
    wanted = FindLanguage(parser.value(language));
    return wanted != nullptr || !parser.isSet(language)
               ? QString()
               : Text(kTextBadLanguage, {parser.value(language), LanguageCodes()});
}

bool Parser::IsAlone(const QCommandLineOption& option, const QStringList& besides) const
{
    const QStringList given = parser.optionNames();
    return parser.positionalArguments().isEmpty() &&
           std::all_of(given.begin(), given.end(), [&](const QString& name) {
               return option.names().contains(name) || besides.contains(name);
           });
}

QString Parser::Read(Options& options) const
{
    options.help = parser.isSet(help);
    options.version = parser.isSet(version);
    options.play = parser.isSet(play);
    options.menuBar = parser.isSet(menuBar);
    options.isSized = parser.isSet(size);
    options.firstFrame = parser.isSet(firstFrame);
    for (const QString& fault : {ReadProject(options.project),
                                 ReadValue(media, options.media),
                                 ReadValue(settings, options.settings),
                                 ReadValue(rules, options.rules),
                                 ReadValue(subtitles, options.subtitles),
                                 ReadEncoding(options.encoding),
                                 ReadPicture(screenshot, options.screenshot),
                                 ReadPicture(exportFrame, options.exportFrame),
                                 ReadValue(exportFrames, options.exportFrames),
                                 ReadRange(options.range),
                                 ReadThreads(options.threads),
                                 ReadFrame(options.frame),
                                 ReadPage(options.page),
                                 ReadSize(options.windowSize),
                                 ReadWorkspace(options.workspace),
                                 ReadTheme(options.theme),
                                 ReadLanguage(options.language),
                                 options.OnlyTells() ? QString() : ReadTour(options.tour),
                                 options.OnlyTells() ? QString() : ReadFilm(options.film),
                                 options.OnlyTells() ? QString() : ReadGallery(options.gallery)})
        if (!fault.isEmpty())
            return fault;
    return options.firstFrame && options.OnlyPictures() ? Text(kTextFirstFrameNeedsWindow) : QString();
}

} // namespace

int Options::LastFrame() const
{
    return std::max(frame.value_or(-1), range ? range->last : -1);
}

QString PlaceFault(const Options& options, const Project& project)
{
    if (const int pages = PageCount(project); options.page > pages)
        return Text(kTextNoSuchPage, {QString::number(options.page), QString::number(pages)});
    const int last = options.LastFrame();
    return last < project.duration
               ? QString()
               : Text(kTextNoSuchFrame, {QString::number(last), QString::number(project.duration - 1)});
}

std::optional<Options> ParseCommandLine(const QStringList& arguments, QString& fault)
{
    Parser p;
    Options options;
    fault = p.parser.parse(arguments) ? p.Read(options) : p.parser.errorText();
    return fault.isEmpty() ? std::optional(options) : std::nullopt;
}

const Language* LanguageNamedIn(const QStringList& arguments)
{
    Parser p;
    p.parser.parse(arguments); // whatever is wrong elsewhere
    return FindLanguage(p.parser.value(p.language));
}

QString HelpText()
{
    return Parser().parser.helpText();
}

} // namespace titler
