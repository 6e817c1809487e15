#include "runs/LetturaUscita.h"

#include <algorithm>
#include <bit>
#include <ctime>

#include "analysis/compare/Confronto.h"
#include "logs/Impostazioni.h"
#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "reports/Circuiti.h"
#include "reports/FileSessione.h"

namespace lapvane {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kByteTitolo = 1 << 12;
constexpr std::size_t kByteMassimi = 1 << 20;  // of a file that a person can look through
/// From here on the reader of a log asks whether it is one, in a box that nobody wants to see here.
constexpr std::int64_t kGrande = std::int64_t{16} << 20;

/// "Time [sec]".
bool ConUnita(std::string_view titolo) {
    titolo = titolo.substr(0, titolo.find_last_not_of(" \"") + 1);
    return titolo.ends_with(']') && titolo.find('[') != std::string_view::npos;
}

void Segna(Uscita& uscita, Guasto tipo, std::string cosa = {}) {
    if (uscita.Problema.Tipo != Guasto::Nessuno) return;  // the first one is the gravest
    uscita.Problema.Tipo = tipo;
    uscita.Problema.Cosa = std::move(cosa);
}

/// At most so many bytes; empty, and the run's trouble, where the file can't be read.
std::string LeggiParte(const fs::path& file, Lavoro lavoro, std::size_t massimo, Uscita& uscita) {
    try {
        return LeggiFile(file, lavoro, massimo);
    } catch (const ErroreRuntime&) {
        Segna(uscita, Guasto::Illeggibile, TestoDaPercorso(file.filename()));
        return {};
    }
}

std::string VeicoloDi(const fs::path& csv) {
    RecordProgetto record;
    LeggiImpostazioni(csv, record);
    return record.Veicolo;
}

/// Day and minute: the session's, or, where it has no day that can be read, those of the data file
/// on the clock of the desktop.
void PrendiQuando(Uscita& uscita) {
    uscita.Giorno = LeggiGiorno(uscita.DataSessione);
    uscita.Minuto = LeggiMinuto(uscita.OraSessione);
    if (uscita.Giorno > 0) return;
    uscita.QuandoDelFile = true;
    const auto secondi = static_cast<std::time_t>(uscita.File.Csv.Tempo / 1000);
    const std::tm* ora = std::localtime(&secondi);
    if (ora == nullptr) return;
    uscita.Giorno = (ora->tm_year + 1900) * 10000 + (ora->tm_mon + 1) * 100 + ora->tm_mday;
    if (uscita.OraSessione.empty()) uscita.Minuto = ora->tm_hour * 60 + ora->tm_min;
}

void PrendiSessione(Uscita& uscita) {
    RecordSessione sessione;
    std::string veicolo;  // Kept: that of the file is never set; it is not the vehicle of the run
    CanaliSessione canali;
    if (uscita.File.Ses.CE()) {
        LeggiSessione(
            LeggiParte(FileSessione(uscita.Csv), Lavoro::LeggereSessione, kByteMassimi, uscita),
            sessione, veicolo, canali);
    }
    uscita.DataSessione = std::move(sessione.DataSessione);
    uscita.OraSessione = std::move(sessione.OraSessione);
    uscita.Sessione = std::move(sessione.Sessione);
    uscita.Circuito = std::move(sessione.Circuito);
    uscita.LunghTracciato = std::move(sessione.LunghTracciato);
    uscita.Piloti = std::move(sessione.Piloti);
    uscita.Note = std::move(sessione.NoteSessione);
    PrendiQuando(uscita);
}

void ContaParti(Uscita& uscita) {
    std::string mancano;
    int ci = 3;
    const auto parte = [&](const StatoFile& file, const char* fine) {
        if (file.CE()) return;
        --ci;
        mancano += (mancano.empty() ? "" : ", ") + std::string(fine);
    };
    parte(uscita.File.Laterale, ".txt");
    parte(uscita.File.Tim, ".tim");
    if (ci == 3) return;
    Segna(uscita, Guasto::Parti, mancano);
    if (uscita.Problema.Tipo == Guasto::Parti) uscita.Problema.Numero = ci;
}

/// The file whose size no log has; empty: none.
fs::path Enorme(const Uscita& uscita) {
    if (uscita.File.Csv.Byte > kByteLogMassimi) return uscita.Csv;
    const fs::path testo = FileLaterale(uscita.Csv);
    const fs::path laterale =
        GenereDi(testo) != Genere::Niente ? testo : FileLateraleAlm(uscita.Csv);
    if (uscita.File.Laterale.Byte > kByteLogMassimi) return laterale;
    if (uscita.File.Laterale.Byte <= kGrande) return {};
    const std::string inizio = LeggiFile(laterale, Lavoro::LeggereLog, kByteTitolo);
    const bool righe = inizio.find('\n') != std::string::npos && inizio.find('\0') == inizio.npos;
    return righe ? fs::path() : laterale;
}

/// The first lap that the ideal lap is made without, though it has a time.
void SegnaGiri(const Confronto& confronto, Uscita& uscita) {
    GuastoUscita guasto;
    const auto& giri = confronto.Log(0).Giri();
    for (int i = 0; i < std::ssize(giri); ++i) {
        const GiroDelLog& giro = giri[static_cast<std::size_t>(i)];
        if (giro.Centesimi <= 0) continue;
        ++guasto.Totale;
        if (confronto.Allineato({0, i}) != nullptr) ++guasto.Usati;
        const PercheNo esito = confronto.Esito({0, i});
        if (guasto.Tipo != Guasto::Nessuno ||
            (esito != PercheNo::Interrotto && esito != PercheNo::SenzaRighe)) {
            continue;
        }
        guasto.Numero = confronto.Numero({0, i});
        guasto.Tipo = Guasto::GiroSenzaRighe;
        if (esito == PercheNo::SenzaRighe) continue;
        const std::int32_t manca = giro.Centesimi - (giro.UltimaRiga - giro.PrimaRiga + 1) * 10;
        guasto.Tipo = manca > 0 ? Guasto::GiroBuco : Guasto::GiroDiverso;
        guasto.Secondi = (std::abs(manca) + 50) / 100;
    }
    if (guasto.Tipo != Guasto::Nessuno && uscita.Problema.Tipo == Guasto::Nessuno) {
        uscita.Problema = guasto;
    }
}

}  // namespace

