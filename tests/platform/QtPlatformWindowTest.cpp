#include "platform/qt/QtPlatform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <algorithm>

#include "platform/FileTesto.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "shell/NumeroTesto.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

/// What is seen of the dialogs of a kind that `azione` shows, one after the other; how many.
template <class D>
int NelDialogo(const std::function<void(D&)>& guarda, const std::function<void()>& azione) {
    std::vector<QPointer<D>> visti;
    QTimer guardia;
    QObject::connect(&guardia, &QTimer::timeout, [&] {
        auto* dialogo = qobject_cast<D*>(QApplication::activeModalWidget());
        if (dialogo == nullptr || std::find(visti.begin(), visti.end(), dialogo) != visti.end())
            return;
        visti.emplace_back(dialogo);
        guarda(*dialogo);
    });
    guardia.start(1);
    azione();
    return static_cast<int>(visti.size());
}

class MacchinaQt : public ::testing::Test {
 protected:
    /// A box that is answered by `tasto`.
    Answer Box(Buttons quali, Qt::Key tasto, const std::function<void(QMessageBox&)>& guarda = {},
               Icon icona = Icon::None, const std::string& testo = "x") {
        Answer risposta = Answer::Ok;
        EXPECT_EQ(NelDialogo<QMessageBox>(
                      [&](QMessageBox& box) {
                          if (guarda) guarda(box);
                          QTest::keyClick(&box, tasto);
                      },
                      [&] { risposta = macchina.MsgBox(testo, quali, icona, "t\xE0"); }),
                  1);
        return risposta;
    }
    QtPlatform macchina;
};

TEST_F(MacchinaQt, BoxStandsOverTheWindowsOfTheProgramOrInTheMiddleOfTheScreen) {
    Box(Buttons::Ok, Qt::Key_Escape, [](QMessageBox& box) {
        const QPoint via = box.geometry().center() - box.screen()->availableGeometry().center();
        EXPECT_LT(via.manhattanLength(), 60);
    });
    QWidget finestra;
    finestra.show();
    QWidget senzaCornice(nullptr, Qt::Dialog | Qt::FramelessWindowHint);
    senzaCornice.show();
    for (QWidget* attiva : {static_cast<QWidget*>(nullptr), &finestra, &senzaCornice}) {
        QApplication::setActiveWindow(attiva);
        Box(Buttons::Ok, Qt::Key_Escape,
            [&](QMessageBox& box) { EXPECT_EQ(box.parentWidget(), &finestra); });
    }
}

TEST_F(MacchinaQt, BoxAsksWhatItIsToldAndAnswersByKeys) {
    for (const auto& [quali, tasto, attesa] :
         {std::tuple{Buttons::Ok, Qt::Key_Escape, Answer::Ok},
          {Buttons::OkCancel, Qt::Key_Return, Answer::Ok},
          {Buttons::OkCancel, Qt::Key_Escape, Answer::Cancel},
          {Buttons::YesNoCancel, Qt::Key_Return, Answer::Yes},
          {Buttons::YesNoCancel, Qt::Key_Escape, Answer::Cancel}}) {
        EXPECT_EQ(Box(quali, tasto), attesa);
    }
    EXPECT_EQ(Box(Buttons::YesNoCancel, Qt::Key_F1,
                  [](QMessageBox& box) { box.button(QMessageBox::No)->click(); }),
              Answer::No);
    for (const auto& [icona, attesa] : {std::pair{Icon::None, QMessageBox::NoIcon},
                                        {Icon::Information, QMessageBox::Information},
                                        {Icon::Warning, QMessageBox::Warning},
                                        {Icon::Critical, QMessageBox::Critical},
                                        {Icon::Question, QMessageBox::Question}}) {
        Box(
            Buttons::Ok, Qt::Key_Escape,
            [attesa = attesa](QMessageBox& box) { EXPECT_EQ(box.icon(), attesa); }, icona);
    }
    const std::string lungo(70, 'w');
    Box(
        Buttons::Ok, Qt::Key_Escape,
        [&](QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), QStringLiteral("t\u00E0"));
            EXPECT_EQ(box.textFormat(), Qt::PlainText) << "a name with < is no markup";
            // A word of any length can be broken.
            EXPECT_EQ(box.text(), QStringLiteral("<b>a\u00E8\n") + QString(60, u'w') +
                                      QChar(0x200B) + QString(10, u'w'));
        },
        Icon::None, "<b>a\xE8\r\n" + lungo);
}

