#pragma once

#include <QAction>
#include <QApplication>
#include <QToolButton>
#include <filesystem>
#include <memory>

#include "shell/frmMain.h"
#include "support/SerialeProva.h"
#include "support/WindowPlatform.h"
#include "widgets/PannelloStato.h"

namespace lapvane::prova {

/// The main window on a machine and a port of the tests, in a folder that has its texts.
class FinestraPrincipale : public ::testing::Test {
 protected:
    FinestraPrincipale() {
        std::filesystem::copy_file(CartellaBin() / "LANGUAGES.DAT",
                                   macchina.Cartella / "LANGUAGES.DAT");
        Scrivi(macchina.Cartella / "RecentFiles.ini", "1\r\n");
        auto unica = std::make_unique<SerialeProva>(macchina);
        porta = unica.get();
        finestra = std::make_unique<frmMain>(std::move(unica));
    }
    void Apri(int lingua = 1) {
        finestra->Carica();
        IndiceLingua = lingua;
        finestra->show();
        QApplication::setActiveWindow(finestra.get());
        QCoreApplication::processEvents();
    }
    QToolButton* Pulsante(const char* chiave) {
        return Controllo<QToolButton>(*finestra, (std::string("Toolbar1_") + chiave).c_str());
    }
    QAction* VoceMenu(const char* nome) { return Controllo<QAction>(*finestra, nome); }
    std::string Pannello(int n) {
        return Controllo<PannelloStato>(*finestra, ("sbStatusBar_" + std::to_string(n)).c_str())
            ->Testo()
            .toStdString();
    }

    WindowPlatform macchina;
    SerialeProva* porta = nullptr;
    std::unique_ptr<frmMain> finestra;
};

}  // namespace lapvane::prova
