#include "tour/Tour.h"

#include "KvCharMapDlg.h"
#include "KvFindReplaceTxtDlg.h"
#include "export/FrameExport.h"
#include "media/MediaPanel.h"
#include "pages/PageStrip.h"
#include "project/Pages.h"
#include "project/WholeFile.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "title/CanvasView.h"
#include "tour/Input.h"
#include "tour/Picture.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Texts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QUrl>
#include <QtCore/qtestsupport_core.h>
#include <QtWidgets/qtestsupport_widgets.h>

#include <functional>

namespace titler {
namespace {

constexpr int kLongestWait = 20000; // milliseconds, for a step to be done
constexpr const char* kTitle = "HARBOUR";
constexpr const char* kSecondTitle = "LAST FERRY";
constexpr const char* kRowText = "The last ferry leaves at seven.";
constexpr const char* kRows = "1\n00:00:00,400 --> 00:00:02,000\nThe last ferry leaves at six.\n\n"
                              "2\n00:00:01,900 --> 00:00:03,400\nThen we have one hour.\n\n"
                              "3\n00:00:03,600 --> 00:00:04,800\nNobody has seen him since.\n";

class Tour
{
public:
    Tour(QString folder, QSize size);

    QString Run(QString& report);

private:
    struct Step
    {
        const char* name;
        UINT captionId;
        std::function<void()> act;
        std::function<bool()> isDone;
    };
    std::vector<Step> Steps();
    QString Show(const Step& step, int index);
    /// The program's dialog of that class while it is shown; else null.
    template <typename D>
    static D* Dialog()
    {
        for (QWidget* one : QApplication::topLevelWidgets())
            if (auto* dialog = qobject_cast<D*>(one); dialog != nullptr && dialog->isVisible())
                return dialog;
        return nullptr;
    }

    template <typename D>
    void WaitFor()
    {
        const bool isThere = QTest::qWaitFor(
            [] { return Dialog<D>() != nullptr && Dialog<D>()->isActiveWindow(); }, kLongestWait);
        if (isThere)
            MoveInto(*Dialog<D>(), m_window);
        else
            m_fault = Text(kTextNoDisplay);
    }
    /// A command of the menus.
    void Choose(UINT textId)
    {
        for (const auto& menu : m_window.AllCommands().Menus())
            for (QAction* action : menu->actions())
                if (action->text() == Text(textId))
                    action->trigger();
    }
    /// Back to the window from a dialog.
    void Leave()
    {
        Key(Qt::Key_Escape);
        m_window.activateWindow();
        if (!QTest::qWaitForWindowActive(&m_window, kLongestWait))
            m_fault = Text(kTextNoDisplay);
    }

    QString Make(const QString& name, const QByteArray& bytes = {});
    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Type(const char* text);
    void Press(UINT textId);
    void TypeTitle(const char* text);
    void DragPage(int from, int to);
    bool PagesAre(const QStringList& titles);
    void Drop(const QString& file);
    const titler::Project& Now() { return m_window.Project().Current(); }
    std::size_t KeysOf(Property property) { return Now().title[property].keys.size(); }
    QString RowText(int row);

    QString m_folder;
    QTemporaryDir m_material;
    QString m_fault; ///< what had no control to be done with, or what a message box said
    QString m_captions;
    std::size_t m_keys = 0; ///< before the step that adds one
    int m_frame = 0;        ///< before it plays
    MainWindow m_window;
};

Tour::Tour(QString folder, QSize size) : m_folder(std::move(folder))
{
    QDir::setCurrent(m_material.path()); // the pictures show the names of its files alone
    m_window.resize(size);
    m_window.ShowStart();
    m_window.show();
    m_window.activateWindow();
}

// A file of the tour's own, to be dropped on the window by its short name.
QString Tour::Make(const QString& name, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(name).path());
    const QString fault = WriteWhole(name, bytes);
    if (!fault.isEmpty())
        m_fault = fault;
    return name;
}

void Tour::Key(int key, Qt::KeyboardModifiers modifiers)
{
    QWidget* focus = QApplication::focusWidget();
    SendKey(focus != nullptr ? *focus : m_window, key, modifiers);
}

void Tour::Type(const char* text)
{
    if (QWidget* focus = QApplication::focusWidget())
        SendText(*focus, QLatin1String(text));
}

// The button that a user sees under that name.
void Tour::Press(UINT textId)
{
    for (QAbstractButton* button : m_window.findChildren<QAbstractButton*>())
        if (button->isVisible() && button->isEnabled() && button->text() == Text(textId)) {
            SendClick(*button, {12, button->height() / 2});
            return;
        }
    m_fault = Text(textId);
}

void Tour::TypeTitle(const char* text)
{
    for (QPlainTextEdit* field : m_window.findChildren<QPlainTextEdit*>())
        if (field->isVisible())
            SendClick(*field->viewport(), field->viewport()->rect().center());
    Key(Qt::Key_A, Qt::ControlModifier);
    Type(text);
}

// From its middle to behind the middle of another one.
void Tour::DragPage(int from, int to)
{
    PageStrip& strip = m_window.Pages();
    const QRect target = strip.PlaceOf(to);
    SendDrag(strip, strip.PlaceOf(from).center(), target.center() + QPoint(target.width() / 4, 0));
}

bool Tour::PagesAre(const QStringList& titles)
{
    bool areThey = PageCount(Now()) == titles.size();
    for (int page = 0; areThey && page < titles.size(); ++page)
        areThey = PageAt(Now(), page).title.text == titles[page];
    return areThey;
}

void Tour::Drop(const QString& file)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    const QPoint place = m_window.rect().center();
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &enter);
    if (!enter.isAccepted()) {
        m_fault = file;
        return;
    }
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_window, &drop);
}

