// A field for a frame or a number of frames, shown as time code.
#pragma once

#include "project/TimeCode.h"

#include <QSpinBox>

namespace titler {

class TimeCodeBox : public QSpinBox
{
    Q_OBJECT

public:
    TimeCodeBox();

    void SetRate(const FrameRate& rate);
    /// True from the first typed character until it is taken or dropped.
    bool IsBeingTyped() const;

protected:
    QString textFromValue(int value) const override;
    int valueFromText(const QString& text) const override;
    QValidator::State validate(QString& text, int& position) const override;

private:
    FrameRate m_rate;
};

} // namespace titler
