#include "window/ToolStrip.h"

#include "window/Commands.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QMenu>
#include <QToolTip>

namespace titler {
namespace {

constexpr int kPicture = 20;
constexpr int kGap = 2;

void AddButton(QHBoxLayout& row, QAction& tool)
{
    auto* button = new ToolButton(tool);
    InEachLanguage(*button, [button, &tool] { button->setAccessibleName(WithoutMnemonic(tool.text())); });
    button->setIconSize({kPicture, kPicture});
    button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    button->setProperty("role", "tool");
    button->setFocusPolicy(Qt::TabFocus);
    if (tool.menu() != nullptr)
        button->setPopupMode(QToolButton::InstantPopup);
    row.addWidget(button);
}

QString ToolTipOf(const QAction& command)
{
    const QString name = WithoutMnemonic(command.text()).remove(QChar(0x2026));
    const QString key = ShortcutsOf(command).value(0).toString(QKeySequence::NativeText);
    return key.isEmpty() ? Text(kTextToolTip, {name, command.toolTip()})
                         : Text(kTextToolTipKey, {name, key, command.toolTip()});
}

} // namespace

ToolButton::ToolButton(QAction& command)
{
    setDefaultAction(&command);
}

bool ToolButton::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || defaultAction() == nullptr)
        return QToolButton::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), ToolTipOf(*defaultAction()), this,
                       rect());
    return true;
}

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
