#include "project/TimeCode.h"

#include "KvTimecode.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>
#include <limits>

namespace titler {
namespace {

constexpr qint64 kSecond = 1000000000; // nanoseconds
constexpr int kFields = 4;             // hours, minutes, seconds, frames
constexpr int kLongestText = 16;       // its numbers do not overflow

QString TwoDigits(qint64 number)
{
    return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

constexpr qint64 kSecondsOfDay = 24 * 60 * 60;

// The time code of so many counted frames within a day, whether it exists or not.
std::wstring CodeOfLabel(qint64 label, const FrameRate& rate)
{
    const qint64 seconds = label / rate.nominal;
    return (TwoDigits(seconds / 3600) + u':' + TwoDigits(seconds / 60 % 60) + u':' + TwoDigits(seconds % 60) +
            u':' + TwoDigits(label % rate.nominal))
        .toStdWString();
}

// The last one of a day is never left out.
qint64 FramesOfDay(const FrameRate& rate)
{
    DWORD last = 0;
    KvTimecode::FromText(CodeOfLabel(kSecondsOfDay * rate.nominal - 1, rate), rate.rate, rate.dropFrame,
                         last);
    return qint64{last} + 1;
}

// Hours, minutes, seconds and frames as they were typed; fewer are the last ones.
std::optional<QStringList> FieldsOf(const QString& text)
{
    static const QRegularExpression separator(QStringLiteral("[:;.,]"));
    static const QRegularExpression digits(QStringLiteral("^[0-9]+$"));
    QStringList fields = text.split(separator);
    if (fields.size() == 1) {
        QString rest = fields.takeFirst();
        for (int i = 1; i < kFields && rest.size() > 2; ++i, rest.chop(2))
            fields.prepend(rest.right(2));
        fields.prepend(rest);
    }
    const bool isSound = text.size() <= kLongestText && fields.size() <= kFields &&
                         std::all_of(fields.begin(), fields.end(),
                                     [](const QString& f) { return digits.match(f).hasMatch(); });
    while (fields.size() < kFields)
        fields.prepend(QStringLiteral("0"));
    return isSound ? std::optional(fields) : std::nullopt;
}

} // namespace

FrameRate FrameRateOf(EKvFrameRate rate)
{
    constexpr FrameRate rates[] = {
        {24000, 1001, 24, false, kKvFrameRate23_976}, {24, 1, 24, false, kKvFrameRate24},
        {25, 1, 25, false, kKvFrameRate25},           {30000, 1001, 30, true, kKvFrameRate29_97},
        {30, 1, 30, false, kKvFrameRate30},           {50, 1, 50, false, kKvFrameRate50},
        {60000, 1001, 60, true, kKvFrameRate59_94},   {60, 1, 60, false, kKvFrameRate60},
    };
    return rate >= 0 && static_cast<std::size_t>(rate) < std::size(rates) ? rates[rate] : rates[2];
}

// Seconds and the rest are counted apart: their product with the rate stays small.
qint64 FrameAtTime(qint64 nanoseconds, const FrameRate& rate)
{
    const qint64 time = std::max<qint64>(0, nanoseconds);
    return (time / kSecond * rate.numerator + time % kSecond * rate.numerator / kSecond) / rate.denominator;
}

qint64 TimeOfFrame(qint64 frame, const FrameRate& rate)
{
    const qint64 ticks = frame * rate.denominator; // of 1 / numerator of a second
    const qint64 rest = ticks % rate.numerator * kSecond;
    return ticks / rate.numerator * kSecond + (rest + rate.numerator - 1) / rate.numerator;
}

quint32 FrameAtMilliseconds(qint64 milliseconds, const FrameRate& rate)
{
    constexpr qint64 lastFrame = 0xFFFFFFFE;
    const qint64 time = std::max<qint64>(0, milliseconds);
    const qint64 ticks = 1000 * rate.denominator; // of 1 / numerator of a frame
    const qint64 whole = time / ticks;
    if (whole > lastFrame / rate.numerator)
        return lastFrame;
    const qint64 rest = (time % ticks * rate.numerator + ticks / 2) / ticks;
    return static_cast<quint32>(std::min(whole * rate.numerator + rest, lastFrame));
}

qint64 MillisecondsOfFrame(quint32 frame, const FrameRate& rate)
{
    return qint64{frame} * 1000 * rate.denominator / rate.numerator;
}

// Beyond a day the hours go on.
QString TimeCode(int frame, const FrameRate& rate)
{
    const qint64 shown = std::max(0, frame);
    const qint64 day = FramesOfDay(rate);
    std::wstring code;
    KvTimecode::ToText(static_cast<DWORD>(shown % day), rate.rate, rate.dropFrame, code);
    const QString text = QString::fromStdWString(code);
    return TwoDigits(shown / day * 24 + text.left(2).toInt()) + text.mid(2);
}

std::optional<int> ParseTimeCode(const QString& text, const FrameRate& rate)
{
    const std::optional<QStringList> fields = FieldsOf(text.trimmed());
    if (!fields)
        return std::nullopt;
    std::array<qint64, kFields> numbers{};
    for (int i = 0; i < kFields; ++i)
        numbers[static_cast<std::size_t>(i)] = fields->at(i).toLongLong();
    const auto [hours, minutes, seconds, frames] = numbers;
    constexpr int mostHours = 100000;
    if (hours > mostHours || minutes > 59 || seconds > 59 || frames >= rate.nominal)
        return std::nullopt;
    const qint64 label = ((hours * 60 + minutes) * 60 + seconds) * rate.nominal + frames;
    const qint64 frame = FrameOfLabel(label, rate);
    return frame <= std::numeric_limits<int>::max() ? std::optional(static_cast<int>(frame)) : std::nullopt;
}

qint64 FrameOfLabel(qint64 label, const FrameRate& rate)
{
    const qint64 labels = kSecondsOfDay * rate.nominal;
    qint64 ofDay = label % labels;
    DWORD frame = 0;
    while (!KvTimecode::FromText(CodeOfLabel(ofDay, rate), rate.rate, rate.dropFrame, frame))
        ++ofDay; // drop frame leaves it out
    return label / labels * FramesOfDay(rate) + frame;
}

} // namespace titler