TEST_F(MacchinaQt, BusyPointerGivesWayToABoxAndComesBack) {
    macchina.MousePointer(Pointer::Busy);
    macchina.MousePointer(Pointer::Busy);
    Box(Buttons::Ok, Qt::Key_Escape,
        [](QMessageBox&) { EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr); });
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    macchina.MousePointer(Pointer::Normal);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "once is enough";
    Box(Buttons::Ok, Qt::Key_Escape);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(MacchinaQt, WaitsEndWithTheirTimeOrWithAnEvent) {
    const std::int64_t inizio = macchina.GetTickCount();
    macchina.Sleep(20);
    EXPECT_GE(macchina.GetTickCount() - inizio, 20);
    std::int64_t pausa = 1000;  // the shortest: the machine may be busy
    for (int giro = 0; giro < 10; ++giro) {
        const std::int64_t da = macchina.GetTickCount();
        macchina.Pause(20, [&] { macchina.Sleep(18); });
        pausa = std::min(pausa, macchina.GetTickCount() - da);
    }
    EXPECT_GE(pausa, 20);
    EXPECT_LT(pausa, 30) << "what is done meanwhile comes on top";
    int giri = 0;
    const std::int64_t da = macchina.GetTickCount();
    for (; macchina.GetTickCount() - da < 60; ++giri) {
        QCoreApplication::processEvents();
        macchina.DoEvents(30);
    }
    EXPECT_LT(giri, 20) << "it spins";
    for (int giro = 0; giro < 20; ++giro) macchina.DoEvents(10);
    EXPECT_LT(macchina.GetTickCount() - da, 10000) << "it sleeps until something happens";
    QPointer<QObject> oggetto = new QObject;
    oggetto->deleteLater();
    macchina.DoEvents();
    EXPECT_TRUE(oggetto.isNull());
}

TEST_F(MacchinaQt, FileDialogsTakeNamesOfFoldersThatAreThere) {
    const prova::PlatformProva cartelle;  // a folder of the test's own
    const auto& cartella = cartelle.Cartella;
    prova::Scrivi(cartella / "a.pro", "x");
    prova::Scrivi(cartella / "sotto" / "b.CSV", "x");
    const QString prima = QDir::currentPath();
    const auto chiedi = [&](bool salva, const std::string& nome, const std::string& scritto) {
        std::optional<std::filesystem::path> scelto;
        const FileRequest chiesto{"Titolo", cartella, "Data File (*.csv)|*.csv", nome, ".csv"};
        int rifiuti = 0;
        QTimer rifiuto;  // the box that a folder is not there
        QObject::connect(&rifiuto, &QTimer::timeout, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            ++rifiuti;
            QTest::keyClick(box, Qt::Key_Return);
        });
        rifiuto.start(1);
        NelDialogo<QFileDialog>(
            [&](QFileDialog& dialogo) {
                EXPECT_EQ(dialogo.windowTitle(), QStringLiteral("Titolo"));
                EXPECT_EQ(PercorsoDaQt(dialogo.directory().path()), cartella);
                EXPECT_EQ(dialogo.nameFilters(), QStringList{QStringLiteral("Data File (*.csv)")});
                EXPECT_EQ(dialogo.acceptMode() == QFileDialog::AcceptSave, salva);
                EXPECT_TRUE(dialogo.testOption(QFileDialog::DontConfirmOverwrite));
                auto* riga = dialogo.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
                EXPECT_EQ(riga->text().toStdString(), nome);
                riga->setText(PercorsoInQt(scritto));
                QMetaObject::invokeMethod(&dialogo, "accept");
                if (dialogo.isVisible()) QMetaObject::invokeMethod(&dialogo, "reject");
            },
            [&] { scelto = salva ? macchina.AskSave(chiesto) : macchina.AskOpen(chiesto); });
        EXPECT_EQ(rifiuti, scelto ? 0 : 1);
        return scelto.value_or("");
    };
    EXPECT_EQ(chiedi(true, "new.csv", "run"), cartella / "run.csv");
    EXPECT_EQ(chiedi(true, "", (cartella / "sotto" / "b.CSV").string()),
              cartella / "sotto" / "b.CSV");
    EXPECT_EQ(macchina.CurDir(), cartella / "sotto") << "where the next dialog opens";
    EXPECT_EQ(chiedi(false, "", "a.pro"), cartella / "a.pro");
    EXPECT_EQ(chiedi(true, "", (cartella / "manca" / "x.csv").string()), "");
    QDir::setCurrent(prima);
}

