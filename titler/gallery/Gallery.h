// Every control of the library in one window, to look at them as one family and to see what each tells.
#pragma once

#include "gallery/Samples.h"

#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>

class KvMessageSink;
class QBoxLayout;
class QLabel;
class QPushButton;
class QScrollArea;

namespace titler {

class Gallery : public QWidget
{
    Q_OBJECT

public:
    Gallery();
    ~Gallery() override;

    /// The classes that are shown, dialogs included.
    const QStringList& Names() const { return m_names; }
    /// All of it, whatever part the window shows.
    QPixmap Picture();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// Makes a control as a child of the widget, with that number.
    using Maker = std::function<QWidget*(QWidget& parent, UINT id)>;

    /// A row of cards under a heading.
    QBoxLayout& AddFamily(UINT headingId);
    /// Whether the card has the control a second time, disabled.
    enum class Twice
    {
        No,
        Beside,
        Below
    };
    void Add(QBoxLayout& row, const char* name, QSize size, const Maker& make, Twice twice = Twice::No);
    /// A list, twice.
    template <typename List>
    void AddList(QBoxLayout& row, const char* name, QSize size);
    void AddOpener(QBoxLayout& row, const char* name, std::function<void()> open);
    QWidget& AddCard(QBoxLayout& row, const char* name);
    void Watch(QWidget& parent, const QString& name);
    void Tell(const QString& name, const QString& message, UINT number, const QString& code);
    /// Tells of a signal, for a control that sends its parent no message of it.
    template <typename Control, typename Class, typename... Arguments>
    void TellOf(const Control& control, UINT number, const char* name, const char* said,
                void (Class::*signal)(Arguments...));
    class Caller;
    void AddColours();
    void AddCurves();
    void AddLists();
    void AddBars();
    void AddTools();

    QStringList m_names;
    QScrollArea* m_area;
    QBoxLayout* m_families;
    QLabel* m_told;
    UINT m_id = 1000;
    SampleEase m_ease;
    std::unique_ptr<Caller> m_caller;                ///< whom the dialogs call
    std::vector<std::unique_ptr<QObject>> m_dialogs; ///< windows of their own, which nobody else owns
    std::vector<std::unique_ptr<KvMessageSink>> m_sinks;
};

} // namespace titler
