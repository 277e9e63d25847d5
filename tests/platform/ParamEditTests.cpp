// The number edit and the radio button under real keys and mouse events.
#include "KvButtons.h"
#include "KvParamEdit.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

constexpr WPARAM kId = 77;

void Mouse(QWidget& widget, QEvent::Type type, QPoint at)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, at, widget.mapToGlobal(at), isMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

void Drag(QWidget& widget, QPoint from, std::initializer_list<QPoint> ways)
{
    Mouse(widget, QEvent::MouseButtonPress, from);
    for (const QPoint way : ways)
        Mouse(widget, QEvent::MouseMove, from + way);
}

// An edit from 0 to 100 at 50; messages are written "phase:number".
class ParamEdit : public testing::Test
{
protected:
    ParamEdit()
    {
        edit = new CKvParamEdit;
        edit->setGeometry(10, 10, 60, 24);
        edit->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &parent, kId);
        edit->SetValueRange(0, 100);
        edit->SetValue(50);
        parent.resize(200, 100);
        parent.show();
        QApplication::setActiveWindow(&parent);
        line = edit->findChild<QLineEdit*>();
        edit->setFocus();
        line->selectAll();
    }
    std::optional<LRESULT> Hear(UINT message, WPARAM wParam, LPARAM lParam)
    {
        const auto& record = *reinterpret_cast<const KvParamEditRecord*>(lParam);
        EXPECT_TRUE(message == WM_NOTIFY && wParam == kId && record.hdr.hwndFrom == edit &&
                    record.hdr.idFrom == kId && record.hdr.code == 0xFFFFFFD7u);
        heard += (heard.empty() ? "" : " ") + std::to_string(record.phase) + ':' +
                 std::to_string(edit->GetValue());
        if (onMessage)
            onMessage();
        return std::nullopt;
    }
    std::string Heard() { return std::exchange(heard, {}); }
    void Wheel(int delta)
    {
        const QPointF at(20, 10);
        QWheelEvent event(at, line->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(line, &event);
    }

    QWidget parent;
    KvMessageSink sink{&parent, [this](auto... message) { return Hear(message...); }};
    QPointer<CKvParamEdit> edit;
    QLineEdit* line = nullptr;
    std::string heard;
    std::function<void()> onMessage;
};

TEST_F(ParamEdit, HasRoomForTheLettersOfAHostsSheet)
{
    const QSize before = edit->sizeHint();
    parent.setStyleSheet("QLineEdit { font-size: 30px }");
    QApplication::processEvents();
    const QFontMetrics metrics(line->font());
    EXPECT_EQ(line->font().pixelSize(), 30);
    edit->resize(edit->sizeHint());
    EXPECT_GE(line->height(), metrics.height());
    EXPECT_GE(line->width(), metrics.horizontalAdvance("100"));
    parent.setStyleSheet({});
    EXPECT_EQ(edit->sizeHint(), before);
}

TEST_F(ParamEdit, TellsOfEachDigitAndOfTheEnd)
{
    QTest::keyClicks(line, "73");
    EXPECT_EQ(Heard(), "0:7 1:73");
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_EQ(Heard(), "2:73");
    line->selectAll();
    QTest::keyClicks(line, "999");
    EXPECT_EQ(Heard(), "0:9 1:99");
    edit->EndTyping();
    EXPECT_EQ(Heard(), "1:100 2:100");
    EXPECT_EQ(line->text(), "100");
}

TEST_F(ParamEdit, GivesTheNumberBackOnEscapeAndCommitsOnLeaving)
{
    QTest::keyClicks(line, "7");
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_EQ(Heard(), "0:7 2:50");
    EXPECT_EQ(line->text(), "50");
    line->selectAll();
    QTest::keyClicks(line, "8");
    line->clearFocus();
    QCoreApplication::sendPostedEvents(edit);
    EXPECT_EQ(Heard(), "0:8 2:8");
}

TEST_F(ParamEdit, StepsByKeysAndWheelAndStopsAtTheEnds)
{
    QTest::keyClick(line, Qt::Key_Up);
    EXPECT_EQ(Heard(), "0:51 1:51 2:51");
    QTest::keyClick(line, Qt::Key_PageDown);
    EXPECT_EQ(edit->GetValue(), 41);
    Wheel(60);
    EXPECT_EQ(edit->GetValue(), 41) << "half a notch";
    Wheel(60);
    EXPECT_EQ(edit->GetValue(), 42);
    edit->SetValue(100);
    Heard();
    Wheel(120);
    QTest::keyClick(line, Qt::Key_Up);
    EXPECT_EQ(Heard(), "");
}

