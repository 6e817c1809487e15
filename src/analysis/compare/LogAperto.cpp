#include "analysis/compare/LogAperto.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "analysis/LettoreDati.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "reports/Circuiti.h"
#include "reports/FileSessione.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kByteMassimi = 1 << 20;  // of a file that a person can look through
constexpr int kCampiLaterali = 11;
constexpr int kPrimoGiro = 2;  // index of the first timed lap
constexpr int kColonnaVelocita = 4;

/// The text of a file beside the log; empty where there is none that can be read.
std::string Accanto(const fs::path& file, Lavoro lavoro, bool& trovato) {
    trovato = false;
    try {
        if (!FileEsiste(file)) return {};
        std::string testo = LeggiFile(file, lavoro, kByteMassimi);
        trovato = true;
        return testo;
    } catch (const ErroreRuntime&) {
        return {};
    }
}

int Colonne(std::string_view titolo) {
    return static_cast<int>(std::count(titolo.begin(), titolo.end(), ';')) + 1;
}

}  // namespace

std::int32_t CentesimiDi(std::string_view tempo) {
    std::int64_t intere = 0;
    const std::size_t punto = std::min(tempo.rfind('.'), tempo.size());
    std::int64_t parte = 0;
    for (const char c : tempo.substr(0, punto)) {
        if (c == ':') {
            intere = (intere + parte) * 60;
            parte = 0;
        } else if (c >= '0' && c <= '9') {
            parte = std::min<std::int64_t>(parte * 10 + (c - '0'), 100000);
        } else if (c != ' ') {
            return 0;
        }
        if (intere > 100000) return 0;
    }
    const std::string_view dopo = tempo.substr(std::min(punto + 1, tempo.size()));
    const auto centesimi = dopo.empty() ? std::optional<std::int32_t>(0) : LeggiIntero(dopo);
    if (!centesimi || *centesimi < 0 || *centesimi > 99) return 0;
    const std::int32_t decina = dopo.size() == 1 ? 10 : 1;
    return static_cast<std::int32_t>((intere + parte) * 100) + *centesimi * decina;
}

LogAperto::LogAperto(fs::path file) : file_(std::move(file)) {
    Ripara(file_);
    if (!FileEsiste(file_))
        throw ErroreRuntime(NumeroErrore::FileNotFound, Lavoro::LeggereLog, file_);
    LeggiTempi();
    LeggiTabelle();
    LeggiSessioneECircuito();
    TrovaGiri();
    allineati_ = std::make_unique<Allineamento>(
        CorsaLog{tabella_.Colonna(kColonnaDistanza), tabella_.Colonna(kColonnaVelocita), giri_});
}

void LogAperto::LeggiTempi() {
    tempi_ = LeggiFileTim(Accanto(SenzaFine(file_, 4, ".tim"), Lavoro::LeggereTempi, conTempi_));
}

void LogAperto::LeggiTabelle() {
    LettoreDati lettore(FileAPezzi(file_, Lavoro::LeggereLog));
    fs::path laterale;
    for (const char* fine : {".txt", ".alm"}) {
        laterale = SenzaFine(file_, 4, fine);
        conLaterale_ = FileEsiste(laterale);
        if (conLaterale_) break;
    }
    const int colonne = std::min(Colonne(lettore.Titolo()), kNumCanali - 1);
    tabella_.Alloca(colonne, conLaterale_ ? kCampiLaterali : 0, lettore.NumeroRecord());
    tabella_.Leggi(lettore, Piano::Dati, 0, tabella_.NumeroRighe());
    LeggiCanali(lettore.Titolo(), colonne);
    if (!conLaterale_) return;
    try {
        LettoreDati lettoreLaterale = ApriLog(laterale, Conto::Niente);
        tabella_.Leggi(lettoreLaterale, Piano::Laterale, 0, tabella_.NumeroRighe());
    } catch (const ErroreRuntime&) {
        tabella_.AzzeraLaterale();
    }
}

