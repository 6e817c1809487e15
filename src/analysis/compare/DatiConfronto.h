#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lapvane {

// What the window of the comparison shows, as values: the model makes them, its drawings take them.

/// The letter of the lap that all others are laid against.
constexpr char kRiferimento = 'R';
/// Letters 'A' to 'F' of the laps beside it.
constexpr int kGiriAccanto = 6;

/// A channel along one lap. Both vectors are of one length, x ascending, in metres along the
/// reference or seconds since the line.
struct CurvaGiro {
    char Lettera = kRiferimento;
    std::vector<double> X;
    std::vector<double> Y;
};

/// One pane: the curves of the laps over the axis that all panes share.
struct QuadroConfronto {
    std::string Titolo;     ///< "Speed"
    std::string Unita;      ///< "Km/h"; may be empty
    int Decimali = 0;       ///< of a value that is shown
    bool Distacco = false;  ///< gained or lost time in seconds, positive is slower; no curve for R
    std::vector<CurvaGiro> Curve;  ///< the reference first, then by letter
};

/// All panes and what lies behind them.
struct DatiQuadri {
    bool PerDistanza = true;  ///< x counts metres; else seconds
    double Fine = 0.0;        ///< x runs from 0 to this
    std::vector<QuadroConfronto> Quadri;
    std::vector<double> Confini;  ///< x of the cuts between the parts, ascending, without both ends
    std::vector<int> Peggiori;    ///< parts, from 0, where the lap in focus loses most
    char Fuoco = 0;               ///< the lap in focus; 0: none
};

/// A lap in the table of parts. Times in hundredths of a second.
struct RigaParti {
    char Lettera = 0;                 ///< 0: the ideal lap
    std::string Nome;                 ///< "Lap 12"
    std::vector<std::int32_t> Parti;  ///< one each; empty: the lap could not be aligned
    std::int32_t Tempo = 0;
    std::int32_t Distacco = 0;  ///< against the reference
};

/// The table of laps by parts: the reference first, the ideal lap last.
struct TabellaParti {
    std::vector<RigaParti> Righe;
    std::vector<int> Peggiori;  ///< parts, from 0, where the lap in focus loses most
    std::int32_t Continuo = 0;  ///< best rolling lap, hundredths; 0: the log has none
    char Fuoco = 0;
};

/// A channel of a lap at the cursor, or between both.
struct ValoreCursore {
    double Qui = 0.0;         ///< at the cursor
    double Differenza = 0.0;  ///< against the reference, there
    double Minimo = 0.0;      ///< between the cursors
    double Massimo = 0.0;
    double Media = 0.0;
    bool Esiste = false;  ///< the lap's log has the channel
};

/// A lap at the cursor.
struct RigaCursore {
    char Lettera = kRiferimento;
    std::string Nome;                   ///< "12"
    double Distacco = 0.0;              ///< seconds against the reference at the cursor
    std::vector<ValoreCursore> Canali;  ///< one for each head
    double Tempo = 0.0;                 ///< seconds between the cursors
    double Metri = 0.0;                 ///< metres between the cursors
    double Perso = 0.0;                 ///< seconds lost against the reference between the cursors
};

/// What the table at the cursor shows.
struct TabellaCursore {
    double Metri = 0.0;               ///< place of the cursor along the reference
    double Secondi = 0.0;             ///< moment of it on the reference
    bool Due = false;                 ///< there is a second cursor; the fields between both count
    std::vector<std::string> Titoli;  ///< units or names of the channels, as the panes
    std::vector<int> Decimali;
    std::vector<RigaCursore> Righe;
};

}  // namespace lapvane
