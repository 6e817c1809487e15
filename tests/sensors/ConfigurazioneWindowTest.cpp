#include "sensors/Configurazione.h"

#include <QLabel>
#include <QTimer>
#include <QToolButton>

#include "sensors/EditorWindowProva.h"
#include "sensors/frmConfigurazione.h"
#include "shell/frmMain.h"
#include "widgets/ImmaginePagina.h"

namespace lapvane {
namespace {

namespace fs = std::filesystem;
using R = RecordProgetto;
using strumento::Record;

class Configurazione : public prova::EditorWindowProva<frmConfigurazione> {
 protected:
    std::string Pagina() { return DaQt(C<QLabel>("lblCurrPagina")->text()); }
    ImmaginePagina* Anteprima() { return C<ImmaginePagina>("imgPagina"); }
    QImage Consegnata(int n) {
        return ImmaginePagina::Carica(macchina.Cartella / "pages" /
                                      ("Pagina" + std::to_string(n) + ".bmp"));
    }
    void VaiA(int n) {
        for (int i = 0; i < 9; ++i) Clic("cmdPrevPage");
        for (int i = 1; i < n; ++i) Clic("cmdNextPage");
    }
    /// A picture of one colour.
    fs::path Tinta(const char* nome, QSize misura, Qt::GlobalColor colore) {
        QImage immagine(misura, QImage::Format_RGB888);
        immagine.fill(colore);
        const fs::path file = macchina.Cartella / nome;
        EXPECT_TRUE(immagine.save(QString::fromStdString(file.string()), "BMP"));
        return file;
    }
    void Scegli(const std::optional<fs::path>& file) {
        macchina.FileScelti = {file};
        Clic("cmdScegliImmagine");
    }
};

TEST_F(Configurazione, ShowsTheNinePages) {
    DatiProgetto.PaginaAbilitata2 = true;
    DatiProgetto.Pagina1 = " ";
    DatiProgetto.Pagina8 = Tinta("otto.bmp", {640, 320}, Qt::red).string();
    Apri();
    EXPECT_EQ(Pagina(), " 1/ 9");
    for (int n = 1; n <= 9; ++n) {
        const bool estrema = n == 1 || n == 9;
        EXPECT_EQ(Pagina(), " " + std::to_string(n) + "/ 9");
        EXPECT_EQ(C<QPushButton>("cmdPrevPage")->isEnabled(), n > 1) << n;
        EXPECT_EQ(C<QPushButton>("cmdNextPage")->isEnabled(), n < 9) << n;
        EXPECT_EQ(C<QLineEdit>("txtFilePagina")->isVisible(), estrema) << n;
        EXPECT_EQ(C<QPushButton>("cmdScegliImmagine")->isVisible(), estrema) << n;
        EXPECT_EQ(C<QCheckBox>("chkAbilitaPagina")->isChecked(), n == 2) << n;
        EXPECT_EQ(Anteprima()->size(), n == 2 ? QSize(316, 158) : QSize(128, 64)) << n;
        const QImage& vista = Anteprima()->Immagine();
        if (n == 8) {
            EXPECT_EQ(vista.pixelColor(5, 5), QColor(Qt::red));
        } else {
            EXPECT_EQ(vista.size(), QSize(128, 64)) << n;
            EXPECT_EQ(vista, Consegnata(n)) << n;
            EXPECT_NE(vista, Consegnata(n % 9 + 1)) << n;
        }
        EXPECT_EQ(
            fs::file_size(macchina.Cartella / "pages" / ("Pagina" + std::to_string(n) + ".bmp")),
            24630u);
        Clic("cmdNextPage");
    }
    EXPECT_EQ(Testo("txtFilePagina"), DatiProgetto.Pagina8) << "the last page names that of page 8";
    VaiA(2);
    Clic("chkAbilitaPagina");
    EXPECT_EQ(Anteprima()->size(), QSize(128, 64));
    Tasto(Qt::Key_Escape);
    EXPECT_TRUE(DatiProgetto.PaginaAbilitata2);
    EXPECT_FALSE(ProgettoModificato);
}

TEST_F(Configurazione, PicturesAreChosenAtOnceAndBadOnesLeaveAHole) {
    const fs::path rossa = Tinta("rossa.bmp", {128, 64}, Qt::red);
    const fs::path blu = Tinta("blu.bmp", {300, 20}, Qt::blue);
    const fs::path enorme = Tinta("enorme.bmp", {5000, 4000}, Qt::red);
    const fs::path testo = macchina.Cartella / "testo.bmp";
    prova::Scrivi(testo, "this is no picture");
    Apri();
    Scegli(std::nullopt);
    EXPECT_EQ(Anteprima()->Immagine(), Consegnata(1));
    Scegli(rossa);
    EXPECT_EQ(macchina.RichiesteFile.back().Filter, "Display Page File (*.bmp)|*.bmp");
    EXPECT_EQ(macchina.RichiesteFile.back().Folder, macchina.Cartella);
    EXPECT_EQ(DatiProgetto.Pagina1, rossa.string()) << "whether or not OK follows";
    EXPECT_EQ(Testo("txtFilePagina"), "") << "until the page is shown again";
    EXPECT_EQ(Anteprima()->Immagine().pixelColor(1, 1), QColor(Qt::red));
    VaiA(9);
    Scegli(blu);
    EXPECT_EQ(DatiProgetto.Pagina9, blu.string());
    EXPECT_EQ(DatiProgetto.Pagina8, "");
    EXPECT_EQ(Anteprima()->Immagine().pixelColor(1, 1), QColor(Qt::blue));
    VaiA(1);
    EXPECT_EQ(Testo("txtFilePagina"), rossa.string());
    for (const fs::path& cattivo : {testo, enorme, macchina.Cartella / "nessuno.bmp",
                                    macchina.Cartella, fs::path("/dev/zero")}) {
        Scegli(cattivo);
        EXPECT_TRUE(Anteprima()->Immagine().isNull()) << cattivo;
        EXPECT_EQ(DatiProgetto.Pagina1, rossa.string()) << cattivo;
        EXPECT_FALSE(finestra->grab().isNull());
    }
    Tasto(Qt::Key_Escape);
    EXPECT_EQ(DatiProgetto.Pagina1, rossa.string());
    EXPECT_FALSE(ProgettoModificato);

    Apri();
    VaiA(9);
    EXPECT_EQ(Anteprima()->Immagine(), Consegnata(9)) << "nothing reads what page 9 was given";
    for (const std::string& cattivo : {enorme.string(), testo.string(), std::string("/x/y.bmp")}) {
        DatiProgetto.Pagina1 = cattivo;
        Apri();
        EXPECT_TRUE(Anteprima()->Immagine().isNull()) << cattivo;
        EXPECT_EQ(Testo("txtFilePagina"), cattivo);
    }
    fs::remove_all(macchina.Cartella / "pages");
    Apri();
    VaiA(5);
    EXPECT_TRUE(Anteprima()->Immagine().isNull());
    EXPECT_EQ(Mostrati(), V{});
}

TEST_F(Configurazione, PreviewKeepsItsDotsSharp) {
    const QImage pagina = Consegnata(2);
    const auto grigi = [](const QImage& immagine) {
        int n = 0;
        for (int y = 0; y < immagine.height(); ++y) {
            for (int x = 0; x < immagine.width(); ++x) {
                const int g = qGray(immagine.pixel(x, y));
                n += g != 0 && g != 255;
            }
        }
        return n;
    };
    ASSERT_EQ(grigi(pagina), 0);
    for (const int volte : {1, 2, 3}) {
        const QImage grande = ImmaginePagina::Adatta(pagina, pagina.size() * volte);
        EXPECT_EQ(grigi(grande), 0) << volte;
        EXPECT_EQ(grande.pixel(8 * volte, 8 * volte), pagina.pixel(8, 8));
    }
    const QImage grande = ImmaginePagina::Adatta(pagina, ImmaginePagina::kGrande);
    EXPECT_EQ(grande.size(), QSize(316, 158));
    EXPECT_LT(
        grigi(grande),
        grigi(pagina.scaled(316, 158, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)) * 3 / 4);
    // Every dot keeps its colour at its middle.
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 128; ++x) {
            const int g = qGray(grande.pixel((2 * x + 1) * 316 / 256, (2 * y + 1) * 158 / 128));
            ASSERT_EQ(g < 128, qGray(pagina.pixel(x, y)) < 128) << x << " " << y;
        }
    }
}

