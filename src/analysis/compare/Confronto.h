#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/compare/DatiConfronto.h"
#include "analysis/compare/LogAperto.h"

namespace lapvane {

/// A lap by its places: which of the open logs, which lap in it, both from 0.
struct GiroScelto {
    int Log = 0;
    int Giro = 0;
    bool operator==(const GiroScelto&) const = default;
};

/// A channel of the open logs: the same column in the same unit, whatever language its heading is
/// in.
struct CanaleConfronto {
    int Colonna = 0;
    std::string Nome;  ///< in the language of the log that was opened first
    std::string Unita;
    explicit CanaleConfronto(const CanaleLog& canale)
        : Colonna(canale.Colonna), Nome(canale.Nome), Unita(canale.Unita) {}
    /// "4 [Km/h]": what panes are asked for by, and what is remembered.
    std::string Chiave() const;
    /// "Speed [Km/h]".
    std::string Titolo() const { return Unita.empty() ? Nome : Nome + " [" + Unita + "]"; }
};

/// Name of the pane of gained and lost time where a channel's is asked for.
constexpr const char* kChiaveDistacco = "delta";

/// Laps of one or more logs beside one another: which are open, which are chosen, and what of them
/// is shown. It reads none of the system's records and writes none.
class Confronto {
 public:
    /// Opens a log, or finds it among the open ones; its place. The first one brings its best lap
    /// as the reference and the next best beside it, each further one its best lap. Errors as of
    /// `LogAperto`; nothing is changed then.
    int Apri(const std::filesystem::path& file);
    /// Takes a log away, with its laps. Was the reference among them, the best lap that is still
    /// chosen takes its place, else the best of all.
    void Chiudi(int log);

    int NumLog() const { return static_cast<int>(log_.size()); }
    const LogAperto& Log(int i) const { return *log_[static_cast<std::size_t>(i)].Dati; }

    /// Chooses a lap, or lets it go. False: six are chosen already, or it is the reference, which
    /// can't be let go.
    bool Spunta(GiroScelto giro, bool acceso);
    /// Makes a lap the reference; the old one stays chosen where a letter is free for it.
    void Riferimento(GiroScelto giro);
    /// Letters and numbers of the chosen laps of a log, and the way back: what is not there any
    /// more is passed over. The reference comes back only where the log is the only one.
    std::vector<std::pair<char, int>> ScelteDi(int log) const;
    void Ripristina(int log, const std::vector<std::pair<char, int>>& giri);
    /// Nothing is chosen any more.
    void LasciaTutti();
    /// The lap in focus, one of those beside the reference.
    void Fuoco(char lettera);
    char Fuoco() const { return fuoco_; }
    /// Letter of a lap; 0: it is not chosen.
    char Lettera(GiroScelto giro) const;
    std::optional<GiroScelto> Di(char lettera) const;
    /// Letters of the laps beside the reference, ascending.
    std::string Accanto() const;

    const GiroDelLog& Giro(GiroScelto giro) const;
    int Numero(GiroScelto giro) const { return Log(giro.Log).Numero(giro.Giro); }
    /// The best official time of all laps in hundredths; 0: none has one.
    std::int32_t Migliore() const;
    PercheNo Esito(GiroScelto giro) const { return Log(giro.Log).Allineati().Esito(giro.Giro); }
    /// The aligned lap; null where it can't be aligned. The first call for a lap takes a while.
    const GiroAllineato* Allineato(GiroScelto giro) const;
    /// Laps of a log that have been aligned, or found not to be.
    int NumAllineati(int log) const;
    /// Aligns one more lap that nobody has asked for. False: all are.
    bool AllineaUnAltro() const;

    bool PerDistanza = true;  ///< the axis counts metres along the reference; else seconds

    /// Equal parts, 3 to 20; 0: the sectors of the reference's circuit, or nine where it has none.
    void Parti(int quante);
    int Parti() const { return parti_; }
    bool ConSettori() const;  ///< the reference's circuit has a division
    /// Cuts in metres along the reference, without both ends.
    std::vector<double> Confini() const;

    /// The channels of all open logs, in the order in which they come.
    std::vector<CanaleConfronto> Canali() const;
    /// Length of the axis, in metres or seconds; 0 without a reference.
    double Fine() const;
    /// x on the axis of a place along the reference, metres, and back.
    double XDaMetri(double metri) const;
    double MetriDaX(double x) const;

    /// All panes: `chiavi` are channels' keys and `kChiaveDistacco`.
    DatiQuadri Quadri(const std::vector<std::string>& chiavi) const;
    /// The curves of one channel, the reference first.
    QuadroConfronto Quadro(const std::string& chiave) const;
    TabellaParti Tabella() const;
    /// Best lap that begins anywhere, of the aligned laps of the reference's log, hundredths; 0:
    /// none.
    std::int32_t Continuo() const;
    /// The best of all parts that any aligned lap of the open logs has driven, hundredths; 0: none.
    std::int32_t IdealeDiTutti() const;
    TabellaCursore AlCursore(const std::vector<std::string>& chiavi, double x,
                             std::optional<double> secondo) const;
    /// Seconds lost (positive) in each of `passi` equal steps of the reference by the lap in focus,
    /// for 100 m of way; empty without both.
    std::vector<double> RitmoPerCentoMetri(int passi) const;
    /// The values of a channel of the lap in focus, or of the reference without one, at the middle
    /// of equal steps.
    std::vector<double> LungoIlGiro(const std::string& chiave, int passi) const;

    /// Whether two chosen laps are of different tracks: lengths that differ by more than 3 in 100,
    /// or circuits of different names.
    bool TracciatiDiversi(GiroScelto a, GiroScelto b) const;

 private:
    struct Aperto {
        std::unique_ptr<LogAperto> Dati;
        mutable std::vector<std::optional<GiroAllineato>> Giri;
        mutable std::vector<bool> Provato;
    };

    std::vector<GiroScelto> InOrdine(int log) const;
    void ScegliNuovo(int log);
    void ScegliFuoco();
    char LetteraLibera() const;
    std::vector<char> Mostrati() const;
    int Colonna(int log, const std::string& chiave) const;
    CurvaGiro Curva(char lettera, const std::string& chiave) const;
    CurvaGiro CurvaDistacco(char lettera) const;
    double Valore(GiroScelto giro, int colonna, double quota) const;
    std::vector<int> Peggiori(const std::vector<std::int32_t>& giro,
                              const std::vector<std::int32_t>& riferimento) const;
    std::vector<double> ConfiniDelGiro(double lunghezza) const;
    void FraCursori(RigaCursore& riga, GiroScelto giro, const std::vector<std::string>& chiavi,
                    double da, double a) const;
    double QuotaDaX(double x) const;

    std::vector<Aperto> log_;
    std::array<std::optional<GiroScelto>, kGiriAccanto + 1> scelti_;  // R, then A to F
    char fuoco_ = 0;
    int parti_ = 0;
};

/// Best time of a lap that begins anywhere on the track and ends there, hundredths, from laps that
/// follow one another without a break; 0: there are none. `Giri` may hold nulls.
std::int32_t GiroContinuo(const std::vector<const GiroAllineato*>& giri);

}  // namespace lapvane
