#include "reports/DivisioneSettori.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

std::int32_t Limita(std::int64_t valore) {
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(valore, std::numeric_limits<std::int32_t>::min(),
                                 std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

void DivisioneSettori::Prendi(std::span<const double> lunghezze) {
    SettoriCircuito.fill(0);
    NumSettori = 0;
    for (const double lunghezza : lunghezze) {
        const double metri = std::nearbyint(lunghezza);
        const bool adatta = std::fabs(metri) <= std::numeric_limits<std::int32_t>::max();
        if (NumSettori == kSettoriMassimi || !adatta || metri == 0.0) return;
        SettoriCircuito[static_cast<std::size_t>(NumSettori++)] = static_cast<std::int32_t>(metri);
    }
}

void DivisioneSettori::Dividi(std::int32_t lunghezza, int numero) {
    SettoriCircuito.fill(0);
    NumSettori = std::clamp(numero, 0, kSettoriMassimi);
    if (NumSettori == 0) return;
    const std::int32_t parte = ConvertiInt32(static_cast<double>(lunghezza) / NumSettori);
    std::fill_n(SettoriCircuito.begin(), NumSettori - 1, parte);
    SettoriCircuito[static_cast<std::size_t>(NumSettori - 1)] =
        Limita(std::int64_t{lunghezza} - std::int64_t{parte} * (NumSettori - 1));
}

bool DivisioneSettori::Cambia(int i, std::int32_t nuovo, std::int32_t lunghezza) {
    if (i < 0 || i >= NumSettori - 1 || nuovo < 1 || nuovo >= lunghezza) return false;
    const auto posto = SettoriCircuito.begin() + i;
    const std::int64_t aumento = std::int64_t{nuovo} - *posto;
    *posto = nuovo;
    if (i < NumSettori - 2) {
        posto[1] = Limita(posto[1] - aumento);
    } else {
        std::int64_t resto = lunghezza;
        for (auto prima = SettoriCircuito.begin(); prima <= posto; ++prima) resto -= *prima;
        posto[1] = Limita(resto);
    }
    return true;
}

std::int64_t DivisioneSettori::Somma() const {
    std::int64_t somma = 0;
    for (int i = 0; i < NumSettori; ++i) somma += SettoriCircuito[static_cast<std::size_t>(i)];
    return somma;
}

int DivisioneSettori::PrimoNegativo() const {
    for (int i = 0; i < NumSettori; ++i) {
        if (SettoriCircuito[static_cast<std::size_t>(i)] < 0) return i;
    }
    return -1;
}

std::vector<TrattoSettore> TrattiDeiSettori(std::span<const std::int32_t> settori, int numPunti,
                                            double lunghezza) {
    std::vector<TrattoSettore> tratti;
    if (!(lunghezza > 0.0) || numPunti < 2) return tratti;
    const std::size_t numero = std::min<std::size_t>(settori.size(), kSettoriMassimi);
    int inizio = 0;
    for (std::size_t i = 0; i < numero; ++i) {
        if (settori[i] == 0) continue;
        const bool ultimo = i + 1 == settori.size() || settori[i + 1] == 0;
        const double fine =
            ultimo
                ? numPunti - 2.0
                : std::nearbyint(inizio + static_cast<double>(settori[i]) * numPunti / lunghezza);
        const int arrivo = static_cast<int>(std::clamp(fine, 0.0, numPunti - 1.0));
        tratti.push_back({static_cast<int>(i), inizio, arrivo});
        inizio = arrivo;
    }
    return tratti;
}

}  // namespace lapvane