TEST_F(Configurazione, RefusesWhatIsNoNumberOfABoxBeforeStoringAnything) {
    Collega();
    Apri();
    Clic("chkAbilRecLAP");
    C<QComboBox>("cboUMVelocita")->setCurrentIndex(1);
    EXPECT_EQ(DaQt(C<QLabel>("lblUnitaRecVel")->text()), "mph");
    const std::set<std::string> byte = {"txtStopRecSecondi", "txtTempoMsgGiro", "txtTempoVisGiro"};
    for (const NumeroSetup& numero : kNumeriSetup) {
        const std::string casella(numero.Casella);
        const bool settore = casella.starts_with("txtSettore");
        for (const std::string testo :
             {"", "abc", "12 m", "1.2.3", settore ? "2147483648" : "32768",
              settore ? "-2147483649" : "-32769", "1e400"}) {
            Scrivi(casella, testo);
            Tasto(Qt::Key_Tab);  // no check on leaving
            EXPECT_EQ(Testo(casella), testo);
            EXPECT_EQ(Mostrati(), V{});
            for (const bool invio : {false, true}) {
                macchina.Risposte = {Answer::Ok};
                if (invio) {
                    Tasto(Qt::Key_Return);
                } else {
                    Clic("OKButton");
                }
                ASSERT_EQ(macchina.Mostrati.size(), 1u) << casella << " " << testo;
                EXPECT_EQ(macchina.Mostrati[0].Titolo, "Setup");
                EXPECT_EQ(Mostrati(),
                          V{lapvane::Testo(numero.Didascalia) + "\r\n" +
                            lapvane::Testo(Voce::NumeroNellIntervallo) +
                            (byte.contains(casella) ? " 0 ... 255" : " -32768 ... 32767")});
                EXPECT_TRUE(C<QLineEdit>(casella)->hasFocus());
                EXPECT_TRUE(finestra->isVisible());
            }
        }
        Scrivi(casella, settore ? "-2147483648" : "32767");
    }
    EXPECT_FALSE(DatiProgetto.chkAbilRecLap) << "nothing of a refused OK is stored";
    EXPECT_EQ(DatiProgetto.UMVel, 0);
    EXPECT_FALSE(ProgettoModificato);
    Scrivi("txtAbilRecVel", "12,5");
    Scrivi("txtStopRecSecondi", "13.5");
    Clic("OKButton");
    EXPECT_FALSE(finestra->isVisible());
    EXPECT_TRUE(DatiProgetto.chkAbilRecLap);
    EXPECT_EQ(DatiProgetto.UMVel, 1);
    EXPECT_EQ(DatiProgetto.mskAbilRecVel, 12);
    EXPECT_EQ(DatiProgetto.mskStopRecSecondi, 14);
    EXPECT_EQ(DatiProgetto.TempoMsgGiro, 32767);
    EXPECT_EQ(DatiProgetto.Settore5, std::numeric_limits<std::int32_t>::min());
    EXPECT_TRUE(ProgettoModificato);
}

