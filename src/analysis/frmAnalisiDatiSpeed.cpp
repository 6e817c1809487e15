#include "analysis/frmAnalisiDatiSpeed.h"

#include <QEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/QtPlatform.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "widgets/Mnemonica.h"

namespace lapvane {

namespace {

constexpr int kTestoScala = 46;  // "graph scale"
constexpr int kMargine = 8;

/// A place of the splitter whose content keeps its room while it is hidden.
QWidget* Posto(QWidget* contenuto) {
    QSizePolicy regola = contenuto->sizePolicy();
    regola.setRetainSizeWhenHidden(true);
    contenuto->setSizePolicy(regola);
    auto* posto = new QWidget;
    auto* colonna = new QVBoxLayout(posto);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->addWidget(contenuto);
    return posto;
}

}  // namespace

frmAnalisiDatiSpeed::frmAnalisiDatiSpeed(QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      NTGraph1_(new GraficoWidget(this)),
      NTGraphAll_(new GraficoWidget(this)),
      analisi_(*this, *NTGraph1_, *NTGraphAll_) {
    NTGraphAll_->hide();
    setObjectName(QStringLiteral("frmAnalisiDatiSpeed"));
    setModal(true);
    CalcolaBaseTesti();
    Disponi();
}

void frmAnalisiDatiSpeed::Disponi() {
    MSFlexGrid1_ = new GrigliaGiri(this);
    MSFlexGrid1_->setObjectName(QStringLiteral("MSFlexGrid1"));
    connect(MSFlexGrid1_, &GrigliaGiri::CellaScelta, this, [this](int riga, int colonna) {
        Protetto([&] { analisi_.MSFlexGrid1_Click(riga, colonna); });
    });

    auto* divisore = new QSplitter(Qt::Horizontal, this);
    divisore->setObjectName(QStringLiteral("divisore"));
    divisore->setChildrenCollapsible(false);
    divisore->setHandleWidth(kMargine);
    divisore->addWidget(CreaMisure());
    divisore->addWidget(CreaSchede());
    divisore->addWidget(MSFlexGrid1_);
    // The graph takes what the window gains.
    divisore->setStretchFactor(0, 0);
    divisore->setStretchFactor(1, 1);
    divisore->setStretchFactor(2, 0);
    MSFlexGrid1_->setMinimumWidth(fontMetrics().averageCharWidth() * 24);

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(kMargine, kMargine, kMargine, kMargine);
    colonna->addWidget(divisore, 1);

    const QSize schermo = screen() != nullptr ? screen()->availableSize() : QSize(1366, 768);
    resize(QSize(1340, 700).boundedTo(schermo));
}

QWidget* frmAnalisiDatiSpeed::CreaMisure() {
    misure_ = new QScrollArea;
    misure_->setWidgetResizable(true);
    misure_->setFrameShape(QFrame::NoFrame);
    misure_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    misure_->setFocusPolicy(Qt::NoFocus);
    fraMisure_ = new QFrame;
    fraMisure_->setObjectName(QStringLiteral("fraMisure"));
    fraMisure_->setBackgroundRole(QPalette::Base);
    fraMisure_->setAutoFillBackground(true);
    auto* griglia = new QGridLayout(fraMisure_);
    griglia->setContentsMargins(kMargine, kMargine, kMargine, kMargine);
    griglia->setColumnStretch(2, 1);
    griglia->setRowStretch(kNumCanali, 1);
    griglia->setHorizontalSpacing(8);
    griglia->setVerticalSpacing(0);
    optScala_ = new QButtonGroup(this);
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c) {
        auto* riga = new RigaCanale(c, fraMisure_, griglia, c - kPrimoCanale);
        righe_[static_cast<std::size_t>(c)] = riga;
        optScala_->addButton(riga->optScala, c);
        connect(riga->chkGrafico, &QCheckBox::toggled, this, [this, c](bool spuntato) {
            Protetto([&] { analisi_.chkGrafico_Click(c, spuntato); });
        });
        connect(riga->optScala, &QRadioButton::clicked, this,
                [this, c] { Protetto([&] { analisi_.optScala_Click(c); }); });
    }
    misure_->setWidget(fraMisure_);
    return misure_;
}

QWidget* frmAnalisiDatiSpeed::CreaSchede() {
    NTGraph1_->setObjectName(QStringLiteral("NTGraph1"));
    SSTab1_ = new QTabWidget;
    SSTab1_->setObjectName(QStringLiteral("SSTab1"));
    SSTab1_->setDocumentMode(true);
    SSTab1_->addTab(NTGraph1_, QString());
    return Posto(SSTab1_);
}

RigaCanale* frmAnalisiDatiSpeed::Riga(int c) {
    return c < kPrimoCanale || c > kUltimoCanale ? nullptr : righe_[static_cast<std::size_t>(c)];
}

bool frmAnalisiDatiSpeed::Carica() {
    setWindowTitle(PercorsoInQt(NomeFileDati.filename()));
    analisi_.NomeFileDati = NomeFileDati;
    RefreshLanguage();
    caricata_ = analisi_.Carica();
    if (!caricata_) return false;
    AdattaMisure();
    return true;
}

void frmAnalisiDatiSpeed::AdattaMisure() {
    // The list is never narrower than its texts, and scrolls only up and down.
    const int barra = misure_->verticalScrollBar()->sizeHint().width();
    misure_->setMinimumWidth(fraMisure_->minimumSizeHint().width() + barra);
}

void frmAnalisiDatiSpeed::Apri() {
    if (!Carica()) return;
    setWindowState(windowState() | Qt::WindowMaximized);
    exec();
}

void frmAnalisiDatiSpeed::RefreshLanguage() {
    analisi_.RefreshLanguage();
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c)
        Riga(c)->NomeScala(InQt(Testo(kTestoScala)));
    AdattaMisure();
}

