// Commands as a row of buttons under a caption.
#pragma once

#include "KvPlatform.h"
#include "window/Workspaces.h"

#include <QList>
#include <QWidget>

#include <array>

class QAction;

namespace titler {

/// The commands under the caption, by Workspace; null stands for a separator.
using WorkspaceTools = std::array<QList<QAction*>, kWorkspaces.size()>;

class ToolStrip : public QWidget, public IKvGuiWnd
{
public:
    /// @param bar becomes the parent. @param tools null is a separator.
    ToolStrip(QWidget& bar, const QList<QAction*>& tools);
};

} // namespace titler
