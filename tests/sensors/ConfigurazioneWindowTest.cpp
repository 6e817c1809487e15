#include "sensors/Configurazione.h"

#include "sensors/EditorWindowProva.h"
#include "sensors/frmConfigurazione.h"
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
    auto* avanti = C<QPushButton>("cmdNextPage");
    auto* indietro = C<QPushButton>("cmdPrevPage");
    for (int n = 1; n <= 9; ++n) {
        const bool estrema = n == 1 || n == 9;
        EXPECT_EQ(Pagina(), " " + std::to_string(n) + "/ 9");
        EXPECT_EQ(indietro->isEnabled(), n > 1) << n;
        EXPECT_EQ(avanti->isEnabled(), n < 9) << n;
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
        Clic("cmdNextPage");
    }
    EXPECT_EQ(Testo("txtFilePagina"), DatiProgetto.Pagina8) << "the last page names that of page 8";
    EXPECT_TRUE(indietro->hasFocus()) << "its twin has gone off under the hand";
    for (int n = 8; n >= 1; --n) Clic("cmdPrevPage");
    EXPECT_TRUE(avanti->hasFocus());
    // The strip goes the way of the buttons, by mouse and by keys, and marks what is on.
    auto* striscia = finestra->findChild<StrisciaPagine*>();
    QTest::mouseClick(striscia, Qt::LeftButton, {}, striscia->Posto(7).center());
    EXPECT_EQ(Pagina(), " 7/ 9");
    QTest::keyClick(striscia, Qt::Key_End);
    EXPECT_EQ(Pagina(), " 9/ 9");
    VaiA(2);
    const QImage spuntata = striscia->grab(striscia->Posto(2)).toImage();
    Clic("chkAbilitaPagina");
    EXPECT_NE(striscia->grab(striscia->Posto(2)).toImage(), spuntata);
    EXPECT_EQ(Anteprima()->size(), QSize(128, 64));
    VaiA(3);
    const auto dipinta = [&](const QSize& misura) {
        return Anteprima()->grab().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied) ==
               ImmaginePagina::Adatta(Consegnata(3), misura);
    };
    EXPECT_TRUE(dipinta({128, 64}));
    Clic("chkAbilitaPagina");
    EXPECT_TRUE(dipinta({316, 158}));
    EXPECT_TRUE(DatiProgetto.PaginaAbilitata2);
    Clic("OKButton");
    EXPECT_FALSE(DatiProgetto.PaginaAbilitata2);
    EXPECT_TRUE(DatiProgetto.PaginaAbilitata3);

    DatiProgetto.MaxPagine = 10;  // one more than there are pictures
    DatiProgetto.Lingua = 5;      // of no list
    DatiProgetto.PaginaAbilitata10 = DatiProgetto.chkAbilRecLap = true;
    Apri();
    EXPECT_TRUE(C<QCheckBox>("chkAbilRecLAP")->isChecked());
    VaiA(10);
    EXPECT_EQ(Pagina(), " 10/ 10");
    EXPECT_TRUE(Anteprima()->Immagine().isNull());
    Clic("OKButton");
    EXPECT_EQ(DatiProgetto.Lingua, 0);
    EXPECT_TRUE(DatiProgetto.PaginaAbilitata10) << "saved back as it was";
}