bool frmAnalisiDatiSpeed::event(QEvent* evento) {
    // A change of language shows the next time the window gets the focus.
    if (evento->type() == QEvent::WindowActivate && caricata_ && !scaricata_) {
        Protetto([this] { RefreshLanguage(); });
    }
    return QDialog::event(evento);
}

void frmAnalisiDatiSpeed::reject() {
    // Esc and the close box take the road of the close command.
    Protetto([this] { analisi_.ChiudiAnalisi(); });
}

void frmAnalisiDatiSpeed::Scarica() {
    done(QDialog::Rejected);
}

void frmAnalisiDatiSpeed::done(int esito) {
    if (!scaricata_) {
        scaricata_ = true;
        Protetto([this] { analisi_.Form_Unload(); });
    }
    QDialog::done(esito);
}

void frmAnalisiDatiSpeed::MostraCanale(int c, bool visibile) {
    if (RigaCanale* const riga = Riga(c)) riga->Mostra(visibile);
}

void frmAnalisiDatiSpeed::NomeCampo(int c, const std::string& nome) {
    if (RigaCanale* const riga = Riga(c)) riga->Nome(InQt(nome));
}

void frmAnalisiDatiSpeed::UnitaCampo(int c, const std::string& unita) {
    if (RigaCanale* const riga = Riga(c)) riga->Unita(InQt(unita));
}

void frmAnalisiDatiSpeed::ColoreCanale(int c, Colore colore) {
    if (RigaCanale* const riga = Riga(c)) riga->ImpostaColore(colore);
}

void frmAnalisiDatiSpeed::SegnaCanale(int c, bool spuntato) {
    if (RigaCanale* const riga = Riga(c)) riga->optScala->setEnabled(spuntato);
}

void frmAnalisiDatiSpeed::SelezionaScala(int c) {
    // The analysis runs the click itself; `clicked` comes from a person only.
    if (RigaCanale* const riga = Riga(c)) riga->optScala->setChecked(true);
}

void frmAnalisiDatiSpeed::SelezionaScheda(int scheda) {
    SSTab1_->setCurrentIndex(scheda);
}

void frmAnalisiDatiSpeed::TestoScheda(int scheda, const std::string& testo) {
    if (scheda < SSTab1_->count()) SSTab1_->setTabText(scheda, Mnemonica::Senza(InQt(testo)));
}

void frmAnalisiDatiSpeed::MostraControlli(bool visibile) {
    fraMisure_->setVisible(visibile);
    SSTab1_->setVisible(visibile);
}

void frmAnalisiDatiSpeed::MostraGriglia(bool visibile) {
    MSFlexGrid1_->setVisible(visibile);
}

void frmAnalisiDatiSpeed::RigheGriglia(int righe) {
    MSFlexGrid1_->Righe(righe);
}

void frmAnalisiDatiSpeed::LarghezzaColonna(int colonna, int twip) {
    MSFlexGrid1_->Larghezza(colonna, twip);
}

void frmAnalisiDatiSpeed::Cella(int riga, int colonna, const std::string& testo) {
    MSFlexGrid1_->Cella(riga, colonna, testo);
}

void frmAnalisiDatiSpeed::SfondoCella(int riga, int colonna, Colore colore) {
    MSFlexGrid1_->Modello().Sfondo(riga, colonna, colore);
}

void frmAnalisiDatiSpeed::CaratteriCella(int riga, int colonna, Colore colore) {
    MSFlexGrid1_->Modello().Caratteri(riga, colonna, colore);
}

void frmAnalisiDatiSpeed::CellaCorrente(int riga, int colonna) {
    MSFlexGrid1_->CellaCorrente(riga, colonna);
}

void frmAnalisiDatiSpeed::SegnaGiro(int riga) {
    MSFlexGrid1_->Modello().SegnaGiro(riga);
}

}  // namespace lapvane
