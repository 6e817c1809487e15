#include "logs/Conversione.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "device/Codec.h"
#include "logs/BufferLog.h"
#include "logs/DiarioScarico.h"
#include "logs/Impostazioni.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/PagineGrandi.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "shell/Domande.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/TabellaDecimali.h"
#include "shell/TabelleNomi.h"

namespace lapvane {

namespace fs = std::filesystem;

fs::path PercorsoCsv;

namespace {

constexpr std::size_t kCampioni = 10;  // fast samples of a record
constexpr std::size_t kByteCampione = 11;
constexpr std::size_t kRigheMassime = 163841;
constexpr std::size_t kRigaMassima = 512;  // characters that one row can take
constexpr int kBitGiro = 1;
constexpr int kPrimoBitAllarme = 8;
constexpr std::size_t kAllarmi = 8;
constexpr int kDistanzaResidua = 30;      // metres; more cannot be driven behind a lap mark
constexpr double kStechiometrico = 14.7;  // air to fuel of lambda 1

/// A slow channel: one reading a record, spread over its ten rows.
struct CanaleLento {
    double Precedente = 0.0;
    double Passo = 0.0;

    void Leggi(double lettura) { Passo = (lettura - Precedente) / 10; }
    double In(std::size_t campione) const {
        return Precedente + static_cast<double>(campione) * Passo;
    }
    void Avanza() { Precedente += 10 * Passo; }
};

/// The slow channels, in the order of their place in the record.
enum Lento {
    TempOlio,
    TempAcqua,
    PressOlio,
    PressBenzina,
    LivBenzina,
    Batteria,
    AriaBenzina,
    Velocita,
    Lambda,
    NumLenti
};

using Lenti = std::array<CanaleLento, NumLenti>;

void LeggiLenti(Lenti& lenti, std::string_view blocco) {
    lenti[TempOlio].Leggi(Int16In(blocco, 111) / 10.0);
    lenti[TempAcqua].Leggi(Int16In(blocco, 113) / 10.0);
    lenti[PressOlio].Leggi(ByteIn(blocco, 115) / 10.0);
    lenti[PressBenzina].Leggi(ByteIn(blocco, 116) / 10.0);
    lenti[LivBenzina].Leggi(ByteIn(blocco, 117));
    lenti[Batteria].Leggi(ByteIn(blocco, 118) / 10.0);
    lenti[AriaBenzina].Leggi(ByteIn(blocco, 119) / 10.0);
    lenti[Velocita].Leggi(WordIn(blocco, 122));
    // Lambda follows the steps of the ratio, not its readings: rounding stays in the sum.
    lenti[Lambda].Passo = lenti[AriaBenzina].Passo / kStechiometrico;
}

char* Copia(char* dove, std::string_view testo) {
    std::memcpy(dove, testo.data(), testo.size());
    return dove + testo.size();
}

/// A record held back until a flush gives its rows their time and their lap.
struct InAttesa {
    std::string_view Blocco;
    bool DopoCambioGiro = false;
};

class Convertitore {
 public:
    Convertitore(char separatore, std::string& csv, std::string& txt)
        : numeri_(separatore), csv_(csv), txt_(txt) {}

    void Blocco(std::string_view blocco) {
        giro_ = Int16In(blocco, 120);
        if (BitAttivo(Int16In(blocco, 124), kBitGiro)) CambioGiro();
        if (righe_ + kCampioni > kRigheMassime) {
            throw ErroreRuntime(NumeroErrore::Subscript, Lavoro::ConvertireLog);
        }
        attesa_.push_back({blocco, dopoCambioGiro_});
        righe_ += kCampioni;
        dopoCambioGiro_ = false;
    }

    void Fine() { Scarica(0, TestoNumero(giro_ + 1)); }

