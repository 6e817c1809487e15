#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace lapvane {

/// Every setting of the instrument and the project's descriptive text. The order of the fields is
/// the order of the project file.
struct RecordProgetto {
    std::string NomeProgetto;
    std::string DataCreazione;
    std::string DataUltimaModifica;
    std::string AutoreProgetto;
    std::string Strumento;
    std::string Veicolo;
    std::string NoteProgetto;
    std::int16_t Lingua = 0;
    std::int16_t UMVel = 0;
    std::int16_t UMTemp = 0;
    std::int16_t UMPress = 0;
    std::int16_t MaxPagine = 0;
    std::string Pagina1;
    std::string Pagina8;
    std::string Pagina9;
    std::string Pagina10;
    bool PaginaAbilitata1 = false;
    bool PaginaAbilitata2 = false;
    bool PaginaAbilitata3 = false;
    bool PaginaAbilitata4 = false;
    bool PaginaAbilitata5 = false;
    bool PaginaAbilitata6 = false;
    bool PaginaAbilitata7 = false;
    bool PaginaAbilitata8 = false;
    bool PaginaAbilitata9 = false;
    bool PaginaAbilitata10 = false;
    std::int16_t NumAccRPM = 0;
    std::string TCampRPM;
    std::int16_t LAPO = 0;
    std::int16_t LAAL = 0;
    std::int16_t ImpulsiRuota = 0;
    std::int16_t DiametroRuota = 0;
    std::string TCampVV;
    std::string TemperaturaOlio;
    std::string TCampTO;
    bool AbilTO = false;
    std::string PressioneOlio;
    std::string TCampPO;
    bool AbilPO = false;
    std::string TemperaturaAcqua;
    std::string TCampTA;
    bool AbilTA = false;
    std::string PressioneBenzina;
    std::string TCampPB;
    bool AbilPB = false;
    std::string LivelloBenzina;
    std::string TCampLB;
    bool AbilLB = false;
    std::string PressioneTurbo;
    std::string TCampPT;
    bool AbilPT = false;
    std::string SensoreG;
    std::string TCampSG;
    bool AbilSG = false;
    std::string Cambio;
    std::string TCampCambio;
    bool AbilCambio = false;
    std::int16_t Led0 = 0;
    std::int16_t Led1 = 0;
    std::int16_t Led2 = 0;
    std::int16_t Led3 = 0;
    std::int16_t Led4 = 0;
    bool LedGiallo = false;
    bool LedVerde = false;
    bool LedBlu = false;
    std::string TipoLedGiallo;
    std::string TipoLedVerde;
    std::string TipoLedBlu;
    bool chkTO = false;
    std::int32_t mskTO = 0;
    bool chkPO = false;
    std::int32_t mskPO = 0;
    bool chkPB = false;
    std::int32_t mskPB = 0;
    bool chkTA = false;
    std::int32_t mskTA = 0;
    bool chkLB = false;
    std::int32_t mskLB = 0;
    bool chkTB = false;
    std::int32_t mskTB = 0;
    bool chkIngresso = false;
    bool chkUscita = false;
    std::int16_t TipoIngresso = 0;
    std::int16_t TipoUscita = 0;
    bool chkAbilRecLap = false;
    std::int32_t mskAbilRecVel = 0;
    std::int32_t mskStopRecSecondi = 0;
    std::int16_t TempoMsgGiro = 0;
    std::int16_t TempoVisGiro = 0;
    std::int32_t Settore1 = 0;
    std::int32_t Settore2 = 0;
    std::int32_t Settore3 = 0;
    std::int32_t Settore4 = 0;
    std::int32_t Settore5 = 0;
    std::string SensoreLambda;
    std::string TCampSensoreLambda;
    bool AbilSensoreLambda = false;
    std::int16_t ChannSG = 0;
    std::int16_t ChannCambio = 0;
    std::int16_t ChannPT = 0;
    std::int16_t ChannSensoreLambda = 0;
};

/// The one project of the running program.
extern RecordProgetto DatiProgetto;

/// Where a field lives in the record; the alternative tells its type.
using CampoProgetto = std::variant<std::string RecordProgetto::*, std::int16_t RecordProgetto::*,
                                   std::int32_t RecordProgetto::*, bool RecordProgetto::*>;

/// One field: its name (the key of its line is "ID_", the name and "="), its place, and its number
/// in a new project (texts are empty; a flag is 0).
struct DescrizioneCampo {
    std::string_view Nome;
    CampoProgetto Campo;
    std::int16_t Nuovo = 0;
};

constexpr std::size_t kNumCampiProgetto = 101;

/// The fields in file order.
extern const std::array<DescrizioneCampo, kNumCampiProgetto> kCampiProgetto;

/// Position of a field in the table; error 9 for a name that is none.
std::size_t PosizioneCampo(std::string_view nome);

/// Sets one field of the record to its value in a new project.
void AzzeraCampo(const DescrizioneCampo& descrizione);

/// Resets the record to a new project, then enables `mnuConfigure`, the buttons Setup, Sensor and
/// Alarm, and `mnuNote`.
void ValoriInizialiProgetto();

/// The same enabling alone: New and a successful Open share it.
void AbilitaModificaProgetto();

}  // namespace lapvane
