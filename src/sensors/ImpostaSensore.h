#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "sensors/TabellaPunti.h"
#include "shell/Voci.h"

namespace lapvane {

/// A sensor type of the editor: its word in the files, the option button that selects it with the
/// number of its caption, and the captions of the table's columns.
struct TipoSensore {
    std::string_view Tipo;
    std::string_view Opzione;
    Voce Testo;
    std::string_view EtichettaX;
    std::string_view EtichettaY;  ///< Windows-1252
};

/// The eight types, in the order of the option buttons.
inline constexpr std::array<TipoSensore, 8> kTipiSensore = {{
    {"TemperaturaOlio", "optTemperaturaOlio", Voce::OpzioneTemperaturaOlio, "Bit",
     "Y (\xB0"
     "C)"},
    {"TemperaturaAcqua", "optTemperaturaAcqua", Voce::OpzioneTemperaturaAcqua, "Bit",
     "Y (\xB0"
     "C)"},
    {"Pressione", "optPressione", Voce::OpzionePressione, "Bit", "Y (bar)"},
    {"PressioneTurbo", "optPressioneTurbo", Voce::CanalePressioneTurbo, "mV", "Y (bar)"},
    {"LivelloBenzina", "optLivelloBenzina", Voce::LivelloBenzina, "Bit", "Y"},
    {"Altro", "optAltro", Voce::OpzioneAltro, "Bit", "Y ( )"},
    {"SensoreG", "optSensoreG", Voce::SensoreG, "mV", "G"},
    {"SensoreLambda", "optSensoreLambda", Voce::SondaLambda, "mV", "A/F"},
}};

/// Position in `kTipiSensore` of the type that a curve channel (0 to 8) takes.
std::size_t TipoDelCanale(int canale);

/// Names of the library sensors of a type, in the library's order.
std::vector<std::string> NomiSensori(std::string_view tipo);

/// The first sensor of that name, of any type; null if there is none. Kept: a curve that is sent
/// comes from the last sensor of its name.
const CSensore* CercaSensore(std::string_view nome);

/// Saves the table as a sensor file of that name and loads the library anew. Asks before a file is
/// replaced (one whose name differs by case alone as well) and says why nothing was saved; `titolo`
/// is that of its messages. `nome` is UTF-8. False: nothing was saved, the library is as it was.
bool SalvaSensore(std::string_view tipo, const std::string& nome, const TabellaPunti& tabella,
                  const std::string& titolo);

}  // namespace lapvane
