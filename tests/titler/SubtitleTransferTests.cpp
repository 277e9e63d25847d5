// Subtitle files through the panel: what it keeps of them, what it asks and where it writes.
#include "KvDialog.h"
#include "edit/Document.h"
#include "subtitles/EncodingDialog.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "subtitles/SubtitleText.h"
#include "time/Transport.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QFile>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

#include <gtest/gtest.h>

using namespace titler;

namespace {

struct SubtitleFiles : testing::Test
{
    SubtitleFiles()
    {
        document.Edit(EditKind::Single, "rate", [](Project& project) {
            SetVideoFormat(project, {kKvAspect16x9, kKvFrameRate25, kKvScanProgressive, 1920, 1080});
        });
        QObject::connect(&panel, &SubtitlePanel::Reported,
                         [this](LogType, const QString& text) { said << text; });
        KvSetMessageBoxHandler([this](HWND, const std::wstring& text, UINT style) {
            asked << QString::fromStdWString(text);
            EXPECT_TRUE(style & MB_DEFBUTTON2) << "what loses nothing is the default";
            return answer;
        });
    }
    ~SubtitleFiles() override { KvSetMessageBoxHandler({}); }
    QString Path(const char* name) const { return folder.filePath(QLatin1String(name)); }
    QString Write(const char* name, const QByteArray& bytes) const
    {
        QFile file(Path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    QByteArray Read(const char* name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool Import(const char* name, const QByteArray& bytes) { return panel.Import(Write(name, bytes)); }
    void Edit(int row, const wchar_t* text, DWORD in, DWORD out)
    {
        list.RunAsStep(L"edit", [&] { list.ModifyItem(row, text, &in, &out, nullptr); });
    }
    void Run(const QString& name) // a command, as its menu does
    {
        for (QAction* command : panel.Commands())
            if (command != nullptr && command->text().remove(u'&') == name)
                command->trigger();
    }

    QTemporaryDir folder;
    Document document;
    Transport transport{document};
    SubtitlePanel panel{document, transport};
    SubtitleList& list = panel.List();
    QStringList said;
    QStringList asked;
    int answer = IDYES;
};

const QByteArray kStyled = "WEBVTT - Title\n\nSTYLE\n::cue { color: lime }\n\nNOTE by hand\n\n"
                           "intro\n00:00:01.001 --> 00:00:02.019 align:end\nA B\n\n"
                           "00:00:03.000 --> 00:00:04.000 line:10%\nC\n\n";
QByteArray WithoutNote(QByteArray bytes)
{
    return bytes.replace("NOTE by hand\n\n", "");
}

TEST_F(SubtitleFiles, ComeBackAsTheyWereApartFromNotes)
{
    ASSERT_TRUE(Import("in.vtt", kStyled));
    EXPECT_TRUE(said.back().contains("2 subtitles imported")) << said.back().toStdString();
    EXPECT_TRUE(said.back().endsWith("; 1 note skipped; its title kept; 1 style sheet or region kept; the "
                                     "positions of 2 subtitles kept; 1 subtitle's name kept"))
        << said.back().toStdString();
    answer = IDNO;
    EXPECT_FALSE(panel.Export(Path("in.vtt")));
    EXPECT_EQ(Read("in.vtt"), kStyled);
    answer = IDYES;
    EXPECT_TRUE(panel.Export(Path("in.vtt")));
    EXPECT_EQ(Read("in.vtt"), WithoutNote(kStyled));
    ASSERT_EQ(asked.size(), 2);
    EXPECT_TRUE(asked[1].contains("1 note in the file is not kept."));
    EXPECT_TRUE(panel.Export(Path("in.vtt")));
    EXPECT_EQ(asked.size(), 2) << "there is no note left";
    EXPECT_TRUE(panel.Export(Path("other.vtt")));
    EXPECT_EQ(panel.FileName(), Path("other.vtt"));
}

TEST_F(SubtitleFiles, AskBeforeWhatCouldNotBeReadGoes)
{
    const QByteArray bytes = "1\n00:00:01,000 --> 00:00:02,000\na\xE9\n\n2\n00:00:03,000 -> 4\nB\n\n";
    ASSERT_TRUE(panel.Import(Write("in.srt", bytes), "UTF-8"));
    EXPECT_TRUE(
        said.join(u' ').contains("1 character could not be read as UTF-8 and was replaced, in line 3."));
    answer = IDNO;
    EXPECT_FALSE(panel.Export(Path("in.srt")));
    EXPECT_EQ(Read("in.srt"), bytes);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked[0].contains(
        "1 place in the file that could not be read is not kept.\n1 character in the file"));
    EXPECT_TRUE(panel.Export(Path("out.srt"))) << "the damaged file is left alone";
    EXPECT_EQ(asked.size(), 1);
}

TEST_F(SubtitleFiles, RowsKeepWhatIsTheirsThroughEditsSortAndUndo)
{
    ASSERT_TRUE(Import("in.vtt", WithoutNote(kStyled)));
    list.SortItems(kKvSubTitleText, 0);
    Edit(1, L"A B!", 25, 51);
    list.SetSelItem(1);
    panel.show(); // commands work there
    Run("Split");
    EXPECT_TRUE(panel.Export(Path("edited.vtt")));
    EXPECT_EQ(Read("edited.vtt"), "WEBVTT - Title\n\nSTYLE\n::cue { color: lime }\n\n"
                                  "00:00:03.000 --> 00:00:04.000 line:10%\nC\n\n"
                                  "intro\n00:00:01.001 --> 00:00:01.520 align:end\nA\n\n"
                                  "00:00:01.520 --> 00:00:02.040 align:end\nB!\n\n")
        << "the time that was not changed is still the file's own";
    list.GetUndoStack()->undo();
    list.GetUndoStack()->undo();
    list.SortItems(kKvSubTitleText, 1);
    EXPECT_TRUE(panel.Export(Path("undone.vtt")));
    EXPECT_EQ(Read("undone.vtt"), WithoutNote(kStyled));
    list.GetUndoStack()->redo();
    list.GetUndoStack()->redo();
    EXPECT_TRUE(panel.Export(Path("redone.vtt")));
    EXPECT_EQ(Read("redone.vtt").count("align:end"), 2);
    EXPECT_TRUE(asked.isEmpty());
}

TEST_F(SubtitleFiles, CopiedRowsBringAlongWhatIsTheirs)
{
    ASSERT_TRUE(Import("in.vtt", WithoutNote(kStyled)));
    const QByteArray intro = "intro\n00:00:01.001 --> 00:00:02.019 align:end\nA B\n\n";
    panel.show();
    list.SetSelItem(0);
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    list.SetSelItem(1);
    QTest::keyClick(&list, Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(panel.Export(Path("copied.vtt")));
    EXPECT_EQ(Read("copied.vtt").count(intro), 2);
    list.SetSelItem(0);
    QTest::keyClick(&list, Qt::Key_X, Qt::ControlModifier);
    QTest::keyClick(&list, Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(panel.Export(Path("moved.vtt")));
    EXPECT_EQ(Read("moved.vtt").count(intro), 2);
    EXPECT_TRUE(Read("moved.vtt").contains("line:10%\nC\n\nintro")) << "behind the next row";
    Edit(0, L"another", 1, 2);
    list.RunAsStep(L"insert", [&] { list.InserItem(-1, L"new", 75, 100, nullptr); });
    EXPECT_TRUE(panel.Export(Path("other.vtt")));
    EXPECT_TRUE(Read("other.vtt").endsWith("\n\n00:00:03.000 --> 00:00:04.000\nnew\n\n"));
}

TEST_F(SubtitleFiles, BracesNeverReachAWebVttFile)
{
    ASSERT_TRUE(Import("in.vtt", WithoutNote(kStyled)));
    Edit(0, L"{\\an7}A", 25, 50);
    Edit(1, L"{\\an2}C", 75, 100);
    EXPECT_TRUE(panel.Export(Path("placed.vtt")));
    EXPECT_TRUE(asked.isEmpty()) << asked.join(u' ').toStdString();
    EXPECT_TRUE(Read("placed.vtt").contains("00:00:02.019 line:0 align:left\nA\n"))
        << "its own alignment goes";
    EXPECT_TRUE(Read("placed.vtt").contains("00:00:04.000\nC\n")) << "the place that it has anyway";
    Edit(0, L"{\\an8}{\\i1}A {\\x", 25, 50);
    EXPECT_TRUE(panel.Export(Path("styled.vtt")));
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked[0].contains("styles and tags of row 1 are not kept")) << asked[0].toStdString();
    EXPECT_TRUE(Read("styled.vtt").contains("line:0\nA {\\x\n")) << "what is no markup is text";
}

TEST_F(SubtitleFiles, TimesThatWereNotEditedKeepTheirMilliseconds)
{
    QByteArray bytes;
    for (int i = 0; i < 1000; ++i)
        bytes += QByteArray::number(i + 1) + "\n00:00:01," + QByteArray::number(i).rightJustified(3, '0') +
                 " --> 9999999:00:00,007\nx\n\n";
    for (const EKvFrameRate rate : {kKvFrameRate24, kKvFrameRate29_97, kKvFrameRate60}) {
        document.Edit(EditKind::Single, "rate", [&](Project& project) {
            SetVideoFormat(project, {kKvAspect16x9, rate, kKvScanProgressive, 1920, 1080});
        });
        ASSERT_TRUE(Import("in.srt", bytes));
        EXPECT_TRUE(panel.Export(Path("in.srt")));
        EXPECT_EQ(Read("in.srt"), bytes) << rate;
    }
}

TEST_F(SubtitleFiles, AreCopiesWhereSomethingIsLost)
{
    const QByteArray srt = "1\n00:00:01,000 --> 00:00:02,000 X1:40\nA\nB\n\n";
    const struct
    {
        const char* name;
        bool asks;
        const char* lost;
    } rows[] = {
        {"out.vtt", true, "position or alignment of row 1"},
        {"out.txt", true, "times of row 1 are not kept.\nLine breaks in row 1"},
        {"out.srt", false, ""},
    };
    for (const auto& row : rows) {
        asked.clear();
        ASSERT_TRUE(Import("in.srt", srt));
        Edit(0, L"A\nB", 30, 50);
        EXPECT_TRUE(panel.Export(Path(row.name))) << row.name;
        EXPECT_EQ(asked.size(), row.asks ? 1 : 0) << row.name;
        EXPECT_TRUE(asked.join(u' ').contains(QLatin1String(row.lost))) << asked.join(u' ').toStdString();
        EXPECT_EQ(panel.IsModified(), row.asks) << row.name;
        EXPECT_EQ(panel.FileName(), Path(row.asks ? "in.srt" : row.name)) << row.name;
        EXPECT_EQ(said.back().startsWith("A copy of 1 subtitle "), row.asks) << said.back().toStdString();
    }
    ASSERT_TRUE(Import("plain.srt", "1\n00:00:01,000 --> 00:00:02,000\nA\n\n"));
    Edit(0, L"B", 25, 50);
    EXPECT_TRUE(panel.Export(Path("plain.vtt")));
    EXPECT_TRUE(panel.IsModified()) << "nothing was lost, but it is another format";
    EXPECT_EQ(panel.FileName(), Path("plain.srt"));
}

TEST_F(SubtitleFiles, TheOwnFileTakesWhatItCanAndTheRestStaysModified)
{
    ASSERT_TRUE(Import("in.srt", "1\n00:00:01,000 --> 00:00:02,000\nA\n\n"));
    list.RunAsStep(L"add", [&] { list.InserItem(-1, L"no time", kNoTime, kNoTime, nullptr); });
    EXPECT_TRUE(panel.Export(Path("in.srt")));
    EXPECT_EQ(asked.size(), 1);
    EXPECT_TRUE(panel.IsModified());
    Edit(1, L"now", 75, 100);
    EXPECT_TRUE(panel.Export(Path("in.srt")));
    EXPECT_EQ(asked.size(), 1);
    EXPECT_FALSE(panel.IsModified());
    EXPECT_EQ(Read("in.srt").count("-->"), 2);
}

TEST_F(SubtitleFiles, KeepTheirFormAndTheirFormatWhateverTheirName)
{
    const struct
    {
        const char* name;
        QByteArray bytes;
        const char* said;
    } rows[] = {
        {"pairs.srt",
         "\xEF\xBB\xBF"
         "1\r\n00:00:01,000 --> 00:00:02,000\r\nA\r\n\r\n",
         "imported"},
        {"code.srt", "1\r\n00:00:01,000 --> 00:00:02,000\r\n\xC0 bient\xF4t\r\n\r\n", "read as windows-1252"},
        {"really.txt", "1\n00:00:01,000 --> 00:00:02,000\nA\n\n", "read as SubRip"},
        {"vtt.txt", "WEBVTT\n\n00:00:01.000 --> 00:00:02.000\nA\n\n", "read as WebVTT"},
        {"vtt.srt", "WEBVTT\n\n00:00:01.000 --> 00:00:02.000\nA\n\n", "read as WebVTT"},
        {"lines.txt", "<i>A\r\n\r\n1\r\n", "3 subtitles imported"},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(
            panel.Import(Write(row.name, row.bytes), row.bytes.contains('\xC0') ? "windows-1252" : ""));
        EXPECT_TRUE(said.back().contains(QLatin1String(row.said))) << said.back().toStdString();
        EXPECT_TRUE(panel.Export(Path(row.name))) << row.name;
        EXPECT_EQ(Read(row.name), row.bytes) << row.name;
    }
    ASSERT_TRUE(panel.Import(Write("code.srt", rows[1].bytes), "windows-1252"));
    Edit(0, L"\u4f60", 25, 50);
    EXPECT_TRUE(asked.isEmpty());
    answer = IDNO;
    EXPECT_FALSE(panel.Export(Path("code.srt")));
    EXPECT_EQ(Read("code.srt"), rows[1].bytes);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_TRUE(asked[0].contains("windows-1252 has no \u201c\u4f60\u201d")) << asked[0].toStdString();
    answer = IDYES;
    EXPECT_TRUE(panel.Export(Path("code.srt")));
    EXPECT_TRUE(said.back().contains("written as UTF-8, since windows-1252")) << said.back().toStdString();
    EXPECT_EQ(Read("code.srt"), "1\r\n00:00:01,000 --> 00:00:02,000\r\n\u4f60\r\n\r\n");
    EXPECT_TRUE(panel.Export(Path("code.srt")));
    EXPECT_EQ(asked.size(), 2) << "it is UTF-8 now";
}

TEST_F(SubtitleFiles, AreRefusedWhereTheyWouldBeCutOrGuessed)
{
    ASSERT_TRUE(Import("in.srt", "1\n00:00:01,000 --> 00:00:02,000\nA\n\n"));
    QFile huge(Path("huge.srt"));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize((qint64(1) << 30) + 1)); // takes no room
    const struct
    {
        QString file;
        const char* encoding;
        const char* said;
    } rows[] = {
        {Path("huge.srt"), "", "larger than 1024 MB"},
        {Path("missing.srt"), "", "No such file"},
        {folder.path(), "", "not a regular file"},
        {Write("code.srt", "D\xE9j\xE0"), "", "perhaps as windows-1252. Name the encoding with --encoding."},
        {Path("code.srt"), "klingon", "no encoding “klingon”"},
    };
    for (const auto& row : rows) {
        EXPECT_FALSE(panel.Import(row.file, QLatin1String(row.encoding)));
        EXPECT_TRUE(said.back().contains(QString::fromUtf8(row.said))) << said.back().toStdString();
        EXPECT_EQ(list.GetItemCount(), 1);
        EXPECT_EQ(panel.FileName(), Path("in.srt"));
    }
}

TEST_F(SubtitleFiles, AskForTheEncodingWithAPreview)
{
    panel.show();
    QStringList shown;
    QTimer::singleShot(0, [&] {
        auto* dialog = panel.findChild<EncodingDialog*>();
        ASSERT_NE(dialog, nullptr);
        auto* names = dialog->findChild<QListWidget*>();
        auto* preview = dialog->findChild<QPlainTextEdit*>();
        shown << dialog->Encoding() << preview->toPlainText();
        QTest::keyClicks(names, "windows-1251"); // by its name, as lists are
        shown << dialog->Encoding() << preview->toPlainText();
        QTest::keyClick(names, Qt::Key_Return);
    });
    EXPECT_TRUE(Import("in.srt", "1\n00:00:01,000 --> 00:00:02,000\nD\xE9j\xE0\n\n"));
    ASSERT_EQ(shown.size(), 4);
    EXPECT_EQ(shown[0], "windows-1252");
    EXPECT_TRUE(shown[1].contains("Déjà"));
    EXPECT_EQ(shown[2], "windows-1251");
    EXPECT_TRUE(shown[3].contains("Dйjа"));
    QTimer::singleShot(0, [&] { panel.findChild<EncodingDialog*>()->reject(); });
    EXPECT_FALSE(Import("other.srt", "\xC7"));
    EXPECT_EQ(list.GetItemText(0, kKvSubTitleText), L"Dйjа");
}

} // namespace
