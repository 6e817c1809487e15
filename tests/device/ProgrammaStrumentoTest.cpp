// Whole runs through the simulated instrument, both ways, on the virtual clock.
#include "device/ProgrammaStrumento.h"

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "project/FileProgetto.h"
#include "sensors/CSensore.h"
#include "sensors/CanaliSensore.h"
#include "sensors/Curve.h"
#include "support/StrumentoProva.h"

namespace lapvane {
namespace {

using prova::PlatformProva;

class VistaProva : public VistaStrumento {
 public:
    void Mostra(const std::string& titolo) override {
        Titolo = titolo;
        Aperta = true;
    }
    bool Visibile() const override { return Aperta; }
    void Puntatore(Pointer puntatore) override { Clessidra = puntatore == Pointer::Busy; }
    void Aggiungi(const std::string& testo) override {
        Registro += testo;
        Riusciti += testo == "   OK\r\n" ? 1 : 0;
    }
    void Chiusura(const std::string& testo) override { Fine = testo; }
    void Scarica() override { Aperta = false; }
    bool Aperta = false;
    bool Clessidra = false;
    int Riusciti = 0;
    std::string Titolo, Registro, Fine;
};

/// One direction: what is clicked, its phase, and the command of each exchange.
struct Verso {
    void (*Clic)(VistaStrumento&);
    std::int16_t Fase;
    Voce Domanda, Titolo, Interrotta;
    std::vector<int> Comandi;
};
const Verso kScrive = {
    mnuProgramDevice_Click,         18,
    Voce::StrumentoSovrascritto,    Voce::ProgrammazioneStrumento,
    Voce::ProgrammazioneInterrotta, {18, 28, 22, 24, 24, 24, 24, 24, 24, 24, 24, 24, 20}};
const Verso kLegge = {
    mnuReadDevice_Click,     19,
    Voce::DatiSostituiti,    Voce::LetturaStrumento,
    Voce::LetturaInterrotta, {19, 29, 23, 25, 25, 25, 25, 25, 25, 25, 25, 25, 21}};

class Corsa : public prova::ConStrumento<PlatformProva> {
 protected:
    Corsa() {
        std::filesystem::copy(prova::CartellaDati() / "sensors", macchina.Cartella / "sensors");
        CaricaLibreriaSensori();
        Esempio();
    }
    void Esempio() {
        EXPECT_TRUE(LeggiProgetto(prova::CartellaDati() / "Esempio.pro"));
        DatiProgetto.AbilCambio = true;
        ProgettoModificato = false;
    }
    /// Runs with OK to the question and to whatever is told; texts of what is told.
    std::vector<std::string> Corri(const Verso& verso) {
        macchina.Mostrati.clear();
        macchina.Risposte = {Answer::Ok};
        macchina.BoxLiberi = true;
        finestra.Storia.clear();
        prima = porta.Richieste().size();
        vista = {};
        const auto altro = macchina.DuranteEventi;
        macchina.DuranteEventi = [&] {
            if (altro) altro();
            if (vista.Aperta) {
                EXPECT_EQ(FaseComunicazione, verso.Fase);
                EXPECT_TRUE(vista.Clessidra);
            }
        };
        verso.Clic(vista);
        macchina.DuranteEventi = nullptr;
        EXPECT_EQ(macchina.Mostrati[0].Testo,
                  Testo(verso.Domanda) + "\r\n" + Testo(Voce::Continuare));
        return Detto(1);
    }
    /// Behind a run that was cut short: nothing hangs, and the link is opened anew.
    void Finita(const std::string& dove) {
        EXPECT_EQ(vista.Fine, "") << dove;
        EXPECT_FALSE(vista.Aperta) << dove;
        EXPECT_FALSE(vista.Clessidra) << dove;
        EXPECT_EQ(FaseComunicazione, 0) << dove;
        EXPECT_EQ(finestra.Testo(Pannello::Progresso), "") << dove;
        EXPECT_FALSE(collegamento().Abbandonato) << dove;
        EXPECT_FALSE(ProgettoModificato) << dove;
        EXPECT_EQ(porta.Richieste().back(), Frame(1)) << dove;
        EXPECT_EQ(std::exchange(finestra.SenzaPoll, 0), 1) << "the poll runs inside the handshake";
    }