TEST_F(Configurazione, PicturesAreChosenAtOnceAndBadOnesLeaveAHole) {
    const fs::path rossa = Tinta("rossa.bmp", {128, 64}, Qt::red);
    const fs::path blu = Tinta("blu.png", {300, 20}, Qt::blue);  // a BMP all the same
    const fs::path enorme = Tinta("enorme.bmp", {5000, 4000}, Qt::red);
    const fs::path testo = macchina.Cartella / "testo.bmp";
    prova::Scrivi(testo, "this is no picture");
    Apri();
    Scegli(std::nullopt);
    EXPECT_EQ(Anteprima()->Immagine(), Consegnata(1));
    Scegli(rossa);
    EXPECT_EQ(macchina.RichiesteFile.back().Title, Dice(Voce::Pagina) + " 1");
    EXPECT_EQ(macchina.RichiesteFile.back().Filter, "Display Page File (*.bmp)|*.bmp");
    EXPECT_EQ(macchina.RichiesteFile.back().Folder, macchina.Cartella);
    EXPECT_EQ(DatiProgetto.Pagina1, rossa.string()) << "whether or not OK follows";
    EXPECT_EQ(Testo("txtFilePagina"), "") << "until the page is shown again";
    EXPECT_EQ(Anteprima()->Immagine().pixelColor(1, 1), QColor(Qt::red));
    EXPECT_EQ(Anteprima()->grab().toImage().pixelColor(9, 9), QColor(Qt::red));
    VaiA(9);
    Scegli(blu);
    EXPECT_EQ(Anteprima()->Immagine().pixelColor(1, 1), QColor(Qt::blue));
    EXPECT_EQ(Anteprima()->grab().toImage().pixelColor(9, 9), QColor(Qt::blue));
    EXPECT_EQ(DatiProgetto.Pagina9, blu.string());
    VaiA(1);
    EXPECT_EQ(Testo("txtFilePagina"), rossa.string());
    EXPECT_EQ(C<QLineEdit>("txtFilePagina")->toolTip().toStdString(), rossa.string());
    for (const fs::path& cattivo : {testo, enorme, macchina.Cartella / "nessuno.bmp",
                                    macchina.Cartella, fs::path("/dev/zero")}) {
        Scegli(cattivo);
        EXPECT_TRUE(Anteprima()->Immagine().isNull()) << cattivo;
        EXPECT_EQ(DatiProgetto.Pagina1, rossa.string()) << cattivo;
    }
    const QImage assente = Anteprima()->grab(QRect(20, 8, 88, 48)).toImage();
    EXPECT_NE(assente, QImage(assente).scaled(1, 1).scaled(assente.size())) << "said in words";

    for (const std::string& cattivo : {enorme.string(), testo.string(), std::string("/x/y.bmp")}) {
        DatiProgetto.Pagina1 = cattivo;
        Apri();
        EXPECT_TRUE(Anteprima()->Immagine().isNull()) << cattivo;
        EXPECT_EQ(Testo("txtFilePagina"), cattivo);
        VaiA(9);
        EXPECT_EQ(Anteprima()->Immagine(), Consegnata(9)) << "nothing reads what page 9 was given";
    }
    fs::remove_all(macchina.Cartella / "pages");
    Apri();
    VaiA(5);
    EXPECT_TRUE(Anteprima()->Immagine().isNull());
    EXPECT_EQ(Mostrati(), V{});
}