TEST_F(ParamEdit, ScrubsOnItsBorderBeyondTheDragDistance)
{
    Drag(*edit, {1, 10}, {{3, 0}, {20, 0}, {20, -5}});
    EXPECT_EQ(Heard(), "0:70 1:75");
    Mouse(*edit, QEvent::MouseButtonRelease, {21, 5});
    EXPECT_EQ(Heard(), "2:75");
    Drag(*edit, {1, 10}, {{0, 30}});
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_EQ(Heard(), "0:45 2:75");
    Mouse(*edit, QEvent::MouseMove, {60, 10});
    EXPECT_EQ(Heard(), "");
}

TEST_F(ParamEdit, PastesNumbersAndHandsOtherTextsOn)
{
    int foreign = 0;
    QObject::connect(edit, &CKvParamEdit::ForeignPasted, [&foreign] { ++foreign; });
    const struct
    {
        const char* pasted;
        const char* text;
        const char* heard;
        int foreign;
    } cases[] = {{" 42 ", "42", "0:42 2:42", 0},
                 {"+5", "5", "0:5 2:5", 0},
                 {"-5", "0", "0:0 2:0", 0},
                 {"+", "50", "", 1},
                 {"99999999999", "2147483647", "0:100 2:100", 0},
                 {"#123456", "50", "", 1}};
    for (const auto& one : cases) {
        edit->SetValue(50);
        line->selectAll();
        QApplication::clipboard()->setText(one.pasted);
        QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(line->text(), one.text);
        edit->EndTyping();
        EXPECT_EQ(Heard(), one.heard) << one.pasted;
        EXPECT_EQ(std::exchange(foreign, 0), one.foreign) << one.pasted;
    }
}

TEST_F(ParamEdit, TakesNumbersOfTenDigits)
{
    constexpr int kLeast = std::numeric_limits<int>::min();
    constexpr int kMost = std::numeric_limits<int>::max();
    const struct
    {
        int minimum, maximum;
        const char* typed;
        int number;
    } cases[] = {
        {0, kMost, "2147483647", kMost},
        {0, kMost, "2147483646", kMost - 1},
        {0, kMost, "2147483648", kMost},
        {0, kMost, "9999999999", kMost},
        {0, kMost, "21474836470", kMost}, // no room for the last one
        {kLeast, kMost, "-2147483648", kLeast},
        {kLeast, kMost, "-9999999999", kLeast},
        {kLeast, -1, "5", -1},
    };
    for (const auto& one : cases) {
        edit->SetValueRange(one.minimum, one.maximum);
        edit->SetValue(one.minimum / 2);
        line->selectAll();
        QTest::keyClicks(line, one.typed);
        EXPECT_TRUE(QString(one.typed).startsWith(line->text())) << "it is shown until it is committed";
        QTest::keyClick(line, Qt::Key_Return);
        EXPECT_EQ(edit->GetValue(), one.number) << one.typed;
        EXPECT_EQ(line->text(), QString::number(one.number));
        const std::string last = "2:" + std::to_string(one.number);
        EXPECT_TRUE(QString::fromStdString(Heard()).endsWith(QString::fromStdString(last))) << one.typed;
    }
    edit->SetValueRange(kLeast, kMost);
    for (const auto& [end, key] : {std::pair(kMost, Qt::Key_PageUp), std::pair(kLeast, Qt::Key_PageDown)}) {
        edit->SetValue(end - end / 500'000'000);
        QTest::keyClick(line, key);
        EXPECT_EQ(edit->GetValue(), end);
        Heard();
        QTest::keyClick(line, key);
        EXPECT_EQ(Heard(), "") << end;
    }
}

TEST_F(ParamEdit, IsReachedByTabOnlyWithItsStyle)
{
    for (const UINT style : {UINT{WS_TABSTOP}, UINT{0}}) {
        QWidget window;
        QLineEdit before(&window);
        CKvParamEdit between;
        between.Create(WS_CHILD | WS_VISIBLE | style, &window, kId);
        QLineEdit behind(&window);
        window.show();
        QApplication::setActiveWindow(&window);
        QWidget* const field = between.findChild<QLineEdit*>();
        before.setFocus();
        QTest::keyClick(&before, Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), style ? field : &behind);
        behind.setFocus();
        QTest::keyClick(&behind, Qt::Key_Backtab);
        EXPECT_EQ(QApplication::focusWidget(), style ? field : &before);
        between.setFocus();
        EXPECT_TRUE(field->hasFocus()) << "by the host";
    }
}

