// Controls that are constructed with a parent, as forms do it, create themselves when they are first shown.
#include "KvGuiRes.h"
#include "tests/designer/Controls.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <tuple>

namespace {

class SelfCreation : public testing::TestWithParam<ControlKind>
{
protected:
    void SetUp() override { window.resize(500, 400); }
    QWidget* Make() { return GetParam().make(&window); }
    void Show()
    {
        window.show();
        QApplication::processEvents();
    }

    QWidget window;
};

TEST_P(SelfCreation, InALayout)
{
    QWidget* const control = Make();
    KvSetDlgItemId(control, 1234);
    auto* rows = new QVBoxLayout(&window);
    rows->addWidget(control);
    rows->addStretch();
    const Qt::FocusPolicy policy = control->focusPolicy();
    const bool isEnabled = control->isEnabled();
    Show();
    EXPECT_TRUE(IsControlCreated(*control));
    EXPECT_TRUE(control->isVisible());
    EXPECT_EQ(control->isEnabled(), isEnabled);
    EXPECT_EQ(control->focusPolicy(), policy);
    EXPECT_EQ(KvGetDlgItem(&window, 1234), control);
    EXPECT_TRUE(window.rect().contains(control->geometry()));
    EXPECT_EQ(rows->itemAt(0)->geometry(), control->geometry());
    EXPECT_EQ(control->rect().united(control->childrenRect()), control->rect())
        << "children that do not know the size";
    EXPECT_EQ(window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).size(), 1);
}

TEST_P(SelfCreation, KeepsWhatWasSet)
{
    QWidget* const control = Make();
    const QRect place(11, 22, 420, 330);
    control->setGeometry(place);
    control->setEnabled(false);
    control->setFocusPolicy(Qt::WheelFocus);
    control->setToolTip("tip");
    QWidget* const hidden = Make();
    hidden->hide();
    const int height = control->sizePolicy().verticalPolicy() == QSizePolicy::Fixed
                           ? control->sizeHint().height() // of a strip that is as thick as it is
                           : place.height();
    Show();
    const bool isStrip = qobject_cast<CKvCaptionBar*>(control) || qobject_cast<CKvKeyFrameCtrl*>(control);
    EXPECT_EQ(control->geometry(),
              QRect(place.topLeft(), QSize(place.width(), isStrip ? height : place.height())));
    EXPECT_FALSE(control->isEnabled());
    EXPECT_EQ(control->focusPolicy(), Qt::WheelFocus);
    EXPECT_EQ(control->toolTip(), "tip");
    EXPECT_TRUE(hidden->isHidden());
    hidden->show();
    EXPECT_TRUE(IsControlCreated(*hidden));
    EXPECT_TRUE(hidden->isVisible());
}

// As a form sets them, before the control is created, and as code does, afterwards.
TEST_P(SelfCreation, ItsLooksAndLimitsAreTheHosts)
{
    const auto set = [](QWidget& control, int size, Qt::GlobalColor colour) {
        QPalette palette;
        palette.setColor(QPalette::Window, colour);
        control.setMinimumSize(size, size + 1);
        control.setMaximumSize(size + 402, size + 403);
        control.setPalette(palette);
        control.setAutoFillBackground(true);
        control.setStyleSheet("QToolTip { color: " + palette.window().color().name() + " }");
    };
    const auto now = [](const QWidget& control) {
        return std::tuple(control.minimumSize(), control.maximumSize(), control.palette().window().color(),
                          control.autoFillBackground(), control.styleSheet());
    };
    QWidget* const control = Make();
    set(*control, 33, Qt::red);
    const auto form = now(*control);
    Show();
    EXPECT_EQ(now(*control), form);
    set(*control, 44, Qt::blue);
    const auto code = now(*control);
    KvGuiRes::SetSkinFolder(nullptr);
    QEvent change(QEvent::LanguageChange);
    QApplication::sendEvent(control, &change);
    control->resize(300, 200);
    QApplication::processEvents();
    EXPECT_EQ(now(*control), code);
}

TEST_P(SelfCreation, StandsInTheFormsTabOrder)
{
    for (const bool isOrderedFirst : {true, false}) { // before the control has its parts
        QWidget form;
        QLineEdit before(&form);
        QLineEdit behind(&form);
        QWidget* const control = GetParam().make(&form);
        const auto show = [&form] {
            form.show();
            QApplication::setActiveWindow(&form);
            QApplication::processEvents();
        };
        if (!isOrderedFirst)
            show();
        QWidget::setTabOrder(&before, control);
        QWidget::setTabOrder(control, &behind);
        show();
        const auto takesFocus = [](const QWidget* widget) {
            return widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0;
        };
        const QList<QWidget*> parts = control->findChildren<QWidget*>();
        if (!takesFocus(control) && std::none_of(parts.begin(), parts.end(), takesFocus))
            continue;
        const auto isIn = [&](const QWidget* widget) {
            return widget == control || control->isAncestorOf(widget);
        };
        control->setFocus();
        QWidget* const first = QApplication::focusWidget();
        EXPECT_TRUE(isIn(first) && takesFocus(first)) << isOrderedFirst;
        before.setFocus();
        QTest::keyClick(&before, Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), first) << isOrderedFirst;
        for (int stops = 0; isIn(QApplication::focusWidget()) && stops < 50; ++stops)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), &behind) << isOrderedFirst;
        QTest::keyClick(&behind, Qt::Key_Backtab);
        EXPECT_TRUE(isIn(QApplication::focusWidget())) << isOrderedFirst;
    }
}