TEST_F(MacchinaQt, ColoursGoThroughTheDialogAndBack) {
    const auto chiedi = [&](bool accetta) {
        std::optional<Colore> scelto;
        NelDialogo<QColorDialog>(
            [&](QColorDialog& dialogo) {
                EXPECT_EQ(dialogo.currentColor(), QColor(10, 20, 30));
                dialogo.setCurrentColor(QColor(1, 2, 3));
                QMetaObject::invokeMethod(&dialogo, accetta ? "accept" : "reject");
            },
            [&] { scelto = macchina.AskColor(Rgb(10, 20, 30)); });
        return scelto;
    };
    EXPECT_EQ(chiedi(true), Rgb(1, 2, 3));
    EXPECT_EQ(chiedi(false), std::nullopt);
}

TEST_F(MacchinaQt, QtsOwnTextsFollowTheLanguage) {
    const auto annulla = [&] {
        QString testo;
        Box(Buttons::OkCancel, Qt::Key_Escape, [&](QMessageBox& box) {
            testo = box.button(QMessageBox::Cancel)->text().remove(u'&');
        });
        return testo.toStdString();
    };
    macchina.Language(0);
    EXPECT_EQ(annulla(), "Annulla");
    macchina.Language(1);
    EXPECT_EQ(annulla(), "Cancel");
}

TEST_F(MacchinaQt, DatesHaveFourDigitsForTheYearInEveryLocale) {
    const QDateTime quando(QDate(2026, 11, 5), QTime(15, 4, 9));
    for (const auto& [paese, atteso] :
         {std::pair{QLocale(QLocale::Italian, QLocale::Italy), "05/11/2026 15:04:09"},
          {QLocale(QLocale::English, QLocale::UnitedStates), "11/5/2026 3:04:09 PM"},
          {QLocale(QLocale::German, QLocale::Germany), "05.11.2026 15:04:09"}}) {
        EXPECT_EQ(FormatoGenerale(quando, paese).toStdString(), atteso);
    }
}

// With LC_ALL=it_IT.UTF-8 here, with the registry on Windows.
TEST_F(MacchinaQt, TheSystemMayBeItalian) {
    if (qEnvironmentVariableIsEmpty("LAPVANE_ITALIAN")) GTEST_SKIP() << "it is not said to be";
    EXPECT_EQ(macchina.DecimalSeparator(), ',');
    const QString adesso = InQt(macchina.Now());
    EXPECT_TRUE(QDateTime::fromString(adesso, QStringLiteral("dd/MM/yyyy HH:mm:ss")).isValid())
        << adesso.toStdString();
    for (const double numero : {1.5, -0.25, 1234567.5}) {
        EXPECT_EQ(LeggiNumero(TestoNumero(numero)), numero);
        EXPECT_EQ(TestoNumero(numero).find(','), std::string::npos) << "as the files have it";
    }
}

#ifdef _WIN32
TEST_F(MacchinaQt, TheCurrentFolderMayBeOnAnotherDrive) {
    namespace fs = std::filesystem;
    const prova::PlatformProva cartelle;
    const fs::path prima = macchina.CurDir();
    const fs::path altra = L"Z:\\tmp";  // where wine has the whole machine
    if (!fs::is_directory(altra)) GTEST_SKIP() << "there is none";
    const fs::path cartella = altra / cartelle.Cartella.filename();
    fs::create_directory(cartella);
    macchina.ChDir(cartella.generic_wstring());
    EXPECT_EQ(macchina.CurDir().native(), cartella.native()) << "with the system's own separator";
    ScriviFile("a.pro", "1", Lavoro::LeggereFile);
    ScriviFile(L"Z:a.pro", "2", Lavoro::LeggereFile);
    EXPECT_EQ(ElencaFile("."), std::vector<std::string>{"a.pro"});
    macchina.ChDir(cartelle.Cartella);
    EXPECT_EQ(LeggiFile(cartella / "a.pro", Lavoro::LeggereFile), "2");
    EXPECT_FALSE(FileEsiste("a.pro"));
    macchina.ChDir(cartella / "none");
    EXPECT_EQ(macchina.CurDir().native(), cartelle.Cartella.native());
    macchina.ChDir(prima);
    fs::remove_all(cartella);
}
#endif

}  // namespace
}  // namespace lapvane
