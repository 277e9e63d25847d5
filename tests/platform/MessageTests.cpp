// Messages to a parent, dialog item numbers, text conversion, message boxes.
#include "KvPlatform.h"
#include "KvWnd.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

class RecordingWnd : public CKvWnd
{
public:
    std::vector<std::pair<char, WPARAM>> heard;

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM, LRESULT* result) override
    {
        heard.emplace_back('N', wParam);
        *result = 7;
        return 1;
    }
    BOOL OnCommand(WPARAM wParam, LPARAM, LRESULT*) override
    {
        heard.emplace_back('C', wParam);
        return 0;
    }
};

TEST(Message, ResultIsTheAnswerOrZero)
{
    EXPECT_EQ(KvSendMessage(nullptr, WM_NOTIFY, 1, 2), 0);

    QWidget deaf;
    EXPECT_EQ(KvSendMessage(&deaf, WM_NOTIFY, 1, 2), 0);

    RecordingWnd window;
    EXPECT_EQ(KvSendMessage(&window, WM_NOTIFY, 5, 0), 7);
    EXPECT_EQ(KvSendMessage(&window, WM_COMMAND, MAKEWPARAM(3, 4), 0), 0);
    EXPECT_EQ(KvSendMessage(&window, WM_CLOSE, 0, 0), 0);
    const std::vector<std::pair<char, WPARAM>> expected{{'N', 5}, {'C', 0x40003}};
    EXPECT_EQ(window.heard, expected);
}

TEST(Message, SinkAnswersOrLetsGoOn)
{
    RecordingWnd window;
    std::optional<LRESULT> answer;
    int heard = 0;
    KvMessageSink sink(&window, [&](UINT, WPARAM, LPARAM) {
        ++heard;
        return answer;
    });
    EXPECT_EQ(KvSendMessage(&window, WM_NOTIFY, 1, 0), 7) << "nullopt lets the message go on";
    answer = 0;
    EXPECT_EQ(KvSendMessage(&window, WM_NOTIFY, 2, 0), 0) << "0 is an answer";
    EXPECT_EQ(heard, 2);
    EXPECT_EQ(window.heard.size(), 1u);

    KvMessageSink plain(&window,
                        [](UINT, WPARAM w, LPARAM) -> LRESULT { return static_cast<LRESULT>(w) + 1; });
    EXPECT_EQ(KvSendMessage(&window, WM_NOTIFY, 2, 0), 3);
}

TEST(Message, HandlerMayDeleteSinkAndWindow)
{
    auto* window = new QWidget;
    const QPointer<QWidget> watched(window);
    new KvMessageSink(window, [window, kept = std::string(100, 'x')](UINT, WPARAM, LPARAM) -> LRESULT {
        delete window; // and the sink with it
        return static_cast<LRESULT>(kept.size());
    });
    EXPECT_EQ(KvSendMessage(window, WM_NOTIFY, 0, 0), 100);
    EXPECT_FALSE(watched);

    auto* silent = new QWidget;
    new KvMessageSink(silent, [silent](UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        delete silent;
        return std::nullopt;
    });
    EXPECT_EQ(KvSendMessage(silent, WM_NOTIFY, 0, 0), 0);
}

TEST(DlgItem, NumbersAnyWidget)
{
    QWidget parent;
    auto* first = new QWidget(&parent);
    auto* second = new QWidget(&parent);
    EXPECT_EQ(KvGetDlgItemId(first), 0u);
    KvSetDlgItemId(second, 1001);
    EXPECT_EQ(KvGetDlgItem(&parent, 1001), second);
    EXPECT_EQ(KvGetDlgItem(&parent, 1002), nullptr);
    EXPECT_EQ(KvGetDlgItem(&parent, 0), nullptr) << "0 is no number";
    EXPECT_EQ(KvGetDlgItem(nullptr, 1001), nullptr);
    EXPECT_EQ(KvGetDlgItemId(nullptr), 0u);
}

TEST(WideText, ConversionLosesNothing)
{
    const wchar_t loneHigh = static_cast<wchar_t>(0xD800);
    const wchar_t escapedByte = static_cast<wchar_t>(0xDC80);
    for (const std::wstring& text :
         {std::wstring(), std::wstring(L"a\0b", 3), std::wstring(L"\u00e9 \U0001F600 \uFFFF"),
          std::wstring{loneHigh, L'x', escapedByte}})
        EXPECT_EQ(KvFromQString(KvToQString(text)), text);
    EXPECT_EQ(KvToQString(L"\U0001F600").size(), 2);
}

TEST(MessageBox, HandlerGetsTextAndStyle)
{
    std::wstring shown;
    KvSetMessageBoxHandler([&](HWND, const std::wstring& text, UINT style) {
        shown = text;
        return (style & MB_TYPEMASK) == MB_YESNO ? IDYES : IDOK;
    });
    EXPECT_EQ(KvMessageBox(nullptr, L"Sure?", MB_YESNO | MB_ICONQUESTION), IDYES);
    EXPECT_EQ(shown, L"Sure?");
    KvSetMessageBoxHandler({});
}

TEST(MessageBox, EnterChoosesTheFirstButtonOrTheSecondOnDemand)
{
    const struct
    {
        const char* name;
        UINT style;
        int answer;
    } rows[] = {
        {"one button", MB_OK, IDOK},
        {"one button, no second", MB_OK | MB_DEFBUTTON2, IDOK},
        {"OK", MB_OKCANCEL, IDOK},
        {"Cancel", MB_OKCANCEL | MB_DEFBUTTON2, IDCANCEL},
        {"Abort", MB_ABORTRETRYIGNORE, IDABORT},
        {"Retry", MB_ABORTRETRYIGNORE | MB_DEFBUTTON2, IDRETRY},
        {"Yes", MB_YESNOCANCEL, IDYES},
        {"No of three", MB_YESNOCANCEL | MB_DEFBUTTON2, IDNO},
        {"No of two", MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2, IDNO},
        {"not to retry", MB_RETRYCANCEL | MB_DEFBUTTON2, IDCANCEL},
    };
    for (const auto& row : rows) {
        QTimer::singleShot(0, [] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->focusWidget(), box->defaultButton());
            QTest::keyClick(box, Qt::Key_Return);
        });
        EXPECT_EQ(KvMessageBox(nullptr, L"?", row.style), row.answer) << row.name;
    }
}

TEST(MessageBox, BuiltInBoxAnswersWithTheButtonAndSurvivesItsOwner)
{
    QTimer::singleShot(0, [] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text(), QStringLiteral("<b>plain</b>"));
        box->button(QMessageBox::Yes)->click();
    });
    EXPECT_EQ(KvMessageBox(nullptr, L"<b>plain</b>", MB_YESNOCANCEL | MB_ICONWARNING), IDYES);

    auto* owner = new QWidget;
    QTimer::singleShot(0, [owner] { delete owner; });
    EXPECT_EQ(KvMessageBox(owner, L"?", MB_YESNO), IDNO) << "a button that the box has";
}

} // namespace
