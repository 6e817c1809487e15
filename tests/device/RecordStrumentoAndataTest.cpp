// The records to the simulated instrument and back, and what its faults do.
#include "device/RecordStrumento.h"

#include "device/RecordStrumentoProva.h"
#include "support/Cartelle.h"

namespace lapvane::record {
namespace {

/// Against the simulated instrument.
class ConLoStrumento : public Base {
 protected:
    ConLoStrumento() {
        finestra.Seriale = &porta;
        FaseComunicazione = 0;
        EXPECT_TRUE(LinkPronto());
        FaseComunicazione = 19;
    }
    void Guasto(const std::string& testo) {
        apparecchio.Difetti.Togli();
        apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto(testo));
    }
    /// How long a transfer took, in ms.
    std::int64_t Durata(const std::function<void()>& transfer) {
        const std::int64_t inizio = macchina.Orologio;
        transfer();
        EXPECT_EQ(FaseComunicazione, 19);
        return macchina.Orologio - inizio;
    }
    void Fallisce(const std::function<void()>& transfer, std::int64_t attesa,
                  std::size_t tentativi = 1) {
        macchina.Risposte = {Answer::Ok};
        macchina.Puntatori.clear();
        ErroreComunicazione = false;
        const std::size_t prima = porta.Richieste().size();
        const std::int64_t durata = Durata(transfer);
        EXPECT_GE(durata, attesa);
        EXPECT_LE(durata, attesa + 50);
        EXPECT_TRUE(ErroreComunicazione);
        EXPECT_EQ(porta.Richieste().size(), prima + tentativi);
        EXPECT_EQ(macchina.Puntatori, std::vector<Pointer>{Pointer::Normal});
        AttesoMessaggio(Testo(Voce::StrumentoNonRisponde));
    }
    void Riesce(const std::function<void()>& transfer) {
        ErroreComunicazione = true;
        EXPECT_GE(Durata(transfer), 500);
        EXPECT_FALSE(ErroreComunicazione);
    }

    Strumento apparecchio;
    SerialeStrumento porta{apparecchio, [this] { return macchina.GetTickCount(); },
                           [this](int ms) { macchina.Sleep(ms); }};
};

TEST_F(ConLoStrumento, WritesFailOnSilenceAndOnAnyOtherAcknowledgement) {
    for (const auto& [comando, invia] :
         std::vector<std::pair<const char*, void (*)()>>{{"18", InviaDatiSetup1},
                                                         {"28", InviaDatiSetup2},
                                                         {"22", InviaDatiSensori},
                                                         {"24", [] { InviaCurvaSensore(2); }},
                                                         {"20", InviaDatiAllarmi}}) {
        SCOPED_TRACE(comando);
        for (const char* guasto : {"drop:", "corrupt:3:", "cut:4:", "extra:1:"}) {
            SCOPED_TRACE(guasto);
            Guasto(std::string(guasto) + comando);
            Fallisce(invia, 10000);
            apparecchio.Difetti.Togli();
            Riesce(invia);
        }
        Guasto(std::string("delay:9900:") + comando);
        Riesce(invia);
    }
    porta.Sparisci();
    Fallisce(InviaDatiSensori, 0, 0);  // the port is closed
}

TEST_F(ConLoStrumento, ReadsFailOnSilenceAndShortRepliesAndKeepTheirTarget) {
    DatiProgetto.Lingua = 7;
    DatiProgetto.Settore1 = 8;
    DatiProgetto.NumAccRPM = 9;
    DatiProgetto.mskTO = 10;
    CurvaX.fill(11.0);
    CurvaY.fill(12.0);
    const auto intatto = [] {
        EXPECT_EQ(DatiProgetto.Lingua, 7);
        EXPECT_EQ(DatiProgetto.Settore1, 8);
        EXPECT_EQ(DatiProgetto.NumAccRPM, 9);
        EXPECT_EQ(DatiProgetto.mskTO, 10);
        EXPECT_EQ(CurvaX[0], 11.0);
        EXPECT_EQ(CurvaY[19], 12.0);
    };
    struct Lettura {
        std::string Comando;
        int Corta;  // one character short
        void (*Leggi)();
    };
    const std::vector<Lettura> letture = {{"19", 29, LeggiDatiSetup1},
                                          {"29", 15, LeggiDatiSetup2},
                                          {"23", 20, LeggiDatiSensori},
                                          {"25", 98, [] { LeggiCurvaSensore(2); }},
                                          {"21", 30, LeggiDatiAllarmi}};
    for (const Lettura& lettura : letture) {
        SCOPED_TRACE(lettura.Comando);
        for (const std::string& guasto :
             {"drop:" + lettura.Comando,
              "cut:" + std::to_string(lettura.Corta) + ":" + lettura.Comando,
              "delay:5100:" + lettura.Comando}) {
            SCOPED_TRACE(guasto);
            Guasto(guasto);
            Fallisce(lettura.Leggi, 5000);
            intatto();
            macchina.Sleep(1000);  // what is late arrives, and is in nobody's way
        }
    }
    // A long reply counts, and its tail does not reach the next exchange.
    apparecchio.Difetti.Togli();
    apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto("extra:7:*"));
    for (const Lettura& lettura : letture) Riesce(lettura.Leggi);
    EXPECT_EQ(DatiProgetto.Lingua, 0);
    EXPECT_EQ(DatiProgetto.Settore1, 1000);
    EXPECT_EQ(DatiProgetto.NumAccRPM, 1);
    EXPECT_EQ(DatiProgetto.mskTO, 1250);
    EXPECT_NE(CurvaX[1], 11.0);
}

