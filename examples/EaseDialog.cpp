// The ease dialog edits an ease of the host live, in one transaction: OK keeps it, Cancel takes it back.
#include <KvParamBezierCtrlDlg.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

// The host's parameter: opacity from 0 at frame 0 to 100 at frame 50.
class Opacity : public IKvDataOperator
{
public:
    explicit Opacity(QLabel& told) : m_told(told) {}
    int BeginEdit(const wchar_t*, const wchar_t*) override { return Tell("begun", m_before = m_ease); }
    int CommitEdit(const wchar_t*, const wchar_t*) override { return Tell("kept", m_ease); }
    int CancelEdit(const wchar_t*, const wchar_t*) override { return Tell("taken back", m_ease = m_before); }
    int GetEaseData(const wchar_t*, const wchar_t*, SKvParamEaseData& out) override
    {
        out = m_ease;
        return 1;
    }
    int SetEaseData(const wchar_t*, const wchar_t*, const SKvParamEaseData& in) override
    {
        const bool isPreset = in.startX == in.endX; // a kind alone: the shape of each is the host's choice
        const double out = in.kind == kKvEaseSpeedUp || in.kind == kKvEaseSmooth ? 0.5 : 0;
        const double into = in.kind == kKvEaseSpeedDown || in.kind == kKvEaseSmooth ? 0.5 : 0;
        m_ease = isPreset ? SKvParamEaseData{in.kind, into, 0, out, 0, 0, 0, 50, 100, -10, 110, 0} : in;
        return Tell("edited", m_ease);
    }

private:
    int Tell(const QString& what, const SKvParamEaseData& ease)
    {
        m_told.setText(what + QString(": tangents %1 and %2").arg(ease.outTangentX).arg(ease.inTangentX));
        return 1;
    }

    QLabel& m_told;
    SKvParamEaseData m_ease{kKvEaseSmooth, 0.5, 0, 0.5, 0, 0, 0, 50, 100, -10, 110, 0};
    SKvParamEaseData m_before = m_ease;
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;
    QPushButton open("Shape the Ease…");
    QLabel told("Nothing was edited yet.");
    QVBoxLayout layout(&window);
    layout.addWidget(&open);
    layout.addWidget(&told);
    Opacity opacity(told);
    QObject::connect(&open, &QPushButton::clicked, &window,
                     [&] { CKvParamBezierCtrlDlg(&opacity, L"title", L"opacity", &window).DoModal(); });
    window.resize(320, 90);
    window.show();
    return QApplication::exec();
}