fs::path FileTempi(const fs::path& csv) {
    return SenzaFine(csv, 4, ".tim");
}

fs::path FileLaterale(const fs::path& csv) {
    return SenzaFine(csv, 4, ".txt");
}

fs::path FileLateraleAlm(const fs::path& csv) {
    return SenzaFine(csv, 4, ".alm");
}

fs::path FileSessione(const fs::path& csv) {
    return SenzaFine(csv, 3, "ses");
}

bool TitoloDiLog(std::string_view riga) {
    const std::size_t primo = riga.find(';');
    if (primo == std::string_view::npos || !ConUnita(riga.substr(0, primo))) return false;
    const std::string_view resto = riga.substr(primo + 1);
    return ConUnita(resto.substr(0, resto.find(';')));
}

bool LeggiAccanto(const fs::path& csv, const FileUscita& file, Uscita& uscita) {
    uscita = {};
    uscita.Csv = csv;
    uscita.File = file;
    const std::string inizio = LeggiParte(csv, Lavoro::LeggereLog, kByteTitolo, uscita);
    if (uscita.Problema.Tipo == Guasto::Nessuno && !TitoloDiLog(LettoreRighe(inizio).Prossima())) {
        if (!file.Tim.CE()) return false;
        Segna(uscita, Guasto::NonUnLog);
    }
    if (file.Tim.CE()) {
        PrendiTempi(uscita, LeggiParte(FileTempi(csv), Lavoro::LeggereTempi, kByteMassimi, uscita));
    }
    PrendiSessione(uscita);
    if (file.Impostazioni.CE()) uscita.Veicolo = VeicoloDi(csv);
    ContaParti(uscita);
    return true;
}

std::uint32_t DivisioneDi(const std::string& circuito) {
    if (circuito.empty()) return 0;
    const auto divisione = LeggiFileSettori(circuito, kNumCanali);
    if (!divisione) return 0;
    std::uint64_t somma = 14695981039346656037u;  // FNV-1a
    for (const double metri : divisione->Settori) {
        somma = (somma ^ std::bit_cast<std::uint64_t>(metri)) * 1099511628211u;
    }
    return static_cast<std::uint32_t>(somma >> 32) | 1u;
}

LetturaLog::LetturaLog() = default;
LetturaLog::~LetturaLog() = default;

bool LetturaLog::Passo(Uscita& uscita, int ms) {
    try {
        if (!confronto_ || csv_ != uscita.Csv || file_ != uscita.File) {
            Apri(uscita);
            return uscita.LogLetto;
        }
        const std::int64_t inizio = platform().GetTickCount();
        while (confronto_->AllineaUnAltro()) {
            if (platform().GetTickCount() - inizio >= ms) return false;
        }
        Finisci(uscita);
    } catch (const std::exception&) {  // a file that can't be read, or no room for it
        Segna(uscita, Guasto::Illeggibile, TestoDaPercorso(csv_.filename()));
        uscita.LogLetto = true;
        confronto_.reset();
    }
    return true;
}

void LetturaLog::Apri(Uscita& uscita) {
    csv_ = uscita.Csv;
    file_ = uscita.File;
    confronto_.reset();
    if (uscita.Problema.Tipo >= Guasto::LogEnorme) uscita.Problema = {};
    const fs::path grande = Enorme(uscita);
    if (!grande.empty()) Segna(uscita, Guasto::LogEnorme, TestoDaPercorso(grande.filename()));
    uscita.LogLetto = !grande.empty() || uscita.Problema.Tipo == Guasto::NonUnLog;
    if (uscita.LogLetto) return;
    auto confronto = std::make_unique<Confronto>();
    confronto->Apri(csv_);
    confronto_ = std::move(confronto);
}

void LetturaLog::Finisci(Uscita& uscita) {
    const LogAperto& log = confronto_->Log(0);
    const std::int32_t righe = log.Tabella().NumeroRighe();
    uscita.Ideale = confronto_->IdealeDiTutti();
    uscita.Durata = std::max(righe - 1, 0);
    uscita.Divisione = DivisioneDi(log.Sessione().Circuito);
    uscita.Numeri.clear();
    for (int i = 0; i < std::min(uscita.Giri(), static_cast<int>(log.Giri().size())); ++i) {
        uscita.Numeri.push_back(log.Numero(i));
    }
    if (righe == 0) Segna(uscita, Guasto::LogVuoto);
    SegnaGiri(*confronto_, uscita);
    uscita.LogLetto = true;
    confronto_.reset();
}

}  // namespace lapvane