void LogAperto::LeggiCanali(std::string_view titolo, int colonne) {
    for (int c = 1; c <= colonne; ++c) {
        const std::size_t fine = std::min(titolo.find(';'), titolo.size());
        const std::string_view intero = Rifila(titolo.substr(0, fine));
        titolo.remove_prefix(std::min(fine + 1, titolo.size()));
        if (c <= kColonnaDistanza) continue;
        const std::size_t aperta = std::min(intero.find('['), intero.size());
        const std::size_t chiusa = std::min(intero.find(']', aperta), intero.size());
        CanaleLog canale{c, std::string(Rifila(intero.substr(0, aperta))), {}};
        if (aperta < chiusa) canale.Unita = intero.substr(aperta + 1, chiusa - aperta - 1);
        canali_.push_back(std::move(canale));
    }
}

void LogAperto::LeggiSessioneECircuito() {
    bool conSessione = false;
    std::string veicolo;
    CanaliSessione canali;
    LeggiSessione(Accanto(SenzaFine(file_, 3, "ses"), Lavoro::LeggereSessione, conSessione),
                  sessione_, veicolo, canali);
    if (sessione_.Circuito.empty()) return;
    const auto divisione = LeggiFileSettori(sessione_.Circuito, kNumCanali);
    if (!divisione) return;
    for (const double metri : divisione->Settori) {
        if (metri <= 0.0) break;
        settori_.push_back(metri);
    }
}

void LogAperto::TrovaGiri() {
    righe_ = CercaGiri(tabella_);
    // Without lap times there are still the laps that the log marks, all but the last one, which
    // nothing ends.
    const int fine = conTempi_ ? tempi_.IndiceFine() - 1 : righe_.Numero;
    for (int i = kPrimoGiro; i < fine; ++i) {
        const std::size_t k = static_cast<std::size_t>(i - kPrimoGiro);
        if (conTempi_ && k >= tempi_.Righe.size()) break;
        const RigaTim riga = conTempi_ ? tempi_.Righe[k] : RigaTim{};
        GiroDelLog giro;
        giro.Indice = i;
        giro.Centesimi = CentesimiDi(riga.Tempo);
        if (righe_.Esiste(i)) {
            giro.PrimaRiga = righe_.Inizio[i];
            giro.UltimaRiga = righe_.Fine[i];
        }
        giri_.push_back(giro);
        const double numero = righe_.Esiste(i)
                                  ? tabella_.Valore(kColonnaGiro, Piano::Laterale, giro.PrimaRiga)
                                  : i - 1;
        numeri_.push_back(std::fabs(numero) < 1e6 ? static_cast<int>(numero) : 0);
        sessioni_.push_back(riga.Sessione);
    }
}

int LogAperto::CercaNumero(int numero) const {
    const auto trovato = std::find(numeri_.begin(), numeri_.end(), numero);
    return trovato == numeri_.end() ? -1 : static_cast<int>(trovato - numeri_.begin());
}

int LogAperto::Migliore() const {
    int migliore = -1;
    for (int i = 0; i < std::ssize(giri_); ++i) {
        const std::int32_t tempo = giri_[static_cast<std::size_t>(i)].Centesimi;
        if (tempo <= 0) continue;
        if (migliore < 0 || tempo < giri_[static_cast<std::size_t>(migliore)].Centesimi)
            migliore = i;
    }
    return migliore;
}

double LogAperto::Valore(int colonna, double secondi) const {
    constexpr double kRighe = 10.0;  // a second
    const auto valori = tabella_.Colonna(colonna);
    if (valori.empty()) return 0.0;
    const double posto = std::clamp(secondi * kRighe, 0.0, static_cast<double>(valori.size() - 1));
    const auto i = std::min(static_cast<std::size_t>(posto), valori.size() - 1);
    const std::size_t j = std::min(i + 1, valori.size() - 1);
    const double fra = posto - static_cast<double>(i);
    return valori[i] * (1.0 - fra) + valori[j] * fra;
}

}  // namespace lapvane
