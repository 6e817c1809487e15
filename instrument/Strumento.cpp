#include "instrument/Strumento.h"

#include <algorithm>
#include <stdexcept>

#include "device/Codec.h"
#include "shell/NumeroTesto.h"

namespace lapvane::strumento {

Serbatoio LeggiSerbatoio(std::string_view testo) {
    constexpr double kLitriMassimi = 60.0;
    Serbatoio serbatoio;
    const std::size_t fine = std::min(testo.find(':'), testo.size());
    const auto litri = LeggiNumero(testo.substr(0, fine));
    const std::string_view modo = testo.substr(std::min(fine + 1, testo.size()));
    if (!litri || !(*litri >= 0.0 && *litri <= kLitriMassimi) ||
        (fine < testo.size() && modo != "falling")) {
        throw std::invalid_argument("a tank takes 0 to 60 litres and perhaps \":falling\", not \"" +
                                    std::string(testo) + "\"");
    }
    serbatoio.Litri = *litri;
    serbatoio.Scende = fine < testo.size();
    return serbatoio;
}

Strumento::Strumento(std::string identita) : identita_(std::move(identita)) {
    identita_.resize(kCaratteriIdentita, ' ');
}

std::vector<Risposta> Strumento::Ricevi(std::string_view byte, std::int64_t ms) {
    if (!inizio_) inizio_ = ms;
    std::vector<Risposta> risposte;
    for (const Richiesta& richiesta : lettore_.Ricevi(byte, ms)) {
        std::string testo = Rispondi(richiesta, ms);
        // What the instrument cannot do (a curve that it does not have) it does not answer.
        EsitoGuasti esito;
        if (!testo.empty()) esito = Difetti.Applica(richiesta, std::move(testo));
        if (!esito.Byte.empty()) ultima_ = std::max(ultima_, ms + esito.Ritardo);
        risposte.push_back({ultima_, std::move(esito.Byte), richiesta.Tipo, esito.Colpito});
    }
    return risposte;
}

ValoriVivi Strumento::Vivi(std::int64_t ms) const {
    ValoriVivi valori = VivoAl(Dati, ms - *inizio_);
    if (Benzina) valori.Livello = Benzina->Litri;
    return valori;
}

std::array<std::int16_t, 8> Strumento::Analogici(std::int64_t ms) const {
    constexpr std::size_t kBenzina = 4;
    auto valori = IngressiAnalogici(Vivi(ms));
    if (Benzina) valori[kBenzina] = LivelloGrezzo(Benzina->Litri, Benzina->Scende);
    return valori;
}

std::string Strumento::Rispondi(const Richiesta& richiesta, std::int64_t ms) {
    const Comando& comando = *richiesta.Tipo;
    const std::string_view dati = richiesta.Dati();
    std::string risposta = {'R', static_cast<char>(comando.Codice)};
    switch (comando.Cosa) {
        case Azione::Saluto:
            return Conferma(comando.Codice);
        case Azione::ScriviRecord:
            Dati.Programma(comando.Quale, dati);
            return Conferma(comando.Codice);
        case Azione::ScriviCurva: {
            const int canale = ByteIn(dati, 1);
            if (canale >= kCanaliCurva) return {};
            Dati.ProgrammaCurva(canale, dati.substr(1));
            return Conferma(comando.Codice);
        }
        case Azione::LeggiRecord:
            risposta += Dati.Dati(comando.Quale);
            break;
        case Azione::LeggiCurva: {
            const int canale = ByteIn(dati, 1);
            if (canale >= kCanaliCurva) return {};
            // The reply has no channel byte: everything sits one place earlier than in a write.
            risposta += Dati.Curva(canale);
            break;
        }
        case Azione::Identita:
            risposta += identita_;
            break;
        case Azione::BloccoLog:
            risposta += Dati.LeggiLog(richiesta.Indirizzo());
            break;
        case Azione::BloccoGiri:
            risposta += Dati.LeggiGiri(richiesta.Indirizzo());
            break;
        case Azione::Vivo:
            risposta += DatiVivi(Vivi(ms), Dati);
            break;
        case Azione::Analogici:
            for (const std::int16_t valore : AnalogiciFissi.value_or(Analogici(ms))) {
                risposta += CodificaWord(valore);
            }
            break;
    }
    risposta.resize(comando.Risposta, '\0');
    return risposta;
}

}  // namespace lapvane::strumento
