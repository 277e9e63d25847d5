// Watches a program from within, as a plugin of the toolkit's that the environment names: the program itself
// knows nothing of it. Once its first window is painted it presses the keys of KV_WATCH_KEYS, waits until a
// window's title or a label in it holds the text of KV_WATCH_TEXT, renders that window into KV_WATCH_PICTURE
// and closes all windows.
#include <QApplication>
#include <QGenericPlugin>
#include <QKeySequence>
#include <QLabel>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <utility>

namespace {

constexpr int kPause = 20; // milliseconds between two looks at the program

QStringList TextsOf(const QWidget& window)
{
    QStringList texts{window.windowTitle()};
    for (const QLabel* label : window.findChildren<QLabel*>())
        if (label->isVisible())
            texts << label->text();
    return texts;
}

class Watcher : public QObject
{
    Q_OBJECT

public:
    Watcher()
    {
        qApp->installEventFilter(this);
        connect(&m_clock, &QTimer::timeout, this, &Watcher::Look);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* window = event->type() == QEvent::Paint ? qobject_cast<QWidget*>(watched) : nullptr;
        if (window != nullptr && window->isWindow() && !m_clock.isActive() && !m_isDone)
            m_clock.start(kPause);
        return false;
    }

private:
    void Look()
    {
        if (m_keys.isEmpty()) {
            if (QWidget* window = Speaker())
                Finish(*window);
            return;
        }
        // A window that a key opened takes the focus only later: it must have come to rest.
        QWidget* target = Target();
        if (target == nullptr || std::exchange(m_target, target) != target)
            return;
        // Not from here: a timer does not come again while a window that a key opens runs in its call.
        QMetaObject::invokeMethod(this, &Watcher::PressNext, Qt::QueuedConnection);
    }

    // Where a user's keys arrive.
    static QWidget* Target()
    {
        for (QWidget* widget : {QApplication::activePopupWidget(), QApplication::focusWidget()})
            if (widget != nullptr)
                return widget;
        return QApplication::activeWindow();
    }

    void PressNext()
    {
        QWidget* target = m_target;
        m_target = nullptr;
        if (target == nullptr)
            return;
        const QKeyCombination key = QKeySequence(m_keys.takeFirst())[0];
        QTest::keyClick(target, key.key(), key.keyboardModifiers());
    }

    QWidget* Speaker() const
    {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible() && !TextsOf(*window).filter(m_text).isEmpty())
                return window;
        return nullptr;
    }

    void Finish(QWidget& window)
    {
        m_isDone = true;
        m_clock.stop();
        window.grab().save(m_picture);
        std::printf("shown: %s\n", qPrintable(TextsOf(window).join(u'\n')));
        QApplication::closeAllWindows();
    }

    QStringList m_keys = qEnvironmentVariable("KV_WATCH_KEYS").split(u' ', Qt::SkipEmptyParts);
    const QString m_text = qEnvironmentVariable("KV_WATCH_TEXT");
    const QString m_picture = qEnvironmentVariable("KV_WATCH_PICTURE");
    QPointer<QWidget> m_target; ///< of the next key, as it was at the last look
    QTimer m_clock;
    bool m_isDone = false;
};

class WatcherPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "Watcher.json")

public:
    QObject* create(const QString&, const QString&) override { return new Watcher; }
};

} // namespace

#include "Watcher.moc"
