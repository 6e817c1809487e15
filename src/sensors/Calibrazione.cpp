#include "sensors/Calibrazione.h"

#include "shell/NumeroTesto.h"
#include "shell/Utility.h"

namespace lapvane {

namespace {

constexpr std::string_view kFondoScala = "1024";
constexpr int kFattoreLitri = 10;

}  // namespace

std::string Calibrazione::SistemaLitri(std::string_view litri) {
    if (litri.empty()) return "0.0";
    // Kept: what is no number passes as well.
    std::string sistemati = VirgolaInPunto(litri);
    return FormattaDecimali(sistemati, kFattoreLitri);
}

void Calibrazione::Misura(const std::string& litri) {
    if (Piena()) return;
    const auto n = static_cast<std::size_t>(numeroPunto_);
    storiaX_[n] = TestoNumero(std::int64_t{ValoreBenzina});
    storiaY_[n] = litri;
    tabella_.X(numeroPunto_, storiaX_[n]);
    tabella_.Y(numeroPunto_, litri);
    tabella_.Spunta(numeroPunto_, true);
    ++numeroPunto_;
}

void Calibrazione::FineProcedura() {
    StatoCalibrazione = 2;
    if (numeroPunto_ == 0) return;
    if (tabella_.X(0) > tabella_.X(numeroPunto_ - 1)) {
        for (int i = 0; i < numeroPunto_; ++i) {
            const auto n = static_cast<std::size_t>(numeroPunto_ - 1 - i);
            tabella_.X(i, storiaX_[n]);
            tabella_.Y(i, storiaY_[n]);
        }
    }
    for (int i = numeroPunto_; i < TabellaPunti::kRighe; ++i) {
        tabella_.X(i, kFondoScala);
        tabella_.Y(i, tabella_.Riga(i - 1).Y);
        tabella_.Spunta(i, true);
    }
}

}  // namespace lapvane
