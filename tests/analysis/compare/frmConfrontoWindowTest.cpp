#include "analysis/compare/frmConfronto.h"

#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QMimeData>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include "analysis/compare/DisegnoElenco.h"
#include "analysis/compare/DisegnoMappa.h"
#include "analysis/compare/DisegnoQuadri.h"
#include "analysis/compare/UsciteProva.h"
#include "analysis/compare/dlgCsvConfronto.h"
#include "platform/FileTesto.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "reports/DatiSessione.h"
#include "shell/StatoShell.h"
#include "support/WindowPlatform.h"

namespace lapvane::prova {
namespace {

namespace fs = std::filesystem;

class FinestraConfronto : public ::testing::Test {
 protected:
    FinestraConfronto() {
        CaricaTestiVeri(1);
        MettiDueUscite(macchina.Cartella);
    }
    fs::path File(const char* nome) const { return macchina.Cartella / nome; }
    void Mostra(frmConfronto& finestra) {
        finestra.resize(1366, 738);
        finestra.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&finestra));
        while (Controllo<QWidget>(finestra, "progresso")->isVisible()) {
            QCoreApplication::processEvents();
        }
    }
    static void Clicca(frmConfronto& finestra, const char* elenco, int riga, bool suSpunta) {
        auto* lista = Controllo<DisegnoElenco>(finestra, elenco);
        lista->scrollToItem(lista->item(riga));
        const QRect spunta = lista->PostoSpunta(riga);
        QTest::mouseClick(lista->viewport(), Qt::LeftButton, {},
                          suSpunta ? spunta.center() : spunta.center() + QPoint(60, 0));
    }
    static QString Testo(frmConfronto& finestra, const char* etichetta) {
        return Controllo<QLabel>(finestra, etichetta)->text();
    }

    WindowPlatform macchina;
};

TEST_F(FinestraConfronto, ADriverFindsWhereTheTimeGoes) {
    DatiSessione.Circuito = "of the open analysis";
    AnalisiInCorso = true;
    frmConfronto finestra;
    Mostra(finestra);
    EXPECT_TRUE(Controllo<QPushButton>(finestra, "cmdApri")->isVisible());
    macchina.FileScelti = {File("oggi.csv")};
    QTest::mouseClick(Controllo<QPushButton>(finestra, "cmdApri"), Qt::LeftButton);
    QMimeData dati;
    dati.setUrls({QUrl::fromLocalFile(PercorsoInQt(File("ieri.csv"))),
                  QUrl::fromLocalFile(PercorsoInQt(File("ieri.txt")))});
    QDragEnterEvent entra(QPoint(100, 100), Qt::CopyAction, &dati, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&finestra, &entra);
    QDropEvent lascia(QPointF(100, 100), Qt::CopyAction, &dati, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&finestra, &lascia);
    ASSERT_EQ(finestra.Dati().NumLog(), 2) << "the text file is no log";

    Clicca(finestra, "lstGiri", 1, true);  // lap 2
    ASSERT_EQ(finestra.Dati().Accanto(), "ABC");
    EXPECT_EQ(finestra.Dati().Fuoco(), 'C');
    const QString risposta = Testo(finestra, "lblRisposta");
    EXPECT_TRUE(risposta.contains("Lap 2 (oggi)") && risposta.contains("3.45 s") &&
                risposta.contains("slower than"))
        << risposta.toStdString();
    auto* grafico = Controllo<DisegnoQuadri>(finestra, "grafico");
    auto* parte = Controllo<QPushButton>(finestra, "cmdParte0");
    const int peggiore = finestra.Dati().Tabella().Peggiori.at(0);
    EXPECT_TRUE(parte->text().startsWith(QString("Sector %1: +").arg(peggiore + 1)))
        << parte->text().toStdString();
    QTest::mouseClick(parte, Qt::LeftButton);
    const auto confini = finestra.Dati().Confini();
    EXPECT_NEAR(grafico->Da(),
                peggiore == 0 ? 0.0 : confini.at(static_cast<std::size_t>(peggiore) - 1), 1.0);

    // The map moves the cursor, whatever the axis.
    QTest::mouseClick(Controllo<QPushButton>(finestra, "optTempo"), Qt::LeftButton);
    EXPECT_FALSE(grafico->Dati().PerDistanza);
    auto* mappa = Controllo<DisegnoMappa>(finestra, "mappa");
    QTest::mouseMove(mappa, mappa->Posizione(0.5).toPoint());
    EXPECT_NEAR(finestra.Dati().MetriDaX(grafico->Cursore()), 1740.0, 60.0);

    // A double click makes a reference; the tick of a channel a pane.
    auto* lista = Controllo<DisegnoElenco>(finestra, "lstGiri");
    lista->scrollToItem(lista->item(1));
    QTest::mouseDClick(lista->viewport(), Qt::LeftButton, {},
                       lista->PostoSpunta(1).center() + QPoint(60, 0));
    EXPECT_EQ(finestra.Dati().Numero(*finestra.Dati().Di('R')), 2);
    EXPECT_TRUE(Testo(finestra, "lblRisposta").contains("faster than"));
    const std::size_t riquadri = grafico->Dati().Quadri.size();
    Clicca(finestra, "lstQuadri", 3, true);
    EXPECT_EQ(grafico->Dati().Quadri.size(), riquadri + 1);
    finestra.close();
    EXPECT_EQ(DatiSessione.Circuito, "of the open analysis");
    EXPECT_TRUE(AnalisiInCorso);
}

