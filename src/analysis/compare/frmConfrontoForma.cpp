// How the comparison is laid out.
#include "analysis/compare/frmConfronto.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "analysis/compare/DisegnoElenco.h"
#include "analysis/compare/DisegnoIstogramma.h"
#include "analysis/compare/DisegnoMappa.h"
#include "analysis/compare/DisegnoParti.h"
#include "analysis/compare/DisegnoQuadri.h"
#include "analysis/compare/DisegnoValori.h"
#include "analysis/compare/DisegnoXY.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "widgets/BarraTasti.h"
#include "widgets/Scheda.h"
#include "widgets/StrisciaAvviso.h"
#include "widgets/style/Icone.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Stile.h"

namespace lapvane {

namespace {

constexpr int kStretta = 1280;  // width below which the right side folds into tabs
constexpr int kSinistra = 268;
constexpr int kDestra = 298;
constexpr int kSinistraMinima = 220;
constexpr int kDestraMinima = 240;
constexpr int kListaStretta = 90;
constexpr int kAltezzaRisposta = 40;
constexpr int kSchedaGrafico = 0;
constexpr int kSchedaXY = 1;
constexpr int kSchedaIstogramma = 2;

/// Two buttons of which one is pressed.
QWidget* Coppia(QPushButton*& una, QPushButton*& altra, const char* nomeUna,
                const char* nomeAltra) {
    auto* posto = new QWidget;
    auto* riga = new QHBoxLayout(posto);
    riga->setContentsMargins(0, 0, 0, 0);
    riga->setSpacing(0);
    auto* gruppo = new QButtonGroup(posto);
    for (auto& [pulsante, nome] : {std::pair{&una, nomeUna}, std::pair{&altra, nomeAltra}}) {
        *pulsante = new QPushButton(posto);
        (*pulsante)->setObjectName(QLatin1String(nome));
        (*pulsante)->setCheckable(true);
        (*pulsante)->setAutoDefault(false);
        gruppo->addButton(*pulsante);
        riga->addWidget(*pulsante);
    }
    Segmenti({una, altra});
    una->setChecked(true);
    return posto;
}

/// A list that gives way where the window is narrow.
QComboBox* Lista(const char* nome) {
    auto* lista = new QComboBox;
    lista->setObjectName(QLatin1String(nome));
    lista->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    lista->setMinimumWidth(kListaStretta);
    return lista;
}

/// A hint below a row.
QLabel* Accenno(QWidget* dove, const char* nome) {
    QLabel* accenno = Etichetta(dove, nome);
    accenno->setForegroundRole(QPalette::PlaceholderText);
    accenno->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    accenno->setContentsMargins(12, 0, 12, 0);
    return accenno;
}

void Sotto(QWidget* pagina, QLabel* accenno) {
    static_cast<QVBoxLayout*>(pagina->layout())->insertWidget(1, accenno);
}

/// The page of a drawing, and the row above it for what chooses what is drawn.
std::pair<QWidget*, QHBoxLayout*> Pagina(QWidget* disegno) {
    auto* pagina = new QWidget;
    pagina->setBackgroundRole(QPalette::Base);
    pagina->setAutoFillBackground(true);
    auto* riga = new QHBoxLayout;
    riga->setContentsMargins(12, kSpazio, 12, kSpazio);
    riga->setSpacing(kSpazio);
    auto* colonna = new QVBoxLayout(pagina);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->setSpacing(0);
    colonna->addLayout(riga);
    colonna->addWidget(disegno, 1);
    return {pagina, riga};
}

}  // namespace

void frmConfronto::Disponi() {
    divisore_ = new QSplitter(Qt::Horizontal);
    divisore_->setObjectName(QStringLiteral("divisore"));
    divisore_->setChildrenCollapsible(false);
    divisore_->addWidget(CreaSinistra());
    divisore_->addWidget(CreaCentro());
    divisore_->addWidget(CreaDestra());
    divisore_->setStretchFactor(0, 0);
    divisore_->setStretchFactor(1, 1);
    divisore_->setStretchFactor(2, 0);
    const Misure misure(*this);
    divisore_->setSizes({misure.Largo(kSinistra), 768, misure.Largo(kDestra)});
    auto* corpo = new QHBoxLayout;
    corpo->setContentsMargins(kMargineFinestra, kMargineFinestra, kMargineFinestra,
                              kMargineFinestra);
    corpo->addWidget(divisore_);

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->setSpacing(0);
    barra_ = CreaBarra();
    colonna->addWidget(barra_);
    colonna->addWidget(CreaRisposta());
    colonna->addWidget(avviso_);
    colonna->addLayout(corpo, 1);
    colonna->addWidget(CreaStato());
}

BarraTasti* frmConfronto::CreaBarra() {
    barra_ = new BarraTasti(this);
    barra_->Aggiungi("ApriLog", Voce::ApriLogConfronto, "Ctrl+O", [this] { cmdApri_Click(); });
    barra_->Aggiungi("TogliLog", Voce::TogliLog, "Ctrl+Del", [this] { cmdTogli_Click(); });
    barra_->addSeparator();
    lblAsse_ = Etichetta(barra_, "lblAsse");
    barra_->Spazio();
    barra_->addWidget(lblAsse_);
    barra_->Spazio();
    barra_->addWidget(Coppia(optDistanza_, optTempo_, "optDistanza", "optTempo"));
    barra_->Spazio();
    cboParti_ = Lista("cboParti");
    lblParti_ = Etichetta(barra_, "lblParti", cboParti_);
    barra_->addWidget(lblParti_);
    barra_->Spazio();
    barra_->addWidget(cboParti_);
    barra_->Spazio();
    barra_->addSeparator();
    barra_->Aggiungi("TuttoIlGiro", Voce::TuttoIlGiro, "Ctrl+0", [this] { grafico_->VediTutto(); });
    barra_->addSeparator();
    barra_->Aggiungi("CopiaImmagine", Voce::CopiaImmagine, "Ctrl+C", [this] { CopiaImmagine(); });
    barra_->Aggiungi("CopiaTabelle", Voce::CopiaTabelle, "Ctrl+Shift+C",
                     [this] { CopiaTabelle(); });
    barra_->Aggiungi("SalvaImmagine", Voce::SalvaImmagine, "Ctrl+S", [this] { SalvaImmagine(); });
    barra_->Aggiungi("StampaConfronto", Voce::StampaConfronto, "Ctrl+P", [this] { Stampa(); });
    barra_->Aggiungi("SalvaCsv", Voce::SalvaCsvConfronto, "Ctrl+E", [this] { SalvaCsv(); });
    return barra_;
}

/// The answer in words, with the parts where most is lost as buttons; below it, when there is one,
/// what could not be done.
QWidget* frmConfronto::CreaRisposta() {
    auto* posto = new QWidget;
    posto->setObjectName(QStringLiteral("risposta"));
    posto->setBackgroundRole(QPalette::Base);
    posto->setAutoFillBackground(true);
    posto->setMinimumHeight(kAltezzaRisposta);
    auto* riga = new QHBoxLayout(posto);
    riga->setContentsMargins(12, 4, 12, 4);
    riga->setSpacing(kSpazio);
    lblRisposta_ = new QLabel;
    lblRisposta_->setObjectName(QStringLiteral("lblRisposta"));
    lblRisposta_->setTextFormat(Qt::RichText);
    lblRisposta_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    riga->addWidget(lblRisposta_);
    for (std::size_t i = 0; i < cmdParte_.size(); ++i) {
        cmdParte_[i] = new QPushButton;
        cmdParte_[i]->setObjectName(QStringLiteral("cmdParte%1").arg(i));
        cmdParte_[i]->setAutoDefault(false);
        riga->addWidget(cmdParte_[i]);
    }
    riga->addStretch(1);
    lblIdeale_ = new QLabel;
    lblIdeale_->setObjectName(QStringLiteral("lblIdeale"));
    lblIdeale_->setTextFormat(Qt::RichText);
    riga->addWidget(lblIdeale_);
    avviso_ = new StrisciaAvviso;
    return posto;
}

QWidget* frmConfronto::CreaSinistra() {
    schedaGiri_ = new Scheda("schedaGiri");
    lstGiri_ = new DisegnoElenco("lstGiri");
    schedaGiri_->Contenuto()->addWidget(lstGiri_, 1);
    cmdApri_ = CreaPulsante("cmdApri", [this] { cmdApri_Click(); });
    schedaGiri_->Contenuto()->addWidget(cmdApri_, 0, Qt::AlignHCenter);

    schedaQuadri_ = new Scheda("schedaQuadri");
    lstQuadri_ = new DisegnoElenco("lstQuadri");
    schedaQuadri_->Contenuto()->addWidget(lstQuadri_, 1);

    auto* divisore = new QSplitter(Qt::Vertical);
    divisore->setChildrenCollapsible(false);
    divisore->addWidget(schedaGiri_);
    divisore->addWidget(schedaQuadri_);
    divisore->setSizes({386, 220});
    elenchi_ = divisore;

    sinistra_ = new QTabWidget;
    sinistra_->setObjectName(QStringLiteral("sinistra"));
    sinistra_->setDocumentMode(true);
    sinistra_->addTab(elenchi_, QString());
    sinistra_->tabBar()->hide();
    sinistra_->setMinimumWidth(Misure(*this).Largo(kSinistraMinima));
    return sinistra_;
}

QWidget* frmConfronto::CreaCentro() {
    grafico_ = new DisegnoQuadri;
    grafico_->setObjectName(QStringLiteral("grafico"));
    schede_ = new QTabWidget;
    schede_->setObjectName(QStringLiteral("schede"));
    schede_->setDocumentMode(true);
    schede_->addTab(grafico_, QString());
    schede_->addTab(CreaSchedaXY(), QString());
    schede_->addTab(CreaSchedaIstogramma(), QString());
    schedaParti_ = new Scheda("schedaParti");
    parti_ = new DisegnoParti;
    parti_->setObjectName(QStringLiteral("parti"));
    schedaParti_->Contenuto()->addWidget(parti_, 1);
    auto* divisore = new QSplitter(Qt::Vertical);
    divisore->setChildrenCollapsible(false);
    divisore->addWidget(schede_);
    divisore->addWidget(schedaParti_);
    // A taller window shows more laps as well.
    divisore->setStretchFactor(0, 3);
    divisore->setStretchFactor(1, 1);
    divisore->setSizes({420, 190});
    return divisore;
}

QWidget* frmConfronto::CreaSchedaXY() {
    xy_ = new DisegnoXY;
    xy_->setObjectName(QStringLiteral("xy"));
    const auto [pagina, riga] = Pagina(xy_);
    cboX_ = Lista("cboX");
    cboY_ = Lista("cboY");
    lblX_ = Etichetta(pagina, "lblX", cboX_);
    lblY_ = Etichetta(pagina, "lblY", cboY_);
    lblTrattoXY_ = Accenno(pagina, "lblTrattoXY");
    riga->addWidget(lblX_);
    riga->addWidget(cboX_);
    riga->addWidget(lblY_);
    riga->addWidget(cboY_);
    riga->addWidget(Coppia(optPunti_, optLinea_, "optPunti", "optLinea"));
    riga->addStretch(1);
    Sotto(pagina, lblTrattoXY_);
    return pagina;
}

QWidget* frmConfronto::CreaSchedaIstogramma() {
    istogramma_ = new DisegnoIstogramma;
    istogramma_->setObjectName(QStringLiteral("istogramma"));
    const auto [pagina, riga] = Pagina(istogramma_);
    cboCanale_ = Lista("cboCanale");
    cboFasce_ = Lista("cboFasce");
    lblCanale_ = Etichetta(pagina, "lblCanale", cboCanale_);
    lblFasce_ = Etichetta(pagina, "lblFasce", cboFasce_);
    lblTrattoFasce_ = Accenno(pagina, "lblTrattoFasce");
    riga->addWidget(lblCanale_);
    riga->addWidget(cboCanale_);
    riga->addWidget(lblFasce_);
    riga->addWidget(cboFasce_);
    riga->addStretch(1);
    Sotto(pagina, lblTrattoFasce_);
    return pagina;
}

QWidget* frmConfronto::CreaDestra() {
    schedaValori_ = new Scheda("schedaValori");
    valori_ = new DisegnoValori;
    valori_->setObjectName(QStringLiteral("valori"));
    schedaValori_->Contenuto()->addWidget(valori_, 1);
    schedaMappa_ = new Scheda("schedaMappa");
    cboMappa_ = Lista("cboMappa");
    auto* riga = new QHBoxLayout;
    riga->setContentsMargins(10, 6, 10, 0);
    riga->addWidget(cboMappa_, 1);
    mappa_ = new DisegnoMappa;
    mappa_->setObjectName(QStringLiteral("mappa"));
    schedaMappa_->Contenuto()->addLayout(riga);
    schedaMappa_->Contenuto()->addWidget(mappa_, 1);
    destra_ = new QSplitter(Qt::Vertical);
    destra_->setChildrenCollapsible(false);
    destra_->addWidget(schedaValori_);
    destra_->addWidget(schedaMappa_);
    destra_->setSizes({236, 370});
    destra_->setMinimumWidth(Misure(*this).Largo(kDestraMinima));
    return destra_;
}

QWidget* frmConfronto::CreaStato() {
    auto* posto = new QWidget;
    posto->setMinimumHeight(Misure(*this).Riga);
    auto* riga = new QHBoxLayout(posto);
    riga->setContentsMargins(10, 0, 10, 2);
    riga->setSpacing(kSpazioGruppi);
    lblStato_ = new QLabel;
    lblStato_->setObjectName(QStringLiteral("lblStato"));
    lblStato_->setForegroundRole(QPalette::PlaceholderText);
    progresso_ = new QProgressBar;
    progresso_->setObjectName(QStringLiteral("progresso"));
    progresso_->setTextVisible(false);
    progresso_->setFixedSize(160, 6);
    progresso_->hide();
    cmdFerma_ = CreaPulsante("cmdFerma", [this] {
        fermato_ = true;
        AggiornaStato();
    });
    cmdFerma_->setAutoDefault(false);
    cmdFerma_->hide();
    lblAiuto_ = new QLabel;
    lblAiuto_->setObjectName(QStringLiteral("lblAiuto"));
    lblAiuto_->setForegroundRole(QPalette::PlaceholderText);
    riga->addWidget(lblStato_);
    riga->addWidget(progresso_);
    riga->addWidget(cmdFerma_);
    riga->addStretch(1);
    riga->addWidget(lblAiuto_);
    return posto;
}

void frmConfronto::AggiornaTesti(Mnemonica& lettere) {
    const auto testo = [](Voce voce) { return InQt(Testo(voce)); };
    lblAsse_->setText(testo(Voce::AsseConfronto));
    optDistanza_->setText(lettere.Con(testo(Voce::DistanzaAsse)));
    optTempo_->setText(lettere.Con(testo(Voce::TempoAsse)));
    lblParti_->setText(lettere.Con(testo(Voce::PartiConfronto)));
    barra_->AggiornaTesti();
    schedaGiri_->Titolo(testo(Voce::GiriConfronto));
    schedaQuadri_->Titolo(testo(Voce::RiquadriConfronto));
    lstGiri_->setAccessibleName(testo(Voce::GiriConfronto));
    lstQuadri_->setAccessibleName(testo(Voce::RiquadriConfronto));
    lstGiri_->Invito(testo(Voce::ApriOTrascina));
    cmdApri_->setText(lettere.Con(testo(Voce::ApriLogConfronto)));
    grafico_->Invito(testo(Voce::SpuntaCanale));
    schede_->setTabText(kSchedaGrafico, lettere.Con(testo(Voce::SchedaGrafico)));
    schede_->setTabText(kSchedaXY, lettere.Con(testo(Voce::SchedaXY)));
    schede_->setTabText(kSchedaIstogramma, lettere.Con(testo(Voce::SchedaIstogramma)));
    lblX_->setText(lettere.Con(testo(Voce::InOrizzontale)));
    lblY_->setText(lettere.Con(testo(Voce::InVerticale)));
    optPunti_->setText(lettere.Con(testo(Voce::PuntiGrafico)));
    optLinea_->setText(lettere.Con(testo(Voce::LineaGrafico)));
    lblCanale_->setText(lettere.Con(testo(Voce::CanaleConfrontato)));
    lblFasce_->setText(lettere.Con(testo(Voce::FasceConfronto)));
    schedaParti_->Titolo(testo(Voce::PartiConfronto));
    parti_->setAccessibleName(testo(Voce::PartiConfronto));
    valori_->setAccessibleName(testo(Voce::CursoreConfronto));
    schede_->setAccessibleName(testo(Voce::VoceConfronto));
    sinistra_->setAccessibleName(testo(Voce::GiriConfronto));
    cboMappa_->setAccessibleName(testo(Voce::MappaConfronto));
    lblAiuto_->setText(testo(Voce::AiutoConfronto));
    cmdFerma_->setText(lettere.Con(testo(Voce::FermaAllineamento)));
    RiempiParti();
    RiempiCanali();
    DisponiStretta();
    Aggiorna();
}

void frmConfronto::DisponiStretta() {
    if (stretta_) {
        sinistra_->addTab(schedaValori_, InQt(Testo(Voce::CursoreConfronto)));
        sinistra_->addTab(schedaMappa_, InQt(Testo(Voce::MappaConfronto)));
    } else if (sinistra_->count() > 1) {
        destra_->addWidget(schedaValori_);
        destra_->addWidget(schedaMappa_);
        schedaValori_->show();
        schedaMappa_->show();
    }
    sinistra_->setTabText(0, InQt(Testo(Voce::GiriConfronto)));
    sinistra_->tabBar()->setVisible(stretta_);
    destra_->setVisible(!stretta_);
    lblIdeale_->setVisible(!stretta_);  // the table below has it too
}

void frmConfronto::resizeEvent(QResizeEvent* evento) {
    Dialogo::resizeEvent(evento);
    const Misure misure(*this);
    const bool stretta = width() < misure.Largo(kStretta);
    if (stretta == stretta_) return;
    stretta_ = stretta;
    DisponiStretta();
    const int sinistra = misure.Largo(kSinistra);
    const int destra = misure.Largo(kDestra);
    if (!stretta) divisore_->setSizes({sinistra, width() - sinistra - destra, destra});
}

/// What lies between two cursors needs more room than the map; it gets it back behind them.
void frmConfronto::FaiPosto(bool due) {
    if (due == due_) return;
    due_ = due;
    const int alto = destra_->height();
    if (due) altezze_ = destra_->sizes();
    const int voluto = valori_->sizeHint().height() + Misure(*this).Testata + kSpazio;
    destra_->setSizes(due ? QList<int>{std::min(voluto, alto * 3 / 5), alto * 2 / 5} : altezze_);
}

}  // namespace lapvane
