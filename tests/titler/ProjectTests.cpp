#include "project/ProjectJson.h"
#include "project/ProjectText.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace titler {
namespace {

QByteArray Json(const QByteArray& text)
{
    QByteArray json = text;
    return json.replace('\'', '"');
}

Project Parsed(const QByteArray& json)
{
    ProjectError error;
    const std::optional<Project> project = ParseProject(Json(json), error);
    EXPECT_TRUE(project.has_value()) << ErrorText("p", error).toStdString();
    return project.value_or(NewProject());
}

QJsonObject Saved(const Project& project)
{
    return QJsonDocument::fromJson(SerialiseProject(project)).object();
}

TEST(Project, EveryFieldSurvivesSavingAndLoading)
{
    Project project = NewProject();
    project.video = {kKvAspectSquarePixel, kKvFrameRate60, kKvScanProgressiveSegmented, 1081, 1919};
    project.audio = {6, 44100, 24};
    project.title = {"Zwei\nZeilen \U0001F600",
                     "Some Font",
                     7.3,
                     false,
                     true,
                     TextAlign::Right,
                     {PaintKind::FourCorner,
                      0x11223344,
                      {{0x01020304, 0.1f, 0.3f}, {0xFFFEFDFC, 0.1f, 0.05f}, {0x00000000, 1.0f, 0.7f}},
                      -33.5,
                      {1, 0x80000002, 3, 0xFFFFFFFF}},
                     {true, 0x12345678, 3.7},
                     {true, 0x87654321, -20, 11.1, 0.1}};
    project.background = {PaintKind::Gradient,
                          0x0A0B0C0D,
                          {{0x10203040, 0.3f, 0.5f}, {0x50607080, 0.9f, 0.6f}},
                          12.5,
                          {4, 5, 6, 7}};
    project.title[Property::GradientOffset] = {0.25, {{0, -1}, {90, 1, PresetEase(3)}}};
    project.title[Property::X] = {12.5, {{3, 0.1, {4, 0.3, -17.3, 1, 1e-7}}}};
    project.title[Property::Scale].value = 55;
    project.duration = 77;
    QTemporaryDir folder;
    const QString file = folder.filePath("p.ktitle");
    ASSERT_EQ(SaveProject(file, project), "");
    ProjectError error;
    const std::optional<Project> loaded = LoadProject(file, error);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->title.text, project.title.text);
    EXPECT_EQ(loaded->title.fill.stops[0].position, 0.1f); // bit for bit, though the file says 0.1
    EXPECT_EQ(loaded->title.fill.stops[1].colour, 0xFFFEFDFCu);
    EXPECT_TRUE(*loaded == project);
    EXPECT_TRUE(LooksSame(loaded->title.fill, project.title.fill));
    EXPECT_EQ(loaded->title.outline, project.title.outline);
    EXPECT_EQ(loaded->title.shadow, project.title.shadow);
    EXPECT_TRUE(LooksSame(loaded->background, project.background));
    EXPECT_EQ(loaded->title.properties, project.title.properties);
    EXPECT_EQ(loaded->duration, 77);
    EXPECT_TRUE(SerialiseProject(project).contains("\"position\": 0.1\n"));
}

TEST(Project, FieldsThatWeDoNotKnowSurvive)
{
    Project project =
        Parsed("{'version':1, 'tool':{'x':[1,{'y':null}]}, 'video':{'width':720,'matrix':'709'}}");
    project.video.width = 1280;
    const QJsonObject saved = Saved(project);
    EXPECT_EQ(saved["tool"], QJsonDocument::fromJson(Json("{'x':[1,{'y':null}]}")).object());
    EXPECT_EQ(saved["video"]["matrix"], "709");
    EXPECT_EQ(saved["video"]["width"], 1280);
}

