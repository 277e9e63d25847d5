// Where message boxes end up.
#pragma once

#include "KvTypes.h"

namespace kv {

/// The answer to a box of a style where nobody can answer: it changes least.
int CautiousAnswer(UINT style);

/// The toolkit layer's own message box, used while the host has set none. It answers nothing (0) when it
/// cannot show one, and the text then goes to standard error.
void SetToolkitMessageBox(int (*show)(HWND owner, const std::wstring& text, UINT style));

} // namespace kv
