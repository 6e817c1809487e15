#include "shell/NumeroTesto.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/ErroreRuntime.h"
#include "shell/CampoInParola.h"

namespace lapvane {

namespace {

constexpr int kCifre = 15;  // significant digits that a value is taken to

/// The digits of a value at 15 significant digits, without outer zeros: 0.<cifre> * 10^esponente.
struct Decimale {
    bool Negativo = false;
    int Esponente = 0;
    std::string Cifre;  // empty: zero
};

Decimale InDecimale(double valore) {
    Decimale d;
    if (!std::isfinite(valore)) throw ErroreRuntime(NumeroErrore::Overflow, Lavoro::NumeroInTesto);
    std::array<char, 40> testo{};
    const auto fine = std::to_chars(testo.data(), testo.data() + testo.size(), std::fabs(valore),
                                    std::chars_format::scientific, kCifre - 1)
                          .ptr;
    const char* const e = std::find(testo.data(), fine, 'e');
    for (const char* p = testo.data(); p != e; ++p) {
        if (*p != '.') d.Cifre += *p;
    }
    const char* daEsponente = e + 1;
    if (*daEsponente == '+') ++daEsponente;
    std::from_chars(daEsponente, fine, d.Esponente);
    d.Esponente += 1;
    while (!d.Cifre.empty() && d.Cifre.back() == '0') d.Cifre.pop_back();
    d.Negativo = valore < 0 && !d.Cifre.empty();
    if (d.Cifre.empty()) d.Esponente = 0;
    return d;
}

/// Rounds half away from zero to `decimali` digits after the point.
void Arrotonda(Decimale& d, int decimali) {
    const int tenute = d.Esponente + decimali;
    if (tenute >= static_cast<int>(d.Cifre.size())) return;
    const bool su = tenute >= 0 && d.Cifre[static_cast<std::size_t>(tenute)] >= '5';
    d.Cifre.resize(static_cast<std::size_t>(std::max(tenute, 0)));
    if (su) {
        std::size_t i = d.Cifre.size();
        while (i > 0 && d.Cifre[i - 1] == '9') d.Cifre[--i] = '0';
        if (i > 0) {
            ++d.Cifre[i - 1];
        } else {
            d.Cifre.insert(0, 1, '1');
            ++d.Esponente;
        }
    }
    while (!d.Cifre.empty() && d.Cifre.back() == '0') d.Cifre.pop_back();
    if (d.Cifre.empty()) d = Decimale{};
}

std::string ParteIntera(const Decimale& d) {
    if (d.Esponente <= 0) return {};
    std::string intera = d.Cifre.substr(0, static_cast<std::size_t>(d.Esponente));
    intera.append(static_cast<std::size_t>(d.Esponente) - intera.size(), '0');
    return intera;
}

std::string ParteDecimale(const Decimale& d) {
    if (d.Cifre.empty()) return {};
    if (d.Esponente <= 0) return std::string(static_cast<std::size_t>(-d.Esponente), '0') + d.Cifre;
    if (static_cast<std::size_t>(d.Esponente) >= d.Cifre.size()) return {};
    return d.Cifre.substr(static_cast<std::size_t>(d.Esponente));
}

std::string NumeroConZero(double valore, char separatore, bool zeroPrimaDelPunto) {
    const Decimale d = InDecimale(valore);
    std::string testo = d.Negativo ? "-" : "";
    if (d.Cifre.empty()) return "0";
    const int decimali = static_cast<int>(d.Cifre.size()) - d.Esponente;
    if (d.Esponente > kCifre || decimali > kCifre) {
        testo += d.Cifre[0];
        if (d.Cifre.size() > 1) testo += separatore + d.Cifre.substr(1);
        const int e = d.Esponente - 1;
        testo += e < 0 ? "E-" : "E+";
        return testo + DueCifre(std::abs(e));
    }
    std::string intera = ParteIntera(d);
    if (intera.empty() && zeroPrimaDelPunto) intera = "0";
    testo += intera;
    const std::string dopo = ParteDecimale(d);
    if (!dopo.empty()) testo += separatore + dopo;
    return testo;
}

bool Cifra(char c) {
    return c >= '0' && c <= '9';
}

/// Reads the longest number at `p` (no leading blanks) and moves `p` behind it; `p` stays where it
/// was if there is none. A comma counts as the point only if `virgola` is set.
double Leggi(const char*& p, const char* fine, bool virgola) {
    const char* q = p;
    const bool negativo = q != fine && *q == '-';
    if (q != fine && (*q == '-' || *q == '+')) ++q;
    std::uint64_t mantissa = 0;
    int cifre = 0;
    int decimali = 0;
    bool visto = false;
    for (; q != fine && Cifra(*q); ++q) {
        visto = true;
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*q - '0');
        if (mantissa != 0) ++cifre;
        if (cifre > 18) break;
    }
    if (cifre <= 18 && q != fine && (*q == '.' || (virgola && *q == ','))) {
        ++q;
        for (; q != fine && Cifra(*q); ++q) {
            visto = true;
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(*q - '0');
            if (mantissa != 0) ++cifre;
            ++decimali;
            if (cifre > 18) break;
        }
    }
    const bool conEsponente = q != fine && (*q == 'e' || *q == 'E');
    if (visto && cifre <= 15 && decimali <= 22 && !conEsponente) {
        // Both numbers are exact, so one division rounds correctly.
        p = q;
        const double valore =
            static_cast<double>(mantissa) / kPotenze[static_cast<std::size_t>(decimali)];
        return negativo ? -valore : valore;
    }
    if (!visto) return 0.0;
    // The long road: many digits or an exponent.
    std::string testo(p, fine);
    if (virgola) {
        const std::size_t v = testo.find_first_of(".,");
        if (v != std::string::npos) testo[v] = '.';
    }
    const std::size_t segno = !testo.empty() && testo[0] == '+' ? 1 : 0;
    double valore = 0.0;
    const auto esito = std::from_chars(testo.data() + segno, testo.data() + testo.size(), valore);
    if (esito.ec == std::errc::invalid_argument) return 0.0;
    if (esito.ec == std::errc::result_out_of_range) {
        throw ErroreRuntime(NumeroErrore::Overflow, Lavoro::TestoInNumero);
    }
    p += esito.ptr - testo.data();
    return valore;
}

constexpr auto kCoppie = [] {
    std::array<char, 200> coppie{};
    for (std::size_t i = 0; i < 100; ++i) {
        coppie[2 * i] = static_cast<char>('0' + i / 10);
        coppie[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return coppie;
}();

}  // namespace

std::string TestoNumero(double valore, char separatore) {
    return NumeroConZero(valore, separatore, true);
}

std::string TestoNumero(std::int64_t valore) {
    return std::to_string(valore);
}

std::string TestoNumeroConSpazio(double valore) {
    std::string testo = NumeroConZero(valore, '.', false);
    return testo[0] == '-' ? testo : " " + testo;
}

double PrefissoNumerico(std::string_view testo) {
    const char* p = testo.data();
    const char* const fine = p + testo.size();
    while (p != fine && (*p == ' ' || *p == '\t')) ++p;
    return Leggi(p, fine, false);
}

double CampoNumerico(const char* inizio, const char* fine) {
    while (inizio != fine && *inizio == ' ') ++inizio;
    try {
        return Leggi(inizio, fine, true);
    } catch (const ErroreRuntime&) {
        return 0.0;  // beyond the range of a float: not a number of a log
    }
}

std::string Formatta(double valore, std::string_view figura, char separatore) {
    const std::size_t punto = figura.find('.');
    const std::string_view prima = figura.substr(0, punto);
    const std::string_view dopo =
        punto == std::string_view::npos ? std::string_view{} : figura.substr(punto + 1);
    Decimale d = InDecimale(valore);
    Arrotonda(d, static_cast<int>(dopo.size()));

    // From the first "0" on, every place before the point is always written.
    const std::size_t primoZero = prima.find('0');
    const std::size_t minimoIntera =
        primoZero == std::string_view::npos ? 0 : prima.size() - primoZero;
    const std::size_t ultimoZero = dopo.rfind('0');
    const std::size_t minimoDecimali = ultimoZero == std::string_view::npos ? 0 : ultimoZero + 1;

    std::string intera = ParteIntera(d);
    if (intera.size() < minimoIntera) intera.insert(0, minimoIntera - intera.size(), '0');
    std::string decimale = ParteDecimale(d);
    if (decimale.size() < minimoDecimali) decimale.append(minimoDecimali - decimale.size(), '0');

    std::string testo = d.Negativo ? "-" : "";
    testo += intera;
    if (!decimale.empty()) testo += separatore + decimale;
    return testo;
}

char* ScriviIntero(char* dove, std::int64_t valore) {
    if (valore >= 0 && valore < 100) {
        if (valore >= 10) *dove++ = kCoppie[static_cast<std::size_t>(2 * valore)];
        *dove++ = kCoppie[static_cast<std::size_t>(2 * valore + 1)];
        return dove;
    }
    return std::to_chars(dove, dove + 20, valore).ptr;
}

char* ScriviDecimali(char* dove, double valore, char separatore) {
    const double centesimi = std::fabs(valore) * 100.0;
    if (centesimi < 1e9) {
        const double intero = std::floor(centesimi);
        const double resto = centesimi - intero;
        // Near a half the exact rule decides; elsewhere the rounding error of the product, below
        // 1e-6 here, changes nothing.
        if (std::fabs(resto - 0.5) > 1e-4) {
            const auto n = static_cast<std::uint32_t>(intero) + (resto > 0.5 ? 1u : 0u);
            if (valore < 0 && n != 0) *dove++ = '-';
            dove = ScriviIntero(dove, n / 100);
            *dove++ = separatore;
            const std::size_t c = std::size_t{2} * (n % 100);
            *dove++ = kCoppie[c];
            if (kCoppie[c + 1] != '0') *dove++ = kCoppie[c + 1];
            return dove;
        }
    }
    const std::string testo = Formatta(valore, "0.0#", separatore);
    return std::copy(testo.begin(), testo.end(), dove);
}

std::string DueCifre(std::int64_t valore) {
    std::string testo = std::to_string(valore < 0 ? -valore : valore);
    if (testo.size() < 2) testo.insert(0, 1, '0');
    return valore < 0 ? "-" + testo : testo;
}

std::int16_t ConvertiInt16(double valore) {
    const double r = std::nearbyint(valore);
    if (!(r >= -32768.0 && r <= 32767.0)) {
        throw ErroreRuntime(NumeroErrore::Overflow, Lavoro::Convertire16Bit);
    }
    return static_cast<std::int16_t>(r);
}

std::int32_t ConvertiInt32(double valore) {
    const double r = std::nearbyint(valore);
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) {
        throw ErroreRuntime(NumeroErrore::Overflow, Lavoro::Convertire32Bit);
    }
    return static_cast<std::int32_t>(r);
}

std::string_view Rifila(std::string_view testo) {
    while (!testo.empty() && testo.front() == ' ') testo.remove_prefix(1);
    while (!testo.empty() && testo.back() == ' ') testo.remove_suffix(1);
    return testo;
}

std::optional<double> LeggiNumero(std::string_view testo) {
    testo = Rifila(testo);
    if (testo.empty()) return std::nullopt;
    const char* p = testo.data();
    const char* const fine = p + testo.size();
    try {
        const double valore = Leggi(p, fine, true);
        if (p != fine) return std::nullopt;
        return valore;
    } catch (const ErroreRuntime&) {
        return std::nullopt;
    }
}

std::optional<std::int16_t> LeggiInt16(std::string_view testo) {
    const auto valore = LeggiInt32(testo);
    if (!valore || *valore < -32768 || *valore > 32767) return std::nullopt;
    return static_cast<std::int16_t>(*valore);
}

std::optional<std::int32_t> LeggiInt32(std::string_view testo) {
    const auto valore = LeggiNumero(testo);
    if (!valore) return std::nullopt;
    const double r = std::nearbyint(*valore);
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) return std::nullopt;
    return static_cast<std::int32_t>(r);
}

std::optional<std::int32_t> LeggiIntero(std::string_view testo) {
    testo = Rifila(testo);
    if (!testo.empty() && testo.front() == '+') testo.remove_prefix(1);
    std::int32_t valore = 0;
    const auto esito = std::from_chars(testo.data(), testo.data() + testo.size(), valore);
    if (testo.empty() || esito.ec != std::errc{} || esito.ptr != testo.data() + testo.size()) {
        return std::nullopt;
    }
    return valore;
}

}  // namespace lapvane
