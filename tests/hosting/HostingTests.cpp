// Every control as a guest: in the toolkit's containers, under another font, state and style sheet of its
// host.
#include "KvAppLogListCtrl.h"
#include "KvButtons.h"
#include "KvGuiRes.h"
#include "KvReportListCtrl.h"
#include "KvTextEditListCtrl.h"
#include "tests/monkey/Subjects.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDockWidget>
#include <QFormLayout>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QStyle>
#include <QTextEdit>

#include <gtest/gtest.h>
#include <string_view>

namespace {

/// What derived lists may ask.
struct Reach : CKvReportListCtrl
{
    static int Edit(CKvReportListCtrl& list) { return (list.*&Reach::EditCell)(1, 0); }
    static CRect Cells(const CKvReportListCtrl& list) { return (list.*&Reach::GetCellsRect)(); }
    static int RowHeight(const CKvReportListCtrl& list) { return (list.*&Reach::GetDefaultItemHeight)(); }
};

constexpr UINT kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;

template <typename C>
struct Button : Subject
{
    explicit Button(QWidget& parent)
    {
        control->CreateButton(1000, &parent, CRect(0, 0, 60, 24), kStyle, L"titler_tool_open", L"Tip");
        if constexpr (std::is_same_v<C, CKvButton>)
            control->SetWindowText(L"Open the file");
        if constexpr (std::is_same_v<C, CKvRadioBitmapButton>)
            control->UpdateBitmap(L"RGB_R_UnCheck", L"RGB_R_Check");
    }
    QWidget& Control() override { return *control; }
    void Change(Random&) override {}
    C* control = new C;
};

// What is seen only while something is under way.
struct LogWithFind : Subject
{
    explicit LogWithFind(QWidget& parent)
    {
        control->Create(CRect(0, 0, 300, 200), kStyle, &parent, 1000);
        control->Initialize(1);
        for (int type = 0; type < 4; ++type)
            control->AddAppLogText(type, 1, L"a line");
        control->ShowFindBar(1);
    }
    QWidget& Control() override { return *control; }
    void Change(Random&) override {}
    CKvAppLogListCtrl* control = new CKvAppLogListCtrl;
};

struct TextsWithEditor : Subject
{
    explicit TextsWithEditor(QWidget& parent)
    {
        control->Create(CRect(0, 0, 300, 200), kStyle, &parent, 1000);
        control->AddString(CStringArray{L"one", L"two"});
    }
    QWidget& Control() override { return *control; }
    void Change(Random&) override { Reach::Edit(*control); }
    CKvTextEditListCtrl* control = new CKvTextEditListCtrl;
};

template <typename S>
SubjectMaker Maker(const char* name)
{
    return {name, [](QWidget& parent) -> std::unique_ptr<Subject> { return std::make_unique<S>(parent); }};
}

std::vector<SubjectMaker> Guests()
{
    std::vector<SubjectMaker> guests = AllSubjects();
    guests.push_back(Maker<Button<CKvBitmapButton>>("PictureButton"));
    guests.push_back(Maker<Button<CKvButton>>("TextButton"));
    guests.push_back(Maker<Button<CKvRadioBitmapButton>>("RadioButton"));
    guests.push_back(Maker<LogWithFind>("LogWithFind"));
    guests.push_back(Maker<TextsWithEditor>("TextsWithEditor"));
    return guests;
}

bool IsWithin(QSize small, QSize large)
{
    return small.width() <= large.width() && small.height() <= large.height();
}

void Settle()
{
    QApplication::sendPostedEvents();
    QApplication::processEvents();
}

// Of what the toolkit paints: as high as its letters, and as wide.
void ExpectUncut(const QWidget& part)
{
    QString text;
    if (const auto* button = qobject_cast<const QAbstractButton*>(&part))
        text = button->text().remove(u'&');
    else if (const auto* label = qobject_cast<const QLabel*>(&part); label && !label->wordWrap())
        text = label->text();
    const bool hasLetters = !text.isEmpty() || qobject_cast<const QLineEdit*>(&part);
    if (!hasLetters || !part.isVisible())
        return;
    const QFontMetrics metrics = part.fontMetrics();
    EXPECT_GE(part.height(), metrics.ascent() + metrics.descent()) << qPrintable(text);
    EXPECT_GE(part.width(), metrics.horizontalAdvance(text)) << qPrintable(text);
}

// All that it is made of is seen whole.
void ExpectRoom(const QWidget& control, const char* when)
{
    SCOPED_TRACE(when);
    for (const QWidget* part : control.findChildren<QWidget*>()) {
        ExpectUncut(*part);
        if (part->isVisible() && !part->isWindow() && part->parentWidget() == &control) {
            EXPECT_TRUE(control.rect().contains(part->geometry())) << part->metaObject()->className();
        }
    }
}

class Hosting : public testing::TestWithParam<SubjectMaker>
{
protected:
    Hosting()
    {
        host.setObjectName("host");
        host.resize(700, 500);
        host.setFocusPolicy(Qt::StrongFocus);
        host.show();
        subject = GetParam().make(host);
        Random random(1); // a font that there is, rows and pages
        subject->Change(random);
        Settle();
    }
    ~Hosting() override
    {
        qApp->setStyleSheet({});
        QApplication::setStyle(style);
    }

