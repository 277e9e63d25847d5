// What every target checks with.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Ends the run, so that the fuzzer keeps the input. @param what is said first.
inline void Require(bool holds, const char* what = nullptr)
{
    if (holds)
        return;
    if (what)
        std::fprintf(stderr, "failed: %s\n", what);
    std::abort();
}
