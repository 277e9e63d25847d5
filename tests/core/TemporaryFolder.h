// A folder for one test, removed with everything in it.
#pragma once

#include "core/Text.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdlib.h>
#include <string>
#include <string_view>

namespace kv {

class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "kv-test-XXXXXX").string();
        m_path = ::mkdtemp(name.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return m_path; }
    std::filesystem::path operator/(std::string_view name) const { return m_path / name; }
    std::wstring Wide(std::string_view name) const { return FromFileName((m_path / name).string()); }

    void Put(std::string_view name, std::string_view bytes) const
    {
        std::ofstream(m_path / name, std::ios::binary) << bytes;
    }
    std::string Get(std::string_view name) const
    {
        std::ifstream stream(m_path / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    std::ptrdiff_t Count() const { return std::distance(std::filesystem::directory_iterator(m_path), {}); }

private:
    std::filesystem::path m_path;
};

} // namespace kv
