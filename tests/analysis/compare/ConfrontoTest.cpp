#include "analysis/compare/Confronto.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "analysis/compare/CsvConfronto.h"
#include "analysis/compare/FasceConfronto.h"
#include "analysis/compare/ScelteConfronto.h"
#include "analysis/compare/UsciteProva.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "shell/NumeroTesto.h"

namespace lapvane::prova {
namespace {

namespace fs = std::filesystem;

constexpr const char* kVelocita = "4 [Km/h]";

class ConfrontoProva : public ::testing::Test {
 protected:
    ConfrontoProva() {
        CaricaTestiVeri(1);
        MettiDueUscite(machine.Cartella);
    }
    fs::path File(const char* nome) const { return machine.Cartella / nome; }
    GiroScelto Lap(int numero, int log = 0) const {
        return {log, confronto.Log(log).CercaNumero(numero)};
    }
    /// The log as of a track whose metres are nine tenths as many.
    void Accorcia(const char* nome) const {
        const std::string intero = LeggiFile(File(nome), Lavoro::LeggereLog);
        LettoreRighe righe(intero);
        std::string corto(righe.Prossima());
        while (!righe.Fine()) {
            const std::string riga(righe.Prossima());
            const std::size_t prima = riga.find(';') + 1;
            const std::size_t dopo = riga.find(';', prima);
            corto += "\r\n" + riga.substr(0, prima) +
                     std::to_string(static_cast<int>(std::atof(riga.c_str() + prima) * 0.9)) +
                     riga.substr(dopo);
        }
        Scrivi(File(nome), corto + "\r\n");
    }

