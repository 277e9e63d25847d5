#include "project/WholeFile.h"

#include <QSaveFile>

namespace titler {
namespace {

// A disk that fills up takes a part first, without a word; only the next write tells why.
bool WriteAll(QSaveFile& file, const QByteArray& bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 written = file.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

} // namespace

QString WriteWhole(const QString& name, const QByteArray& bytes)
{
    QSaveFile file(name);
    // Buffered, a full disk would go unnoticed: the commit does not look at what its own flush says.
    const bool isDone =
        file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && WriteAll(file, bytes) && file.commit();
    return isDone ? QString() : file.errorString();
}

} // namespace titler
