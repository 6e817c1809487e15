#pragma once

#include <array>
#include <cstddef>

#include "analysis/TabellaDati.h"
#include "platform/ErroreRuntime.h"

namespace lapvane {

/// A channel or lap index that somebody asks for; error 9 outside 0 to `massimo`.
inline int IndiceChiesto(int indice, int massimo) {
    if (indice >= 0 && indice <= massimo) return indice;
    throw ErroreRuntime(NumeroErrore::Subscript, Lavoro::ChiedereAnalisi);
}

/// One value a column, 1 to 20; entry 0 is unused.
template <class T>
class PerCanale {
 public:
    T& operator[](int c) { return valori_[static_cast<std::size_t>(c)]; }
    const T& operator[](int c) const { return valori_[static_cast<std::size_t>(c)]; }

 private:
    std::array<T, kNumCanali> valori_{};
};

}  // namespace lapvane
