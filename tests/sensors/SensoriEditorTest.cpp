#include "sensors/SensoriEditor.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "sensors/CSensore.h"
#include "sensors/Curve.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

using R = RecordProgetto;

/// Controls that remember what they were told.
class ControlliProva : public ControlliEditor {
 public:
    std::string Testo(std::string_view c) const override {
        const auto trovato = Testi.find(std::string(c));
        return trovato == Testi.end() ? std::string() : trovato->second;
    }
    void Testo(std::string_view c, const std::string& testo) override {
        Testi[std::string(c)] = testo;
    }
    int Indice(std::string_view c) const override {
        const auto trovato = Indici.find(std::string(c));
        return trovato == Indici.end() ? -1 : trovato->second;
    }
    void Indice(std::string_view c, int indice) override {
        Indici[std::string(c)] = indice;
        Testi[std::string(c)] = "AN " + std::to_string(indice + 1);
    }
    bool Spunta(std::string_view c) const override { return Accese.contains(std::string(c)); }
    void Spunta(std::string_view c, bool accesa) override {
        if (accesa) {
            Accese.insert(std::string(c));
        } else {
            Accese.erase(std::string(c));
        }
    }
    void Abilita(std::string_view c, bool acceso) override { Abilitati[std::string(c)] = acceso; }

    std::map<std::string, std::string> Testi;
    std::map<std::string, int> Indici;
    std::set<std::string> Accese;
    std::map<std::string, bool> Abilitati;
};

class SensoriEditor : public ::testing::Test {
 protected:
    static void Sensore(const char* tipo, const char* nome, double y) {
        CSensore sensore;
        sensore.Tipo(tipo);
        sensore.Nome(nome);
        sensore.NumPunti(20);
        for (int i = 0; i < 20; ++i) {
            sensore.X(i, 10 * i);
            sensore.Y(i, y);
        }
        LibreriaSensori.push_back(sensore);
    }
    prova::PlatformProva macchina;
    ControlliProva controlli;
};

