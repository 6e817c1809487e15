#include "shell/LoadStrings.h"

#include <cmath>
#include <string_view>

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/NumeroTesto.h"
#include "shell/TestiInterni.h"

namespace lapvane {

std::vector<std::string> Testi;
std::int32_t MetaTesti = 0;
std::int32_t IndiceLingua = 0;
std::int16_t BaseTesti = 0;

namespace {

constexpr Lavoro kLettura = Lavoro::LeggereTesti;

/// The value of a line: what follows its first "=", less one double quote at each end. False
/// without "=".
bool Valore(std::string_view riga, std::string& valore) {
    const std::size_t uguale = riga.find('=');
    if (uguale == std::string_view::npos) return false;
    riga.remove_prefix(uguale + 1);
    if (!riga.empty() && riga.front() == '"') riga.remove_prefix(1);
    if (!riga.empty() && riga.back() == '"') riga.remove_suffix(1);
    valore = riga;
    return true;
}

}  // namespace

void CaricaTesti() {
    const std::filesystem::path percorso = platform().AppPath() / "LANGUAGES.DAT";
    if (!FileEsiste(percorso)) {
        // Kept: the report of a missing file is looked up in the table that is missing, so the
        // program ends with the subscript error of that lookup.
        Testi.clear();
        throw ErroreRuntime(NumeroErrore::Subscript, kLettura, percorso);
    }
    const std::string contenuto = LeggiFile(percorso, kLettura);
    LettoreRighe righe(contenuto);
    const auto guasto = [&percorso] {
        platform().MsgBox(Testo(Voce::TabellaTestiGuasta) + " " + TestoDaPercorso(percorso) + " " +
                              Testo(Voce::TabellaTestiMancante),
                          Buttons::Ok, Icon::Critical, platform().ExeName());
        EndProgram(1);
    };
    const auto prossima = [&] {
        if (righe.Fine()) {
            throw ErroreRuntime(NumeroErrore::InputPastEnd, kLettura, percorso, righe.Numero() + 1);
        }
        return righe.Prossima();
    };
    const auto numero = [&](std::string_view testo) {
        const auto letto = LeggiInt32(testo);
        if (!letto) {
            throw ErroreRuntime(NumeroErrore::TypeMismatch, kLettura, percorso, righe.Numero());
        }
        return *letto;
    };

    if (righe.Fine()) guasto();
    IndiceLingua = numero(righe.Prossima());
    std::string valore;
    if (!Valore(prossima(), valore)) guasto();
    const std::int32_t n = numero(valore);
    // An entry takes two bytes at the least ("=" and the line end): a larger count is a lie that
    // would only cost memory before it fails.
    if (n < 0 || static_cast<std::size_t>(n) > contenuto.size()) {
        throw ErroreRuntime(n < 0 ? NumeroErrore::Subscript : NumeroErrore::InputPastEnd, kLettura,
                            percorso, 2);
    }
    Testi.assign(static_cast<std::size_t>(n) + 1, {});
    for (std::int32_t i = 1; i <= n; ++i) {
        if (!Valore(prossima(), valore)) guasto();
        Testi[static_cast<std::size_t>(i)] = valore;
    }
    MetaTesti = ConvertiInt32(n / 2.0);
}

void CalcolaBaseTesti() {
    BaseTesti = ConvertiInt16(static_cast<double>(MetaTesti) * static_cast<double>(IndiceLingua));
}

namespace {

const std::string& DelFile(int n) {
    const std::int64_t posizione = std::int64_t{BaseTesti} + n;
    if (posizione < 0 || posizione >= static_cast<std::int64_t>(Testi.size())) {
        throw ErroreRuntime(NumeroErrore::Subscript, Lavoro::CercareTesto,
                            platform().AppPath() / "LANGUAGES.DAT", posizione + 2);
    }
    return Testi[static_cast<std::size_t>(posizione)];
}

}  // namespace

const std::string& Testo(Voce voce) {
    constexpr int kPrimoInterno = 335;
    const int n = static_cast<int>(voce);
    if (n < kPrimoInterno) return DelFile(n);
    const TestoInterno& testo = TestiInterni()[static_cast<std::size_t>(n - kPrimoInterno)];
    return !Testi.empty() && IndiceLingua == 0 ? testo.Italiano : testo.Inglese;
}

void SalvaLingua() {
    RiscriviInizio(platform().CurDir() / "LANGUAGES.DAT", TestoNumero(IndiceLingua) + "\r\n",
                   Lavoro::SalvareLingua);
}

}  // namespace lapvane
