#include "time/TransportBar.h"

#include "KvGuiRes.h"
#include "edit/Document.h"
#include "time/TimeCodeBox.h"
#include "time/Transport.h"
#include "window/Commands.h"
#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"
#include "window/ToolStrip.h"

#include <QAction>
#include <QHBoxLayout>
#include <QIconEngine>
#include <QLabel>
#include <QSignalBlocker>
#include <QToolButton>

#include <optional>
#include <string>

namespace titler {
namespace {

constexpr int kIcon = 16;
constexpr double kDisabledOpacity = 0.35;

class SkinIconEngine : public QIconEngine
{
public:
    explicit SkinIconEngine(std::wstring name) : m_name(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        if (mode == QIcon::Disabled)
            painter->setOpacity(kDisabledOpacity);
        KvGuiRes::LoadImageW(m_name.c_str()).Draw(*painter, rect); // the present skin's
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new SkinIconEngine(m_name); }

private:
    std::wstring m_name;
};

// The key nearest before or behind a frame, of all properties, up to the project's end.
std::optional<int> NearestKey(const Properties& properties, int frame, bool next, int lastFrame)
{
    std::optional<int> found;
    for (const Animated& animated : properties) {
        const std::optional<int> key =
            next ? NextKeyFrame(animated, frame) : PreviousKeyFrame(animated, frame);
        if (!key || *key > lastFrame || (next ? *key <= frame : *key >= frame))
            continue;
        if (!found || (next ? *key < *found : *key > *found))
            found = key;
    }
    return found;
}

} // namespace

QIcon SkinIcon(const wchar_t* name)
{
    return QIcon(new SkinIconEngine(name));
}

TransportBar::TransportBar(Document& document, Transport& transport)
    : m_document(document)
    , m_transport(transport)
    , m_time(new TimeCodeBox)
    , m_duration(new TimeCodeBox)
    , m_durationLabel(FieldLabel(kTextDuration, *m_duration))
{
    BuildCommands();
    BuildFields();
    connect(&document, &Document::ProjectChanged, this, &TransportBar::ShowProject);
    connect(&transport, &Transport::FrameChanged, this, &TransportBar::ShowFrame);
    connect(&transport, &Transport::PlayingChanged, this, &TransportBar::ShowPlaying);
    connect(&transport, &Transport::LoopChanged, m_loop, &QAction::setChecked);
    ShowProject();
    InEachLanguage(*this, [this] { ShowPlaying(); });
}

QAction* TransportBar::AddCommand(UINT nameId, const wchar_t* icon, const QKeySequence& key,
                                  std::function<void()> run)
{
    auto* action = new QAction(this);
    NameCommand(*action, nameId);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, std::move(run));
    m_commands << action;
    if (icon == nullptr)
        return action;
    action->setIcon(SkinIcon(icon));
    action->setIconVisibleInMenu(false);
    auto* button = new ToolButton(*action);
    button->setProperty("role", "deck");
    button->setIconSize({kIcon, kIcon});
    button->setFocusPolicy(Qt::StrongFocus);
    InEachLanguage(*button, [button, action] { button->setAccessibleName(WithoutMnemonic(action->text())); });
    m_buttons << button;
    return action;
}

void TransportBar::BuildCommands()
{
    m_play = AddCommand(kTextPlay, L"titler_play", Qt::Key_Space, [this] { m_transport.Toggle(); });
    m_loop = AddCommand(kTextLoop, L"titler_loop", Qt::CTRL | Qt::Key_L, [] {});
    m_loop->setCheckable(true);
    for (QAction* toggle : {m_play, m_loop})
        toggle->setAutoRepeat(false);
    connect(m_loop, &QAction::toggled, &m_transport, &Transport::SetLoop);
    m_commands << nullptr;
    const auto go = [this](int frame) {
        m_transport.Pause();
        m_transport.Seek(frame);
    };
    AddCommand(kTextToStart, L"titler_start", Qt::CTRL | Qt::Key_Home, [go] { go(0); });
    AddCommand(kTextStepBack, L"titler_back", Qt::CTRL | Qt::Key_Left,
               [this, go] { go(m_transport.Frame() - 1); });
    AddCommand(kTextStepForward, L"titler_forward", Qt::CTRL | Qt::Key_Right,
               [this, go] { go(m_transport.Frame() + 1); });
    AddCommand(kTextToEnd, L"titler_end", Qt::CTRL | Qt::Key_End,
               [this, go] { go(m_transport.LastFrame()); });
    m_commands << nullptr;
    AddCommand(kTextPreviousKey, nullptr, Qt::CTRL | Qt::SHIFT | Qt::Key_Left, [this] { GoToKey(false); });
    AddCommand(kTextNextKey, nullptr, Qt::CTRL | Qt::SHIFT | Qt::Key_Right, [this] { GoToKey(true); });
}

