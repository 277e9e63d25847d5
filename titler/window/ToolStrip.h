// Commands as a row of buttons under a caption.
#pragma once

#include "KvPlatform.h"
#include "window/Workspaces.h"

#include <QList>
#include <QToolButton>

#include <array>

class QAction;

namespace titler {

/// The commands under the caption, by Workspace; null stands for a separator.
using WorkspaceTools = std::array<QList<QAction*>, kWorkspaces.size()>;

/// A button without a text: its tool tip begins with the command's name and key.
class ToolButton : public QToolButton
{
public:
    explicit ToolButton(QAction& command);

protected:
    bool event(QEvent* event) override;
};

class ToolStrip : public QWidget, public IKvGuiWnd
{
public:
    /// @param bar becomes the parent. @param tools null is a separator.
    ToolStrip(QWidget& bar, const QList<QAction*>& tools);
};

} // namespace titler