    /// Reads into a copy, which must leave everything as it is.
    std::optional<CopiaStrumento> Copia() {
        prima = porta.Richieste().size();
        macchina.Mostrati.clear();
        macchina.BoxLiberi = true;
        vista = {};
        CurvaX.fill(7.0);
        CurvaY.fill(8.0);
        const RecordProgetto progetto = DatiProgetto;
        ErroreComunicazione = false;
        const auto copia = LeggiCopia(vista);
        EXPECT_FALSE(ErroreComunicazione) << "it would end a run that has nothing to do with it";
        EXPECT_EQ(TestoProgetto(DatiProgetto), TestoProgetto(progetto));
        EXPECT_EQ(DatiProgetto.chkIngresso, progetto.chkIngresso);
        EXPECT_TRUE(CurvaX[0] == 7.0 && CurvaX[19] == 7.0 && CurvaY[0] == 8.0 && CurvaY[19] == 8.0);
        EXPECT_FALSE(ProgettoModificato);
        EXPECT_FALSE(vista.Aperta);
        EXPECT_EQ(FaseComunicazione, 0);
        EXPECT_EQ(finestra.Testo(Pannello::Progresso), "");
        return copia;
    }

    VistaProva vista;
    std::size_t prima = 0;  // frames before the run
};

/// A row as a line of text, cells parted by bars.
std::vector<std::string> Righe(const std::vector<Differenza>& differenze) {
    std::vector<std::string> righe;
    for (const Differenza& d : differenze) {
        righe.push_back(d.Dove + "|" + d.Cosa + "|" + d.Prima + "|" + d.Ora + "|" + d.Unita);
    }
    return righe;
}

TEST_F(Corsa, WritesEverythingInOrderAndSaysSo) {
    EXPECT_TRUE(Corri(kScrive).empty());
    EXPECT_EQ(macchina.Mostrati[0].Pulsanti, Buttons::OkCancel);
    EXPECT_EQ(Comandi(), kScrive.Comandi);
    EXPECT_EQ(macchina.Dormito, 50) << "the instrument's pause between the halves of the setup";
    EXPECT_TRUE(vista.Registro.starts_with(
        "Programming the setup ...   OK\r\nSetup Sensors ...   OK\r\nProgramming the oil temp"));
    EXPECT_TRUE(vista.Registro.ends_with("the G sensor curve ...   OK\r\nAlarms ...   OK\r\n"));
    EXPECT_EQ(vista.Riusciti, 12);
    std::erase_if(finestra.Storia, [](const std::string& s) { return s[0] != '3'; });
    EXPECT_EQ(finestra.Storia.size(), 13u);
    EXPECT_EQ(vista.Fine, vista.Titolo + " OK");
    EXPECT_FALSE(vista.Clessidra);
    EXPECT_EQ(FaseComunicazione, 0);
    // "NTC olio M10" begins with 48 Bit at 171.0 C, the turbo below the pressure of the air.
    EXPECT_EQ(Int16In(apparecchio.Dati.Curva(0), 15), 48);
    EXPECT_EQ(Int16In(apparecchio.Dati.Curva(0), 57), 1710);
    EXPECT_EQ(Int16In(apparecchio.Dati.Curva(7), 57), -1000);
    // Acceleration is off: a zero curve.
    EXPECT_EQ(apparecchio.Dati.Curva(8).substr(14), std::string(82, '\0'));
}

TEST_F(Corsa, WhatWasWrittenIsReadBack) {
    const RecordProgetto scritto = DatiProgetto;
    // The factory's setting: no sensor of the library has its curves.
    EXPECT_TRUE(Corri(kLegge).empty());
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, "");
    EXPECT_EQ(DatiProgetto.TCampTO, "1 Hz");
    Esempio();
    Corri(kScrive);
    ValoriInizialiProgetto();
    EXPECT_TRUE(Corri(kLegge).empty());
    EXPECT_EQ(Comandi(prima), kLegge.Comandi);
    EXPECT_TRUE(ProgettoModificato);
    EXPECT_EQ(DatiProgetto.PressioneOlio, scritto.PressioneOlio);
    EXPECT_EQ(DatiProgetto.Cambio, scritto.Cambio);
    EXPECT_EQ(DatiProgetto.PressioneTurbo, scritto.PressioneTurbo);
    EXPECT_EQ(DatiProgetto.SensoreG, "");  // off: a zero curve, which has no name
    EXPECT_EQ(DatiProgetto.DiametroRuota, scritto.DiametroRuota);
    EXPECT_EQ(DatiProgetto.TempoVisGiro, scritto.TempoVisGiro);
    EXPECT_EQ(DatiProgetto.Led4, scritto.Led4);
    EXPECT_EQ(DatiProgetto.TCampTO, "") << "it does not travel";
}

TEST_F(Corsa, FailureThatPassesIsNotCoveredUp) {
    for (const auto& [guasto, scambi] : std::vector<std::pair<const char*, std::size_t>>{
             // The second record of the setup went well; the first is missing all the same.
             {"drop:18:1:1", 2},
             {"silent:22:1", 3},
             {"cut:4:24:2:1", 5},
             {"delay:10100:20:1:1", 13}}) {
        ASSERT_TRUE(LinkPronto());
        Guasta(guasto);
        EXPECT_EQ(Corri(kScrive), (std::vector<std::string>{Testo(Voce::StrumentoNonRisponde),
                                                            Testo(Voce::ErroreDiComunicazione)}));
        EXPECT_EQ(Comandi(prima).size(), scambi) << guasto;
        Finita(guasto);
        Guasta("");
        tmrComm_Timer();
        EXPECT_TRUE(StrumentoPresente) << guasto;
    }
    Guasta("delay:9900:20:1:1");  // within the time-out
    EXPECT_TRUE(Corri(kScrive).empty());
    // A curve that did not come leaves its sensor's name; the one before has the factory's curve.
    apparecchio.Dati = {};
    Guasta("drop:25:2:1");
    EXPECT_EQ(Corri(kLegge).size(), 2u);
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, "");
    EXPECT_EQ(DatiProgetto.PressioneOlio, "Pressione 0-10 bar");
}

