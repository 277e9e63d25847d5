// The library's counted objects: owners, and the count of our own ones.
#pragma once

#include "KvUnknown.h"

#include <atomic>
#include <memory>

namespace titler {

struct Releaser
{
    void operator()(IKvUnknown* object) const { object->Release(); }
};
/// Owns one reference.
template <typename T>
using Ref = std::unique_ptr<T, Releaser>;

/// An object of ours behind one of the library's interfaces; begins with one reference.
template <typename Interface>
class Counted : public Interface
{
public:
    int AddRef() override { return ++m_references; }
    int Release() override
    {
        const int left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

private:
    std::atomic<int> m_references = 1;
};

} // namespace titler
