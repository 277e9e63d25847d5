// A folder for one test, removed with everything in it.
#pragma once

#include "core/FilePath.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace kv {

/// Names within it are bytes, of a wide path those of UTF-8. Its own name holds characters beyond ASCII and
/// beyond the first plane.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        std::random_device random;
        do {
            const std::string name = "kv-test-\xC3\xA9\xF0\x9F\x8E\xAC-" + std::to_string(random());
            m_path = std::filesystem::temp_directory_path() / Native(name);
        } while (!std::filesystem::create_directory(m_path));
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return m_path; }
    std::filesystem::path operator/(std::string_view name) const { return m_path / Native(name); }
    std::wstring Wide(std::string_view name) const { return FromPath(*this / name); }

    void Put(std::string_view name, std::string_view bytes) const
    {
        std::ofstream(*this / name, std::ios::binary) << bytes;
    }
    std::string Get(std::string_view name) const
    {
        std::ifstream stream(*this / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    std::ptrdiff_t Count() const { return std::distance(std::filesystem::directory_iterator(m_path), {}); }

private:
    static std::filesystem::path Native(std::string_view name)
    {
#ifdef _WIN32
        return std::u8string(name.begin(), name.end());
#else
        return name;
#endif
    }

    std::filesystem::path m_path;
};

} // namespace kv