TEST_F(Corsa, ClosedWindowEndsTheRunAtTheStep) {
    for (const Verso& verso : {kScrive, kLegge}) {
        for (const int k : {0, 6, 11}) {
            ASSERT_TRUE(LinkPronto());
            macchina.DuranteEventi = [&] {
                // The window's cross, while a lamp of step k is lit.
                const bool acceso =
                    finestra.Immagine(Pannello::TX) == 4 || finestra.Immagine(Pannello::RX) == 4;
                if (!acceso || !vista.Aperta || vista.Riusciti != k) return;
                vista.Aperta = false;
                collegamento().Abbandonato = true;
            };
            const std::string dove = Testo(verso.Titolo) + " " + std::to_string(k);
            EXPECT_EQ(Corri(verso), std::vector<std::string>{Testo(verso.Interrotta)}) << dove;
            EXPECT_EQ(vista.Riusciti, k) << dove;
            // The second record of the setup is not begun.
            EXPECT_EQ(Comandi(prima).size(), k == 0 ? 1u : static_cast<std::size_t>(k) + 2) << dove;
            Finita(dove);
        }
    }
    // A wait that is cut off is no failure of the link; one that failed of itself is told as well.
    Guasta("silent:23:1");
    macchina.DuranteEventi = [&] {
        if (porta.Richieste().back()[1] != 23 || !vista.Aperta) return;
        vista.Aperta = false;
        collegamento().Abbandonato = true;
    };
    EXPECT_EQ(Corri(kLegge), std::vector<std::string>{Testo(Voce::LetturaInterrotta)});
    Guasta("drop:22:1");
    macchina.DuranteEventi = nullptr;
    macchina.AlBox = [&] { vista.Aperta = vista.Aperta && macchina.Mostrati.size() < 2; };
    EXPECT_EQ(Corri(kScrive), (std::vector<std::string>{Testo(Voce::StrumentoNonRisponde),
                                                        Testo(Voce::ProgrammazioneInterrotta),
                                                        Testo(Voce::ErroreDiComunicazione)}));
}

