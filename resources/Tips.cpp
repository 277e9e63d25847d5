#include "resources/Tables.h"

namespace kv {

std::span<const TextEntry> BuiltInTips()
{
    static constexpr TextEntry tips[] = {
        {0, 15000, L"Toggle Animation"},
        {0, 15001, L"Add/Remove KeyFrame"},
        {0, 15002, L"Go To Prev/Head KeyFrame"},
        {0, 15003, L"Go To Next/Tail KeyFrame"},
    };
    return tips;
}

} // namespace kv
