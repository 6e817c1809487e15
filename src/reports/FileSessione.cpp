#include "reports/FileSessione.h"

#include <algorithm>
#include <cmath>

#include "platform/FileTesto.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr std::int16_t kSpessoreMassimo = 6;
constexpr std::size_t kDecimali = 340;  // down to the smallest number there is

std::string SuUnaRiga(std::string_view testo) {
    std::string riga;
    for (std::size_t i = 0; i < testo.size(); ++i) {
        if (testo[i] == '\r' && i + 1 < testo.size() && testo[i + 1] == '\n') ++i;
        riga += testo[i] == '\r' || testo[i] == '\n' ? ' ' : testo[i];
    }
    return riga;
}

/// 15 digits wherever they stand, never an exponent, and the point whatever the machine's
/// separator: the file travels.
std::string Reale(double valore) {
    static const std::string kFigura = "0." + std::string(kDecimali, '#');
    return std::isfinite(valore) ? Formatta(valore, kFigura) : "0";
}

void LeggiCanale(std::string_view riga, CanaleSessione& canale) {
    std::array<std::string_view, 6> campi;
    for (std::size_t f = 0; f < campi.size(); ++f) {
        const std::size_t fine =
            f + 1 == campi.size() ? riga.size() : std::min(riga.find(';'), riga.size());
        campi[f] = riga.substr(0, fine);
        riga.remove_prefix(std::min(fine + 1, riga.size()));
    }
    const auto filtro = LeggiInt16(campi[1]);
    if (filtro && *filtro >= 1) canale.Filtro = *filtro;
    if (const auto tinta = LeggiInt32(campi[2])) {
        canale.Tinta = static_cast<Colore>(*tinta) & 0xFFFFFFu;
    }
    const auto spessore = LeggiInt16(campi[3]);
    if (spessore && *spessore >= 1 && *spessore <= kSpessoreMassimo) canale.Spessore = *spessore;
    if (const auto minimo = LeggiNumero(campi[4])) canale.Minimo = *minimo;
    if (const auto massimo = LeggiNumero(campi[5])) canale.Massimo = *massimo;
}

}  // namespace

std::string ScriviSessione(const RecordSessione& sessione, const CanaliSessione& canali) {
    std::string testo;
    const auto riga = [&](std::string_view chiave, const std::string& valore) {
        testo += chiave;
        testo += valore.empty() ? " " : SuUnaRiga(valore);
        testo += "\r\n";
    };
    riga("Sessione=", sessione.Sessione);
    riga("DataSessione=", sessione.DataSessione);
    riga("OraSessione=", sessione.OraSessione);
    riga("Circuito=", sessione.Circuito);
    riga("LunghTracciato=", sessione.LunghTracciato);
    // Kept: the session's own vehicle, which nothing ever sets, and not the one that the dialog
    // shows and the reader overwrites. So the vehicle is empty after the log is opened again.
    riga("VeicoloSessione=", sessione.VeicoloSessione);
    riga("Piloti=", sessione.Piloti);
    riga("NoteSessione=", sessione.NoteSessione);
    for (const CanaleSessione& canale : canali) {
        // Kept: a ";" in the caption is not protected and shifts the fields behind it.
        testo += SuUnaRiga(canale.Nome) + ';' + TestoNumero(int{canale.Filtro}) + ';' +
                 TestoNumero(std::int64_t{canale.Tinta}) + ';' + TestoNumero(int{canale.Spessore}) +
                 ';' + Reale(canale.Minimo) + ';' + Reale(canale.Massimo) + "\r\n";
    }
    return testo;
}

void LeggiSessione(std::string_view testo, RecordSessione& sessione, std::string& veicolo,
                   CanaliSessione& canali) {
    sessione = {};
    veicolo.clear();
    LettoreRighe righe(testo);
    // Line 6 is the vehicle of the project. Kept: it overwrites that, not the session's own.
    for (std::string* campo :
         {&sessione.Sessione, &sessione.DataSessione, &sessione.OraSessione, &sessione.Circuito,
          &sessione.LunghTracciato, &veicolo, &sessione.Piloti, &sessione.NoteSessione}) {
        const std::string_view riga = righe.Prossima();
        const std::size_t uguale = riga.find('=');  // the key is not looked at
        *campo = Rifila(uguale == std::string_view::npos ? riga : riga.substr(uguale + 1));
    }
    for (CanaleSessione& canale : canali) {
        if (righe.Fine()) return;
        LeggiCanale(righe.Prossima(), canale);
    }
}

}  // namespace lapvane
