#include "core/MessageBox.h"

#include "core/Text.h"

#include <cstdio>
#include <utility>

namespace kv {
namespace {

KvMessageBoxHandler& Handler()
{
    static KvMessageBoxHandler handler;
    return handler;
}

int (*g_toolkitBox)(HWND, const std::wstring&, UINT) = nullptr;

} // namespace

int CautiousAnswer(UINT style)
{
    switch (style & MB_TYPEMASK) {
    case MB_OKCANCEL:
    case MB_YESNOCANCEL:
    case MB_RETRYCANCEL:
        return IDCANCEL;
    case MB_ABORTRETRYIGNORE:
        return IDABORT;
    case MB_YESNO:
        return IDNO;
    default:
        return IDOK;
    }
}

void SetToolkitMessageBox(int (*show)(HWND owner, const std::wstring& text, UINT style))
{
    g_toolkitBox = show;
}

} // namespace kv

void KvSetMessageBoxHandler(KvMessageBoxHandler handler)
{
    kv::Handler() = std::move(handler);
}

int KvMessageBox(HWND owner, const std::wstring& text, UINT style)
{
    // A copy: the handler may replace itself while it runs.
    if (const KvMessageBoxHandler handler = kv::Handler())
        return handler(owner, text, style);
    if (kv::g_toolkitBox) {
        if (const int answer = kv::g_toolkitBox(owner, text, style))
            return answer;
    }
    std::fprintf(stderr, "%s\n", kv::ToUtf8(text).c_str());
    return kv::CautiousAnswer(style);
}
