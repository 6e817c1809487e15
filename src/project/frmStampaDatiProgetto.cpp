#include "project/frmStampaDatiProgetto.h"

#include <QDate>
#include <QFrame>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/TabelleNomi.h"
#include "widgets/Stampante.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr double kPixelPollice = 96.0;
constexpr double kMargineFoglio = 75.6;  // 2 cm, in pixels as the next
constexpr int kLarghezzaFoglio = 642;    // 17 cm: between the margins of A4 and of Letter
constexpr Voce kTestoStampa = Voce::Stampa;
constexpr int kBordo = 24;
constexpr int kRientroGruppo = 16;  // of what belongs to a heading of the second order

/// Width and height of the paper, pixels of 1/96 inch.
QSizeF Carta() {
    return QtPrinter::Carta().size(QPageSize::Inch) * kPixelPollice;
}

std::string VoceDi(const std::vector<std::string>& lista, int indice) {
    return indice >= 0 && indice < static_cast<int>(lista.size())
               ? lista[static_cast<std::size_t>(indice)]
               : std::string();
}

/// Numbers of the enabled pages joined by two blanks.
std::string PagineAbilitate() {
    const RecordProgetto& p = DatiProgetto;
    const bool pagine[] = {p.PaginaAbilitata1, p.PaginaAbilitata2, p.PaginaAbilitata3,
                           p.PaginaAbilitata4, p.PaginaAbilitata5, p.PaginaAbilitata6,
                           p.PaginaAbilitata7, p.PaginaAbilitata8, p.PaginaAbilitata9,
                           p.PaginaAbilitata10};
    std::string testo;
    for (std::size_t i = 0; i < std::size(pagine); ++i) {
        if (!pagine[i]) continue;
        if (!testo.empty()) testo += "  ";
        testo += TestoNumero(static_cast<int>(i) + 1);
    }
    return testo;
}

}  // namespace

