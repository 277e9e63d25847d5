#include "subtitles/TextEncoding.h"

#include "subtitles/CueLines.h"

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

struct Replacements
{
    std::size_t count = 0;
    const char* first = nullptr; ///< behind the first bytes that could not be read
};

void CountAndReplace(const void* counted, UConverterToUnicodeArgs* args, const char* units,
                     std::int32_t length, UConverterCallbackReason reason, UErrorCode* error)
{
    auto& replaced = *static_cast<Replacements*>(const_cast<void*>(counted));
    if (reason <= UCNV_IRREGULAR && replaced.count++ == 0)
        replaced.first = args->source;
    UCNV_TO_U_CALLBACK_SUBSTITUTE(nullptr, args, units, length, reason, error);
}

void CountAndReplaceFrom(const void* counted, UConverterFromUnicodeArgs* args, const UChar* units,
                         std::int32_t length, UChar32 character, UConverterCallbackReason reason,
                         UErrorCode* error)
{
    if (reason <= UCNV_IRREGULAR)
        ++static_cast<Replacements*>(const_cast<void*>(counted))->count;
    UCNV_FROM_U_CALLBACK_SUBSTITUTE(nullptr, args, units, length, character, reason, error);
}

bool SetCounter(UConverter* converter, Replacements& count)
{
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setToUCallBack(converter, CountAndReplace, &count, nullptr, nullptr, &error);
    ucnv_setFromUCallBack(converter, CountAndReplaceFrom, &count, nullptr, nullptr, &error);
    return U_SUCCESS(error);
}

std::optional<ConvertedText> Convert(std::string_view bytes, const std::string& from, const std::string& to,
                                     Replacements& replaced)
{
    const Converter source = Open(from);
    const Converter target = Open(to);
    ConvertedText text{};
    if (bytes.size() > kMostBytes || !source || !target || !SetCounter(source.get(), replaced) ||
        !SetCounter(target.get(), replaced))
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
    text.replaced = replaced.count;
    return U_SUCCESS(error) ? std::optional(std::move(text)) : std::nullopt;
}

/// "utf8" is "UTF-8".
bool IsSameEncoding(const std::string& one, const char* other)
{
    return ucnv_compareNames(one.c_str(), other) == 0;
}

const Mark* MarkOf(std::string_view bytes, const std::string& encoding)
{
    const auto* mark = std::find_if(std::begin(kMarks), std::end(kMarks), [&](const Mark& m) {
        return IsSameEncoding(encoding, m.encoding) && StartsWith(bytes, m.bytes);
    });
    return mark == std::end(kMarks) ? nullptr : mark;
}

std::size_t LinesOf(std::string_view text)
{
    CueLineReader reader(text, ByteOrderMark::IsText);
    std::size_t lines = 0;
    for (CueLine line; reader.Next(line);)
        ++lines;
    return lines;
}

/// UTF-16's by its first character, which has a zero byte as every digit and letter of ASCII has.
const char* WideEncodingOf(std::string_view bytes)
{
    if (bytes.size() < 2 || (bytes[0] == 0) == (bytes[1] == 0))
        return "";
    return bytes[0] == 0 ? "UTF-16BE" : "UTF-16LE";
}

/// A few bytes that are damaged or from elsewhere do not make another encoding of it.
bool IsNearlyUtf8(std::string_view bytes)
{
    const std::optional<ConvertedText> text = DecodeText(bytes, "UTF-8");
    if (!text)
        return false;
    const auto leads = static_cast<std::size_t>(
        std::count_if(text->bytes.begin(), text->bytes.end(), [](char c) { return (c & 0xC0) == 0xC0; }));
    return leads > 10 * text->replaced; // the replaced ones are among them
}

/// What the statistics of its letters say. @return empty without an answer.
std::string LikelyEncodingOf(std::string_view bytes)
{
    constexpr std::size_t enough = 1 << 18;
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UCharsetDetector, decltype(&ucsdet_close)> detector(ucsdet_open(&error),
                                                                              ucsdet_close);
    ucsdet_setText(detector.get(), bytes.data(), static_cast<std::int32_t>(std::min(bytes.size(), enough)),
                   &error);
    const UCharsetMatch* match = ucsdet_detect(detector.get(), &error);
    const char* name = match ? ucsdet_getName(match, &error) : nullptr;
    const bool isCodePage = U_SUCCESS(error) && name && std::string_view(name).substr(0, 3) != "UTF";
    return isCodePage ? name : "";
}

} // namespace

std::string DetectEncoding(std::string_view bytes)
{
    for (const Mark& mark : kMarks) {
        if (StartsWith(bytes, mark.bytes))
            return mark.encoding;
    }
    if (const char* wide = WideEncodingOf(bytes); *wide != '\0' && bytes.size() % 2 == 0)
        return wide;
    return bytes.size() <= kMostBytes && IsUtf8(bytes) ? "UTF-8" : "";
}

