#include "analysis/Schema.h"

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

}  // namespace lapvane
