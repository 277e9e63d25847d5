#include "subtitles/SubtitleStyle.h"

#include "subtitles/SubtitleText.h"
#include "window/TextTable.h"
#include "window/Texts.h"

#include <QHash>

#include <algorithm>

namespace titler {
namespace {

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

// By name, in every language so far; English ones may come from another session.
QHash<QString, const Template*>& LearntNames()
{
    static QHash<QString, const Template*> names = [] {
        QHash<QString, const Template*> english;
        for (const Template& known : kTemplates)
            for (const KvStringEntry& text : OwnTexts())
                if (text.number == known.nameId)
                    english.insert(QString::fromWCharArray(text.text), &known);
        return english;
    }();
    return names;
}

// Null for a name that is none.
const Template* FindTemplate(const QString& name)
{
    const auto found = std::find_if(std::begin(kTemplates), std::end(kTemplates),
                                    [&](const Template& known) { return Text(known.nameId) == name; });
    return found == std::end(kTemplates) ? LearntNames().value(name) : found;
}

// As the keys of a number pad lie, 1 to 9; 0 where the text does not say.
int PlaceIn(const QString& text)
{
    for (const Markup& mark : MarkupOf(text)) {
        const QString part = text.mid(mark.begin, mark.end - mark.begin);
        const qsizetype at = part.indexOf(QLatin1String("\\an"));
        const char16_t key = at >= 0 && at + 3 < part.size() ? part[at + 3].unicode() : u'0';
        if (part.startsWith(u'{') && key >= u'1' && key <= u'9')
            return key - u'0';
    }
    return 0;
}

} // namespace

QStringList SubtitleTemplates()
{
    QStringList names;
    for (const Template& known : kTemplates)
        names << Text(known.nameId);
    return names;
}

void LearnTemplateNames()
{
    for (const Template& known : kTemplates)
        LearntNames().insert(Text(known.nameId), &known);
}

QString TemplateNamed(const QString& name)
{
    const Template* found = FindTemplate(name);
    return found == nullptr ? name : Text(found->nameId);
}

SubtitleLook LookOf(const Subtitle& subtitle)
{
    const Template* found = FindTemplate(subtitle.templateName);
    const Template& used = found == nullptr ? kTemplates[0] : *found;
    SubtitleLook look{used.side, 0, used.italic, used.takesTitle};
    if (const int place = PlaceIn(subtitle.text); place > 0) {
        look.side = 1 - (place - 1) / 3;
        look.column = (place - 1) % 3 - 1;
    }
    return look;
}

} // namespace titler