frmStampaDatiProgetto::frmStampaDatiProgetto(QWidget* parent)
    : Dialogo("frmStampaDatiProgetto", parent) {
    setWindowTitle(InQt(Testo(kTestoStampa)));
    auto* const foglio = new QFrame(this);
    foglio->setFrameShape(QFrame::StyledPanel);
    foglio_ = foglio;
    foglio_->setPalette(PalettaDi(Tema::Chiaro));  // it is the paper
    foglio_->setFixedWidth(kLarghezzaFoglio);
    foglio_->setBackgroundRole(QPalette::Base);
    foglio_->setAutoFillBackground(true);
    griglia_ = new QGridLayout(foglio_);
    griglia_->setContentsMargins(kBordo, kBordo, kBordo, kBordo);
    griglia_->setVerticalSpacing(6);
    griglia_->setHorizontalSpacing(24);
    griglia_->setColumnStretch(1, 1);

    const RecordProgetto& p = DatiProgetto;
    Titolo("lblProgetto", Testo(Voce::MenuProgetto), Scrittura::Piccola);
    Titolo("lblNomeProgetto", p.NomeProgetto, Scrittura::Testa);
    Linea();
    Titolo("lblConfigurazione", Testo(Voce::MenuConfigurazione), Scrittura::Titolo);
    Riga("lblLinguaDisplay", Voce::LinguaDisplay, "lblValLinguaDisplay",
         VoceDi(ListaLingue, p.Lingua));
    Riga("lblUMVelocita", Voce::UnitaVelocita, "lblValUMVel", VoceDi(ListaUMVelocita, p.UMVel));
    Riga("lblUMPressione", Voce::UnitaPressione, "lblValUMPress",
         VoceDi(ListaUMPressione, p.UMPress));
    Riga("lblUMTemperatura", Voce::UnitaTemperatura, "lblValUMTemp",
         VoceDi(ListaUMTemperatura, p.UMTemp));
    Riga("lblPagineAbilitate", Voce::AbilitazionePagine, "lblValPagineAbilitate",
         PagineAbilitate());
    Linea();
    Titolo("lblSensori", Testo(Voce::VoceSensori), Scrittura::Titolo);
    Titolo("lblVelocitaVettura", Testo(Voce::CorniceVelocitaVettura), Scrittura::Forte);
    Riga("lblNumImpulsi", Voce::ImpulsiRuota, "lblValNumImpulsi", TestoNumero(int{p.ImpulsiRuota}));
    Riga("lblDiametroRuota", Voce::DiametroRuota, "lblValDiametroRuota",
         TestoNumero(int{p.DiametroRuota}));
    Riga("lblTCVV", Voce::FrequenzaCampionamento, "lblValTCVV", p.TCampVV);
    Titolo("lblRPM", Testo(Voce::CorniceGiriMotore), Scrittura::Forte);
    Riga("lblNumAcc", Voce::AccensioniPerGiro, "lblValNumAcc", TestoNumero(int{p.NumAccRPM}));
    Riga("lblTCRPM", Voce::FrequenzaCampionamento, "lblValTCRPM", p.TCampRPM);
    Titolo("lblTemperOlio", Testo(Voce::TemperaturaOlio), Scrittura::Forte);
    Riga("lblNomeTO", Voce::NomeSensore, "lblValNomeTO", p.TemperaturaOlio);
    Titolo("lblPressOlio", Testo(Voce::PressioneOlio), Scrittura::Forte);
    Riga("lblNomePO", Voce::NomeSensore, "lblValNomePO", p.PressioneOlio);
    Linea();
    Titolo("lblStampatoIl",
           DaQt(InQt(Testo(Voce::StampatoIl))
                    .arg(QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")))),
           Scrittura::Piccola);
    griglia_->setRowStretch(riga_, 1);

    Mnemonica lettere;
    auto* cmdPreview = CreaPulsante("cmdPreview", [this] { cmdPreview_Click(); });
    cmdPreview->setText(lettere.Con(InQt(Testo(Voce::Anteprima))));
    auto* cmdPrint = CreaPulsante("cmdPrint", [this] { cmdPrint_Click(); });
    cmdPrint->setText(lettere.Con(InQt(Testo(kTestoStampa))));
    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(foglio_, 1);
    colonna->addLayout(RigaPulsanti(nullptr, {cmdPreview, cmdPrint}));
    ApriStampante = [] { return ScegliStampante(Testo(kTestoStampa), "project.pdf"); };
}

void frmStampaDatiProgetto::Titolo(const char* nome, const std::string& testo,
                                   Scrittura scrittura) {
    QLabel* etichetta = Etichetta(foglio_, nome);
    etichetta->setText(InQt(testo));
    etichetta->setTextFormat(Qt::PlainText);
    etichetta->setWordWrap(scrittura == Scrittura::Testa);
    etichetta->setFont(Carattere(*this, scrittura));
    if (scrittura == Scrittura::Piccola) etichetta->setForegroundRole(QPalette::PlaceholderText);
    // Room above a heading, below the name.
    if (scrittura == Scrittura::Titolo || scrittura == Scrittura::Forte) {
        etichetta->setContentsMargins(0, kSpazio / 2, 0, 0);
    }
    griglia_->addWidget(etichetta, riga_++, 0, 1, 2);
}

void frmStampaDatiProgetto::Riga(const char* etichetta, Voce testo, const char* valore,
                                 const std::string& contenuto) {
    QLabel* nome = Etichetta(foglio_, etichetta);
    nome->setText(InQt(Testo(testo) + " :"));
    QLabel* dato = Etichetta(foglio_, valore);
    dato->setText(InQt(contenuto));
    for (QLabel* const quale : {nome, dato}) quale->setTextFormat(Qt::PlainText);
    nome->setForegroundRole(QPalette::PlaceholderText);
    nome->setContentsMargins(kRientroGruppo, 0, 0, 0);
    griglia_->addWidget(nome, riga_, 0);
    griglia_->addWidget(dato, riga_, 1);
    ++riga_;
}

void frmStampaDatiProgetto::Linea() {
    auto* linea = new QFrame(foglio_);
    linea->setFrameShape(QFrame::HLine);
    griglia_->addWidget(linea, riga_++, 0, 1, 2);
}

void frmStampaDatiProgetto::Pagina(QPainter& penna, double margineX, double margineY) const {
    if (foglio_->layout() != nullptr) foglio_->layout()->activate();
    const QPen filo(Qt::black, 0.8);
    penna.setPen(filo);
    const QPointF margine(margineX, margineY);
    penna.drawRect(QRectF(margine, QSizeF(foglio_->size())));
    const auto controlli = foglio_->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    for (const QWidget* const controllo : controlli) {
        const QRectF posto = QRectF(controllo->geometry()).translated(margine);
        if (const auto* etichetta = qobject_cast<const QLabel*>(controllo)) {
            penna.setFont(etichetta->font());
            penna.setPen(etichetta->palette().color(etichetta->foregroundRole()));
            penna.drawText(posto.marginsRemoved(QMarginsF(etichetta->contentsMargins())),
                           Qt::AlignLeft | Qt::AlignVCenter |
                               (etichetta->wordWrap() ? Qt::TextWordWrap : Qt::TextSingleLine),
                           etichetta->text());
        } else if (const auto* linea = qobject_cast<const QFrame*>(controllo)) {
            if (linea->frameShape() == QFrame::HLine) {
                penna.setPen(filo);
                penna.drawLine(QPointF(posto.left(), posto.center().y()),
                               QPointF(posto.right(), posto.center().y()));
            }
        }
    }
}

void frmStampaDatiProgetto::cmdPreview_Click() {
    auto* anteprima = new frmSupportoStampa(
        [this](QPainter& penna) { Pagina(penna, kMargineFoglio, kMargineFoglio); }, this);
    anteprima->setAttribute(Qt::WA_DeleteOnClose);
    anteprima->show();
}

void frmStampaDatiProgetto::cmdPrint_Click() {
    const auto stampante = ApriStampante();
    if (!stampante) return;
    struct Occupato {
        Occupato() { platform().MousePointer(Pointer::Busy); }
        ~Occupato() { platform().MousePointer(Pointer::Normal); }
    } const occupato;
    stampante->NewPage();
    Pagina(stampante->Penna(), kMargineFoglio, kMargineFoglio);
    stampante->EndDoc();
}

frmSupportoStampa::frmSupportoStampa(std::function<void(QPainter&)> disegna, QWidget* parent)
    : Dialogo("frmSupportoStampa", parent), disegna_(std::move(disegna)) {
    setWindowTitle(parent != nullptr ? parent->windowTitle() : QString());
    resize(NelloSchermo(*this, {520, 700}));
}

void frmSupportoStampa::paintEvent(QPaintEvent*) {
    QPainter penna(this);
    const QSizeF carta = Carta();
    const double bordo = 2.0 * kSpazioGruppi;
    const double scala =
        std::min((width() - bordo) / carta.width(), (height() - bordo) / carta.height());
    penna.translate((width() - carta.width() * scala) / 2.0,
                    (height() - carta.height() * scala) / 2.0);
    penna.scale(scala, scala);
    penna.setRenderHint(QPainter::Antialiasing);
    penna.setPen(ColoriDi(*this).Line);
    penna.setBrush(Qt::white);
    penna.drawRect(QRectF(QPointF(), carta));
    disegna_(penna);
}

}  // namespace lapvane
