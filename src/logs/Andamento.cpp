#include "logs/Andamento.h"

#include <algorithm>
#include <cmath>

#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr double kBytePagina = 256.0;

std::string Con(Voce frase, int uno) {
    return Testo(frase) + " " + TestoNumero(uno);
}

int InKb(std::int32_t byte) {
    return static_cast<int>(std::lround(byte / 1024.0));
}

}  // namespace

std::string FraseQuanto(const AndamentoScarico& andamento) {
    if (andamento.Totale <= 0) return {};
    return TestoNumero(InKb(andamento.Letti)) + " / " + TestoNumero(InKb(andamento.Totale)) + " kB";
}

std::string FraseResta(const AndamentoScarico& andamento) {
    if (!andamento.Resta) return {};
    // Minutes until it is nearly over, then steps that a glance can follow; both rounded up.
    constexpr int kAMinuti = 90;
    constexpr int kPasso = 5;
    const int secondi = std::max(*andamento.Resta, 1);
    if (secondi > kAMinuti) return Con(Voce::ScaricoResta, (secondi + 59) / 60) + " min";
    return Con(Voce::ScaricoResta, (secondi + kPasso - 1) / kPasso * kPasso) + " s";
}

std::string FraseDisturbi(const AndamentoScarico& andamento) {
    return Con(Voce::ScaricoScartate, andamento.Scartate) + "    " +
           Con(Voce::ScaricoRipetuti, andamento.Ripetuti);
}

void PassoScarico::Pagina(std::int64_t ms) {
    // A mean that forgets within some sixteen pages, three seconds: a box that stood open or a
    // reply that never came is soon over.
    constexpr int kMemoria = 16;
    if (ultima_) {
        misurate_ = std::min(misurate_ + 1, kMemoria);
        msPagina_ += (static_cast<double>(ms - *ultima_) - msPagina_) / misurate_;
    }
    ultima_ = ms;
}

std::optional<int> PassoScarico::Secondi(std::int32_t byte) const {
    constexpr int kAbbastanza = 8;
    if (misurate_ < kAbbastanza) return std::nullopt;
    return static_cast<int>(std::ceil(std::max(byte, 0) / kBytePagina * msPagina_ / 1000.0));
}

}  // namespace lapvane
