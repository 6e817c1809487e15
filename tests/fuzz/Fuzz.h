#pragma once

#include <cstdlib>
#include <string_view>

#include "platform/ErroreRuntime.h"

/// What a target does with one input. The bytes lie in a buffer of exactly their size, so that
/// reading past its end is seen. An exception that it lets through is a finding.
void Fuzz(std::string_view input);

/// A broken promise is a finding.
inline void Must(bool kept) {
    if (!kept) std::abort();
}

/// False if `read` refuses its input with a run-time error or ends the program.
template <class Read>
bool Accepted(Read&& read) {
    try {
        read();
    } catch (const lapvane::ErroreRuntime&) {
        return false;
    } catch (const lapvane::FineProgramma&) {
        return false;
    }
    return true;
}
