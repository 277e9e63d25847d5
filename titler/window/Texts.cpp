#include "window/Texts.h"

#include "window/TextTable.h"

#include <QRegularExpression>

namespace titler {

std::wstring WideText(UINT id)
{
    static const int added = [] {
        const std::span<const KvStringEntry> own = OwnTexts();
        return KvGuiRes::AddStrings(own.data(), own.size());
    }();
    return added ? KvGuiRes::LoadStringW(id) : std::wstring();
}

QString Text(UINT id)
{
    return QString::fromStdWString(WideText(id));
}

QString WithoutMnemonic(QString text)
{
    // Languages whose letters are on no keyboard have a Latin one in brackets behind the text.
    static const QRegularExpression mark(QStringLiteral("\\s?\\(&[^&]\\)|&(?=[^&])"));
    return text.remove(mark).replace(QLatin1String("&&"), QLatin1String("&"));
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
