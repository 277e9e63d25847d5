#include "FrameExport.h"

#include "Texts.h"
#include "TitleRenderer.h"
#include "WholeFile.h"

#include <QImage>
#include <QtEndian>

#include <array>
#include <new>

namespace titler {
namespace {

// The smaller files of higher levels cost three times the time.
constexpr int kCompression = 3;

constexpr std::array<quint32, 256> CrcTable()
{
    std::array<quint32, 256> table{};
    for (quint32 i = 0; i < table.size(); ++i) {
        table[i] = i;
        for (int bit = 0; bit < 8; ++bit)
            table[i] = (table[i] & 1u) != 0 ? 0xEDB88320u ^ (table[i] >> 1) : table[i] >> 1;
    }
    return table;
}

quint32 Crc(const QByteArray& bytes)
{
    static constexpr std::array<quint32, 256> table = CrcTable();
    quint32 crc = 0xFFFFFFFFu;
    for (const char byte : bytes)
        crc = table[(crc ^ static_cast<uchar>(byte)) & 0xFFu] ^ (crc >> 8);
    return ~crc;
}

QByteArray BigEndian(quint32 value)
{
    const quint32 turned = qToBigEndian(value);
    return {reinterpret_cast<const char*>(&turned), sizeof turned};
}

QByteArray Chunk(const char* type, const QByteArray& data)
{
    const QByteArray body = type + data;
    return BigEndian(static_cast<quint32>(data.size())) + body + BigEndian(Crc(body));
}

// Rows as PNG has them: the number of the filter (none), then red, green, blue and alpha, not premultiplied.
QByteArray Rows(const QImage& image)
{
    const qsizetype length = 1 + qsizetype(4) * image.width();
    QByteArray rows(length * image.height(), '\0');
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        char* out = rows.data() + length * y + 1;
        for (int x = 0; x < image.width(); ++x, out += 4)
            if (row[x] != 0)
                qToBigEndian<quint32>(qUnpremultiply(row[x]) << 8 | qAlpha(row[x]), out);
    }
    return rows;
}

// Empty when memory is short. Most of exporting an animation is writing PNG: the toolkit's writer tries every
// filter on every row and takes four times as long, for pictures that are mostly empty.
QByteArray Png(const QImage& picture)
{
    const QImage image = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    const QByteArray compressed = qCompress(Rows(image), kCompression).mid(4); // without its own length field
    if (compressed.isEmpty())
        return {};
    const char form[] = {8, 6, 0, 0, 0}; // bits a channel, RGBA, deflate, adaptive filters, not interlaced
    const QByteArray header = BigEndian(static_cast<quint32>(image.width())) +
                              BigEndian(static_cast<quint32>(image.height())) + QByteArray(form, sizeof form);
    return "\x89PNG\r\n\x1A\n" + Chunk("IHDR", header) + Chunk("IDAT", compressed) + Chunk("IEND", {});
}

} // namespace

QString SavePng(const QImage& image, const QString& file)
{
    const QByteArray png = Png(image);
    return png.isEmpty() ? Text(kTextFrameTooLarge) : WriteWhole(file, png);
}

QString ExportFrame(const Project& project, const QString& file, double frame)
{
    TitleRenderer renderer;
    return ExportFrame(renderer, project, file, frame);
}

QString ExportFrame(TitleRenderer& renderer, const Project& project, const QString& file, double frame)
try {
    const QImage image = renderer.Render(project, frame, QSize(project.video.width, project.video.height));
    return image.isNull() ? Text(kTextFrameTooLarge) : SavePng(image, file);
} catch (const std::bad_alloc&) {
    return Text(kTextFrameTooLarge);
}

} // namespace titler
