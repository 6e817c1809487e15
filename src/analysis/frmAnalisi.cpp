#include "analysis/frmAnalisi.h"

#include <QHBoxLayout>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <tuple>
#include <utility>

#include "platform/Platform.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

constexpr Voce kTestoScala = Voce::ScalaDisegno;  // "graph scale"
constexpr Voce kTestoLegenda = Voce::LegendaAllarmi;
constexpr Voce kTestoCircuito = Voce::Circuito;
constexpr Voce kTestoPiloti = Voce::Piloti;
constexpr int kMargine = kMargineFinestra;
constexpr double kStretta = 3.1;        // lists of channels; a narrower window shows no units
constexpr int kSettoriInVista = 4;      // the rest is scrolled to
constexpr int kGraficoMinimo = 400;     // before sectors are left out
constexpr int kGraficoStretto = 340;    // before the first of them is
constexpr double kParteGrafico = 0.42;  // of what both share with the channels
constexpr int kMappaMinima = 160;
constexpr int kLettereMinime = 12;  // of the words beside the map
constexpr int kLettereMassime = 20;
constexpr double kParteMappa = 0.3;  // of the height, where the channels leave less

/// A place of the splitter whose content keeps its room while it is hidden.
QWidget* Posto(QWidget* contenuto) {
    TieniPosto(contenuto);
    auto* posto = new QWidget;
    auto* colonna = new QVBoxLayout(posto);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->addWidget(contenuto);
    return posto;
}

}  // namespace

frmAnalisi::frmAnalisi(const char* nome, const Fabbrica& fabbrica, QWidget* parent)
    : Dialogo(nome, parent,
              Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                  Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint) {
    setModal(true);
    Disponi();
    analisi_ = fabbrica(*this, *NTGraph1_, *NTGraphAll_);
    Collega();
}

void frmAnalisi::Disponi() {
    divisore_ = new QSplitter(Qt::Horizontal, this);
    divisore_->setObjectName(QStringLiteral("divisore"));
    divisore_->setChildrenCollapsible(false);
    divisore_->setHandleWidth(kMargine);
    divisore_->addWidget(CreaMisure());
    divisore_->addWidget(CreaSchede());
    divisore_->addWidget(CreaGiri());
    // The graph takes what the window gains.
    divisore_->setStretchFactor(0, 0);
    divisore_->setStretchFactor(1, 1);
    divisore_->setStretchFactor(2, 0);

    Toolbar1_ = CreaBarra();
    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(kMargine, 0, kMargine, kMargine);
    colonna->setSpacing(kMargine / 2);
    colonna->addWidget(Toolbar1_);
    colonna->addWidget(divisore_, 1);

    resize(NelloSchermo(*this, {1340, 700}));
}

QWidget* frmAnalisi::CreaMisure() {
    misure_ = new QScrollArea;
    misure_->setWidgetResizable(true);
    misure_->setFrameShape(QFrame::StyledPanel);
    misure_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    misure_->setFocusPolicy(Qt::NoFocus);
    fraMisure_ = new QFrame;
    fraMisure_->setObjectName(QStringLiteral("fraMisure"));
    fraMisure_->setBackgroundRole(QPalette::Base);
    fraMisure_->setAutoFillBackground(true);
    auto* griglia = new QGridLayout(fraMisure_);
    griglia->setContentsMargins(kMargine, kMargine, kMargine, kMargine);
    griglia->setColumnStretch(2, 1);
    griglia->setRowStretch(kNumCanali + 1, 1);
    griglia->setHorizontalSpacing(kSpazio);
    griglia->setVerticalSpacing(0);
    auto* filo = new QWidget(fraMisure_);
    filo->setFixedHeight(1);
    filo->setBackgroundRole(QPalette::Mid);
    filo->setAutoFillBackground(true);
    griglia->addWidget(filo, kColonnaDistanza, 0, 1, -1);
    optScala_ = new QButtonGroup(this);
    for (int c = kColonnaTempo; c <= kUltimoCanale; ++c) {
        const char* const asse = c == kColonnaTempo      ? "chkTempo"
                                 : c == kColonnaDistanza ? "chkDistanza"
                                                         : "";
        auto* riga = new RigaCanale(c, fraMisure_, griglia, c < kPrimoCanale ? c - 1 : c, asse);
        righe_[c] = riga;
        if (riga->optScala != nullptr) optScala_->addButton(riga->optScala, c);
    }
    righe_[kColonnaTempo]->chkGrafico->setChecked(true);
    misure_->setWidget(fraMisure_);
    sinistra_ = new QSplitter(Qt::Vertical);
    sinistra_->setChildrenCollapsible(false);
    sinistra_->setHandleWidth(kMargine);
    sinistra_->addWidget(misure_);
    sinistra_->addWidget(CreaMappa());
    return sinistra_;
}

