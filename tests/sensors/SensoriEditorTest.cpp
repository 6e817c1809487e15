#include "sensors/SensoriEditor.h"

#include <cmath>

#include "sensors/CSensore.h"
#include "sensors/Curve.h"
#include "sensors/SensoriEditorProva.h"
#include "support/EditorProva.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

using R = RecordProgetto;

class SensoriEditor : public ::testing::Test {
 protected:
    SensoriEditor() { MostraDatiSensori({}, controlli); }
    /// X is 10, 20, 30 ...; Y begins with `y` and rises by `passo`.
    static CSensore& Sensore(const char* tipo, const char* nome, double y, double passo = 0,
                             int punti = 20) {
        CSensore& sensore = LibreriaSensori.emplace_back();
        sensore.Tipo(tipo);
        sensore.Nome(nome);
        sensore.NumPunti(static_cast<std::int16_t>(punti));
        for (int i = 0; i < punti; ++i) {
            sensore.X(i, 10 * (i + 1));
            sensore.Y(i, y + passo * i);
        }
        return sensore;
    }
    void Spunta(std::size_t canale, bool accesa) {
        controlli.Spunta(kCanaliSensore[canale].chkAbil, accesa);
    }
    prova::PlatformProva macchina;
    prova::EditorProva controlli{"frmSensori"};
};

// No two values are the same; the flags, which have their own test in the records', alternate.
TEST_F(SensoriEditor, EveryFieldHasItsControl) {
    record::Progetto(
        "TemperaturaOlio=to|TCampTO=1|AbilTO=1|PressioneOlio=po|TCampPO=2|PressioneBenzina=pb|"
        "TCampPB=3|AbilPB=1|TemperaturaAcqua=ta|TCampTA=4|LivelloBenzina=lb|TCampLB=5|AbilLB=1|"
        "Cambio=c|TCampCambio=6|ChannCambio=10|SensoreLambda=sl|TCampSensoreLambda=7|"
        "AbilSensoreLambda=1|ChannSensoreLambda=11|PressioneTurbo=pt|TCampPT=8|ChannPT=12|"
        "SensoreG=sg|TCampSG=9|AbilSG=1|ChannSG=13|NumAccRPM=20|ImpulsiRuota=-21|"
        "DiametroRuota=30000|TCampRPM=23|TCampVV=24|LAPO=25|LAAL=26");
    MostraDatiSensori(DatiProgetto, controlli);
    EXPECT_EQ(controlli.Stato(),
              "cboAltro0=c|cboAltro0!=0|cboChannCambio=10|cboChannCambio!=0|cboChannPT=12|"
              "cboChannPT!=0|cboChannSG=13|cboChannSG!=1|cboChannSensoreLambda=11|"
              "cboChannSensoreLambda!=1|cboLAAL=26|cboLAPO=25|cboLivelloBenzina0=lb|"
              "cboLivelloBenzina0!=1|cboPressione0=po|cboPressione0!=0|cboPressione1=pb|"
              "cboPressione1!=1|cboPressioneTurbo=pt|cboPressioneTurbo!=0|cboSG=sg|cboSG!=1|"
              "cboSensoreLambda=sl|cboSensoreLambda!=1|cboTCampCambio=6|cboTCampCambio!=0|"
              "cboTCampLB=5|cboTCampLB!=1|cboTCampPB=3|cboTCampPB!=1|cboTCampPO=2|cboTCampPO!=0|"
              "cboTCampPT=8|cboTCampPT!=0|cboTCampRPM=23|cboTCampSG=9|cboTCampSG!=1|"
              "cboTCampSensoreLambda=7|cboTCampSensoreLambda!=1|cboTCampTA=4|cboTCampTA!=0|"
              "cboTCampTO=1|cboTCampTO!=1|cboTCampVV=24|cboTemperaturaAcqua0=ta|"
              "cboTemperaturaAcqua0!=0|cboTemperaturaOlio0=to|cboTemperaturaOlio0!=1|"
              "chkAbilCambio=0|chkAbilLB=1|chkAbilPB=1|chkAbilPO=0|chkAbilPT=0|chkAbilSG=1|"
              "chkAbilSensoreLambda=1|chkAbilTA=0|chkAbilTO=1|txtDiametroRuota=30000|"
              "txtImpulsiRuota=-21|txtNumAccRPM=20|");
    R salvato;
    SalvaDatiSensori(controlli, salvato);
    EXPECT_EQ(salvato.ChannSG, 0) << "the inputs come later";
    SalvaIngressiSensori(controlli, salvato);
    for (const auto& campo : kCampiProgetto) {
        EXPECT_EQ(record::Campo(salvato, campo.Nome), record::Campo(DatiProgetto, campo.Nome));
    }
    for (const auto& [nome, valore] :
         record::Coppie("txtNumAccRPM=12.5|txtImpulsiRuota= |txtDiametroRuota=13,5|cboLAPO=-1"))
        controlli.Testo(nome, valore);
    SalvaDatiSensori(controlli, salvato);
    EXPECT_EQ(salvato.NumAccRPM, 12) << "half to even";
    EXPECT_EQ(salvato.ImpulsiRuota, 0);
    EXPECT_EQ(salvato.DiametroRuota, 14);
    EXPECT_EQ(salvato.LAPO, 0);
    EXPECT_FALSE(LeggiNumero(kNumeriSensori[kNumAccRPM], " "));
    EXPECT_FALSE(LeggiNumero(kNumeriSensori[kDiametroRuota], "40000"));
}

