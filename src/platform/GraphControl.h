#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "platform/Colore.h"

namespace lapvane {

/// The window that a graph shows, in the units of its axes.
struct IntervalloGrafico {
    double XMin = 0.0;
    double XMax = 0.0;
    double YMin = 0.0;
    double YMax = 0.0;
};

/// What a channel's curve comes from, for a graph that writes it beside the curve.
struct MisureCanale {
    double Minimo = 0.0;
    double Massimo = 0.0;
    double Media = 0.0;
};

/// What the mouse does on a graph.
enum class ModoMouse : int { Cursore = 0, Zoom = 2 };

/// How a cursor moves: `Aggancio` keeps it on the points of the last element.
enum class ModoCursore : int { Libero = 0, Aggancio = 2 };

/// The abstract graph: curves ("elements") over an x axis that all panes share. All text is
/// Windows-1252. An element belongs to the pane of the last `ImpostaIntervallo`.
class GraphControl {
 public:
    virtual ~GraphControl() = default;

    virtual void Titolo(const std::string& testo) = 0;
    virtual void EtichettaX(const std::string& testo) = 0;
    /// Text and colour of the y axis; in separate panes they hold for the pane that the next
    /// `ImpostaIntervallo` opens.
    virtual void EtichettaY(const std::string& testo) = 0;
    virtual void ColoreAsse(Colore colore) = 0;
    virtual void ColoreSfondo(Colore colore) = 0;
    virtual void ColoreCornice(Colore colore) = 0;
    virtual void MostraGriglia(bool mostra) = 0;
    /// Whether the y axis has numbers; where the curves are levels they mean nothing.
    virtual void MostraNumeriY(bool mostra) = 0;

    /// Drops all elements and all panes but the first; axis texts, colours and ranges stay.
    virtual void PulisciGrafico() = 0;
    /// Number of the element that the next settings apply to, from 1; drawing it moves on to the
    /// next.
    virtual std::int16_t ElementoCorrente() const = 0;
    virtual void ColoreElemento(Colore colore) = 0;
    virtual void SpessoreElemento(std::int16_t spessore) = 0;
    virtual void NomeElemento(const std::string& nome) = 0;

    /// Axis range of a pane: 0 is the one pane of an overlaid view, 1 to 3 are separate panes from
    /// the top. The x range is common to all panes.
    virtual void ImpostaIntervallo(double xMin, double xMax, double yMin, double yMax,
                                   int riquadro) = 0;
    virtual IntervalloGrafico LeggiIntervallo() const = 0;
    /// The labels of the y axis are the axis values divided by this factor, so that a negative one
    /// makes them fall upwards; 0 and what is not finite count as 1.
    virtual void ScalaY(double fattore) = 0;

    /// Draws an element through the points (x[n], y[n] * scala), n = 0, passo, 2 passo ... A step
    /// below 1 counts as 1; points beyond the shorter array do not exist. `elemento` is the current
    /// one; it and the figures of the channel are for a graph that wants to know them.
    virtual void DisegnaArray(std::span<const double> x, std::span<const double> y,
                              std::int16_t elemento, double scala, int passo,
                              const MisureCanale& misure) = 0;
    /// Adds one point to the current element, which stays the current one.
    virtual void AggiungiPunto(double x, double y) = 0;

    virtual int NumeroCursori() const = 0;
    /// Adds the graph's one cursor; the settings below apply to it.
    virtual void AggiungiCursore() = 0;
    virtual void ImpostaModoCursore(ModoCursore modo) = 0;
    virtual void ColoreCursore(Colore colore) = 0;
    virtual void CursoreVisibile(bool visibile) = 0;
    virtual void CursoreX(double x) = 0;
    virtual double CursoreX() const = 0;
    virtual void CursoreY(double y) = 0;
    /// While true the cursor follows the mouse and raises `EventoCursore`.
    virtual void CursoreAttivo(bool attivo) = 0;
    virtual bool CursoreAttivo() const = 0;
    /// Index of that point of the last element whose x is nearest to `x` times `scala`; 0 without
    /// an element.
    virtual std::int32_t IndiceDaX(double x, double scala) const = 0;
    virtual void ImpostaModoMouse(ModoMouse modo) = 0;

    /// x, y and point index of the cursor.
    std::function<void(double, double, std::int32_t)> EventoCursore;
    /// The user has chosen a new range with the zoom rectangle; the graph shows it already, with
    /// the points that it has.
    std::function<void()> EventoZoom;
};

}  // namespace lapvane
