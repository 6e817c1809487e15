#pragma once

#include <stdexcept>

#include "analysis/VistaAnalisi.h"
#include "logs/Scarico.h"
#include "shell/Principale.h"

namespace lapvane {

/// A window of an analysis that shows nothing.
class BareAnalysisView : public VistaAnalisi {
 public:
    bool Lettura(int) override { return true; }
    void MostraCanale(int, bool) override {}
    void NomeCampo(int, const std::string&) override {}
    void UnitaCampo(int, const std::string&) override {}
    void ColoreCanale(int, Colore) override {}
    void SegnaCanale(int, bool) override {}
    void Valore(int, const std::string&) override {}
    void SpuntaAssi(bool, bool) override {}
    void AbilitaZoomIn(bool) override {}
    void Scorri(const StatoScorri&, const StatoScorri&) override {}
    void Lampada(int, bool) override {}
    void Barra(const StatoBarra&) override {}
    void Rinfresca() override {}
    void MostraMappa(bool) override {}
    void Mappa(std::vector<PuntoTracciato>, const std::string&, const std::string&) override {}
    void MarcatoreMappa(int) override {}
    void SelezionaScala(int) override {}
    void SelezionaScheda(int) override {}
    void TestoScheda(int, const std::string&) override {}
    void MostraControlli(bool) override {}
    void MostraGriglia(bool) override {}
    void RigheGriglia(int) override {}
    void LarghezzaColonna(int, int) override {}
    void Cella(int, int, const std::string&) override {}
    void SfondoCella(int, int, Colore) override {}
    void CaratteriCella(int, int, Colore) override {}
    void CellaCorrente(int, int) override {}
    void SegnaGiro(int) override {}
    void Scarica() override {}
};

/// A download window that nobody looks at, and that stays open.
class BareDownloadView : public VistaScarico {
 public:
    bool Visibile() const override { return true; }
    void Stato(const std::string&) override {}
    void Percento(int) override {}
    void AbilitaOK(bool) override {}
    void Scarica() override {}
};

/// A main window that shows nothing, with a port or without. In use from the moment it is made
/// until it goes.
class BareMainWindow : public Principale {
 public:
    explicit BareMainWindow(SerialControl* port = nullptr) : port_(port) {
        ImpostaPrincipale(this);
    }
    ~BareMainWindow() override { ImpostaPrincipale(nullptr); }
    BareMainWindow(const BareMainWindow&) = delete;
    BareMainWindow& operator=(const BareMainWindow&) = delete;
    void AbilitaMenu(Comando, bool) override {}
    void AbilitaPulsante(Comando, bool) override {}
    void AbilitaTitolo(lapvane::Titolo, bool) override {}
    void TestoPannello(Pannello, const std::string&) override {}
    void ImmaginePannello(Pannello, int) override {}
    void AbilitaPannello(Pannello, bool) override {}
    void NascondiFileRecenti() override {}
    void MostraFileRecente(int, const std::filesystem::path&) override {}
    SerialControl& SerialComm() override {
        if (port_ == nullptr) throw std::logic_error("no serial control here");
        return *port_;
    }
    bool RinunciaAttesa(int) override { return false; }
    void QuandoLibero(const void*, std::function<void()> action) override { action(); }

 private:
    SerialControl* port_;
};

}  // namespace lapvane
