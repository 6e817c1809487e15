#pragma once

#include <span>
#include <string>
#include <string_view>

#include "analysis/TabellaDati.h"

namespace lapvane {

/// The two graphs of an analysis.
enum class Grafico { Canali, Allarmi };

/// What sets the two analyses apart: how they hold the log, and what each does in its own way.
class FormaDati {
 public:
    virtual ~FormaDati() = default;

    virtual const TabellaDati& Tabella() const = 0;
    /// Heading of a column of the data file.
    virtual std::string TitoloColonna(int c) const = 0;
    /// The first line of the .tim file.
    virtual void PrimaRigaTempi(std::string_view riga) = 0;
    /// Figures of the cells of a lap.
    virtual double Massimo(std::span<const double> celle) const = 0;
    virtual double Minimo(std::span<const double> celle) const = 0;
    /// Column that is drawn over; 0 where nothing is drawn with that axis.
    virtual int ColonnaX(bool asseDistanza) const = 0;
    /// Whether the button that moves the window one step forward reads the graph's range first.
    virtual bool LeggePrimaDiSpostare() const = 0;
    /// Plane whose time column says where the automatic scroll of a graph ends.
    virtual Piano PianoDelTempo(Grafico grafico) const = 0;
};

}  // namespace lapvane
