#include "instrument/Sessione.h"

#include <algorithm>
#include <cmath>

#include "device/Codec.h"
#include "instrument/Traiettoria.h"
#include "instrument/Vettura.h"

namespace lapvane::strumento {

namespace {

constexpr int kCampioni = 10;              // of a block, one a tenth of a second
constexpr std::size_t kByteCampione = 11;  // the last three are not used
constexpr double kAttesaFinale = 4.0;      // s that the car is recorded standing at the end
constexpr unsigned kBitGiro = 1u << 1;     // lap mark of the flag word

int Arrotonda(double valore) {
    return static_cast<int>(std::lround(valore));
}

std::string ByteDi(double valore) {
    return CodificaByte(std::clamp(Arrotonda(valore), 0, 255));
}
std::string ByteSegnatoDi(double valore) {
    return CodificaByte(std::clamp(Arrotonda(valore), -128, 127));
}
std::string ParolaDi(double valore) {
    return CodificaWord(std::clamp(Arrotonda(valore), 0, 0xFFFF));
}

/// One fast sample, `i` from 0.
void MettiCampione(std::string& blocco, int i, const Misure& misure, double distanza) {
    const std::size_t base = static_cast<std::size_t>(i) * kByteCampione;
    // Rounded down: a distance is reached only when it has been driven.
    const std::string metri = ParolaDi(std::floor(distanza));
    Metti(blocco, base + 1, ParolaDi(misure.GiriMotore));
    Metti(blocco, base + 3, metri);
    Metti(blocco, base + 5, ByteDi(misure.Marcia));
    Metti(blocco, base + 6, ByteSegnatoDi(misure.Turbo * 10.0));
    Metti(blocco, base + 7, ByteDi(misure.Farfalla));
    Metti(blocco, base + 8, ByteSegnatoDi(misure.Accelerazione * 10.0));
}

void MettiLenti(std::string& blocco, const Misure& misure, int giro, unsigned segnali) {
    Metti(blocco, 111, ParolaDi(misure.TempOlio * 10.0));
    Metti(blocco, 113, ParolaDi(misure.TempAcqua * 10.0));
    Metti(blocco, 115, ByteDi(misure.PressOlio * 10.0));
    Metti(blocco, 116, ByteDi(misure.PressBenzina * 10.0));
    Metti(blocco, 117, ByteDi(misure.Livello));
    Metti(blocco, 118, ByteDi(misure.Batteria * 10.0));
    Metti(blocco, 119, ByteDi(misure.AriaBenzina * 10.0));
    Metti(blocco, 120, CodificaWord(giro));
    Metti(blocco, 122, ParolaDi(misure.Velocita));
    Metti(blocco, 124, CodificaWord(static_cast<std::int32_t>(segnali)));
}

/// Whole seconds, an even number of them, that show the drive to its end and the car standing: the
/// log ends with a whole page.
std::int32_t BlocchiDi(const Traiettoria& traiettoria) {
    const auto secondi = static_cast<std::int32_t>(std::ceil(traiettoria.Durata() + kAttesaFinale));
    return secondi + secondi % 2;
}

class Registratore {
 public:
    Registratore(const Circuito& circuito, const Traiettoria& traiettoria, Memoria& memoria)
        : circuito_(circuito),
          traiettoria_(traiettoria),
          memoria_(memoria),
          vettura_(traiettoria.Lunghezza() * traiettoria.Giri()),
          inizio_(-traiettoria.Al(0.0).Posizione),
          curva_(circuito.CurvaStretta()),
          // The lap in which the oil surges in the sharpest corner.
          giroOlio_(std::min(traiettoria.Giri() - 1, traiettoria.GiroMigliore() + 1)) {}

    void Registra(std::int32_t blocchi) {
        for (std::int32_t b = 0; b < std::min(blocchi, kBlocchiLog); ++b) Blocco(b);
        std::int64_t prima = Centesimi(0);
        for (int giro = 1; giro <= traiettoria_.Giri(); ++giro) {
            const std::int64_t ora = Centesimi(giro);
            memoria_.AggiungiGiro(static_cast<std::int32_t>(ora - prima), giro == 1);
            prima = ora;
        }
    }