TEST_F(Configurazione, IndexThatNoListHasShowsNothingAndIsStoredAsZero) {
    DatiProgetto.Lingua = 5;
    DatiProgetto.UMPress = -2;
    DatiProgetto.UMTemp = 1;
    DatiProgetto.PaginaAbilitata10 = true;
    Apri();
    EXPECT_EQ(C<QComboBox>("cboLingua")->currentIndex(), -1);
    Clic("OKButton");
    EXPECT_EQ(DatiProgetto.Lingua, 0);
    EXPECT_EQ(DatiProgetto.UMPress, 0);
    EXPECT_EQ(DatiProgetto.UMTemp, 1);
    EXPECT_TRUE(DatiProgetto.PaginaAbilitata10) << "saved back as it was";
}

TEST_F(Configurazione, ExchangesWhatItShowsAndLeavesTheProject) {
    Collega();
    Apri();
    C<QComboBox>("cboUMTemperatura")->setCurrentIndex(1);
    // What is no number is refused with the range of what travels; an empty box is sent as 0.
    Scrivi("txtTempoVisGiro", "");
    Scrivi("txtStopRecSecondi", "5 s");
    macchina.Risposte = {Answer::Ok};
    Clic("cmdInviaDati");
    EXPECT_EQ(Mostrati(), V{lapvane::Testo(Voce::ValoreNonInviabile) + "\r\n" +
                            lapvane::Testo(Voce::ArrestoDopo) + ": \"5 s\"\r\n" +
                            lapvane::Testo(Voce::NumeroNellIntervallo) + " 0 ... 255"});
    EXPECT_TRUE(C<QLineEdit>("txtStopRecSecondi")->hasFocus());
    // What does not fit is asked about, with what would arrive, and Cancel goes there.
    Scrivi("txtAbilRecVel", "300");
    Scrivi("txtStopRecSecondi", "300");
    Scrivi("txtSettoreCrono0", "70000");
    Scrivi("txtSettoreCrono4", "905");
    const std::string domanda =
        lapvane::Testo(Voce::ValoriFuoriCampo) + "\r\n" + lapvane::Testo(Voce::ArrestoDopo) +
        ": 300 (0 ... 255), " + lapvane::Testo(Voce::StrumentoRiceve) + " 44\r\n" +
        lapvane::Testo(Voce::Settore1) + ": 70000 (-32768 ... 32767), " +
        lapvane::Testo(Voce::StrumentoRiceve) + " 4464\r\n" + lapvane::Testo(Voce::InviareLoStesso);
    macchina.Risposte = {Answer::Cancel};
    Clic("cmdInviaDati");
    EXPECT_EQ(Mostrati(), V{domanda});
    EXPECT_TRUE(C<QLineEdit>("txtStopRecSecondi")->hasFocus());
    EXPECT_EQ(porta.RichiesteDi(18), 0u);
    VaiA(9);
    Clic("chkAbilitaPagina");
    macchina.Risposte = {Answer::Ok, Answer::Ok, Answer::Ok};
    principale.Storia.clear();
    Clic("cmdInviaDati");
    EXPECT_EQ(macchina.Mostrati[1].Titolo, lapvane::Testo(Voce::DomandaProgrammaImpostazioni));
    EXPECT_EQ(Mostrati(), (V{domanda,
                             lapvane::Testo(Voce::StrumentoSovrascritto) + "\r\n" +
                                 lapvane::Testo(Voce::Continuare),
                             lapvane::Testo(Voce::ImpostazioniTrasmesse)}));
    EXPECT_EQ(principale.Storia,
              (V{"3:" + lapvane::Testo(Voce::ProgrammazioneImpostazioni), "3:"}));
    EXPECT_EQ(apparecchio.Dati.Dati(Record::Setup1).substr(0, 10),
              std::string("\0\0\x01\0\0\x80\0\x2C\x01\x2C", 10));
    EXPECT_EQ(apparecchio.Dati.Dati(Record::Setup2).substr(0, 4), std::string("\0\0\x11\x70", 4));
    EXPECT_EQ(apparecchio.Dati.Dati(Record::Setup2).substr(10, 2), "\x03\x89");
    EXPECT_EQ(DatiProgetto.UMTemp, 0);
    EXPECT_FALSE(ProgettoModificato);

    Clic("chkAbilitaPagina");
    Scrivi("txtSettoreCrono4", "x");
    C<QComboBox>("cboUMTemperatura")->setCurrentIndex(0);
    macchina.Risposte = {Answer::Ok};
    Clic("cmdLeggiDati");
    EXPECT_EQ(macchina.Mostrati[0].Titolo, lapvane::Testo(Voce::DomandaLeggiImpostazioni));
    EXPECT_EQ(Mostrati(),
              V{lapvane::Testo(Voce::DatiSostituiti) + "\r\n" + lapvane::Testo(Voce::Continuare)});
    EXPECT_TRUE(C<QCheckBox>("chkAbilitaPagina")->isChecked()) << "the page on show follows";
    EXPECT_EQ(Anteprima()->size(), QSize(316, 158));
    EXPECT_EQ(Testo("txtSettoreCrono4"), "905");
    EXPECT_EQ(Testo("txtStopRecSecondi"), "44") << "one byte travels";
    EXPECT_EQ(C<QComboBox>("cboUMTemperatura")->currentIndex(), 1);
    EXPECT_EQ(DatiProgetto.Settore5, 0);
    Clic("OKButton");
    EXPECT_EQ(DatiProgetto.Settore5, 905);
    EXPECT_TRUE(DatiProgetto.PaginaAbilitata9);
}