QString Tour::RowText(int row)
{
    return QString::fromStdWString(m_window.Subtitles().List().GetItemText(row, kKvSubTitleText));
}

std::vector<Tour::Step> Tour::Steps()
{
    const auto isAt = [this](Workspace workspace) {
        return [this, workspace] { return m_window.Current() == workspace && !m_window.IsAtStart(); };
    };
    return {
        {"start", kTourStart, [] {}, [this] { return m_window.IsAtStart(); }},
        {"sample", kTourSample, [this] { Press(kTextStartSample); },
         [this] { return !m_window.IsAtStart() && KeysOf(Property::Scale) > 0; }},
        {"text", kTourText, [this] { TypeTitle(kTitle); },
         [this] { return Now().title.text == QLatin1String(kTitle); }},
        {"corners", kTourCorners, [this] { Press(kTextFillCorners); },
         [this] { return Now().title.fill.kind == PaintKind::FourCorner; }},
        {"outline", kTourOutline,
         [this] {
             Press(kTextTargetOutline);
             Press(kTextOutlineOn);
         },
         [this] { return Now().title.outline.on; }},
        {"undo", kTourUndo,
         [this] {
             Key(Qt::Key_Z, Qt::ControlModifier);
             Key(Qt::Key_Z, Qt::ControlModifier);
         },
         [this] {
             return !Now().title.outline.on && Now().title.fill.kind == PaintKind::Gradient &&
                    Now().title.text == QLatin1String(kTitle);
         }},
        {"page", kTourPage,
         [this] {
             Key(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
             TypeTitle(kSecondTitle);
         },
         [this] {
             return PagesAre({kTitle, kSecondTitle});
         }},
        {"order", kTourOrder, [this] { DragPage(0, 1); },
         [this] {
             return PagesAre({kSecondTitle, kTitle});
         }},
        {"animate", kTourAnimate, [this] { Key(Qt::Key_F7); }, isAt(Workspace::Animate)},
        {"key", kTourKey,
         [this] {
             m_keys = KeysOf(Property::Scale);
             Key(Qt::Key_A, Qt::AltModifier);
             Key(Qt::Key_A, Qt::ControlModifier);
             Type("130");
             Key(Qt::Key_Return);
         },
         [this] { return KeysOf(Property::Scale) == m_keys + 1; }},
        {"play", kTourPlay,
         [this] {
             m_frame = m_window.Time().Frame();
             Key(Qt::Key_Space);
         },
         [this] { return m_window.Time().Frame() > m_frame; }},
        {"clips", kTourClips,
         [this] {
             Key(Qt::Key_Space); // pauses
             for (const char* name : {"ferry.mxf", "ferry_A1.wav", "ferry_A2.wav", "pier.mov", "pier.wav"})
                 Make(QStringLiteral("media/") + QLatin1String(name));
             Drop(QStringLiteral("media"));
         },
         [this] {
             return m_window.Current() == Workspace::Clips && !m_window.Media().IsBusy() &&
                    m_window.Media().Summary().contains(u'5');
         }},
        {"rules", kTourRules, [this] { Key(Qt::Key_F9); }, isAt(Workspace::Rules)},
        {"subtitles", kTourSubtitles, [this] { Drop(Make(QStringLiteral("ferry.srt"), kRows)); },
         [this] {
             return m_window.Current() == Workspace::Subtitles &&
                    RowText(2).startsWith(QLatin1String("Nobody"));
         }},
        {"row", kTourRow,
         [this] {
             m_window.Subtitles().List().setFocus();
             Key(Qt::Key_Home, Qt::ControlModifier);
             Key(Qt::Key_F2);
             Key(Qt::Key_A, Qt::ControlModifier);
             Type(kRowText);
             Key(Qt::Key_Return);
         },
         [this] { return RowText(0) == QLatin1String(kRowText); }},
        {"fault", kTourFault, [this] { Key(Qt::Key_F8, Qt::ControlModifier); },
         [this] { return m_window.Subtitles().List().GetCurrentItem() == 2; }},
        {"log", kTourLog, [this] { Key(Qt::Key_F12); }, isAt(Workspace::Log)},
        {"find", kTourFind,
         [this] {
             Key(Qt::Key_F4);
             Key(Qt::Key_H, Qt::ControlModifier);
             WaitFor<CKvFindReplaceTxtDlg>();
             Type("ferry");
             Key(Qt::Key_Return); // begins again at the first title
             Key(Qt::Key_Return);
         },
         [this] {
             return Dialog<CKvFindReplaceTxtDlg>() != nullptr && m_window.Current() == Workspace::Subtitles &&
                    m_window.Subtitles().List().GetCurrentItem() == 0;
         }},
        {"characters", kTourCharacters,
         [this] {
             Leave();
             Choose(TraitsOf(Workspace::Design).textId);
             Choose(kTextCharacterMap);
             WaitFor<CKvCharMapDlg>();
             Type("small e acute");
         },
         [this] {
             const auto* dialog = Dialog<CKvCharMapDlg>();
             return dialog != nullptr && dialog->GetGrid()->GetCode(dialog->GetGrid()->GetSelected()) == 0xE9;
         }},
    };
}

QString Tour::Show(const Step& step, int index)
{
    const QString name = QStringLiteral("%1-%2.png").arg(index + 1, 2, 10, QLatin1Char('0')).arg(step.name);
    const QString caption = Text(step.captionId);
    step.act();
    const bool isDone = m_fault.isEmpty() && QTest::qWaitFor(step.isDone, kLongestWait);
    QTest::qWait(50); // what is drawn a moment later is drawn, too
    const bool isDrawn = QTest::qWaitFor([this] { return !m_window.Pages().IsBusy(); }, kLongestWait);
    QString fault = m_fault;
    if (fault.isEmpty() && !(isDone && isDrawn))
        fault = caption;
    const QString unwritten = SavePng(PictureOf(m_window).toImage(), QDir(m_folder).filePath(name));
    m_captions += name + u'\t' + caption + u'\n';
    if (!unwritten.isEmpty())
        return Text(kTextCannotExport, {name, unwritten});
    return fault.isEmpty() ? QString() : Text(kTextTourStep, {QString::number(index + 1), step.name, fault});
}

QString Tour::Run(QString& report)
{
    if (!QTest::qWaitForWindowActive(&m_window, kLongestWait))
        return Text(kTextNoDisplay);
    KvSetMessageBoxHandler([this](HWND, const std::wstring& text, UINT) {
        m_fault = QString::fromStdWString(text); // the tour gives no reason for one
        return IDNO;
    });
    const std::vector<Step> steps = Steps();
    QString fault;
    int shown = 0;
    for (; fault.isEmpty() && shown < static_cast<int>(steps.size()); ++shown)
        fault = Show(steps[static_cast<std::size_t>(shown)], shown);
    const QString captions = QDir(m_folder).filePath(QStringLiteral("captions.txt"));
    if (const QString unwritten = WriteWhole(captions, m_captions.toUtf8());
        fault.isEmpty() && !unwritten.isEmpty())
        fault = Text(kTextCannotExport, {captions, unwritten});
    KvSetMessageBoxHandler({});
    report = Text(kTextTourDone, {QString::number(shown), QDir::toNativeSeparators(m_folder)});
    return fault;
}

} // namespace

QString RunTour(const QString& folder, QSize window, QString& report)
{
    QDir().mkpath(folder);
    const QTemporaryDir swatches; // the user's own stay out of it
    KeepSwatches(swatches.path());
    const QString place = QDir::currentPath();
    const QString fault = Tour(QDir(folder).absolutePath(), window).Run(report);
    QDir::setCurrent(place);
    return fault;
}

} // namespace titler
