// Whole runs through the simulated instrument, both ways, on the virtual clock.
#include "device/ProgrammaStrumento.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "device/Codec.h"
#include "device/SerialComm.h"
#include "instrument/SerialeStrumento.h"
#include "instrument/Strumento.h"
#include "project/DatiProgetto.h"
#include "project/FileProgetto.h"
#include "sensors/CSensore.h"
#include "sensors/Curve.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "support/Cartelle.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using prova::PlatformProva;
using prova::PrincipaleProva;
using strumento::LeggiGuasto;
using strumento::SerialeStrumento;
using strumento::Strumento;

class VistaProva : public VistaStrumento {
 public:
    void Mostra(const std::string& titolo) override {
        Titolo = titolo;
        Aperta = true;
    }
    bool Visibile() const override { return Aperta; }
    void Puntatore(Pointer puntatore) override { Clessidra = puntatore == Pointer::Busy; }
    void Aggiungi(const std::string& testo) override { Registro += testo; }
    void Chiusura(const std::string& testo) override { Fine = testo; }
    void Scarica() override {
        Aperta = false;
        ++Scaricata;
    }
    bool Aperta = false;
    bool Clessidra = false;
    int Scaricata = 0;
    std::string Titolo, Registro, Fine;
};

/// One direction: what is clicked, its phase, and the command of each exchange.
struct Verso {
    void (*Clic)(VistaStrumento&);
    std::int16_t Fase;
    Voce Domanda, Titolo, Interrotta;
    std::vector<int> Comandi;
};
const Verso kVersi[] = {
    {mnuProgramDevice_Click,
     18,
     Voce::StrumentoSovrascritto,
     Voce::ProgrammazioneStrumento,
     Voce::ProgrammazioneInterrotta,
     {18, 28, 22, 24, 24, 24, 24, 24, 24, 24, 24, 24, 20}},
    {mnuReadDevice_Click,
     19,
     Voce::DatiSostituiti,
     Voce::LetturaStrumento,
     Voce::LetturaInterrotta,
     {19, 29, 23, 25, 25, 25, 25, 25, 25, 25, 25, 25, 21}},
};