    QWidget& Control() { return subject->Control(); }
    // At the size that a host would give it.
    void Embed()
    {
        Control().setParent(&host);
        Control().move(20, 20);
        Control().show();
        Settle();
        Control().resize(Control().sizeHint());
        Settle();
        if (!IsEditing())
            host.setFocus();
    }
    // As it is seen; bars are the toolkit's and the host's to style.
    QImage Picture()
    {
        Settle();
        QImage image = host.grab(Control().geometry()).toImage();
        QPainter painter(&image);
        for (const QScrollBar* bar : Control().findChildren<QScrollBar*>())
            if (bar->isVisible())
                painter.fillRect(QRect(bar->mapTo(&Control(), QPoint()), bar->size()), Qt::black);
        return image;
    }
    /// Where its parts stand, in the order in which they were made.
    std::vector<QRect> Places()
    {
        Settle();
        std::vector<QRect> places;
        for (const QWidget* part : Control().findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            places.push_back(part->geometry());
        return places;
    }
    // KV_HOSTING_PICTURES names a folder for pictures that differ.
    void ExpectAs(const QImage& before, const char* when)
    {
        const QImage now = Picture();
        EXPECT_TRUE(now == before) << when;
        if (now == before || !qEnvironmentVariableIsSet("KV_HOSTING_PICTURES"))
            return;
        const QString file = QStringLiteral("%1/%2 %3 ")
                                 .arg(qEnvironmentVariable("KV_HOSTING_PICTURES"), GetParam().name, when);
        before.save(file + "before.png");
        now.save(file + "now.png");
    }
    // Without the focus the editor ends.
    static bool IsEditing() { return std::string_view(GetParam().name) == "TextsWithEditor"; }
    bool IsToolkits() { return qobject_cast<QScrollBar*>(&Control()) != nullptr; }

    const QString style = QApplication::style()->name();
    QWidget host;
    std::unique_ptr<Subject> subject; // goes first
};

TEST_P(Hosting, TellsWhatRoomItNeeds)
{
    QWidget& control = Control();
    Embed();
    const QSize hint = control.sizeHint();
    const QSize least = IsToolkits() ? hint : control.minimumSizeHint();
    EXPECT_TRUE(IsWithin({8, 8}, hint)) << hint.width() << "x" << hint.height();
    EXPECT_TRUE(IsWithin(hint, {800, 600})) << hint.width() << "x" << hint.height();
    EXPECT_TRUE(least.isValid() && IsWithin(least, hint)) << least.width() << "x" << least.height();
    ExpectRoom(control, "as large as it wants to be");
    control.resize(least);
    Settle();
    if (!control.findChild<QWidget*>("findBar")) // which gets along with what a narrow list has
        ExpectRoom(control, "as small as it may be");
}

TEST_P(Hosting, StandsInTheToolkitsContainers)
{
    QWidget& control = Control();
    const QSize least = control.minimumSizeHint();
    const auto expectRoom = [&](const char* where) {
        Settle();
        EXPECT_TRUE(control.isVisible()) << where;
        EXPECT_TRUE(IsWithin(least, control.size()))
            << where << ": " << control.width() << "x" << control.height();
        EXPECT_FALSE(control.grab().isNull()) << where;
    };
    {
        QWidget form;
        auto* rows = new QFormLayout(&form);
        rows->addRow("Before", new QLineEdit);
        rows->addRow("Control", &control);
        rows->addRow("Behind", new QLineEdit);
        control.show();
        form.show();
        expectRoom("form");
        EXPECT_TRUE(form.rect().contains(control.geometry()));
        control.setParent(&host);
    }
    {
        QSplitter splitter;
        auto* beside = new QTextEdit;
        splitter.addWidget(&control);
        splitter.addWidget(beside);
        splitter.resize(1000, 600);
        control.show();
        splitter.show();
        splitter.setSizes({0, 1000}); // collapsed
        Settle();
        splitter.setChildrenCollapsible(false);
        splitter.setSizes({1, 1000});
        expectRoom("splitter");
        control.setParent(&host);
    }
    {
        QMainWindow window;
        auto* dock = new QDockWidget("Control");
        window.setCentralWidget(new QTextEdit);
        window.addDockWidget(Qt::LeftDockWidgetArea, dock);
        dock->setWidget(&control);
        control.show();
        window.show();
        expectRoom("dock");
        dock->setFloating(true);
        expectRoom("floating dock");
        control.setParent(&host);
    }
    {
        QScrollArea area;
        area.setWidget(&control);
        area.setWidgetResizable(true);
        area.resize(40, 40);
        control.show();
        area.show();
        expectRoom("small scroll area");
        area.resize(900, 700);
        expectRoom("large scroll area");
        area.takeWidget();
        control.setParent(&host);
    }
}

TEST_P(Hosting, FollowsItsHostsStateFontAndLanguage)
{
    if (IsEditing())
        GTEST_SKIP() << "the list without its editor is a guest itself";
    QWidget& control = Control();
    Embed();
    const QImage before = Picture();
    host.setEnabled(false);
    EXPECT_FALSE(Picture() == before) << "a disabled control looks like one";
    host.setEnabled(true);
    ExpectAs(before, "enabled again");

    QPalette palette = host.palette();
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::Base, QPalette::Button,
                            QPalette::ButtonText, QPalette::Highlight})
        palette.setColor(role, Qt::magenta);
    host.setPalette(palette);
    if (!IsToolkits())
        ExpectAs(before, "palette");
    host.setPalette({});

