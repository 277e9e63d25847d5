// What Qt Designer is told of each control that a form can hold: one row a control.
#pragma once

#include <QSize>
#include <QString>

#include <vector>

class QWidget;

namespace kv {

struct DesignerControl
{
    const char* name;       ///< of the class, and of its icon
    const char* header;     ///< as a host includes it
    const char* label;      ///< in the list of widgets
    QSize size;             ///< of a new one
    const char* toolTip;    ///< a line
    const char* whatsThis;  ///< some sentences: what it is for, and what a host does with it
    const char* properties; ///< of a new one, as a form has them
    const char* plainTexts; ///< its text properties that are no words of a language, with blanks between them
    QWidget* (*make)(QWidget* parent);
};

const std::vector<DesignerControl>& DesignerControls();

/// The form of a single new one.
QString DesignerForm(const DesignerControl& control);

} // namespace kv