class Corsa : public ::testing::Test {
 protected:
    Corsa() {
        prova::CaricaTestiVeri(1);
        finestra.Seriale = &porta;
        fs::copy(prova::CartellaDati() / "sensors", macchina.Cartella / "sensors");
        CaricaLibreriaSensori();
        CurvaX.fill(0.0);
        CurvaY.fill(0.0);
        EXPECT_TRUE(LeggiProgetto(prova::CartellaDati() / "Esempio.pro"));
        DatiProgetto.AbilCambio = true;
        ProgettoModificato = false;
    }
    /// Runs with OK to the question and to whatever is told.
    void Clic(const Verso& verso) {
        macchina.Mostrati.clear();
        macchina.Risposte = {Answer::Ok};
        macchina.BoxLiberi = true;
        finestra.Storia.clear();
        vista = {};
        verso.Clic(vista);
    }
    /// Texts of the boxes behind the question.
    std::vector<std::string> Detto() const {
        std::vector<std::string> testi;
        for (std::size_t i = 1; i < macchina.Mostrati.size(); ++i) {
            testi.push_back(macchina.Mostrati[i].Testo);
        }
        return testi;
    }
    /// Commands of the frames that were written from the `dal`-th on.
    std::vector<int> Comandi(std::size_t dal = 0) const {
        std::vector<int> comandi;
        for (std::size_t i = dal; i < porta.Richieste().size(); ++i) {
            comandi.push_back(ByteIn(porta.Richieste()[i], 2));
        }
        return comandi;
    }
    int Riusciti() const {
        int quanti = 0;
        for (std::size_t p = 0; (p = vista.Registro.find(" ...   OK\r\n", p)) != std::string::npos;
             ++p) {
            ++quanti;
        }
        return quanti;
    }
    /// The value of point `i` of the curve that the instrument holds.
    int PuntoX(int canale, std::size_t i) { return Int16In(Curva(canale), 15 + 2 * i); }
    int PuntoY(int canale, std::size_t i) { return Int16In(Curva(canale), 57 + 2 * i); }
    const std::string& Curva(int canale) { return apparecchio.Dati.Curva(canale); }
    void Guasta(const std::string& come) {
        apparecchio.Difetti.Togli();
        apparecchio.Difetti.Aggiungi(LeggiGuasto(come));
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
    Strumento apparecchio;
    SerialeStrumento porta{apparecchio, [this] { return macchina.Orologio; },
                           [this](int ms) { macchina.Orologio += ms; }};
    VistaProva vista;
};

TEST_F(Corsa, WritesEverythingInOrderAndSaysSo) {
    bool fase = true;
    macchina.DuranteEventi = [&] { fase = fase && FaseComunicazione == 18 && vista.Clessidra; };
    Clic(kVersi[0]);
    EXPECT_TRUE(fase);
    ASSERT_EQ(macchina.Mostrati.size(), 1u);
    EXPECT_EQ(macchina.Mostrati[0].Testo,
              Testo(Voce::StrumentoSovrascritto) + "\r\n" + Testo(Voce::Continuare));
    EXPECT_EQ(macchina.Mostrati[0].Pulsanti, Buttons::OkCancel);
    std::vector<int> attesi = kVersi[0].Comandi;
    attesi.insert(attesi.begin(), 1);
    EXPECT_EQ(Comandi(), attesi);
    for (std::size_t n = 0; n < 9; ++n) EXPECT_EQ(ByteIn(porta.Richieste()[4 + n], 3), int(n));

    const std::vector<std::string> passi = {
        "Programming the setup",
        "Setup Sensors",
        "Programming the oil temperature curve",
        "Programming the oil pressure curve",
        "Programming the fuel pressure curve",
        "Programming the water temperature curve",
        "Programming the fuel level curve",
        "Programming the gear curve",
        "Programming the lambda sensor curve",
        "Programming the turbo pressure curve",
        "Programming the G sensor curve",
        "Alarms",
    };
    std::string registro;
    std::vector<std::string> pannello;
    for (const std::string& passo : passi) {
        registro += passo + " ...   OK\r\n";
        pannello.push_back("3:" + passo);
    }
    pannello.push_back("3:");
    EXPECT_EQ(vista.Registro, registro);
    std::erase_if(finestra.Storia, [](const std::string& s) { return s[0] != '3'; });
    EXPECT_EQ(finestra.Storia, pannello);
    EXPECT_EQ(vista.Titolo, Testo(Voce::ProgrammazioneStrumento));
    EXPECT_EQ(vista.Fine, Testo(Voce::ProgrammazioneStrumento) + " OK");
    EXPECT_TRUE(vista.Aperta);
    EXPECT_FALSE(vista.Clessidra);
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_TRUE(porta.PortOpen());
    EXPECT_FALSE(ProgettoModificato);

    // "NTC olio M10": 48 Bit at 171.0 C, 884 Bit at 0.0; "Pressione 0-7 bar"; the gears.
    EXPECT_EQ(PuntoX(0, 0), 48);
    EXPECT_EQ(PuntoY(0, 0), 1710);
    EXPECT_EQ(PuntoX(0, 19), 884);
    EXPECT_EQ(PuntoY(2, 5), 1846);
    EXPECT_EQ(PuntoY(5, 4), 2);
    EXPECT_EQ(PuntoY(7, 0), -1000);
    // Acceleration is off: a zero curve.
    EXPECT_EQ(Curva(8).substr(14), std::string(82, '\0'));
}

TEST_F(Corsa, WhatWasWrittenIsReadBack) {
    // The factory's setting first: no sensor has its curves.
    Clic(kVersi[1]);
    EXPECT_EQ(Detto(), std::vector<std::string>{});
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, "");
    EXPECT_EQ(DatiProgetto.SensoreLambda, "");
    EXPECT_EQ(DatiProgetto.TCampTO, "1 Hz");
    ASSERT_TRUE(LeggiProgetto(prova::CartellaDati() / "Esempio.pro"));
    DatiProgetto.AbilCambio = true;
    ProgettoModificato = false;
    const RecordProgetto scritto = DatiProgetto;
    Clic(kVersi[0]);

