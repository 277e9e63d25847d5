// What stands in the middle of a view where nothing is yet: how to begin.
#pragma once

#include "KvTypes.h"

#include <QLabel>

namespace titler {

/// Lies over its view and lets everything through. Hidden at first.
class EmptyHint : public QLabel
{
    Q_OBJECT

public:
    EmptyHint(QWidget& view, UINT textId);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Place();
};

} // namespace titler