TEST_F(ParamEdit, MayBeDeletedByEachOfItsMessages)
{
    const std::function<void()> uses[] = {[this] { QTest::keyClicks(line, "7"); },
                                          [this] { QTest::keyClick(line, Qt::Key_Up); },
                                          [this] {
                                              Drag(*edit, {1, 10}, {{30, 0}});
                                          },
                                          [this] { Wheel(120); }};
    for (const auto& use : uses) {
        if (!edit) {
            edit = new CKvParamEdit;
            edit->setGeometry(10, 10, 60, 24);
            edit->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &parent, kId);
            line = edit->findChild<QLineEdit*>();
            edit->setFocus();
        }
        onMessage = [this] { delete edit; };
        use();
        EXPECT_TRUE(edit.isNull());
        onMessage = {};
    }
}

TEST_F(ParamEdit, IsASpinBoxWithANameForScreenReaders)
{
    edit->SetLabel(L"Red");
    QAccessibleInterface* found = QAccessible::queryAccessibleInterface(edit);
    EXPECT_EQ(found->role(), QAccessible::SpinBox);
    EXPECT_EQ(found->text(QAccessible::Name), "Red");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(line)->text(QAccessible::Name), "Red");
    found->valueInterface()->setCurrentValue(30);
    EXPECT_EQ(Heard(), "0:30 1:30 2:30");
    EXPECT_EQ(found->valueInterface()->maximumValue().toInt(), 100);
}

class RadioButton : public testing::Test
{
protected:
    RadioButton()
    {
        auto* item = new QWidget(&parent);
        item->setGeometry(10, 10, 20, 20);
        KvSetDlgItemId(item, 5);
        parent.show();
        button.SubClassButton(5, &parent, L"RGB_R_UnCheck", L"RGB_R_Check");
        QObject::connect(&button, &CKvRadioBitmapButton::Scrubbed,
                         [this](int steps) { heard += std::to_string(steps) + ' '; });
        QObject::connect(&button, &CKvRadioBitmapButton::ScrubEnded,
                         [this](bool cancelled) { heard += cancelled ? "cancelled " : "ended "; });
    }
    std::string Heard() { return std::exchange(heard, {}); }

    QWidget parent;
    KvMessageSink sink{&parent, [this](UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
                           heard += "clicked ";
                           return std::nullopt;
                       }};
    CKvRadioBitmapButton button;
    std::string heard;
};

TEST_F(RadioButton, TakesTheItemsPlaceOnce)
{
    EXPECT_EQ(KvGetDlgItem(&parent, 5), &button);
    EXPECT_EQ(button.geometry(), QRect(10, 10, 20, 20));
    CKvRadioBitmapButton other;
    EXPECT_EQ(other.SubClassButton(6, &parent, L"RGB_R_UnCheck", L"RGB_R_Check"), 0);
    EXPECT_EQ(button.SubClassButton(5, &parent, L"RGB_R_UnCheck", L"RGB_R_Check"), 0);
    EXPECT_EQ(button.UpdateBitmap(L"RGB_R_UnCheck", L"no such picture"), 0);
}

TEST_F(RadioButton, IsCheckedByItsOwnerOnly)
{
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(Heard(), "clicked ");
    EXPECT_EQ(button.GetCheck(), 0);
    EXPECT_EQ(button.GetBitmapName(), L"RGB_R_UnCheck");
    button.SetCheck(1);
    EXPECT_EQ(button.GetBitmapName(), L"RGB_R_Check");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&button)->role(), QAccessible::RadioButton);
}

TEST_F(RadioButton, ScrubsInsteadOfBeingClicked)
{
    Drag(button, {5, 5}, {{2, 0}, {20, 0}, {20, -7}});
    Mouse(button, QEvent::MouseButtonRelease, {25, -2});
    EXPECT_EQ(Heard(), "20 27 ended ");
    Drag(button, {5, 5}, {{0, -20}});
    QTest::keyClick(&button, Qt::Key_Escape);
    Mouse(button, QEvent::MouseButtonRelease, {5, -15});
    EXPECT_EQ(Heard(), "20 cancelled ");
    Drag(button, {5, 5}, {{0, -20}});
    button.setEnabled(false);
    EXPECT_EQ(Heard(), "20 ");
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(Heard(), "ended ");
}

} // namespace
