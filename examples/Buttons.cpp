// The skin's buttons: pictures, pictures with texts, and a group of which one is on.
#include <KvButtons.h>
#include <KvWnd.h>

#include <QApplication>
#include <QLabel>

// A parent that is derived from CKvWnd hears its children in OnCommand and OnNotify.
class Panel : public CKvWnd
{
public:
    Panel()
    {
        m_first.CreateButton(1001, this, {16, 16, 44, 44}, kStyle, L"titler_start", L"First frame");
        m_play.CreateButton(1002, this, {56, 16, 146, 44}, kStyle, L"titler_play", L"Plays from here");
        m_play.SetWindowText(L"Play");
        const wchar_t* const names[] = {L"Red", L"Green", L"Blue"};
        const wchar_t* const off[] = {L"RGB_R_UnCheck", L"RGB_G_UnCheck", L"RGB_B_UnCheck"};
        const wchar_t* const on[] = {L"RGB_R_Check", L"RGB_G_Check", L"RGB_B_Check"};
        for (int i = 0; i < 3; ++i) {
            const CRect place(240 + 40 * i, 16, 268 + 40 * i, 44);
            m_channels[i].CreateButton(1004 + static_cast<UINT>(i), this, place, kStyle, nullptr, names[i]);
            m_channels[i].UpdateBitmap(off[i], on[i]);
        }
        m_channels[0].SetCheck(1);
        m_told.setGeometry(16, 60, 340, 24);
        resize(372, 96);
    }

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM, LRESULT*) override
    {
        const UINT id = LOWORD(wParam); // the high word is BN_CLICKED
        if (id == 1002) {
            const bool plays = m_play.GetWindowText() == L"Play";
            m_play.UpdateBitmap(plays ? L"titler_pause" : L"titler_play");
            m_play.SetWindowText(plays ? L"Pause" : L"Play");
        }
        for (UINT i = 0; id >= 1004 && i < 3; ++i) // a click changes nothing: the group is the owner's
            m_channels[i].SetCheck(id == 1004 + i);
        m_told.setText(QString("Button %1 was clicked.").arg(id));
        return 1;
    }

private:
    static constexpr UINT kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    CKvBitmapButton m_first;
    CKvButton m_play;
    CKvRadioBitmapButton m_channels[3];
    QLabel m_told{"Click, or press Space.", this};
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    Panel panel;
    panel.show();
    return QApplication::exec();
}
