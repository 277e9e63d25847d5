// Numbers that are typed, stepped or scrubbed by a drag on their border; a text follows.
#include <KvParamEdit.h>
#include <KvTypes.h>

#include <QApplication>
#include <QFormLayout>
#include <QLabel>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;
    window.setWindowTitle("Number edits");

    struct
    {
        const wchar_t* name;
        int least, most, value;
    } const rows[] = {{L"Size", 8, 72, 32}, {L"Spacing", 50, 300, 100}, {L"Weight", 100, 900, 400}};
    CKvParamEdit numbers[3];
    QLabel title("Northern Lights");
    title.setFixedSize(480, 110);
    title.setAlignment(Qt::AlignCenter);
    QLabel told("Type a number, step it with the arrows, or drag its border.");
    QFormLayout layout(&window);
    layout.addRow(&title);
    for (int i = 0; i < 3; ++i) {
        numbers[i].Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &window, 1001 + static_cast<UINT>(i));
        numbers[i].SetValueRange(rows[i].least, rows[i].most);
        numbers[i].SetValue(rows[i].value);
        numbers[i].SetLabel(rows[i].name);
        layout.addRow(QString::fromWCharArray(rows[i].name), &numbers[i]);
    }
    numbers[2].SetStep(100);
    layout.addRow(&told);

    const auto show = [&] {
        QFont font = title.font();
        font.setPixelSize(numbers[0].GetValue());
        font.setLetterSpacing(QFont::PercentageSpacing, numbers[1].GetValue());
        font.setWeight(static_cast<QFont::Weight>(numbers[2].GetValue()));
        title.setFont(font);
    };
    // The first digit of a typing begins a run, Enter or leaving the edit ends it.
    KvMessageSink sink(&window, [&](UINT message, WPARAM id, LPARAM lParam) -> std::optional<LRESULT> {
        if (message != WM_NOTIFY || id < 1001 || id > 1003)
            return std::nullopt;
        const auto& record = *reinterpret_cast<const KvParamEditRecord*>(lParam);
        told.setText(QString("%1, phase %2: %3")
                         .arg(QString::fromWCharArray(rows[id - 1001].name))
                         .arg(record.phase)
                         .arg(numbers[id - 1001].GetValue()));
        show();
        return 0;
    });
    show();
    window.show();
    return QApplication::exec();
}
