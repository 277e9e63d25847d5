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

std::unique_ptr<QMimeData> ColourData(std::uint32_t argb)
{
    QByteArray bytes(sizeof(argb), Qt::Uninitialized);
    qToLittleEndian(argb, bytes.data());
    auto data = std::make_unique<QMimeData>();
    data->setData(ColourFormat(), bytes);
    return data;
}

std::optional<std::uint32_t> ColourOf(const QMimeData& data)
{
    const QByteArray bytes = data.data(ColourFormat());
    if (bytes.size() != sizeof(std::uint32_t))
        return std::nullopt;
    return qFromLittleEndian<std::uint32_t>(bytes.constData());
}

bool CopyColour(std::uint32_t argb)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (!clipboard)
        return false;
    clipboard->setMimeData(ColourData(argb).release());
    return true;
}

std::optional<std::uint32_t> ClipboardColour()
{
    const QMimeData* data = ClipboardData();
    return data ? ColourOf(*data) : std::nullopt;
}

bool ClipboardHasColour()
{
    const QMimeData* data = ClipboardData();
    return data && data->hasFormat(ColourFormat());
}

} // namespace kv
