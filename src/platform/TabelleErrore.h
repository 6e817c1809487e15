#pragma once

#include <algorithm>
#include <iterator>

namespace lapvane {

// The words of a run-time error. A row makes the value of the enumeration and its words in both
// languages (English, Italian; Windows-1252): neither can be without the other.

#define LAPVANE_NUMERI_ERRORE(RIGA)                                                           \
    RIGA(Overflow, 6, "Overflow", "Overflow")                                                 \
    RIGA(Subscript, 9, "Subscript out of range", "Indice fuori intervallo")                   \
    RIGA(Division, 11, "Division by zero", "Divisione per zero")                              \
    RIGA(TypeMismatch, 13, "Type mismatch", "Tipo non corrispondente")                        \
    RIGA(FileNotFound, 53, "File not found", "File non trovato")                              \
    RIGA(FileAlreadyOpen, 55, "File already open", "File gi\xE0 aperto")                      \
    RIGA(DeviceIo, 57, "Device I/O error", "Errore di I/O della periferica")                  \
    RIGA(DiskFull, 61, "Disk full", "Disco pieno")                                            \
    RIGA(InputPastEnd, 62, "Input past end of file", "Lettura oltre la fine del file")        \
    RIGA(PathAccess, 75, "Path/File access error", "Errore di accesso al percorso o al file") \
    RIGA(PathNotFound, 76, "Path not found", "Percorso non trovato")                          \
    RIGA(PrinterError, 482, "Printer error", "Errore della stampante")

#define LAPVANE_LAVORI(RIGA)                                                                    \
    RIGA(SalvareProgetto, "saving the project", "salvataggio del progetto")                     \
    RIGA(AprireProgetto, "opening the project", "apertura del progetto")                        \
    RIGA(CercareCampo, "looking for a project field", "ricerca di un campo del progetto")       \
    RIGA(LeggereRecenti, "reading the list of recent files",                                    \
         "lettura dell'elenco dei file recenti")                                                \
    RIGA(ScrivereRecenti, "writing the list of recent files",                                   \
         "scrittura dell'elenco dei file recenti")                                              \
    RIGA(LeggereTesti, "reading the language table", "lettura della tabella delle lingue")      \
    RIGA(SalvareLingua, "saving the choice of language", "salvataggio della lingua scelta")     \
    RIGA(LeggereLibreria, "reading the sensor library", "lettura della libreria sensori")       \
    RIGA(ScrivereSensore, "writing a sensor file", "scrittura di un file di sensore")           \
    RIGA(LeggerePuntoCurva, "reading a point of a sensor curve",                                \
         "lettura di un punto di una curva")                                                    \
    RIGA(LeggereFile, "reading a file", "lettura di un file")                                   \
    RIGA(RiempireCartella, "filling the program's folder",                                      \
         "riempimento della cartella del programma")                                            \
    RIGA(ElencareCartella, "listing a folder", "lettura di una cartella")                       \
    RIGA(CodificareCampo, "encoding a field for the instrument",                                \
         "codifica di un campo per lo strumento")                                               \
    RIGA(CalcolareChecksum, "computing a checksum", "calcolo di un checksum")                   \
    RIGA(ScaricareLog, "keeping the download on the disk", "copia dello scaricamento su disco") \
    RIGA(ConvertireLog, "converting the log", "conversione del log")                            \
    RIGA(ScrivereImpostazioni, "writing the copy of the settings",                              \
         "scrittura della copia delle impostazioni")                                            \
    RIGA(LeggereImpostazioni, "reading the copy of the settings",                               \
         "lettura della copia delle impostazioni")                                              \
    RIGA(ScegliereCopia, "keeping the choice of the download window",                           \
         "salvataggio della scelta sulla copia")                                                \
    RIGA(LeggereLog, "reading the log", "lettura del log")                                      \
    RIGA(LeggereTempi, "reading the lap times", "lettura dei tempi sul giro")                   \
    RIGA(LeggereScelte, "reading the choices of the comparison",                                \
         "lettura delle scelte del confronto")                                                  \
    RIGA(ScrivereScelte, "writing the choices of the comparison",                               \
         "scrittura delle scelte del confronto")                                                \
    RIGA(LeggereVista, "reading the last view of the analysis",                                 \
         "lettura dell'ultima vista dell'analisi")                                              \
    RIGA(ScrivereVista, "writing the last view of the analysis",                                \
         "scrittura dell'ultima vista dell'analisi")                                            \
    RIGA(ScrivereConfronto, "writing the compared laps", "scrittura dei giri confrontati")      \
    RIGA(LeggereUscite, "reading the list of runs", "lettura dell'elenco delle uscite")         \
    RIGA(ScrivereUscite, "writing the list of runs", "scrittura dell'elenco delle uscite")      \
    RIGA(ScrivereTabella, "writing a table", "scrittura di una tabella")                        \
    RIGA(ScrivereImmagine, "writing a picture", "scrittura di un'immagine")                     \
    RIGA(ChiedereAnalisi, "asking an analysis for a channel or a lap",                          \
         "richiesta di un canale o di un giro a un'analisi")                                    \
    RIGA(LeggereSettori, "reading the sectors", "lettura dei settori")                          \
    RIGA(LeggereSessione, "reading the session", "lettura dei dati della sessione")             \
    RIGA(ScrivereSessione, "writing the session", "scrittura dei dati della sessione")          \
    RIGA(LeggereTracciato, "reading the outline of a track", "lettura di un tracciato")         \
    RIGA(ScrivereSettori, "writing the sectors", "scrittura dei settori")                       \
    RIGA(ScrivereSchema, "writing schema.ini", "scrittura di schema.ini")                       \
    RIGA(Stampare, "printing a document", "stampa di un documento")                             \
    RIGA(LeggereTempo, "reading a time (hh:mm:ss.cc)", "lettura di un tempo (hh:mm:ss.cc)")     \
    RIGA(CalcolareTempoMedio, "computing a mean time", "calcolo del tempo medio")               \
    RIGA(NumeroInTesto, "number to text", "da numero a testo")                                  \
    RIGA(TestoInNumero, "text to number", "da testo a numero")                                  \
    RIGA(Convertire16Bit, "conversion to a 16-bit number", "conversione in un numero a 16 bit") \
    RIGA(Convertire32Bit, "conversion to a 32-bit number", "conversione in un numero a 32 bit") \
    RIGA(CercareTesto, "looking for a text of the language table",                              \
         "ricerca di un testo della tabella delle lingue")

/// The classic run-time error numbers that the program can raise.
enum class NumeroErrore : int {
#define LAPVANE_RIGA(nome, numero, inglese, italiano) nome = (numero),
    LAPVANE_NUMERI_ERRORE(LAPVANE_RIGA)
#undef LAPVANE_RIGA
};

/// What the program was doing when a run-time error came.
enum class Lavoro : int {
#define LAPVANE_RIGA(nome, inglese, italiano) nome,
    LAPVANE_LAVORI(LAPVANE_RIGA)
#undef LAPVANE_RIGA
};

struct Parole {
    const char* Inglese;
    const char* Italiano;
};

struct RigaErrore {
    NumeroErrore Numero;
    Parole Testo;
};

inline constexpr RigaErrore kErrori[] = {
#define LAPVANE_RIGA(nome, numero, inglese, italiano) {NumeroErrore::nome, {inglese, italiano}},
    LAPVANE_NUMERI_ERRORE(LAPVANE_RIGA)
#undef LAPVANE_RIGA
};

/// By the values of `Lavoro`.
inline constexpr Parole kLavori[] = {
#define LAPVANE_RIGA(nome, inglese, italiano) {inglese, italiano},
    LAPVANE_LAVORI(LAPVANE_RIGA)
#undef LAPVANE_RIGA
};

constexpr bool Complete(const Parole& parole) {
    return *parole.Inglese != '\0' && *parole.Italiano != '\0';
}
static_assert(std::all_of(std::begin(kLavori), std::end(kLavori), Complete));
static_assert(std::all_of(std::begin(kErrori), std::end(kErrori),
                          [](const RigaErrore& riga) { return Complete(riga.Testo); }));

}  // namespace lapvane
