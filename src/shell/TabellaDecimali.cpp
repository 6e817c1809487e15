#include "shell/TabellaDecimali.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace lapvane {

TabellaDecimali::TabellaDecimali(char separatore) : separatore_(separatore) {
    const auto prendi = [](Pezzo& pezzo, std::string_view testo) {
        pezzo.Lungo = static_cast<std::uint8_t>(testo.copy(pezzo.Testo.data(), pezzo.Testo.size()));
    };
    for (std::size_t n = 0; n < interi_.size(); ++n) {
        const std::string intero = std::to_string(n) + separatore;
        prendi(interi_[n], intero);
        prendi(pieni_[n], std::string(4 - intero.size(), '0') + intero);
    }
    const auto campo = [this](double valore) {
        std::array<char, 32> testo{};
        return std::string(testo.data(), Esatto(testo.data(), valore));
    };
    for (std::size_t n = 0; n < resti_.size(); ++n) {
        prendi(resti_[n], campo(static_cast<double>(n) / 100.0).substr(2));
    }
    for (std::size_t n = 0; n < decimi_.size(); ++n) {
        prendi(decimi_[n], campo((static_cast<int>(n) - kSotto) / 10.0));
    }
}

char* TabellaDecimali::Esatto(char* dove, double valore) const {
    dove = ScriviDecimali(dove, valore, separatore_);
    *dove++ = ';';
    return dove;
}

}  // namespace lapvane
