// Pictures of the find and replace dialog and of the character map.
#include "KvCharMapDlg.h"
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

bool SaveCharMap(const Pictures& pictures, const char* name, const QString& query)
{
    CKvCharMapDlg dialog;
    dialog.SetFont(L"DejaVu Sans");
    dialog.SetRecent(L"\u2013\u00E9\u2026\u266A");
    dialog.SetFavorites(L"\u266A\u2026\u20AC\u00A0");
    dialog.Create(nullptr, nullptr);
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    auto& search = *static_cast<QLineEdit*>(dialog.GetDlgItem(kKvCharMapSearch));
    search.setText(QStringLiteral("small e acute"));
    if (!query.isEmpty())
        search.setText(query);
    return pictures.Save(dialog, name);
}

} // namespace

bool SaveTextTools(const Pictures& pictures)
{
    return SaveFindReplace(pictures) && SaveCharMap(pictures, "character-map", {}) &&
           SaveCharMap(pictures, "character-map-no-match", QStringLiteral("small e cute"));
}