TEST_F(Configurazione, AFailedExchangeIsNeverReportedAsDone) {
    Collega();
    Apri();
    // The cable goes with the first record, then with the second, then before both.
    for (const std::size_t frame : {1u, 2u, 0u}) {
        if (frame == 0) {
            porta.Sparisci();
        } else {
            porta.SparisciAlFrame = porta.Richieste().size() + frame;
        }
        macchina.BoxLiberi = true;
        macchina.Risposte = {Answer::Ok};
        Clic("cmdInviaDati");
        EXPECT_EQ(Mostrati().back(), lapvane::Testo(Voce::ErroreDiComunicazione)) << frame;
        EXPECT_EQ(FaseComunicazione, 0);
        EXPECT_TRUE(C<QPushButton>("OKButton")->isEnabled());
        porta.SparisciAlFrame = 0;
        porta.Riappari();
        Collega();
    }
    // The first record is not acknowledged, the second is.
    const std::size_t prima = porta.RichiesteDi(28);
    apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto("drop:18:1"));
    macchina.Risposte = {Answer::Ok};
    Clic("cmdInviaDati");
    EXPECT_EQ(porta.RichiesteDi(28), prima + 1);
    EXPECT_EQ(Mostrati().back(), lapvane::Testo(Voce::ErroreDiComunicazione));
}