TEST_F(Configurazione, PreviewKeepsItsDotsSharpAndPhotographsSmooth) {
    const auto liscia = [](const QImage& immagine, const QSize& misura) {
        return immagine.scaled(misura, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage pagina = Consegnata(2);
    for (const int volte : {1, 2, 3}) {
        const QSize misura = pagina.size() * volte;
        EXPECT_EQ(ImmaginePagina::Adatta(pagina, misura), pagina.scaled(misura)) << volte;
    }
    const QSize grande = ImmaginePagina::kGrande;
    EXPECT_EQ(ImmaginePagina::Adatta(pagina, grande).size(), grande);
    EXPECT_NE(ImmaginePagina::Adatta(pagina, grande), liscia(pagina, grande));
    const QImage foto = pagina.scaled(600, 60);
    EXPECT_EQ(ImmaginePagina::Adatta(foto, {700, 90}), liscia(foto, {700, 90}));
    // What is kept of a large one is enough for a screen at four times.
    QImage larga(2000, 1500, QImage::Format_RGB888);
    larga.fill(Qt::red);
    const fs::path file = macchina.Cartella / "larga.bmp";
    ASSERT_TRUE(larga.save(QString::fromStdString(file.string())));
    EXPECT_EQ(ImmaginePagina::Carica(file).size(), QSize(1264, 632));
}

TEST_F(Configurazione, RefusesWhatIsNoNumberOfABoxBeforeStoringAnything) {
    Collega();
    Apri();
    Clic("chkAbilRecLAP");
    EXPECT_EQ(DaQt(C<QLabel>("lblUnitaRecVel")->text()), "Km/h");
    C<QComboBox>("cboUMVelocita")->setCurrentIndex(1);
    EXPECT_EQ(DaQt(C<QLabel>("lblUnitaRecVel")->text()), "mph");
    const std::set<std::string> byte = {"txtStopRecSecondi", "txtTempoMsgGiro", "txtTempoVisGiro"};
    for (const NumeroSetup& numero : kNumeriSetup) {
        const std::string casella(numero.Casella);
        for (const char* testo : {"", "12 m", numero.Lungo ? "2147483648" : "32768"}) {
            Scrivi(casella, testo);
            Tasto(Qt::Key_Tab);  // no check on leaving
            EXPECT_EQ(Testo(casella), testo);
            EXPECT_EQ(Mostrati(), V{});
            EXPECT_EQ(Scritta("lblAvvisi").starts_with(Dice(numero.Didascalia)), *testo != 0);
            macchina.Risposte = {Answer::Ok};
            Clic("OKButton");
            ASSERT_EQ(macchina.Mostrati.size(), 1u) << casella << " " << testo;
            EXPECT_EQ(macchina.Mostrati[0].Titolo, "Setup");
            EXPECT_EQ(Mostrati(),
                      V{Dice(numero.Didascalia) + "\r\n" + Dice(Voce::NumeroNellIntervallo) +
                        (byte.contains(casella) ? " 0 ... 255" : " -32768 ... 32767")});
            EXPECT_TRUE(C<QLineEdit>(casella)->hasFocus());
            EXPECT_TRUE(finestra->isVisible());
        }
        Scrivi(casella, numero.Lungo ? "-2147483648" : "32767");
    }
    EXPECT_FALSE(DatiProgetto.chkAbilRecLap) << "nothing of a refused OK is stored";
    EXPECT_EQ(DatiProgetto.UMVel, 0);
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
}

TEST_F(Configurazione, ExchangesWhatItShowsWithItsPages) {
    Collega();
    Apri();
    C<QComboBox>("cboUMTemperatura")->setCurrentIndex(1);
    // What is no number is refused, what does not fit is asked about, and Cancel goes there.
    for (const auto& [testo, domanda] :
         {std::pair{"5 s", Voce::ValoreNonInviabile}, {"300", Voce::ValoriFuoriCampo}}) {
        Scrivi("txtStopRecSecondi", testo);
        macchina.Risposte = {Answer::Cancel};
        Clic("cmdInviaDati");
        const V mostrati = Mostrati();
        ASSERT_EQ(mostrati.size(), 1u);
        EXPECT_TRUE(mostrati[0].starts_with(Dice(domanda))) << mostrati[0];
        EXPECT_TRUE(C<QLineEdit>("txtStopRecSecondi")->hasFocus());
        EXPECT_EQ(DaQt(C<QLineEdit>("txtStopRecSecondi")->selectedText()), testo);
        EXPECT_EQ(porta.RichiesteDi(18), 0u);
    }
    Scrivi("txtSettoreCrono4", "905");
    VaiA(9);
    Clic("chkAbilitaPagina");
    macchina.Risposte = {Answer::Ok, Answer::Ok, Answer::Ok};
    const std::int64_t dormito = macchina.Dormito;
    Clic("cmdInviaDati");
    EXPECT_EQ(Mostrati().size(), 3u);
    EXPECT_EQ(macchina.Dormito - dormito, 50) << "between the two records";
    Clic("chkAbilitaPagina");
    Scrivi("txtSettoreCrono4", "x");
    C<QComboBox>("cboUMTemperatura")->setCurrentIndex(0);
    macchina.Risposte = {Answer::Ok};
    Clic("cmdLeggiDati");
    EXPECT_EQ(Mostrati().size(), 1u);
    EXPECT_TRUE(C<QCheckBox>("chkAbilitaPagina")->isChecked()) << "the page on show follows";
    EXPECT_EQ(Anteprima()->size(), QSize(316, 158));
    EXPECT_EQ(Testo("txtStopRecSecondi"), "44") << "one byte travels";
    Clic("OKButton");
    EXPECT_EQ(DatiProgetto.Settore5, 905);
    EXPECT_TRUE(DatiProgetto.PaginaAbilitata9);
}

// The cable goes with the first of the two records, with the second; then the first is not
// acknowledged, the second is.
TEST_F(Configurazione, OfTwoRecordsBothMustArrive) {
    Apri();
    for (const std::size_t frame : {1u, 2u, 0u}) {
        Collega();
        const std::size_t prima = porta.RichiesteDi(28);
        if (frame == 0) Guasta("drop:18:1");
        if (frame != 0) porta.SparisciAlFrame = porta.Richieste().size() + frame;
        macchina.BoxLiberi = true;
        macchina.Risposte = {Answer::Ok};
        Clic("cmdInviaDati");
        EXPECT_EQ(Mostrati().back(), Dice(Voce::ErroreDiComunicazione)) << frame;
        EXPECT_TRUE(ErroreComunicazione);
        EXPECT_EQ(porta.RichiesteDi(28) - prima, frame == 1 ? 0u : 1u) << frame;
        porta.SparisciAlFrame = 0;
        porta.Riappari();
    }
}

}  // namespace
}  // namespace lapvane
