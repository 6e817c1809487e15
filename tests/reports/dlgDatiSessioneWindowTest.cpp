#include "reports/dlgDatiSessione.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <memory>

#include "analysis/AnalisiProva.h"
#include "platform/ErroreRuntime.h"
#include "platform/Testo1252.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "reports/DisegnoTracciato.h"
#include "shell/LoadStrings.h"
#include "support/Cartelle.h"
#include "support/WindowPlatform.h"

using namespace lapvane;
using namespace lapvane::prova;

namespace fs = std::filesystem;

namespace {

class DialogoSessione : public AnalisiProva {
 protected:
    DialogoSessione() {
        const fs::path delivered = CartellaDati() / "tracks";
        fs::copy(delivered, tracks);
        // A square of 41 points without a division.
        std::string quadrato;
        for (int i = 0; i < 10; ++i) quadrato += std::to_string(i) + ",0\r\n";
        for (int i = 0; i < 10; ++i) quadrato += "10," + std::to_string(i) + "\r\n";
        for (int i = 0; i < 10; ++i) quadrato += std::to_string(10 - i) + ",10\r\n";
        for (int i = 0; i < 11; ++i) quadrato += "0," + std::to_string(10 - i) + "\r\n";
        Scrivi(tracks / "Quadrato.trk", quadrato);
        EXPECT_TRUE(Apri(Log()));
    }
    static LogProva Log() {
        LogProva log;
        return log.Tratto(1, 3).Tratto(2, 11).Tratto(3, 3);
    }
    void Mostra() {
        dialogo = std::make_unique<dlgDatiSessione>([this] { analisi.SalvaDatiSessione(); });
        dialogo->show();
        QApplication::setActiveWindow(dialogo.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialogo.get()));
    }
    template <class W>
    W* C(const char* nome, int i = -1) {
        return Controllo<W>(*dialogo, (nome + (i < 0 ? std::string() : std::to_string(i))).c_str());
    }
    QLineEdit* X(int i) { return C<QLineEdit>("txtX", i); }
    /// Texts of the boxes that can be seen.
    std::vector<std::string> Caselle() {
        std::vector<std::string> testi;
        for (int i = 0; i < 15; ++i) {
            EXPECT_EQ(X(i)->isVisible(), C<QLabel>("lblNumSetc", i)->isVisible()) << i;
            if (X(i)->isVisible()) testi.push_back(DaQt(X(i)->text()));
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
        auto* lista = C<QComboBox>("cboNumSettori");
        lista->setFocus();
        QTest::keyClicks(lista, QString::number(n));
    }
    void OK() { QTest::mouseClick(C<QPushButton>("OKButton"), Qt::LeftButton); }
    void OKRifiutato(Voce testo) {
        macchina.Risposte = {Answer::Ok};
        OK();
        ASSERT_FALSE(macchina.Mostrati.empty());
        EXPECT_EQ(macchina.Mostrati.back().Testo, Testo(testo));
        EXPECT_EQ(macchina.Mostrati.back().Pulsanti, Buttons::Ok);
        EXPECT_TRUE(dialogo->isVisible());
        macchina.Mostrati.clear();
    }

    fs::path tracks = macchina.Cartella / "tracks";
    std::unique_ptr<dlgDatiSessione> dialogo;
};

using V = std::vector<std::string>;

}  // namespace

