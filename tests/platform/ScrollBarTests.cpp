#include "KvScroll.h"
#include "KvWnd.h"

#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>
#include <string>

namespace {

// A bar in a window that writes down what it is sent: "code@position", V or H before it.
class ScrollBar : public testing::Test
{
protected:
    ScrollBar()
    {
        KvCreateScrollLineHelper(&line);
        parent.resize(400, 100);
        EXPECT_EQ(bar.Create(Qt::Horizontal, WS_VISIBLE, {0, 80, 400, 97}, &parent, 1000), 1);
        Show(400, 2000, 300);
        parent.show();
    }
    ~ScrollBar() override { line->Release(); }
    void Show(std::int64_t view, std::int64_t content, std::int64_t position)
    {
        line->SetViewLength(view);
        line->SetVirtualLength(content);
        line->SetPosition(position);
        bar.SetScroll(*line);
    }
    std::string Heard() { return std::exchange(heard, {}); }
    QPoint Thumb()
    {
        QStyleOptionSlider option;
        option.initFrom(&bar);
        option.orientation = bar.orientation();
        option.minimum = bar.minimum();
        option.maximum = bar.maximum();
        option.pageStep = bar.pageStep();
        option.sliderPosition = option.sliderValue = bar.value();
        option.subControls = QStyle::SC_All;
        return bar.style()
            ->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, &bar)
            .center();
    }

    std::string heard;
    QWidget parent;
    KvMessageSink sink{&parent, [this](UINT message, WPARAM wParam, LPARAM lParam) {
                           EXPECT_EQ(lParam, reinterpret_cast<LPARAM>(&bar));
                           EXPECT_EQ(HIWORD(wParam), static_cast<WORD>(bar.GetScrollPos()));
                           EXPECT_TRUE(message == WM_HSCROLL || message == WM_VSCROLL);
                           heard += (message == WM_HSCROLL ? "H" : "V") + std::to_string(LOWORD(wParam)) +
                                    '@' + std::to_string(bar.GetScrollPos()) + ' ';
                           return std::optional<LRESULT>(0);
                       }};
    CKvScrollBar bar;
    IKvScrollLineHelper* line = nullptr;
};

TEST_F(ScrollBar, TellsActionsAndStaysWhereItIs)
{
    const struct
    {
        QAbstractSlider::SliderAction action;
        const char* message;
    } rows[] = {
        {QAbstractSlider::SliderSingleStepSub, "H0@300 "}, {QAbstractSlider::SliderSingleStepAdd, "H1@300 "},
        {QAbstractSlider::SliderPageStepSub, "H2@300 "},   {QAbstractSlider::SliderPageStepAdd, "H3@300 "},
        {QAbstractSlider::SliderToMinimum, "H6@300 "},     {QAbstractSlider::SliderToMaximum, "H7@300 "},
    };
    for (const auto& row : rows) {
        bar.triggerAction(row.action);
        EXPECT_EQ(Heard(), row.message);
        EXPECT_EQ(bar.GetScrollPos(), 300) << row.message;
        EXPECT_EQ(bar.value(), 300) << row.message;
    }
}

// As a screen reader asks it.
TEST_F(ScrollBar, DisabledItStays)
{
    bar.setEnabled(false);
    bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    bar.triggerAction(QAbstractSlider::SliderToMaximum);
    bar.setValue(bar.maximum());
    EXPECT_EQ(Heard(), "");
    EXPECT_EQ(bar.GetScrollPos(), 300);
    EXPECT_EQ(bar.value(), 300);
}

TEST_F(ScrollBar, TracksTheThumb)
{
    const QPoint thumb = Thumb();
    QTest::mousePress(&bar, Qt::LeftButton, {}, thumb);
    QMouseEvent move(QEvent::MouseMove, thumb + QPoint(40, 0), bar.mapToGlobal(thumb + QPoint(40, 0)),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&bar, &move);
    const std::int64_t at = bar.GetScrollPos();
    EXPECT_GT(at, 400); // 40 of some 360 pixels, on 2,000
    EXPECT_LT(at, 600);
    EXPECT_EQ(Heard(), "H5@" + std::to_string(at) + ' ');
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, thumb + QPoint(40, 0));
    EXPECT_EQ(Heard(), "H4@" + std::to_string(at) + " H8@" + std::to_string(at) + ' ');
}

TEST_F(ScrollBar, SettersAreSilentAndTheThumbShowsTheView)
{
    EXPECT_EQ(Heard(), "");
    EXPECT_EQ(bar.maximum(), 1600);
    EXPECT_EQ(bar.pageStep(), 400); // thumb = 400 / (1600 + 400)
    bar.SetScrollPos(5000);
    EXPECT_EQ(bar.GetScrollPos(), 1600);
    Show(400, 300, 0);
    EXPECT_EQ(bar.maximum(), 0);
    EXPECT_EQ(bar.GetScrollPos(), 0);
    EXPECT_EQ(Heard(), "");
}

TEST_F(ScrollBar, ReachesFurtherThanTheToolkit)
{
    constexpr std::int64_t kLong = std::int64_t{1} << 50;
    Show(1000, kLong + 1000, kLong / 3);
    EXPECT_EQ(bar.GetScrollPos(), kLong / 3);
    EXPECT_EQ(bar.GetScrollRange(), kLong);
    EXPECT_GE(bar.pageStep(), 1);
    bar.setValue(bar.maximum()); // as the bar's own menu does
    EXPECT_EQ(Heard(), "H4@" + std::to_string(kLong) + ' ');
    Show(kLong, kLong + 5, 2); // a view longer than the toolkit counts
    EXPECT_EQ(bar.maximum(), 5);
    EXPECT_GT(bar.pageStep(), 5);
}

TEST_F(ScrollBar, LeavesTheWheelToItsParent)
{
    QWheelEvent wheel(QPointF(5, 5), bar.mapToGlobal(QPointF(5, 5)), {}, {0, 120}, {}, {}, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&bar, &wheel);
    EXPECT_FALSE(wheel.isAccepted());
    EXPECT_EQ(Heard(), "");
}

} // namespace
