// Lines of text for credits and the like: edited in place, dragged, undone; colours stay with their rows.
#include <KvTextEditListCtrl.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QUndoStack>
#include <QVBoxLayout>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;
    window.setWindowTitle("Credits");

    CKvTextEditListCtrl list;
    list.Create({0, 0, 420, 200}, WS_CHILD | WS_VISIBLE, &window, 1001);
    list.AddString(CStringArray{L"Directed by", L"Ada Nyström", L"With thanks to\nthe crew of the Aurora",
                                L"Filmed at the harbour"});
    const DWORD heading = 0xFF1C3046;
    list.SetItemBkColor(0, &heading, nullptr);
    list.SetSelItem(1);

    QLabel told("F2 edits, Alt+Up and Alt+Down move, Ctrl+Z takes it back.");
    QPushButton add("Add the Copyright");
    QVBoxLayout layout(&window);
    layout.addWidget(&list, 1);
    layout.addWidget(&told);
    layout.addWidget(&add, 0, Qt::AlignLeft);

    const auto tell = [&](const QString& what) {
        told.setText(what + (list.IsModified() ? ", modified" : ", as it was"));
    };
    QObject::connect(&list, &CKvTextListBase::TextEdited, &told,
                     [&](int row) { tell(QString("Line %1 was edited").arg(row + 1)); });
    QObject::connect(&list, &CKvTextListBase::RowsEdited, &told,
                     [&] { tell(QString("Lines: %1").arg(list.GetItemCount())); });
    QObject::connect(&list, &CKvTextListBase::SelectionEdited, &told, [&] {
        CStringArray texts;
        list.GetMultiLinesTxtFocus(texts);
        tell(QString("Lines selected: %1").arg(texts.size()));
    });
    // What the host does is not undone, unless it says so.
    QObject::connect(&add, &QPushButton::clicked, &list, [&] {
        list.RunAsStep(L"Add Line", [&] { list.AddString(L"© The Harbour Film Company"); });
        tell("Added");
    });
    window.show();
    return QApplication::exec();
}
