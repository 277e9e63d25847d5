// What every reference-counted object that crosses the boundary has in common.
#pragma once

#include "KvUnknown.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>
#include <new>

namespace kv {

/// Implements the reference count of an interface that derives from IKvUnknown.
template <typename Interface>
class RefCounted : public Interface
{
public:
    int AddRef() override { return std::max<std::int32_t>(++m_references, 1); }

    int Release() override
    {
        const std::int32_t left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

private:
    std::atomic<std::int32_t> m_references{1};
};

/// The body of a factory: a new object with one reference in `*out`, null there when memory is short.
template <typename Object, typename Interface, typename... Arguments>
bool CreateObject(Interface** out, Arguments... arguments)
{
    if (!out)
        return false;
    *out = new (std::nothrow) Object(arguments...);
    return *out != nullptr;
}

struct Releaser
{
    void operator()(IKvUnknown* object) const { object->Release(); }
};

/// Holds one reference and releases it.
template <typename Interface>
using Reference = std::unique_ptr<Interface, Releaser>;

} // namespace kv