// Which control stands for which field, and what a channel that is off looks like.
TEST_F(SensoriEditor, EveryFieldHasItsControl) {
    struct Canale {
        const char *Nome, *TCamp, *Abil, *Chann;
        std::string R::*N;
        std::string R::*T;
        bool R::*A;
        std::int16_t R::*C;
    };
    const Canale canali[] = {
        {"cboTemperaturaOlio0", "cboTCampTO", "chkAbilTO", nullptr, &R::TemperaturaOlio,
         &R::TCampTO, &R::AbilTO, nullptr},
        {"cboPressione0", "cboTCampPO", "chkAbilPO", nullptr, &R::PressioneOlio, &R::TCampPO,
         &R::AbilPO, nullptr},
        {"cboPressione1", "cboTCampPB", "chkAbilPB", nullptr, &R::PressioneBenzina, &R::TCampPB,
         &R::AbilPB, nullptr},
        {"cboTemperaturaAcqua0", "cboTCampTA", "chkAbilTA", nullptr, &R::TemperaturaAcqua,
         &R::TCampTA, &R::AbilTA, nullptr},
        {"cboLivelloBenzina0", "cboTCampLB", "chkAbilLB", nullptr, &R::LivelloBenzina, &R::TCampLB,
         &R::AbilLB, nullptr},
        {"cboAltro0", "cboTCampCambio", "chkAbilCambio", "cboChannCambio", &R::Cambio,
         &R::TCampCambio, &R::AbilCambio, &R::ChannCambio},
        {"cboSensoreLambda", "cboTCampSensoreLambda", "chkAbilSensoreLambda",
         "cboChannSensoreLambda", &R::SensoreLambda, &R::TCampSensoreLambda, &R::AbilSensoreLambda,
         &R::ChannSensoreLambda},
        {"cboPressioneTurbo", "cboTCampPT", "chkAbilPT", "cboChannPT", &R::PressioneTurbo,
         &R::TCampPT, &R::AbilPT, &R::ChannPT},
        {"cboSG", "cboTCampSG", "chkAbilSG", "cboChannSG", &R::SensoreG, &R::TCampSG, &R::AbilSG,
         &R::ChannSG},
    };
    // One channel at a time is on, so that no other can stand in for it.
    for (const Canale& c : canali) {
        controlli = {};
        R mostrato;
        mostrato.*c.N = "nome";
        mostrato.*c.T = "10 Hz";
        mostrato.*c.A = true;
        if (c.C != nullptr) mostrato.*c.C = 5;
        MostraDatiSensori(mostrato, controlli);
        EXPECT_EQ(controlli.Testo(c.Nome), "nome");
        EXPECT_EQ(controlli.Testo(c.TCamp), "10 Hz");
        EXPECT_EQ(controlli.Accese, std::set<std::string>{c.Abil});
        std::set<std::string> accesi{c.Nome, c.TCamp};
        if (c.C != nullptr) {
            EXPECT_EQ(controlli.Indice(c.Chann), 5);
            accesi.insert(c.Chann);
        }
        std::set<std::string> abilitati;
        for (const auto& [nome, acceso] : controlli.Abilitati) {
            if (acceso) abilitati.insert(nome);
        }
        EXPECT_EQ(abilitati, accesi);
        EXPECT_EQ(controlli.Abilitati.size(), 22u);

        R salvato;
        SalvaDatiSensori(controlli, salvato);
        EXPECT_EQ(salvato.*c.N, "nome");
        EXPECT_EQ(salvato.*c.T, "10 Hz");
        EXPECT_TRUE(salvato.*c.A);
        if (c.C == nullptr) continue;
        EXPECT_EQ(salvato.*c.C, 0) << "the inputs come later";
        SalvaIngressiSensori(controlli, salvato);
        EXPECT_EQ(salvato.*c.C, 5);
    }
    R altri;
    altri.NumAccRPM = 2;
    altri.ImpulsiRuota = -3;
    altri.DiametroRuota = 30000;
    altri.TCampRPM = "20 Hz";
    altri.TCampVV = "50 Hz";
    altri.LAPO = 1;
    altri.LAAL = 2;
    MostraDatiSensori(altri, controlli);
    EXPECT_EQ(controlli.Testo("txtNumAccRPM"), "2");
    EXPECT_EQ(controlli.Testo("txtImpulsiRuota"), "-3");
    EXPECT_EQ(controlli.Testo("txtDiametroRuota"), "30000");
    EXPECT_EQ(controlli.Testo("cboTCampRPM"), "20 Hz");
    EXPECT_EQ(controlli.Testo("cboTCampVV"), "50 Hz");
    EXPECT_EQ(controlli.Indice("cboLAPO"), 1);
    EXPECT_EQ(controlli.Indice("cboLAAL"), 2);
    controlli.Testo("txtNumAccRPM", "12.5");
    controlli.Testo("txtImpulsiRuota", " ");
    controlli.Testo("txtDiametroRuota", "13,5");
    controlli.Indice("cboLAPO", -1);
    SalvaDatiSensori(controlli, altri);
    EXPECT_EQ(altri.NumAccRPM, 12) << "half to even";
    EXPECT_EQ(altri.ImpulsiRuota, 0);
    EXPECT_EQ(altri.DiametroRuota, 14);
    EXPECT_EQ(altri.LAPO, 0);
    EXPECT_EQ(altri.LAAL, 2);
    EXPECT_FALSE(LeggiNumero(kNumeriSensori[kNumAccRPM], " "));
    EXPECT_FALSE(LeggiNumero(kNumeriSensori[kDiametroRuota], "40000"));
}

TEST_F(SensoriEditor, MissingSensorsAreToldInTheirOrder) {
    for (const CanaleSensore& canale : kCanaliSensore) controlli.Spunta(canale.chkAbil, true);
    std::vector<Voce> testi;
    while (const auto canale = CanaleSenzaNome(controlli)) {
        testi.push_back(kCanaliSensore[*canale].TestoManca);
        controlli.Testo(kCanaliSensore[*canale].cboNome, "di nessun file");
        ASSERT_LE(testi.size(), 9u);
    }
    EXPECT_EQ(testi,
              (std::vector<Voce>{Voce::IncompletoTemperaturaOlio, Voce::IncompletoPressioneOlio,
                                 Voce::IncompletoTemperaturaAcqua, Voce::IncompletoPressioneBenzina,
                                 Voce::IncompletoLivelloBenzina, Voce::IncompletoPressioneTurbo,
                                 Voce::IncompletoSensoreG, Voce::IncompletoMarcia,
                                 Voce::IncompletoLambda}));
    controlli.Testo("cboSG", "");
    controlli.Spunta("chkAbilSG", false);
    EXPECT_FALSE(CanaleSenzaNome(controlli));
}

