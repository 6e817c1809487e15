#pragma once

#include <array>
#include <string_view>

namespace lapvane {

/// The commands of the main window, in menu order.
enum class Comando {
    New,
    Open,
    Save,
    SaveAs,
    Print,
    Note,
    Exit,
    Setup,
    Sensor,
    CustSensors,
    Alarm,
    ProgDev,
    ReadDev,
    ViewDev,
    DownData,
    SaveData,
    Analize,
    Language,
    Info,
};

/// The headings of the menu bar.
enum class Titolo { ProjectFile, Configure, Device, Analysis, Nessuno };

/// One command: name of its menu entry, number of its caption (also the button's tool tip), key of
/// its tool button (empty: none), the heading it stands under, and whether the menu design starts
/// it enabled, as entry and as button.
struct DescrizioneComando {
    Comando Codice;
    std::string_view NomeMenu;
    int Testo;
    std::string_view Chiave;
    Titolo Sotto;
    bool MenuAcceso;
    bool PulsanteAcceso;
};

inline constexpr std::array<DescrizioneComando, 19> kComandi = {{
    {Comando::New, "mnuNew", 2, "New", Titolo::ProjectFile, true, true},
    {Comando::Open, "mnuOpen", 3, "Open", Titolo::ProjectFile, true, true},
    {Comando::Save, "mnuSave", 5, "Save", Titolo::ProjectFile, true, true},
    {Comando::SaveAs, "mnuSaveAs", 6, "SaveAs", Titolo::ProjectFile, true, true},
    // Kept: nothing ever enables mnuPrint, and the button "Print" is visible and does nothing.
    {Comando::Print, "mnuPrint", 7, "Print", Titolo::ProjectFile, false, true},
    {Comando::Note, "mnuNote", 8, "Note", Titolo::ProjectFile, false, true},
    {Comando::Exit, "mnuExit", 9, "Exit", Titolo::ProjectFile, true, true},
    {Comando::Setup, "mnuSetup", 11, "Setup", Titolo::Configure, true, false},
    {Comando::Sensor, "mnuSensors", 12, "Sensor", Titolo::Configure, true, false},
    {Comando::CustSensors, "mnuCustomizeSensors", 13, "CustSensors", Titolo::Configure, true, true},
    {Comando::Alarm, "mnuAlarms", 14, "Alarm", Titolo::Configure, true, false},
    {Comando::ProgDev, "mnuProgramDevice", 16, "ProgDev", Titolo::Device, false, true},
    {Comando::ReadDev, "mnuReadDevice", 17, "ReadDev", Titolo::Device, false, true},
    {Comando::ViewDev, "mnuViewDevice", 18, "ViewDev", Titolo::Device, true, true},
    {Comando::DownData, "mnuDownloadData", 20, "DownData", Titolo::Analysis, true, true},
    {Comando::SaveData, "mnuSaveData", 21, "SaveData", Titolo::Analysis, true, true},
    {Comando::Analize, "mnuAnalize", 22, "Analize", Titolo::Analysis, true, true},
    {Comando::Language, "mnuLanguage", 23, "Language", Titolo::Nessuno, true, true},
    {Comando::Info, "mnuInfo", 225, "", Titolo::Nessuno, true, false},
}};

struct DescrizioneTitolo {
    Titolo Codice;
    std::string_view NomeMenu;
    int Testo;
    bool Acceso;
};

inline constexpr std::array<DescrizioneTitolo, 4> kTitoli = {{
    {Titolo::ProjectFile, "mnuProjectFile", 1, true},
    {Titolo::Configure, "mnuConfigure", 10, false},
    {Titolo::Device, "mnuDevice", 15, true},
    {Titolo::Analysis, "mnuAnalysis", 19, true},
}};

}  // namespace lapvane
