#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lapvane {

/// A file as its folder lists it: what tells that it has changed.
struct StatoFile {
    std::int64_t Byte = -1;  ///< -1: there is no such file
    std::int64_t Tempo = 0;  ///< milliseconds since 1970, of the last writing

    bool CE() const { return Byte >= 0; }
    bool operator==(const StatoFile&) const = default;
};

/// The files that a run is made of.
struct FileUscita {
    StatoFile Csv;
    StatoFile Laterale;  ///< .txt, or .alm where there is none
    StatoFile Tim;
    StatoFile Ses;
    StatoFile Impostazioni;  ///< the settings of the day

    bool operator==(const FileUscita&) const = default;
};

/// What is wrong with a run.
enum class Guasto : std::uint8_t {
    Nessuno,
    Illeggibile,     ///< a file can't be read
    Parti,           ///< files of the log are missing
    NonUnLog,        ///< the data file has another first line
    LogEnorme,       ///< a file is too big to be one of a log; it is not read
    LogVuoto,        ///< no row
    GiroBuco,        ///< rows of a lap are missing
    GiroDiverso,     ///< a lap has more rows than its time
    GiroSenzaRighe,  ///< the log has no rows of a lap
};
constexpr Guasto kUltimoGuasto = Guasto::GiroSenzaRighe;

struct GuastoUscita {
    Guasto Tipo = Guasto::Nessuno;
    std::string Cosa;  ///< the file's name, or the endings that are missing
    int Numero = 0;    ///< of the lap; with `Parti` how many files are there
    int Secondi = 0;   ///< by which the lap differs
    int Usati = 0;     ///< laps of which the ideal lap is made ...
    int Totale = 0;    ///< ... and those that have a time

    bool operator==(const GuastoUscita&) const = default;
};

/// One run: a data file with what lies beside it. All text is Windows-1252.
struct Uscita {
    std::filesystem::path Csv;
    FileUscita File;

    std::int32_t Giorno = 0;     ///< 20260517; 0: not known
    std::int32_t Minuto = -1;    ///< since midnight; -1: not known
    bool QuandoDelFile = false;  ///< the day is the data file's: the session has none to be read
    std::string DataSessione;    ///< as the person wrote it
    std::string OraSessione;
    std::string Sessione;
    std::string Circuito;
    std::string LunghTracciato;  ///< metres, as digits
    std::string Piloti;
    std::string Veicolo;  ///< from the settings of the day
    std::string Note;

    /// The complete laps as the lap table counts them, hundredths of a second; 0: no valid time.
    std::vector<std::int32_t> Tempi;
    std::int32_t Migliore = 0;     ///< hundredths; 0: no lap has a time
    std::int32_t MediaCinque = 0;  ///< of the five best laps, hundredths; 0: there are fewer

    // What only the log itself tells.
    bool LogLetto = false;        ///< it was read, as far as it can be
    std::int32_t Ideale = 0;      ///< hundredths, as the comparison has it; 0: none
    std::int32_t Durata = 0;      ///< tenths of a second from the first to the last row; 0: none
    std::vector<int> Numeri;      ///< of the laps in the lap table, as `Tempi`
    std::uint32_t Divisione = 0;  ///< of the circuit into sectors, with which `Ideale` was made

    GuastoUscita Problema;
    /// What of the path is not there any more ("E:", a folder); empty: all of it is. The values are
    /// of the last reading then.
    std::filesystem::path Sparito;

    int Giri() const { return static_cast<int>(Tempi.size()); }
    /// The number of lap `i` (from 0) in the lap table.
    int NumeroGiro(int i) const;
    /// Which lap is the best, from 0; -1: none.
    int QualeMigliore() const;
    /// The row tells of something that is wrong.
    bool ChiedeAttenzione() const { return !Sparito.empty() || Problema.Tipo != Guasto::Nessuno; }
};

/// What is wrong with a run, in words of the language of now, no heading letter; empty: nothing.
std::string FraseProblema(const Uscita& uscita);

/// "17 May 2026" in the language of now, of a day as `Giorno`; empty for 0.
std::string TestoGiorno(std::int32_t giorno);
/// The date of a run for a person: `TestoGiorno`, or what the session has where that can't be read.
std::string TestoData(const Uscita& uscita);
/// "16:18", or what the session has where that is no time.
std::string TestoOra(const Uscita& uscita);

/// The day of a date that a person has typed: numbers in the order day, month, year (or year first,
/// where it has four digits), parted by anything; a month may be a word, Italian or English, of
/// which three letters count. Two digits are a year of this century. 0: it is no date.
std::int32_t LeggiGiorno(std::string_view testo);
/// Minutes since midnight of "16:18", "16.18" or "16:18:30", with am or pm behind it or without;
/// -1: it is no time.
std::int32_t LeggiMinuto(std::string_view testo);

/// Takes over the lap times of a .tim file's text: complete laps, best, mean of the five best. Laps
/// without a valid time count as laps and for nothing else.
void PrendiTempi(Uscita& uscita, std::string_view tim);

}  // namespace lapvane
