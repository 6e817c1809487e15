#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "project/DatiProgetto.h"
#include "shell/Voci.h"

namespace lapvane {

// What there is to know of sensor types, curve channels and alarm thresholds: link, editors,
// library and manual all read it here.

/// A sensor type: its word in the files ("opt" before it is its button in the library's editor),
/// the scale between a physical value and the integer of the instrument, its name there, the
/// captions of the table's columns (Windows-1252).
struct TipoSensore {
    std::string_view Tipo;
    int Fattore;
    Voce Testo;
    std::string_view EtichettaX;
    std::string_view EtichettaY;
    std::string_view UnitaY;  ///< empty: it has none
};

/// The eight types, in the order of the option buttons.
inline constexpr std::array<TipoSensore, 8> kTipiSensore = {{
    {"TemperaturaOlio", 10, Voce::OpzioneTemperaturaOlio, "Bit",
     "Y (\xB0"
     "C)",
     "\xB0"
     "C"},
    {"TemperaturaAcqua", 10, Voce::OpzioneTemperaturaAcqua, "Bit",
     "Y (\xB0"
     "C)",
     "\xB0"
     "C"},
    {"Pressione", 1000, Voce::OpzionePressione, "Bit", "Y (bar)", "bar"},
    {"PressioneTurbo", 1000, Voce::CanalePressioneTurbo, "mV", "Y (bar)", "bar"},
    {"LivelloBenzina", 10, Voce::LivelloBenzina, "Bit", "Y", "l"},
    {"Altro", 1, Voce::OpzioneAltro, "Bit", "Y ( )", ""},
    {"SensoreG", 1000, Voce::SensoreG, "mV", "G", "G"},
    {"SensoreLambda", 100, Voce::SondaLambda, "mV", "A/F", "A/F"},
}};

/// The type of that word; one that is none does not compile.
consteval const TipoSensore* TipoNominato(std::string_view tipo) {
    std::size_t i = 0;
    while (kTipiSensore.at(i).Tipo != tipo) ++i;
    return &kTipiSensore[i];
}

/// A curve channel of the instrument: the sensor type that fits it, its fields of the project, the
/// controls of its frame in the sensors' editor, its texts. Two channels share a type. A channel
/// whose input is not for choice has neither the field nor the controls of it.
struct CanaleSensore {
    const TipoSensore* Sensore;
    Voce Titolo;
    bool RecordProgetto::*Abil;
    std::string RecordProgetto::*Nome;
    std::string RecordProgetto::*TCamp;
    std::int16_t RecordProgetto::*Chann;
    Voce TestoManca;    ///< said when it is on and has no sensor
    Voce TestoInvio;    ///< said while its curve is written
    Voce TestoLettura;  ///< said while its curve is read
    std::string_view fraCanale;
    std::string_view chkAbil;
    std::string_view cboNome, lblNome;
    std::string_view cboTCamp, lblTCamp;
    std::string_view cboChann = {}, lblChann = {};
};

inline constexpr std::size_t kCanaleTO = 0, kCanalePO = 1, kCanalePB = 2, kCanaleTA = 3,
                             kCanaleLB = 4, kCanaleCambio = 5, kCanaleLambda = 6, kCanalePT = 7,
                             kCanaleSG = 8;

/// The nine channels; the position is the number that the transfer routines take.
inline constexpr std::array<CanaleSensore, 9> kCanaliSensore = {{
    {TipoNominato("TemperaturaOlio"), Voce::TemperaturaOlio, &RecordProgetto::AbilTO,
     &RecordProgetto::TemperaturaOlio, &RecordProgetto::TCampTO, nullptr,
     Voce::IncompletoTemperaturaOlio, Voce::InvioCurvaTemperaturaOlio,
     Voce::LetturaCurvaTemperaturaOlio, "fraTempOlio", "chkAbilTO", "cboTemperaturaOlio0",
     "lblNomeTO", "cboTCampTO", "lblTCTO"},
    {TipoNominato("Pressione"), Voce::PressioneOlio, &RecordProgetto::AbilPO,
     &RecordProgetto::PressioneOlio, &RecordProgetto::TCampPO, nullptr,
     Voce::IncompletoPressioneOlio, Voce::InvioCurvaPressioneOlio, Voce::LetturaCurvaPressioneOlio,
     "fraPressOlio", "chkAbilPO", "cboPressione0", "lblNomePO", "cboTCampPO", "lblTCPO"},
    {TipoNominato("Pressione"), Voce::PressioneBenzina, &RecordProgetto::AbilPB,
     &RecordProgetto::PressioneBenzina, &RecordProgetto::TCampPB, nullptr,
     Voce::IncompletoPressioneBenzina, Voce::InvioCurvaPressioneBenzina,
     Voce::LetturaCurvaPressioneBenzina, "fraPressBenzina", "chkAbilPB", "cboPressione1",
     "lblNomePB", "cboTCampPB", "lblTCPB"},
    {TipoNominato("TemperaturaAcqua"), Voce::TemperaturaAcqua, &RecordProgetto::AbilTA,
     &RecordProgetto::TemperaturaAcqua, &RecordProgetto::TCampTA, nullptr,
     Voce::IncompletoTemperaturaAcqua, Voce::InvioCurvaTemperaturaAcqua,
     Voce::LetturaCurvaTemperaturaAcqua, "fraTempAcqua", "chkAbilTA", "cboTemperaturaAcqua0",
     "lblNomeTA", "cboTCampTA", "lblTCTA"},
    {TipoNominato("LivelloBenzina"), Voce::LivelloBenzina, &RecordProgetto::AbilLB,
     &RecordProgetto::LivelloBenzina, &RecordProgetto::TCampLB, nullptr,
     Voce::IncompletoLivelloBenzina, Voce::InvioCurvaLivelloBenzina,
     Voce::LetturaCurvaLivelloBenzina, "fraLivBenzina", "chkAbilLB", "cboLivelloBenzina0",
     "lblNomeLB", "cboTCampLB", "lblTCLB"},
    {TipoNominato("Altro"), Voce::Marcia, &RecordProgetto::AbilCambio, &RecordProgetto::Cambio,
     &RecordProgetto::TCampCambio, &RecordProgetto::ChannCambio, Voce::IncompletoMarcia,
     Voce::InvioCurvaMarcia, Voce::LetturaCurvaMarcia, "fraCambio", "chkAbilCambio", "cboAltro0",
     "lblNomeCambio", "cboTCampCambio", "lblTCCambio", "cboChannCambio", "lblCanaleCambio"},
    {TipoNominato("SensoreLambda"), Voce::SondaLambda, &RecordProgetto::AbilSensoreLambda,
     &RecordProgetto::SensoreLambda, &RecordProgetto::TCampSensoreLambda,
     &RecordProgetto::ChannSensoreLambda, Voce::IncompletoLambda, Voce::InvioCurvaLambda,
     Voce::LetturaCurvaLambda, "fraSensoreLambda", "chkAbilSensoreLambda", "cboSensoreLambda",
     "lblNomeLambda", "cboTCampSensoreLambda", "lblTCLambda", "cboChannSensoreLambda",
     "lblCanaleLambda"},
    {TipoNominato("PressioneTurbo"), Voce::PressioneTurbo, &RecordProgetto::AbilPT,
     &RecordProgetto::PressioneTurbo, &RecordProgetto::TCampPT, &RecordProgetto::ChannPT,
     Voce::IncompletoPressioneTurbo, Voce::InvioCurvaPressioneTurbo,
     Voce::LetturaCurvaPressioneTurbo, "fraPressioneTurbo", "chkAbilPT", "cboPressioneTurbo",
     "lblNomePT", "cboTCampPT", "lblTCPT", "cboChannPT", "lblCanalePT"},
    {TipoNominato("SensoreG"), Voce::SensoreG, &RecordProgetto::AbilSG, &RecordProgetto::SensoreG,
     &RecordProgetto::TCampSG, &RecordProgetto::ChannSG, Voce::IncompletoSensoreG,
     Voce::InvioCurvaSensoreG, Voce::LetturaCurvaSensoreG, "fraSensoreG", "chkAbilSG", "cboSG",
     "lblNomeG", "cboTCampSG", "lblTCG", "cboChannSG", "lblCanaleSG"},
}};

/// The order in which missing sensors are told.
inline constexpr std::array<std::size_t, 9> kOrdineControllo = {
    kCanaleTO, kCanalePO, kCanaleTA,     kCanalePB,    kCanaleLB,
    kCanalePT, kCanaleSG, kCanaleCambio, kCanaleLambda};

enum class UnitaSoglia { Nessuna, Temperatura, Pressione, Volt };

/// An alarm threshold: its check box, its box, the fields behind them, the factor between what is
/// shown and what is stored, the highest value as the text that replaces a higher one.
struct SogliaAllarme {
    std::string_view Spunta;
    std::string_view Casella;
    Voce Didascalia;
    bool RecordProgetto::*Attiva;
    std::int32_t RecordProgetto::*Valore;
    int Fattore;
    std::string_view Massimo;
    UnitaSoglia Unita;
};

/// The six thresholds: five channels and the battery, in the order of the record.
inline constexpr std::array<SogliaAllarme, 6> kSoglie = {{
    {"chkTO", "txtTO", Voce::SogliaTemperaturaOlio, &RecordProgetto::chkTO, &RecordProgetto::mskTO,
     kCanaliSensore[kCanaleTO].Sensore->Fattore, "999.9", UnitaSoglia::Temperatura},
    {"chkPO", "txtPO", Voce::SogliaPressioneOlio, &RecordProgetto::chkPO, &RecordProgetto::mskPO,
     kCanaliSensore[kCanalePO].Sensore->Fattore, "9.999", UnitaSoglia::Pressione},
    {"chkPB", "txtPB", Voce::SogliaPressioneBenzina, &RecordProgetto::chkPB, &RecordProgetto::mskPB,
     kCanaliSensore[kCanalePB].Sensore->Fattore, "9.999", UnitaSoglia::Pressione},
    {"chkTA", "txtTA", Voce::SogliaTemperaturaAcqua, &RecordProgetto::chkTA, &RecordProgetto::mskTA,
     kCanaliSensore[kCanaleTA].Sensore->Fattore, "999.9", UnitaSoglia::Temperatura},
    {"chkLB", "txtLB", Voce::SogliaLivelloBenzina, &RecordProgetto::chkLB, &RecordProgetto::mskLB,
     kCanaliSensore[kCanaleLB].Sensore->Fattore, "9999", UnitaSoglia::Nessuna},
    {"chkTB", "txtTB", Voce::SogliaTensioneBatteria, &RecordProgetto::chkTB, &RecordProgetto::mskTB,
     10, "999.9", UnitaSoglia::Volt},
}};

}  // namespace lapvane
