#include "analysis/ColonneStrette.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <type_traits>

namespace lapvane {

namespace {

/// Rows that are read at once: all their columns stay in the cache until they are narrow. No power
/// of two, which would give all columns the same places there.
constexpr std::int32_t kFinestra = 248;

constexpr double kMillesimi = 1000.0;

/// The number that a cell stands for. A quotient of whole numbers that a double holds is the double
/// next to the decimal fraction, which is what a reader of its digits gives.
template <class T>
double Largo(T cella) {
    if constexpr (std::is_same_v<T, std::int32_t>) {
        return cella / kMillesimi;
    } else {
        return cella;
    }
}

/// The cell that is nearest to a number; some other one for a number that no cell comes near.
template <class T>
T Stretto(double valore) {
    if constexpr (std::is_same_v<T, double>) {
        return valore;
    } else {
        if constexpr (std::is_same_v<T, std::int32_t>) valore *= kMillesimi;
        // Between 2^52 and 2^53 doubles are the whole numbers, in their low bits: the sum is
        // rounded to the nearest one.
        constexpr double kInteri = 6755399441055744.0;  // 1.5 * 2^52
        return static_cast<T>(std::bit_cast<std::int64_t>(valore + kInteri));
    }
}

/// Whether cells of the kind give the numbers back.
template <class T>
bool Tiene(std::span<const double> valori) {
    return std::all_of(valori.begin(), valori.end(), [](double valore) {
        return std::bit_cast<std::uint64_t>(Largo(Stretto<T>(valore))) ==
               std::bit_cast<std::uint64_t>(valore);
    });
}

}  // namespace

void ColonneStrette::Alloca(int colonne, std::int32_t righe) {
    colonne_.clear();
    righe_ = std::max(righe, 0);
    colonne_.resize(static_cast<std::size_t>(std::max(colonne, 0)));
}

std::int32_t ColonneStrette::Leggi(LettoreDati& lettore, std::int32_t da, std::int32_t a) {
    std::vector<double> finestra(colonne_.size() * kFinestra);
    std::vector<double*> inizi;
    for (std::size_t c = 0; c < colonne_.size(); ++c) inizi.push_back(&finestra[c * kFinestra]);
    while (da < a) {
        std::fill(finestra.begin(), finestra.end(), 0.0);
        const std::int32_t chieste = std::min(a - da, kFinestra);
        const std::int32_t lette = lettore.LeggiRighe(inizi, 0, chieste);
        const auto prima = static_cast<std::size_t>(da);
        for (std::size_t c = 0; c < colonne_.size(); ++c) {
            const std::span<const double> valori(inizi[c], static_cast<std::size_t>(lette));
            while (!Scrivi(colonne_[c], prima, valori)) Allarga(colonne_[c], prima);
        }
        da += lette;
        if (lette < chieste) break;
    }
    return da;
}

/// Writes the numbers from row `da` on; false: the form can not hold one of them.
bool ColonneStrette::Scrivi(Forma& forma, std::size_t da, std::span<const double> valori) const {
    return std::visit(
        [&](auto& celle) {
            using T = typename std::decay_t<decltype(celle)>::value_type;
            if (celle.empty()) {
                if (!Tiene<T>(valori)) return false;
                celle.resize(static_cast<std::size_t>(righe_));
            }
            T* __restrict const dove = celle.data() + da;
            const double* __restrict const valore = valori.data();
            const std::size_t numero = valori.size();
            std::uint64_t diversi = 0;
            for (std::size_t i = 0; i < numero; ++i) {
                const T cella = Stretto<T>(valore[i]);
                dove[i] = cella;
                diversi |= std::bit_cast<std::uint64_t>(Largo(cella)) ^
                           std::bit_cast<std::uint64_t>(valore[i]);
            }
            return diversi == 0;
        },
        forma);
}

/// The next wider form, with the rows before `fino`.
void ColonneStrette::Allarga(Forma& forma, std::size_t fino) {
    const auto in = [&]<class T>(std::vector<T> larga) {
        std::visit(
            [&](const auto& celle) {
                larga.resize(celle.size());
                for (std::size_t i = 0; i < fino; ++i) larga[i] = Stretto<T>(Largo(celle[i]));
            },
            forma);
        forma = std::move(larga);
    };
    switch (forma.index()) {
        case 0:
            return in(std::vector<std::int16_t>());
        case 1:
            return in(std::vector<std::int32_t>());
        default:
            return in(std::vector<double>());
    }
}

std::int32_t ColonneStrette::Righe(int colonna) const {
    return colonna < 1 || colonna > std::ssize(colonne_) ? 0 : righe_;
}

double ColonneStrette::Valore(int colonna, std::int32_t riga) const {
    return std::visit(
        [riga](const auto& celle) { return celle.empty() ? 0.0 : Largo(celle.begin()[riga]); },
        Colonna(colonna));
}

std::vector<double> ColonneStrette::Celle(int colonna, std::int32_t da, std::int32_t a) const {
    std::vector<double> valori(static_cast<std::size_t>(std::max(a - da, 0)));
    std::visit(
        [&](const auto& celle) {
            if (celle.empty()) return;
            const auto inizio = celle.begin() + da;
            std::transform(inizio, inizio + std::ssize(valori), valori.begin(),
                           [](auto cella) { return Largo(cella); });
        },
        Colonna(colonna));
    return valori;
}

}  // namespace lapvane
