// A view on the frames of ten years: the helper reckons in 64 bits, the bar says what it is asked for.
#include <KvScroll.h>
#include <KvWnd.h>

#include <QApplication>
#include <QShortcut>

struct FilmView : CKvWnd
{
    static constexpr std::int64_t kWidth = 100; // of a frame, in pixels
    IKvScrollLineHelper* m_line = nullptr;
    CKvScrollBar m_bar;

    FilmView()
    {
        KvCreateScrollLineHelper(&m_line);
        m_line->SetVirtualLength(10LL * 365 * 24 * 3600 * 25 * kWidth);
        CreateWnd(WS_TABSTOP, {0, 0, 640, 120}, nullptr, 0);
        m_bar.Create(Qt::Horizontal, WS_CHILD | WS_VISIBLE, {}, this, 1001);
        new QShortcut(Qt::Key_Left, this, [this] { m_bar.triggerAction(QScrollBar::SliderSingleStepSub); });
        new QShortcut(Qt::Key_Right, this, [this] { m_bar.triggerAction(QScrollBar::SliderSingleStepAdd); });
    }
    ~FilmView() override { m_line->Release(); }

    BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        if (message != WM_HSCROLL) // a vertical bar sends WM_VSCROLL
            return CKvWnd::OnWndMsg(message, wParam, lParam, result);
        const std::int64_t steps[] = {-kWidth, kWidth, -width(), width()}; // from SB_LINEUP on
        const UINT code = LOWORD(wParam);
        m_line->SetPosition(code <= SB_PAGEDOWN ? m_line->GetPosition() + steps[code] : m_bar.GetScrollPos());
        m_bar.SetScrollPos(m_line->GetPosition());
        setWindowTitle(QString("Code %1, frame %2").arg(code).arg(m_line->GetPosition() / kWidth));
        update();
        return 1;
    }
    void OnSize(int width, int height) override
    {
        m_bar.setGeometry(0, height - 17, width, 17);
        m_line->SetViewLength(width);
        m_bar.SetScroll(*m_line);
    }
    void OnPaint(Graphics& graphics) override
    {
        for (std::int64_t x = -(m_line->GetPosition() % kWidth); x < width(); x += kWidth) {
            const QRect frame(static_cast<int>(x), 0, kWidth - 1, height() - 17);
            graphics.fillRect(frame, QColor(60, 66, 78));
            graphics.drawText(frame, Qt::AlignCenter, QString::number((m_line->GetPosition() + x) / kWidth));
        }
    }
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    FilmView view;
    view.show();
    return QApplication::exec();
}