// Files from before there were other fills than a gradient look as they did.
TEST(Project, PaintsThatAreMissingAreAGradientOverNothing)
{
    const Project old = Parsed("{'version':1,'title':{'gradient':{'angle':45,'stops':["
                               "{'colour':'#111111','position':0},{'colour':'#222222','position':1}]}}}");
    EXPECT_EQ(old.title.fill.kind, PaintKind::Gradient);
    EXPECT_EQ(old.title.fill.angle, 45);
    EXPECT_EQ(old.title.fill.stops[1].colour, 0xFF222222u);
    EXPECT_FALSE(old.title.outline.on || old.title.shadow.on);
    EXPECT_EQ(old.background.kind, PaintKind::None);
    EXPECT_GE(old.background.stops.size(), std::size_t(kFewestStops));
}

TEST(Project, FieldsOfPaintsThatWeDoNotKnowSurvive)
{
    Project project =
        Parsed("{'version':1,'title':{'fill':{'kind':'solid','a':1},'outline':{'b':2},'shadow':{'c':3}},"
               "'background':{'d':4,'gradient':{'e':5,'stops':["
               "{'colour':'#ff0000','position':1,'f':6},{'colour':'#00ff00','position':0}]}}}");
    EXPECT_EQ(project.title.fill.kind, PaintKind::Solid);
    project.title.fill.colour = 0x80112233;
    project.title.shadow.on = true;
    GradientStops stops = project.background.stops;
    stops[1].position = 0.5f;
    SetStops(project.background, stops);
    const QJsonObject saved = Saved(project);
    EXPECT_EQ(saved["title"]["fill"]["a"], 1);
    EXPECT_EQ(saved["title"]["fill"]["colour"], "#80112233");
    EXPECT_EQ(saved["title"]["outline"]["b"], 2);
    EXPECT_EQ(saved["title"]["shadow"]["c"], 3);
    EXPECT_EQ(saved["background"]["d"], 4);
    EXPECT_EQ(saved["background"]["gradient"]["e"], 5);
    EXPECT_EQ(saved["background"]["gradient"]["stops"][1]["f"], 6);
    EXPECT_EQ(saved["background"]["gradient"]["stops"][1]["position"], 0.5);
}

QByteArray Keys(const char* list)
{
    return QByteArray("{'version':1,'title':{'animation':{'scale':") + list + "}}}";
}

TEST(Project, KeysAreSortedAndMissingFieldsHaveDefaults)
{
    const Project project =
        Parsed(Keys("[{'frame':9,'value':1,'ease':{'kind':'smooth'}},{'frame':4,'value':2},"
                    "{'frame':9,'value':3,'ease':{'kind':'own','out':[0.5,2]}},{}]"));
    const KeyList keys{{0, 100}, {4, 2}, {9, 3, {4, 0.5, 2, 0, 0}}};
    EXPECT_EQ(project.title[Property::Scale].keys, keys);
    EXPECT_EQ(Parsed(Keys("[{'ease':{'kind':'smooth'}}]")).title[Property::Scale].keys[0].ease,
              PresetEase(5));
    const Project old = Parsed("{'version':1,'title':{'gradient':{'offset':0.5}}}");
    EXPECT_EQ(old.duration, 150);
    EXPECT_EQ(old.title[Property::GradientOffset].value, 0.5);
    EXPECT_EQ(old.title[Property::Scale], (Animated{100, {}}));
}

TEST(Project, NotesGoWithTheirKey)
{
    Project project = Parsed(Keys("[{'frame':7,'ease':{'by':'me'},'note':'late'},{'frame':1,'note':'soon'}],"
                                  "'blur':[{'frame':3}]"));
    Animated& scale = project.title[Property::Scale];
    RemoveKey(scale, 0);
    scale.keys[0].frame = 2;
    const QJsonValue title = Saved(project)["title"];
    const QJsonValue key = title["animation"]["scale"][0];
    EXPECT_EQ(title["animation"]["scale"].toArray().size(), 1);
    EXPECT_EQ(key["note"], "late");
    EXPECT_EQ(key["ease"]["by"], "me");
    EXPECT_EQ(key["ease"]["kind"], "linear");
    RemoveKey(scale, 0); // the list goes, the one that we do not know stays
    const QJsonValue still = Saved(project)["title"];
    EXPECT_EQ(still["animation"], QJsonDocument::fromJson(R"({"blur":[{"frame":3}]})").object());
}

