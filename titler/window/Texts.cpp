#include "window/Texts.h"

#include "KvGuiRes.h"

namespace titler {

QString Text(UINT id)
{
    return QString::fromStdWString(KvGuiRes::LoadStringW(id));
}

QString Text(UINT id, std::initializer_list<QString> values)
{
    const QString pattern = Text(id);
    QString text;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const qsizetype place = i + 1 < pattern.size() ? pattern[i + 1].unicode() - u'1' : -1;
        if (pattern[i] == u'%' && place >= 0 && place < static_cast<qsizetype>(values.size())) {
            text += values.begin()[place];
            ++i;
        } else {
            text += pattern[i];
        }
    }
    return text;
}

} // namespace titler
