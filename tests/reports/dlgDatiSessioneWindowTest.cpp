#include "reports/dlgDatiSessione.h"

#include <QApplication>

#include "reports/DisegnoTracciato.h"
#include "reports/ReportProva.h"
#include "support/WindowPdf.h"
#include "support/WindowPlatform.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace {

class DialogoSessione : public DialogoDiReport {
 protected:
    DialogoSessione() {
        for (const std::string nome : {"Valdoro", "Fontebruna", "Quadrato"}) {
            Scrivi(tracks / (nome + ".trk"), "0,0\r\n5,0\r\n10,0\r\n10,10\r\n0,10\r\n0,0\r\n");
        }
        Scrivi(tracks / "Valdoro.sec", "3480\r\n905\r\n842\r\n1016\r\n717\r\n");
        Scrivi(tracks / "Fontebruna.sec", "2760\r\n880\r\n1010\r\n870\r\n");
    }
    void Mostra(const char* circuito = "") {
        DatiSessione.Circuito = circuito;
        dialogo = std::make_unique<dlgDatiSessione>([this] { ++salvati; });
        dialogo->show();
        QApplication::setActiveWindow(dialogo.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialogo.get()));
    }
    template <class W>
    W* C(const std::string& nome) {
        return Controllo<W>(*dialogo, nome.c_str());
    }
    QLineEdit* X(int i) { return C<QLineEdit>("txtX" + std::to_string(i)); }
    DisegnoTracciato* Disegno() { return C<DisegnoTracciato>("Picture1"); }
    /// Title of the window and texts of the sectors that can be seen.
    std::string Divisione() {
        std::string testi = DaQt(dialogo->windowTitle()) + ":";
        for (int i = 0; i < 15; ++i) {
            EXPECT_EQ(X(i)->isVisible(), C<QLabel>("lblNumSetc" + std::to_string(i))->isVisible());
            if (X(i)->isVisible()) testi += " " + DaQt(X(i)->text());
        }
        return testi;
    }
    /// Goes to a box, types over its text and presses a key.
    void Batti(QWidget* casella, const char* testo, Qt::Key fine) {
        casella->setFocus();
        QTest::keySequence(casella, QKeySequence::SelectAll);
        QTest::keyClick(casella, Qt::Key_Delete);
        QTest::keyClicks(casella, QString::fromLatin1(testo));
        QTest::keyClick(casella, fine);
    }
    void Settori(int n) {
        C<QComboBox>("cboNumSettori")->setFocus();
        QTest::keyClick(C<QComboBox>("cboNumSettori"), Qt::Key_Home);
        while (--n > 0) QTest::keyClick(C<QComboBox>("cboNumSettori"), Qt::Key_Down);
    }
    void OKRifiutato(Voce testo) {
        macchina.Risposte = {Answer::Ok};
        C<QPushButton>("OKButton")->click();
        ASSERT_FALSE(macchina.Mostrati.empty());
        EXPECT_EQ(macchina.Mostrati.back().Testo, Testo(testo));
        EXPECT_TRUE(dialogo->isVisible());
    }

    std::filesystem::path tracks = macchina.Cartella / "tracks";
    std::unique_ptr<dlgDatiSessione> dialogo;
    int salvati = 0;
};

}  // namespace

