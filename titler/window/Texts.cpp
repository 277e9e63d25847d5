#include "window/Texts.h"

#include "window/TextTable.h"

#include <QRegularExpression>

namespace titler {

namespace {

// A part of a text whose signs and digits are not ordered by what stands around it.
QString Isolated(const QString& value)
{
    constexpr char16_t kFirstStrongIsolate = 0x2068;
    constexpr char16_t kPopIsolate = 0x2069;
    return QChar(kFirstStrongIsolate) + value + QChar(kPopIsolate);
}

} // namespace

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
    // Languages whose letters are joined or on no keyboard have a Latin one in brackets behind the text.
    static const QRegularExpression mark(QStringLiteral("\\s?\\(&[^&]\\)|&(?=[^&])"));
    return text.remove(mark).replace(QLatin1String("&&"), QLatin1String("&"));
}

QString Text(UINT id, std::initializer_list<QString> values)
{
    const QString pattern = Text(id);
    // Names and times keep their own direction in a text from right to left.
    const bool isMirrored = pattern.isRightToLeft();
    QString text(isMirrored ? 1 : 0, QChar(0x200F));
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const qsizetype place = i + 1 < pattern.size() ? pattern[i + 1].unicode() - u'1' : -1;
        if (pattern[i] == u'%' && place >= 0 && place < static_cast<qsizetype>(values.size())) {
            text += isMirrored ? Isolated(values.begin()[place]) : values.begin()[place];
            ++i;
        } else {
            text += pattern[i];
        }
    }
    return text;
}

} // namespace titler