 private:
    void CambioGiro() {
        if (giro_ <= giroPrec_ + 1 && giro_ != giroPrec_) {
            // A new lap: its rows are counted from its own first one, and the buffer starts over.
            Scarica(primaRiga_, TestoNumero(giro_));
            dopoCambioGiro_ = true;
            righe_ = 0;
        } else {
            // The same lap again, or laps that were missed: the rows stay in the buffer's count.
            Scarica(0, giroPrec_ != 0 ? "-1" : "0");
        }
        primaRiga_ = righe_;
        giroPrec_ = giro_;
    }

    /// Writes the records held back; time counts in tenths from row `zero`.
    void Scarica(std::size_t zero, std::string_view giro) {
        auto tempo = static_cast<std::uint32_t>(primaRiga_ - zero);
        for (const InAttesa& attesa : attesa_) {
            LeggiLenti(lenti_, attesa.Blocco);
            ComponiAllarmi(Int16In(attesa.Blocco, 124), giro);
            char* p = righeCsv_.data();
            char* q = righeTxt_.data();
            for (std::size_t i = 0; i < kCampioni; ++i) {
                const char* const inizio = p;
                p = numeri_.Tempo(p, tempo++);
                const int distanza = WordIn(attesa.Blocco, kByteCampione * i + 3);
                if (attesa.DopoCambioGiro && distanza > kDistanzaResidua) {
                    p = Copia(p, "0;");
                } else {
                    p = numeri_.CampoIntero(p, static_cast<std::uint32_t>(distanza));
                }
                // Time and distance, and what follows them, in one piece each.
                std::memcpy(q, inizio, kTestaMassima);
                q += p - inizio;
                std::memcpy(q, allarmi_.data(), kCodaMassima);
                q += codaAllarmi_;
                p = Campione(p, attesa.Blocco, i);
            }
            csv_.append(righeCsv_.data(), p);
            txt_.append(righeTxt_.data(), q);
            for (CanaleLento& lento : lenti_) lento.Avanza();
        }
        attesa_.clear();
    }

    /// What stands behind the distance in all ten rows of the side file.
    void ComponiAllarmi(int segnali, std::string_view giro) {
        char* p = allarmi_.data();
        for (std::size_t k = 0; k < kAllarmi; ++k) {
            const int spento = 2 * static_cast<int>(k) + 1;
            p = ScriviIntero(
                p, spento + (BitAttivo(segnali, kPrimoBitAllarme + static_cast<int>(k)) ? 1 : 0));
            *p++ = ';';
        }
        p = Copia(Copia(p, giro), "\r\n");
        codaAllarmi_ = p - allarmi_.data();
    }

    /// The channels of a row, from the third column on.
    char* Campione(char* p, std::string_view blocco, std::size_t i) const {
        const std::size_t base = kByteCampione * i;
        const auto lento = [&](Lento quale) { p = numeri_.Campo(p, lenti_[quale].In(i)); };
        p = numeri_.Intero(p, static_cast<std::uint32_t>(WordIn(blocco, base + 1)));
        *p++ = ';';
        lento(Velocita);
        lento(PressBenzina);
        lento(PressOlio);
        p = numeri_.CampoIntero(p, static_cast<std::uint32_t>(ByteIn(blocco, base + 7)));
        lento(TempAcqua);
        p = numeri_.Decimi(p, SByteIn(blocco, base + 8));
        lento(TempOlio);
        lento(Batteria);
        if (const int marcia = ByteIn(blocco, base + 5); marcia != 0) p = ScriviIntero(p, marcia);
        *p++ = ';';
        lento(LivBenzina);
        p = numeri_.Decimi(p, SByteIn(blocco, base + 6));
        lento(AriaBenzina);
        lento(Lambda);
        return Copia(p - 1, "\r\n");
    }

    static constexpr std::size_t kTestaMassima = 24;  // "16384.0;65535.0;"
    static constexpr std::size_t kCodaMassima = 64;