TEST_F(DialogoSessione, ShowsTheSessionAndTheCircuitThatIsChosen) {
    DatiSessione = {" Gara ", "12/5", "10:30", "", "1", "", "Rossi\nBianchi", "note"};
    DatiProgetto.Veicolo = "Alfa 8";
    Mostra("Valdoro");
    EXPECT_EQ(DaQt(C<QLineEdit>("txtSessione")->text()), "Gara");
    EXPECT_EQ(DaQt(C<QLineEdit>("txtDataSessione")->text()), "12/5");
    EXPECT_EQ(DaQt(C<QLineEdit>("txtOraSessione")->text()), "10:30");
    EXPECT_EQ(DaQt(C<QLineEdit>("txtVeicolo")->text()), "Alfa 8");
    EXPECT_EQ(DaQt(C<QPlainTextEdit>("txtPiloti")->toPlainText()), "Rossi\nBianchi");
    EXPECT_EQ(DaQt(C<QLineEdit>("txtLunghezzaTracciato")->text()), "3480") << "of the division";
    EXPECT_EQ(DaQt(C<QComboBox>("cboNumSettori")->currentText()), "4");
    EXPECT_EQ(Divisione(), "Valdoro - 3480 m.: 905 842 1016 717");
    EXPECT_EQ(Disegno()->Tratti().size(), 4u);
    auto* const circuiti = C<QComboBox>("cboCircuito");
    EXPECT_EQ(circuiti->count(), 3);
    Batti(circuiti, "fonteBRUNA", Qt::Key_Return);
    EXPECT_TRUE(dialogo->isVisible()) << "Enter chose the circuit and did not press OK";
    EXPECT_EQ(Divisione(), "Fontebruna - 2760 m.: 880 1010 870");
    EXPECT_EQ(Disegno()->Tratti().size(), 3u);
    circuiti->setFocus();
    QTest::keyClick(circuiti, Qt::Key_Down);  // from the list
    EXPECT_EQ(Divisione(), "Quadrato - 2760 m.: ") << "no division yet";
    EXPECT_EQ(C<QComboBox>("cboNumSettori")->currentIndex(), -1);
    EXPECT_EQ(Disegno()->Punti().size(), 6u);
    EXPECT_TRUE(Disegno()->Tratti().empty());
    OKRifiutato(Voce::SommaSettori);
    Batti(circuiti, "../Valdoro", Qt::Key_Tab);
    EXPECT_TRUE(Disegno()->Punti().empty());
    IndiceLingua = 0;
    QEvent attiva(QEvent::WindowActivate);
    QApplication::sendEvent(dialogo.get(), &attiva);
    EXPECT_EQ(DaQt(C<QGroupBox>("fraSessione")->title()), "Dati della sessione");
    EXPECT_EQ(DaQt(C<QLabel>("lblMetri")->text()), "metri");
}

TEST_F(DialogoSessione, NewDivisionIsWrittenWithTheSession) {
    Mostra();
    EXPECT_EQ(Divisione(), "Session details: ") << "no circuit yet";
    OKRifiutato(Voce::SommaSettori);
    EXPECT_TRUE(C<QLineEdit>("txtLunghezzaTracciato")->hasFocus());
    Batti(C<QComboBox>("cboCircuito"), "Quadrato", Qt::Key_Return);
    Batti(C<QLineEdit>("txtLunghezzaTracciato"), "1000", Qt::Key_Return);
    EXPECT_TRUE(dialogo->isVisible());
    Settori(3);
    EXPECT_EQ(Divisione(), "Quadrato - 1000 m.: 333 333 334");
    Batti(X(0), "4.0,0", Qt::Key_Return);
    EXPECT_TRUE(dialogo->isVisible());
    EXPECT_EQ(Divisione(), "Quadrato - 1000 m.: 400 266 334");
    X(1)->setFocus();
    X(1)->setText(QStringLiteral("200"));
    QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(X(1), &menu);
    EXPECT_EQ(X(2)->text(), QStringLiteral("334")) << "a menu of the box is no way out of it";
    QTest::keyClick(X(1), Qt::Key_Tab);
    const std::string divisione = "Quadrato - 1000 m.: 400 200 400";
    EXPECT_EQ(Divisione(), divisione) << "the last takes the rest";
    EXPECT_TRUE(X(2)->isReadOnly());
    Batti(X(2), "5", Qt::Key_Return);
    for (const char* troppo : {"1000", "0", ""}) Batti(X(0), troppo, Qt::Key_Return);
    EXPECT_EQ(Divisione(), divisione) << "the last never reacts, nor what is no length";
    // Passing through the length levels nothing; only another length does.
    C<QLineEdit>("txtLunghezzaTracciato")->setFocus();
    X(0)->setFocus();
    EXPECT_EQ(Divisione(), divisione);

    C<QLineEdit>("txtSessione")->setText(QStringLiteral(" Gara"));
    C<QPlainTextEdit>("txtPiloti")->setPlainText(QStringLiteral("Rossi"));
    QTest::keyClick(C<QPlainTextEdit>("txtNote"), Qt::Key_A);
    QTest::keyClick(C<QPlainTextEdit>("txtNote"), Qt::Key_Return);
    X(0)->setFocus();
    X(0)->setText(QStringLiteral("300"));  // OK takes over what the cursor still is in
    C<QPushButton>("OKButton")->click();
    EXPECT_FALSE(dialogo->isVisible());
    EXPECT_EQ(Leggi(tracks / "Quadrato.sec"), "1000\r\n300\r\n300\r\n400\r\n");
    EXPECT_EQ(DatiSessione.Sessione, " Gara") << "untrimmed";
    EXPECT_EQ(DatiSessione.Piloti, "Rossi");
    EXPECT_EQ(DatiSessione.NoteSessione, "a\n");
    EXPECT_EQ(salvati, 1);
}