TEST_F(DialogoSessione, ShowsTheSessionAndItsCircuit) {
    DatiSessione = {" Gara ", "12/5", "10:30", "Valdoro", "1", "", "Rossi\nBianchi", "note"};
    DatiProgetto.Veicolo = "Alfa 8";
    Mostra();
    EXPECT_EQ(DaQt(C<QLineEdit>("txtSessione")->text()), "Gara");
    EXPECT_EQ(DaQt(C<QLineEdit>("txtVeicolo")->text()), "Alfa 8");
    EXPECT_EQ(DaQt(C<QPlainTextEdit>("txtPiloti")->toPlainText()), "Rossi\nBianchi");
    EXPECT_EQ(C<QComboBox>("cboCircuito")->count(), 4);
    EXPECT_EQ(DaQt(C<QLineEdit>("txtLunghezzaTracciato")->text()), "3480") << "of the division";
    EXPECT_EQ(C<QComboBox>("cboNumSettori")->currentText().toInt(), 4);
    EXPECT_EQ(Caselle(), (V{"905", "842", "1016", "717"}));
    EXPECT_EQ(DaQt(dialogo->windowTitle()), "Valdoro - 3480 m.");
    EXPECT_EQ(C<DisegnoTracciato>("Picture1")->Tratti().size(), 4u);
    EXPECT_EQ(DaQt(C<QLabel>("lblMetri")->text()), "metres");

    IndiceLingua = 0;
    QEvent attiva(QEvent::WindowActivate);
    QApplication::sendEvent(dialogo.get(), &attiva);
    EXPECT_EQ(DaQt(C<QGroupBox>("fraSessione")->title()), "Dati della sessione");
    EXPECT_EQ(DaQt(C<QLabel>("lblMetri")->text()), "metri");
    EXPECT_EQ(DaQt(dialogo->windowTitle()), "Valdoro - 3480 m.");
}

TEST_F(DialogoSessione, ChoosingACircuitBringsItsOutlineAndDivision) {
    DatiSessione.Circuito = "Valdoro";
    Mostra();
    auto* circuiti = C<QComboBox>("cboCircuito");
    Batti(circuiti, "fonteBRUNA", Qt::Key_Return);
    EXPECT_TRUE(dialogo->isVisible()) << "Enter chose the circuit and did not press OK";
    EXPECT_EQ(DaQt(circuiti->currentText()), "Fontebruna");
    EXPECT_EQ(Caselle(), (V{"880", "1010", "870"}));
    EXPECT_EQ(DaQt(dialogo->windowTitle()), "Fontebruna - 2760 m.");
    EXPECT_EQ(C<DisegnoTracciato>("Picture1")->Tratti().size(), 3u);

    Batti(circuiti, "Quadrato", Qt::Key_Tab);
    EXPECT_EQ(Caselle(), V{""}) << "no division yet";
    EXPECT_EQ(C<QComboBox>("cboNumSettori")->currentIndex(), -1);
    EXPECT_EQ(C<DisegnoTracciato>("Picture1")->Punti().size(), 41u);
    EXPECT_TRUE(C<DisegnoTracciato>("Picture1")->Tratti().empty());
    OKRifiutato(Voce::SommaSettori);
    Batti(circuiti, "../Valdoro", Qt::Key_Return);
    EXPECT_TRUE(C<DisegnoTracciato>("Picture1")->Punti().empty());
}

