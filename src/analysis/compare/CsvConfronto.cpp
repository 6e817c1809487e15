#include "analysis/compare/CsvConfronto.h"

#include <algorithm>
#include <functional>

#include "analysis/compare/ConfrontoGiri.h"
#include "platform/Testo1252.h"
#include "shell/CsvTabella.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

struct Colonna {
    std::string Titolo;
    std::function<double(double)> Valore;  ///< by metres along the reference
};

std::vector<Colonna> Colonne(const Confronto& confronto, const std::vector<std::string>& canali) {
    const GiroScelto primo = *confronto.Di(kRiferimento);
    const GiroAllineato& riferimento = *confronto.Allineato(primo);
    std::vector<GiroScelto> giri = {primo};
    for (const char lettera : confronto.Accanto()) {
        if (confronto.Allineato(*confronto.Di(lettera)) != nullptr) {
            giri.push_back(*confronto.Di(lettera));
        }
    }
    const auto nome = [&](GiroScelto giro) {
        std::string testo = TestoNumero(static_cast<std::int64_t>(confronto.Numero(giro)));
        if (confronto.NumLog() > 1) {
            testo += " " + TestoDaPercorso(confronto.Log(giro.Log).File().stem());
        }
        return testo;
    };
    std::vector<Colonna> colonne = {{"distance", [](double metri) { return metri; }}};
    for (std::size_t i = 1; i < giri.size(); ++i) {
        const GiroAllineato* mio = confronto.Allineato(giri[i]);
        colonne.push_back({"delta " + nome(giri[i]), [mio, &riferimento](double metri) {
                               return Distacco(*mio, riferimento, metri);
                           }});
    }
    for (const std::string& chiave : canali) {
        for (const GiroScelto giro : giri) {
            const LogAperto& log = confronto.Log(giro.Log);
            const auto canale = std::find_if(
                log.Canali().begin(), log.Canali().end(),
                [&](const CanaleLog& uno) { return CanaleConfronto(uno).Chiave() == chiave; });
            if (canale == log.Canali().end()) continue;
            const GiroAllineato* mio = confronto.Allineato(giro);
            colonne.push_back(
                {CanaleConfronto(*canale).Titolo() + " " + nome(giro),
                 [mio, &riferimento, &log, colonna = canale->Colonna](double metri) {
                     const double quota = std::min(1.0, metri / riferimento.Lunghezza);
                     return log.Valore(colonna, mio->Inizio + mio->TempoA(quota * mio->Lunghezza));
                 }});
        }
    }
    return colonne;
}

}  // namespace

std::string CsvConfronto(const Confronto& confronto, const std::vector<std::string>& canali,
                         const FormaCsv& forma) {
    const auto primo = confronto.Di(kRiferimento);
    const GiroAllineato* riferimento = primo ? confronto.Allineato(*primo) : nullptr;
    if (riferimento == nullptr) return {};
    const std::vector<Colonna> colonne = Colonne(confronto, canali);
    std::string testo;
    for (std::size_t c = 0; c < colonne.size(); ++c) {
        if (c > 0) testo += forma.Campi;
        testo += CampoCsv(colonne[c].Titolo, forma.Campi);
    }
    testo += "\r\n";
    for (const double metri : Griglia(riferimento->Lunghezza, forma.Passo)) {
        for (std::size_t c = 0; c < colonne.size(); ++c) {
            if (c > 0) testo += forma.Campi;
            testo += Formatta(colonne[c].Valore(metri), "0.000", forma.Decimale);
        }
        testo += "\r\n";
    }
    return testo;
}

}  // namespace lapvane