    ValoriInizialiProgetto();
    DatiProgetto.TCampPO = "20 Hz";
    bool fase = true;
    macchina.DuranteEventi = [&] { fase = fase && FaseComunicazione == 19; };
    const std::size_t prima = porta.Richieste().size();
    Clic(kVersi[1]);
    EXPECT_TRUE(fase);
    EXPECT_EQ(Comandi(prima), kVersi[1].Comandi);
    EXPECT_EQ(macchina.Mostrati.at(0).Testo,
              Testo(Voce::DatiSostituiti) + "\r\n" + Testo(Voce::Continuare));
    EXPECT_EQ(vista.Fine, Testo(Voce::LetturaStrumento) + " OK");
    EXPECT_EQ(Riusciti(), 12);
    EXPECT_TRUE(vista.Registro.starts_with(Testo(Voce::LetturaImpostazioni) + " ...   OK\r\n" +
                                           Testo(Voce::LetturaIngressiSensori) + " ..."));
    EXPECT_TRUE(vista.Registro.ends_with(Testo(Voce::LetturaCurvaSensoreG) + " ...   OK\r\n" +
                                         Testo(Voce::PassoAllarmi) + " ...   OK\r\n"));
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_TRUE(ProgettoModificato);
    // All that travels, and nothing else. The zero curve of the channel that is off has no name.
    EXPECT_EQ(DatiProgetto.SensoreG, "");
    EXPECT_EQ(DatiProgetto.TCampTO, "");
    EXPECT_EQ(DatiProgetto.TCampPO, "20 Hz");
    EXPECT_FALSE(DatiProgetto.PaginaAbilitata1);
    const auto campo = [](const RecordProgetto& record, std::size_t i) {
        return std::visit(
            [&](auto membro) -> std::string {
                if constexpr (std::is_same_v<decltype(membro), std::string RecordProgetto::*>) {
                    return record.*membro;
                } else {
                    return std::to_string(record.*membro);
                }
            },
            kCampiProgetto[i].Campo);
    };
    std::vector<std::string> diversi;
    for (std::size_t i = PosizioneCampo("Lingua"); i < kNumCampiProgetto; ++i) {
        const std::string nome(kCampiProgetto[i].Nome);
        if (campo(DatiProgetto, i) != campo(scritto, i) && !nome.starts_with("TCamp") &&
            nome != "PaginaAbilitata1" &&
            (!nome.starts_with("Pagina") || nome.starts_with("PaginaAbilitata")) &&
            !nome.ends_with("Verde") && !nome.ends_with("Blu")) {
            diversi.push_back(nome);
        }
    }
    EXPECT_EQ(diversi, std::vector<std::string>{"SensoreG"});
}

TEST_F(Corsa, InstrumentThatFallsSilentEndsTheRunAtItsStep) {
    for (const Verso& verso : kVersi) {
        for (std::size_t k = 0; k < verso.Comandi.size(); ++k) {
            const int comando = verso.Comandi[k];
            int quale = 0;  // of the frames with this command
            for (std::size_t i = 0; i <= k; ++i) quale += verso.Comandi[i] == comando ? 1 : 0;
            Guasta("silent:" + std::to_string(comando) + ":" + std::to_string(quale));
            ProgettoModificato = false;
            const std::size_t prima = porta.Richieste().size();
            const std::string allarmi = apparecchio.Dati.Dati(strumento::Record::Allarmi);
            Clic(verso);
            const std::string dove = Testo(verso.Titolo) + " " + std::to_string(k);
            // The first half of the setup does not keep the second one back.
            std::vector<std::string> detto(k == 0 ? 2 : 1, Testo(Voce::StrumentoNonRisponde));
            detto.push_back(Testo(Voce::ErroreDiComunicazione));
            EXPECT_EQ(Detto(), detto) << dove;
            EXPECT_EQ(macchina.Mostrati.back().Icona, Icon::Information);
            EXPECT_EQ(macchina.Mostrati.back().Titolo, "lapvane");
            EXPECT_EQ(Riusciti(), k < 2 ? 0 : static_cast<int>(k) - 1) << dove;
            EXPECT_EQ(vista.Fine, "") << dove;
            EXPECT_EQ(vista.Scaricata, 1) << dove;
            EXPECT_FALSE(vista.Clessidra) << dove;
            EXPECT_EQ(FaseComunicazione, 0) << dove;
            EXPECT_EQ(finestra.Testo(Pannello::Progresso), "") << dove;
            EXPECT_FALSE(ProgettoModificato) << dove;
            // Nothing but the attempt to open the link anew comes behind the failure.
            std::vector<int> comandi = Comandi(prima);
            std::erase(comandi, 1);
            EXPECT_EQ(comandi.size(), k == 0 ? 2 : k + 1) << dove;
            EXPECT_FALSE(porta.PortOpen()) << dove;
            apparecchio.Difetti.Togli();
            ASSERT_TRUE(LinkPronto());
        }
    }
}