TEST_F(DialogoSessione, NewDivisionIsWrittenWithTheSession) {
    Mostra();
    EXPECT_EQ(DaQt(dialogo->windowTitle()), "Session details") << "no circuit yet";
    OKRifiutato(Voce::SommaSettori);
    EXPECT_TRUE(C<QLineEdit>("txtLunghezzaTracciato")->hasFocus());
    Batti(C<QComboBox>("cboCircuito"), "Quadrato", Qt::Key_Return);
    Batti(C<QLineEdit>("txtLunghezzaTracciato"), "1000", Qt::Key_Return);
    EXPECT_TRUE(dialogo->isVisible());
    Settori(3);
    EXPECT_EQ(Caselle(), (V{"333", "333", "334"}));
    Batti(X(0), "4.0,0", Qt::Key_Return);
    EXPECT_TRUE(dialogo->isVisible());
    EXPECT_EQ(Caselle(), (V{"400", "266", "334"}));
    Batti(X(1), "200", Qt::Key_Tab);
    EXPECT_EQ(Caselle(), (V{"400", "200", "400"})) << "the last takes the rest";
    EXPECT_TRUE(X(2)->hasFocus());
    Batti(X(2), "5", Qt::Key_Return);
    EXPECT_EQ(Caselle(), (V{"400", "200", "400"})) << "the last never reacts";
    for (const char* troppo : {"1000", "0", "", "99999999999"}) {
        Batti(X(0), troppo, Qt::Key_Return);
        EXPECT_EQ(Caselle(), (V{"400", "200", "400"})) << troppo;
    }
    // Passing through the length levels nothing; only another length does.
    C<QLineEdit>("txtLunghezzaTracciato")->setFocus();
    X(0)->setFocus();
    EXPECT_EQ(Caselle(), (V{"400", "200", "400"}));

    C<QLineEdit>("txtSessione")->setText(QStringLiteral(" Gara"));
    C<QLineEdit>("txtVeicolo")->setText(QStringLiteral("Alfa"));
    C<QPlainTextEdit>("txtNote")->setFocus();
    QTest::keyClicks(C<QPlainTextEdit>("txtNote"), QStringLiteral("a"));
    QTest::keyClick(C<QPlainTextEdit>("txtNote"), Qt::Key_Return);
    QTest::keyClicks(C<QPlainTextEdit>("txtNote"), QStringLiteral("b"));
    QTest::keyClick(C<QLineEdit>("txtSessione"), Qt::Key_Return);
    EXPECT_FALSE(dialogo->isVisible()) << "Enter in any other box is OK";
    EXPECT_EQ(Leggi(tracks / "Quadrato.sec"), "1000\r\n400\r\n200\r\n400\r\n");
    EXPECT_EQ(DatiSessione.Sessione, " Gara") << "untrimmed";
    EXPECT_EQ(DatiProgetto.Veicolo, "Alfa");
    const std::string ses = Leggi(ConFine(Stelo(), ".ses"));
    EXPECT_EQ(ses.substr(0, ses.find("Piloti")),
              "Sessione= Gara\r\nDataSessione= \r\nOraSessione= \r\nCircuito=Quadrato\r\n"
              "LunghTracciato=1000\r\nVeicoloSessione= \r\n");
    EXPECT_NE(ses.find("NoteSessione=a b\r\n"), std::string::npos);
    analisi.RicompilaTabella();
    EXPECT_EQ(analisi.Giri().NumSettori(), 4);
}

TEST_F(DialogoSessione, WheelChoosesFromAListOnlyWithTheFocus) {
    DatiSessione.Circuito = "Valdoro";
    Mostra();
    for (const char* nome : {"cboNumSettori", "cboCircuito"}) {
        auto* const lista = C<QComboBox>(nome);
        const QString prima = lista->currentText();
        const auto gira = [&](int quanto) {
            const QPointF qui(5, 5);
            QWheelEvent rotella(qui, lista->mapToGlobal(qui), {}, {0, quanto}, {}, {},
                                Qt::NoScrollPhase, false);
            QApplication::sendEvent(lista, &rotella);
            return rotella.isAccepted();
        };
        C<QLineEdit>("txtSessione")->setFocus();
        EXPECT_FALSE(gira(120)) << "what lies around may scroll";
        EXPECT_FALSE(gira(-120));
        EXPECT_EQ(lista->currentText(), prima) << nome;
        lista->setFocus();
        gira(120);
        EXPECT_NE(lista->currentText(), prima) << nome;
    }
}

TEST_F(DialogoSessione, NegativeNeighbourIsRefusedAtOK) {
    DatiSessione.Circuito = "Valdoro";
    Mostra();
    Batti(X(0), "3000", Qt::Key_Return);
    EXPECT_EQ(Caselle(), (V{"3000", "-1253", "1016", "717"}));
    OKRifiutato(Voce::SettoreNegativo);
    EXPECT_TRUE(X(1)->hasFocus());
    EXPECT_EQ(Leggi(tracks / "Valdoro.sec").substr(0, 9), "3480\r\n905");
    Batti(X(0), "905", Qt::Key_Return);
    Settori(15);
    EXPECT_EQ(X(13)->text().toInt(), 232);
    EXPECT_EQ(X(14)->text().toInt(), 232);
    const QSize misura = dialogo->frameGeometry().size();
    EXPECT_LE(misura.width(), 1366);
    EXPECT_LE(misura.height(), 728);
    EXPECT_GE(X(14)->mapTo(dialogo.get(), QPoint()).y(), 0);
    EXPECT_LE(X(14)->mapTo(dialogo.get(), QPoint(0, X(14)->height())).y(),
              C<QPushButton>("OKButton")->mapTo(dialogo.get(), QPoint()).y());
}

