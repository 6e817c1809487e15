// What the editors of the instrument's settings have in common, exchange by exchange.
#include <QWheelEvent>

#include "sensors/EditorWindowProva.h"
#include "sensors/frmAllarmi.h"
#include "sensors/frmConfigurazione.h"
#include "sensors/frmSensori.h"
#include "shell/TabelleNomi.h"

namespace lapvane {
namespace {

struct Scambio {
    std::unique_ptr<frmEditor> (*Crea)();
    const char* Titolo;
    const char *Casella, *Lista;  // a number box, a list with a choice
    int Comando;                  // even: to the instrument
    Voce Domanda, Stato, Fine = Voce::Nessuna;
    const char* TitoloFine = "lapvane";

    bool Scrive() const { return Comando % 2 == 0; }
    const char* Pulsante() const { return Scrive() ? "cmdInviaDati" : "cmdLeggiDati"; }
};
template <class F>
std::unique_ptr<frmEditor> Crea() {
    return std::make_unique<F>();
}
const Scambio kScambi[] = {
    {Crea<frmConfigurazione>, "Setup", "txtSettoreCrono3", "cboUMPressione", 18,
     Voce::DomandaProgrammaImpostazioni, Voce::ProgrammazioneImpostazioni,
     Voce::ImpostazioniTrasmesse},
    {Crea<frmConfigurazione>, "Setup", "txtSettoreCrono3", "cboUMPressione", 19,
     Voce::DomandaLeggiImpostazioni, Voce::LetturaImpostazioni},
    {Crea<frmSensori>, "Sensor settings", "txtDiametroRuota", "cboLAAL", 22,
     Voce::DomandaProgrammaSensori, Voce::ProgrammazioneSensori, Voce::SensoriTrasmessi},
    {Crea<frmSensori>, "Sensor settings", "txtDiametroRuota", "cboTCampVV", 23,
     Voce::DomandaLeggiSensori, Voce::LetturaIngressiSensori, Voce::SensoriLetti,
     "Sensor settings"},
    {Crea<frmAllarmi>, "Alarm and signal settings", "txtLed3", "cboLedGiallo", 20,
     Voce::PassoAllarmi, Voce::ProgrammazioneAllarmi, Voce::AllarmiTrasmessi},
    {Crea<frmAllarmi>, "Alarm and signal settings", "txtLed3", "cboLedGiallo", 21,
     Voce::DomandaLeggiAllarmi, Voce::LetturaAllarmi},
};

class Editors : public prova::EditorWindowProva<frmEditor> {
 protected:
    Editors() {
        CaricaTabelleNomi();
        DatiProgetto.LedGiallo = true;
        macchina.Puntatori = {Pointer::Normal};
    }
    void Apri(const Scambio& scambio) {
        finestra = scambio.Crea();
        finestra->show();
        Attiva(*finestra);
        EXPECT_EQ(FormAttiva, finestra.get());
    }
    /// Its button, after this answer to the question; what was shown behind the question.
    V Esegui(const Scambio& scambio, Answer risposta, std::size_t altre = 0) {
        macchina.Risposte = {risposta};
        macchina.Risposte.insert(macchina.Risposte.end(), altre, Answer::Ok);
        Clic(scambio.Pulsante());
        macchina.DuranteEventi = nullptr;
        if (macchina.Mostrati.empty()) return {"no question"};
        const prova::Box domanda = macchina.Mostrati[0];
        EXPECT_EQ(domanda.Titolo, Dice(scambio.Domanda));
        EXPECT_EQ(domanda.Testo,
                  Dice(scambio.Scrive() ? Voce::StrumentoSovrascritto : Voce::DatiSostituiti) +
                      "\r\n" + Dice(Voce::Continuare));
        EXPECT_EQ(domanda.Pulsanti, Buttons::OkCancel);
        EXPECT_EQ(domanda.Icona, Icon::Question);
        V altri = Mostrati();
        altri.erase(altri.begin());
        return altri;
    }
    /// The program is as if no exchange had run.
    void Libero(bool aperta) {
        EXPECT_EQ(FaseComunicazione, 0);
        EXPECT_FALSE(collegamento().Abbandonato);
        EXPECT_EQ(principale.Testo(Pannello::Progresso), "");
        EXPECT_EQ(macchina.Puntatori.back(), Pointer::Normal);
        EXPECT_EQ(FormAttiva, aperta ? finestra.get() : nullptr);
        EXPECT_EQ(finestra->isVisible(), aperta);
        EXPECT_EQ(Acceso("OKButton") || !aperta, true);
    }
};

TEST_F(Editors, ExchangeWhatTheyShowAndLeaveTheProject) {
    for (const Scambio& scambio : kScambi) {
        Collega();
        Apri(scambio);
        EXPECT_EQ(DaQt(finestra->windowTitle()), scambio.Titolo);
        Scrivi(scambio.Casella, scambio.Scrive() ? "31" : "7");
        EXPECT_EQ(Esegui(scambio, Answer::Cancel), V{});
        EXPECT_EQ(porta.RichiesteDi(scambio.Comando), 0u);
        principale.Storia.clear();
        bool durante = false;
        macchina.DuranteEventi = [&] {
            if (FaseComunicazione == 0) return;
            durante = true;
            EXPECT_EQ(FaseComunicazione, scambio.Comando);
            EXPECT_EQ(macchina.Puntatori.back(), Pointer::Busy);
            EXPECT_TRUE(finestra->hasFocus()) << "a key would reach Cancel";
            // On a small screen the window covers the status bar.
            EXPECT_EQ(Scritta("lblProgresso"), principale.Testo(Pannello::Progresso));
            for (const char* chi : {"OKButton", "cmdInviaDati", "cmdLeggiDati", scambio.Casella}) {
                EXPECT_FALSE(Acceso(chi)) << chi;
            }
        };
        const bool chiude = scambio.Fine != Voce::Nessuna;
        macchina.AlBox = [&] {
            if (macchina.Mostrati.size() < 2) return;
            EXPECT_EQ(macchina.Mostrati[1].Titolo, scambio.TitoloFine);
            EXPECT_EQ(macchina.Mostrati[1].Icona, Icon::Information);
        };
        EXPECT_EQ(Esegui(scambio, Answer::Ok, chiude), chiude ? V{Dice(scambio.Fine)} : V{});
        macchina.AlBox = nullptr;
        EXPECT_TRUE(durante);
        EXPECT_EQ(principale.Storia.front(), "3:" + Dice(scambio.Stato));
        Libero(true);
        EXPECT_TRUE(C<QWidget>(scambio.Pulsante())->hasFocus());
        EXPECT_EQ(Testo(scambio.Casella), "31") << "what the one has written the other reads";
    }
    EXPECT_EQ(DatiProgetto.Settore4 + DatiProgetto.Led3, 0);
    EXPECT_FALSE(ProgettoModificato);
}

TEST_F(Editors, ClosedInTheMiddleTheyFreeThePortAndAPollInsideWaits) {
    for (const Scambio& scambio : kScambi) {
        Collega();
        Apri(scambio);
        const std::size_t prima = porta.Richieste().size();
        macchina.DuranteEventi = [&] {
            if (FaseComunicazione == 0 || !finestra->isVisible()) return;
            QTest::mouseClick(C<QPushButton>("CancelButton"), Qt::LeftButton);
            const std::size_t alla = porta.Richieste().size();
            tmrComm_Timer();  // no poll inside the wait that has not returned yet
            EXPECT_EQ(porta.Richieste().size(), alla);
        };
        // The sensors, of many parts, say that they broke off.
        const bool sensori = scambio.Comando >= 22;
        const Voce dice =
            scambio.Scrive() ? Voce::ProgrammazioneInterrotta : Voce::LetturaInterrotta;
        EXPECT_EQ(Esegui(scambio, Answer::Ok, sensori), sensori ? V{Dice(dice)} : V{});
        EXPECT_LE(porta.Richieste().size(), prima + 1) << scambio.Comando;
        Libero(false);
    }
}

TEST_F(Editors, AFailedExchangeIsNeverReportedAsDone) {
    const std::string muto = Dice(Voce::StrumentoNonRisponde);
    for (const Scambio& scambio : kScambi) {
        const bool dice = scambio.Fine != Voce::Nessuna;
        Collega();
        Apri(scambio);
        Guasta("drop:" + std::to_string(scambio.Comando));
        macchina.DuranteEventi = [&] { StrumentoPresente &= FaseComunicazione == 0; };
        macchina.BoxLiberi = true;
        const V mostrati = Esegui(scambio, Answer::Ok);
        EXPECT_EQ(mostrati.front(), muto);
        EXPECT_EQ(mostrati.back(), dice ? Dice(Voce::ErroreDiComunicazione) : muto);
        Guasta("");
        Libero(true);
        EXPECT_EQ(Acceso("cmdInviaDati"), StrumentoPresente) << "gone meanwhile";
        // The cable is out: nothing is sent that nobody could answer.
        finestra->AbilitaStrumento(true);
        porta.Sparisci();
        const std::size_t prima = porta.RichiesteDi(scambio.Comando);
        const std::int64_t dormito = macchina.Dormito;
        EXPECT_EQ(Esegui(scambio, Answer::Ok), dice ? V{Dice(Voce::ErroreDiComunicazione)} : V{});
        EXPECT_TRUE(ErroreComunicazione);
        EXPECT_EQ(porta.RichiesteDi(scambio.Comando), prima);
        EXPECT_EQ(macchina.Dormito, dormito) << "for a second record";
        Libero(true);
        porta.Riappari();
        macchina.BoxLiberi = false;
    }
}

TEST_F(Editors, ButtonsFollowTheInstrumentAndWaitForThePoll) {
    for (const Scambio& scambio : kScambi) {
        StrumentoPresente = false;
        Apri(scambio);
        EXPECT_FALSE(Acceso(scambio.Pulsante()));
        for (const bool presente : {false, true, false, true}) {
            presente ? porta.Riappari() : porta.Sparisci();
            tmrComm_Timer();
            EXPECT_EQ(Acceso(scambio.Pulsante()), presente) << scambio.Comando;
        }
        principale.PollAttivo = true;
        Clic(scambio.Pulsante());
        Clic(scambio.Pulsante());
        EXPECT_TRUE(macchina.Mostrati.empty()) << "a handler ran inside the wait";
        macchina.Risposte = {Answer::Cancel};
        principale.FinePoll();
        EXPECT_EQ(Mostrati().size(), 1u) << "the second click asked for the same";
        principale.PollAttivo = true;
        Clic(scambio.Pulsante());
        finestra->close();
        principale.FinePoll();
        EXPECT_EQ(Mostrati(), V{}) << "the window that asked is gone";
        Apri(scambio);
        EXPECT_TRUE(Acceso(scambio.Pulsante())) << "there when it opens";
        EXPECT_EQ(DaQt(C<QPushButton>(scambio.Pulsante())->text().remove(QLatin1Char('&'))),
                  scambio.Scrive() ? "Program instrument" : "Read instrument");
        finestra.reset();  // without being closed
        EXPECT_EQ(FormAttiva, nullptr);
    }
}

TEST_F(Editors, OKStoresCancelDoesNotAndAWheelChoosesNothing) {
    for (const Scambio& scambio : kScambi) {
        const RecordProgetto prima = DatiProgetto;
        for (const char* uscita : {"Esc", "CancelButton", "OKButton"}) {
            ProgettoModificato = false;
            prova::CaricaTestiVeri(uscita[0] == 'E' ? 0 : 1);
            Apri(scambio);
            SchermoIntero();
            auto* lista = C<QComboBox>(scambio.Lista);
            const int scelta = lista->currentIndex();
            QWheelEvent rotella(QPointF(9, 9), lista->mapToGlobal(QPointF(9, 9)), {}, {0, -120}, {},
                                {}, Qt::NoScrollPhase, false);
            QApplication::sendEvent(lista, &rotella);
            EXPECT_EQ(lista->currentIndex(), scelta) << scambio.Lista;
            EXPECT_NE(Testo(scambio.Casella), "77");
            Scrivi(scambio.Casella, "77");
            uscita[0] == 'E' ? Tasto(Qt::Key_Escape) : Clic(uscita);
            Libero(false);
            EXPECT_EQ(ProgettoModificato, uscita[0] == 'O') << scambio.Titolo << uscita;
        }
        Apri(scambio);
        EXPECT_EQ(Testo(scambio.Casella), "77");
        DatiProgetto = prima;
    }
}

}  // namespace
}  // namespace lapvane
