#include "shell/CsvTabella.h"

#include <string_view>

namespace lapvane {

namespace {

constexpr char kSeparatore = ';';

/// "12.5", "-3,25", "01:02.03": digits, with one point or comma among them.
std::string ConDecimale(std::string testo, char decimale) {
    constexpr std::string_view kCifre = "0123456789:";
    const std::size_t segno = testo.find_first_of(".,");
    if (segno == std::string::npos) return testo;
    std::string cifre = testo;
    cifre.erase(segno, 1);
    if (cifre.starts_with('-')) cifre.erase(0, 1);
    if (!cifre.empty() && cifre.find_first_not_of(kCifre) == std::string::npos) {
        testo[segno] = decimale;
    }
    return testo;
}

}  // namespace

std::string CampoCsv(const std::string& testo, char separatore) {
    if (testo.find_first_of(std::string("\"\r\n") + separatore) == std::string::npos) return testo;
    std::string campo = "\"";
    for (const char c : testo) campo += c == '"' ? std::string("\"\"") : std::string(1, c);
    return campo + "\"";
}

std::string CsvTabella(const RigheTabella& righe, char decimale) {
    std::string csv;
    for (const auto& riga : righe) {
        for (std::size_t c = 0; c < riga.size(); ++c) {
            if (c > 0) csv += kSeparatore;
            csv += CampoCsv(ConDecimale(riga[c], decimale), kSeparatore);
        }
        csv += "\r\n";
    }
    return csv;
}

}  // namespace lapvane