struct StopEdit
{
    const char* name;
    void (*edit)(GradientStops& stops);
    const char* notes; ///< from left to right, "-" for a stop without one
};

class StopNotes : public testing::TestWithParam<StopEdit>
{
};

// The stops as the file has them: neither sorted nor in our spelling, two of them alike but for their notes.
TEST_P(StopNotes, GoWithTheirStops)
{
    Project project = Parsed("{'version':1,'title':{'gradient':{'stops':["
                             "{'colour':'#ffffff','position':1,'note':'white'},"
                             "{'colour':'#FF0000','position':0.5,'note':'red'},"
                             "{'colour':'#FF0000','position':0.5,'note':'twin'},"
                             "{'position':0,'colour':'#ff000000','midPoint':0.5,'note':'black'}]}}}");
    GradientStops stops = project.title.fill.stops;
    GetParam().edit(stops);
    SetStops(project.title.fill, NormalisedStops(stops));
    QStringList notes;
    const QJsonObject saved = Saved(project);
    for (const QJsonValue stop : saved["title"]["gradient"]["stops"].toArray())
        notes << stop["note"].toString(QStringLiteral("-"));
    EXPECT_EQ(notes.join(u' '), GetParam().notes);
    EXPECT_EQ(Saved(Parsed(SerialiseProject(project))), saved);
}

