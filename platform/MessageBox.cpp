#include "core/MessageBox.h"

#include "KvPlatform.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QThread>

#include <vector>

namespace {

struct Button
{
    QMessageBox::StandardButton standard;
    int id;
};

constexpr Button kOk{QMessageBox::Ok, IDOK};
constexpr Button kCancel{QMessageBox::Cancel, IDCANCEL};
constexpr Button kAbort{QMessageBox::Abort, IDABORT};
constexpr Button kRetry{QMessageBox::Retry, IDRETRY};
constexpr Button kIgnore{QMessageBox::Ignore, IDIGNORE};
constexpr Button kYes{QMessageBox::Yes, IDYES};
constexpr Button kNo{QMessageBox::No, IDNO};

// In the order that numbers them for the default; where they stand is the desktop's.
std::vector<Button> ButtonsOf(UINT style)
{
    switch (style & MB_TYPEMASK) {
    case MB_OKCANCEL:
        return {kOk, kCancel};
    case MB_ABORTRETRYIGNORE:
        return {kAbort, kRetry, kIgnore};
    case MB_YESNOCANCEL:
        return {kYes, kNo, kCancel};
    case MB_YESNO:
        return {kYes, kNo};
    case MB_RETRYCANCEL:
        return {kRetry, kCancel};
    default:
        return {kOk};
    }
}

QMessageBox::Icon IconOf(UINT style)
{
    switch (style & MB_ICONMASK) {
    case MB_ICONERROR:
        return QMessageBox::Critical;
    case MB_ICONQUESTION:
        return QMessageBox::Question;
    case MB_ICONWARNING:
        return QMessageBox::Warning;
    case MB_ICONINFORMATION:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

int ShowToolkitBox(HWND owner, const std::wstring& text, UINT style)
{
    const auto* application = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (!application || QThread::currentThread() != application->thread())
        return 0;
    // On the heap: the owner may be destroyed while the box is open, and takes the box with it.
    const QPointer<QMessageBox> box =
        new QMessageBox(IconOf(style), QGuiApplication::applicationDisplayName(), KvToQString(text),
                        QMessageBox::NoButton, owner);
    box->setTextFormat(Qt::PlainText);
    const std::vector<Button> buttons = ButtonsOf(style);
    for (const Button& button : buttons)
        box->addButton(button.standard);
    const bool isSecond = (style & MB_DEFBUTTON2) != 0 && buttons.size() > 1;
    box->setDefaultButton(buttons[isSecond ? 1 : 0].standard);
    const int chosen = box->exec();
    delete box;
    for (const Button& button : buttons) {
        if (button.standard == chosen)
            return button.id;
    }
    return kv::CautiousAnswer(style);
}

const bool g_registered = (kv::SetToolkitMessageBox(&ShowToolkitBox), true);

} // namespace
