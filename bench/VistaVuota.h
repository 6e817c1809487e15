#pragma once

#include <stdexcept>

#include "analysis/VistaAnalisi.h"
#include "shell/Principale.h"

namespace lapvane::bench {

/// A window of an analysis that shows nothing.
class VistaVuota : public VistaAnalisi {
 public:
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

/// A main window that shows nothing.
class PrincipaleVuota : public Principale {
 public:
    PrincipaleVuota() { ImpostaPrincipale(this); }
    ~PrincipaleVuota() override { ImpostaPrincipale(nullptr); }
    void AbilitaMenu(Comando, bool) override {}
    void AbilitaPulsante(Comando, bool) override {}
    void AbilitaTitolo(lapvane::Titolo, bool) override {}
    void TestoPannello(Pannello, const std::string&) override {}
    void ImmaginePannello(Pannello, int) override {}
    void NascondiFileRecenti() override {}
    void MostraFileRecente(int, const std::filesystem::path&) override {}
    SerialControl& SerialComm() override { throw std::logic_error("no serial control here"); }
    bool RinunciaAttesa() override { return false; }
    void QuandoLibero(std::function<void()> azione) override { azione(); }
};

}  // namespace lapvane::bench