TEST_F(Corsa, FailureThatPassesOpensTheLinkAnewAndIsNotCoveredUp) {
    struct Caso {
        const char* Guasto;
        std::vector<int> Comandi;
    };
    for (const Caso& caso : {
             // The second record of the setup went well; the first is missing all the same.
             Caso{"drop:18:1:1", {18, 28}},
             Caso{"corrupt:3:22:1:1", {18, 28, 22}},
             Caso{"extra:2:22:1:1", {18, 28, 22}},
             Caso{"cut:4:24:2:1", {18, 28, 22, 24, 24}},
             Caso{"delay:10100:20:1:1", {18, 28, 22, 24, 24, 24, 24, 24, 24, 24, 24, 24, 20}},
         }) {
        Guasta(caso.Guasto);
        ASSERT_TRUE(LinkPronto());
        const std::size_t prima = porta.Richieste().size();
        Clic(kVersi[0]);
        EXPECT_EQ(Detto(), (std::vector<std::string>{Testo(Voce::StrumentoNonRisponde),
                                                     Testo(Voce::ErroreDiComunicazione)}))
            << caso.Guasto;
        std::vector<int> attesi = caso.Comandi;
        attesi.push_back(1);
        EXPECT_EQ(Comandi(prima), attesi) << caso.Guasto;
        EXPECT_FALSE(vista.Aperta) << caso.Guasto;
        EXPECT_EQ(vista.Fine, "") << caso.Guasto;
        // The late acknowledgement spoils the handshake; the next poll finds the instrument.
        EXPECT_EQ(porta.PortOpen(), !std::string(caso.Guasto).starts_with("delay")) << caso.Guasto;
        tmrComm_Timer();
        EXPECT_TRUE(StrumentoPresente) << caso.Guasto;
    }
    // Within the time-out: accepted.
    Guasta("delay:9900:20:1:1");
    Clic(kVersi[0]);
    EXPECT_EQ(vista.Fine, Testo(Voce::ProgrammazioneStrumento) + " OK");
}

TEST_F(Corsa, FailedReadLeavesTheNamesOfWhatDidNotCome) {
    Guasta("drop:25:2:1");
    Clic(kVersi[1]);
    EXPECT_EQ(Detto(), (std::vector<std::string>{Testo(Voce::StrumentoNonRisponde),
                                                 Testo(Voce::ErroreDiComunicazione)}));
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, "");  // the factory's curve: read, not in the library
    EXPECT_EQ(DatiProgetto.PressioneOlio, "Pressione 0-10 bar");
    EXPECT_EQ(DatiProgetto.Cambio, "Cambio 6 marce");
}

TEST_F(Corsa, ClosedWindowEndsTheRunAtTheStep) {
    for (const Verso& verso : kVersi) {
        for (int k = 0; k < 12; ++k) {
            ASSERT_TRUE(LinkPronto());
            const std::size_t prima = porta.Richieste().size();
            macchina.DuranteEventi = [&] {
                // The window's cross, while a lamp of step k is lit.
                const bool acceso =
                    finestra.Immagine(Pannello::TX) == 4 || finestra.Immagine(Pannello::RX) == 4;
                if (!acceso || !vista.Aperta || Riusciti() != k) return;
                vista.Aperta = false;
                collegamento().Abbandonato = true;
            };
            Clic(verso);
            macchina.DuranteEventi = nullptr;
            const std::string dove = Testo(verso.Titolo) + " " + std::to_string(k);
            EXPECT_EQ(Detto(), std::vector<std::string>{Testo(verso.Interrotta)}) << dove;
            EXPECT_EQ(macchina.Mostrati.back().Icona, Icon::Information);
            EXPECT_EQ(Riusciti(), k) << dove;
            // The second record of the setup is not begun; the link is opened anew.
            std::vector<int> attesi(verso.Comandi.begin(),
                                    verso.Comandi.begin() + (k == 0 ? 1 : k + 2));
            attesi.push_back(1);
            EXPECT_EQ(Comandi(prima), attesi) << dove;
            EXPECT_TRUE(porta.PortOpen()) << dove;
            EXPECT_EQ(FaseComunicazione, 0) << dove;
            EXPECT_FALSE(collegamento().Abbandonato) << dove;
            EXPECT_FALSE(ProgettoModificato) << dove;
            EXPECT_EQ(vista.Fine, "") << dove;
        }
    }
}

