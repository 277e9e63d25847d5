// What is wrong with rows, and finding and replacing, in the workspace of subtitles.
#include "SubtitleWindow.h"
#include "subtitles/SubtitleFindBar.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QLineEdit>

using namespace titler;

namespace {

TEST_F(SubtitleWindow, FaultsAreSaidOfTheCurrentRowAndFound)
{
    ASSERT_TRUE(Import("1\n00:00:01,000 --> 00:00:02,000\nfine\n\n"
                       "2\n00:00:04,000 --> 00:00:03,000\nodd\n\n"
                       "3\n00:00:05,000 --> 00:00:08,000\nfine\n\n"
                       "4\n00:00:07,000 --> 00:00:09,000\nover\n\n"));
    const auto fault = [&] {
        for (QLabel* label : panel.findChildren<QLabel*>())
            if (label->property("role") == "fault")
                return label->text();
        return QString();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] {
        QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&list);
        QAccessibleInterface* cell =
            table->tableInterface() ? table->tableInterface()->cellAt(2, 0) : nullptr;
        return cell && cell->text(QAccessible::Description).startsWith("It overlaps row 4 by 1 s.");
    }));
    Select(0);
    EXPECT_EQ(fault(), "");
    const QPoint place = panel.List().mapTo(&panel, QPoint());
    const int height = list.height();
    Press(Qt::Key_F8, Qt::ControlModifier);
    EXPECT_EQ(list.GetCurrentItem(), 1);
    EXPECT_TRUE(fault().contains("before it begins"));
    EXPECT_EQ(list.height(), height) << "the list does not jump";
    EXPECT_EQ(panel.List().mapTo(&panel, QPoint()), place);
    Press(Qt::Key_F8, Qt::ControlModifier);
    EXPECT_EQ(list.GetCurrentItem(), 2);
    Press(Qt::Key_F8, Qt::ControlModifier);
    EXPECT_EQ(list.GetCurrentItem(), 1) << "round the end";
    Press(Qt::Key_F8, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(list.GetCurrentItem(), 2);
    Press(Qt::Key_F, Qt::ControlModifier);
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, "o");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(list.GetCurrentItem(), 3);
    EXPECT_EQ(fault(), "");
    QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(list.GetCurrentItem(), 1) << "backwards";
    EXPECT_NE(fault(), "");
}

struct FindBar : SubtitleWindow
{
    // The field with the focus, once the key has opened the bar.
    QLineEdit* Open(int key)
    {
        Press(key, Qt::ControlModifier);
        auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        EXPECT_NE(field, nullptr);
        return field;
    }
    QString Result()
    {
        for (QLabel* label : panel.findChild<SubtitleFindBar*>()->findChildren<QLabel*>())
            if (label->property("role") == "hint")
                return label->text();
        return {};
    }
    void Click(const QString& name)
    {
        for (QAbstractButton* button : panel.findChild<SubtitleFindBar*>()->findChildren<QAbstractButton*>())
            if (button->text().remove(u'&') == name)
                button->click();
    }
};

TEST_F(FindBar, SaysWhereTheHitStands)
{
    ASSERT_TRUE(Import(kThree));
    list.ModifyItem(1, L"he there", nullptr, nullptr, nullptr);
    Select(0);
    QLineEdit* field = Open(Qt::Key_F);
    QTest::keyClicks(field, "he");
    const char* found[] = {
        "Row 1, at \u201cHello there fr\u2026\u201d; 4 in all.",
        "Row 1, at \u201cHello there friend\u201d; 4 in all.", "Row 2, at \u201che there\u201d; 4 in all.",
        "Row 2, at \u201che there\u201d; 4 in all.",
        "Begun again at the first row. Row 1, at \u201cHello there fr\u2026\u201d; 4 in all."};
    for (const char* text : found) {
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(Result().toStdString(), text);
    }
    QTest::keyClick(field, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_TRUE(Result().startsWith("Begun again")) << "backwards, the last one";
    EXPECT_EQ(list.GetCurrentItem(), 1);
    QTest::keyClicks(Open(Qt::Key_R), "she");
    Click("Replace");
    EXPECT_EQ(Row(1), "-1--1 he tshere") << "that very one";
    EXPECT_TRUE(Result().startsWith("Row 2, at \u201che tshere")) << Result().toStdString();
}

TEST_F(FindBar, ForgetsAResultThatDoesNotHold)
{
    ASSERT_TRUE(Import(kThree));
    Select(0);
    QLineEdit* field = Open(Qt::Key_F);
    const std::pair<const char*, std::function<void()>> changes[] = {
        {"text", [&] { QTest::keyClicks(field, "x"); }},
        {"option", [&] { Click("Match case"); }},
        {"selection", [&] { Press(Qt::Key_Down); }},
        {"rows", [&] { list.GetUndoStack()->undo(); }},
        {"import", [&] { Import(kThree); }},
    };
    for (const auto& [why, change] : changes) {
        list.RunAsStep(L"step", [&] { list.ModifyItem(0, L"other", nullptr, nullptr, nullptr); });
        field->setText("nowhere");
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(Result(), "Not found.") << why;
        change();
        EXPECT_EQ(Result(), "") << why;
    }
    Click("Regular expression");
    field->setText("(");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(Result().startsWith("The regular expression is wrong at its end")) << Result().toStdString();
}

} // namespace
