// Find and replace: the dialog asks for the texts, the host's editor, here a text list, searches.
#include <KvFindReplaceTxtDlg.h>
#include <KvTextEditListCtrl.h>

#include <QApplication>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

class Editor : public IKvFindReplaceTxtNotify
{
public:
    Editor(CKvTextEditListCtrl& list, QLabel& told) : m_list(list), m_told(told) {}
    int Find(const wchar_t* text, BOOL matchCase) override { return Run(0, text, L"", matchCase); }
    int Replace(const wchar_t* text, const wchar_t* replacement, BOOL matchCase, BOOL all) override
    {
        return Run(all ? 2 : 1, text, replacement, matchCase);
    }

private:
    int Run(int mode, const wchar_t* text, const wchar_t* replacement, BOOL matchCase)
    {
        const int result = m_list.FindReplace(m_list.GetLastSelItem(), mode, text, replacement, matchCase);
        m_told.setText(QString("Line %2, places left: %1")
                           .arg(m_list.CountMatches(text, matchCase))
                           .arg(m_list.GetLastSelItem() + 1));
        return result; // with kKvFindNotFound the dialog says so
    }

    CKvTextEditListCtrl& m_list;
    QLabel& m_told;
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;
    CKvTextEditListCtrl list;
    list.Create({0, 0, 420, 160}, WS_CHILD | WS_VISIBLE, &window, 1001);
    list.AddString(CStringArray{L"The last ferry", L"leaves at seven.", L"The ferry never waits."});
    QLabel told("Ctrl+F opens the dialog, F3 goes on.");
    QVBoxLayout layout(&window);
    layout.addWidget(&list, 1);
    layout.addWidget(&told);

    Editor editor(list, told);
    CKvFindReplaceTxtDlg dialog;
    dialog.Create(&window);
    dialog.SetNotify(&editor);
    QShortcut find(QKeySequence::Find, &window);
    QObject::connect(&find, &QShortcut::activated, &dialog, [&] {
        dialog.show();
        dialog.activateWindow();
    });
    QShortcut next(QKeySequence::FindNext, &window);
    QObject::connect(&next, &QShortcut::activated, &dialog, [&] { dialog.FindNext(); });
    window.show();
    return QApplication::exec();
}
