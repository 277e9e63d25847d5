#include "resources/Tables.h"

namespace kv {

std::span<const TextEntry> BuiltInMenuTexts()
{
    static constexpr TextEntry texts[] = {
        // 12002: gradient control
        {12002, 32772, L"&Copy"},
        {12002, 32774, L"&Paste"},
        {12002, 32775, L"C&ut"},
        {12002, 32776, L"&Delete"},
        {12002, 32778, L"Re&verse"},
        {12002, 32780, L"Reflec&t"},
        {12002, 32784, L"Sa&me Space"},
        {12002, 32785, L"Exchange &Before"},
        {12002, 32787, L"Exchange A&fter"},
        {12002, 32789, L"&Reset"},
        // 12015: swatch grid
        {12015, 32808, L"&Reset All"},
        {12015, 32809, L"&Save Current Color"},
        // 12027: application button of a caption strip
        {12027, 32813, L"Application1"},
        {12027, 32814, L"Application2"},
        {12027, 32815, L"Application3"},
        {12027, 32816, L"Application4"},
        {12027, 32822, L"Restore"},
        {12027, 32823, L"Minimize"},
        {12027, 32824, L"Maximize"},
        {12027, 32826, L"Close\tAlt + F4"},
        // 12071: log list
        {12071, 32850, L"Displays Up to 1000 lines"},
        {12071, 32851, L"Displays Up to 2000 lines"},
        {12071, 32852, L"Displays Up to 3000 lines"},
        {12071, 32853, L"Displays Up to custom lines"},
        {12071, 32854, L"Save As Selected Log to Disk File..."},
        {12071, 32855, L"Save As All Log to Disk File..."},
        {12071, 32856, L"Copy Selected Log to Clipboard"},
        {12071, 32857, L"Copy All Log to Clipboard"},
        {12071, 32858, L"Clear All Log"},
        // 20100: lists of texts
        {20100, 33001, L"Cu&t\tCtrl+X"},
        {20100, 33002, L"&Copy\tCtrl+C"},
        {20100, 33003, L"&Paste\tCtrl+V"},
        {20100, 33004, L"&Delete\tDel"},
        {20100, 33005, L"Select &All\tCtrl+A"},
        {20100, 33006, L"Insert A&bove\tCtrl+Shift+Enter"},
        {20100, 33007, L"&Insert Below\tCtrl+Enter"},
        // 20300: four-corner gradient
        {20300, 20301, L"&Copy\tCtrl+C"},
        {20300, 20302, L"&Paste\tCtrl+V"},
        {20300, 20303, L"E&xchange with Selected Corner"},
        {20300, 20304, L"Exchange &Left and Right"},
        {20300, 20305, L"Exchange &Top and Bottom"},
        {20300, 20306, L"Turn Cloc&kwise"},
        {20300, 20307, L"Turn Counterclock&wise"},
        // 20360: number
        {20360, 20361, L"Cu&t\tCtrl+X"},
        {20360, 20362, L"&Copy\tCtrl+C"},
        {20360, 20363, L"&Paste\tCtrl+V"},
        {20360, 20364, L"&Delete"},
        {20360, 20365, L"Select &All\tCtrl+A"},
        // 20440: character map
        {20440, 20441, L"&Insert\tEnter"},
        {20440, 20442, L"&Copy\tCtrl+C"},
        {20440, 20443, L"C&ollect\tSpace"},
        {20440, 20444, L"Add to &Favorites\tCtrl+D"},
        {20440, 20445, L"Remove from &Favorites\tCtrl+D"},
    };
    static_assert(AreSorted(texts));
    return texts;
}

std::span<const MenuEntry> BuiltInMenus()
{
    static constexpr MenuEntry menus[] = {
        {12002, 32772},          {12002, 32774}, {12002, 32775},          {12002, 32776},
        {12002, kMenuSeparator}, {12002, 32789}, {12002, kMenuSeparator}, {12002, 32778},
        {12002, 32780},          {12002, 32785}, {12002, 32787},          {12002, 32784},
        {12015, 32808},          {12015, 32809}, {12027, 32813},          {12027, 32814},
        {12027, 32815},          {12027, 32816}, {12027, kMenuSeparator}, {12027, 32822},
        {12027, 32823},          {12027, 32824}, {12027, kMenuSeparator}, {12027, 32826},
        {12071, 32850},          {12071, 32851}, {12071, 32852},          {12071, 32853},
        {12071, kMenuSeparator}, {12071, 32854}, {12071, 32855},          {12071, kMenuSeparator},
        {12071, 32856},          {12071, 32857}, {12071, kMenuSeparator}, {12071, 32858},
        {20100, 33001},          {20100, 33002}, {20100, 33003},          {20100, 33004},
        {20100, kMenuSeparator}, {20100, 33005}, {20100, kMenuSeparator}, {20100, 33006},
        {20100, 33007},          {20300, 20301}, {20300, 20302},          {20300, kMenuSeparator},
        {20300, 20303},          {20300, 20304}, {20300, 20305},          {20300, kMenuSeparator},
        {20300, 20306},          {20300, 20307}, {20360, 20361},          {20360, 20362},
        {20360, 20363},          {20360, 20364}, {20360, kMenuSeparator}, {20360, 20365},
        {20440, 20441},          {20440, 20442}, {20440, 20443},          {20440, kMenuSeparator},
        {20440, 20444},          {20440, 20445},
    };
    return menus;
}

} // namespace kv
