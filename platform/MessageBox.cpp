#include "core/MessageBox.h"

#include "KvPlatform.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QThread>

#include <array>

namespace {

struct Button
{
    QMessageBox::StandardButton standard;
    int id;
};

constexpr std::array kButtons = {
    Button{QMessageBox::Ok, IDOK},         Button{QMessageBox::Cancel, IDCANCEL},
    Button{QMessageBox::Abort, IDABORT},   Button{QMessageBox::Retry, IDRETRY},
    Button{QMessageBox::Ignore, IDIGNORE}, Button{QMessageBox::Yes, IDYES},
    Button{QMessageBox::No, IDNO},
};

QMessageBox::StandardButtons ButtonsOf(UINT style)
{
    switch (style & MB_TYPEMASK) {
    case MB_OKCANCEL:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MB_ABORTRETRYIGNORE:
        return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    case MB_YESNOCANCEL:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MB_YESNO:
        return QMessageBox::Yes | QMessageBox::No;
    case MB_RETRYCANCEL:
        return QMessageBox::Retry | QMessageBox::Cancel;
    default:
        return QMessageBox::Ok;
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
    const QPointer<QMessageBox> box = new QMessageBox(
        IconOf(style), QGuiApplication::applicationDisplayName(), KvToQString(text), ButtonsOf(style), owner);
    box->setTextFormat(Qt::PlainText);
    const int chosen = box->exec();
    delete box;
    for (const Button& button : kButtons) {
        if (button.standard == chosen)
            return button.id;
    }
    return kv::CautiousAnswer(style);
}

const bool g_registered = (kv::SetToolkitMessageBox(&ShowToolkitBox), true);

} // namespace
