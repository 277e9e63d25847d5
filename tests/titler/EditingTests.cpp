#include "KvGradientCtrl.h"
#include "edit/Document.h"
#include "time/Transport.h"
#include "title/CanvasView.h"
#include "title/GradientInspector.h"
#include "title/TextInspector.h"
#include "window/MainWindow.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFontComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace titler {
namespace {

struct Gradient : testing::Test
{
    Gradient()
    {
        inspector.resize(400, 300);
        inspector.show();
    }

    GradientStops Shown() const
    {
        int count = 0;
        SKvCGGradientKey* keys = nullptr;
        control.GetData(count, &keys);
        return {keys, keys + count};
    }

    SKvCGGradientKey& Stop(int index) const
    {
        int count = 0;
        SKvCGGradientKey* keys = nullptr;
        control.GetData(count, &keys);
        return keys[index];
    }

    void Tell(std::uintptr_t event, int phase)
    {
        GradientNotifyRecord record{{&control, event, kKvGradientNotifyCode}, phase, nullptr, 0};
        KvSendMessage(&inspector, WM_NOTIFY, control.GetDlgCtrlID(), reinterpret_cast<LPARAM>(&record));
    }

    float Position(int index) const
    {
        return document.Current().title.fill.stops[std::size_t(index)].position;
    }
    int Steps() { return document.Steps().count(); }

