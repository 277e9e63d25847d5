#include "export/FrameExport.h"

#include "project/WholeFile.h"
#include "title/TitleRenderer.h"
#include "window/Texts.h"

#include <QImage>

#include <new>
#include <png.h>

namespace titler {
namespace {

// The file's bytes, or why there are none. Most of exporting an animation is writing PNG: the toolkit's own
// writer tries every filter on every row and takes three times as long for pictures that are mostly empty.
QByteArray Png(const QImage& picture, QString& fault)
{
    const bool isOpaque = !picture.hasAlphaChannel();
    const QImage pixels = picture.convertToFormat(isOpaque ? QImage::Format_RGB888 : QImage::Format_RGBA8888);
    if (pixels.isNull()) {
        fault = Text(kTextFrameTooLarge);
        return {};
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(pixels.width());
    image.height = static_cast<png_uint_32>(pixels.height());
    image.format = isOpaque ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA;
    image.flags = PNG_IMAGE_FLAG_FAST;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    const auto stride = static_cast<png_int_32>(pixels.bytesPerLine());
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.constBits(), stride, nullptr) == 0)
        fault = QString::fromLatin1(image.message);
    bytes.truncate(static_cast<qsizetype>(size));
    return bytes;
}

} // namespace

QString SavePng(const QImage& image, const QString& file)
{
    QString fault;
    const QByteArray png = Png(image, fault);
    return fault.isEmpty() ? WriteWhole(file, png) : fault;
}

QString ExportFrame(const Project& project, const QString& file, double frame)
{
    TitleRenderer renderer;
    return ExportFrame(renderer, project, file, frame);
}

QString ExportFrame(TitleRenderer& renderer, const Project& project, const QString& file, double frame)
try {
    const QImage image =
        renderer.RenderFrame(project, frame, QSize(project.video.width, project.video.height));
    return image.isNull() ? Text(kTextFrameTooLarge) : SavePng(image, file);
} catch (const std::bad_alloc&) {
    return Text(kTextFrameTooLarge);
}

} // namespace titler