TEST_F(Corsa, ChannelsThatAreOnNeedASensorAndARate) {
    using R = RecordProgetto;
    const RecordProgetto buono = DatiProgetto;
    const auto prova = [&](const std::function<void(RecordProgetto&)>& guasta) {
        DatiProgetto = buono;
        DatiProgetto.AbilSG = true;
        guasta(DatiProgetto);
        const auto detto = Corri(kScrive);
        if (detto.empty()) return std::string();
        EXPECT_EQ(macchina.Mostrati[1].Titolo, Testo(Voce::TitoloSensori));
        // The setup is written, nothing behind it; window and phase stay as they are.
        EXPECT_EQ(Comandi(prima), (std::vector<int>{18, 28}));
        EXPECT_TRUE(vista.Aperta);
        EXPECT_EQ(FaseComunicazione, 18);
        return detto[0];
    };
    for (const CanaleSensore& canale : kCanaliSensore) {
        const std::string titolo = Testo(canale.TestoManca) + "\r\n";
        const bool lambda = canale.Abil == &R::AbilSensoreLambda;  // not asked for
        const bool turbo = canale.Abil == &R::AbilPT;  // goes by the fuel pressure's name
        EXPECT_EQ(prova([&](R& p) { (p.*canale.TCamp).clear(); }),
                  lambda ? "" : titolo + Testo(Voce::MancaFrequenza));
        EXPECT_EQ(prova([&](R& p) { (p.*canale.Nome).clear(); }),
                  lambda || turbo ? "" : titolo + Testo(Voce::MancaNome));
    }
    EXPECT_EQ(prova([](R& p) {
                  p.AbilTO = false;
                  p.TemperaturaOlio.clear();
              }),
              "");
    EXPECT_EQ(prova([](R& p) {
                  p.AbilPB = false;
                  p.PressioneBenzina.clear();
              }),
              Testo(Voce::IncompletoPressioneTurbo) + "\r\n" + Testo(Voce::MancaNomeBenzina));
}

TEST_F(Corsa, ValuesThatDoNotFitStopBeforeAnythingIsSent) {
    DatiProgetto.ImpulsiRuota = 257;
    macchina.Risposte = {Answer::Ok, Answer::Cancel};
    mnuProgramDevice_Click(vista);
    EXPECT_EQ(macchina.Mostrati.at(1).Testo.find(Testo(Voce::ValoriFuoriCampo)), 0u);
    for (const Verso& verso : {kScrive, kLegge}) {
        macchina.Risposte = {Answer::Cancel};
        verso.Clic(vista);
    }
    EXPECT_EQ(vista.Titolo, "");
    EXPECT_TRUE(porta.Richieste().empty());
    EXPECT_EQ(FaseComunicazione, 0);
}

TEST_F(Corsa, WithoutAnInstrumentEveryStepIsSkippedAndTheProjectKept) {
    porta.Sparisci();
    for (const Verso& verso : {kScrive, kLegge}) {
        EXPECT_TRUE(Corri(verso).empty());
        EXPECT_EQ(vista.Riusciti, 12);
        EXPECT_EQ(vista.Fine, Testo(verso.Titolo) + " OK");
    }
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, "NTC olio M10");
    // A failure that nothing has cleared ends the run at its first step.
    ErroreComunicazione = true;
    EXPECT_EQ(Corri(kScrive), std::vector<std::string>{Testo(Voce::ErroreDiComunicazione)});
    EXPECT_FALSE(vista.Aperta);
}

TEST_F(Corsa, WhatWasProgrammedDoesNotDiffer) {
    // Each of these travels as something else than it says, or not at all.
    DatiProgetto.mskStopRecSecondi = 300;
    DatiProgetto.mskPO = 32768;
    DatiProgetto.Settore2 = 65535;
    DatiProgetto.TipoLedGiallo = "01";
    DatiProgetto.chkIngresso = true;
    DatiProgetto.TipoIngresso = 1;
    DatiProgetto.LedVerde = true;
    DatiProgetto.chkTB = false;
    macchina.Risposte = {Answer::Ok, Answer::Ok};
    mnuProgramDevice_Click(vista);
    ASSERT_EQ(vista.Riusciti, 12);
    const auto copia = Copia();
    ASSERT_TRUE(copia);
    EXPECT_EQ(Comandi(prima), kLegge.Comandi);
    EXPECT_EQ(Righe(Differenze(DatiProgetto, *copia)), std::vector<std::string>{});
}

