#include "instrument/Guasti.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "shell/NumeroTesto.h"

namespace lapvane::strumento {

namespace {

constexpr std::size_t kTestaBlocco = 2;  // characters of a reply before its block
constexpr int kSaluto = 1;
constexpr int kBloccoLog = 14;
constexpr std::int32_t kCaratteriInPiu = 10000;  // noise and surplus of one reply, at most

struct Parola {
    std::string_view Nome;
    TipoGuasto Tipo;
    bool ConValore;
    std::int32_t Minimo;  // of the value
    int Comando;          // when none is given; 0: any
};

constexpr std::array<Parola, 11> kParole = {{
    {"drop", TipoGuasto::Scarta, false, 0, 0},
    {"cut", TipoGuasto::Taglia, true, 0, 0},
    {"delay", TipoGuasto::Ritarda, true, 1, 0},
    {"corrupt", TipoGuasto::Altera, true, 1, 0},
    {"silent", TipoGuasto::Muto, false, 0, 0},
    {"badsum", TipoGuasto::SommaErrata, true, 0, kBloccoLog},
    {"blank", TipoGuasto::PaginaVuota, true, 0, kBloccoLog},
    {"extra", TipoGuasto::Coda, true, 1, kSaluto},
    {"noise", TipoGuasto::Rumore, true, 1, 0},
    {"twice", TipoGuasto::Doppia, false, 0, 0},
    {"order", TipoGuasto::Ordine, false, 0, 0},
}};

std::vector<std::string_view> Dividi(std::string_view testo) {
    std::vector<std::string_view> parti;
    for (;;) {
        const std::size_t punti = testo.find(':');
        parti.push_back(testo.substr(0, punti));
        if (punti == std::string_view::npos) return parti;
        testo.remove_prefix(punti + 1);
    }
}

[[noreturn]] void Rifiuta(std::string_view testo, const std::string& perche) {
    throw std::invalid_argument("fault \"" + std::string(testo) + "\": " + perche);
}

/// What a loose plug puts on the line: the same characters each time, none of them the start of a
/// reply.
std::string Rumore(std::size_t caratteri) {
    constexpr std::string_view kRumore = "\xFF\x03~\xE1\x18U\xAA\x7F";
    std::string rumore;
    while (rumore.size() < caratteri) rumore += kRumore[rumore.size() % kRumore.size()];
    return rumore;
}

bool GuastoDiPagina(TipoGuasto tipo) {
    return tipo == TipoGuasto::SommaErrata || tipo == TipoGuasto::PaginaVuota;
}

}  // namespace

Guasto LeggiGuasto(std::string_view testo) {
    const std::vector<std::string_view> parti = Dividi(testo);
    const auto parola = std::find_if(kParole.begin(), kParole.end(),
                                     [&](const Parola& p) { return p.Nome == parti.front(); });
    if (parola == kParole.end()) Rifiuta(testo, "no such kind");
    Guasto guasto;
    guasto.Tipo = parola->Tipo;
    guasto.Comando = parola->Comando;

    std::size_t prossima = 1;
    const auto numero = [&](const char* nome, std::int32_t minimo, std::int32_t assente) {
        if (prossima >= parti.size()) return assente;
        const std::string_view parte = parti[prossima++];
        const auto valore = LeggiIntero(parte);
        if (!valore || *valore < minimo) {
            Rifiuta(testo, std::string(nome) + " has to be a number from " +
                               TestoNumero(std::int64_t{minimo}) + " up");
        }
        return *valore;
    };
    if (parola->ConValore) {
        if (parti.size() < 2) Rifiuta(testo, "a value is missing");
        guasto.Valore = numero("the value", parola->Minimo, 0);
        const bool inPiu = guasto.Tipo == TipoGuasto::Coda || guasto.Tipo == TipoGuasto::Rumore;
        if (inPiu && guasto.Valore > kCaratteriInPiu) {
            Rifiuta(testo,
                    "the value may be " + TestoNumero(std::int64_t{kCaratteriInPiu}) + " at most");
        }
    }
    if (prossima < parti.size() && (parti[prossima] == "*" || parti[prossima] == "0")) {
        ++prossima;
        guasto.Comando = 0;
    } else {
        guasto.Comando = numero("the command", 1, guasto.Comando);
        if (guasto.Comando != 0 && CercaComando(guasto.Comando) == nullptr) {
            Rifiuta(testo, "no such command");
        }
    }
    // One frame when it is told which; all of them when not.
    const bool scelto = prossima < parti.size();
    guasto.Dal = numero("the first frame", 1, 1);
    guasto.Quanti = numero("the count", 0, scelto ? 1 : 0);
    if (prossima < parti.size()) Rifiuta(testo, "too many parts");
    return guasto;
}

const char* AiutoGuasti() {
    return "Faults: KIND[:VALUE][:COMMAND[:FIRST[:COUNT]]]\n"
           "  drop            no reply\n"
           "  cut:N           only the first N characters of the reply\n"
           "  delay:MS        the reply MS milliseconds later\n"
           "  corrupt:N       one bit of character N (from 1) of the reply turned over\n"
           "  silent          nothing is answered any more, from this frame on\n"
           "  badsum:PAGE     wrong checksum of a log page of 256 bytes (from 0)\n"
           "  blank:PAGE      the log page looks never written\n"
           "  extra:N         N characters more behind the reply (to the handshake, if no\n"
           "                  command is given)\n"
           "  noise:N         N characters of noise before the reply; at most 10000, extra too\n"
           "  twice           the reply comes twice\n"
           "  order           the reply carries the number of another command\n"
           "COMMAND is a command number, or * for any. FIRST picks the n-th matching frame, and\n"
           "COUNT says how many frames from there on (1 if left out, 0 for good). Without FIRST\n"
           "every matching frame is hit.\n"
           "  drop:14:5       no reply to the fifth request of a log block\n"
           "  cut:100:14:5:3  the fifth to seventh log block arrive short\n"
           "  delay:6000:37   live values come six seconds late\n";
}

void Guasti::Togli() {
    guasti_.clear();
    muto_ = false;
}

bool Guasti::Riguarda(const Guasto& guasto, const Richiesta& richiesta) {
    if (guasto.Comando != 0 && guasto.Comando != richiesta.Tipo->Codice) return false;
    if (!GuastoDiPagina(guasto.Tipo)) return true;
    if (richiesta.Tipo->Codice != kBloccoLog) return false;
    // The checksum stands in the second block of its page.
    const std::uint32_t blocco = richiesta.Indirizzo() / kByteBloccoMemoria;
    if (blocco / 2 != static_cast<std::uint32_t>(guasto.Valore)) return false;
    return guasto.Tipo == TipoGuasto::PaginaVuota || blocco % 2 == 1;
}

EsitoGuasti Guasti::Applica(const Richiesta& richiesta, std::string risposta) {
    EsitoGuasti esito;
    esito.Byte = std::move(risposta);
    for (InForza& inForza : guasti_) {
        const Guasto& guasto = inForza.Che;
        if (!Riguarda(guasto, richiesta)) continue;
        ++inForza.Visti;
        if (inForza.Visti < guasto.Dal) continue;
        if (guasto.Quanti != 0 && inForza.Visti >= guasto.Dal + guasto.Quanti) continue;
        esito.Colpito = true;
        std::string& byte = esito.Byte;
        const auto valore = static_cast<std::size_t>(guasto.Valore);
        switch (guasto.Tipo) {
            case TipoGuasto::Scarta:
                byte.clear();
                break;
            case TipoGuasto::Taglia:
                byte.resize(std::min(byte.size(), valore));
                break;
            case TipoGuasto::Ritarda:
                esito.Ritardo += guasto.Valore;
                break;
            case TipoGuasto::Altera:
                if (valore >= 1 && valore <= byte.size()) {
                    byte[valore - 1] = static_cast<char>(byte[valore - 1] ^ 0x10);
                }
                break;
            case TipoGuasto::Muto:
                muto_ = true;
                break;
            case TipoGuasto::SommaErrata:
                if (!byte.empty()) byte.back() = static_cast<char>(byte.back() ^ 0x10);
                break;
            case TipoGuasto::PaginaVuota:
                if (byte.size() > kTestaBlocco) {
                    std::fill(byte.begin() + kTestaBlocco, byte.end(), '\xFF');
                }
                break;
            case TipoGuasto::Coda:
                byte.append(valore, '?');
                break;
            case TipoGuasto::Rumore:
                if (!byte.empty()) byte.insert(0, Rumore(valore));
                break;
            case TipoGuasto::Doppia:
                byte += std::string(byte);
                break;
            case TipoGuasto::Ordine:
                if (byte.size() > 1) byte[1] = static_cast<char>(byte[1] + 1);
                break;
        }
    }
    if (muto_) {
        esito.Colpito = true;
        esito.Byte.clear();
    }
    return esito;
}

}  // namespace lapvane::strumento
