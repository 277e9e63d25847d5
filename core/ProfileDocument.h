// A line-preserving profile (INI) document: changing a value changes that line and nothing else.
//
// Sections and keys are compared exactly and the first of several wins; blanks at the start of a line are
// skipped; ";" or "#" starts a comment line. A value is the text after "=" as it stands, except that for a
// hand-written `Key = value` (a blank before the "=") the blanks after the "=" go too.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kv {

class ProfileDocument
{
public:
    ProfileDocument();
    /// Reads the bytes of a file: UTF-8 with or without BOM, or UTF-16 with BOM. Never fails; what is no
    /// key line is kept as it is.
    explicit ProfileDocument(std::string_view bytes);
    ~ProfileDocument();
    ProfileDocument(ProfileDocument&&) noexcept;
    ProfileDocument& operator=(ProfileDocument&&) noexcept;

    std::optional<std::wstring> Value(std::wstring_view section, std::wstring_view key) const;
    /// The leading digits (with a sign) of a value, saturating; `defaultValue` when the key is missing.
    int Integer(std::wstring_view section, std::wstring_view key, int defaultValue) const;
    /// The keys and values of a section in file order.
    std::vector<std::pair<std::wstring, std::wstring>> Section(std::wstring_view section) const;

    /// Replaces the value, or adds the key at the end of its section, or the section at the end.
    /// @return false, nothing changed, when a text holds a line break (or a key cannot be read back).
    bool SetValue(std::wstring_view section, std::wstring_view key, std::wstring_view value);
    bool SetInteger(std::wstring_view section, std::wstring_view key, int value);

    /// The document as the bytes of a file. Lines that were not written stand byte for byte.
    std::string Bytes() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace kv