INSTANTIATE_TEST_SUITE_P(
    Project, StopNotes,
    testing::Values(StopEdit{"Untouched", [](GradientStops&) {}, "black red twin white"},
                    StopEdit{"Moved", [](GradientStops& s) { s[0].position = 0.7f; }, "red twin black white"},
                    StopEdit{"Recoloured", [](GradientStops& s) { s[3].colour = s[0].colour; },
                             "black red twin white"},
                    StopEdit{"Deleted", [](GradientStops& s) { s.erase(s.begin()); }, "red twin white"},
                    StopEdit{"Inserted",
                             [](GradientStops& s) {
                                 s.push_back({0xFF000000, 0.2f, 0.5f});
                             },
                             "black - red twin white"},
                    StopEdit{"DeletedAndMidPointChanged",
                             [](GradientStops& s) {
                                 s[3].midPoint = 0.1f;
                                 s.erase(s.begin() + 1, s.begin() + 3);
                             },
                             "black white"},
                    StopEdit{"Reversed",
                             [](GradientStops& s) {
                                 for (SKvCGGradientKey& stop : s)
                                     stop.position = 1 - stop.position;
                             },
                             "white red twin black"},
                    StopEdit{"Replaced",
                             [](GradientStops& s) {
                                 s = {{1, 0.1f, 0.5f}, {2, 0.9f, 0.5f}};
                             },
                             "- -"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Project, ByteOrderMarksWithinTextsSurvive)
{
    const Project project =
        Parsed("\xEF\xBB\xBF{'version':1,'\xEF\xBB\xBFname':1,'title':{'text':'\xEF\xBB\xBFt'}}");
    EXPECT_EQ(project.title.text.size(), 2);
    EXPECT_TRUE(SerialiseProject(project).contains("\xEF\xBB\xBFname"));
    EXPECT_TRUE(SerialiseProject(project).contains("\xEF\xBB\xBFt\""));
}

TEST(Project, UnsortedStopsAreSortedAndMissingFieldsHaveDefaults)
{
    const Project project = Parsed("{'version':1,'title':{'gradient':{'stops':["
                                   "{'colour':'#111111','position':1},{'colour':'#222222','position':0},"
                                   "{'colour':'#333333','position':1}]}}}");
    ASSERT_EQ(project.title.fill.stops.size(), 3u);
    EXPECT_EQ(project.title.fill.stops[0].colour, 0xFF222222u);
    EXPECT_EQ(project.title.fill.stops[1].colour, 0xFF111111u); // equal positions keep their order
    EXPECT_EQ(project.title.fill.stops[0].midPoint, 0.5f);
    EXPECT_EQ(project.video.height, 1080);
}

struct Broken
{
    const char* name;
    QByteArray json;
    const char* says;
};

void PrintTo(const Broken& c, std::ostream* out)
{
    *out << c.name;
}

class BrokenProject : public testing::TestWithParam<Broken>
{
};

TEST_P(BrokenProject, SaysWhatAndWhere)
{
    ProjectError error;
    EXPECT_FALSE(ParseProject(Json(GetParam().json), error));
    const QString text = ErrorText("dir/p.ktitle", error);
    EXPECT_TRUE(text.startsWith(QDir::toNativeSeparators("dir/p.ktitle"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QString::fromUtf8(GetParam().says))) << text.toStdString();
}

QByteArray Stops(const char* list)
{
    return QByteArray("{'version':1,'title':{'gradient':{'stops':") + list + "}}}";
}

INSTANTIATE_TEST_SUITE_P(
    Project, BrokenProject,
    testing::Values(
        Broken{"Empty", "\n ", "The file is empty."},
        Broken{"CutOff", "{'version':1,\n'video':{\n", "Line 3, column 1"},
        Broken{"ColumnsAreCharacters", "{'version':1,\r\n'\u00e4\u00e4': x}", "Line 2, column 7"},
        Broken{"List", "[1]", "the file: expected an object"},
        Broken{"NoVersion", "{}", "version: expected 1, found nothing"},
        Broken{"OddVersion", "{'version':'1'}", "version: expected 1, found \"1\""},
        Broken{"NewerVersion", "{'version':7,'video':3}", "newer titler (version 7"},
        Broken{"NotAnObject", "{'version':1,'title':[]}", "title: expected an object { … }, found []"},
        Broken{"Width", "{'version':1,'video':{'width':1e9}}",
               "video.width: expected a whole number from 16"},
        Broken{"Fraction", "{'version':1,'video':{'height':99.5}}", "video.height: expected a whole number"},
        Broken{"Rate", "{'version':1,'video':{'frameRate':'26'}}", "one of: 23.976, 24, 25, 29.97"},
        Broken{"Flag", "{'version':1,'title':{'font':{'bold':1}}}",
               "title.font.bold: expected true or false"},
        Broken{"Text", "{'version':1,'title':{'text':5}}", "title.text: expected a text"},
        Broken{"LongText", "{'version':1,'title':{'text':'" + QByteArray(4001, 'x') + "'}}",
               "at most 4000 characters, found 4001 characters"},
        Broken{"OneStop", Stops("[{}]"), "title.gradient.stops: expected a list of 2 to 255 elements"},
        Broken{"TooManyStops", Stops(("[{}" + QByteArray(",{}").repeated(255) + "]").constData()),
               "2 to 255 elements, found 256 elements."},
        Broken{"StopIsNumber", Stops("[{},3]"), "title.gradient.stops[1]: expected an object"},
        Broken{"Duration", "{'version':1,'duration':0}",
               "duration: expected a whole number from 1 to 1000000"},
        Broken{"Still", "{'version':1,'title':{'opacity':101}}",
               "title.opacity: expected a number from 0 to"},
        Broken{"Keys", Keys("{}"), "title.animation.scale: expected a list of 0 to 10000 elements"},
        Broken{"TooManyKeys", Keys(("[{}" + QByteArray(",{}").repeated(kMostKeys) + "]").constData()),
               "0 to 10000 elements, found 10001 elements."},
        Broken{"KeyIsNumber", Keys("[{},3]"), "title.animation.scale[1]: expected an object"},
        Broken{"KeyFrame", Keys("[{'frame':-1}]"),
               "scale[0].frame: expected a whole number from 0 to 1000000"},
        Broken{"KeyValue", Keys("[{'value':'big'}]"), "scale[0].value: expected a number from 0 to 1000,"},
        Broken{"EaseKind", Keys("[{'ease':{'kind':2}}]"),
               "scale[0].ease.kind: expected one of: linear, speed up"},
        Broken{"Tangent", Keys("[{'ease':{'out':[0.5]}}]"),
               "scale[0].ease.out: expected a list of 2 elements, found 1 elements"},
        Broken{"TangentFraction", Keys("[{'ease':{'in':[1.5,0]}}]"),
               "scale[0].ease.in[0]: expected a number from 0 to 1.333333333, found 1.5"},
        Broken{"TangentOffset", Keys("[{'ease':{'in':[1,null]}}]"),
               "ease.in[1]: expected a number from -1000000"},
        Broken{"Position", Stops("[{},{},{'position':1.5}]"),
               "title.gradient.stops[2].position: expected a number from 0 to 1, found 1.5"},
        Broken{"FillKind", "{'version':1,'title':{'fill':{'kind':'none'}}}",
               "title.fill.kind: expected one of: gradient, solid, fourCorner"},
        Broken{"BackgroundKind", "{'version':1,'background':{'kind':4}}",
               "background.kind: expected one of: none"},
        Broken{"Corners", "{'version':1,'title':{'fill':{'corners':['#000000']}}}",
               "title.fill.corners: expected a list of 4 elements, found 1 elements"},
        Broken{"Corner", "{'version':1,'background':{'corners':['#000000','#111111',3,'#222222']}}",
               "background.corners[2]: expected a colour such as"},
        Broken{"Outline", "{'version':1,'title':{'outline':{'width':10.5}}}",
               "title.outline.width: expected a number from 0 to 10,"},
        Broken{"Shadow", "{'version':1,'title':{'shadow':{'y':-21}}}",
               "title.shadow.y: expected a number from -20 to 20,"},
        Broken{"BackgroundStops", "{'version':1,'background':{'gradient':{'stops':[]}}}",
               "background.gradient.stops: expected a list of 2 to 255 elements"},
        Broken{"FirstPage", "{'version':1,'firstPage':1}", "firstPage: expected an object"},
        Broken{"PageIsText", "{'version':1,'pages':[{},'x']}", "pages[1]: expected an object"},
        Broken{"PageField", "{'version':1,'pages':[{},{'title':{'opacity':101}}]}",
               "pages[1].title.opacity: expected a number from 0 to 100,"},
        Broken{"TooManyPages", "{'version':1,'pages':[{}" + QByteArray(",{}").repeated(kMostPages - 1) + "]}",
               "pages: expected a list of 0 to 999 elements, found 1000 elements."},
        Broken{"Colour", Stops("[{'colour':'#12345G'},{}]"), "stops[0].colour: expected a colour such as"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Project, APipeIsRefused)
{
    QTemporaryDir folder;
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ProjectError error;
    EXPECT_FALSE(LoadProject(pipe, error));
    EXPECT_EQ(error.fault, ProjectFault::NoFile);
}

TEST(Project, AFailedSaveLeavesTheOldFile)
{
    QTemporaryDir folder;
    const QString file = folder.filePath("missing/p.ktitle");
    EXPECT_NE(SaveProject(file, NewProject()), "");
    ProjectError error;
    EXPECT_FALSE(LoadProject(file, error));
    EXPECT_EQ(error.fault, ProjectFault::CannotRead);
    EXPECT_FALSE(error.detail.isEmpty());
}

TEST(Project, ColoursAreReadStrictly)
{
    EXPECT_EQ(ParseColour("#80FFa500"), 0x80FFA500u);
    EXPECT_EQ(ParseColour("#FFa500"), 0xFFFFA500u);
    for (const char* odd : {"", "#", "FFA500", "#FFA50", "#FFA5000", "#+FA5000", "# FFA500", "#FFA500 "})
        EXPECT_FALSE(ParseColour(odd)) << odd;
    EXPECT_EQ(ColourText(0x0012ABCD), "#0012ABCD");
}

} // namespace
} // namespace titler
