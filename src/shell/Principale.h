#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "platform/SerialControl.h"
#include "shell/Comandi.h"

namespace lapvane {

/// Panels of the status bar, by number.
enum class Pannello {
    Progetto = 1,
    Percorso = 2,
    Progresso = 3,
    Collegamento = 4,
    RX = 5,
    TX = 6,
    Identita = 7,
};

/// What the rest of the program asks of the main window. `frmMain` implements it.
class Principale {
 public:
    virtual ~Principale() = default;

    virtual void AbilitaMenu(Comando comando, bool acceso) = 0;
    virtual void AbilitaPulsante(Comando comando, bool acceso) = 0;
    virtual void AbilitaTitolo(Titolo titolo, bool acceso) = 0;

    virtual void TestoPannello(Pannello pannello, const std::string& testo) = 0;
    /// Picture 1 to 4 of `imgListIcon` in a panel.
    virtual void ImmaginePannello(Pannello pannello, int immagine) = 0;
    /// A panel whose content does not hold at the moment is grey.
    virtual void AbilitaPannello(Pannello pannello, bool acceso) = 0;

    /// Hides the four entries of the recent list; shows entry 0 to 3 with a path as its caption.
    virtual void NascondiFileRecenti() = 0;
    virtual void MostraFileRecente(int indice, const std::filesystem::path& percorso) = 0;

    /// The serial control that the main window owns.
    virtual SerialControl& SerialComm() = 0;

    /// True when somebody has been waiting for `pazienza` ms for the poll to end: a person who
    /// asked for something, or the routine behind a dialog that has closed. The wait then gives up.
    virtual bool RinunciaAttesa(int pazienza) = 0;

    /// Runs what a click asks for: at once, or right behind the poll when the poll is inside one of
    /// its waits, so that no handler ever runs there and no exchange starts inside another. What
    /// the same `chi` (a control, a window; null: nobody) asks for twice meanwhile runs once.
    virtual void QuandoLibero(const void* chi, std::function<void()> azione) = 0;

    /// Runs an exchange that no transfer guards (`FaseComunicazione` is 0) as if it were the poll's
    /// own: the poll keeps off the port, and a click that comes meanwhile waits behind it.
    virtual void SenzaSorveglianza(const std::function<void()>& azione) { azione(); }

    /// The project was saved.
    virtual void Salvato() {}

    /// Menu entry and button together.
    void Abilita(Comando comando, bool acceso) {
        AbilitaMenu(comando, acceso);
        AbilitaPulsante(comando, acceso);
    }
};

/// The one main window. Set by its owner before anything else runs.
Principale& principale();
void ImpostaPrincipale(Principale* principale);

}  // namespace lapvane
