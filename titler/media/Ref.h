// Owners of the library's counted objects.
#pragma once

#include "KvUnknown.h"

#include <memory>

namespace titler {

struct Releaser
{
    void operator()(IKvUnknown* object) const { object->Release(); }
};
/// Owns one reference.
template <typename T>
using Ref = std::unique_ptr<T, Releaser>;

} // namespace titler