QWidget* frmAnalisi::CreaSchede() {
    NTGraph1_ = new GraficoWidget;
    NTGraph1_->setObjectName(QStringLiteral("NTGraph1"));
    NTGraph1_->setPalette(PalettaDi(Tema::Chiaro));  // a sheet of paper in both themes
    NTGraphAll_ = new GraficoWidget;
    NTGraphAll_->setObjectName(QStringLiteral("NTGraphAll"));
    NTGraphAll_->setPalette(NTGraph1_->palette());
    std::vector<Colore> colori;
    for (int k = 0; k < kNumAllarmi; ++k) colori.push_back(ColoreAllarme(k));
    fraLegendaAllarmi_ = new LegendaAllarmi(colori);
    auto* panoramica = new QWidget;
    auto* riga = new QHBoxLayout(panoramica);
    riga->setContentsMargins(0, 0, 0, 0);
    riga->addWidget(NTGraphAll_, 1);
    riga->addWidget(fraLegendaAllarmi_);
    SSTab1_ = new QTabWidget;
    SSTab1_->setObjectName(QStringLiteral("SSTab1"));
    SSTab1_->setDocumentMode(true);
    SSTab1_->addTab(NTGraph1_, QString());
    SSTab1_->addTab(panoramica, QString());
    navigazione_ = new BarraNavigazione;
    auto* insieme = new QWidget;
    auto* colonna = new QVBoxLayout(insieme);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->setSpacing(0);
    colonna->addWidget(Posto(SSTab1_), 1);
    colonna->addWidget(Posto(navigazione_));
    return insieme;
}

QWidget* frmAnalisi::CreaGiri() {
    MSFlexGrid1_ = new GrigliaGiri;
    MSFlexGrid1_->setObjectName(QStringLiteral("MSFlexGrid1"));
    return MSFlexGrid1_;
}

QWidget* frmAnalisi::CreaMappa() {
    mappa_ = new QFrame;
    mappa_->setPalette(PalettaDi(Tema::Chiaro));
    mappa_->setFrameShape(QFrame::StyledPanel);
    mappa_->setMinimumHeight(kMappaMinima);
    mappa_->setBackgroundRole(QPalette::Base);
    mappa_->setAutoFillBackground(true);
    auto* griglia = new QGridLayout(mappa_);
    griglia->setContentsMargins(kMargine, kMargine, kMargine, kMargine);
    griglia->setVerticalSpacing(0);
    griglia->setColumnStretch(1, 1);
    const auto riga = [&](const char* etichetta, const char* valore, int numero) {
        QLabel* nome = Etichetta(mappa_, etichetta);
        nome->setForegroundRole(QPalette::PlaceholderText);
        QLabel* testo = Etichetta(mappa_, valore);
        testo->setTextFormat(Qt::PlainText);
        testo->setWordWrap(true);
        testo->setTextInteractionFlags(Qt::TextSelectableByMouse);
        testo->setFont(Carattere(*this, Scrittura::Forte));
        testo->setContentsMargins(0, 0, 0, kSpazio);
        griglia->addWidget(nome, numero, 0);
        griglia->addWidget(testo, numero + 1, 0);
        return std::pair{nome, testo};
    };
    std::tie(lblCircuito_, txtCircuito_) = riga("lblCircuito", "txtCircuito", 0);
    std::tie(lblPiloti_, txtPiloti_) = riga("lblPiloti", "txtPiloti", 2);
    Picture1_ = new DisegnoTracciato;
    Picture1_->setObjectName(QStringLiteral("Picture1"));
    Picture1_->setFrameStyle(QFrame::NoFrame);
    Picture1_->Tratto(2, false);
    griglia->addWidget(Picture1_, 0, 1, 5, 1);
    griglia->setRowStretch(4, 1);
    mappa_->hide();
    return mappa_;
}

