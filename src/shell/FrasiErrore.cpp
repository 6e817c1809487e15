#include "shell/FrasiErrore.h"

#include <array>
#include <utility>

#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 46> kFrasi = {{
    // The classic texts of the error numbers.
    {"Overflow", "Overflow"},
    {"Subscript out of range", "Indice fuori intervallo"},
    {"Division by zero", "Divisione per zero"},
    {"Type mismatch", "Tipo non corrispondente"},
    {"File not found", "File non trovato"},
    {"File already open", "File gi\xE0 aperto"},
    {"Device I/O error", "Errore di I/O della periferica"},
    {"Disk full", "Disco pieno"},
    {"Input past end of file", "Lettura oltre la fine del file"},
    {"Path/File access error", "Errore di accesso al percorso o al file"},
    {"Path not found", "Percorso non trovato"},
    {"Printer error", "Errore della stampante"},
    // What the program was doing.
    {"saving the project", "salvataggio del progetto"},
    {"opening the project", "apertura del progetto"},
    {"looking for a project field", "ricerca di un campo del progetto"},
    {"reading the list of recent files", "lettura dell'elenco dei file recenti"},
    {"writing the list of recent files", "scrittura dell'elenco dei file recenti"},
    {"reading the language table", "lettura della tabella delle lingue"},
    {"saving the choice of language", "salvataggio della lingua scelta"},
    {"looking for an entry of a list of names", "ricerca in un elenco di nomi"},
    {"reading the sensor library", "lettura della libreria sensori"},
    {"writing a sensor file", "scrittura di un file di sensore"},
    {"reading a point of a sensor curve", "lettura di un punto di una curva"},
    {"reading a file", "lettura di un file"},
    {"filling the program's folder", "riempimento della cartella del programma"},
    {"listing a folder", "lettura di una cartella"},
    {"encoding a field for the instrument", "codifica di un campo per lo strumento"},
    {"computing a checksum", "calcolo di un checksum"},
    {"converting the log", "conversione del log"},
    {"reading the log", "lettura del log"},
    {"reading the lap times", "lettura dei tempi sul giro"},
    {"asking an analysis for a channel or a lap",
     "richiesta di un canale o di un giro a un'analisi"},
    {"reading the sectors", "lettura dei settori"},
    {"reading the session", "lettura dei dati della sessione"},
    {"writing the session", "scrittura dei dati della sessione"},
    {"reading the outline of a track", "lettura di un tracciato"},
    {"writing the sectors", "scrittura dei settori"},
    {"writing schema.ini", "scrittura di schema.ini"},
    {"printing a document", "stampa di un documento"},
    {"reading a time (hh:mm:ss.cc)", "lettura di un tempo (hh:mm:ss.cc)"},
    {"computing a mean time", "calcolo del tempo medio"},
    {"number to text", "da numero a testo"},
    {"text to number", "da testo a numero"},
    {"conversion to a 16-bit number", "conversione in un numero a 16 bit"},
    {"conversion to a 32-bit number", "conversione in un numero a 32 bit"},
    {"looking for a text of the language table", "ricerca di un testo della tabella delle lingue"},
}};

}  // namespace

std::string FraseErrore(std::string_view inglese) {
    if (Testi.empty() || IndiceLingua != 0) return std::string(inglese);
    for (const auto& [chiave, italiano] : kFrasi) {
        if (chiave == inglese) return std::string(italiano);
    }
    return std::string(inglese);
}

std::string Motivo(const ErroreRuntime& errore) {
    switch (errore.Numero()) {
        case NumeroErrore::DiskFull:
            return Testo(Voce::MotivoPieno);
        case NumeroErrore::PathAccess:
            return Testo(Voce::MotivoNegato);
        case NumeroErrore::FileNotFound:
        case NumeroErrore::PathNotFound:
            return Testo(Voce::MotivoSparito);
        case NumeroErrore::DeviceIo:
            return Testo(Voce::MotivoGuasto);
        default:
            return FraseErrore(errore.what());
    }
}

void SegnalaScrittura(const ErroreRuntime& errore, Voce perduto) {
    platform().MousePointer(Pointer::Normal);
    platform().MsgBox(Testo(Voce::NonScritto) + "\r\n" + TestoDaPercorso(errore.File()) + "\r\n" +
                          Motivo(errore) + "\r\n\r\n" + Testo(perduto),
                      Buttons::Ok, Icon::Critical, platform().ExeName());
}

}  // namespace lapvane
