#pragma once

#include <cstdlib>
#include <iostream>

/// Ends the target where what must hold does not, so that the fuzzer keeps the input.
inline void must(bool holds, const char *what)
{
    if (!holds) {
        std::cerr << "does not hold: " << what << std::endl;
        std::abort();
    }
}
