#include "runs/Uscita.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <initializer_list>
#include <numeric>

#include "analysis/FileTim.h"
#include "analysis/compare/LogAperto.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr std::size_t kMedia = 5;  // laps
constexpr std::int32_t kAnno = 10000;
constexpr std::int32_t kMese = 100;

/// A text with %1, %2 ... replaced.
std::string Componi(Voce voce, std::initializer_list<std::string> valori) {
    std::string testo = Testo(voce);
    char numero = '1';
    for (const std::string& valore : valori) {
        const std::string posto{'%', numero++};
        const std::size_t dove = testo.find(posto);
        if (dove != std::string::npos) testo.replace(dove, posto.size(), valore);
    }
    return testo;
}

std::string FraseSparito(const std::filesystem::path& sparito) {
    const bool unita = !sparito.has_relative_path() && sparito.has_root_name();
    return Componi(unita ? Voce::UscitaUnitaSparita : Voce::UscitaCartellaSparita,
                   {TestoDaPercorso(unita ? sparito.root_name() : sparito)});
}

std::string FraseGiro(Voce voce, const GuastoUscita& guasto) {
    return Componi(voce, {TestoNumero(guasto.Numero), TestoNumero(guasto.Secondi),
                          TestoNumero(guasto.Usati), TestoNumero(guasto.Totale)});
}

bool Cifra(char c) {
    return c >= '0' && c <= '9';
}

bool Lettera(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// A stretch of digits or of letters.
struct Pezzo {
    std::string_view Testo;
    bool Numero = false;
};

/// The digits and the words of a text, whatever stands between them.
std::vector<Pezzo> Pezzi(std::string_view testo) {
    std::vector<Pezzo> pezzi;
    for (std::size_t i = 0; i < testo.size();) {
        const auto uguale = Cifra(testo[i]) ? Cifra : Lettera;
        std::size_t oltre = i;
        while (oltre < testo.size() && uguale(testo[oltre])) ++oltre;
        if (oltre > i) pezzi.push_back({testo.substr(i, oltre - i), uguale == Cifra});
        i = std::max(oltre, i + 1);
    }
    return pezzi;
}

/// 1 to 12 by the first three letters of a month's name, Italian or English; 0: it is none.
std::int32_t MeseDaParola(std::string_view parola) {
    static constexpr std::array<std::string_view, 24> kNomi = {
        "gen", "feb", "mar", "apr", "mag", "giu", "lug", "ago", "set", "ott", "nov", "dic",
        "jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"};
    if (parola.size() < 3) return 0;
    std::string inizio;
    for (const char c : parola.substr(0, 3)) inizio += static_cast<char>(c | 0x20);
    const auto trovato = std::find(kNomi.begin(), kNomi.end(), inizio);
    return trovato == kNomi.end() ? 0
                                  : static_cast<std::int32_t>((trovato - kNomi.begin()) % 12) + 1;
}

}  // namespace

int Uscita::NumeroGiro(int i) const {
    const auto k = static_cast<std::size_t>(i);
    return k < Numeri.size() ? Numeri[k] : i + 1;
}

int Uscita::QualeMigliore() const {
    if (Migliore <= 0) return -1;
    return static_cast<int>(std::find(Tempi.begin(), Tempi.end(), Migliore) - Tempi.begin());
}

std::string FraseProblema(const Uscita& uscita) {
    if (!uscita.Sparito.empty()) return FraseSparito(uscita.Sparito);
    const GuastoUscita& guasto = uscita.Problema;
    switch (guasto.Tipo) {
        case Guasto::Nessuno:
            break;
        case Guasto::Illeggibile:
            return Componi(Voce::UscitaIlleggibile, {guasto.Cosa});
        case Guasto::Parti:
            return Componi(Voce::UscitaParti, {TestoNumero(guasto.Numero), guasto.Cosa});
        case Guasto::NonUnLog:
            return Testo(Voce::UscitaNonUnLog);
        case Guasto::LogEnorme:
            return Componi(Voce::UscitaLogEnorme, {guasto.Cosa});
        case Guasto::LogVuoto:
            return Testo(Voce::UscitaLogVuoto);
        case Guasto::GiroBuco:
            return FraseGiro(Voce::UscitaBuco, guasto);
        case Guasto::GiroDiverso:
            return FraseGiro(Voce::UscitaTempoDiverso, guasto);
        case Guasto::GiroSenzaRighe:
            return FraseGiro(Voce::UscitaSenzaRighe, guasto);
    }
    return {};
}