void frmAnalisi::Collega() {
    AnalisiDati& a = *analisi_;
    connect(MSFlexGrid1_, &GrigliaGiri::CellaScelta, this,
            [&a](int riga, int colonna) { Protetto([&] { a.MSFlexGrid1_Click(riga, colonna); }); });
    MSFlexGrid1_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(MSFlexGrid1_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& dove) { Protetto([&] { MenuGiri(dove); }); });
    connect(Riga(kColonnaTempo)->chkGrafico, &QCheckBox::clicked, this,
            [&a](bool spuntato) { Protetto([&] { a.chkTempo_Click(spuntato); }); });
    connect(Riga(kColonnaDistanza)->chkGrafico, &QCheckBox::clicked, this,
            [&a](bool spuntato) { Protetto([&] { a.chkDistanza_Click(spuntato); }); });
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c) {
        RigaCanale* const riga = Riga(c);
        connect(riga->chkGrafico, &QCheckBox::toggled, this, [this, &a, c](bool spuntato) {
            AggiornaInvito();
            Protetto([&] { a.chkGrafico_Click(c, spuntato); });
        });
        connect(riga->optScala, &QRadioButton::clicked, this,
                [&a, c] { Protetto([&] { a.optScala_Click(c); }); });
        connect(riga->cmdSetGraph, &QPushButton::clicked, this,
                [this, c] { Protetto([&] { Impostazioni(c); }); });
    }
    connect(SSTab1_, &QTabWidget::currentChanged, this, [&a](int scheda) {
        if (scheda >= 0) Protetto([&] { a.SSTab1_Click(scheda); });
    });
    connect(navigazione_, &BarraNavigazione::Zoom, this, [&a](double fattore, bool fuori) {
        Protetto([&] { a.cmdZoom_Click(fattore, fuori); });
    });
    connect(navigazione_, &BarraNavigazione::Sposta, this,
            [&a](int passi) { Protetto([&] { a.cmdSposta_Click(passi); }); });
    connect(navigazione_, &BarraNavigazione::ScorriPremuto, this, [&a](int verso) {
        Protetto([&] { a.cmdScorri_Click(verso < 0 ? Verso::SX : Verso::DX); });
    });
    NTGraph1_->EventoCursore = [&a](double, double, std::int32_t i) {
        a.EventoCursore(Grafico::Canali, i);
    };
    NTGraph1_->EventoZoom = [&a] { a.EventoZoom(); };
    NTGraphAll_->EventoCursore = [&a](double, double, std::int32_t i) {
        a.EventoCursore(Grafico::Allarmi, i);
    };
    for (GraficoWidget* const grafico : {NTGraph1_, NTGraphAll_}) {
        grafico->EventoMenu = [this](const QPoint& dove) { MenuGrafico(dove); };
        grafico->EventoRotella = [this](bool fuori) { navigazione_->ScattoZoom(fuori); };
    }
}

RigaCanale* frmAnalisi::Riga(int c) {
    return c < kColonnaTempo || c > kUltimoCanale ? nullptr : righe_[c];
}

bool frmAnalisi::Carica() {
    setWindowTitle(PercorsoInQt(NomeFileDati.filename()));
    RefreshLanguage();
    inizioLettura_ = platform().GetTickCount();
    const bool caricata = analisi_->Carica(NomeFileDati);
    lettura_.reset();
    if (!caricata) return false;
    AggiornaDidascalia();
    AdattaMisure();
    AdattaGiri();
    return true;
}

/// Width of the list of channels with its units.
int frmAnalisi::LarghezzaMisure() const {
    int unita = 0;
    if (righe_[kColonnaTempo]->lblUM->isHidden()) {
        for (int c = kColonnaTempo; c <= kUltimoCanale; ++c) {
            unita = std::max(unita, righe_[c]->lblUM->sizeHint().width() + kSpazio);
        }
    }
    return fraMisure_->minimumSizeHint().width() + unita;
}

/// The words beside the map have their place: short ones in a line, long ones in several.
void frmAnalisi::AdattaMappa() {
    const int lettera = fontMetrics().averageCharWidth();
    int largo = kLettereMinime * lettera;
    for (const QLabel* testo : {txtCircuito_, txtPiloti_}) {
        const int suo = testo->fontMetrics().horizontalAdvance(testo->text()) + kGriglia;
        largo = std::max(largo, std::min(suo, kLettereMassime * lettera));
    }
    auto* griglia = static_cast<QGridLayout*>(mappa_->layout());
    griglia->setColumnMinimumWidth(0, largo);
    for (QLabel* testo : {txtCircuito_, txtPiloti_}) {
        testo->setMinimumHeight(std::max(0, testo->heightForWidth(largo)));
    }
    griglia->activate();
    mappa_->setMinimumHeight(std::max(kMappaMinima, griglia->totalMinimumSize().height()));
}

void frmAnalisi::AdattaMisure() {
    AdattaMappa();
    const bool conUnita = width() >= kStretta * LarghezzaMisure();
    for (int c = kColonnaTempo; c <= kUltimoCanale; ++c) Riga(c)->UnitaInVista(conUnita);
    // The list is never narrower than its texts, and scrolls only up and down.
    fraMisure_->layout()->activate();
    const int barra = misure_->verticalScrollBar()->sizeHint().width();
    misure_->setMinimumWidth(fraMisure_->minimumSizeHint().width() + barra +
                             2 * misure_->frameWidth());
    // The map has what the channels leave.
    const int altezza = sinistra_->height() - kMargine;
    const int canali = fraMisure_->sizeHint().height() + 2 * misure_->frameWidth();
    const int mappa = std::max(altezza - canali, static_cast<int>(kParteMappa * altezza));
    sinistra_->setSizes({altezza - mappa, mappa});
}

