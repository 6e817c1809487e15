#include "sensors/Allarmi.h"

#include <algorithm>
#include <variant>

#include "shell/NumeroTesto.h"
#include "shell/Utility.h"

namespace lapvane {

namespace {

using R = RecordProgetto;

/// Leading number of a text with a point; 0 for what is none.
double Valore(std::string_view testo) {
    return CampoNumerico(testo.data(), testo.data() + testo.size());
}

/// List position of a type counted from 1, -1 for none.
int Posizione(const FunzioneAllarme& funzione, const RecordProgetto& record) {
    const auto* testo = std::get_if<std::string R::*>(&funzione.Tipo);
    const std::int32_t tipo = testo != nullptr ? LeggiInt32(record.**testo).value_or(0)
                                               : record.*std::get<std::int16_t R::*>(funzione.Tipo);
    return std::max(tipo, 0) - 1;
}

}  // namespace

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

std::optional<std::string_view> CasellaErrata(const ControlliEditor& controlli) {
    for (const LuceShift& luce : kShiftLight) {
        if (!LeggiInt16(controlli.Testo(luce.Casella))) return luce.Casella;
    }
    for (const SogliaAllarme& soglia : kSoglie) {
        if (!controlli.Spunta(soglia.Spunta)) continue;
        if (!LeggiNumero(controlli.Testo(soglia.Casella))) return soglia.Casella;
    }
    return std::nullopt;
}

void MostraDatiAllarmi(const RecordProgetto& record, ControlliEditor& controlli) {
    for (const LuceShift& luce : kShiftLight) {
        controlli.Testo(luce.Casella, TestoNumero(std::int64_t{record.*luce.Campo}));
    }
    for (const SogliaAllarme& soglia : kSoglie) {
        controlli.Spunta(soglia.Spunta, record.*soglia.Attiva);
        controlli.Testo(soglia.Casella, MostraSoglia(soglia, record.*soglia.Valore));
    }
    for (const FunzioneAllarme& funzione : kFunzioniAllarme) {
        const bool accesa = record.*funzione.Attiva;
        controlli.Spunta(funzione.Spunta, accesa);
        if (funzione.Voci == nullptr) {
            controlli.Testo(funzione.Lista, record.*std::get<std::string R::*>(funzione.Tipo));
        } else {
            controlli.Indice(funzione.Lista, accesa ? Posizione(funzione, record) : -1);
        }
    }
}

void SalvaDatiAllarmi(const ControlliEditor& controlli, RecordProgetto& record) {
    for (const LuceShift& luce : kShiftLight) {
        record.*luce.Campo = LeggiInt16(controlli.Testo(luce.Casella)).value();
    }
    for (const SogliaAllarme& soglia : kSoglie) {
        record.*soglia.Attiva = controlli.Spunta(soglia.Spunta);
        record.*soglia.Valore = ValoreSoglia(soglia, controlli.Testo(soglia.Casella));
    }
    for (const FunzioneAllarme& funzione : kFunzioniAllarme) {
        record.*funzione.Attiva = controlli.Spunta(funzione.Spunta);
        const auto tipo = static_cast<std::int16_t>(
            funzione.Voci == nullptr ? 0 : controlli.Indice(funzione.Lista) + 1);
        if (const auto* testo = std::get_if<std::string R::*>(&funzione.Tipo)) {
            record.** testo =
                funzione.Voci == nullptr ? controlli.Testo(funzione.Lista) : TestoNumero(int{tipo});
        } else {
            record.*std::get<std::int16_t R::*>(funzione.Tipo) = tipo;
        }
    }
}

std::string NomeUnita(const std::vector<std::string>& lista, std::int16_t indice) {
    const auto posto = static_cast<std::size_t>(indice);
    return indice >= 0 && posto < lista.size() ? lista[posto] : std::string();
}

}  // namespace lapvane
