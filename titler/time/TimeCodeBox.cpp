#include "time/TimeCodeBox.h"

#include "window/Fields.h"

#include <QFontDatabase>
#include <QLineEdit>
#include <QRegularExpression>

#include <algorithm>

namespace titler {

TimeCodeBox::TimeCodeBox() : m_rate(FrameRateOf(kKvFrameRate25))
{
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont)); // the digits stand still
    setKeyboardTracking(false);
    setCorrectionMode(QAbstractSpinBox::CorrectToPreviousValue);
    JoinProject(*this);
}

void TimeCodeBox::SetRate(const FrameRate& rate)
{
    if (rate.numerator == m_rate.numerator && rate.denominator == m_rate.denominator)
        return;
    m_rate = rate;
    setSuffix({}); // shows the value anew
}

bool TimeCodeBox::IsBeingTyped() const
{
    return lineEdit()->isModified();
}

QString TimeCodeBox::textFromValue(int value) const
{
    return TimeCode(value, m_rate);
}

int TimeCodeBox::valueFromText(const QString& text) const
{
    return std::clamp(ParseTimeCode(text, m_rate).value_or(value()), minimum(), maximum());
}

QValidator::State TimeCodeBox::validate(QString& text, int&) const
{
    if (ParseTimeCode(text, m_rate))
        return QValidator::Acceptable;
    static const QRegularExpression parts(QStringLiteral("^[0-9:;., ]*$"));
    return parts.match(text).hasMatch() ? QValidator::Intermediate : QValidator::Invalid;
}

} // namespace titler