void frmAnalisi::AdattaGiri() {
    // As many whole sectors as leave the graph its share; the user may still move the bar.
    MSFlexGrid1_->setMinimumWidth(MSFlexGrid1_->LarghezzaPer(0));
    const int larghezza = divisore_->width() - 2 * kMargine;
    const int canali = sinistra_->minimumSizeHint().width();
    const int grafico = std::max(kGraficoMinimo, static_cast<int>(kParteGrafico * larghezza));
    int giri = MSFlexGrid1_->LarghezzaPer(0);
    for (int settori = 1; settori <= kSettoriInVista; ++settori) {
        const int conQuesto = MSFlexGrid1_->LarghezzaPer(settori);
        const int resto = larghezza - canali - conQuesto;
        if (resto >= (settori == 1 ? kGraficoStretto : grafico)) giri = conQuesto;
    }
    divisore_->setSizes({canali, larghezza - canali - giri, giri});
}

void frmAnalisi::resizeEvent(QResizeEvent* evento) {
    QDialog::resizeEvent(evento);
    AdattaMisure();
    AdattaGiri();
}

bool frmAnalisi::event(QEvent* evento) {
    const bool preso = Dialogo::event(evento);
    if (evento->type() == QEvent::FontChange && analisi_ != nullptr) {
        AdattaMisure();
        AdattaGiri();
    }
    return preso;
}

void frmAnalisi::AggiornaInvito() {
    bool spuntato = false;
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c) {
        spuntato = spuntato || Riga(c)->chkGrafico->isChecked();
    }
    NTGraph1_->Invito(spuntato ? std::string() : Testo(Voce::SpuntaCanale));
}

void frmAnalisi::Apri() {
    constexpr int kDopo = 100;  // ms, until the first lap is on the screen
    if (!Carica()) return;
    QTimer::singleShot(kDopo, this, [this] { Protetto([this] { DiCaricato(); }); });
    setWindowState(windowState() | Qt::WindowMaximized);
    exec();
    DiCaricato();
}

void frmAnalisi::DiCaricato() {
    if (const auto caricato = std::exchange(QuandoCaricato, nullptr)) caricato();
}

void frmAnalisi::AggiornaTesti(Mnemonica&) {
    if (scaricata_) return;
    analisi_->RefreshLanguage();
    for (int c = kColonnaTempo; c <= kUltimoCanale; ++c) {
        Riga(c)->NomiPulsanti(InQt(Testo(kTestoScala)), InQt(Testo(Voce::ImpostazioniGrafico)));
    }
    navigazione_->Nomi(InQt(Testo(Voce::SpostaNelGiro)), InQt(Testo(Voce::ScorrimentoAutomatico)));
    fraLegendaAllarmi_->setTitle(InQt(Testo(kTestoLegenda)));
    for (int k = 0; k < kNumAllarmi; ++k) {
        fraLegendaAllarmi_->Nome(k, InQt(Testo(Dopo(Voce::AllarmePompaOlio, k))));
    }
    lblCircuito_->setText(InQt(Testo(kTestoCircuito)));
    lblPiloti_->setText(InQt(Testo(kTestoPiloti)));
    Picture1_->setAccessibleName(lblCircuito_->text());
    SSTab1_->setAccessibleName(InQt(Testo(Voce::Grafici) + ", " + Testo(Voce::Allarmi)));
    MSFlexGrid1_->setAccessibleName(InQt(Testo(Voce::ColonnaTempoGiro)));
    NTGraph1_->setAccessibleName(InQt(Testo(Voce::Grafici)));
    NTGraphAll_->setAccessibleName(InQt(Testo(Voce::Allarmi)));
    std::vector<LivelloGrafico> livelli;
    for (int k = 0; k < kNumAllarmi; ++k) {
        livelli.push_back(
            {2.0 * k + 1.5, ColoreAllarme(k), Testo(Dopo(Voce::AllarmePompaOlio, k))});
    }
    NTGraphAll_->Livelli(std::move(livelli));
    AggiornaInvito();
    NomiBarra();
    AdattaMisure();
}

void frmAnalisi::reject() {
    // Esc and the close box take the road of the close command.
    Protetto([this] { analisi_->ChiudiAnalisi(); });
}

void frmAnalisi::done(int esito) {
    if (!scaricata_) {
        scaricata_ = true;
        SalvaUltimaVista(Vista());
        Protetto([this] { analisi_->Form_Unload(); });
    }
    QDialog::done(esito);
}

}  // namespace lapvane
