#include "FrameExport.h"

#include "Texts.h"
#include "TitleRenderer.h"

#include <QImageWriter>
#include <QSaveFile>

namespace titler {

QString SavePng(const QImage& image, const QString& name)
{
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    QImageWriter writer(&file, "png");
    if (!writer.write(image)) {
        const bool diskFault = file.error() != QFileDevice::NoError;
        return diskFault ? file.errorString() : writer.errorString();
    }
    return file.commit() ? QString() : file.errorString();
}

QString ExportFrame(const Project& project, const QString& file)
{
    const QImage frame = TitleRenderer().Render(project, QSize(project.video.width, project.video.height));
    return frame.isNull() ? Text(kTextFrameTooLarge) : SavePng(frame, file);
}

} // namespace titler
