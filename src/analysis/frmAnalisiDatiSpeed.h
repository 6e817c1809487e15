#pragma once

#include <QButtonGroup>
#include <QDialog>
#include <QFrame>
#include <QScrollArea>
#include <QTabWidget>
#include <array>
#include <filesystem>

#include "analysis/AnalisiDatiSpeed.h"
#include "widgets/GraficoWidget.h"
#include "widgets/GrigliaGiri.h"
#include "widgets/RigaCanale.h"

namespace lapvane {

/// The analysis window: channels on the left, the graph in the middle, the laps on the right.
class frmAnalisiDatiSpeed : public QDialog, private VistaAnalisi {
    Q_OBJECT
 public:
    explicit frmAnalisiDatiSpeed(QWidget* parent = nullptr);

    /// The log to open; set before `Apri`.
    std::filesystem::path NomeFileDati;

    /// Loads the log, then shows the window modally until it is closed. A log whose side file is
    /// missing is reported and never shown.
    void Apri();
    /// Only the load; false if the window closed itself.
    bool Carica();
    /// All texts in the language of now.
    void RefreshLanguage();

    AnalisiDatiSpeed& Analisi() { return analisi_; }

    void done(int esito) override;
    void reject() override;

 protected:
    bool event(QEvent* evento) override;

 private:
    void MostraCanale(int c, bool visibile) override;
    void NomeCampo(int c, const std::string& nome) override;
    void UnitaCampo(int c, const std::string& unita) override;
    void ColoreCanale(int c, Colore colore) override;
    void SegnaCanale(int c, bool spuntato) override;
    void SelezionaScala(int c) override;
    void SelezionaScheda(int scheda) override;
    void TestoScheda(int scheda, const std::string& testo) override;
    void MostraControlli(bool visibile) override;
    void MostraGriglia(bool visibile) override;
    void RigheGriglia(int righe) override;
    void LarghezzaColonna(int colonna, int twip) override;
    void Cella(int riga, int colonna, const std::string& testo) override;
    void SfondoCella(int riga, int colonna, Colore colore) override;
    void CaratteriCella(int riga, int colonna, Colore colore) override;
    void CellaCorrente(int riga, int colonna) override;
    void SegnaGiro(int riga) override;
    void Scarica() override;

    QWidget* CreaMisure();
    QWidget* CreaSchede();
    void Disponi();
    void AdattaMisure();
    RigaCanale* Riga(int c);

    QScrollArea* misure_ = nullptr;
    QFrame* fraMisure_ = nullptr;
    QTabWidget* SSTab1_ = nullptr;
    GraficoWidget* NTGraph1_ = nullptr;
    GraficoWidget* NTGraphAll_ = nullptr;
    GrigliaGiri* MSFlexGrid1_ = nullptr;
    QButtonGroup* optScala_ = nullptr;
    std::array<RigaCanale*, kNumCanali> righe_{};
    AnalisiDatiSpeed analisi_;
    bool caricata_ = false;
    bool scaricata_ = false;
};

}  // namespace lapvane
