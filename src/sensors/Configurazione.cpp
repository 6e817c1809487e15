#include "sensors/Configurazione.h"

#include <type_traits>

#include "shell/NumeroTesto.h"
#include "shell/TabelleNomi.h"

namespace lapvane {

namespace {

using R = RecordProgetto;

constexpr std::array<bool R::*, PagineSetup::kFlag> kAbilitate = {
    &R::PaginaAbilitata1, &R::PaginaAbilitata2, &R::PaginaAbilitata3, &R::PaginaAbilitata4,
    &R::PaginaAbilitata5, &R::PaginaAbilitata6, &R::PaginaAbilitata7, &R::PaginaAbilitata8,
    &R::PaginaAbilitata9, &R::PaginaAbilitata10};

}  // namespace

const std::array<ListaSetup, 4> kListeSetup = {{
    {"cboLingua", &R::Lingua, &ListaLingue, Voce::LinguaDisplay},
    {"cboUMVelocita", &R::UMVel, &ListaUMVelocita, Voce::UnitaVelocita},
    {"cboUMTemperatura", &R::UMTemp, &ListaUMTemperatura, Voce::UnitaTemperatura},
    {"cboUMPressione", &R::UMPress, &ListaUMPressione, Voce::UnitaPressione},
}};

const std::array<NumeroSetup, 9> kNumeriSetup = {{
    {"txtAbilRecVel", &R::mskAbilRecVel, Voce::AvvioOltreLaVelocita},
    {"txtStopRecSecondi", &R::mskStopRecSecondi, Voce::ArrestoDopo},
    {"txtTempoMsgGiro", &R::TempoMsgGiro, Voce::MessaggioGiro},
    {"txtTempoVisGiro", &R::TempoVisGiro, Voce::VisualizzazioneTempoGiro},
    {"txtSettoreCrono0", &R::Settore1, Voce::Settore1, true},
    {"txtSettoreCrono1", &R::Settore2, Voce::Settore2, true},
    {"txtSettoreCrono2", &R::Settore3, Voce::Settore3, true},
    {"txtSettoreCrono3", &R::Settore4, Voce::Settore4, true},
    {"txtSettoreCrono4", &R::Settore5, Voce::Settore5, true},
}};

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

std::optional<std::int32_t> LeggiNumero(const NumeroSetup& numero, std::string_view testo) {
    if (numero.Lungo) return LeggiInt32(testo);
    return LeggiInt16(testo);
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