TEST_F(SensoriEditor, MissingSensorsAreToldInTheirOrder) {
    for (std::size_t i = 0; i < 9; ++i) Spunta(i, true);
    std::vector<std::size_t> senza;
    while (const auto canale = CanaleSenzaNome(controlli)) {
        senza.push_back(*canale);
        controlli.Testo(kCanaliSensore[*canale].cboNome, "di nessun file");
        ASSERT_LE(senza.size(), 9u);
    }
    EXPECT_EQ(senza, (std::vector<std::size_t>{0, 1, 3, 2, 4, 7, 8, 5, 6}));
    controlli.Testo("cboSG", "");
    Spunta(kCanaleSG, false);
    EXPECT_FALSE(CanaleSenzaNome(controlli));
}

TEST_F(SensoriEditor, OnlyTurboAccelerationAndLambdaFightForAnInput) {
    const std::size_t quattro[] = {kCanaleSG, kCanalePT, kCanaleLambda, kCanaleCambio};
    for (int caso = 0; caso < 64; ++caso) {
        const std::size_t a = quattro[caso & 3], b = quattro[(caso >> 2) & 3];
        if ((caso & 3) >= ((caso >> 2) & 3)) continue;
        for (const std::size_t canale : quattro) {
            controlli.Indice(kCanaliSensore[canale].cboChann, static_cast<int>(10 + canale));
            Spunta(canale, canale == a || (canale == b && (caso & 16) != 0));
        }
        controlli.Indice(kCanaliSensore[a].cboChann, 0);
        controlli.Indice(kCanaliSensore[b].cboChann, (caso & 32) != 0 ? 0 : 1);
        const auto coppia = CanaliInConflitto(controlli);
        EXPECT_EQ(coppia.has_value(), (caso & 48) == 48 && b != kCanaleCambio) << caso;
        EXPECT_EQ(coppia.value_or(std::pair(a, b)), std::pair(a, b));
        EXPECT_EQ(CanaliInsieme(controlli).has_value(), (caso & 48) == 48) << caso;
    }
}

TEST_F(SensoriEditor, CurvesGoOutByTheirBoxAndTheAccelerationByTheTurbos) {
    Sensore("PressioneTurbo", "turbo", 0.5);
    Sensore("SensoreG", "g", 3.0);
    for (const auto& [nome, valore] : record::Coppie("cboPressioneTurbo=turbo|cboSG=g"))
        controlli.Testo(nome, valore);
    CurvaX.fill(7);
    CurvaY.fill(7);
    Spunta(kCanaleSG, true);
    PreparaCurva(8, controlli);
    EXPECT_EQ(CurvaX[19], 0.0) << "acceleration on, turbo off: zeros";
    EXPECT_EQ(CurvaY[0], 0.0);
    Spunta(kCanaleSG, false);
    Spunta(kCanalePT, true);
    PreparaCurva(8, controlli);
    EXPECT_EQ(CurvaX[19], 200.0);
    EXPECT_EQ(CurvaY[0], 3000.0) << "acceleration off, turbo on: the curve";
    PreparaCurva(7, controlli);
    EXPECT_EQ(CurvaY[0], 500.0);
    controlli.Testo("cboSG", "");
    PreparaCurva(8, controlli);
    EXPECT_EQ(CurvaY[0], 500.0) << "no name: the turbo's curve stands";
    // Every other channel by its own box.
    for (std::size_t acceso = 0; acceso < 8; ++acceso) {
        for (std::size_t i = 0; i < 8; ++i) Spunta(i, i == acceso);
        for (std::size_t i = 0; i < 8; ++i) {
            CurvaX.fill(7);
            controlli.Testo(kCanaliSensore[i].cboNome, "di nessun file");
            PreparaCurva(i, controlli);
            EXPECT_EQ(CurvaX[0], i == acceso ? 7.0 : 0.0) << acceso << i;
        }
    }
}

