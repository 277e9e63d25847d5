#include "FrameExport.h"

#include "Texts.h"
#include "TitleRenderer.h"
#include "WholeFile.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

#include <new>

namespace titler {
namespace {

constexpr int kQuality = 80;        // the writer's word for its compression: less saves half the time
constexpr int kDotsPerMetre = 3780; // 96 per inch, where the toolkit would take the screen's
constexpr const char* kFormat = "png";

// The file's bytes, or why there are none.
QByteArray Png(QImage picture, QString& fault)
{
    picture.setDotsPerMeterX(kDotsPerMetre);
    picture.setDotsPerMeterY(kDotsPerMetre);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, kFormat);
    writer.setQuality(kQuality);
    if (!writer.write(picture))
        fault = writer.errorString();
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
    const QImage image = renderer.Render(project, frame, QSize(project.video.width, project.video.height));
    return image.isNull() ? Text(kTextFrameTooLarge) : SavePng(image, file);
} catch (const std::bad_alloc&) {
    return Text(kTextFrameTooLarge);
}

} // namespace titler
