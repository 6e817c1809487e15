#include "sensors/Configurazione.h"

#include <algorithm>
#include <type_traits>

#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

using R = RecordProgetto;

constexpr std::array<bool R::*, PagineSetup::kFlag> kAbilitate = {
    &R::PaginaAbilitata1, &R::PaginaAbilitata2, &R::PaginaAbilitata3, &R::PaginaAbilitata4,
    &R::PaginaAbilitata5, &R::PaginaAbilitata6, &R::PaginaAbilitata7, &R::PaginaAbilitata8,
    &R::PaginaAbilitata9, &R::PaginaAbilitata10};

constexpr std::string_view kAvvioAlGiro = "chkAbilRecLAP";

std::string MostraNumero(const NumeroSetup& numero, const RecordProgetto& record) {
    return std::visit(
        [&](auto membro) {
            if constexpr (std::is_same_v<decltype(membro), std::string R::*>) {
                return record.*membro;
            } else {
                return TestoNumero(std::int64_t{record.*membro});
            }
        },
        numero.Campo);
}

void SalvaNumero(const NumeroSetup& numero, std::int32_t valore, RecordProgetto& record) {
    std::visit(
        [&](auto membro) {
            using T = std::remove_reference_t<decltype(record.*membro)>;
            if constexpr (std::is_same_v<T, std::string>) {
                record.*membro = TestoNumero(valore);
            } else {
                record.*membro = static_cast<T>(valore);
            }
        },
        numero.Campo);
}

}  // namespace

std::optional<std::int32_t> LeggiNumero(const NumeroSetup& numero, std::string_view testo) {
    if (numero.Lungo) return LeggiInt32(testo);
    return LeggiInt16(testo);
}

std::optional<std::size_t> NumeroErrato(const ControlliEditor& controlli) {
    for (std::size_t i = 0; i < kNumeriSetup.size(); ++i) {
        if (!LeggiNumero(kNumeriSetup[i], controlli.Testo(kNumeriSetup[i].Casella))) return i;
    }
    return std::nullopt;
}

void MostraDatiSetup(const RecordProgetto& record, ControlliEditor& controlli) {
    for (const ListaSetup& lista : kListeSetup) {
        controlli.Indice(lista.Lista, record.*lista.Campo);
    }
    controlli.Spunta(kAvvioAlGiro, record.chkAbilRecLap);
    for (const NumeroSetup& numero : kNumeriSetup) {
        controlli.Testo(numero.Casella, MostraNumero(numero, record));
    }
}

void SalvaDatiSetup(const ControlliEditor& controlli, const PagineSetup& pagine,
                    RecordProgetto& record) {
    for (const ListaSetup& lista : kListeSetup) {
        record.*lista.Campo = static_cast<std::int16_t>(std::max(controlli.Indice(lista.Lista), 0));
    }
    pagine.Salva(record);
    record.chkAbilRecLap = controlli.Spunta(kAvvioAlGiro);
    for (const NumeroSetup& numero : kNumeriSetup) {
        SalvaNumero(numero, LeggiNumero(numero, controlli.Testo(numero.Casella)).value(), record);
    }
}

void PagineSetup::Carica(const RecordProgetto& record) {
    corrente_ = 1;
    ultima_ = record.MaxPagine >= 1 && record.MaxPagine <= kFlag ? record.MaxPagine : kImmagini;
    for (std::size_t i = 0; i < abilitate_.size(); ++i) abilitate_[i] = record.*kAbilitate[i];
}

void PagineSetup::Salva(RecordProgetto& record) const {
    for (std::size_t i = 0; i < abilitate_.size(); ++i) record.*kAbilitate[i] = abilitate_[i];
}

void PagineSetup::Avanti() {
    if (corrente_ < ultima_) ++corrente_;
}

void PagineSetup::Indietro() {
    if (corrente_ > 1) --corrente_;
}

std::string PagineSetup::Conteggio() const {
    return TestoNumeroConSpazio(corrente_) + "/" + TestoNumeroConSpazio(ultima_);
}

const std::string& PagineSetup::File(const RecordProgetto& record) const {
    // Kept: the last page shows the path of page 8, whatever was chosen for page 9.
    return Ultima() ? record.Pagina8 : record.Pagina1;
}

void PagineSetup::Scegli(RecordProgetto& record, const std::string& file) const {
    // Kept: what is chosen for page 9 is stored where nothing of this editor reads it.
    if (corrente_ == 1) record.Pagina1 = file;
    if (corrente_ == kImmagini) record.Pagina9 = file;
}

bool Nominata(std::string_view file) {
    return !file.empty() && file != " ";
}

}  // namespace lapvane
