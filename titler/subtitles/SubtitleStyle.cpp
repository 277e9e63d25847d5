#include "subtitles/SubtitleStyle.h"

#include "subtitles/SubtitleText.h"
#include "window/Texts.h"

#include <algorithm>

namespace titler {
namespace {

constexpr double kTextHeight = 5;   // percent of the frame
constexpr double kLineHeight = 1.2; // of the text's
constexpr double kEdge = 5;         // percent of the frame: the title-safe line

struct Template
{
    UINT nameId;
    int side; ///< -1 at the top, 1 at the bottom, 0 in the middle
    bool italic;
    bool takesTitle; ///< font and gradient of the project's own title
};
constexpr Template kTemplates[] = {
    {kTextTemplateBottom, 1, false, false},
    {kTextTemplateTop, -1, false, false},
    {kTextTemplateVoice, 1, true, false},
    {kTextTemplateTitle, 0, false, true},
};

const Template& TemplateOf(const QString& name)
{
    const auto found = std::find_if(std::begin(kTemplates), std::end(kTemplates),
                                    [&](const Template& known) { return Text(known.nameId) == name; });
    return found == std::end(kTemplates) ? kTemplates[0] : *found;
}

// The middle of the block from the middle of the frame, in percent of its height.
double PlaceOf(int side, double height, qsizetype lines)
{
    const double block = height * (1 + kLineHeight * static_cast<double>(lines - 1));
    return side * (50 - kEdge - block / 2);
}

} // namespace

QStringList SubtitleTemplates()
{
    QStringList names;
    for (const Template& known : kTemplates)
        names << Text(known.nameId);
    return names;
}

Project SubtitleProject(const Project& project, const Subtitle& subtitle)
{
    const Template& look = TemplateOf(subtitle.templateName);
    Project shown;
    shown.video = project.video;
    Title& title = shown.title;
    if (look.takesTitle)
        title = project.title;
    else
        title.stops = {{0xFFFFFFFF, 0.0f, 0.5f}, {0xFFFFFFFF, 1.0f, 0.5f}};
    title.properties = StillProperties();
    title.text = PlainSubtitle(subtitle.text);
    title.fontFamily = project.title.fontFamily;
    title.fontSize = look.takesTitle ? project.title.fontSize : kTextHeight;
    title.bold = look.takesTitle && project.title.bold;
    title.italic = look.takesTitle ? project.title.italic : look.italic;
    title.align = TextAlign::Centre;
    title[Property::Y].value = PlaceOf(look.side, title.fontSize, title.text.count(u'\n') + 1);
    return shown;
}

} // namespace titler
