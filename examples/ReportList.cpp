// A list of a host's own: columns, rows that are edited in place and sorted by their header.
#include <KvReportListCtrl.h>

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

class ClipList : public CKvReportListCtrl
{
    QLabel& m_told;

public:
    ClipList(QWidget& parent, QLabel& told) : m_told(told)
    {
        Create({0, 0, 420, 160}, WS_CHILD | WS_VISIBLE, &parent, 1001);
        InsertColumn(L"Clip", 300);
        InsertColumn(L"Frames", 100);
        InsertRows(-1, {{L"harbour.mov", L"250"}, {L"ferry.mov", L"1200"}, {L"pier.mov", L"75"}});
    }

protected:
    BOOL _CanEditCell(int, int) override { return 1; }
    BOOL _ValidateEdit(int, int column, const CString& text, CString& why) override
    {
        why = L"Digits only, please."; // shown where the text is refused; the cell stays open
        return column == 0 || (!text.empty() && text.find_first_not_of(L"0123456789") == CString::npos);
    }
    void _CommitEdit(int line, int column, const CString& text) override
    {
        CKvReportListCtrl::_CommitEdit(line, column, text); // stores it
        m_told.setText(QString("Row %1 says %2 now.").arg(line + 1).arg(KvToQString(text)));
    }
    void _OnHeaderClick(int column) override
    {
        CArray<int, int> order;
        for (int row = 0; row < GetItemCount(); ++row)
            order.push_back(row);
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
            return column == 0 ? GetItemText(a, 0) < GetItemText(b, 0)
                               : std::stold(GetItemText(a, 1)) < std::stold(GetItemText(b, 1));
        });
        SortRows(order);
    }
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;
    QLabel told("F2 or a double click edits, a header sorts.");
    ClipList list(window, told);
    QVBoxLayout layout(&window);
    layout.addWidget(&list, 1);
    layout.addWidget(&told);
    window.show();
    return QApplication::exec();
}
