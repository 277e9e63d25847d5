#include "subtitles/TextEncoding.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucsdet.h>
#include <unicode/ustring.h>

namespace titler {
namespace {

constexpr std::size_t kMostBytes = std::size_t{1} << 30;

struct Mark
{
    std::string_view bytes;
    const char* encoding;
};
constexpr Mark kMarks[] = {{"\xEF\xBB\xBF", "UTF-8"}, {"\xFF\xFE", "UTF-16LE"}, {"\xFE\xFF", "UTF-16BE"}};

bool StartsWith(std::string_view bytes, std::string_view start)
{
    return bytes.substr(0, start.size()) == start;
}

bool IsUtf8(std::string_view bytes)
{
    UErrorCode error = U_ZERO_ERROR;
    std::int32_t length = 0;
    u_strFromUTF8(nullptr, 0, &length, bytes.data(), static_cast<std::int32_t>(bytes.size()), &error);
    return error == U_BUFFER_OVERFLOW_ERROR || U_SUCCESS(error);
}

using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

Converter Open(const std::string& encoding)
{
    UErrorCode error = U_ZERO_ERROR;
    // An empty name would be the system's own encoding.
    UConverter* converter = encoding.empty() ? nullptr : ucnv_open(encoding.c_str(), &error);
    return {U_SUCCESS(error) ? converter : nullptr, ucnv_close};
}

void CountAndReplace(const void* count, UConverterToUnicodeArgs* args, const char* units, std::int32_t length,
                     UConverterCallbackReason reason, UErrorCode* error)
{
    if (reason <= UCNV_IRREGULAR)
        ++*static_cast<std::size_t*>(const_cast<void*>(count));
    UCNV_TO_U_CALLBACK_SUBSTITUTE(nullptr, args, units, length, reason, error);
}

void CountAndReplaceFrom(const void* count, UConverterFromUnicodeArgs* args, const UChar* units,
                         std::int32_t length, UChar32 character, UConverterCallbackReason reason,
                         UErrorCode* error)
{
    if (reason <= UCNV_IRREGULAR)
        ++*static_cast<std::size_t*>(const_cast<void*>(count));
    UCNV_FROM_U_CALLBACK_SUBSTITUTE(nullptr, args, units, length, character, reason, error);
}

bool SetCounter(UConverter* converter, std::size_t& count)
{
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setToUCallBack(converter, CountAndReplace, &count, nullptr, nullptr, &error);
    ucnv_setFromUCallBack(converter, CountAndReplaceFrom, &count, nullptr, nullptr, &error);
    return U_SUCCESS(error);
}

std::optional<ConvertedText> Convert(std::string_view bytes, const std::string& from, const std::string& to)
{
    const Converter source = Open(from);
    const Converter target = Open(to);
    ConvertedText text{};
    if (bytes.size() > kMostBytes || !source || !target || !SetCounter(source.get(), text.replaced) ||
        !SetCounter(target.get(), text.replaced))
        return std::nullopt;
    UChar pivot[2048];
    UChar* pivotSource = pivot;
    UChar* pivotTarget = pivot;
    const char* read = bytes.data();
    const char* const end = read + bytes.size();
    char buffer[8192];
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    for (bool first = true; error == U_BUFFER_OVERFLOW_ERROR; first = false) {
        error = U_ZERO_ERROR;
        char* written = buffer;
        ucnv_convertEx(target.get(), source.get(), &written, buffer + sizeof buffer, &read, end, pivot,
                       &pivotSource, &pivotTarget, pivot + std::size(pivot), first, true, &error);
        text.bytes.append(buffer, written);
    }
    return U_SUCCESS(error) ? std::optional(std::move(text)) : std::nullopt;
}

} // namespace

std::string DetectEncoding(std::string_view bytes)
{
    for (const Mark& mark : kMarks) {
        if (StartsWith(bytes, mark.bytes))
            return mark.encoding;
    }
    if (bytes.size() >= 2 && bytes.size() % 2 == 0 && (bytes[0] == 0) != (bytes[1] == 0))
        return bytes[0] == 0 ? "UTF-16BE" : "UTF-16LE";
    return bytes.size() <= kMostBytes && IsUtf8(bytes) ? "UTF-8" : "";
}

std::string GuessEncoding(std::string_view bytes)
{
    constexpr std::size_t enough = 1 << 18;
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UCharsetDetector, decltype(&ucsdet_close)> detector(ucsdet_open(&error),
                                                                              ucsdet_close);
    ucsdet_setText(detector.get(), bytes.data(), static_cast<std::int32_t>(std::min(bytes.size(), enough)),
                   &error);
    const UCharsetMatch* match = ucsdet_detect(detector.get(), &error);
    const char* name = match ? ucsdet_getName(match, &error) : nullptr;
    return U_SUCCESS(error) && name ? name : "";
}

std::span<const char* const> CodePages()
{
    static constexpr const char* pages[] = {
        "Big5",         "EUC-JP",       "EUC-KR",       "GB18030",      "ISO-8859-1",   "ISO-8859-2",
        "ISO-8859-5",   "ISO-8859-7",   "ISO-8859-8",   "ISO-8859-9",   "ISO-8859-15",  "KOI8-R",
        "KOI8-U",       "Shift_JIS",    "TIS-620",      "windows-1250", "windows-1251", "windows-1252",
        "windows-1253", "windows-1254", "windows-1255", "windows-1256", "windows-1257", "windows-1258",
    };
    return pages;
}

std::optional<ConvertedText> DecodeText(std::string_view bytes, const std::string& encoding)
{
    const auto* mark = std::find_if(std::begin(kMarks), std::end(kMarks), [&](const Mark& m) {
        return encoding == m.encoding && StartsWith(bytes, m.bytes);
    });
    if (mark != std::end(kMarks))
        bytes.remove_prefix(mark->bytes.size());
    return Convert(bytes, encoding, "UTF-8");
}

std::optional<ConvertedText> EncodeText(std::string_view utf8, const std::string& encoding)
{
    return Convert(utf8, "UTF-8", encoding);
}

} // namespace titler