TEST_F(SensoriEditor, OnlyTurboAccelerationAndLambdaFightForAnInput) {
    const char* const abil[] = {"chkAbilSG", "chkAbilPT", "chkAbilSensoreLambda", "chkAbilCambio"};
    const char* const chann[] = {"cboChannSG", "cboChannPT", "cboChannSensoreLambda",
                                 "cboChannCambio"};
    for (int a = 0; a < 4; ++a) {
        for (int b = a + 1; b < 4; ++b) {
            for (const bool accesi : {true, false}) {
                for (const bool uguali : {true, false}) {
                    controlli = {};
                    for (int i = 0; i < 4; ++i) controlli.Indice(chann[i], 10 + i);
                    controlli.Indice(chann[a], 0);
                    controlli.Indice(chann[b], uguali ? 0 : 1);
                    controlli.Spunta(abil[a], true);
                    controlli.Spunta(abil[b], accesi);
                    const auto coppia = CanaliInConflitto(controlli);
                    EXPECT_EQ(coppia.has_value(), accesi && uguali && b < 3)
                        << chann[a] << " " << chann[b] << accesi << uguali;
                    if (!coppia) continue;
                    EXPECT_EQ(kCanaliSensore[coppia->first].cboChann, chann[a]);
                    EXPECT_EQ(kCanaliSensore[coppia->second].cboChann, chann[b]);
                }
            }
        }
    }
}

TEST_F(SensoriEditor, CurvesGoOutByTheirBoxAndTheAccelerationByTheTurbos) {
    Sensore("PressioneTurbo", "turbo", 0.5);
    Sensore("SensoreG", "g", 3.0);
    controlli.Testo("cboPressioneTurbo", "turbo");
    controlli.Testo("cboSG", "g");
    CurvaX.fill(7);
    CurvaY.fill(7);

    controlli.Spunta("chkAbilSG", true);
    PreparaCurva(8, controlli);
    EXPECT_EQ(CurvaX[19], 0.0) << "acceleration on, turbo off: zeros";
    EXPECT_EQ(CurvaY[0], 0.0);
    controlli.Spunta("chkAbilSG", false);
    controlli.Spunta("chkAbilPT", true);
    PreparaCurva(8, controlli);
    EXPECT_EQ(CurvaX[19], 190.0);
    EXPECT_EQ(CurvaY[0], 3000.0) << "acceleration off, turbo on: the curve";
    PreparaCurva(7, controlli);
    EXPECT_EQ(CurvaY[0], 500.0);
    controlli.Testo("cboSG", "");
    PreparaCurva(8, controlli);
    EXPECT_EQ(CurvaY[0], 500.0) << "no name: the turbo's curve stands";

    // Every other channel by its own box.
    for (std::size_t i = 0; i < 8; ++i) {
        controlli.Accese = {std::string(kCanaliSensore[i].chkAbil)};
        for (std::size_t altro = 0; altro < 8; ++altro) {
            CurvaX.fill(7);
            controlli.Testo(kCanaliSensore[altro].cboNome, "di nessun file");
            PreparaCurva(altro, controlli);
            EXPECT_EQ(CurvaX[0], altro == i ? 7.0 : 0.0) << i << altro;
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
    EXPECT_TRUE(NomiSensori(6).empty());

    const auto letta = [&](std::size_t canale, double y) {
        for (std::size_t i = 0; i < 20; ++i) {
            CurvaX[i] = 10.0 * static_cast<double>(i);
            CurvaY[i] = y;
        }
        NominaCurva(canale, controlli);
        return controlli.Testo(kCanaliSensore[canale].cboNome);
    };
    EXPECT_EQ(letta(1, 125), "Zeta");
    EXPECT_EQ(letta(2, 4000), "alfa") << "the first of two equal curves";
    EXPECT_EQ(letta(7, 125), "turbo");
    EXPECT_EQ(letta(1, 126), "") << "a name that stood there goes";
    EXPECT_EQ(letta(0, 125), "") << "no sensor of that type";
}

}  // namespace
}  // namespace lapvane
