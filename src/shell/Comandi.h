#pragma once

#include <array>
#include <string_view>

#include "shell/Voci.h"

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

/// One command: name of its menu entry, its caption (also the button's tool tip), key of
/// its tool button (empty: none), the heading it stands under, and whether the menu design starts
/// it enabled, as entry and as button.
struct DescrizioneComando {
    Comando Codice;
    std::string_view NomeMenu;
    Voce Testo;
    std::string_view Chiave;
    Titolo Sotto;
    bool MenuAcceso;
    bool PulsanteAcceso;
};

inline constexpr std::array<DescrizioneComando, 19> kComandi = {{
    {Comando::New, "mnuNew", Voce::NuovoProgetto, "New", Titolo::ProjectFile, true, true},
    {Comando::Open, "mnuOpen", Voce::ApriProgetto, "Open", Titolo::ProjectFile, true, true},
    {Comando::Save, "mnuSave", Voce::SalvaProgetto, "Save", Titolo::ProjectFile, true, true},
    {Comando::SaveAs, "mnuSaveAs", Voce::SalvaProgettoConNome, "SaveAs", Titolo::ProjectFile, true,
     true},
    // Kept: nothing ever enables mnuPrint, and the button "Print" is visible and does nothing.
    {Comando::Print, "mnuPrint", Voce::Stampa, "Print", Titolo::ProjectFile, false, true},
    {Comando::Note, "mnuNote", Voce::VoceNoteProgetto, "Note", Titolo::ProjectFile, false, true},
    {Comando::Exit, "mnuExit", Voce::Esci, "Exit", Titolo::ProjectFile, true, true},
    {Comando::Setup, "mnuSetup", Voce::VoceImpostazioni, "Setup", Titolo::Configure, true, false},
    {Comando::Sensor, "mnuSensors", Voce::VoceSensori, "Sensor", Titolo::Configure, true, false},
    {Comando::CustSensors, "mnuCustomizeSensors", Voce::PersonalizzaSensori, "CustSensors",
     Titolo::Configure, true, true},
    {Comando::Alarm, "mnuAlarms", Voce::VoceAllarmi, "Alarm", Titolo::Configure, true, false},
    {Comando::ProgDev, "mnuProgramDevice", Voce::ProgrammaStrumento, "ProgDev", Titolo::Device,
     false, true},
    {Comando::ReadDev, "mnuReadDevice", Voce::LeggiStrumento, "ReadDev", Titolo::Device, false,
     true},
    {Comando::ViewDev, "mnuViewDevice", Voce::ValoriInTempoReale, "ViewDev", Titolo::Device, true,
     true},
    {Comando::DownData, "mnuDownloadData", Voce::ScaricaDati, "DownData", Titolo::Analysis, true,
     true},
    {Comando::SaveData, "mnuSaveData", Voce::SalvaDatiScaricati, "SaveData", Titolo::Analysis, true,
     true},
    {Comando::Analize, "mnuAnalize", Voce::AnalizzaDati, "Analize", Titolo::Analysis, true, true},
    {Comando::Language, "mnuLanguage", Voce::Lingua, "Language", Titolo::Nessuno, true, true},
    {Comando::Info, "mnuInfo", Voce::Informazioni, "", Titolo::Nessuno, true, false},
}};

struct DescrizioneTitolo {
    Titolo Codice;
    std::string_view NomeMenu;
    Voce Testo;
    bool Acceso;
};

inline constexpr std::array<DescrizioneTitolo, 4> kTitoli = {{
    {Titolo::ProjectFile, "mnuProjectFile", Voce::MenuProgetto, true},
    {Titolo::Configure, "mnuConfigure", Voce::MenuConfigurazione, false},
    {Titolo::Device, "mnuDevice", Voce::MenuStrumento, true},
    {Titolo::Analysis, "mnuAnalysis", Voce::MenuAnalisi, true},
}};

}  // namespace lapvane
