#include "tour/Film.h"

#include "KvColorMapWnd.h"
#include "KvGradientCtrl.h"
#include "KvParamBezierCtrlDlg.h"
#include "export/FrameExport.h"
#include "pages/PageStrip.h"
#include "tour/Input.h"
#include "tour/Picture.h"
#include "window/MainWindow.h"
#include "window/Settings.h"
#include "window/Texts.h"

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QEasingCurve>
#include <QPainterPath>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>
#include <QtCore/qtestsupport_core.h>
#include <QtWidgets/qtestsupport_widgets.h>

#include <functional>
#include <utility>

namespace titler {
namespace {

constexpr int kLongestWait = 20000; // milliseconds, for a picture to be drawn
constexpr int kFirstFrame = 75;     // the whole title is there
constexpr int kGlide = 8;           // pictures of a way of the pointer
constexpr int kRest = 6;            // and of what is to be read
constexpr int kPlayed = 50;         // frames of the title
constexpr int kPlayedStep = 2;
constexpr int kMostTurns = 8; // of the event loop until a picture stays as it is
constexpr Property kShaped = Property::Y;

class Film
{
public:
    Film(QString folder, QSize size);

    QString Run(QString& report);

private:
    void DragStop();
    void DragColour();
    void GoToAnimate();
    void ShapeEase();
    void ShapeInDialog();
    void Play();

    void Shoot(int count = 1);
    QImage PictureAtRest();
    void Glide(QPoint to);
    void Drag(QWidget& widget, const QList<QPoint>& ways);
    void Click(QWidget& widget, QPoint place);
    /// Where a part stands that a screen reader finds in a widget, in the widget's coordinates.
    QPoint PlaceOf(QWidget& widget, const std::function<bool(QAccessibleInterface&)>& isIt);
    void Check(bool isDone, const char* step)
    {
        if (!isDone && m_fault.isEmpty())
            m_fault = Text(kTextFilmFault, {QString::number(m_shots), QLatin1String(step)});
    }
    /// How many steps of undo there are.
    int Steps() { return m_window.Project().Steps().index(); }

