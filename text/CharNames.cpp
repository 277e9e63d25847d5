#include "text/CharNames.h"

#include <array>
#include <unicode/uchar.h>

namespace kv {

namespace {

UBool AddName(void* index, UChar32 code, UCharNameChoice, const char* name, std::int32_t length)
{
    static_cast<CharNameIndex*>(index)->Add(static_cast<char16_t>(code),
                                            {name, static_cast<std::size_t>(length)});
    return 1;
}

CharNameIndex MakeIndex()
{
    constexpr UChar32 kEnd = 0xFFFF;
    CharNameIndex index;
    UErrorCode error = U_ZERO_ERROR;
    u_enumCharNames(0, kEnd, AddName, &index, U_UNICODE_CHAR_NAME, &error);
    return index;
}

} // namespace

std::string CharName(char16_t code)
{
    std::array<char, 256> name; // no Unicode name is longer than 90
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t length = u_charName(code, U_EXTENDED_CHAR_NAME, name.data(), name.size(), &error);
    return U_SUCCESS(error) ? std::string(name.data(), static_cast<std::size_t>(length)) : std::string();
}

QString CharCode(char16_t code)
{
    return QStringLiteral("U+%1").arg(QString::number(code, 16).toUpper().rightJustified(4, u'0'));
}

QString CharCodeAndName(char16_t code)
{
    return CharCode(code) + u' ' + QString::fromStdString(CharName(code));
}

const CharNameIndex& CharNames()
{
    static const CharNameIndex index = MakeIndex();
    return index;
}

} // namespace kv
