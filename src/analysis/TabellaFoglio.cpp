#include "analysis/TabellaFoglio.h"

#include <limits>
#include <utility>

namespace lapvane {

namespace {

constexpr int kPassiAvanzamento = 100;

}  // namespace

bool TabellaFoglio::CaricaFile(Piano piano, LettoreDati lettore,
                               const EventoAvanzamento& avanzamento) {
    fogli_[piano] = {};
    std::string_view titolo = lettore.Titolo();
    if (lettore.Vuoto()) return true;
    FoglioDati foglio;
    const auto colonne = std::count(titolo.begin(), titolo.end(), ';') + 1;
    foglio.NumeroColonne = static_cast<std::int16_t>(
        std::min<std::ptrdiff_t>(colonne, std::numeric_limits<std::int16_t>::max()));
    const std::int32_t record = lettore.NumeroRecord();
    foglio.Righe = record + 1;
    // The side file has its columns whatever its heading names.
    const int numero =
        std::max<int>(foglio.NumeroColonne, piano == Piano::Laterale ? kColonnaGiro : 0);
    for (int c = 1; c <= std::min(numero, kUltimoCanale); ++c) {
        const std::size_t fine = std::min(titolo.find(';'), titolo.size());
        foglio.Titoli.emplace_back(titolo.substr(0, std::min(fine, kTitoloMassimo)));
        titolo.remove_prefix(std::min(fine + 1, titolo.size()));
    }
    const int tenute = static_cast<int>(foglio.Titoli.size());
    if (piano == Piano::Laterale) {
        foglio.Strette.Alloca(tenute, record);
    } else {
        foglio.Colonne.Alloca(tenute, record);
    }
    const auto leggi = [&](std::int32_t da, std::int32_t a) {
        return piano == Piano::Laterale ? foglio.Strette.Leggi(lettore, da, a)
                                        : lettore.LeggiRighe(foglio.Colonne.Inizi(), da, a);
    };
    const std::int32_t passo = std::max(1, record / kPassiAvanzamento);
    for (std::int32_t riga = 0; riga < record;) {
        const std::int32_t meta = riga + 1;
        if (leggi(riga, meta) < meta) break;
        if (!avanzamento(static_cast<int>(std::int64_t{riga} * 100 / record))) return false;
        riga = leggi(meta, std::min(record - riga, passo) + riga);
        if (riga % passo != 0) break;
    }
    fogli_[piano] = std::move(foglio);
    return true;
}

std::string TabellaFoglio::Titolo(int colonna, Piano piano) const {
    const auto& titoli = fogli_[piano].Titoli;
    if (colonna < 1 || colonna > std::ssize(titoli)) return {};
    return titoli.begin()[colonna - 1];
}

}  // namespace lapvane
