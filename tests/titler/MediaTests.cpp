#include "media/MediaPanel.h"
#include "media/NamingRules.h"
#include "media/SiblingFinder.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

namespace titler {
namespace {

Ref<IKvFileNamingRuleCollection> BuiltInRules()
{
    IKvFileNamingRuleCollection* rules = nullptr;
    KvLoadFileNamingCollection(L"", &rules, nullptr);
    return Ref<IKvFileNamingRuleCollection>(rules);
}

void Open(MediaPanel& panel, const QString& folder)
{
    QEventLoop loop;
    QObject::connect(&panel, &MediaPanel::Ready, &loop, &QEventLoop::quit);
    QTimer::singleShot(60000, &loop, &QEventLoop::quit);
    panel.OpenFolder(folder);
    loop.exec();
    ASSERT_FALSE(panel.IsBusy());
}

std::map<QString, QStringList> Tree(const QAbstractItemModel& model)
{
    std::map<QString, QStringList> tree;
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex clip = model.index(row, 0);
        QStringList& siblings = tree[clip.data().toString()];
        for (int i = 0; i < model.rowCount(clip); ++i) {
            siblings << model.index(i, 0, clip).data().toString();
            EXPECT_EQ(model.parent(model.index(i, 0, clip)), clip);
        }
    }
    return tree;
}

TEST(MediaPanel, GroupsTheSampleFolder)
{
    NamingRules rules;
    MediaPanel panel(rules);
    Open(panel, QStringLiteral(TITLER_SAMPLES "/media"));
    const std::map<QString, QStringList> tree = Tree(panel.Model());
    EXPECT_EQ(tree.at("aurora_01.mxf").size(), 8);
    EXPECT_EQ(tree.at("aurora_01.mxf").last(), "aurora_01_A8.wav");
    EXPECT_EQ(tree.at("camp-00-0001-00-000-VHD.MXF").first(), "camp-ZH-0001-00-000-A01.MXF");
    EXPECT_EQ(tree.at("fjord_flyover.mov").size(), 2);
    EXPECT_EQ(tree.at("timelapse_lake.mov"), QStringList{"timelapse_lake.wav"});
    // "Alt" looks like an audio channel's "A…", but has no number.
    EXPECT_EQ(tree.at("interview_marit.mxf").size(), 4);
    EXPECT_EQ(tree.at("interview_marit Alt.mov"), QStringList());
    EXPECT_EQ(tree.at("shot_list.txt"), QStringList());
    EXPECT_EQ(tree.count("aurora_01_A1.wav"), 0u);
}

TEST(MediaPanel, AnotherFolderReplacesTheFirst)
{
    QTemporaryDir folder;
    QFile(folder.filePath("one.mov")).open(QIODevice::WriteOnly);
    NamingRules rules;
    MediaPanel panel(rules);
    panel.OpenFolder(QStringLiteral(TITLER_SAMPLES "/media")); // still under way
    Open(panel, folder.path());
    EXPECT_EQ(Tree(panel.Model()), (std::map<QString, QStringList>{{"one.mov", {}}}));
    Open(panel, folder.filePath("missing"));
    EXPECT_EQ(panel.Model().ClipCount(), 0);
}

// The names that are offered are picked by their beginning; every file offered to every base finds the same.
TEST(SiblingFinder, FindsWhatOfferingEveryNameFinds)
{
    std::mt19937 random(20);
    const auto pick = [&](std::initializer_list<const wchar_t*> from) {
        return std::wstring(from.begin()[random() % from.size()]);
    };
    for (int round = 0; round < 5; ++round) {
        std::set<std::wstring> made;
        while (made.size() < 60)
            made.insert(pick({L"clip", L"Clip", L"CLIP", L"cli", L"a1", L"a1b", L"\u00c4", L"\u00e4", L"x.y",
                              L"*p"}) +
                        pick({L"", L"", L"A1", L"A2", L"_A01", L"_A10", L" A3", L"-00-0001-00-000-VHD"}) +
                        pick({L".mxf", L".MXF", L".wav", L".tar.gz"}));
        SiblingFinder finder(*BuiltInRules(), {made.begin(), made.end()});
        const std::vector<std::wstring>& names = finder.Names();
        for (std::size_t base = 0; base < names.size(); ++base) {
            IKvFileNamingMatcher* created = nullptr;
            KvCreateFileNamingMatcher(&created);
            const Ref<IKvFileNamingMatcher> matcher(created);
            matcher->Prepare(names[base].c_str(), kKvNamingClassVideoAudio, BuiltInRules().get());
            for (const std::wstring& name : names)
                matcher->AddFile(name.c_str());
            unsigned int groups = 0;
            matcher->BuildGroups(&groups);
            CStringArray plain;
            wchar_t text[kKvNamingGroupNameSize];
            for (unsigned int i = 0; i < groups; ++i)
                matcher->GetGroup(i, text, &plain);
            CStringArray expected;
            for (const std::wstring& name : plain)
                if (name != names[base] && std::count(expected.begin(), expected.end(), name) == 0)
                    expected.push_back(name);
            CStringArray found;
            for (const std::size_t sibling : finder.SiblingsOf(base, {}))
                found.push_back(names[sibling]);
            EXPECT_EQ(found, expected) << QString::fromStdWString(names[base]).toStdString();
        }
    }
}

} // namespace
} // namespace titler
