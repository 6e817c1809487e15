#include "instrument/Vivo.h"

#include <algorithm>
#include <cmath>

#include "device/Codec.h"

namespace lapvane::strumento {

namespace {

constexpr unsigned kLineeAllarme = 0xFF00u;
constexpr int kFondoScala = 1023;

int Arrotonda(double valore) {
    return static_cast<int>(std::lround(valore));
}

/// A raw reading of an analogue input.
std::int16_t Grezzo(double valore) {
    return static_cast<std::int16_t>(std::clamp(Arrotonda(valore), 0, kFondoScala));
}

}  // namespace

ValoriVivi VivoAl(const Memoria& memoria, std::int64_t ms) {
    ValoriVivi valori;
    const std::int64_t durata = std::int64_t{memoria.Blocchi()} * 1000;
    if (durata == 0) return valori;
    const std::int64_t istante = (ms % durata + durata) % durata;
    const auto b = static_cast<std::int32_t>(istante / 1000);
    const std::string_view ora = memoria.Blocco(b);
    const std::string_view prima = memoria.Blocco(std::max(0, b - 1));
    // A record's slow readings are those of its end.
    const double quota = static_cast<double>(istante % 1000) / 1000.0;
    const auto fra = [quota](int da, int a, double divisore) {
        return (da + (a - da) * quota) / divisore;
    };
    const auto byteFra = [&](std::size_t posto, double divisore) {
        return fra(ByteIn(prima, posto), ByteIn(ora, posto), divisore);
    };
    const auto parolaFra = [&](std::size_t posto, double divisore) {
        return fra(Int16In(prima, posto), Int16In(ora, posto), divisore);
    };
    const std::size_t base = static_cast<std::size_t>(istante % 1000 / 100) * 11;

    valori.Segnali = static_cast<unsigned>(WordIn(ora, 124)) & kLineeAllarme;
    valori.GiriMotore = WordIn(ora, base + 1);
    valori.Distanza = WordIn(ora, base + 3);
    valori.Marcia = ByteIn(ora, base + 5);
    valori.Turbo = SByteIn(ora, base + 6);
    valori.Farfalla = ByteIn(ora, base + 7);
    valori.Accelerazione = SByteIn(ora, base + 8);
    valori.TempOlio = parolaFra(111, 10.0);
    valori.TempAcqua = parolaFra(113, 10.0);
    valori.PressOlio = byteFra(115, 10.0);
    valori.PressBenzina = byteFra(116, 10.0);
    valori.Livello = byteFra(117, 1.0);
    valori.Batteria = byteFra(118, 10.0);
    valori.AriaBenzina = byteFra(119, 10.0);
    valori.Velocita = parolaFra(122, 1.0);
    return valori;
}

std::string DatiVivi(const ValoriVivi& valori, const Memoria& memoria) {
    // In the order of the frame, from its third character on.
    return CodificaWord(static_cast<std::int32_t>(valori.Segnali)) +
           CodificaWord(valori.GiriMotore) + CodificaWord(valori.Distanza) +
           CodificaWord(Arrotonda(valori.Velocita)) +
           CodificaWord(Arrotonda(valori.TempOlio * 10.0)) +
           CodificaWord(Arrotonda(valori.TempAcqua * 10.0)) +
           CodificaWord(Arrotonda(valori.PressOlio * 1000.0)) +
           CodificaWord(Arrotonda(valori.PressBenzina * 1000.0)) +
           CodificaWord(Arrotonda(valori.Batteria * 10.0)) + CodificaWord(0) +
           CodificaWord(memoria.Giri()) +
           CodificaByte(std::clamp(Arrotonda(valori.Livello * 10.0), 0, 255)) +
           CodificaByte(valori.Marcia) + CodificaByte(valori.Turbo) +
           CodificaByte(valori.Farfalla) + CodificaByte(valori.Accelerazione) +
           CodificaWord(Arrotonda(valori.AriaBenzina * 100.0)) + CodificaLong(memoria.ByteLog());
}

std::int16_t LivelloGrezzo(double litri, bool scende) {
    const double valore = 40.0 + 16.0 * litri;
    return Grezzo(scende ? kFondoScala - valore : valore);
}

std::array<std::int16_t, 8> IngressiAnalogici(const ValoriVivi& valori) {
    return {Grezzo(1000.0 - 6.0 * valori.TempOlio),   // the resistance falls with the heat
            Grezzo(102.0 + 82.0 * valori.PressOlio),  // 0.5 to 4.5 V for 0 to 10 bar
            Grezzo(102.0 + 82.0 * valori.PressBenzina),
            Grezzo(1000.0 - 6.0 * valori.TempAcqua),
            LivelloGrezzo(valori.Livello),
            Grezzo(51.0 * valori.Batteria),
            Grezzo(120.0 * valori.Marcia),
            Grezzo(512.0 + 17.0 * valori.Accelerazione)};
}

}  // namespace lapvane::strumento
