// Commands as a row of buttons under a caption.
#pragma once

#include "KvPlatform.h"

#include <QList>
#include <QWidget>

class QAction;

namespace titler {

class ToolStrip : public QWidget, public IKvGuiWnd
{
public:
    /// @param bar becomes the parent. @param tools null is a separator.
    ToolStrip(QWidget& bar, const QList<QAction*>& tools);
};

} // namespace titler
