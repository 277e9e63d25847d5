// The character map: what is picked there comes into the line where one was writing.
#include <KvCharMapDlg.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

class Inserter : public IKvCmdTarget
{
public:
    Inserter(QLineEdit& line, QLabel& told) : m_line(line), m_told(told) {}
    int OnCommand(unsigned id, WPARAM character, LPARAM) override
    {
        if (id != KvCharMapCommand)
            return 0;
        m_line.insert(QChar(static_cast<char16_t>(character)));
        m_told.setText(QString::asprintf("U+%04X was picked.", static_cast<unsigned>(character)));
        return 1;
    }

private:
    QLineEdit& m_line;
    QLabel& m_told;
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;
    window.setWindowTitle("Character map");
    QLineEdit line("Kostüme und Maske ");
    QPushButton open("Characters…");
    QLabel told("Nothing was picked yet.");
    QVBoxLayout layout(&window);
    layout.addWidget(&line);
    layout.addWidget(&open, 0, Qt::AlignLeft);
    layout.addWidget(&told);

    Inserter inserter(line, told);
    CKvCharMapDlg characters;
    characters.SetFont(KvFromQString(line.fontInfo().family()));
    characters.SetFavorites(L"©–…“”");
    characters.Create(&window, &inserter);
    QObject::connect(&open, &QPushButton::clicked, &characters, [&] {
        characters.show();
        characters.activateWindow();
    });
    window.resize(420, 120);
    window.show();
    return QApplication::exec();
}