 private:
    /// Crossing times are cut to hundredths first, so that the laps add up to the session.
    std::int64_t Centesimi(int passaggio) const {
        return static_cast<std::int64_t>(std::floor(traiettoria_.Passaggio(passaggio) * 100.0));
    }

    void Blocco(std::int32_t b) {
        std::string blocco(kByteBloccoMemoria, '\0');
        unsigned segnali = 0;
        const int prima = passaggi_;
        const Misure* misure = nullptr;
        for (int i = 0; i < kCampioni; ++i) {
            misure = &Passo(b * kCampioni + i);
            segnali |= misure->Allarmi;
            MettiCampione(blocco, i, *misure, distanza_);
        }
        // A crossing behind the last sample still belongs to this second.
        Avanza(std::nextafter(b + 1.0, 0.0));
        if (passaggi_ != prima) segnali |= kBitGiro;
        MettiLenti(blocco, *misure, passaggi_, segnali);
        memoria_.AggiungiBlocco(blocco);
    }

    /// Counts the crossings up to a moment.
    void Avanza(double secondi) {
        while (passaggi_ <= traiettoria_.Giri() && traiettoria_.Passaggio(passaggi_) <= secondi) {
            ++passaggi_;
        }
    }

    const Misure& Passo(std::int32_t decimo) {
        Contesto contesto;
        contesto.Auto = traiettoria_.Al(decimo / 10.0);
        Avanza(decimo / 10.0);
        const double posizione = contesto.Auto.Posizione;
        // Metres since the line; before the first crossing since the start of the recording.
        distanza_ =
            std::max(0.0, passaggi_ == 0 ? posizione + inizio_
                                         : posizione - (passaggi_ - 1) * traiettoria_.Lunghezza());
        contesto.Curvatura = circuito_.Curvatura(posizione);
        const int giro = passaggi_ - 1;
        contesto.Traffico = giro >= 0 && giro == traiettoria_.GiroLento();
        constexpr double kMeta = 70.0;  // m to each side of the corner
        contesto.Sbattimento = giro == giroOlio_ && std::abs(distanza_ - curva_) < kMeta;
        return vettura_.Passo(contesto);
    }

    const Circuito& circuito_;
    const Traiettoria& traiettoria_;
    Memoria& memoria_;
    Vettura vettura_;
    double inizio_;
    double curva_;
    int giroOlio_;
    int passaggi_ = 0;
    double distanza_ = 0.0;
};

/// The longest drive that the log holds to its end.
Traiettoria TraiettoriaPiena(const Circuito& circuito) {
    constexpr int kSaggio = 20;  // laps that tell how long a lap is
    const auto entra = [&](int giri) {
        return BlocchiDi(Traiettoria(circuito, giri)) <= kBlocchiLog;
    };
    const double giro = Traiettoria(circuito, kSaggio).Durata() / kSaggio;
    int giri = std::max(1, static_cast<int>(kBlocchiLog / giro));
    while (giri > 1 && !entra(giri)) --giri;
    while (entra(giri + 1)) ++giri;
    return Traiettoria(circuito, giri);
}

}  // namespace

void RegistraSessione(const Circuito& circuito, const ParametriSessione& parametri,
                      Memoria& memoria) {
    memoria.Cancella();
    switch (parametri.Modo) {
        case ModoSessione::Vuota:
            return;
        case ModoSessione::Normale: {
            const Traiettoria traiettoria(circuito, std::clamp(parametri.Giri, 1, kGiriMassimi));
            Registratore(circuito, traiettoria, memoria).Registra(BlocchiDi(traiettoria));
            return;
        }
        case ModoSessione::Piena: {
            const Traiettoria traiettoria = TraiettoriaPiena(circuito);
            Registratore(circuito, traiettoria, memoria).Registra(kBlocchiLog);
            return;
        }
    }
}

}  // namespace lapvane::strumento
