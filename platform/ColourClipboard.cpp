#include "platform/ColourClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QtEndian>

namespace kv {
namespace {

QString ColourFormat()
{
#if defined(Q_OS_WIN)
    // The toolkit registers the value's name as a native clipboard format.
    return QStringLiteral("application/x-qt-windows-mime;value=\"DWCOLOR\"");
#else
    return QStringLiteral("application/x-kv-dwcolor");
#endif
}

const QMimeData* ClipboardData()
{
    const QClipboard* clipboard = QGuiApplication::clipboard();
    return clipboard ? clipboard->mimeData() : nullptr;
}

} // namespace

bool CopyColour(std::uint32_t argb)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (!clipboard)
        return false;
    QByteArray bytes(sizeof(argb), Qt::Uninitialized);
    qToLittleEndian(argb, bytes.data());
    auto* data = new QMimeData; // the clipboard takes it
    data->setData(ColourFormat(), bytes);
    clipboard->setMimeData(data);
    return true;
}

std::optional<std::uint32_t> ClipboardColour()
{
    const QMimeData* data = ClipboardData();
    const QByteArray bytes = data ? data->data(ColourFormat()) : QByteArray();
    if (bytes.size() != sizeof(std::uint32_t))
        return std::nullopt;
    return qFromLittleEndian<std::uint32_t>(bytes.constData());
}

bool ClipboardHasColour()
{
    const QMimeData* data = ClipboardData();
    return data && data->hasFormat(ColourFormat());
}

} // namespace kv
