#pragma once

#include <span>
#include <string>

namespace lapvane {

/// A text that is built into the program, in both languages.
struct TestoInterno {
    std::string Italiano;
    std::string Inglese;
};

/// Text 335 and those behind it, in order; made of data/testi.tsv by the build.
std::span<const TestoInterno> TestiInterni();

}  // namespace lapvane