    TabellaDecimali numeri_;
    std::string& csv_;
    std::string& txt_;
    Lenti lenti_;
    std::vector<InAttesa> attesa_;
    std::size_t righe_ = 0;  // of the buffer
    std::size_t primaRiga_ = 0;
    int giro_ = 0;  // lap number of the record at hand
    int giroPrec_ = 0;
    bool dopoCambioGiro_ = false;
    std::array<char, kCodaMassima> allarmi_{};
    std::ptrdiff_t codaAllarmi_ = 0;
    std::array<char, kCampioni * kRigaMassima> righeCsv_{};
    std::array<char, kCampioni * kRigaMassima> righeTxt_{};
};

/// Titles of the data file by column; "%V" and "%T" stand for the units of speed and temperature.
struct TitoloColonna {
    std::string_view Italiano;
    std::string_view Inglese;
};

constexpr std::array<TitoloColonna, 16> kTitoliCsv = {{
    {"Tempo [sec];", "Time [sec];"},
    {"Distanza [m];", "Distance [m];"},
    {"Motore [RPM];", "Engine [RPM];"},
    {"Velocit\xE0 [%V];", "Speed [%V];"},
    {"Press. carbur. [bar];", "Fuel Press. [bar];"},
    {"Press. olio [bar];", "Oil Press. [bar];"},
    {"Farfalla [%];", "Throttle [%];"},
    {"Temp. acqua [%T];", "Water Temp [%T];"},
    {"Sensore G [G];", "G Sensor [G];"},
    {"Temp. olio [%T];", "Oil Temp. [%T];"},
    {"Tensione Batteria [V];", "Battery [V];"},
    {"Marcia [];", "Gear [];"},
    {"Livello Carbur. [];", "Fuel Level [];"},
    {"Pressione Turbo [bar];", "Turbo Press. [bar];"},
    {"Sonda Lambda [A/F];", "Lambda sensor [A/F];"},
    {"Sonda Lambda [Lambda]", "Lambda sensor[Lambda]"},
}};

constexpr std::array<TitoloColonna, kAllarmi> kTitoliAllarmi = {{
    {"Pompa Olio;", "Oil Pump;"},
    {"Alternatore;", "Alternator;"},
    {"Temperatura Olio;", "Oil Temperature;"},
    {"Temperatura Acqua;", "Water Temperature;"},
    {"Batteria;", "Battery;"},
    {"Pressione carburante;", "Fuel Pressure;"},
    {"Pressione Olio;", "Oil Pressure;"},
    {"Livello carburante;", "Fuel Level;"},
}};

std::string_view InLingua(const TitoloColonna& titolo, int lingua) {
    return lingua != 0 ? titolo.Inglese : titolo.Italiano;
}

/// The unit that the project names; empty for a position that its list does not have.
std::string_view Unita(const std::vector<std::string>& lista, int indice) {
    if (indice < 0 || static_cast<std::size_t>(indice) >= lista.size()) return {};
    return lista[static_cast<std::size_t>(indice)];
}

}  // namespace

std::string TitoliCsv(int lingua, std::string_view umVelocita, std::string_view umTemperatura) {
    std::string riga;
    for (const TitoloColonna& colonna : kTitoliCsv) {
        const std::string_view titolo = InLingua(colonna, lingua);
        const std::size_t unita = titolo.find("[%V]") != std::string_view::npos   ? titolo.find('%')
                                  : titolo.find("[%T]") != std::string_view::npos ? titolo.find('%')
                                                                                  : titolo.size();
        riga += titolo.substr(0, unita);
        if (unita == titolo.size()) continue;
        riga += titolo[unita + 1] == 'V' ? umVelocita : umTemperatura;
        riga += titolo.substr(unita + 2);
    }
    return riga;
}

std::string TitoliTxt(int lingua) {
    std::string riga(InLingua(kTitoliCsv[0], lingua));
    riga += InLingua(kTitoliCsv[1], lingua);
    for (const TitoloColonna& allarme : kTitoliAllarmi) riga += InLingua(allarme, lingua);
    return riga;
}

void ConvertiBlocchi(const std::vector<std::string>& blocchi, std::size_t numero, char separatore,
                     std::string& csv, std::string& txt) {
    // No row of a car is longer; what stays free of it is never touched.
    csv.reserve(csv.size() + numero * kCampioni * 96);
    txt.reserve(txt.size() + numero * kCampioni * 48);
    PagineGrandi(csv.data(), csv.capacity());
    PagineGrandi(txt.data(), txt.capacity());
    Convertitore convertitore(separatore, csv, txt);
    for (std::size_t b = 0; b < numero; ++b) convertitore.Blocco(blocchi.at(b));
    convertitore.Fine();
}

IntestazioneLog IntestazioneCorrente() {
    return {IndiceLingua, std::string(Unita(ListaUMVelocita, DatiProgetto.UMVel)),
            std::string(Unita(ListaUMTemperatura, DatiProgetto.UMTemp))};
}

FileLog ComponiLog(const IntestazioneLog& intestazione) {
    FileLog file;
    file.Csv = TitoliCsv(intestazione.Lingua, intestazione.UMVelocita, intestazione.UMTemperatura) +
               "\r\n";
    file.Txt = TitoliTxt(intestazione.Lingua) + "\r\n";
    ConvertiBlocchi(BlocchiLog, static_cast<std::size_t>(NumBlocchi), platform().DecimalSeparator(),
                    file.Csv, file.Txt);
    file.Tim = "1.4\r\n";
    for (int giro = 1; giro <= NumeroGiri && giro < kGiriTabella; ++giro) {
        file.Tim += TabellaGiri[static_cast<std::size_t>(giro)] + "\r\n";
    }
    file.Tim += "\r\n";
    return file;
}

void ScriviLog(const fs::path& csv, const FileLog& file) {
    constexpr Lavoro kCosa = Lavoro::ConvertireLog;
    // Side files are named after the data file, its last three characters replaced.
    const fs::path txt = SenzaFine(csv, 3, "txt");
    const fs::path tim = SenzaFine(csv, 3, "tim");
    // A data file of that name would be written over by its own side file.
    if (csv == txt || csv == tim) {
        throw ErroreRuntime(NumeroErrore::FileAlreadyOpen, kCosa, csv);
    }
    // The data file last: where it is new, its side files are there when it appears.
    const std::array<FileNuovo, 3> insieme = {{{txt, file.Txt}, {tim, file.Tim}, {csv, file.Csv}}};
    ScriviInsieme(insieme, kCosa);
}

void ConvertiLog() {
    ScriviLog(PercorsoCsv, ComponiLog());
    logInMemoria().DaSalvare = false;
    ScaricoConcluso();
    const std::string avviso = AggiornaImpostazioni(PercorsoCsv);
    platform().MsgBox(Testo(Voce::ConversioneCompletata), Buttons::Ok, Icon::Information,
                      platform().ExeName());
    if (!avviso.empty()) {
        platform().MsgBox(avviso, Buttons::Ok, Icon::Warning, platform().ExeName());
    }
}

void mnuSaveData_Click() {
    const fs::path cartella = platform().AppPath();
    RiparaCartella(cartella);
    // A new name each time, for no question protects a log of another folder. The dialog gives the
    // extension: the side files take their names from its three letters.
    constexpr std::array<std::string_view, 4> kFini = {".csv", ".txt", ".tim", ".set"};
    std::string stelo = "Lapvane " + platform().Stamp();
    if (logInMemoria().Parziale) stelo += " " + Testo(Voce::Parziale);
    const auto scelto =
        platform().AskSave({Testo(Voce::SalvaDatiScaricati), cartella, "Data File (*.csv)|*.csv",
                            PercorsoDaTesto(NomeLibero(cartella, stelo, kFini) + ".csv"), ".csv"});
    if (!scelto) return;
    PercorsoCsv = *scelto;
    if (!ConfermaSostituzione(PercorsoCsv)) return;
    platform().MousePointer(Pointer::Busy);
    try {
        ConvertiLog();
    } catch (const ErroreRuntime& errore) {
        SegnalaScrittura(errore.File().empty()
                             ? ErroreRuntime(errore.Numero(), errore.Cosa(), PercorsoCsv)
                             : errore,
                         Voce::LogNonSalvato);
    }
    platform().MousePointer(Pointer::Normal);
}

}  // namespace lapvane