TEST_F(DialogoSessione, CancelKeepsOnlyAChangedLength) {
    DatiSessione.Circuito = "Valdoro";
    DatiSessione.Sessione = "prima";
    Mostra();
    C<QLineEdit>("txtSessione")->setText(QStringLiteral("dopo"));
    Batti(C<QLineEdit>("txtLunghezzaTracciato"), "4000", Qt::Key_Tab);
    EXPECT_EQ(Caselle(), (V{"1000", "1000", "1000", "1000"}));
    Batti(C<QLineEdit>("txtLunghezzaTracciato"), "77", Qt::Key_Escape);
    EXPECT_FALSE(dialogo->isVisible());
    EXPECT_EQ(DatiSessione.Sessione, "prima");
    EXPECT_EQ(DatiSessione.LunghTracciato, "4000");
    EXPECT_EQ(Leggi(tracks / "Valdoro.sec").substr(0, 4), "3480");
    EXPECT_FALSE(fs::exists(ConFine(Stelo(), ".ses")));
}

TEST(DisegnoTracciato, FitsAndColoursTheOutline) {
    DisegnoTracciato disegno;
    disegno.resize(400, 200);
    std::vector<PuntoTracciato> punti;
    for (int i = 0; i <= 20; ++i) punti.push_back({i, 0});
    for (int i = 0; i <= 20; ++i) punti.push_back({20 - i, 20});
    disegno.ImpostaPunti(punti);
    // Square: the height counts, and the picture stands in the middle.
    EXPECT_NEAR(disegno.Posizione(20).x() - disegno.Posizione(0).x(),
                disegno.Posizione(21).y() - disegno.Posizione(20).y(), 0.01);
    EXPECT_NEAR(disegno.Posizione(0).x() + disegno.Posizione(20).x(), 400.0, 1.0);
    for (const bool scuro : {false, true}) {
        QPalette tavolozza;
        tavolozza.setColor(QPalette::Base, scuro ? Qt::black : Qt::white);
        tavolozza.setColor(QPalette::Text, scuro ? Qt::white : Qt::black);
        disegno.setPalette(tavolozza);
        const std::int32_t settori[] = {50, 50, 0};
        disegno.Settori(settori, 100);
        const QImage foto = disegno.grab().toImage();
        const auto a = [&](int n) { return foto.pixelColor(disegno.Posizione(n).toPoint()); };
        EXPECT_EQ(a(10), QColor(0, 255, 0)) << "first sector green";
        EXPECT_EQ(a(30), QColor(Qt::red)) << "second sector red";
        EXPECT_EQ(a(0), QColor(Qt::yellow)) << "the start";
        const QPointF chiusura = (disegno.Posizione(41) + disegno.Posizione(0)) / 2.0;
        EXPECT_EQ(foto.pixelColor(chiusura.toPoint()), QColor(Qt::red)) << "closing line";
    }
    disegno.ImpostaPunti(punti);
    EXPECT_TRUE(disegno.Tratti().empty());
    for (const auto& [n, atteso] : {std::pair{7, 7}, {41, 41}, {42, -1}, {-3, -1}}) {
        disegno.Marcatore(n);
        EXPECT_EQ(disegno.PuntoMarcato(), atteso);
    }
    disegno.Marcatore(30);
    EXPECT_EQ(disegno.grab().toImage().pixelColor(disegno.Posizione(30).toPoint()),
              QColor(Qt::red));
    // Nothing to draw is drawn without harm.
    for (const auto& pochi : {std::vector<PuntoTracciato>{}, {{5, 5}}, {{5, 5}, {5, 5}}}) {
        disegno.ImpostaPunti(pochi);
        disegno.Settori(std::vector<std::int32_t>{10, 10}, 20);
        EXPECT_FALSE(disegno.grab().isNull());
    }
}
