// A line-preserving profile (INI) document: changing a value changes that line and nothing else.
//
// Sections and keys are compared exactly, unless a reader asks for any case, and the first of several wins;
// blanks at the start of a line are skipped; ";" or "#" starts a comment line. A value is the text after "="
// as it stands, except that for a hand-written `Key = value` (a blank before the "=") the blanks after the
// "=" go too. Keys before the first section line belong to the section with the empty name. A section's name
// ends at its first "]". A line ends with LF, CR LF or CR.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kv {

/// Where a profile file stores the version of its layout.
inline constexpr wchar_t kProfileVersionSection[] = L"ProfileVersion";
inline constexpr wchar_t kProfileVersionKey[] = L"Version";

/// How the names of sections and keys are told apart.
enum class ProfileNames
{
    Exact,
    AnyCase, ///< the case of A … Z does not count
};

class ProfileDocument
{
public:
    /// Longer files are no profiles: no reader of ours takes them.
    static constexpr std::size_t kMostBytes = std::size_t{64} << 20;
    /// As many key and section lines are read (repeated ones count). What stands behind them is kept but
    /// unread, and the document then takes no values.
    static constexpr std::size_t kMostEntries = std::size_t{1} << 19;

    ProfileDocument();
    /// Reads the bytes of a file: UTF-8 with or without BOM, or UTF-16 with BOM. Never fails; what is no
    /// key line is kept as it is.
    explicit ProfileDocument(std::string_view bytes, ProfileNames names = ProfileNames::Exact);
    ~ProfileDocument();
    ProfileDocument(ProfileDocument&&) noexcept;
    ProfileDocument& operator=(ProfileDocument&&) noexcept;

    bool HasSection(std::wstring_view section) const;
    std::optional<std::wstring> Value(std::wstring_view section, std::wstring_view key) const;
    /// The leading digits (with a sign) of a value, saturating; `defaultValue` when the key is missing.
    int Integer(std::wstring_view section, std::wstring_view key, int defaultValue) const;
    /// The keys and values of a section in file order.
    std::vector<std::pair<std::wstring, std::wstring>> Section(std::wstring_view section) const;

    /// Replaces the value, or adds the key behind the last one of its section, or the section at the end. A
    /// line that already reads as the value stays as it is, also where it is not UTF-8.
    /// @return false, nothing changed, when a text could not be read back: it holds a line break or a lone
    /// surrogate, a section a "]", a key is empty, holds a "=", has a blank at an end or begins as a comment
    /// or a section does, or the document has more than kMostEntries lines or would get them.
    bool SetValue(std::wstring_view section, std::wstring_view key, std::wstring_view value);
    bool SetInteger(std::wstring_view section, std::wstring_view key, int value);

    /// The document as the bytes of a file. Lines that were not written stand byte for byte, except that
    /// UTF-16 became UTF-8 without BOM.
    std::string Bytes() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace kv