TEST_F(FinestraConfronto, ItIsFoundAsItWasLeft) {
    const auto stato = [&](frmConfronto& finestra) {
        QStringList testo;
        for (const auto& [lettera, numero] : finestra.Dati().ScelteDi(0)) {
            testo << QString("%1%2").arg(QLatin1Char(lettera)).arg(numero);
        }
        for (const auto& quadro : Controllo<DisegnoQuadri>(finestra, "grafico")->Dati().Quadri) {
            testo << InQt(quadro.Titolo);
        }
        testo << (finestra.Dati().PerDistanza ? "m" : "s")
              << QString::number(finestra.Dati().Parti())
              << Controllo<QComboBox>(finestra, "cboX")->currentText();
        return testo.join(' ').toStdString();
    };
    std::string lasciato;
    std::string primo;
    {
        frmConfronto finestra;
        finestra.Apri(File("oggi.csv"));
        Mostra(finestra);
        primo = stato(finestra);
        Clicca(finestra, "lstGiri", 3, true);
        Clicca(finestra, "lstQuadri", 8, true);
        Controllo<QPushButton>(finestra, "optTempo")->click();
        auto* parti = Controllo<QComboBox>(finestra, "cboParti");
        parti->setCurrentIndex(parti->findData(12));
        Q_EMIT parti->activated(parti->currentIndex());
        auto* x = Controllo<QComboBox>(finestra, "cboX");
        x->setCurrentIndex(5);
        Q_EMIT x->activated(5);
        lasciato = stato(finestra);
        finestra.close();
    }
    ASSERT_NE(lasciato, primo);
    {
        frmConfronto altra;
        altra.Apri(File("ieri.csv"));
        EXPECT_EQ(altra.Dati().Accanto(), "A") << "another log has choices of its own";
        Mostra(altra);
        altra.close();
    }
    {
        frmConfronto finestra;
        finestra.Apri(File("oggi.csv"));
        EXPECT_EQ(stato(finestra), lasciato);
        finestra.close();
    }
    {
        frmConfronto finestra;
        const auto& dati = finestra.Dati();
        finestra.Apri(File("oggi.csv"), 7);  // the row of lap 7, in the analysis' table
        EXPECT_EQ(dati.Numero(*dati.Di('R')), 12);
        ASSERT_EQ(dati.Accanto(), "A");
        EXPECT_EQ(dati.Giro(*dati.Di('A')).Indice, 7);
    }
    Scrivi(platform().AppPath() / "Compare.lapvane", "lapvane-compare 9\naxis=time\n");
    frmConfronto finestra;
    finestra.Apri(File("oggi.csv"));
    EXPECT_EQ(stato(finestra), primo);
}

TEST_F(FinestraConfronto, WhatLeavesIt) {
    frmConfronto finestra;
    finestra.Apri(File("oggi.csv"));
    Mostra(finestra);
    Controllo<QWidget>(finestra, "barra_CopiaTabelle")->setFocus();
    QTest::keyClick(Controllo<QWidget>(finestra, "barra_CopiaTabelle"), Qt::Key_Space);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains("Lap 12\t"));
    Scrivi(File("giri.csv"), "old");
    macchina.FileScelti = {File("foto.png"), File("foto.pdf"), File("giri.csv"), File("giri.csv"),
                           macchina.Cartella / "none" / "x.png"};
    macchina.Risposte = {Answer::Cancel, Answer::Ok};  // replace it?
    for (int i = 0; i < 2; ++i) {
        QTest::keyClick(Controllo<QWidget>(finestra, "barra_SalvaImmagine"), Qt::Key_Space);
    }
    QImage foto;
    ASSERT_TRUE(foto.load(PercorsoInQt(File("foto.png"))));
    EXPECT_GT(foto.width(), 1200);
    EXPECT_TRUE(LeggiFile(File("foto.pdf"), Lavoro::LeggereFile).starts_with("%PDF"));
    const auto rispondi = [] {
        auto* forma = qobject_cast<dlgCsvConfronto*>(QApplication::activeModalWidget());
        ASSERT_NE(forma, nullptr);
        Controllo<QComboBox>(*forma, "cboDecimale")->setCurrentIndex(1);
        EXPECT_FALSE(Controllo<QPushButton>(*forma, "OKButton")->isEnabled()) << "two commas";
        Controllo<QComboBox>(*forma, "cboCampi")->setCurrentIndex(1);
        QTest::mouseClick(Controllo<QPushButton>(*forma, "OKButton"), Qt::LeftButton);
    };
    for (const char* dopo : {"old", "distance;delta "}) {
        QTimer::singleShot(0, rispondi);
        QTest::keyClick(Controllo<QWidget>(finestra, "barra_SalvaCsv"), Qt::Key_Space);
        EXPECT_TRUE(LeggiFile(File("giri.csv"), Lavoro::LeggereFile).starts_with(dopo)) << dopo;
    }
    QTest::keyClick(Controllo<QWidget>(finestra, "barra_SalvaImmagine"), Qt::Key_Space);
    EXPECT_TRUE(Controllo<QWidget>(finestra, "avviso")->isVisible());
    EXPECT_TRUE(Testo(finestra, "lblAvviso").contains("x.png")) << "nothing is silent";

    finestra.Apri(File("domani.csv"));
    EXPECT_TRUE(Testo(finestra, "lblAvviso").contains("domani.csv"));
    fs::remove(File("ieri.tim"));
    finestra.Apri(File("ieri.csv"));
    EXPECT_TRUE(Testo(finestra, "lblAvviso").contains("no .tim file"));
}

}  // namespace
}  // namespace lapvane::prova