TEST_F(Configurazione, ClosedBetweenTwoRecordsTheSecondStaysBehind) {
    Collega();
    Apri();
    macchina.Risposte = {Answer::Ok};
    macchina.DuranteEventi = [&] {
        if (FaseComunicazione != 0) finestra->close();
    };
    Clic("cmdInviaDati");
    macchina.DuranteEventi = nullptr;
    EXPECT_EQ(porta.RichiesteDi(18), 1u);
    EXPECT_EQ(porta.RichiesteDi(28), 0u);
    EXPECT_EQ(Mostrati().size(), 1u);
    EXPECT_EQ(FaseComunicazione, 0);
    EXPECT_FALSE(collegamento().Abbandonato);
}

TEST_F(Configurazione, ButtonsFollowTheInstrumentInTheWholeProgram) {
    auto unica = std::make_unique<strumento::SerialeStrumento>(
        apparecchio, [this] { return macchina.Orologio; },
        [this](int ms) { macchina.Orologio += ms; });
    strumento::SerialeStrumento& cavo = *unica;
    prova::Scrivi(macchina.Cartella / "RecentFiles.ini", "1\r\n");
    {
        frmMain programma(std::move(unica));
        programma.Carica();
        programma.show();
        ValoriInizialiProgetto();
        programma.AvviaSorveglianza();
        for (const auto& [chiave, nome] : {std::pair{"Toolbar1_Setup", "frmConfigurazione"},
                                           {"Toolbar1_Sensor", "frmSensori"},
                                           {"Toolbar1_Alarm", "frmAllarmi"}}) {
            bool visto = false;
            QTimer::singleShot(0, [&, nome = nome] {
                auto* dialogo = QApplication::activeModalWidget();
                ASSERT_NE(dialogo, nullptr);
                EXPECT_EQ(FormAttiva->Nome(), nome);
                auto* invia = prova::Controllo<QPushButton>(*dialogo, "cmdInviaDati");
                for (const bool collegato : {true, false, true}) {
                    if (collegato) {
                        cavo.Riappari();
                    } else {
                        cavo.Sparisci();
                    }
                    EXPECT_TRUE(
                        QTest::qWaitFor([&] { return invia->isEnabled() == collegato; }, 5000))
                        << nome << collegato;
                }
                visto = true;
                QTest::keyClick(dialogo, Qt::Key_Escape);
            });
            QTest::mouseClick(prova::Controllo<QToolButton>(programma, chiave), Qt::LeftButton);
            EXPECT_TRUE(visto);
            EXPECT_EQ(FormAttiva, nullptr);
        }
    }
}

TEST_F(Configurazione, FitsTheScreenInBothLanguages) {
    EntraNelloSchermo();
}

}  // namespace
}  // namespace lapvane
