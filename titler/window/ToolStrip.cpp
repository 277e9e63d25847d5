#include "window/ToolStrip.h"

#include <QAction>
#include <QHBoxLayout>
#include <QToolButton>

namespace titler {
namespace {

constexpr int kPicture = 20;
constexpr int kGap = 2;

void AddButton(QHBoxLayout& row, QAction& tool)
{
    auto* button = new QToolButton;
    button->setDefaultAction(&tool);
    button->setAccessibleName(tool.text().remove(u'&'));
    button->setIconSize({kPicture, kPicture});
    button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    button->setProperty("role", "tool");
    button->setFocusPolicy(Qt::TabFocus);
    row.addWidget(button);
}

} // namespace

ToolStrip::ToolStrip(QWidget& bar, const QList<QAction*>& tools) : QWidget(&bar)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(4 * kGap, 0, 0, 0);
    row->setSpacing(kGap);
    for (QAction* tool : tools)
        tool != nullptr ? AddButton(*row, *tool) : row->addSpacing(6 * kGap);
    row->addStretch();
    resize(sizeHint());
}

} // namespace titler