    const QSize hint = control.sizeHint();
    QFont large = host.font();
    large.setPointSize(24);
    host.setFont(large);
    Settle();
    EXPECT_TRUE(IsWithin(hint, control.sizeHint()));
    control.resize(control.sizeHint());
    Settle();
    ExpectRoom(control, "large letters");
    const auto expectLarge = [](const QWidget& of) {
        for (const QWidget* part : of.findChildren<QWidget*>()) {
            if (qobject_cast<const QLineEdit*>(part) || qobject_cast<const QLabel*>(part)) {
                EXPECT_EQ(part->font().pointSize(), 24) << part->metaObject()->className();
            }
        }
    };
    expectLarge(control);
    {
        QWidget largeHost; // from the first on
        largeHost.setFont(large);
        const auto other = GetParam().make(largeHost);
        largeHost.show();
        Settle();
        if (!other->Control().isWindow())
            expectLarge(other->Control());
    }
    EXPECT_TRUE(IsWithin(control.minimumSizeHint(), control.sizeHint()));
    host.setFont({});
    control.resize(hint);
    EXPECT_EQ(control.sizeHint(), hint);
    ExpectAs(before, "font back");

    QEvent change(QEvent::LanguageChange);
    QApplication::sendEvent(&host, &change);
    ExpectAs(before, "language");

    if (auto* log = qobject_cast<CKvAppLogListCtrl*>(&control)) {
        host.setFont(large);
        log->AddAppLogText(0, 1, L"in the new font");
        EXPECT_GE(log->GetItemHeight(log->GetItemCount() - 1), log->fontMetrics().height());
    }
}

constexpr const char* kHostile =
    "background: #fe01fd; color: #01fe02; border: 3px solid #fe01fd; padding: 9px;"
    "margin: 5px; border-radius: 6px;";

QString Sheet(const char* selector, const char* more = "")
{
    // The host's own ground is its own affair.
    return QStringLiteral(
               "%1 { %2 %3 } QWidget#host { background: #808080; border: none; padding: 0; margin: 0 }")
        .arg(QLatin1String(selector), QLatin1String(kHostile), QLatin1String(more));
}

