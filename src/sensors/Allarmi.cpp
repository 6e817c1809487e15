#include "sensors/Allarmi.h"

#include "shell/NumeroTesto.h"
#include "shell/Utility.h"

namespace lapvane {

namespace {

using R = RecordProgetto;

/// Leading number of a text with a point; 0 for what is none.
double Valore(std::string_view testo) {
    return CampoNumerico(testo.data(), testo.data() + testo.size());
}

}  // namespace

const std::array<std::int16_t R::*, 5> kShiftLight = {&R::Led0, &R::Led1, &R::Led2, &R::Led3,
                                                      &R::Led4};

std::string MostraSoglia(const SogliaAllarme& soglia, std::int32_t valore) {
    std::string testo = TestoNumero(static_cast<double>(valore) / soglia.Fattore);
    return FormattaDecimali(testo, soglia.Fattore);
}

std::string SistemaSoglia(const SogliaAllarme& soglia, std::string_view testo) {
    std::string sistemato = VirgolaInPunto(Rifila(testo));
    FormattaDecimali(sistemato, soglia.Fattore);
    if (Valore(sistemato) > Valore(soglia.Massimo)) return std::string(soglia.Massimo);
    return sistemato;
}

std::int32_t ValoreSoglia(const SogliaAllarme& soglia, std::string_view testo) {
    return ConvertiInt32(PrefissoNumerico(testo) * soglia.Fattore);
}

int PosizioneTipo(std::int64_t tipo, std::size_t voci) {
    return tipo >= 1 && tipo <= static_cast<std::int64_t>(voci) ? static_cast<int>(tipo) - 1 : -1;
}

int PosizioneTipo(std::string_view tipo, std::size_t voci) {
    return PosizioneTipo(std::int64_t{LeggiInt32(tipo).value_or(0)}, voci);
}

std::string NomeUnita(const std::vector<std::string>& lista, std::int16_t indice) {
    const auto posto = static_cast<std::size_t>(indice);
    return indice >= 0 && posto < lista.size() ? lista[posto] : std::string();
}

}  // namespace lapvane