TEST_F(ConLoStrumento, AWholeProjectComesBackAsFarAsItTravels) {
    const std::string viaggiano =
        "|Lingua|UMVel|UMTemp|UMPress|PaginaAbilitata2|PaginaAbilitata3|PaginaAbilitata4|"
        "PaginaAbilitata5|PaginaAbilitata6|PaginaAbilitata7|PaginaAbilitata8|PaginaAbilitata9|"
        "chkAbilRecLap|mskAbilRecVel|mskStopRecSecondi|TempoMsgGiro|TempoVisGiro|Settore1|"
        "Settore2|Settore3|Settore4|Settore5|NumAccRPM|ImpulsiRuota|DiametroRuota|LAPO|LAAL|"
        "AbilTO|AbilPO|AbilPB|AbilTA|AbilLB|AbilCambio|AbilSG|AbilSensoreLambda|AbilPT|"
        "ChannCambio|ChannSG|ChannSensoreLambda|ChannPT|chkTO|mskTO|chkPO|mskPO|chkPB|mskPB|"
        "chkTA|mskTA|chkLB|mskLB|chkTB|mskTB|Led0|Led1|Led2|Led3|Led4|LedGiallo|TipoLedGiallo|"
        "chkUscita|TipoUscita|";
    // Every field another value.
    const auto riempi = [](int seme) {
        int numero = seme;
        for (const DescrizioneCampo& campo : kCampiProgetto) {
            ++numero;
            const bool flag = std::holds_alternative<bool RecordProgetto::*>(campo.Campo);
            const int acceso = (seme % 2 == 0) != (numero % 3 == 0) ? 1 : 0;
            ImpostaCampo(campo.Nome, std::to_string(flag ? acceso : numero));
        }
    };
    for (const int seme : {20, 101}) {
        riempi(seme);
        // A threshold, a lamp, an output that is off has no value on the instrument.
        for (const auto& [flag, valore] :
             Coppie("chkTO=mskTO|chkPO=mskPO|chkPB=mskPB|chkTA=mskTA|chkLB=mskLB|chkTB=mskTB|"
                    "LedGiallo=TipoLedGiallo|chkUscita=TipoUscita")) {
            if (Campo(DatiProgetto, flag) == "0") ImpostaCampo(valore, "0");
        }
        const RecordProgetto partito = DatiProgetto;
        for (const auto invia :
             {InviaDatiSetup1, InviaDatiSetup2, InviaDatiSensori, InviaDatiAllarmi}) {
            Riesce(invia);
        }
        riempi(seme + 31);
        const RecordProgetto prima = DatiProgetto;
        for (const auto leggi :
             {LeggiDatiSetup1, LeggiDatiSetup2, LeggiDatiSensori, LeggiDatiAllarmi}) {
            Riesce(leggi);
        }
        for (const DescrizioneCampo& campo : kCampiProgetto) {
            // The input's type comes from the instrument, its flag goes off.
            const bool ingresso = campo.Nome == "TipoIngresso" || campo.Nome == "chkIngresso";
            const bool viaggia =
                viaggiano.find("|" + std::string(campo.Nome) + "|") != std::string::npos;
            EXPECT_EQ(Campo(DatiProgetto, campo.Nome),
                      ingresso ? "0" : Campo(viaggia ? partito : prima, campo.Nome))
                << campo.Nome;
        }
    }
}