TEST_F(SensoriEditor, NamesComeFromTheirTypeAloneInTheLibrarysOrder) {
    Sensore("Pressione", "Zeta", 0.125);
    Sensore("PressioneTurbo", "turbo", 0.125);
    Sensore("Pressione", "alfa", 4.0);
    Sensore("Pressione", "Zeta", 4.0);
    EXPECT_EQ(NomiSensori(1), (std::vector<std::string>{"Zeta", "alfa", "Zeta"}));
    EXPECT_EQ(NomiSensori(2), NomiSensori(1));
    EXPECT_EQ(NomiSensori(7), std::vector<std::string>{"turbo"});
    const auto letta = [&](std::size_t canale, double y) {
        for (std::size_t i = 0; i < 20; ++i) CurvaX[i] = 10.0 * static_cast<double>(i + 1);
        CurvaY.fill(y);
        NominaCurva(canale, controlli);
        return controlli.Testo(kCanaliSensore[canale].cboNome);
    };
    EXPECT_EQ(letta(1, 125), "Zeta");
    EXPECT_EQ(letta(2, 4000), "alfa") << "the first of two equal curves";
    EXPECT_EQ(letta(7, 125), "turbo");
    EXPECT_EQ(letta(1, 126), "") << "a name that stood there goes";
    EXPECT_EQ(letta(0, 125), "") << "no sensor of that type";
}

TEST_F(SensoriEditor, CurvesAreScaledAndLeaveTheirTailUnlessTheyAreAFuelLevel) {
    CurvaX.fill(-7.0);
    std::string fattori;
    for (const char* tipo :
         {"TemperaturaOlio", "TemperaturaAcqua", "Pressione", "PressioneTurbo", "LivelloBenzina",
          "Altro", "SensoreG", "SensoreLambda", "Pressione "}) {
        Sensore(tipo, tipo, 0.5, 1);
        CaricaCurvaSensore(tipo);
        EXPECT_EQ(CurvaX[2], 30.0) << tipo;
        fattori += std::to_string(std::lround(CurvaY[2] / 2.5)) + " ";
    }
    EXPECT_EQ(fattori, "10 10 1000 1000 10 1 1000 100 0 ");
    Sensore("Pressione", "cinque", 0.5, 1, 5);
    Sensore("LivelloBenzina", "serbatoio", 0.5, 1, 3);
    Sensore("LivelloBenzina", "vuoto", 0, 0, 0);
    CaricaCurvaSensore("Altro");
    CaricaCurvaSensore("cinque");
    EXPECT_EQ(CurvaY[4], 4500.0);
    EXPECT_EQ(CurvaX[5], 60.0);
    EXPECT_EQ(CurvaY[5], 5.5);
    CaricaCurvaSensore("serbatoio");
    EXPECT_EQ(CurvaX[2], 30.0);
    for (const std::size_t i : {3u, 19u}) {
        EXPECT_EQ(CurvaX[i], 1024.0) << i;
        EXPECT_EQ(CurvaY[i], 25.0) << i;
    }
    CaricaCurvaSensore("no such name");
    EXPECT_EQ(CurvaY[2], 25.0);
    CaricaCurvaSensore("vuoto");
    EXPECT_EQ(CurvaX[0], 1024.0);
    EXPECT_EQ(CurvaY[0], 0.0);
    CurvaY.fill(3.0);
    AzzeraCurvaSensore();
    EXPECT_EQ(CurvaX[0] + CurvaX[19] + CurvaY[0] + CurvaY[19], 0.0);
    EXPECT_EQ(CurvaX[20], -7.0);
}

TEST_F(SensoriEditor, TheLastOfTwoSensorsOfOneNameIsSentAndTheFirstOfTwoEqualOnesFound) {
    Sensore("Altro", "doppio", 0.5, 1).X(0, 1.0);
    Sensore("Pressione", "doppio", 0.5, 1).X(0, 2.0);
    CaricaCurvaSensore("doppio");
    EXPECT_EQ(CurvaX[0], 2.0);
    LibreriaSensori.clear();
    Sensore("Altro", "altro tipo", 0.5, 1);
    Sensore("Pressione", "primo", 0.5, 1);
    Sensore("Pressione", "secondo", 0.5, 1);
    CaricaCurvaSensore("altro tipo");
    EXPECT_EQ(CercaNomeSensore("Pressione"), "primo");
    EXPECT_EQ(CercaNomeSensore("PressioneTurbo"), "");
    // One bit in the last point of either axis, and the element that does not count.
    LibreriaSensori[1].Y(19, std::nextafter(19.5, 20.0));
    LibreriaSensori[2].X(20, 99.0);
    EXPECT_EQ(CercaNomeSensore("Pressione"), "secondo");
    LibreriaSensori[2].X(0, 11.0);
    EXPECT_EQ(CercaNomeSensore("Pressione"), "");
}

}  // namespace
}  // namespace lapvane