TEST_F(DialogoSessione, NegativeNeighbourIsRefusedAndCancelKeepsOnlyAChangedLength) {
    Mostra("Valdoro");
    Batti(X(0), "3000", Qt::Key_Return);
    EXPECT_EQ(Divisione(), "Valdoro - 3480 m.: 3000 -1253 1016 717");
    OKRifiutato(Voce::SettoreNegativo);
    EXPECT_TRUE(X(1)->hasFocus());
    Settori(15);
    EXPECT_EQ(X(14)->text(), QStringLiteral("232"));
    EXPECT_LE(dialogo->frameGeometry().height(), 728);
    C<QLineEdit>("txtSessione")->setText(QStringLiteral("dopo"));
    Settori(4);
    Batti(C<QLineEdit>("txtLunghezzaTracciato"), "4000", Qt::Key_Tab);
    EXPECT_EQ(Divisione(), "Valdoro - 4000 m.: 1000 1000 1000 1000");
    Batti(C<QLineEdit>("txtLunghezzaTracciato"), "77", Qt::Key_Escape);
    EXPECT_FALSE(dialogo->isVisible());
    EXPECT_EQ(DatiSessione.Sessione, "");
    EXPECT_EQ(DatiSessione.LunghTracciato, "4000");
    EXPECT_EQ(Leggi(tracks / "Valdoro.sec").substr(0, 9), "3480\r\n905");
    EXPECT_EQ(salvati, 0);
}

TEST(DisegnoTracciato, FitsAndColoursTheOutline) {
    DisegnoTracciato disegno;
    disegno.resize(400, 200);
    std::vector<PuntoTracciato> punti;
    for (int i = 0; i <= 20; ++i) punti.push_back({i, 0});
    for (int i = 0; i <= 20; ++i) punti.push_back({20 - i, 20});
    disegno.ImpostaPunti(punti);
    // Square: the height counts, and the picture stands in the middle.
    const auto posto = [&](int n) { return disegno.Posizione(n); };
    EXPECT_NEAR(posto(20).x() - posto(0).x(), posto(21).y() - posto(20).y(), 0.01);
    EXPECT_NEAR(posto(0).x() + posto(20).x(), 400.0, 1.0);
    const auto a = [&](const QPointF& p) {
        return disegno.grab().toImage().pixelColor(p.toPoint());
    };
    for (const bool scuro : {false, true}) {
        QPalette tavolozza;
        tavolozza.setColor(QPalette::Base, scuro ? Qt::black : Qt::white);
        tavolozza.setColor(QPalette::Text, scuro ? Qt::white : Qt::black);
        disegno.setPalette(tavolozza);
        disegno.Settori(std::vector<std::int32_t>{50, 50}, 100);
        EXPECT_EQ(a(posto(10)), QColor(0, 255, 0)) << "first sector green";
        EXPECT_EQ(a(posto(30)), QColor(Qt::red)) << "second sector red";
        EXPECT_EQ(a(posto(0)), QColor(Qt::yellow)) << "the start";
        EXPECT_EQ(a((posto(40) + posto(41)) / 2.0), QColor(Qt::red)) << "what no sector covers";
        EXPECT_EQ(a((posto(41) + posto(0)) / 2.0), QColor(Qt::red)) << "closing line";
    }
    // The number of the first sector stands beside the line, where it is free: outside.
    const auto numeri =
        TestiDisegnati(disegno.size(), [&](QPainter& penna) { disegno.render(&penna); });
    EXPECT_EQ(numeri.at(0).Testo, QStringLiteral("1"));
    EXPECT_LT(numeri[0].Y, posto(1).y() - 3);
    EXPECT_FALSE(Ridipinto(disegno, [&] { disegno.Marcatore(3); }).isEmpty());
    for (const auto& [n, atteso] : {std::pair{7, 7}, {41, 41}, {42, -1}, {-3, -1}, {30, 30}}) {
        disegno.Marcatore(n);
        EXPECT_EQ(disegno.PuntoMarcato(), atteso);
    }
    EXPECT_EQ(a(posto(30) + QPointF(0, -4.0)), QColor(Qt::red)) << "the marker";
    for (const auto& pochi : {std::vector<PuntoTracciato>{}, {{5, 5}}, {{5, 5}, {5, 5}}}) {
        disegno.ImpostaPunti(pochi);
        EXPECT_TRUE(disegno.Tratti().empty());
        EXPECT_EQ(disegno.PuntoMarcato(), -1);
        disegno.Settori(std::vector<std::int32_t>{10, 10}, 20);
        EXPECT_FALSE(disegno.grab().isNull()) << "nothing to draw is drawn without harm";
    }
}
