#pragma once

#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/ErroreRuntime.h"
#include "platform/Platform.h"
#include "platform/SerialControl.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"
#include "support/Cartelle.h"

namespace lapvane::prova {

/// A message box that was shown.
struct Box {
    std::string Testo;
    Buttons Pulsanti = Buttons::Ok;
    Icon Icona = Icon::None;
    std::string Titolo;
};

/// The machine of the tests: a virtual clock, scripted answers, a list of everything shown. A box
/// that no test scripted (`Risposte` empty) fails the running test, unless `BoxLiberi` is set.
class PlatformProva : public Platform {
 public:
    PlatformProva();
    ~PlatformProva() override;

    std::int64_t GetTickCount() override { return Orologio; }
    void Sleep(int ms) override {
        Orologio += ms;
        Dormito += ms;
    }
    void DoEvents(int waitMs = 0) override;
    Answer MsgBox(const std::string& text, Buttons buttons, Icon icon,
                  const std::string& title) override;
    std::optional<std::filesystem::path> AskOpen(const FileRequest& request) override;
    std::optional<std::filesystem::path> AskSave(const FileRequest& request) override;
    std::optional<std::filesystem::path> AskFolder(const std::string& title,
                                                   const std::filesystem::path& initial) override;
    std::optional<Colore> AskColor(Colore initial) override;
    std::filesystem::path AppPath() override { return Cartella; }
    std::filesystem::path InstallPath() override { return Cartella / "installed"; }
    std::filesystem::path CurDir() override { return CartellaCorrente; }
    void ChDir(const std::filesystem::path& folder) override { CartellaCorrente = folder; }
    std::string ExeName() override { return "lapvane"; }
    std::string Now() override { return Adesso; }
    std::string Stamp() override { return "2026-11-24 10-20-30"; }
    std::filesystem::path Documents() override { return Documenti; }
    bool OpenOutside(const std::filesystem::path& what, const std::string& place) override {
        Aperti.push_back(what.generic_string() + "#" + place);
        return ApreFuori;
    }
    char DecimalSeparator() override { return Separatore; }
    void MousePointer(Pointer pointer) override { Puntatori.push_back(pointer); }
    void Language(int index) override { Lingua = index; }
    void End(int code) override;

    std::int64_t Orologio = 1000;
    int Passo = 5;  ///< ms, the longest that DoEvents waits for something else to happen
    std::int64_t Dormito = 0;
    std::filesystem::path Cartella;  ///< a fresh folder, removed at the end
    std::filesystem::path CartellaCorrente;
    std::filesystem::path Documenti;
    std::string Adesso = "24/11/2026 10:20:30";
    char Separatore = '.';
    int Lingua = -1;
    bool BoxLiberi = false;
    std::vector<Box> Mostrati;
    std::deque<Answer> Risposte;
    std::vector<FileRequest> RichiesteFile;
    std::deque<std::optional<std::filesystem::path>> FileScelti;  ///< empty optional: cancelled
    std::deque<std::optional<std::filesystem::path>> CartelleScelte;
    std::deque<std::optional<Colore>> ColoriScelti;
    std::vector<Pointer> Puntatori;
    std::vector<std::string> Aperti;  ///< outside of the program, "file#place"
    bool ApreFuori = true;
    /// Runs inside each DoEvents: the handler of a click, a port that vanishes ...
    std::function<void()> DuranteEventi;
    int ChiamateEventi = 0;
    /// Runs while a message box is shown.
    std::function<void()> AlBox;
};

/// A main window that writes down what it is told.
class PrincipaleProva : public Principale {
 public:
    PrincipaleProva();
    ~PrincipaleProva() override;

    void AbilitaMenu(Comando comando, bool acceso) override {
        Menu_[static_cast<std::size_t>(comando)] = acceso;
    }
    void AbilitaPulsante(Comando comando, bool acceso) override {
        Pulsanti_[static_cast<std::size_t>(comando)] = acceso;
    }
    void AbilitaTitolo(Titolo titolo, bool acceso) override {
        Titoli_[static_cast<std::size_t>(titolo)] = acceso;
    }
    void TestoPannello(Pannello pannello, const std::string& testo) override;
    void ImmaginePannello(Pannello pannello, int immagine) override {
        Immagini_[static_cast<std::size_t>(pannello)] = immagine;
    }
    void AbilitaPannello(Pannello pannello, bool acceso) override {
        Accesi_[static_cast<std::size_t>(pannello)] = acceso;
    }
    void NascondiFileRecenti() override { Recenti.clear(); }
    void MostraFileRecente(int indice, const std::filesystem::path& percorso) override;
    SerialControl& SerialComm() override;
    bool RinunciaAttesa(int pazienza) override { return Rinuncia && Rinuncia(pazienza); }
    void QuandoLibero(const void* chi, std::function<void()> azione) override;
    void SenzaSorveglianza(const std::function<void()>& azione) override {
        ++SenzaPoll;
        azione();
    }

    bool Menu(Comando comando) const { return Menu_[static_cast<std::size_t>(comando)]; }
    bool Pulsante(Comando comando) const { return Pulsanti_[static_cast<std::size_t>(comando)]; }
    bool TitoloAcceso(Titolo titolo) const { return Titoli_[static_cast<std::size_t>(titolo)]; }
    std::string Testo(Pannello pannello) const {
        return Testi_[static_cast<std::size_t>(pannello)];
    }
    bool Acceso(Pannello pannello) const { return Accesi_[static_cast<std::size_t>(pannello)]; }
    int Immagine(Pannello pannello) const { return Immagini_[static_cast<std::size_t>(pannello)]; }

    std::vector<std::filesystem::path> Recenti;
    /// Every text that a panel showed, in order ("4:Connecting COM1...").
    std::vector<std::string> Storia;
    std::function<bool(int)> Rinuncia;
    /// While the poll waits what is asked for waits too, as in the real main window; the end of the
    /// poll runs it.
    bool PollAttivo = false;
    void FinePoll();
    SerialControl* Seriale = nullptr;
    int SenzaPoll = 0;  ///< how often something asked that no poll runs inside it

 private:
    bool Menu_[32] = {};
    bool Pulsanti_[32] = {};
    bool Titoli_[8] = {};
    std::string Testi_[8];
    int Immagini_[8] = {};
    std::array<bool, 8> Accesi_ = {true, true, true, true, true, true, true, true};
    std::deque<std::pair<const void*, std::function<void()>>> inAttesa_;
};

/// Puts every process-wide record and flag back to that of a fresh process.
void AzzeraTutto();

/// Loads the delivered language table (built beside the programs) and selects a language.
void CaricaTestiVeri(int lingua);

/// "run" and ".csv" give "run.csv".
std::filesystem::path ConFine(std::filesystem::path stelo, const char* fine);
/// A file's bytes, and a file of given bytes.
std::string Leggi(const std::filesystem::path& percorso);
void Scrivi(const std::filesystem::path& percorso, const std::string& testo);

}  // namespace lapvane::prova