TEST_F(Corsa, ClosedWindowCutsOffAWaitAndIsNotCalledAFailure) {
    ASSERT_TRUE(LinkPronto());
    Guasta("silent:25:1");
    const std::int64_t inizio = macchina.Orologio;
    std::int64_t chiusa = 0;
    macchina.DuranteEventi = [&] {
        if (!vista.Aperta || porta.RichiesteDi(25) == 0) return;
        chiusa = macchina.Orologio;
        vista.Aperta = false;
        collegamento().Abbandonato = true;
        apparecchio.Difetti.Togli();
    };
    Clic(kVersi[1]);
    EXPECT_EQ(Detto(), std::vector<std::string>{Testo(Voce::LetturaInterrotta)});
    EXPECT_GT(chiusa, inizio);
    EXPECT_LT(macchina.Orologio - chiusa, 100);
    EXPECT_TRUE(porta.PortOpen());

    // Closed, and the exchange failed of itself: both are told, in this order.
    Guasta("drop:28:1");
    macchina.DuranteEventi = [&] {
        if (porta.RichiesteDi(18) == 1) vista.Aperta = false;
    };
    Clic(kVersi[0]);
    EXPECT_EQ(Detto(), (std::vector<std::string>{Testo(Voce::StrumentoNonRisponde),
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
        const std::size_t prima = porta.Richieste().size();
        FaseComunicazione = 0;
        Clic(kVersi[0]);
        const auto detto = Detto();
        if (detto.empty()) {
            EXPECT_EQ(FaseComunicazione, 0);
            EXPECT_EQ(vista.Fine, Testo(Voce::ProgrammazioneStrumento) + " OK");
            return std::string();
        }
        EXPECT_EQ(macchina.Mostrati[1].Titolo, Testo(Voce::TitoloSensori));
        EXPECT_EQ(macchina.Mostrati[1].Icona, Icon::Warning);
        // The setup is written, nothing behind it; window, panel and link stay as they are.
        auto comandi = Comandi(prima);
        std::erase(comandi, 1);
        EXPECT_EQ(comandi, (std::vector<int>{18, 28}));
        EXPECT_EQ(vista.Registro, Testo(Voce::ProgrammazioneImpostazioni) + " ...   OK\r\n");
        EXPECT_TRUE(vista.Aperta);
        EXPECT_EQ(vista.Fine, "");
        EXPECT_EQ(FaseComunicazione, 18);
        EXPECT_EQ(detto.size(), 1u);
        return detto[0];
    };
    struct Canale {
        bool R::*Abil;
        std::string R::*Nome;
        std::string R::*TCamp;
        Voce Testo;
    };
    for (const Canale& c :
         {Canale{&R::AbilTO, &R::TemperaturaOlio, &R::TCampTO, Voce::IncompletoTemperaturaOlio},
          Canale{&R::AbilPO, &R::PressioneOlio, &R::TCampPO, Voce::IncompletoPressioneOlio},
          Canale{&R::AbilTA, &R::TemperaturaAcqua, &R::TCampTA, Voce::IncompletoTemperaturaAcqua},
          Canale{&R::AbilPB, &R::PressioneBenzina, &R::TCampPB, Voce::IncompletoPressioneBenzina},
          Canale{&R::AbilLB, &R::LivelloBenzina, &R::TCampLB, Voce::IncompletoLivelloBenzina},
          Canale{&R::AbilPT, nullptr, &R::TCampPT, Voce::IncompletoPressioneTurbo},
          Canale{&R::AbilSG, &R::SensoreG, &R::TCampSG, Voce::IncompletoSensoreG},
          Canale{&R::AbilCambio, &R::Cambio, &R::TCampCambio, Voce::IncompletoMarcia}}) {
        EXPECT_EQ(prova([&](R& p) { (p.*c.TCamp).clear(); }),
                  Testo(c.Testo) + "\r\n" + Testo(Voce::MancaFrequenza));
        if (c.Nome != nullptr) {
            EXPECT_EQ(prova([&](R& p) { (p.*c.Nome).clear(); }),
                      Testo(c.Testo) + "\r\n" + Testo(Voce::MancaNome));
        }
        if (c.Abil != &R::AbilPB && c.Nome != nullptr) {
            EXPECT_EQ(prova([&](R& p) {
                          p.*c.Abil = false;
                          (p.*c.Nome).clear();
                          (p.*c.TCamp).clear();
                      }),
                      "");
        }
    }
    // The first in order speaks; lambda is not asked for.
    EXPECT_EQ(prova([](R& p) {
                  p.TCampCambio.clear();
                  p.TCampPB.clear();
                  p.TCampTA.clear();
              }),
              Testo(Voce::IncompletoTemperaturaAcqua) + "\r\n" + Testo(Voce::MancaFrequenza));
    EXPECT_EQ(prova([](R& p) {
                  p.SensoreLambda.clear();
                  p.TCampSensoreLambda.clear();
              }),
              "");
    // The turbo channel goes by the fuel pressure's name.
    EXPECT_EQ(prova([](R& p) { p.PressioneTurbo.clear(); }), "");
    EXPECT_EQ(prova([](R& p) {
                  p.AbilPB = false;
                  p.PressioneBenzina.clear();
              }),
              Testo(Voce::IncompletoPressioneTurbo) + "\r\n" + Testo(Voce::MancaNomeBenzina));
}

TEST_F(Corsa, ValuesThatDoNotFitAreAskedAboutAndWhatIsNoNumberStopsBeforeAnythingIsSent) {
    DatiProgetto.LedGiallo = true;
    DatiProgetto.TipoLedGiallo = " ";
    Clic(kVersi[0]);
    EXPECT_EQ(Detto(), std::vector<std::string>{Testo(Voce::ValoreNonInviabile) + "\r\n" +
                                                Testo(Voce::LedGiallo) + ": \" \"\r\n" +
                                                Testo(Voce::NumeroNellIntervallo) + " 0 ... 255"});
    DatiProgetto.TipoLedGiallo = "1";
    DatiProgetto.mskStopRecSecondi = 255;
    DatiProgetto.ImpulsiRuota = 257;
    DatiProgetto.mskLB = 32768;
    DatiProgetto.chkLB = true;
    DatiProgetto.mskTB = 99990;  // off: it travels as 0
    DatiProgetto.chkTB = false;
    macchina.Risposte = {Answer::Ok, Answer::Cancel};
    macchina.Mostrati.clear();
    mnuProgramDevice_Click(vista);
    ASSERT_EQ(macchina.Mostrati.size(), 2u);
    EXPECT_EQ(macchina.Mostrati[1].Testo,
              Testo(Voce::ValoriFuoriCampo) + "\r\n" + Testo(Voce::ImpulsiRuota) +
                  ": 257 (0 ... 255), " + Testo(Voce::StrumentoRiceve) + " 1\r\n" +
                  Testo(Voce::SogliaLivelloBenzina) + ": 3276.8 (-3276.8 ... 3276.7), " +
                  Testo(Voce::StrumentoRiceve) + " -3276.8\r\n" + Testo(Voce::InviareLoStesso));
    EXPECT_EQ(porta.RichiesteDi(18), 0u);
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_FALSE(vista.Aperta);
}

TEST_F(Corsa, WithoutAnInstrumentEveryStepIsSkippedAndTheProjectKept) {
    porta.Sparisci();
    const RecordProgetto prima = DatiProgetto;
    for (const Verso& verso : kVersi) {
        Clic(verso);
        EXPECT_TRUE(Detto().empty());
        EXPECT_EQ(Riusciti(), 12);
        EXPECT_EQ(vista.Fine, Testo(verso.Titolo) + " OK");
    }
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, prima.TemperaturaOlio);
    EXPECT_EQ(DatiProgetto.Led4, prima.Led4);
    // A failure that nothing has cleared ends the run at its first step.
    ErroreComunicazione = true;
    Clic(kVersi[0]);
    EXPECT_EQ(Detto(), std::vector<std::string>{Testo(Voce::ErroreDiComunicazione)});
    EXPECT_FALSE(vista.Aperta);
    EXPECT_TRUE(porta.Richieste().empty());
}

TEST_F(Corsa, CancelledQuestionChangesNothing) {
    for (const Verso& verso : kVersi) {
        macchina.Risposte = {Answer::Cancel};
        verso.Clic(vista);
        EXPECT_EQ(vista.Titolo, "");
        EXPECT_TRUE(finestra.Storia.empty());
        EXPECT_TRUE(porta.Richieste().empty());
        EXPECT_EQ(FaseComunicazione, 0);
    }
}

TEST_F(Corsa, NameThatTheLibraryLacksSendsTheCurveOfTheChannelBefore) {
    DatiProgetto.PressioneOlio = "gone";
    Clic(kVersi[0]);
    EXPECT_EQ(vista.Fine, Testo(Voce::ProgrammazioneStrumento) + " OK");
    EXPECT_EQ(Curva(1), Curva(0));
    EXPECT_EQ(PuntoY(1, 0), 1710);
    Clic(kVersi[1]);
    EXPECT_EQ(DatiProgetto.TemperaturaOlio, "NTC olio M10");
    EXPECT_EQ(DatiProgetto.PressioneOlio, "");
}

}  // namespace
}  // namespace lapvane
