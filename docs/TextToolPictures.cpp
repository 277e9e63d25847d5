// Pictures of the find and replace dialog.
#include "KvFindReplaceTxtDlg.h"
#include "Pictures.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>

namespace {

bool SaveFindReplace(const Pictures& pictures)
{
    CKvFindReplaceTxtDlg dialog;
    dialog.Create(nullptr);
    CStringArray found{L"Northern Light"};
    dialog.SetFindString(found);
    static_cast<QLineEdit*>(dialog.GetDlgItem(kKvReplaceEdit))->setText(QStringLiteral("Aurora"));
    static_cast<QCheckBox*>(dialog.GetDlgItem(kKvMatchCaseCheck))->setChecked(true);
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    return pictures.Save(dialog, "find-replace");
}

} // namespace

bool SaveTextTools(const Pictures& pictures)
{
    return SaveFindReplace(pictures);
}
