/// @file
/// The reference-counted base of the objects that cross the library's boundary.
#pragma once

#include "KvTypes.h"

/// A reference-counted object. Each factory hands out one reference, which the caller releases.
/// The count is atomic; everything else about such an object expects one caller at a time.
class IKvUnknown
{
public:
    virtual ~IKvUnknown() = default;

    /// Adds a reference. @return the new count, never less than 1.
    virtual int AddRef() = 0;
    /// Drops a reference. @return the new count; at 0 the object has destroyed itself.
    virtual int Release() = 0;
};
