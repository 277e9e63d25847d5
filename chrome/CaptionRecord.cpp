#include "chrome/CaptionRecord.h"

namespace kv {

std::wstring CutText(const wchar_t* text, std::size_t longest)
{
    if (!text)
        return {};
    std::size_t length = 0;
    while (length < longest && text[length] != 0)
        ++length;
    return std::wstring(text, length);
}

} // namespace kv
