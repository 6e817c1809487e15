#pragma once

#include <cstdlib>
#include <string_view>

/// What a target does with one input. The bytes lie in a buffer of exactly their size, so that
/// reading past its end is seen. A run-time error that it lets through is a refusal, no finding.
void Fuzz(std::string_view input);

/// A broken promise is a finding.
inline void Must(bool kept) {
    if (!kept) std::abort();
}