std::string GuessEncoding(std::string_view bytes)
{
    if (const char* wide = WideEncodingOf(bytes); *wide != '\0')
        return wide;
    if (IsNearlyUtf8(bytes))
        return "UTF-8";
    const std::string likely = LikelyEncodingOf(bytes);
    const std::span<const char* const> known = Encodings();
    return std::find(known.begin(), known.end(), likely) != known.end() ? likely : "windows-1252";
}

std::span<const char* const> Encodings()
{
    static constexpr const char* encodings[] = {
        "UTF-8",        "UTF-16LE",     "UTF-16BE",     "Big5",         "EUC-JP",       "EUC-KR",
        "GB18030",      "ISO-8859-1",   "ISO-8859-2",   "ISO-8859-5",   "ISO-8859-7",   "ISO-8859-8",
        "ISO-8859-9",   "ISO-8859-15",  "KOI8-R",       "KOI8-U",       "Shift_JIS",    "TIS-620",
        "windows-1250", "windows-1251", "windows-1252", "windows-1253", "windows-1254", "windows-1255",
        "windows-1256", "windows-1257", "windows-1258",
    };
    return encodings;
}

bool IsEncoding(const std::string& name)
{
    return Open(name) != nullptr;
}

std::optional<ConvertedText> DecodeText(std::string_view bytes, const std::string& encoding)
{
    if (const Mark* mark = MarkOf(bytes, encoding))
        bytes.remove_prefix(mark->bytes.size());
    Replacements replaced;
    std::optional<ConvertedText> text = Convert(bytes, encoding, "UTF-8", replaced);
    if (text && replaced.first) {
        Replacements again;
        const auto before = static_cast<std::size_t>(replaced.first - bytes.data());
        text->firstLine = LinesOf(Convert(bytes.substr(0, before), encoding, "UTF-8", again)->bytes);
    }
    return text;
}

TextForm TextFormOf(std::string_view bytes, const std::string& encoding, std::string_view text)
{
    const auto all = [text](std::string_view end) {
        std::size_t count = 0;
        for (std::size_t at = text.find(end); at != text.npos; at = text.find(end, at + end.size()))
            ++count;
        return count;
    };
    const std::size_t pairs = all("\r\n");
    const std::size_t feeds = all("\n") - pairs;
    const std::size_t returns = all("\r") - pairs;
    const char* const lineEnd = pairs > feeds && pairs >= returns ? "\r\n" : returns > feeds ? "\r" : "\n";
    return {encoding, MarkOf(bytes, encoding) != nullptr, lineEnd};
}

std::string EncodeFile(std::string_view utf8, TextForm& form)
{
    std::string text;
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t end = std::min(utf8.find('\n', at), utf8.size());
        text += utf8.substr(at, end - at);
        if (end < utf8.size())
            text += form.lineEnd;
        at = end + 1;
    }
    const std::optional<ConvertedText> encoded = EncodeText(text, form.encoding);
    const bool holdsAll = encoded && encoded->replaced == 0;
    // What a code page holds in another way than expected would not come back.
    const std::optional<ConvertedText> again =
        holdsAll ? DecodeText(encoded->bytes, form.encoding) : std::nullopt;
    if (again && again->bytes == text)
        text = encoded->bytes;
    else
        form.encoding = "UTF-8";
    const auto* mark = std::find_if(std::begin(kMarks), std::end(kMarks),
                                    [&](const Mark& m) { return IsSameEncoding(form.encoding, m.encoding); });
    form.hasMark = form.hasMark && mark != std::end(kMarks);
    return form.hasMark ? std::string(mark->bytes) + text : text;
}

// The longest begin that comes back as it was is found by halves: a conversion each, not one a character.
std::string FirstNotIn(std::string_view utf8, const std::string& encoding)
{
    const auto begins = [utf8](std::size_t at) { // of a character, at or before that place
        while (at > 0 && at < utf8.size() && (static_cast<unsigned char>(utf8[at]) & 0xC0) == 0x80)
            --at;
        return at;
    };
    const auto holds = [&](std::size_t size) {
        const std::optional<ConvertedText> encoded = EncodeText(utf8.substr(0, size), encoding);
        if (!encoded || encoded->replaced > 0)
            return !encoded;
        const std::optional<ConvertedText> again = DecodeText(encoded->bytes, encoding);
        return again && again->bytes == utf8.substr(0, size);
    };
    if (holds(utf8.size()))
        return {};
    std::size_t good = 0;
    std::size_t bad = utf8.size();
    for (;;) {
        std::size_t middle = begins(good + (bad - good) / 2);
        if (middle <= good) // no character begins between them but, perhaps, the next one
            for (middle = good + 1; middle < bad && begins(middle) != middle;)
                ++middle;
        if (middle >= bad)
            return std::string(utf8.substr(good, bad - good));
        (holds(middle) ? good : bad) = middle;
    }
}

std::optional<ConvertedText> EncodeText(std::string_view utf8, const std::string& encoding)
{
    Replacements replaced;
    return Convert(utf8, "UTF-8", encoding, replaced);
}

} // namespace titler