void TransportBar::BuildFields()
{
    NameField(*m_time, kTextTime);
    NameField(*m_duration, kTextDuration);
    m_time->setObjectName(QStringLiteral("time"));
    m_duration->setObjectName(QStringLiteral("duration"));
    m_duration->setRange(1, kLongestDuration);
    connect(m_time, &QSpinBox::valueChanged, this, [this](int frame) {
        m_transport.Pause();
        m_transport.Seek(frame);
    });
    connect(m_duration, &QSpinBox::valueChanged, this, [this](int frames) {
        m_document.Edit(EditKind::Duration, kStepDuration,
                        [&](Project& project) { project.duration = frames; });
    });

    setLayoutDirection(Qt::LeftToRight); // as time runs in every language
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    row->setSpacing(4);
    // As they stand on a deck: start, back, play, forward, end, loop.
    for (const int i : {2, 3, 0, 4, 5, 1})
        row->addWidget(m_buttons[i]);
    row->addSpacing(8);
    row->addWidget(m_time);
    row->addStretch();
    row->addWidget(m_durationLabel);
    row->addWidget(m_duration);
}

// In a narrow window the duration gives way, then the buttons that the keyboard has too.
void TransportBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const int button = m_buttons.first()->sizeHint().width() + layout()->spacing();
    int room = width() - 16 - m_time->sizeHint().width() - 8;
    const auto show = [&](QWidget* widget, int needed) {
        widget->setVisible(room >= needed);
        room -= needed;
    };
    for (const int i : {0, 1, 2, 5, 3, 4})
        show(m_buttons[i], button);
    const int duration = m_durationLabel->sizeHint().width() + m_duration->sizeHint().width() + 16;
    const bool hasRoom = room >= duration;
    m_durationLabel->setVisible(hasRoom);
    m_duration->setVisible(hasRoom);
}

QSize TransportBar::minimumSizeHint() const
{
    return {m_time->sizeHint().width() / 2, QWidget::minimumSizeHint().height()};
}

void TransportBar::ShowProject()
{
    m_time->SetRate(m_transport.Rate());
    m_duration->SetRate(m_transport.Rate());
    const QSignalBlocker time(m_time);
    const QSignalBlocker duration(m_duration);
    m_time->setRange(0, m_transport.LastFrame());
    m_duration->setValue(m_document.Current().duration);
    ShowFrame();
}

void TransportBar::ShowFrame()
{
    if (m_time->IsBeingTyped() && m_time->hasFocus())
        return;
    const QSignalBlocker blocker(m_time);
    m_time->setValue(m_transport.Frame());
}

void TransportBar::ShowPlaying()
{
    const bool playing = m_transport.IsPlaying();
    const UINT nameId = playing ? kTextPause : kTextPlay;
    m_play->setText(Text(nameId));
    m_play->setToolTip(Text(nameId + 1));
    m_play->setStatusTip(Text(nameId + 1));
    m_play->setIcon(SkinIcon(playing ? L"titler_pause" : L"titler_play"));
    m_buttons.first()->setAccessibleName(WithoutMnemonic(m_play->text()));
}

void TransportBar::GoToKey(bool next)
{
    m_transport.Pause();
    const Properties& properties = m_document.Current().title.properties;
    if (const auto key = NearestKey(properties, m_transport.Frame(), next, m_transport.LastFrame()))
        m_transport.Seek(*key);
}

} // namespace titler
