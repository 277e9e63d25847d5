// What the inspector's fields share.
#pragma once

#include "KvTypes.h"

#include <QWidget>

class QAbstractButton;
class QButtonGroup;
class QDoubleSpinBox;
class QLabel;

namespace titler {

/// Gives a field its accessible name and its tool tip; the tip's number is the name's plus 1.
void NameField(QWidget& field, UINT nameId);

/// Gives a button its text, and its tip likewise.
void NameButton(QAbstractButton& button, UINT nameId);

/// A label that names its field for the keyboard ("&Colour").
QLabel* FieldLabel(UINT nameId, QWidget& field);

/// The same at the begin of a row; the fields of all rows begin in one line.
QLabel* RowLabel(UINT nameId, QWidget& field);

/// A heading of a section.
QLabel* Heading(UINT textId);
/// A tool tip that shows a user's text as it is, also where it looks like markup.
QString PlainTip(const QString& text);

/// For a field that edits the project. Ctrl+Z and Ctrl+Y undo the project, not the field's own text; where
/// something is typed that the project does not have yet, Ctrl+Z drops that alone. In a number Space is
/// the window's. The wheel changes a value, or a colour in a map, only where the focus
/// is, and scrolls elsewhere.
void JoinProject(QWidget& field);

/// What is set the focus to gives it to one of its parts. A focus proxy would do that too, but then Tab would
/// leave out all that stands before the part.
void FocusFirst(QWidget& whole, QWidget& part);

/// Tab reaches the checked button of the group alone, from wherever it comes.
void TabAtChecked(QButtonGroup& group);

/// A number of the project: name and tip, range, unit, and all of `JoinProject`.
void PrepareNumber(QDoubleSpinBox& field, UINT nameId, double least, double most, UINT unitId);

/// Takes what is typed in the fields of a window and not confirmed yet.
void CommitFields(QWidget& window);

} // namespace titler