TEST_P(SelfCreation, InAWindowThatIsShownAlready)
{
    auto* rows = new QVBoxLayout(&window);
    Show();
    QWidget* const control = Make();
    rows->addWidget(control);
    QApplication::processEvents();
    EXPECT_TRUE(IsControlCreated(*control));
    EXPECT_TRUE(control->isVisible());
    EXPECT_EQ(rows->itemAt(0)->geometry(), control->geometry());
}

TEST_P(SelfCreation, AsAWindowOfItsOwn)
{
    const std::unique_ptr<QWidget> control(GetParam().make(nullptr));
    control->resize(400, 300);
    control->show();
    QApplication::processEvents();
    EXPECT_TRUE(control->isVisible());
    EXPECT_TRUE(IsControlCreated(*control));
    EXPECT_EQ(control->width(), 400);
}

TEST_P(SelfCreation, NeverShown)
{
    QWidget* const control = Make();
    KvSetDlgItemId(control, 1234);
    EXPECT_EQ(KvGetDlgItem(&window, 1234), control);
    const bool isBar = qobject_cast<CKvScrollBar*>(control); // which has nothing left to create
    EXPECT_EQ(IsControlCreated(*control), isBar);
}

INSTANTIATE_TEST_SUITE_P(Controls, SelfCreation, testing::ValuesIn(kControlKinds),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST(SelfCreating, CreateComesFirst)
{
    QWidget window;
    auto* gradient = new CKvGradientCtrl(&window);
    EXPECT_EQ(gradient->Create(WS_VISIBLE | WS_DISABLED, &window, 7), 1);
    auto* keys = new CKvKeyFrameCtrl(&window);
    EXPECT_EQ(keys->Create(8, &window, WS_VISIBLE), 1);
    keys->SetToggleCheck(1);
    auto* panel = new CKvColorPanel(&window);
    EXPECT_EQ(panel->Create(&window), 1);
    panel->show();
    const int children = static_cast<int>(panel->children().size());
    auto* button = new CKvBitmapButton(&window);
    EXPECT_EQ(button->CreateButton(9, &window, {0, 0, 20, 20}, WS_VISIBLE, L"prekey", nullptr), 1);
    window.show();
    QApplication::processEvents();
    EXPECT_EQ(gradient->GetDlgCtrlID(), 7u);
    EXPECT_FALSE(gradient->isEnabled());
    EXPECT_EQ(gradient->Create(WS_VISIBLE, &window, 17), 0);
    EXPECT_EQ(keys->GetToggleCheck(), 1);
    EXPECT_EQ(panel->children().size(), children);
    EXPECT_EQ(button->GetBitmapName(), L"prekey");
}

TEST(SelfCreating, KeepsWhatOnlyOneControlHas)
{
    QWidget window;
    CKvLayoutSelector row(&window);
    row.setGeometry(0, 0, 100, 500);
    row.SetVertical(0);
    CKvLayoutSelector column(&window);
    column.setGeometry(100, 0, 100, 500);
    CKvColorPanel panel(&window);
    panel.setWindowTitle("Outline");
    window.show();
    EXPECT_EQ(row.IsVertical(), 0) << "though it is higher than wide";
    EXPECT_EQ(panel.windowTitle(), "Outline");
    const QSizePolicy upright = column.sizePolicy();
    EXPECT_EQ(upright, row.sizePolicy().transposed());
    row.SetVertical(1);
    EXPECT_EQ(row.sizePolicy(), upright) << "turned later as when created";
}

TEST(SelfCreating, OfAHostsOwnControl)
{
    class Dial : public CKvStatic
    {
    public:
        explicit Dial(QWidget* parent) { CreateWhenShown(parent); }
        int Create(UINT style, CWnd* parent, DWORD id) override
        {
            ++created;
            return CKvStatic::Create(style, parent, id);
        }
        int created = 0;
    };
    QWidget window;
    Dial dial(&window);
    dial.SetDlgCtrlID(3);
    EXPECT_EQ(dial.created, 0);
    window.show();
    window.hide();
    window.show();
    EXPECT_EQ(dial.created, 1);
    EXPECT_EQ(dial.IsCreated(), 1);
    EXPECT_EQ(dial.GetDlgCtrlID(), 3u);
    dial.setParent(nullptr); // it dies before the window
}

} // namespace
