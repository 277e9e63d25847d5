// What the inspector's fields share.
#pragma once

#include "KvTypes.h"

#include <QWidget>

class QLabel;

namespace titler {

/// Gives a field its accessible name and its tool tip; the tip's number is the name's plus 1.
void NameField(QWidget& field, UINT nameId);

/// A label that names its field for the keyboard ("&Colour").
QLabel* FieldLabel(UINT nameId, QWidget& field);

/// The same at the begin of a row; the fields of all rows begin in one line.
QLabel* RowLabel(UINT nameId, QWidget& field);

/// A heading of a section.
QLabel* Heading(UINT textId);

/// Lets Ctrl+Z and Ctrl+Y in a text field undo the project, not the field's own text.
void UndoProjectFrom(QWidget& field);

} // namespace titler