    PlatformProva machine;
    Confronto confronto;
};

TEST_F(ConfrontoProva, LapsAreChosenAndKeepTheirLetters) {
    EXPECT_THROW(confronto.Apri(File("domani.csv")), ErroreRuntime);
    EXPECT_EQ(confronto.NumLog(), 0);
    confronto.Apri(File("ieri.csv"));
    EXPECT_EQ(confronto.Lettera(Lap(12)), 'R');
    ASSERT_EQ(confronto.Accanto(), "A");
    for (int i = 0; i < 14; ++i) {
        const GiroScelto altro{0, i};
        if (altro == *confronto.Di('R') || altro == *confronto.Di('A')) continue;
        EXPECT_GE(confronto.Giro(altro).Centesimi, confronto.Giro(*confronto.Di('A')).Centesimi)
            << "the next best is ticked";
    }
    EXPECT_EQ(confronto.Apri(File("ieri.csv")), 0) << "open already";
    for (const int numero : {2, 3, 4, 5, 8}) EXPECT_TRUE(confronto.Spunta(Lap(numero), true));
    EXPECT_FALSE(confronto.Spunta(Lap(7), true)) << "six and no more";
    EXPECT_EQ(confronto.Lettera(Lap(4)), 'D');
    EXPECT_FALSE(confronto.Spunta(Lap(12), false));
    EXPECT_EQ(confronto.Lettera(Lap(12)), 'R') << "there is always one";
    confronto.Spunta(Lap(3), false);
    EXPECT_EQ(confronto.Lettera(Lap(4)), 'D') << "keeps its colour";
    confronto.Riferimento(Lap(4));
    EXPECT_EQ(confronto.Lettera(Lap(12)), 'D') << "they change places";
    confronto.Riferimento(Lap(7));
    EXPECT_EQ(confronto.Lettera(Lap(4)), 'C') << "the old one takes the free letter";

    EXPECT_EQ(confronto.Apri(File("oggi.csv")), 1);
    EXPECT_EQ(confronto.Accanto(), "ABCDEF") << "no room for the best of today";
    confronto.Spunta(Lap(5), false);
    confronto.Spunta(Lap(12, 1), true);
    const auto vecchi = confronto.ScelteDi(0);
    const auto nuovi = confronto.ScelteDi(1);
    confronto.Chiudi(0);
    EXPECT_EQ(confronto.Lettera(Lap(12)), 'R') << "the only lap left is the reference";
    EXPECT_EQ(confronto.Accanto(), "");
    EXPECT_EQ(confronto.Fuoco(), 0);
    Confronto domani;
    domani.Apri(File("ieri.csv"));
    domani.Ripristina(0, vecchi);
    domani.Apri(File("oggi.csv"));
    domani.Ripristina(1, nuovi);
    EXPECT_EQ(domani.ScelteDi(0), vecchi);
    EXPECT_EQ(domani.ScelteDi(1), nuovi);
    domani.Ripristina(1, {{'R', 5}});
    EXPECT_EQ(domani.ScelteDi(0), vecchi) << "a second log takes nobody's reference";
}

TEST_F(ConfrontoProva, PanesRunOverOneAxisToTheOfficialDifference) {
    confronto.Apri(File("ieri.csv"));
    confronto.Spunta(Lap(2), true);
    for (const bool distanza : {true, false}) {
        confronto.PerDistanza = distanza;
        const DatiQuadri dati = confronto.Quadri({kChiaveDistacco, kVelocita, "no [such]"});
        ASSERT_EQ(dati.Quadri.size(), 2u);
        EXPECT_NEAR(dati.Fine, distanza ? 3480.0 : 78.48, distanza ? 1.0 : 1e-9);
        const CurvaGiro& perso = dati.Quadri[0].Curve.back();
        EXPECT_EQ(perso.Lettera, confronto.Lettera(Lap(2)));
        EXPECT_EQ(perso.Y.front(), 0.0);
        EXPECT_NEAR(perso.Y.back(), 3.45, 1e-9) << "81.93 against 78.48";
        EXPECT_NEAR(perso.X.back(), dati.Fine, 1e-9);
        ASSERT_EQ(dati.Quadri[1].Curve.front().Lettera, 'R');
        const CurvaGiro& suo = dati.Quadri[1].Curve.back();
        EXPECT_NEAR(suo.X.back(), distanza ? dati.Fine : 81.93, 1e-9);
        EXPECT_TRUE(std::is_sorted(suo.X.begin(), suo.X.end()));
        // A second behind the line, on a row of the log: the value that stands there.
        const double inizio = confronto.Allineato(Lap(2))->Inizio;
        EXPECT_EQ(suo.Y[10], confronto.Log(0).Tabella().Valore(4, Piano::Dati,
                                                               static_cast<int>(inizio * 10) + 10));
        EXPECT_EQ(dati.Confini.size() + 1, confronto.Log(0).Settori().size());
    }
}

TEST_F(ConfrontoProva, LapsOfAnotherTrackAreLaidByTheirShareOfTheWay) {
    confronto.Apri(File("ieri.csv"));
    Accorcia("oggi.csv");
    confronto.Apri(File("oggi.csv"));
    const GiroScelto altro = Lap(12, 1);
    ASSERT_NE(confronto.Lettera(altro), 0);
    EXPECT_TRUE(confronto.TracciatiDiversi(Lap(12), altro));
    EXPECT_FALSE(confronto.TracciatiDiversi(Lap(12), Lap(2)));
    const CurvaGiro suo = confronto.Quadro(kVelocita).Curve.back();
    const CurvaGiro riferimento = confronto.Quadro(kVelocita).Curve.front();
    for (std::size_t i = 0; i < std::min(suo.X.size(), riferimento.X.size()); ++i) {
        ASSERT_NEAR(suo.X[i], riferimento.X[i], 8.0) << "the same motion, but for a row";
    }
    // The same metres under another name.
    Scrivi(File("altrove.ses"), "Prove\r\n\r\n\r\nRocca\r\n");
    for (const char* fine : {".csv", ".txt", ".tim"}) {
        fs::copy(File((std::string("ieri") + fine).c_str()),
                 File((std::string("altrove") + fine).c_str()));
    }
    confronto.Apri(File("altrove.csv"));
    EXPECT_TRUE(confronto.TracciatiDiversi(Lap(12), Lap(12, 2)));
}

TEST_F(ConfrontoProva, PartsAddUpAndTheWorstAreNamed) {
    confronto.Apri(File("ieri.csv"));
    confronto.Spunta(Lap(2), true);
    confronto.Parti(7);
    const TabellaParti tabella = confronto.Tabella();
    ASSERT_EQ(tabella.Righe.size(), 4u);
    const auto& primo = tabella.Righe[0].Parti;
    const auto& ultimo = tabella.Righe[2].Parti;
    std::vector<std::int32_t> ideale(7, 100000);
    for (int r = 0; r < 3; ++r) {
        const RigaParti& riga = tabella.Righe[static_cast<std::size_t>(r)];
        EXPECT_EQ(std::accumulate(riga.Parti.begin(), riga.Parti.end(), 0), riga.Tempo);
        EXPECT_EQ(riga.Distacco, riga.Tempo - 7848);
        for (std::size_t p = 0; p < 7; ++p) ideale[p] = std::min(ideale[p], riga.Parti[p]);
    }
    EXPECT_EQ(tabella.Righe[3].Parti, ideale);
    EXPECT_EQ(tabella.Righe[3].Tempo, std::accumulate(ideale.begin(), ideale.end(), 0));
    ASSERT_EQ(tabella.Peggiori.size(), 3u);
    std::vector<std::int32_t> perse;
    for (std::size_t p = 0; p < 7; ++p) perse.push_back(ultimo[p] - primo[p]);
    for (const int p : tabella.Peggiori) {
        const auto massimo = std::max_element(perse.begin(), perse.end());
        EXPECT_EQ(p, massimo - perse.begin());
        *massimo = -1000;
    }
    const std::int32_t sciolto = confronto.Continuo();
    EXPECT_GT(sciolto, 7000);
    confronto.Apri(File("oggi.csv"));
    while (confronto.AllineaUnAltro()) {
    }
    EXPECT_EQ(confronto.NumAllineati(0), 14);
    EXPECT_EQ(confronto.NumAllineati(1), 14);
    EXPECT_LE(confronto.Continuo(), sciolto) << "more laps follow one another now";
    EXPECT_LE(confronto.IdealeDiTutti(), tabella.Righe[3].Tempo);
    EXPECT_GT(confronto.IdealeDiTutti(), 7000);
    for (int numero = 2; numero < 13; ++numero) {
        const GiroAllineato* uno = confronto.Allineato(Lap(numero));
        const GiroAllineato* altro = confronto.Allineato(Lap(numero + 3));
        EXPECT_EQ(GiroContinuo({uno, altro}),
                  std::lround(std::min(uno->Durata, altro->Durata) * 100))
            << "nobody has driven from " << numero << " into the other one";
    }
    confronto.Riferimento(Lap(7));  // the slowest
    confronto.Spunta(Lap(12), true);
    confronto.Fuoco(confronto.Lettera(Lap(12)));
    confronto.Parti(25);
    EXPECT_EQ(confronto.Tabella().Righe[0].Parti.size(), 20u);
    confronto.Parti(1);
    EXPECT_EQ(confronto.Tabella().Righe[0].Parti.size(), 3u);
    EXPECT_TRUE(confronto.Tabella().Peggiori.empty());
}

TEST_F(ConfrontoProva, CursorsTellWhatLiesAtThemAndBetween) {
    confronto.Apri(File("ieri.csv"));
    confronto.Spunta(Lap(2), true);
    const double fine = confronto.Fine();
    const TabellaCursore fra =
        confronto.AlCursore({kVelocita, kChiaveDistacco}, fine * 0.75, fine * 0.25);
    EXPECT_NEAR(fra.Metri, fine * 0.75, 1e-6);
    ASSERT_EQ(fra.Titoli, std::vector<std::string>{"Km/h"});
    for (const RigaCursore& riga : fra.Righe) {
        // The way between both is the mean speed times the time.
        EXPECT_NEAR(riga.Canali[0].Media / 3.6 * riga.Tempo, riga.Metri, riga.Metri * 0.01);
        EXPECT_LT(riga.Canali[0].Minimo, riga.Canali[0].Media);
        for (const CurvaGiro& curva : confronto.Quadro(kVelocita).Curve) {
            if (curva.Lettera != riga.Lettera) continue;
            double massimo = 0.0;
            for (std::size_t i = 0; i < curva.X.size(); ++i) {
                const bool dentro = curva.X[i] >= fine * 0.25 && curva.X[i] <= fine * 0.75;
                if (dentro) massimo = std::max(massimo, curva.Y[i]);
            }
            EXPECT_EQ(riga.Canali[0].Massimo, massimo);
        }
        EXPECT_NEAR(riga.Tempo - fra.Righe[0].Tempo, riga.Perso, 1e-9);
    }
    EXPECT_EQ(fra.Righe[0].Canali[0].Differenza, 0.0);
    EXPECT_NEAR(fra.Righe.back().Canali[0].Qui - fra.Righe[0].Canali[0].Qui,
                fra.Righe.back().Canali[0].Differenza, 1e-9);
    const auto ritmo = confronto.RitmoPerCentoMetri(40);
    EXPECT_NEAR(std::accumulate(ritmo.begin(), ritmo.end(), 0.0) * fine / 40 / 100, 3.45, 1e-6);
}

TEST_F(ConfrontoProva, WhatCantBeAlignedIsShownAsFarAsItGoes) {
    fs::remove(File("oggi.tim"));
    confronto.Apri(File("oggi.csv"));
    ASSERT_EQ(confronto.Log(0).Giri().size(), 14u) << "the laps that the log marks";
    EXPECT_EQ(confronto.Esito({0, 3}), PercheNo::SenzaTempo);
    confronto.Spunta({0, 3}, true);
    const DatiQuadri dati = confronto.Quadri({kChiaveDistacco, kVelocita});
    EXPECT_TRUE(dati.Quadri[0].Curve.empty());
    ASSERT_EQ(dati.Quadri[1].Curve.size(), 2u);
    EXPECT_GT(dati.Fine, 3000.0);
    for (int i = 4; i < 9; ++i) confronto.Spunta({0, i}, true);
    for (const CurvaGiro& curva : confronto.Quadro(kVelocita).Curve) {
        EXPECT_TRUE(std::is_sorted(curva.X.begin(), curva.X.end()))
            << "the first rows count the metres of the lap before";
    }
    EXPECT_TRUE(confronto.Tabella().Righe[1].Parti.empty());
    EXPECT_TRUE(confronto.AlCursore({kVelocita}, 100.0, 200.0).Righe.empty());
    EXPECT_EQ(CsvConfronto(confronto, {kVelocita}, {}), "");
}

TEST_F(ConfrontoProva, CsvTakesItsSeparatorsAndNamesTheLogs) {
    confronto.Apri(File("ieri.csv"));
    // Today's log was converted in Italian.
    std::string oggi = LeggiFile(File("oggi.csv"), Lavoro::LeggereLog);
    oggi.replace(oggi.find("Speed"), 5, "Velocit\xe0");
    Scrivi(File("og;gi.csv"), oggi);
    for (const char* fine : {".txt", ".tim"}) {
        fs::copy(File((std::string("oggi") + fine).c_str()),
                 File((std::string("og;gi") + fine).c_str()));
    }
    confronto.Apri(File("og;gi.csv"));
    EXPECT_EQ(confronto.Canali().size(), 14u);
    EXPECT_EQ(confronto.Canali().back().Titolo(), "Lambda sensor [Lambda]");
    for (const char lettera : confronto.Accanto()) confronto.Spunta(*confronto.Di(lettera), false);
    confronto.Spunta(Lap(2, 1), true);
    const std::string testo = CsvConfronto(confronto, {kVelocita}, {',', ';', 100.0});
    LettoreRighe righe(testo);
    EXPECT_EQ(righe.Prossima(),
              "distance;\"delta 2 og;gi\";Speed [Km/h] 12 ieri;\"Velocit\xe0 [Km/h] 2 og;gi\"");
    const auto allInizio = confronto.AlCursore({kVelocita}, 0.0, std::nullopt).Righe;
    EXPECT_EQ(righe.Prossima(), "0,000;0,000;" +
                                    Formatta(allInizio[0].Canali[0].Qui, "0.000", ',') + ";" +
                                    Formatta(allInizio[1].Canali[0].Qui, "0.000", ','));
    EXPECT_TRUE(righe.Prossima().starts_with("100,000;"));
    std::string ultima;
    while (!righe.Fine()) ultima = righe.Prossima();
    EXPECT_NE(ultima.find(";3,450;"), std::string::npos) << ultima;
}

TEST(Fasce, ShareOutTheTimeInSight) {
    // Ends of a curve lie on the line and are no rows.
    QuadroConfronto canale;
    canale.Curve = {{'R', {0, 1, 2, 3, 4, 5}, {99, 0.3, 10, 19.9, 20, 99}},
                    {'A', {0, 1, 2, 5}, {99, -5, 5, 99}}};
    const FasceCanale fasce = Ripartisci(canale, 0, 5, 10);
    EXPECT_EQ(fasce.Da, -10.0);
    ASSERT_EQ(fasce.Numero, 4);
    EXPECT_EQ(fasce.Giri[0].Quote, (std::vector<double>{0, 0.25, 0.5, 0.25}));
    EXPECT_EQ(fasce.Giri[1].Quote, (std::vector<double>{0.5, 0.5, 0, 0}));
    EXPECT_EQ(Ripartisci(canale, 2, 3, 10).Numero, 2) << "10 and 19.9, and 5 of the other lap";
    EXPECT_EQ(Ripartisci(canale, 0, 5, 0.1).Numero, 0) << "251 bands";
    QuadroConfronto decimi;
    decimi.Curve = {{'R', {0, 1, 2}, {9, 0.3, 9}}};
    EXPECT_NEAR(Ripartisci(decimi, 0, 5, 0.1).Da, 0.3, 1e-12) << "a border belongs above";
    EXPECT_EQ(PassiFasce(canale, 0, 5), (std::array<double, 3>{5, 5, 2}));
    const auto punti = Accoppia(canale, canale, 2, 3);
    ASSERT_EQ(punti.size(), 2u);
    EXPECT_EQ(punti[0].X, (std::vector<double>{10, 19.9}));
}

TEST(Scelte, ComeBackAsTheyWereOrNotAtAll) {
    ScelteConfronto scelte;
    scelte.PerDistanza = false;
    scelte.Parti = 12;
    scelte.Quadri = {kChiaveDistacco, "A=%\r\nB [C]"};
    scelte.Mappa = "m";
    scelte.X = "x";
    scelte.Y = "y";
    scelte.Linea = true;
    scelte.Istogramma = "i";
    scelte.Log = {{u8"/gare/Jarama ñ 東京.csv", {{'R', 12}, {'B', 3}}},
                  {"/gare/b.csv", {{'A', 7}}}};
    const ScelteConfronto lette = LeggiScelte(ScriviScelte(scelte));
    EXPECT_EQ(ScriviScelte(lette), ScriviScelte(scelte));
    EXPECT_EQ(lette.Quadri, scelte.Quadri);
    ASSERT_EQ(lette.Log.size(), 2u);
    EXPECT_EQ(lette.Log[0].File, scelte.Log[0].File);
    EXPECT_EQ(lette.Log[0].Giri, scelte.Log[0].Giri);
    EXPECT_EQ(lette.Log[1].Giri, scelte.Log[1].Giri);
    const std::string vuote = ScriviScelte({});
    for (const char* guasto : {"", "lapvane-compare 2\nparts=5\n", "\x01\x02",
                               "lapvane-compare 1\nparts=99\nlaps=R1\naxis\nnew=1\n"}) {
        EXPECT_EQ(ScriviScelte(LeggiScelte(guasto)), vuote) << guasto;
    }
    EXPECT_EQ(LeggiScelte("lapvane-compare 1\nlog=a\nlaps=R1 X2 A B7x C3").Log[0].Giri,
              (std::vector<std::pair<char, int>>{{'R', 1}, {'C', 3}}));
}

}  // namespace
}  // namespace lapvane::prova
