#pragma once

#include <cstdint>

#include "analysis/PartiAnalisi.h"
#include "platform/GraphControl.h"

namespace lapvane {

constexpr int kRiquadriMassimi = 3;  ///< separate panes of a graph

/// One of the two graphs of an analysis with what it shows, all in the window of `FinestraX`.
class Quadro {
 public:
    virtual ~Quadro() = default;
    Quadro(const Quadro&) = delete;
    Quadro& operator=(const Quadro&) = delete;

    GraphControl& Controllo() { return grafico_; }
    virtual Grafico Quale() const = 0;
    /// Draws what the window shows of the selected lap.
    virtual void Disegna() = 0;
    /// False where drawing would only bring a message.
    virtual bool SiDisegna() const { return true; }
    /// The window takes over what the graph shows, and the other way round.
    virtual void LeggiFinestra() = 0;
    virtual void ImpostaIntervallo() = 0;
    /// The cursor goes to the left edge of the window.
    void CursoreAlMargine() { grafico_.CursoreX(parti_.Finestra.XMin()); }

 protected:
    Quadro(GraphControl& grafico, PartiAnalisi& parti) : grafico_(grafico), parti_(parti) {}

    /// Empties the graph, names the x axis of now.
    void Pulisci();
    /// The rows of the selected lap that the window shows.
    void CalcolaRighe();
    void DisegnaColonna(Piano piano, int c, double scala, int passo, const MisureCanale& misure);
    /// If the graph has no cursor, adds the blue one that keeps to the points of the last element.
    void ConfiguraCursore();

    GraphControl& grafico_;
    PartiAnalisi& parti_;
};

/// NTGraph1: the ticked channels, overlaid on one scale or in separate panes.
class QuadroCanali final : public Quadro {
 public:
    QuadroCanali(GraphControl& grafico, PartiAnalisi& parti) : Quadro(grafico, parti) {}

    Grafico Quale() const override { return Grafico::Canali; }
    void Disegna() override;
    bool SiDisegna() const override;
    void LeggiFinestra() override { parti_.Finestra.Leggi(grafico_.LeggiIntervallo()); }
    void ImpostaIntervallo() override;

    bool Separati() const { return separati_; }
    void Separati(bool separati) { separati_ = separati; }
    /// The y axis takes factor, colour and text of the channel of the scale.
    void RinnovaScala();

 private:
    void DisegnaCanale(int c);

    bool separati_ = false;
    int numElementi_ = 0;  ///< panes of the separate view so far
};

/// NTGraphAll: the overview of the eight alarms, each a band of its own.
class QuadroAllarmi final : public Quadro {
 public:
    QuadroAllarmi(GraphControl& grafico, PartiAnalisi& parti) : Quadro(grafico, parti) {}

    Grafico Quale() const override { return Grafico::Allarmi; }
    void Disegna() override;
    void LeggiFinestra() override { parti_.Finestra.LeggiX(grafico_.LeggiIntervallo()); }
    void ImpostaIntervallo() override;
    /// How it looks; once, at the load.
    void Prepara();
};

/// Line colour of an alarm in the overview, 0 to 7.
Colore ColoreAllarme(int k);

}  // namespace lapvane