std::string TestoGiorno(std::int32_t giorno) {
    if (giorno <= 0) return {};
    const std::string mesi = Testo(Voce::MesiBrevi);
    std::string_view resto = mesi;
    for (std::int32_t m = giorno / kMese % kMese; m > 1; --m) {
        resto.remove_prefix(std::min(resto.find(' ') + 1, resto.size()));
    }
    return TestoNumero(int{giorno % kMese}) + " " + std::string(resto.substr(0, resto.find(' '))) +
           " " + TestoNumero(int{giorno / kAnno});
}

std::string TestoData(const Uscita& uscita) {
    const bool parole = uscita.QuandoDelFile && !uscita.DataSessione.empty();
    return parole ? uscita.DataSessione : TestoGiorno(uscita.Giorno);
}

std::string TestoOra(const Uscita& uscita) {
    if (uscita.Minuto < 0) return uscita.OraSessione;
    return DueCifre(uscita.Minuto / 60) + ":" + DueCifre(uscita.Minuto % 60);
}

std::int32_t LeggiGiorno(std::string_view testo) {
    std::vector<std::int32_t> numeri;
    std::int32_t mese = 0;
    bool lungo = false;  // the first number has four digits
    for (const Pezzo& pezzo : Pezzi(testo)) {
        if (!pezzo.Numero) {
            // A name of the day, "of", "th" are no months.
            if (mese == 0) mese = MeseDaParola(pezzo.Testo);
            continue;
        }
        if (pezzo.Testo.size() > 4) return 0;
        if (numeri.empty()) lungo = pezzo.Testo.size() == 4;
        numeri.push_back(LeggiIntero(pezzo.Testo).value_or(0));
    }
    if (numeri.size() != (mese > 0 ? 2u : 3u)) return 0;
    if (lungo) std::reverse(numeri.begin(), numeri.end());
    std::int32_t anno = numeri.back();
    if (mese == 0) mese = numeri[1];
    std::int32_t giorno = numeri.front();
    if (mese > 12 && giorno <= 12) std::swap(mese, giorno);  // as Americans write it
    if (anno < 100) anno += 2000;
    if (giorno < 1 || giorno > 31 || mese < 1 || mese > 12 || anno < 1900) return 0;
    return anno * kAnno + mese * kMese + giorno;
}

std::int32_t LeggiMinuto(std::string_view testo) {
    const std::vector<Pezzo> pezzi = Pezzi(testo);
    std::array<std::int32_t, 2> numeri{};
    std::size_t quanti = 0;
    char meta = 0;  // 'a' or 'p'
    for (const Pezzo& pezzo : pezzi) {
        if (pezzo.Numero) {
            if (pezzo.Testo.size() > 2) return -1;
            if (quanti < numeri.size()) numeri[quanti] = LeggiIntero(pezzo.Testo).value_or(0);
            ++quanti;
        } else if (pezzo.Testo.size() == 2 && (pezzo.Testo[1] | 0x20) == 'm') {
            meta = static_cast<char>(pezzo.Testo[0] | 0x20);
        }
    }
    if (quanti < 2 || quanti > 3 || numeri[0] > 23 || numeri[1] > 59) return -1;
    if (meta == 'p' && numeri[0] < 12) numeri[0] += 12;
    if (meta == 'a' && numeri[0] == 12) numeri[0] = 0;
    return numeri[0] * 60 + numeri[1];
}

void PrendiTempi(Uscita& uscita, std::string_view tim) {
    uscita.Tempi.clear();
    uscita.Migliore = 0;
    uscita.MediaCinque = 0;
    const FileTim file = LeggiFileTim(tim);
    // The empty last line is no lap, as in the lap table (`GiriLog::Prendi`).
    const auto giri = static_cast<std::size_t>(std::max(file.IndiceFine() - 3, 0));
    for (std::size_t i = 0; i < std::min(giri, file.Righe.size()); ++i) {
        uscita.Tempi.push_back(CentesimiDi(file.Righe[i].Tempo));
    }
    std::vector<std::int32_t> validi;
    std::copy_if(uscita.Tempi.begin(), uscita.Tempi.end(), std::back_inserter(validi),
                 [](std::int32_t tempo) { return tempo > 0; });
    if (validi.empty()) return;
    const std::size_t primi = std::min(kMedia, validi.size());
    std::partial_sort(validi.begin(), validi.begin() + static_cast<std::ptrdiff_t>(primi),
                      validi.end());
    uscita.Migliore = validi.front();
    if (validi.size() < kMedia) return;
    const std::int64_t somma =
        std::accumulate(validi.begin(), validi.begin() + kMedia, std::int64_t{0});
    constexpr std::int64_t kMeta = kMedia / 2;
    uscita.MediaCinque =
        static_cast<std::int32_t>((somma + kMeta) / static_cast<std::int64_t>(kMedia));
}

}  // namespace lapvane