TEST_F(Corsa, ACopyThatDoesNotComeThroughIsNoneAndTouchesNothing) {
    Guasta("drop:25:3");
    EXPECT_FALSE(Copia());
    EXPECT_EQ(Detto(), (std::vector<std::string>{Testo(Voce::StrumentoNonRisponde),
                                                 Testo(Voce::ErroreDiComunicazione)}));
    Guasta("");
    macchina.DuranteEventi = [&] {
        if (vista.Riusciti < 5) return;
        vista.Aperta = false;
        collegamento().Abbandonato = true;
    };
    EXPECT_FALSE(Copia());
    EXPECT_EQ(Detto(), std::vector<std::string>{Testo(Voce::LetturaInterrotta)});
    macchina.DuranteEventi = nullptr;
    porta.Sparisci();
    EXPECT_FALSE(Copia()) << "zeros that nobody has read would be shown as the instrument's";
    EXPECT_EQ(Detto(), std::vector<std::string>{Testo(Voce::ErroreDiComunicazione)});
    EXPECT_EQ(vista.Riusciti, 0);
}

TEST_F(Corsa, WhatDiffersIsToldInAPersonsWords) {
    Corri(kScrive);
    const auto copia = Copia();
    ASSERT_TRUE(copia);
    struct Caso {
        std::size_t Record, Byte;  // from 1
        std::string Nuovi, Riga;
    };
    using namespace std::string_literals;
    for (const Caso& caso : std::vector<Caso>{
             {0, 4, "\1", "Setup|Units of measure: Speed|Km/h|mph|"},
             {0, 9, "\0"s, "Setup|Automatic start: at a lap|on|off|"},
             {0, 11, "\0\x50"s, "Setup|Automatic start: above the speed|60|80|Km/h"},
             {1, 3, "\6", "Setup|Lap message|5|6|s"},
             {1, 5, "\xFF\xFE", "Setup|Sector 1|812|-2|m"},
             {2, 5, "\2\x58", "Sensors|Wheel diameter|560|600|mm"},
             {2, 7, "\2", "Sensors|Oil pump: Activation level|Active low|Active high|"},
             {2, 9, "\0"s, "Sensors|Oil temperature|on|off|"},
             {2, 9, "\7", ""},  // any byte but 0 is on
             {2, 18, "\1", "Sensors|G sensor: Analogue input|AN 2|AN 1|"},
             {3, 3, "\4\xB0", "Alarms|Oil temperature|130.0|120.0|\xB0 C"},
             {3, 5, "\0\0"s, "Alarms|Oil pressure|1.500|off|bar"},
             {3, 15, "\x2B\xC0", "Alarms|Shift light: LED 1|11000|11200|RPM"},
             {3, 26, "\1", ""},  // nobody's
             {3, 28, "\7", "Alarms|Digital output|Oil pressure|Any alarm|"},
             {3, 28, "\x0C", "Alarms|Digital output|Oil pressure|12|"},
             {3, 29, "\1", "Alarms|Digital input|off|External alarm|"}}) {
        CopiaStrumento altra = *copia;
        altra.Record[caso.Record].replace(caso.Byte - 1, caso.Nuovi.size(), caso.Nuovi);
        const auto attese =
            caso.Riga.empty() ? std::vector<std::string>{} : std::vector<std::string>{caso.Riga};
        EXPECT_EQ(Righe(Differenze(DatiProgetto, altra)), attese) << caso.Byte;
    }
    CopiaStrumento altra = *copia;
    altra.Record[0][3] = '\1';
    altra.Record[0][7] ^= '\x81';
    altra.Record[0].replace(10, 2, "\0\x50"s);
    DatiProgetto.TipoLedGiallo = "red";
    const auto righe = Righe(Differenze(DatiProgetto, altra));
    ASSERT_EQ(righe.size(), 5u);
    EXPECT_TRUE(righe[1].starts_with("Setup|Page 2|"));
    EXPECT_TRUE(righe[2].starts_with("Setup|Page 9|"));
    EXPECT_EQ(righe[3], "Setup|Automatic start: above the speed|60|80|Km/h / mph");
    EXPECT_EQ(righe[4], "Alarms|Yellow LED|red|Any alarm|");
}