TEST_P(Hosting, IsPaintedAsEverUnderAStyleSheet)
{
    if (IsToolkits())
        GTEST_SKIP() << "a bar of the toolkit's looks as the host wants it";
    host.setStyleSheet("QWidget#host { background: #808080 }");
    Embed();
    const QSize hint = Control().sizeHint();
    const QImage before = Picture();
    for (const char* selector : {"*", "QWidget"}) {
        host.setStyleSheet(Sheet(selector));
        Settle();
        EXPECT_EQ(Control().sizeHint(), hint) << selector;
        ExpectAs(before, selector[0] == '*' ? "all" : selector);
    }
    host.setStyleSheet("QWidget#host { background: #808080 } QLineEdit { min-height: 32px }");
    ExpectAs(before, "larger edits");
    if (qobject_cast<QAbstractButton*>(&Control()))
        return; // a button that is the host's own is as large as that wants it
    const auto sheet = [](const char* kind) {
        return QStringLiteral("QWidget#host { background: #808080 } %1 { min-width: 90px; min-height: 40px; "
                              "max-width: 95px; padding: 10px }")
            .arg(QLatin1String(kind));
    };
    constexpr const char* kKinds[] = {"QAbstractButton", "QPushButton", "QLabel",
                                      "QWidget#host > QWidget > QWidget"};
    for (const char* kind : kKinds) {
        host.setStyleSheet(sheet(kind));
        ExpectAs(before, kind);
    }
    // As it was at first, but made under the sheet.
    const std::vector<QRect> places = Places();
    for (const char* kind : kKinds) {
        host.setStyleSheet(sheet(kind));
        subject = GetParam().make(host);
        Random random(1);
        subject->Change(random);
        Embed();
        EXPECT_EQ(Places(), places) << kind;
    }
}

TEST_P(Hosting, CutsNothingInTheLettersOfAStyleSheet)
{
    Embed();
    const QSize hint = Control().sizeHint();
    host.setStyleSheet(Sheet("*", "font-size: 20pt;"));
    Settle();
    host.setStyleSheet({});
    Settle();
    EXPECT_EQ(Control().sizeHint(), hint) << "the sheet is gone";
    host.setStyleSheet(Sheet("*", "font-size: 20pt;"));
    Embed();
    const QImage image = Picture();
    for (int y = 0; y < image.height() && !IsToolkits(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        const QRgb* const found = std::find(line, line + image.width(), 0xFFFE01FDu);
        ASSERT_EQ(found, line + image.width()) << "the host's colour at " << found - line << ", " << y;
    }
    ExpectRoom(Control(), "letters of a sheet");
    if (const auto* list = qobject_cast<CKvReportListCtrl*>(&Control())) {
        const int header = Reach::Cells(*list).top;
        EXPECT_TRUE(header == 0 || header >= list->fontMetrics().height()) << header;
        EXPECT_GE(Reach::RowHeight(*list), list->fontMetrics().height());
    }
}

TEST_P(Hosting, LooksTheSameInEveryStyleOfTheToolkit)
{
    if (IsToolkits())
        GTEST_SKIP() << "a bar of the toolkit's looks as its style wants it";
    QPalette ground;
    ground.setColor(QPalette::Window, Qt::gray);
    host.setPalette(ground);
    Embed();
    const auto hint = [this] { // but for a bar in a layout, which is as wide as its style wants it
        const QWidget* bar = Control().layout() ? Control().findChild<QScrollBar*>() : nullptr;
        return Control().sizeHint() - QSize(bar ? bar->sizeHint().width() : 0, 0);
    };
    // As it is painted, but for what a style has its say in; where that moves the parts, a part.
    const auto painted = [this] {
        if (Control().layout())
            return Control().findChild<CKvWnd*>()->grab().toImage();
        QImage image = Picture();
        QPainter painter(&image);
        for (const QPushButton* button : Control().findChildren<QPushButton*>())
            painter.fillRect(button->geometry(), Qt::black);
        return image;
    };
    const QSize hintBefore = hint();
    const QImage before = painted();
    for (const char* name : {"Windows", "Fusion"}) {
        QApplication::setStyle(QLatin1String(name));
        Settle();
        EXPECT_EQ(hint(), hintBefore) << name;
        EXPECT_TRUE(painted() == before) << name;
        ExpectRoom(Control(), name);
    }
}

INSTANTIATE_TEST_SUITE_P(Each, Hosting, testing::ValuesIn(Guests()),
                         [](const auto& one) { return std::string(one.param.name); });

} // namespace
