#pragma once

#include <cstdint>
#include <random>

namespace lapvane::strumento {

/// Numbers by chance that are the same on every machine and in every run (the distributions of the
/// standard library are not).
class Caso {
 public:
    explicit Caso(std::uint32_t seme) : motore_(seme) {}
    /// From 0 to below 1.
    double Prossimo() { return static_cast<double>(motore_()) / 4294967296.0; }
    /// From -1 to below 1.
    double Scarto() { return 2.0 * Prossimo() - 1.0; }

 private:
    std::mt19937 motore_;
};

}  // namespace lapvane::strumento