TEST_F(Corsa, CurvesAreComparedPointByPointAndNamedByTheLibrary) {
    DatiProgetto.AbilSG = false;
    Corri(kScrive);
    const auto copia = Copia();
    ASSERT_TRUE(copia);
    const auto riga = [&](std::size_t canale, const std::function<void(CurvaStrumento&)>& muta) {
        CopiaStrumento altra = *copia;
        muta(altra.Curve[canale]);
        const auto righe = Righe(Differenze(DatiProgetto, altra));
        return righe.empty() ? "" : righe[0];
    };
    const auto niente = [](CurvaStrumento&) {};
    EXPECT_EQ(riga(kCanaleTO,
                   [](CurvaStrumento& c) {
                       ++c.Y[0];
                       --c.X[19];
                   }),
              "Curves|Oil temperature: points that differ: 2, from no. 1|"
              "NTC olio M10: 48 Bit = 171.0|unnamed curve: 48 Bit = 171.1|\xB0"
              "C");
    EXPECT_EQ(riga(kCanaleSG, [](CurvaStrumento& c) { c.X[3] = -5; }),
              "Curves|G sensor: points that differ: 1, from no. 4|"
              "off: 0 mV = 0.000|unnamed curve: -5 mV = 0.000|G");
    // The instrument's curve is that of another sensor of the library.
    DatiProgetto.TemperaturaOlio = "NTC olio M12 rapida";
    EXPECT_NE(riga(kCanaleTO, niente).find("|NTC olio M10: 48 Bit = 171.0|"), std::string::npos);
    DatiProgetto.TemperaturaOlio = "lost";
    EXPECT_EQ(riga(kCanaleTO, niente),
              "Curves|Oil temperature|lost, not in the library|NTC olio M10|");
    // A curve of two points: what the others hold is no setting of the project.
    CSensore corto;
    corto.Nome("lost");
    corto.Tipo("TemperaturaOlio");
    corto.NumPunti(2);
    corto.X(0, 48);
    corto.Y(0, 171);
    corto.X(1, copia->Curve[0].X[1]);
    corto.Y(1, copia->Curve[0].Y[1] / 10.0);
    LibreriaSensori.push_back(corto);
    EXPECT_EQ(riga(kCanaleTO, niente), "");
    LibreriaSensori.back().Y(0, 3e9);  // more than travels
    EXPECT_NE(riga(kCanaleTO, niente).find("lost: 48 = 30000000000|"), std::string::npos);
}

TEST(Differenze, TwoSettingsDifferAlsoInWhatNeverTravels) {
    prova::PlatformProva macchina;
    prova::CaricaTestiVeri(1);
    RecordProgetto prima, ora;
    prima.mskStopRecSecondi = 300;
    ora.mskStopRecSecondi = 44;
    prima.Veicolo = " ";
    prima.DataUltimaModifica = "today";
    prima.NoteProgetto = "wet\r\ntrack";
    ora.NoteProgetto = "wet track";
    EXPECT_TRUE(Differenze(prima, ora).empty());
    ora.Veicolo = "F3";
    ora.SensoreG = "3 g";
    ora.TCampRPM = "20 Hz";
    ora.LedVerde = true;
    ora.TipoIngresso = 1;
    prima.chkTO = true;
    prima.mskTO = 1305;
    prima.UMTemp = 1;
    EXPECT_EQ(Righe(Differenze(prima, ora)),
              (std::vector<std::string>{
                  "Setup|Units of measure: Temperature|\xB0 F|\xB0 C|",
                  "Alarms|Oil temperature|130.5|off|\xB0 F / \xB0 C",
                  "Alarms|Digital input|off|External alarm|", "Project|Car||F3|",
                  "Project|Engine speed: Sampling rate||20 Hz|",
                  "Project|G sensor: Sensor name||3 g|", "Project|Green LED|off|on|"}));
}

}  // namespace
}  // namespace lapvane
