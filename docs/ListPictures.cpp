// Pictures of the subtitle list and the text list.
#include "KvSubTitleTxtListEditor.h"
#include "KvTextEditListCtrl.h"
#include "Pictures.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>

namespace {

constexpr QSize kSubtitlesSize(760, 292);
constexpr QSize kTextsSize(420, 172);
constexpr int kMargin = 16;
constexpr DWORD kNone = 0xFFFFFFFFu;

struct Subtitle
{
    const wchar_t* text;
    DWORD in; ///< frames at 25
    DWORD out;
    const wchar_t* templateName;
};

constexpr Subtitle kSubtitles[] = {
    {L"We never should have sailed so far north.", 250, 312, L"Lower Third"},
    {L"– Did you see it?\n– See what?", 320, 370, L"Lower Third"},
    {L"Ta świetlista wstęga na niebie – zażółć gęślą jaźń.", 375, 450, L"Lower Third"},
    {L"هل رأيت الضوء في السماء؟", 455, 520, L"Lower Third"},
    {L"北の空に光の帯が見える。", 525, 600, L"Vertical"},
    {L"We should turn back before dawn.", 610, 680, L"Lower Third"},
    {L"ΒΌΡΕΙΟ ΣΈΛΑΣ", 690, kNone, L"Title"},
    {L"(To be continued)", kNone, kNone, L""},
};

class SubtitleScene : public CKvSubTitleTxtListEditor
{
public:
    explicit SubtitleScene(QWidget& window)
    {
        window.resize(kSubtitlesSize);
        Create({kMargin, kMargin, kSubtitlesSize.width() - kMargin, kSubtitlesSize.height() - kMargin},
               WS_CHILD | WS_VISIBLE, &window, 1001);
        SetTimecodeOffset(10 * 3600 * 25); // the tape begins at ten o'clock
        for (const Subtitle& one : kSubtitles)
            InserItem(-1, one.text, one.in, one.out, one.templateName);
        const DWORD warning = InTheme(0xFF5A3A1Au, 0xFFFFE2B8u);
        SetItemBkColor(7, &warning, nullptr);
        SetPlayIndex(FindPlayIndex(400));
        SetSelItem(4);
        window.show();
        QApplication::processEvents();
        QApplication::setActiveWindow(&window);
        setFocus();
    }
    using CKvSubTitleTxtListEditor::EditCell;
};

void Type(const QString& text)
{
    QWidget* editor = QApplication::focusWidget();
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, text);
    QApplication::sendEvent(editor, &press);
    QApplication::processEvents();
}

bool SaveSubtitles(const Pictures& pictures)
{
    QWidget window;
    SubtitleScene list(window);
    QApplication::processEvents();
    const QPixmap plain = window.grab();
    list.SetSelItem(CArray<int, int>{1, 2, 3});
    list.EditCell(1, 0);
    qobject_cast<QPlainTextEdit*>(QApplication::focusWidget())->moveCursor(QTextCursor::End);
    Type(QStringLiteral(" The light, over there, right above the horizon."));
    const QPixmap editing = window.grab();
    return pictures.Save(plain, "subtitle-list") && pictures.Save(editing, "subtitle-list-editing");
}

bool SaveTexts(const Pictures& pictures)
{
    QWidget window;
    CKvTextEditListCtrl list;
    window.resize(kTextsSize);
    list.Create({kMargin, kMargin, kTextsSize.width() - kMargin, kTextsSize.height() - kMargin},
                WS_CHILD | WS_VISIBLE, &window, 1002);
    list.AddString(CStringArray{L"Director of photography", L"Kostüme und Maske", L"Музыка", L"הפקה",
                                L"With thanks to\nthe crew of the Aurora"});
    const DWORD back = InTheme(0xFF24405Cu, 0xFFD8E6F5u);
    const DWORD text = InTheme(0xFFFFE0A0u, 0xFF8A3B00u);
    list.SetItemBkColor(2, &back, nullptr);
    list.SetItemTextColor(2, &text, nullptr, nullptr);
    list.SetSelItem(CArray<int, int>{0, 1});
    window.show();
    QApplication::processEvents();
    QApplication::setActiveWindow(&window);
    list.setFocus();
    QApplication::processEvents();
    return pictures.Save(window, "text-list");
}

} // namespace

bool SaveLists(const Pictures& pictures)
{
    return SaveSubtitles(pictures) && SaveTexts(pictures);
}