    Document document;
    GradientInspector inspector{document};
    CKvGradientCtrl& control = *inspector.findChild<CKvGradientCtrl*>();
};

TEST_F(Gradient, ARunIsOneStep)
{
    for (const int phase : {kKvPhaseBegin, kKvPhaseContinue, kKvPhaseContinue}) {
        Stop(1).position += 0.1f;
        Tell(kKvGradientStopsEdited, phase);
        EXPECT_EQ(Position(1), Stop(1).position); // live
        EXPECT_EQ(Steps(), 0);
    }
    Tell(kKvGradientStopsEdited, kKvPhaseEnd);
    EXPECT_EQ(Steps(), 1);
    EXPECT_NEAR(Position(1), 0.75, 1e-6);
    document.Undo();
    EXPECT_EQ(Stop(1).position, 0.45f); // written back, and not taken for another edit
    EXPECT_EQ(Steps(), 1);
    document.Redo();
    EXPECT_NEAR(Stop(1).position, 0.75, 1e-6);
}

struct Sequence
{
    const char* name;
    std::vector<std::pair<int, int>> records; ///< event and phase; an edit moves a stop before each
    int steps;
};

TEST_F(Gradient, StepsFollowTheRecords)
{
    const Sequence sequences[] = {
        {"a triple", {{1, 0}, {1, 1}, {1, 2}}, 1},
        {"an added stop, then its triple", {{1, 0}, {1, 0}, {1, 1}, {1, 2}}, 1},
        {"two runs", {{1, 0}, {1, 2}, {1, 0}, {1, 2}}, 2},
        {"an end without a begin", {{1, 2}}, 0},
        {"stops set by us", {{0, 0}}, 0},
        {"a selection", {{2, 0}}, 0},
    };
    for (const Sequence& sequence : sequences) {
        document.New();
        for (const auto& [event, phase] : sequence.records) {
            if (event == 1 && phase != 2)
                Stop(1).position += 0.01f;
            Tell(std::uintptr_t(event), phase);
        }
        EXPECT_EQ(Steps(), sequence.steps) << sequence.name;
    }
    document.New();
    Tell(kKvGradientStopsEdited, kKvPhaseBegin);
    Tell(kKvGradientStopsEdited, kKvPhaseEnd);
    EXPECT_EQ(Steps(), 0) << "a drag that came back is no step";
}

TEST_F(Gradient, UndoInARunEndsItFirst)
{
    Stop(1).position = 0.6f;
    Tell(kKvGradientStopsEdited, kKvPhaseBegin);
    document.Undo();
    EXPECT_EQ(Stop(1).position, 0.45f);
    Tell(kKvGradientStopsEdited, kKvPhaseEnd); // late
    EXPECT_EQ(Steps(), 1);
    document.Redo();
    EXPECT_EQ(Position(1), 0.6f);
}

TEST_F(Gradient, ADragIsOneStepAndUndoSelectsItsStop)
{
    const GradientStops before = Shown();
    const auto marker = [&](double t) {
        return QPoint(4 + int((control.width() - 9) * t), control.height() - 6);
    };
    const auto move = [&](QPoint to) {
        QMouseEvent event(QEvent::MouseMove, to, control.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&control, &event);
    };
    QTest::mousePress(&control, Qt::LeftButton, {}, marker(0.0));
    move(marker(0.2));
    move(marker(0.7)); // past the middle stop
    EXPECT_EQ(Steps(), 0);
    QTest::mouseRelease(&control, Qt::LeftButton, {}, marker(0.7));
    EXPECT_EQ(Steps(), 1);
    EXPECT_EQ(control.GetSelectedKey(), 1);
    EXPECT_NEAR(Position(1), 0.7, 0.01);
    EXPECT_EQ(inspector.findChild<QDoubleSpinBox*>("position")->value(), std::round(Position(1) * 1e4) / 100);
    document.Undo();
    EXPECT_EQ(control.GetSelectedKey(), 0);
    EXPECT_EQ(Shown()[0].position, before[0].position);
    document.Redo();
    EXPECT_EQ(control.GetSelectedKey(), 1);
    EXPECT_EQ(document.Selection().Stop(), 1);
}

TEST_F(Gradient, ThePositionMovesTheSelectedStop)
{
    document.Select(document.Selection().WithStop(1));
    inspector.findChild<QDoubleSpinBox*>("position")->setValue(100);
    EXPECT_EQ(control.GetSelectedKey(), 2); // equal positions: behind the stop that was there
    EXPECT_EQ(control.GetSelectedColor(), 0xFFFFB347u);
    EXPECT_EQ(Steps(), 1);
    document.Undo();
    EXPECT_EQ(control.GetSelectedKey(), 1);
}

TEST(TextInspector, TypingMergesWordByWord)
{
    Document document;
    TextInspector inspector(document);
    auto& text = *inspector.findChild<QPlainTextEdit*>("text");
    const auto shown = [&] { return document.Current().title.text; };
    text.selectAll();
    QTest::keyClicks(&text, "one two");
    EXPECT_EQ(shown(), "one two");
    document.Undo();
    EXPECT_EQ(shown(), "one");
    EXPECT_EQ(text.toPlainText(), "one");
    EXPECT_EQ(text.textCursor().position(), 3);
    QApplication::clipboard()->setText("\npasted");
    text.paste();
    QTest::keyClicks(&text, "x");
    document.Undo();
    EXPECT_EQ(shown(), "one\npasted");
    document.Undo();
    EXPECT_EQ(shown(), "one");
    while (document.Steps().canUndo())
        document.Undo();
    EXPECT_EQ(shown(), "Title");
    text.setPlainText(QString(kLongestText + 5, 'x'));
    EXPECT_EQ(shown().size(), kLongestText);
    EXPECT_EQ(text.toPlainText().size(), kLongestText);
}

TEST(TextInspector, AFontIsOneStepWhenItsNameIsComplete)
{
    Document document;
    TextInspector inspector(document);
    auto& family = *inspector.findChild<QFontComboBox*>();
    const QString first = family.currentText();
    const QString other = family.itemText(family.itemText(0) == first ? 1 : 0);
    family.lineEdit()->selectAll();
    QTest::keyClicks(family.lineEdit(), other.toLower());
    EXPECT_EQ(document.Steps().count(), 0);
    QTest::keyClick(family.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(document.Steps().count(), 1);
    EXPECT_EQ(document.Current().title.fontFamily, other);
    family.lineEdit()->setText("no such font");
    QTest::keyClick(family.lineEdit(), Qt::Key_Return);
    EXPECT_EQ(family.currentText(), other);
    document.Undo();
    EXPECT_EQ(family.currentText(), first);
}

struct MessageBoxes
{
    MessageBoxes()
    {
        KvSetMessageBoxHandler([this](HWND, const std::wstring& text, UINT) {
            texts << QString::fromStdWString(text);
            return answer;
        });
    }
    ~MessageBoxes() { KvSetMessageBoxHandler({}); }

    QStringList texts;
    int answer = IDCANCEL;
};

TEST(MainWindow, AsksBeforeItLosesChanges)
{
    MessageBoxes boxes;
    QTemporaryDir folder;
    const QString file = folder.filePath("p.ktitle");
    MainWindow window;
    window.show();
    ASSERT_EQ(window.Project().SaveAs(file), "");
    EXPECT_FALSE(window.isWindowModified());
    window.Project().Edit(EditKind::Single, "", [](Project& project) { project.title.bold = false; });
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_FALSE(window.close()); // cancelled
    EXPECT_EQ(boxes.texts.size(), 1);
    boxes.answer = IDYES;
    EXPECT_TRUE(window.close());
    ProjectError error;
    EXPECT_FALSE(LoadProject(file, error)->title.bold);
    EXPECT_FALSE(window.isWindowModified());
    window.Project().Undo();
    EXPECT_TRUE(window.isWindowModified());
    window.Project().Redo();
    EXPECT_TRUE(window.close()); // nothing to ask
    EXPECT_EQ(boxes.texts.size(), 2);
}

TEST(MainWindow, MayDieInADrag)
{
    MainWindow window;
    window.show();
    auto& control = *window.findChild<CKvGradientCtrl*>();
    QTest::mousePress(&control, Qt::LeftButton, {},
                      {control.width() / 3, control.height() / 2}); // adds a stop
    EXPECT_TRUE(window.Project().IsInRun());
}

TEST(MainWindow, UndoesTheFirstGestureInTheMiddle)
{
    MainWindow window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    auto& control = *window.findChild<CKvGradientCtrl*>();
    QTest::mousePress(&control, Qt::LeftButton, {}, {control.width() / 3, control.height() / 2});
    EXPECT_EQ(window.Project().Current().title.fill.stops.size(), 4);
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(window.Project().IsInRun());
    EXPECT_EQ(window.Project().Current().title.fill.stops.size(), 3);
}

TEST(MainWindow, ABrokenProjectIsReportedAndTheOpenOneStays)
{
    MessageBoxes boxes;
    QTemporaryDir folder;
    QFile file(folder.filePath("bad.ktitle"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{\"version\": 1, \"title\": {\"font\": {\"size\": 0}}}");
    file.close();
    MainWindow window;
    EXPECT_FALSE(window.OpenProject(file.fileName()));
    ASSERT_EQ(boxes.texts.size(), 1);
    EXPECT_TRUE(boxes.texts[0].contains("bad.ktitle"));
    EXPECT_TRUE(boxes.texts[0].contains("title.font.size: expected a number from 1 to 100, found 0"));
    EXPECT_EQ(window.Project().Current().title.text, "Title");
}

// What is shown has a name, and no two fields share an Alt key.
void CheckNames(MainWindow& window)
{
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const bool isPart = widget->objectName().startsWith("qt_");
        if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) && !isPart &&
            widget->focusProxy() == nullptr) {
            EXPECT_FALSE(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
                << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
        }
    }
    QStringList keys;
    const auto add = [&](const QString& text) {
        const qsizetype mark = text.indexOf('&');
        if (mark >= 0)
            keys << text.mid(mark + 1, 1).toUpper();
    };
    for (const QLabel* label : window.findChildren<QLabel*>())
        if (label->isVisible() && label->buddy() != nullptr)
            add(label->text());
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
        if (button->isVisible())
            add(button->text());
    EXPECT_EQ(keys.removeDuplicates(), 0) << "two fields share an Alt key";
}

TEST(MainWindow, EverythingHasANameForTheKeyboardAndTheScreenReader)
{
    MainWindow window;
    window.show();
    for (const Workspace workspace : kWorkspaces) {
        window.Show(workspace);
        CheckNames(window);
    }
    for (const auto& menu : window.AllCommands().Menus()) {
        EXPECT_TRUE(menu->title().contains('&'));
        for (const QAction* action : menu->actions())
            EXPECT_TRUE(action->isSeparator() || !action->toolTip().isEmpty())
                << action->text().toStdString();
    }
}

TEST(CanvasView, FitsAndZooms)
{
    Document document;
    Transport transport(document);
    CanvasView canvas(document, transport);
    canvas.resize(1008, 600);
    canvas.show();
    EXPECT_EQ(canvas.FrameRect(), QRectF(24, 30, 960, 540));
    EXPECT_EQ(canvas.Zoom(), 0.5);
    canvas.SetZoom(1);
    EXPECT_EQ(canvas.FrameRect().size(), QSizeF(1920, 1080));
    EXPECT_FALSE(canvas.IsFitted());
    canvas.SetZoom(1e9);
    EXPECT_EQ(canvas.Zoom(), 8);
    canvas.FitToWindow();
    document.Edit(EditKind::Single, "", [](Project& project) {
        project.video = {kKvAspect4x3, kKvFrameRate25, kKvScanUpperFirst, 720, 576};
    });
    EXPECT_NEAR(canvas.FrameRect().width() / canvas.FrameRect().height(), 4.0 / 3, 0.005);
}

} // namespace
} // namespace titler
