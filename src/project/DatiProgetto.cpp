#include "project/DatiProgetto.h"

#include "platform/ErroreRuntime.h"
#include "shell/Principale.h"

namespace lapvane {

RecordProgetto DatiProgetto;

const std::array<DescrizioneCampo, kNumCampiProgetto> kCampiProgetto = {{
    {"NomeProgetto", &RecordProgetto::NomeProgetto},
    {"DataCreazione", &RecordProgetto::DataCreazione},
    {"DataUltimaModifica", &RecordProgetto::DataUltimaModifica},
    {"AutoreProgetto", &RecordProgetto::AutoreProgetto},
    {"Strumento", &RecordProgetto::Strumento},
    {"Veicolo", &RecordProgetto::Veicolo},
    {"NoteProgetto", &RecordProgetto::NoteProgetto},
    {"Lingua", &RecordProgetto::Lingua},
    {"UMVel", &RecordProgetto::UMVel},
    {"UMTemp", &RecordProgetto::UMTemp},
    {"UMPress", &RecordProgetto::UMPress},
    {"MaxPagine", &RecordProgetto::MaxPagine, 9},
    {"Pagina1", &RecordProgetto::Pagina1},
    {"Pagina8", &RecordProgetto::Pagina8},
    {"Pagina9", &RecordProgetto::Pagina9},
    {"Pagina10", &RecordProgetto::Pagina10},
    {"PaginaAbilitata1", &RecordProgetto::PaginaAbilitata1},
    {"PaginaAbilitata2", &RecordProgetto::PaginaAbilitata2},
    {"PaginaAbilitata3", &RecordProgetto::PaginaAbilitata3},
    {"PaginaAbilitata4", &RecordProgetto::PaginaAbilitata4},
    {"PaginaAbilitata5", &RecordProgetto::PaginaAbilitata5},
    {"PaginaAbilitata6", &RecordProgetto::PaginaAbilitata6},
    {"PaginaAbilitata7", &RecordProgetto::PaginaAbilitata7},
    {"PaginaAbilitata8", &RecordProgetto::PaginaAbilitata8},
    {"PaginaAbilitata9", &RecordProgetto::PaginaAbilitata9},
    {"PaginaAbilitata10", &RecordProgetto::PaginaAbilitata10},
    {"NumAccRPM", &RecordProgetto::NumAccRPM, 1},
    {"TCampRPM", &RecordProgetto::TCampRPM},
    {"LAPO", &RecordProgetto::LAPO},
    {"LAAL", &RecordProgetto::LAAL},
    {"ImpulsiRuota", &RecordProgetto::ImpulsiRuota, 1},
    {"DiametroRuota", &RecordProgetto::DiametroRuota, 1},
    {"TCampVV", &RecordProgetto::TCampVV},
    {"TemperaturaOlio", &RecordProgetto::TemperaturaOlio},
    {"TCampTO", &RecordProgetto::TCampTO},
    {"AbilTO", &RecordProgetto::AbilTO},
    {"PressioneOlio", &RecordProgetto::PressioneOlio},
    {"TCampPO", &RecordProgetto::TCampPO},
    {"AbilPO", &RecordProgetto::AbilPO},
    {"TemperaturaAcqua", &RecordProgetto::TemperaturaAcqua},
    {"TCampTA", &RecordProgetto::TCampTA},
    {"AbilTA", &RecordProgetto::AbilTA},
    {"PressioneBenzina", &RecordProgetto::PressioneBenzina},
    {"TCampPB", &RecordProgetto::TCampPB},
    {"AbilPB", &RecordProgetto::AbilPB},
    {"LivelloBenzina", &RecordProgetto::LivelloBenzina},
    {"TCampLB", &RecordProgetto::TCampLB},
    {"AbilLB", &RecordProgetto::AbilLB},
    {"PressioneTurbo", &RecordProgetto::PressioneTurbo},
    {"TCampPT", &RecordProgetto::TCampPT},
    {"AbilPT", &RecordProgetto::AbilPT},
    {"SensoreG", &RecordProgetto::SensoreG},
    {"TCampSG", &RecordProgetto::TCampSG},
    {"AbilSG", &RecordProgetto::AbilSG},
    {"Cambio", &RecordProgetto::Cambio},
    {"TCampCambio", &RecordProgetto::TCampCambio},
    {"AbilCambio", &RecordProgetto::AbilCambio},
    {"Led0", &RecordProgetto::Led0},
    {"Led1", &RecordProgetto::Led1},
    {"Led2", &RecordProgetto::Led2},
    {"Led3", &RecordProgetto::Led3},
    {"Led4", &RecordProgetto::Led4},
    {"LedGiallo", &RecordProgetto::LedGiallo},
    {"LedVerde", &RecordProgetto::LedVerde},
    {"LedBlu", &RecordProgetto::LedBlu},
    {"TipoLedGiallo", &RecordProgetto::TipoLedGiallo},
    {"TipoLedVerde", &RecordProgetto::TipoLedVerde},
    {"TipoLedBlu", &RecordProgetto::TipoLedBlu},
    {"chkTO", &RecordProgetto::chkTO},
    {"mskTO", &RecordProgetto::mskTO},
    {"chkPO", &RecordProgetto::chkPO},
    {"mskPO", &RecordProgetto::mskPO},
    {"chkPB", &RecordProgetto::chkPB},
    {"mskPB", &RecordProgetto::mskPB},
    {"chkTA", &RecordProgetto::chkTA},
    {"mskTA", &RecordProgetto::mskTA},
    {"chkLB", &RecordProgetto::chkLB},
    {"mskLB", &RecordProgetto::mskLB},
    {"chkTB", &RecordProgetto::chkTB},
    {"mskTB", &RecordProgetto::mskTB},
    {"chkIngresso", &RecordProgetto::chkIngresso},
    {"chkUscita", &RecordProgetto::chkUscita},
    {"TipoIngresso", &RecordProgetto::TipoIngresso},
    {"TipoUscita", &RecordProgetto::TipoUscita},
    {"chkAbilRecLap", &RecordProgetto::chkAbilRecLap},
    {"mskAbilRecVel", &RecordProgetto::mskAbilRecVel},
    {"mskStopRecSecondi", &RecordProgetto::mskStopRecSecondi},
    {"TempoMsgGiro", &RecordProgetto::TempoMsgGiro},
    {"TempoVisGiro", &RecordProgetto::TempoVisGiro},
    {"Settore1", &RecordProgetto::Settore1},
    {"Settore2", &RecordProgetto::Settore2},
    {"Settore3", &RecordProgetto::Settore3},
    {"Settore4", &RecordProgetto::Settore4},
    {"Settore5", &RecordProgetto::Settore5},
    {"SensoreLambda", &RecordProgetto::SensoreLambda},
    {"TCampSensoreLambda", &RecordProgetto::TCampSensoreLambda},
    {"AbilSensoreLambda", &RecordProgetto::AbilSensoreLambda},
    {"ChannSG", &RecordProgetto::ChannSG, 1},
    {"ChannCambio", &RecordProgetto::ChannCambio},
    {"ChannPT", &RecordProgetto::ChannPT},
    {"ChannSensoreLambda", &RecordProgetto::ChannSensoreLambda, 1},
}};

std::size_t PosizioneCampo(std::string_view nome) {
    for (std::size_t i = 0; i < kCampiProgetto.size(); ++i) {
        if (kCampiProgetto[i].Nome == nome) return i;
    }
    throw ErroreRuntime(NumeroErrore::Subscript, Lavoro::CercareCampo);
}

void AzzeraCampo(const DescrizioneCampo& descrizione) {
    std::visit(
        [&descrizione](auto campo) {
            auto& valore = DatiProgetto.*campo;
            using Tipo = std::remove_reference_t<decltype(valore)>;
            if constexpr (std::is_same_v<Tipo, std::string>) {
                valore.clear();
            } else {
                valore = static_cast<Tipo>(descrizione.Nuovo);
            }
        },
        descrizione.Campo);
}

void ValoriInizialiProgetto() {
    for (const DescrizioneCampo& descrizione : kCampiProgetto) AzzeraCampo(descrizione);
    AbilitaModificaProgetto();
}

void AbilitaModificaProgetto() {
    Principale& finestra = principale();
    finestra.AbilitaTitolo(Titolo::Configure, true);
    finestra.AbilitaPulsante(Comando::Setup, true);
    finestra.AbilitaPulsante(Comando::Sensor, true);
    finestra.AbilitaPulsante(Comando::Alarm, true);
    finestra.AbilitaMenu(Comando::Note, true);
}

}  // namespace lapvane
