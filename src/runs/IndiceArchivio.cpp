#include "runs/IndiceArchivio.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>

#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kPrimaRiga = "Lapvane runs 1";
constexpr std::string_view kFine = "end ";
constexpr std::size_t kByteMassimi = std::size_t{1} << 27;
constexpr double kInteroMassimo = 9e15;  // what a double holds to the last digit

std::uint64_t Fnv(std::string_view testo) {
    std::uint64_t somma = 14695981039346656037u;
    for (const char c : testo) somma = (somma ^ static_cast<unsigned char>(c)) * 1099511628211u;
    return somma;
}

/// The last line: how many runs, and both halves of the sum.
std::string RigaFine(std::string_view prima, std::size_t quante) {
    const std::uint64_t somma = Fnv(prima);
    return std::string(kFine) + TestoNumero(static_cast<std::int64_t>(quante)) + " " +
           TestoNumero(static_cast<std::int64_t>(somma >> 32)) + " " +
           TestoNumero(static_cast<std::int64_t>(somma & 0xFFFFFFFFu)) + "\n";
}

/// Numbers of one line, parted by blanks.
class Numeri {
 public:
    explicit Numeri(std::string_view riga) : resto_(riga) {}
    bool Fine() const { return resto_.empty(); }
    bool Buoni() const { return buoni_; }
    std::int64_t Prossimo() {
        const std::size_t fine = std::min(resto_.find(' '), resto_.size());
        const auto numero = LeggiNumero(resto_.substr(0, fine));
        resto_.remove_prefix(std::min(fine + 1, resto_.size()));
        if (!numero || std::fabs(*numero) > kInteroMassimo) {
            buoni_ = false;
            return 0;
        }
        return static_cast<std::int64_t>(*numero);
    }
    template <class T>
    T In(std::int64_t minimo, std::int64_t massimo) {
        const std::int64_t numero = Prossimo();
        buoni_ = buoni_ && numero >= minimo && numero <= massimo;
        return static_cast<T>(std::clamp(numero, minimo, massimo));
    }

 private:
    std::string_view resto_;
    bool buoni_ = true;
};

constexpr std::int64_t kMassimo = 2147483647;
constexpr std::int64_t kSenzaSegno = 4294967295;

// The same fields for the writer and for the reader.

template <class T>
auto Stati(T& file) {
    return std::array{&file.Csv, &file.Laterale, &file.Tim, &file.Ses, &file.Impostazioni};
}

template <class T>
auto Parole(T& u) {
    return std::array{&u.DataSessione,   &u.OraSessione, &u.Sessione, &u.Circuito,
                      &u.LunghTracciato, &u.Piloti,      &u.Veicolo,  &u.Note};
}

class Scrittura {
 public:
    void Numero(std::int64_t numero) {
        if (!primo_) testo_ += ' ';
        testo_ += TestoNumero(numero);
        primo_ = false;
    }
    void ACapo() {
        testo_ += '\n';
        primo_ = true;
    }
    void Riga(std::string_view riga) {
        testo_ += InUnaRiga(riga);
        ACapo();
    }
    void Aggiungi(const Uscita& u);
    std::string& Testo() { return testo_; }

 private:
    std::string testo_ = std::string(kPrimaRiga) + "\n";
    bool primo_ = true;
};

void Scrittura::Aggiungi(const Uscita& u) {
    const std::u8string utf8 = u.Csv.u8string();
    Riga(std::string(utf8.begin(), utf8.end()));
    for (const StatoFile* stato : Stati(u.File)) {
        Numero(stato->Byte);
        Numero(stato->Tempo);
    }
    ACapo();
    for (const std::string* parola : Parole(u)) Riga(*parola);
    const GuastoUscita& guasto = u.Problema;
    for (const std::int64_t numero :
         {std::int64_t{u.Giorno}, std::int64_t{u.Minuto}, std::int64_t{u.QuandoDelFile},
          std::int64_t{u.Migliore}, std::int64_t{u.MediaCinque}, std::int64_t{u.LogLetto},
          std::int64_t{u.Ideale}, std::int64_t{u.Durata}, std::int64_t{u.Divisione},
          static_cast<std::int64_t>(guasto.Tipo), std::int64_t{guasto.Numero},
          std::int64_t{guasto.Secondi}, std::int64_t{guasto.Usati}, std::int64_t{guasto.Totale}}) {
        Numero(numero);
    }
    ACapo();
    Riga(guasto.Cosa);
    for (const std::int32_t tempo : u.Tempi) Numero(tempo);
    ACapo();
    for (const int giro : u.Numeri) Numero(giro);
    ACapo();
}

