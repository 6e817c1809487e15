#include "analysis/Schema.h"

#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Testo1252.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

void Sezione(std::string& testo, std::string_view nome, int colonne) {
    testo.append("[").append(nome).append("]\r\n");
    testo +=
        "ColNameHeader=True\r\n"
        "Format=Delimited(;)\r\n"
        "MaxScanRows=1\r\n"
        "CharacterSet=ANSI\r\n";
    for (int i = 1; i <= colonne; ++i) {
        testo += "Col" + TestoNumero(i) + "=F" + TestoNumero(i) + " Double\r\n";
    }
}

}  // namespace

std::string TestoSchema(std::string_view nomeCsv, int numCampi, std::string_view nomeLaterale,
                        int numCampiTxt) {
    std::string testo;
    Sezione(testo, nomeCsv, numCampi);
    Sezione(testo, nomeLaterale, numCampiTxt);
    const std::string giro = TestoNumero(numCampiTxt + 1);
    return testo + "Col" + giro + "=F" + giro + " Integer\r\n";
}

void ScriviSchema(const std::filesystem::path& cartella, const std::filesystem::path& nomeCsv,
                  int numCampi, const std::filesystem::path& nomeLaterale, int numCampiTxt) {
    const std::filesystem::path file = cartella / "schema.ini";
    const std::string testo =
        TestoSchema(TestoDaPercorso(nomeCsv), numCampi, TestoDaPercorso(nomeLaterale), numCampiTxt);
    try {
        // A log that is opened again finds its own: no one waits for the disk.
        if (FileEsiste(file) &&
            LeggiFile(file, Lavoro::ScrivereSchema, testo.size() + 1) == testo) {
            return;
        }
        ScriviFile(file, testo, Lavoro::ScrivereSchema);
    } catch (const ErroreRuntime&) {
        // A log on a medium that cannot be written to is read all the same.
    }
}

}  // namespace lapvane
