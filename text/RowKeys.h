// Names for rows that outlive a removal and its undoing. Pure.
#pragma once

#include <cstdint>
#include <unordered_map>

namespace kv {

/// A row's key is the number that the list gave it first. A row that comes back has a new number there, and
/// its old key by `Bind`; no other row needs an entry.
class RowKeys
{
public:
    std::uint64_t KeyOf(std::uint64_t number) const { return Look(m_keys, number); }
    std::uint64_t NumberOf(std::uint64_t key) const { return Look(m_numbers, key); }

    void Bind(std::uint64_t number, std::uint64_t key)
    {
        m_keys[number] = key;
        m_numbers[key] = number;
    }
    /// The row with that number goes.
    void Forget(std::uint64_t number)
    {
        const auto key = m_keys.find(number);
        if (key == m_keys.end())
            return;
        m_numbers.erase(key->second);
        m_keys.erase(key);
    }

private:
    using Map = std::unordered_map<std::uint64_t, std::uint64_t>;
    static std::uint64_t Look(const Map& map, std::uint64_t from)
    {
        const auto entry = map.find(from);
        return entry == map.end() ? from : entry->second;
    }

    Map m_keys;
    Map m_numbers;
};

} // namespace kv
