// The controls of dialogs.
#pragma once

#include "resources/Tables.h"

#include <QString>

#include <memory>

class QSize;
class QWidget;

namespace kv {

/// A static text, a button, a check box or an edit. What does not fit into its place is cut with an ellipsis;
/// then the tool tip tells it whole.
std::unique_ptr<QWidget> MakeDialogControl(const DialogItem& item, QWidget* dialog);

/// Whether a control of ours that has that size shows all of its text; what is not ours does.
bool IsTextWhole(const QWidget& control, const QSize& size);

/// The texts that a control has from the tables.
struct DialogTexts
{
    QString text;
    QString tip;
};

/// Gives a control its text, tip and name from the tables. What somebody else gave it since stays.
/// @param shown what it was given last.
void SetDialogTexts(const DialogItem& item, QWidget& control, DialogTexts& shown);

} // namespace kv
