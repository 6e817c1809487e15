#include "runs/CsvArchivio.h"

#include <array>
#include <vector>

#include "platform/Testo1252.h"
#include "shell/CsvTabella.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Utility.h"

namespace lapvane {

namespace {

std::string Tempo(std::int32_t centesimi, char decimale) {
    if (centesimi <= 0) return {};
    std::string testo = CentesimiInTempo(centesimi);
    testo[testo.rfind('.')] = decimale;
    return testo;
}

std::string Durata(std::int32_t decimi) {
    if (decimi <= 0) return {};
    const std::int32_t secondi = decimi / 10;
    return TestoNumero(int{secondi / 3600}) + ":" + DueCifre(secondi / 60 % 60) + ":" +
           DueCifre(secondi % 60);
}

std::string Giorno(const Uscita& uscita) {
    if (uscita.Giorno <= 0 || (uscita.QuandoDelFile && !uscita.DataSessione.empty())) {
        return uscita.DataSessione;
    }
    return TestoNumero(int{uscita.Giorno / 10000}) + "-" + DueCifre(uscita.Giorno / 100 % 100) +
           "-" + DueCifre(uscita.Giorno % 100);
}

}  // namespace

std::string CsvArchivio(const std::vector<Uscita>& uscite, const ElencoUscite& elenco,
                        char decimale, char campi) {
    std::string csv;
    const auto riga = [&](const std::vector<std::string>& celle) {
        for (std::size_t c = 0; c < celle.size(); ++c) {
            if (c > 0) csv += campi;
            csv += CampoCsv(celle[c], campi);
        }
        csv += "\r\n";
    };
    std::vector<std::string> titoli;
    for (int c = 0; c < kColonneUscite; ++c) {
        titoli.push_back(Testo(TitoloColonna(static_cast<ColonnaUscite>(c))));
    }
    for (const Voce voce : {Voce::UscitaNote, Voce::UscitaAvviso, Voce::UscitaFile}) {
        titoli.push_back(Testo(voce));
    }
    riga(titoli);
    for (const RigaElenco& una : elenco.Righe()) {
        if (una.Uscita < 0) continue;
        const Uscita& u = uscite[static_cast<std::size_t>(una.Uscita)];
        riga({Giorno(u), TestoOra(u), u.Circuito, u.Sessione, u.Piloti, u.Veicolo,
              TestoNumero(u.Giri()), Tempo(u.Migliore, decimale), Tempo(u.MediaCinque, decimale),
              Tempo(u.Ideale, decimale), Durata(u.Durata), u.Note, FraseProblema(u),
              TestoDaPercorso(u.Csv)});
    }
    return csv;
}

}  // namespace lapvane