    QDir m_folder;
    QString m_fault; ///< what did not do what it should, or what a message box said
    int m_shots = 0;
    MainWindow m_window;
    QPoint m_pointer; ///< in the window
};

// The sample in the window, as a user begins with it.
Film::Film(QString folder, QSize size)
    : m_folder(std::move(folder))
    , m_window(MainWindow::Caption::Tabs, true)
{
    m_window.resize(size);
    m_window.show();
    m_window.activateWindow();
    m_pointer = m_window.rect().center();
}

QPoint Film::PlaceOf(QWidget& widget, const std::function<bool(QAccessibleInterface&)>& isIt)
{
    QAccessibleInterface* all = QAccessible::queryAccessibleInterface(&widget);
    for (int i = 0; all != nullptr && i < all->childCount(); ++i)
        if (QAccessibleInterface* part = all->child(i); part != nullptr && isIt(*part))
            return widget.mapFromGlobal(part->rect().center());
    Check(false, widget.metaObject()->className());
    return widget.rect().center();
}

// What a turn of the event loop lays out, the next one may lay out again: a scroll bar goes only after there
// is room without it.
QImage Film::PictureAtRest()
{
    QImage picture;
    QImage before;
    for (int turn = 0; turn < kMostTurns && (turn == 0 || picture != before); ++turn) {
        QCoreApplication::processEvents();
        before = std::exchange(picture, PictureOf(m_window).toImage());
    }
    return picture;
}

// As the pointer of a desktop, which no rendering of a window has.
void Film::Shoot(int count)
{
    QCoreApplication::processEvents();
    Check(QTest::qWaitFor([this] { return !m_window.Pages().IsBusy(); }, kLongestWait), "pages");
    QImage picture = PictureAtRest();
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(m_pointer);
    QPainterPath arrow;
    arrow.addPolygon(QPolygonF({{0, 0}, {0, 17}, {4, 13}, {7, 20}, {10, 19}, {7, 12}, {12, 12}}));
    arrow.closeSubpath();
    painter.setPen(QPen(Qt::black, 1.5));
    painter.setBrush(Qt::white);
    painter.drawPath(arrow);
    painter.end();
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    for (; count > 0 && m_fault.isEmpty(); --count) {
        const QString file =
            m_folder.filePath(QStringLiteral("%1.png").arg(++m_shots, 4, 10, QLatin1Char('0')));
        if (const QString unwritten = SavePng(image, file); !unwritten.isEmpty())
            m_fault = Text(kTextCannotExport, {file, unwritten});
    }
}

void Film::Glide(QPoint to)
{
    const QPoint from = m_pointer;
    for (int i = 1; i <= kGlide; ++i) {
        m_pointer =
            from + (to - from) * QEasingCurve(QEasingCurve::InOutQuad).valueForProgress(double(i) / kGlide);
        Shoot();
    }
}

// Goes to the first place and drags from there by all others.
void Film::Drag(QWidget& widget, const QList<QPoint>& ways)
{
    const QPoint origin = m_window.mapFromGlobal(widget.mapToGlobal(QPoint(0, 0)));
    Glide(origin + ways.first());
    SendPress(widget, ways.first());
    for (qsizetype way = 1; way < ways.size(); ++way)
        for (int i = 1; i <= kGlide; ++i) {
            const QPoint place = ways[way - 1] + (ways[way] - ways[way - 1]) * i / kGlide;
            SendMove(widget, place);
            m_pointer = origin + place;
            Shoot();
        }
    SendRelease(widget, ways.last());
    Shoot(kRest);
}

void Film::Click(QWidget& widget, QPoint place)
{
    Glide(m_window.mapFromGlobal(widget.mapToGlobal(place)));
    SendClick(widget, place);
}

void Film::DragStop()
{
    const int before = Steps();
    auto& gradient = *m_window.findChild<CKvGradientCtrl*>();
    int parts = 0; // stops and mid points take turns
    const QPoint stop = PlaceOf(gradient, [&](QAccessibleInterface&) { return ++parts == 3; });
    Drag(gradient, {stop, stop + QPoint(70, 0), stop + QPoint(-30, 0)});
    Check(Steps() == before + 1, "stop");
}

void Film::DragColour()
{
    const int before = Steps();
    for (auto* map : m_window.findChildren<CKvColorMapWnd*>()) {
        if (map->GetType() != kKvColorMapField || !map->isVisible())
            continue;
        const QPoint end(map->width() - 1, map->height() - 1);
        const QPoint now(qRound(map->GetSat() * end.x()), qRound((1 - map->GetBri()) * end.y()));
        Drag(*map, {now, {end.x() * 9 / 10, end.y() / 20}, {end.x() / 3, end.y() / 10}});
    }
    Check(Steps() == before + 1, "colour");
}

void Film::GoToAnimate()
{
    QWidget& bar = *m_window.Bar();
    const QString name = Text(TraitsOf(Workspace::Animate).textId);
    Click(bar,
          PlaceOf(bar, [&](QAccessibleInterface& part) { return part.text(QAccessible::Name) == name; }));
    Shoot(kRest);
    Check(m_window.Current() == Workspace::Animate, "animate");
}

// The dialog waits in the click: what is done in it comes from the event loop.
void Film::ShapeEase()
{
    const int before = Steps();
    auto& open =
        *m_window.findChild<QToolButton*>(QStringLiteral("ease-") + QLatin1String(TraitsOf(kShaped).name));
    Glide(m_window.mapFromGlobal(open.mapToGlobal(open.rect().center())));
    QTimer::singleShot(0, &m_window, [this] { ShapeInDialog(); });
    SendClick(open, open.rect().center());
    Shoot(kRest);
    Check(Steps() == before + 1, "ease");
}

void Film::ShapeInDialog()
{
    for (QWidget* one : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<CKvParamBezierCtrlDlg*>(one);
        if (dialog == nullptr || !dialog->isVisible() || dialog->GetCurveWnd() == nullptr)
            continue;
        MoveInto(*dialog, m_window);
        Shoot(kRest);
        QWidget& curve = *dialog->GetCurveWnd();
        int handles = 0; // key, its handle, the other key's handle, that key
        const QPoint handle = PlaceOf(curve, [&](QAccessibleInterface&) { return ++handles == 3; });
        Drag(curve, {handle, handle + QPoint(40, -60), handle + QPoint(-50, 40)});
        dialog->OnOK();
        return;
    }
    Check(false, "dialog");
}

void Film::Play()
{
    for (int frame = 0; frame <= kPlayed; frame += kPlayedStep) {
        m_window.Time().Seek(frame);
        Shoot();
    }
    Shoot(2 * kRest);
}

QString Film::Run(QString& report)
{
    if (!QTest::qWaitForWindowActive(&m_window, kLongestWait))
        return Text(kTextNoDisplay);
    KvSetMessageBoxHandler([this](HWND, const std::wstring& text, UINT) {
        m_fault = QString::fromStdWString(text); // nothing that is done here gives a reason for one
        return IDNO;
    });
    ProjectError error;
    Check(m_window.Project().Open(QStringLiteral(":/titler/samples/sample.ktitle"), error), "sample");
    m_window.Time().Seek(kFirstFrame);
    SendKey(m_window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier); // no strip of pages: there is one
    Shoot(kRest);
    for (const auto act :
         {&Film::DragStop, &Film::DragColour, &Film::GoToAnimate, &Film::ShapeEase, &Film::Play})
        if (m_fault.isEmpty())
            (this->*act)();
    KvSetMessageBoxHandler({});
    report = Text(kTextTourDone, {QString::number(m_shots), QDir::toNativeSeparators(m_folder.path())});
    return m_fault;
}

} // namespace

QString RunFilm(const QString& folder, QSize window, QString& report)
{
    QDir().mkpath(folder);
    const QTemporaryDir swatches; // the user's own stay out of it
    KeepSwatches(swatches.path());
    return Film(folder, window).Run(report);
}

} // namespace titler