/// False: it is no run as `Scrittura` writes it.
bool LeggiUscita(LettoreRighe& righe, Uscita& u) {
    const std::string utf8 = DaUnaRiga(righe.Prossima());
    u.Csv = fs::path(std::u8string(utf8.begin(), utf8.end()));
    Numeri file(righe.Prossima());
    for (StatoFile* stato : Stati(u.File)) {
        stato->Byte = file.Prossimo();
        stato->Tempo = file.Prossimo();
    }
    for (std::string* parola : Parole(u)) *parola = DaUnaRiga(righe.Prossima());
    Numeri n(righe.Prossima());
    u.Giorno = n.In<std::int32_t>(0, kMassimo);
    u.Minuto = n.In<std::int32_t>(-1, 1439);
    u.QuandoDelFile = n.In<bool>(0, 1);
    u.Migliore = n.In<std::int32_t>(0, kMassimo);
    u.MediaCinque = n.In<std::int32_t>(0, kMassimo);
    u.LogLetto = n.In<bool>(0, 1);
    u.Ideale = n.In<std::int32_t>(0, kMassimo);
    u.Durata = n.In<std::int32_t>(0, kMassimo);
    u.Divisione = n.In<std::uint32_t>(0, kSenzaSegno);
    u.Problema.Tipo = n.In<Guasto>(0, static_cast<std::int64_t>(kUltimoGuasto));
    u.Problema.Numero = n.In<int>(-kMassimo, kMassimo);
    u.Problema.Secondi = n.In<int>(0, kMassimo);
    u.Problema.Usati = n.In<int>(0, kMassimo);
    u.Problema.Totale = n.In<int>(0, kMassimo);
    u.Problema.Cosa = DaUnaRiga(righe.Prossima());
    Numeri tempi(righe.Prossima());
    while (!tempi.Fine()) u.Tempi.push_back(tempi.In<std::int32_t>(0, kMassimo));
    Numeri giri(righe.Prossima());
    while (!giri.Fine()) u.Numeri.push_back(giri.In<int>(-kMassimo, kMassimo));
    return !u.Csv.empty() && file.Buoni() && n.Buoni() && n.Fine() && tempi.Buoni() && giri.Buoni();
}

}  // namespace

fs::path FileIndice() {
    return platform().AppPath() / "RunsIndex.lapvane";
}

std::string ChiudiIndice(std::string testo, std::size_t quante) {
    return testo + RigaFine(testo, quante);
}

std::optional<std::vector<Uscita>> LeggiIndice(std::string_view testo) {
    const std::size_t ultima =
        testo.substr(0, testo.empty() ? 0 : testo.size() - 1).rfind('\n') + 1;
    const std::string_view corpo = testo.substr(0, ultima);
    std::string_view fine = testo.substr(ultima);
    if (!fine.starts_with(kFine)) return std::nullopt;
    fine.remove_prefix(kFine.size());
    const auto quante = LeggiIntero(fine.substr(0, fine.find(' ')));
    if (!quante || *quante < 0 || static_cast<std::size_t>(*quante) > kUsciteMassime ||
        testo.substr(ultima) != RigaFine(corpo, static_cast<std::size_t>(*quante))) {
        return std::nullopt;
    }
    LettoreRighe righe(corpo);
    if (righe.Prossima() != kPrimaRiga) return std::nullopt;
    std::vector<Uscita> uscite(static_cast<std::size_t>(*quante));
    std::unordered_set<fs::path::string_type> gia;
    for (Uscita& una : uscite) {
        if (!LeggiUscita(righe, una)) return std::nullopt;
        if (!gia.insert(una.Csv.native()).second) return std::nullopt;
    }
    if (!righe.Fine()) return std::nullopt;
    return uscite;
}

std::string ScriviIndice(const std::vector<const Uscita*>& uscite) {
    constexpr std::size_t kMargine = std::size_t{1}
                                     << 22;  // a run with the longest texts, and more
    Scrittura scrittura;
    std::size_t quante = 0;
    for (const Uscita* una : uscite) {
        if (quante == kUsciteMassime || scrittura.Testo().size() > kByteMassimi - kMargine) break;
        scrittura.Aggiungi(*una);
        ++quante;
    }
    return ChiudiIndice(std::move(scrittura.Testo()), quante);
}

std::vector<Uscita> CaricaIndice() {
    try {
        const fs::path file = FileIndice();
        if (!FileEsiste(file)) return {};
        auto uscite = LeggiIndice(LeggiFile(file, Lavoro::LeggereUscite, kByteMassimi));
        if (uscite) return std::move(*uscite);
    } catch (const std::exception&) {
        // It is only a cache.
    }
    return {};
}

void SalvaIndice(const std::vector<const Uscita*>& uscite) {
    try {
        ScriviFile(FileIndice(), ScriviIndice(uscite), Lavoro::ScrivereUscite);
    } catch (const std::exception&) {
        // The next look reads everything again.
    }
}

}  // namespace lapvane
