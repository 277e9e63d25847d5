#include "WholeFile.h"

#include <QSaveFile>

namespace titler {

QString WriteWhole(const QString& name, const QByteArray& bytes)
{
    QSaveFile file(name);
    // Without the flush a full disk goes unnoticed: the commit does not look at what its own flush says.
    const bool isDone =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() && file.commit();
    return isDone ? QString() : file.errorString();
}

} // namespace titler
