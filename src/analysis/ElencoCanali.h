#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "analysis/FormaDati.h"
#include "analysis/PerCanale.h"
#include "platform/Colore.h"
#include "reports/FileSessione.h"
#include "reports/ImpostazioniCanale.h"

namespace lapvane {

constexpr int kUltimoNomeInTabella = 16;  ///< last channel that the table of texts has a name for

/// One channel: how it is shown, and its figures over the selected lap.
struct Canale {
    std::string NomeCampo;            ///< caption of lblNomeCampo
    std::string UnitaCampo;           ///< caption of lblUM, with its brackets
    Colore ColoreCanale = 0;          ///< back colour of shpColor
    std::int16_t FiltroCanale = 0;    ///< rows between plotted points
    std::int16_t SpessoreCanale = 0;  ///< line width
    double MaxCanale = 0.0;
    double MinCanale = 0.0;
    double MediaCanale = 0.0;
    double FattoreScala = 0.0;  ///< stretches it to the highest maximum of all
    bool chkGrafico = false;    ///< it is drawn
    bool NomeDato = false;      ///< a person gave it its name
};

/// The columns of an open log, 1 to 20, of which 3 to 20 are channels that can be drawn.
class ElencoCanali {
 public:
    ElencoCanali();

    /// The channel of a column, 0 to 20; the second checks it and raises error 9.
    const Canale& operator[](int c) const { return canali_[c]; }
    const Canale& Di(int c) const;
    int NumCampi() const { return numCampi_; }  ///< columns of the CSV
    void NumCampi(int campi) { numCampi_ = campi; }
    /// Last channel column that the log fills, 20 at most.
    int Ultimo() const;
    int NumCanaliAttivi() const { return numCanaliAttivi_; }
    /// Channel whose scale labels the y axis; 0: none.
    int CanaleScala() const { return canaleScala_; }
    void CanaleScala(int c) { canaleScala_ = c; }
    /// Last channel drawn, on whichever graph; 0: none.
    int UltimoCanale() const { return ultimoCanale_; }
    void UltimoCanale(int c) { ultimoCanale_ = c; }

    /// "name unit".
    std::string TitoloCanale(int c) const;
    /// Names and units from the headings of the data file, filter and width as they are at first.
    void Nomina(const std::function<std::string(int)>& titolo);
    /// Names of the language of now, but for those that a person gave.
    void RefreshLanguage();
    /// Ticks a channel or clears it. False if it was so, or is no channel.
    bool Spunta(int c, bool spuntato);
    /// First ticked channel; 0: none.
    int PrimoSpuntato() const;

    ImpostazioniCanale Impostazioni(int c) const;
    void Imposta(const ImpostazioniCanale& valori);
    void SetMinVal(int c, double valore);
    void SetMaxVal(int c, double valore);

    /// The y range that holds all channels.
    struct IntervalloY {
        double YMin;
        double YMax;
    };
    /// Figures and factors over rows `da` to `a`.
    IntervalloY CalcolaScale(const FormaDati& forma, std::int32_t da, std::int32_t a);

    /// The channels as the .ses file keeps them.
    CanaliSessione PerSessione() const;
    /// Takes over all but the names.
    void Prendi(const CanaliSessione& letti);

 private:
    PerCanale<Canale> canali_;
    int numCampi_ = 0;
    int numCanaliAttivi_ = 0;
    int canaleScala_ = 0;
    int ultimoCanale_ = 0;
};

}  // namespace lapvane
