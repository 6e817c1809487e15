#include "shell/Utility.h"

#include <algorithm>

#include "platform/ErroreRuntime.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

[[noreturn]] void NonTempo() {
    throw ErroreRuntime(NumeroErrore::TypeMismatch, Lavoro::LeggereTempo);
}

int DueCifreIn(std::string_view testo, std::size_t da) {
    if (testo.size() < da + 2) NonTempo();
    const auto cifra = [](char c) { return c >= '0' && c <= '9'; };
    if (!cifra(testo[da]) || !cifra(testo[da + 1])) NonTempo();
    return (testo[da] - '0') * 10 + (testo[da + 1] - '0');
}

/// Hundredths: the last two characters as an integer. One digit behind the point (".5") counts as
/// the digit alone, as a numeric parse of the two characters takes it.
int Centesimi(std::string_view testo) {
    if (testo.size() < 2) NonTempo();
    const std::string_view coda = testo.substr(testo.size() - 2);
    if (coda[0] == '.') return DueCifreIn("0" + std::string(coda.substr(1)), 0);
    return DueCifreIn(coda, 0);
}

struct OraDelGiorno {
    int Ore, Minuti, Secondi;
};

OraDelGiorno Ora(std::string_view testo) {
    if (testo.size() < 8 || testo[2] != ':' || testo[5] != ':') NonTempo();
    const OraDelGiorno ora{DueCifreIn(testo, 0), DueCifreIn(testo, 3), DueCifreIn(testo, 6)};
    if (ora.Ore > 23 || ora.Minuti > 59 || ora.Secondi > 59) NonTempo();
    return ora;
}

void Allunga(std::string& tempo) {
    if (tempo.size() < 11) tempo += '0';
}

}  // namespace

std::string VirgolaInPunto(std::string_view testo) {
    std::string uscita(testo);
    std::replace(uscita.begin(), uscita.end(), ',', '.');
    return uscita;
}

std::string& FormattaDecimali(std::string& testo, int fattore) {
    const int decimali = fattore == 10 ? 1 : fattore == 100 ? 2 : fattore == 1000 ? 3 : 0;
    const std::size_t p = std::min(testo.find('.'), testo.size());
    if (decimali > 0) {
        if (p == testo.size()) testo += '.';
        const std::size_t scritti = testo.size() - p - 1;
        if (scritti < static_cast<std::size_t>(decimali)) {
            testo.append(static_cast<std::size_t>(decimali) - scritti, '0');
        }
    }
    if (p == 0) testo.insert(0, 1, '0');
    return testo;
}

std::string SommaTempi(std::string& a, std::string& b) {
    Allunga(a);
    Allunga(b);
    int centesimi = Centesimi(a) + Centesimi(b);
    const int riporto = centesimi >= 100 ? 1 : 0;
    centesimi -= 100 * riporto;
    const OraDelGiorno x = Ora(a);
    const OraDelGiorno y = Ora(b);
    const int secondi =
        ((x.Ore + y.Ore) * 60 + x.Minuti + y.Minuti) * 60 + x.Secondi + y.Secondi + riporto;
    const int giorno = secondi % 86400;
    return DueCifre(giorno / 3600) + ":" + DueCifre(giorno / 60 % 60) + ":" +
           DueCifre(giorno % 60) + "." + DueCifre(centesimi);
}

std::string DividiTempo(std::string tempo, std::int16_t divisore) {
    if (divisore == 0) throw ErroreRuntime(NumeroErrore::Division, Lavoro::CalcolareTempoMedio);
    const int centesimi = Centesimi(tempo);
    Allunga(tempo);
    const OraDelGiorno ora = Ora(tempo);
    const int n = divisore;
    const int minuti = ora.Minuti + 60 * (ora.Ore % n);
    const int secondi = ora.Secondi + 60 * (minuti % n);
    const int resto = centesimi + 100 * (secondi % n);
    return DueCifre(minuti / n) + ":" + DueCifre(secondi / n) + "." + DueCifre(resto / n);
}

std::string CentesimiInTempo(std::int32_t centesimi) {
    const std::int32_t cc = centesimi % 100;
    const std::int32_t secondi = (centesimi - cc) / 100;
    return DueCifre(secondi / 60) + ":" + DueCifre(secondi % 60) + "." + DueCifre(cc);
}

}  // namespace lapvane