TEST_F(ConLoStrumento, CurvesOfAllChannelsComeBackEachAsItWas) {
    for (std::int16_t canale = 0; canale < 9; ++canale) {
        for (std::size_t i = 0; i < 20; ++i) {
            CurvaX[i] = static_cast<double>(i) * 50.0 + canale;
            CurvaY[i] = -1000.0 * canale + static_cast<double>(i);
        }
        Riesce([canale] { InviaCurvaSensore(canale); });
    }
    for (std::int16_t canale = 0; canale < 9; ++canale) {
        CurvaX.fill(0.0);
        CurvaY.fill(0.0);
        Riesce([canale] { LeggiCurvaSensore(canale); });
        for (std::size_t i = 0; i < 20; ++i) {
            EXPECT_EQ(CurvaX[i], static_cast<double>(i) * 50.0 + canale);
            EXPECT_EQ(CurvaY[i], -1000.0 * canale + static_cast<double>(i));
        }
        EXPECT_EQ(CurvaX[20], 0.0);
    }
    // A channel that the instrument does not have.
    Fallisce([] { InviaCurvaSensore(9); }, 10000);
    Fallisce([] { LeggiCurvaSensore(9); }, 5000);
}

TEST_F(ConLoStrumento, AFreshInstrumentIsAConfiguredCarWithSensorsOfTheLibrary) {
    const std::filesystem::path dati = prova::CartellaDati();
    ASSERT_EQ(strumento::MontaSensori(dati / "sensors", apparecchio.Dati), 9);
    std::filesystem::copy(dati / "sensors", macchina.Cartella / "sensors");
    CaricaLibreriaSensori();
    const auto montati = Coppie(
        "NTC olio M10=10|Pressione 0-10 bar=1000|Pressione 0-7 bar=1000|NTC acqua M10=10|"
        "Serbatoio 60 litri=10|Cambio 6 marce=1|Lambda 0-5 V=100|Turbo -1 +3 bar=1000|"
        "Accelerometro 3 g=1000");
    for (std::int16_t canale = 0; canale < 9; ++canale) {
        const auto& [nome, fattore] = montati[static_cast<std::size_t>(canale)];
        const double divisore = std::stod(fattore);
        SCOPED_TRACE(nome);
        const auto sensore =
            std::find_if(LibreriaSensori.begin(), LibreriaSensori.end(),
                         [&nome = nome](const CSensore& s) { return s.Nome() == nome; });
        ASSERT_NE(sensore, LibreriaSensori.end());
        EXPECT_EQ(FattoreSensore(sensore->Tipo()), divisore);
        Riesce([canale] { LeggiCurvaSensore(canale); });
        for (int i = 0; i < 20; ++i) {
            // Exactly: by this a curve that was read finds its sensor again.
            EXPECT_EQ(CurvaX[static_cast<std::size_t>(i)], sensore->X(i));
            EXPECT_EQ(CurvaY[static_cast<std::size_t>(i)] / divisore, sensore->Y(i));
        }
    }
    EXPECT_EQ(FattoreSensore("pressione"), 0);

    for (const auto leggi :
         {LeggiDatiSetup1, LeggiDatiSetup2, LeggiDatiSensori, LeggiDatiAllarmi}) {
        Riesce(leggi);
    }
    EXPECT_EQ(DatiProgetto.mskStopRecSecondi, 30);
    EXPECT_EQ(DatiProgetto.DiametroRuota, 590);
    EXPECT_TRUE(DatiProgetto.AbilTO && DatiProgetto.AbilSG && DatiProgetto.AbilPT);
    EXPECT_EQ(DatiProgetto.mskTO, 1250);
    EXPECT_EQ(DatiProgetto.Led4, 11500);

    // A library without them: the instrument keeps its curves.
    const std::string prima = apparecchio.Dati.Curva(1);
    prova::Scrivi(macchina.Cartella / "sensors" / "Pressione 0-10 bar.sns",
                  "ZEVSensor\r\nPressione\r\nPressione 0-10 bar\r\n20\r\n1\r\n");
    std::filesystem::remove(macchina.Cartella / "sensors" / "NTC olio M10.sns");
    EXPECT_EQ(strumento::MontaSensori(macchina.Cartella / "sensors", apparecchio.Dati), 7);
    EXPECT_EQ(apparecchio.Dati.Curva(1), prima);
    EXPECT_EQ(strumento::MontaSensori(macchina.Cartella / "nowhere", apparecchio.Dati), 0);
}

}  // namespace
}  // namespace lapvane::record
