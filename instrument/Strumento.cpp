#include "instrument/Strumento.h"

#include <algorithm>

#include "device/Codec.h"
#include "instrument/Vivo.h"

namespace lapvane::strumento {

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
            risposta += DatiVivi(VivoAl(Dati, ms - *inizio_), Dati);
            break;
        case Azione::Analogici:
            for (const std::int16_t valore :
                 AnalogiciFissi.value_or(IngressiAnalogici(VivoAl(Dati, ms - *inizio_)))) {
                risposta += CodificaWord(valore);
            }
            break;
    }
    risposta.resize(comando.Risposta, '\0');
    return risposta;
}

}  // namespace lapvane::strumento
