#include "color/SwatchStore.h"

#include "core/KvFileUtils.h"
#include "core/WholeFile.h"

#include <utility>

namespace kv {

namespace {

std::optional<ProfileDocument> ReadProfile(std::wstring_view path)
{
    const auto bytes = ReadWholeFile(path, nullptr, ProfileDocument::kMostBytes);
    if (!bytes)
        return std::nullopt;
    return ProfileDocument(*bytes, ProfileNames::AnyCase);
}

} // namespace

bool SwatchStore::SetColour(int index, std::uint32_t colour)
{
    if (index < 0 || index >= Count())
        return false;
    m_colours[static_cast<std::size_t>(index)] = colour;
    return true;
}

bool SwatchStore::Read(std::wstring_view path, SwatchSet set)
{
    const auto profile = ReadProfile(path);
    auto colours = profile ? ReadSwatches(*profile, set) : std::nullopt;
    if (!colours)
        return false;
    m_colours = std::move(*colours);
    return true;
}

bool SwatchStore::Write(std::wstring_view path) const
{
    auto profile = ReadProfile(path);
    if (!profile || !WriteSwatches(*profile, m_colours))
        return false;
    const std::string bytes = profile->Bytes();
    // Never what could not be read again.
    return bytes.size() <= ProfileDocument::kMostBytes && WriteWholeFile(path, bytes);
}

bool SwatchStore::Initialise(std::wstring_view path, bool reset)
{
    const bool first = std::exchange(m_firstLoad, false);
    if (!first && !reset)
        return false;
    if (!Read(path, reset ? SwatchSet::Factory : SwatchSet::Altered))
        return false;
    if (reset)
        Write(path);
    return true;
}

bool InstallFactorySwatches(std::wstring_view path)
{
    const std::wstring file(path);
    if (KvFileUtils::DoesFileExist(file.c_str()) != 0)
        return ReadWholeFile(file, nullptr, ProfileDocument::kMostBytes).has_value();
    return WriteWholeFile(file, FactorySwatchProfile());
}

} // namespace kv
