#pragma once

#include <cstdlib>
#include <type_traits>

/// Stands in a copy of the tree that scripts/faults.py makes, never in the tree itself: each
/// planted fault asks here whether it is the one that this run has switched on.
namespace faults {

/// Number of the fault in force, from the environment; 0: none.
inline int Active() {
    static const int number = [] {
        const char* text = std::getenv("LAPVANE_FAULT");
        return text ? std::atoi(text) : 0;
    }();
    return number;
}

/// Constants that the compiler works out keep their value.
constexpr bool On(int number) {
    return !std::is_constant_evaluated() && Active() == number;
}

}  // namespace faults
