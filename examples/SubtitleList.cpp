// Subtitles: texts, time codes and templates, edited and undone; the row that plays is followed.
#include <KvSubTitleTxtListEditor.h>

#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <QUndoStack>
#include <QVBoxLayout>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;
    window.setWindowTitle("Subtitles[*]");

    CKvSubTitleTxtListEditor list;
    list.Create({0, 0, 720, 240}, WS_CHILD | WS_VISIBLE, &window, 1001);
    list.SetTimecodeFormat(kKvFrameRate25, 0);
    list.SetTimecodeOffset(10 * 3600 * 25); // the tape begins at ten o'clock
    list.InserItem(-1, L"We never should have sailed so far north.", 0, 60, L"Lower Third");
    list.InserItem(-1, L"– Did you see it?\n– See what?", 75, 120, L"Lower Third");
    list.InserItem(-1, L"The last ferry leaves at seven.", 125, 0xFFFFFFFF,
                   L"Lower Third"); // no out time code
    list.SetFollowPlayback(1);
    list.SetSelItem(0);

    QLabel told("F2 edits a cell: +10 in a time code is ten frames later. Ctrl+Enter adds a row.");
    QVBoxLayout layout(&window);
    layout.addWidget(&list, 1);
    layout.addWidget(&told);

    // What the user does is told, what the host does is not.
    QObject::connect(&list, &CKvTextListBase::TextEdited, &told, [&](int row) {
        CString text;
        list.GetString(row, text);
        told.setText(QString("Row %1 says: %2").arg(row + 1).arg(KvToQString(text)));
    });
    QObject::connect(&list, &CKvSubTitleTxtListEditor::TimeCodeEdited, &told, [&](int row, bool in) {
        told.setText(QString("Row %1 has another %2 time code.").arg(row + 1).arg(in ? "in" : "out"));
    });
    QObject::connect(&list, &CKvTextListBase::RowsEdited, &told,
                     [&] { told.setText(QString("Rows: %1").arg(list.GetItemCount())); });
    QObject::connect(list.GetUndoStack(), &QUndoStack::cleanChanged, &window,
                     [&](bool clean) { window.setWindowModified(!clean); });

    QTimer playback;
    QObject::connect(&playback, &QTimer::timeout, &list, [&, frame = DWORD(0)]() mutable {
        frame = (frame + 1) % 200;
        list.SetPlayIndex(list.FindPlayIndex(frame));
    });
    playback.start(40);
    window.resize(720, 260);
    window.show();
    return QApplication::exec();
}
