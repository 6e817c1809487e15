#include "instrument/Protocollo.h"

#include <algorithm>
#include <array>

#include "device/Codec.h"

namespace lapvane::strumento {

namespace {

constexpr std::size_t kConferma = 5;  // "R", code, two digits, "*"

constexpr std::array<Comando, 16> kComandi = {{
    {1, 4, kConferma, Azione::Saluto, Record::Numero, "handshake"},
    {2, 4, 13, Azione::Identita, Record::Numero, "identity"},
    {9, 4, 19, Azione::Analogici, Record::Numero, "analogue inputs"},
    {14, 8, 130, Azione::BloccoLog, Record::Numero, "log block"},
    {18, 30, kConferma, Azione::ScriviRecord, Record::Setup1, "write setup 1"},
    {19, 4, 30, Azione::LeggiRecord, Record::Setup1, "read setup 1"},
    {20, 52, kConferma, Azione::ScriviRecord, Record::Allarmi, "write alarms"},
    {21, 4, 31, Azione::LeggiRecord, Record::Allarmi, "read alarms"},
    {22, 38, kConferma, Azione::ScriviRecord, Record::Sensori, "write sensors"},
    {23, 4, 21, Azione::LeggiRecord, Record::Sensori, "read sensors"},
    {24, 101, kConferma, Azione::ScriviCurva, Record::Numero, "write curve"},
    {25, 5, 99, Azione::LeggiCurva, Record::Numero, "read curve"},
    {28, 26, kConferma, Azione::ScriviRecord, Record::Setup2, "write setup 2"},
    {29, 4, 16, Azione::LeggiRecord, Record::Setup2, "read setup 2"},
    {37, 4, 36, Azione::Vivo, Record::Numero, "live values"},
    {38, 6, 130, Azione::BloccoGiri, Record::Numero, "lap block"},
}};

bool ChecksumGiusto(std::string_view frame) {
    const std::size_t lunghezza = frame.size() - 2;
    return CalcolaChecksum(frame.substr(0, lunghezza)) == frame.substr(lunghezza);
}

}  // namespace

const Comando* CercaComando(int codice) {
    const auto trovato = std::find_if(kComandi.begin(), kComandi.end(),
                                      [codice](const Comando& c) { return c.Codice == codice; });
    return trovato == kComandi.end() ? nullptr : &*trovato;
}

std::uint32_t Richiesta::Indirizzo() const {
    std::uint32_t indirizzo = 0;
    for (const char c : Dati()) indirizzo = (indirizzo << 8) | static_cast<unsigned char>(c);
    return indirizzo;
}

std::vector<Richiesta> LettoreFrame::Ricevi(std::string_view byte, std::int64_t ms) {
    std::vector<Richiesta> trovate;
    if (InAttesa() && ms - ultimo_ >= kQuiete) Estrai(true, trovate);
    if (byte.empty()) return trovate;
    attesa_ += byte;
    ultimo_ = ms;
    Estrai(false, trovate);
    return trovate;
}

void LettoreFrame::Scarta(std::size_t quanti) {
    attesa_.erase(0, quanti);
    scartati_ += quanti;
}

void LettoreFrame::Estrai(bool quiete, std::vector<Richiesta>& trovate) {
    while (!attesa_.empty()) {
        const std::size_t inizio = attesa_.find('H');
        Scarta(std::min(inizio, attesa_.size()));
        if (attesa_.empty()) return;
        if (attesa_.size() == 1) {
            if (!quiete) return;
            Scarta(1);
            continue;
        }
        const Comando* comando = CercaComando(static_cast<unsigned char>(attesa_[1]));
        if (comando == nullptr) {
            Scarta(1);
            continue;
        }
        if (attesa_.size() < comando->Richiesta) {
            // A whole frame may hide behind one that will never be complete.
            if (!quiete) return;
            Scarta(1);
            continue;
        }
        std::string frame = attesa_.substr(0, comando->Richiesta);
        if (ChecksumGiusto(frame)) {
            attesa_.erase(0, frame.size());
            trovate.push_back({comando, std::move(frame)});
        } else {
            ++errati_;
            Scarta(1);
        }
    }
}

}  // namespace lapvane::strumento
