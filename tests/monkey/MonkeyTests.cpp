// A monkey at mouse and keyboard: whatever it does, and whatever the host changes meanwhile, a control lives,
// paints, and ends each run that it has begun.
//
// KV_MONKEY_EVENTS sets the number of events for each control, 1,500 without it.
#include "KvPlatform.h"
#include "tests/monkey/Subjects.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace {

constexpr QSize kSize(360, 240);
constexpr int kKeys[] = {Qt::Key_Left,      Qt::Key_Right,  Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Home,
                         Qt::Key_End,       Qt::Key_PageUp, Qt::Key_Space,  Qt::Key_Return, Qt::Key_PageDown,
                         Qt::Key_Tab,       Qt::Key_Escape, Qt::Key_Delete, Qt::Key_F2,     Qt::Key_F3,
                         Qt::Key_Backspace, Qt::Key_A,      Qt::Key_C,      Qt::Key_V,      Qt::Key_X,
                         Qt::Key_Z,         Qt::Key_Y,      Qt::Key_5,      Qt::Key_Period};
constexpr Qt::MouseButton kButtons[] = {Qt::LeftButton, Qt::LeftButton, Qt::RightButton, Qt::MiddleButton};

int EventCount()
{
    bool isGiven = false;
    const int count = qEnvironmentVariableIntValue("KV_MONKEY_EVENTS", &isGiven);
    return isGiven ? count : 1500;
}

class Monkey
{
public:
    Monkey(Subject& subject, QWidget& parent, unsigned seed)
        : m_subject(subject)
        , m_parent(parent)
        , m_random(seed)
    {
        // Menus, message boxes and drags would wait for a hand.
        QObject::connect(&m_closer, &QTimer::timeout, [] {
            QDrag::cancel();
            if (QWidget* popup = QApplication::activePopupWidget())
                popup->close();
            else if (QWidget* box = QApplication::activeModalWidget())
                box->close();
        });
        m_closer.start(0);
    }

    void Act()
    {
        switch (Below(m_random, 16)) {
        case 0:
        case 1:
        case 2:
            return Press();
        case 3:
        case 4:
        case 5:
        case 6:
            return Move();
        case 7:
        case 8:
            return Release();
        case 9:
            return Turn();
        case 10:
        case 11:
        case 12:
            return Type();
        case 13:
            return OpenMenu();
        case 14:
            return m_subject.Change(m_random);
        default:
            return Disturb();
        }
    }

private:
    // Into the child below the pointer, or the one that has the mouse.
    QWidget* Target()
    {
        if (m_pressed)
            return m_pressed;
        QWidget& control = m_subject.Control();
        m_at = {Below(m_random, control.width() + 20) - 10, Below(m_random, control.height() + 20) - 10};
        QWidget* const child = control.childAt(m_at);
        return child ? child : &control;
    }
    void Mouse(QWidget& target, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        const QPointF at = target.mapFrom(&m_subject.Control(), m_at);
        QMouseEvent event(type, at, target.mapToGlobal(at), button, buttons, Modifiers());
        QApplication::sendEvent(&target, &event);
    }
    Qt::KeyboardModifiers Modifiers()
    {
        constexpr Qt::KeyboardModifiers kAll[] = {
            {}, {}, {}, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier};
        return kAll[Below(m_random, 6)];
    }
    void Press()
    {
        QWidget* const target = Target();
        if (m_pressed || !target->isEnabled())
            return;
        m_pressed = target;
        m_button = kButtons[Below(m_random, 4)];
        const bool isDouble = Below(m_random, 5) == 0;
        Mouse(*target, isDouble ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress, m_button, m_button);
    }
    void Move()
    {
        QWidget* const target = Target();
        m_at += QPoint(Below(m_random, 41) - 20, Below(m_random, 41) - 20);
        Mouse(*target, QEvent::MouseMove, Qt::NoButton, m_pressed ? m_button : Qt::NoButton);
    }
    void Release()
    {
        if (const QPointer<QWidget> target = std::exchange(m_pressed, nullptr))
            Mouse(*target, QEvent::MouseButtonRelease, m_button, Qt::NoButton);
    }
    void Turn()
    {
        QWidget* const target = Target();
        const QPointF at = target->mapFrom(&m_subject.Control(), m_at);
        const int delta = (Below(m_random, 9) - 4) * 60;
        QWheelEvent event(at, target->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Modifiers(),
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(target, &event);
    }
    void Type()
    {
        QWidget* target = QApplication::focusWidget();
        if (!target || !m_parent.isAncestorOf(target)) {
            m_subject.Control().setFocus();
            target = &m_subject.Control();
        }
        const int key = kKeys[Below(m_random, static_cast<int>(std::size(kKeys)))];
        const Qt::KeyboardModifiers modifiers = Modifiers();
        const bool isText = key < 0x100 && modifiers == Qt::NoModifier;
        QKeyEvent press(QEvent::KeyPress, key, modifiers, isText ? QString(QChar(key)) : QString());
        const QPointer<QWidget> alive(target);
        QApplication::sendEvent(target, &press);
        QKeyEvent release(QEvent::KeyRelease, key, modifiers);
        if (alive)
            QApplication::sendEvent(alive, &release);
    }
    void OpenMenu()
    {
        QWidget* const target = Target();
        if (!target->isEnabled())
            return;
        const QPoint at = target->mapFrom(&m_subject.Control(), m_at);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, target->mapToGlobal(at));
        QApplication::sendEvent(target, &event);
    }
    void Disturb()
    {
        QWidget& control = m_subject.Control();
        switch (Below(m_random, 6)) {
        case 0:
            return control.resize(Below(m_random, 500), Below(m_random, 300));
        case 1:
            return control.resize(kSize);
        case 2:
            return control.setEnabled(!control.isEnabled());
        case 3:
            return control.setEnabled(true);
        case 4:
            control.hide();
            return control.show();
        default:
            m_parent.show(); // a caption's button may have closed it
            QApplication::processEvents();
        }
    }

    Subject& m_subject;
    QWidget& m_parent;
    Random m_random;
    QTimer m_closer;
    QPoint m_at; ///< in the control
    QPointer<QWidget> m_pressed;
    Qt::MouseButton m_button = Qt::NoButton;
};

class Monkeys : public testing::TestWithParam<SubjectMaker>
{
};

TEST_P(Monkeys, DoNoHarm)
{
    QWidget parent;
    parent.resize(kSize);
    parent.show();
    QApplication::setActiveWindow(&parent);
    const std::unique_ptr<Subject> subject = GetParam().make(parent);
    const QPointer<QWidget> control(&subject->Control());
    control->resize(kSize);
    control->show();
    Monkey monkey(*subject, parent, 20);
    for (int i = 0, count = EventCount(); i < count; ++i) {
        monkey.Act();
        ASSERT_TRUE(control) << "after event " << i;
        if (i % 50 == 0 && !control->size().isEmpty()) {
            EXPECT_FALSE(control->grab().isNull());
        }
    }
    QApplication::processEvents();
    EXPECT_TRUE(control);
}

INSTANTIATE_TEST_SUITE_P(Each, Monkeys, testing::ValuesIn(AllSubjects()),
                         [](const auto& one) { return std::string(one.param.name); });

} // namespace
