// How the list of runs is laid out.
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "device/DisegnoDifferenze.h"
#include "platform/qt/TestoQt.h"
#include "runs/DisegnoModello.h"
#include "runs/DisegnoTempi.h"
#include "runs/DisegnoUscite.h"
#include "runs/frmArchivio.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "widgets/BarraTasti.h"
#include "widgets/Scheda.h"
#include "widgets/StrisciaAvviso.h"
#include "widgets/style/Icone.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr int kStretta = 1200;  // width below which the side folds into tabs
constexpr int kLato = 522;
constexpr int kLatoStretto = 408;
constexpr int kCerca = 300;
constexpr int kCercaMinima = 170;

QString T(Voce voce) {
    return InQt(Testo(voce));
}

/// A row of controls inside a card.
QHBoxLayout* RigaScheda(Scheda& scheda) {
    auto* riga = new QHBoxLayout;
    riga->setContentsMargins(10, kSpazio, 10, kSpazio);
    riga->setSpacing(kSpazio);
    scheda.Contenuto()->addLayout(riga);
    return riga;
}

QLabel* Accenno(const char* nome) {
    auto* accenno = new QLabel;
    accenno->setObjectName(QLatin1String(nome));
    accenno->setForegroundRole(QPalette::PlaceholderText);
    accenno->setTextFormat(Qt::PlainText);
    return accenno;
}

}  // namespace

void frmArchivio::Disponi() {
    divisore_ = new QSplitter(Qt::Horizontal);
    divisore_->setObjectName(QStringLiteral("divisore"));
    divisore_->setChildrenCollapsible(false);
    divisore_->addWidget(CreaElenco());
    divisore_->addWidget(CreaLato());
    divisore_->setStretchFactor(0, 1);
    divisore_->setStretchFactor(1, 0);
    auto* corpo = new QHBoxLayout;
    corpo->setContentsMargins(kMargineFinestra, kMargineFinestra, kMargineFinestra,
                              kMargineFinestra);
    corpo->addWidget(divisore_);

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->setSpacing(0);
    colonna->addWidget(CreaBarra());
    colonna->addWidget(CreaAvviso());
    colonna->addLayout(corpo, 1);
    colonna->addWidget(CreaStato());
}

BarraTasti* frmArchivio::CreaBarra() {
    barra_ = new BarraTasti(this);
    barra_->Aggiungi("ApriCartella", Voce::ArchivioCartella, "Ctrl+O",
                     [this] { ScegliCartella(); });
    barra_->addSeparator();
    txtCerca_ = new QLineEdit(barra_);
    txtCerca_->setObjectName(QStringLiteral("txtCerca"));
    txtCerca_->addAction(Icona("Cerca"), QLineEdit::LeadingPosition);
    txtCerca_->setClearButtonEnabled(true);
    txtCerca_->setMinimumWidth(kCercaMinima);
    txtCerca_->setMaximumWidth(kCerca);
    barra_->addWidget(txtCerca_);
    barra_->Spazio();
    lblConto_ = Accenno("lblConto");
    barra_->addWidget(lblConto_);
    barra_->Spazio();
    barra_->addSeparator();
    cboGruppi_ = new QComboBox;
    cboGruppi_->setObjectName(QStringLiteral("cboGruppi"));
    cboGruppi_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    lblGruppi_ = Etichetta(barra_, "lblGruppi", cboGruppi_);
    etichettaGruppi_ = barra_->addWidget(lblGruppi_);
    barra_->Spazio();
    barra_->addWidget(cboGruppi_);
    barra_->Spazio();
    barra_->addSeparator();
    barra_->Aggiungi("CsvArchivio", Voce::ArchivioCsv, "Ctrl+E", [this] { SalvaCsv(); });
    barra_->Aggiungi("StampaArchivio", Voce::ArchivioStampa, "Ctrl+P", [this] { Stampa(); });
    barra_->SpazioLargo();
    cmdConfronta_ = CreaPulsante("cmdConfronta", [this] { Confronta(); });
    cmdConfronta_->setIcon(Icona("Confronto"));
    cmdConfronta_->setAutoDefault(false);
    cmdAnalisi_ = CreaPulsante("cmdAnalisi", [this] { ApriAnalisi(); });
    cmdAnalisi_->setDefault(true);
    barra_->addWidget(cmdConfronta_);
    barra_->Spazio();
    barra_->addWidget(cmdAnalisi_);
    barra_->Spazio();
    return barra_;
}

QWidget* frmArchivio::CreaAvviso() {
    avviso_ = new StrisciaAvviso;
    cmdRiprova_ = CreaPulsante("cmdRiprova", [this] {
        RiprovaNote();
        Rileggi();
    });
    cmdRiprova_->setAutoDefault(false);
    avviso_->Aggiungi(cmdRiprova_);
    return avviso_;
}

QWidget* frmArchivio::CreaElenco() {
    lista_ = new DisegnoUscite;
    lista_->setFrameShape(QFrame::StyledPanel);
    modello_ = new DisegnoModello(archivio_, this);
    lista_->setModel(modello_);
    lista_->setMinimumWidth(360);
    cmdScegli_ = CreaPulsante("cmdScegli", [this] { ScegliCartella(); });
    cmdTogli_ = CreaPulsante("cmdTogli", [this] {
        txtCerca_->clear();
        txtCerca_->setFocus();
    });
    for (QPushButton* pulsante : {cmdScegli_, cmdTogli_}) {
        pulsante->setAutoDefault(false);
        pulsante->setParent(lista_->viewport());
        pulsante->hide();
    }
    return lista_;
}

/// The cards of the chosen run: one below the other, or as tabs where there is no room.
QWidget* frmArchivio::CreaLato() {
    lato_ = new QWidget;
    auto* dentro = new QVBoxLayout(lato_);
    dentro->setContentsMargins(0, 0, 0, 0);
    colonna_ = new QSplitter(Qt::Vertical);
    colonna_->setChildrenCollapsible(false);
    colonna_->addWidget(CreaTempi());
    colonna_->addWidget(CreaNote());
    colonna_->addWidget(CreaImpostazioni());
    colonna_->setSizes({244, 158, 234});
    schede_ = new QTabWidget;
    schede_->setObjectName(QStringLiteral("schede"));
    schede_->setDocumentMode(true);
    schede_->hide();
    dentro->addWidget(colonna_);
    dentro->addWidget(schede_);
    lato_->setMinimumWidth(320);
    return lato_;
}

QWidget* frmArchivio::CreaTempi() {
    schedaTempi_ = new Scheda("schedaTempi");
    tempi_ = new DisegnoTempi;
    lblGuaio_ = new QLabel;
    lblGuaio_->setObjectName(QStringLiteral("lblGuaio"));
    lblGuaio_->setTextFormat(Qt::PlainText);
    lblGuaio_->setWordWrap(true);
    lblGuaio_->setContentsMargins(12, 4, 12, 6);
    lblGuaio_->hide();
    schedaTempi_->Contenuto()->addWidget(tempi_, 1);
    schedaTempi_->Contenuto()->addWidget(lblGuaio_);
    return schedaTempi_;
}

QWidget* frmArchivio::CreaNote() {
    schedaNote_ = new Scheda("schedaNote");
    txtNote_ = new QPlainTextEdit;
    txtNote_->setObjectName(QStringLiteral("txtNote"));
    txtNote_->setTabChangesFocus(true);
    // The card is its frame.
    txtNote_->setFrameShape(QFrame::NoFrame);
    txtNote_->document()->setDocumentMargin(10);
    txtNote_->setMinimumHeight(2 * Misure(*this).Linea + kSpazio);
    schedaNote_->Contenuto()->addWidget(txtNote_, 1);
    QHBoxLayout* riga = RigaScheda(*schedaNote_);
    lblCambiate_ = new QLabel;
    lblCambiate_->setObjectName(QStringLiteral("lblCambiate"));
    cmdAnnulla_ = CreaPulsante("cmdAnnulla", [this] {
        txtNote_->setPlainText(noteSalvate_);
        txtNote_->setFocus();
    });
    cmdSalva_ = CreaPulsante("cmdSalva", [this] {
        if (SalvaLeNote()) lista_->setFocus();
    });
    for (QPushButton* pulsante : {cmdAnnulla_, cmdSalva_}) pulsante->setAutoDefault(false);
    riga->addStretch(1);
    riga->addWidget(lblCambiate_);
    riga->addWidget(cmdAnnulla_);
    riga->addWidget(cmdSalva_);
    return schedaNote_;
}

QWidget* frmArchivio::CreaStato() {
    auto* posto = new QWidget;
    posto->setMinimumHeight(Misure(*this).Controllo + 4);
    auto* riga = new QHBoxLayout(posto);
    riga->setContentsMargins(10, 0, 10, 2);
    riga->setSpacing(kSpazioGruppi);
    lblStato_ = Accenno("lblStato");
    progresso_ = new QProgressBar;
    progresso_->setObjectName(QStringLiteral("progresso"));
    progresso_->setTextVisible(false);
    progresso_->setFixedSize(120, 6);
    progresso_->hide();
    lblLettura_ = Accenno("lblLettura");
    cmdFerma_ = CreaPulsante("cmdFerma", [this] { FermaORiprendi(); });
    cmdFerma_->setAutoDefault(false);
    cmdFerma_->hide();
    lblAiuto_ = Accenno("lblAiuto");
    lblAiuto_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // The first that gives way.
    lblAiuto_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    riga->addWidget(lblStato_);
    riga->addWidget(progresso_);
    riga->addWidget(lblLettura_);
    riga->addWidget(cmdFerma_);
    riga->addWidget(lblAiuto_, 1);
    return posto;
}

void frmArchivio::RiempiGruppi() {
    const int scelto = static_cast<int>(modello_->Elenco().Gruppo());
    cboGruppi_->clear();
    for (const auto& [gruppo, voce] : {std::pair{GruppoPer::Circuito, Voce::ArchivioPerCircuito},
                                       {GruppoPer::Giorno, Voce::ArchivioPerGiorno},
                                       {GruppoPer::Nessuno, Voce::ArchivioSenzaGruppi}}) {
        cboGruppi_->addItem(T(voce), static_cast<int>(gruppo));
    }
    cboGruppi_->setCurrentIndex(cboGruppi_->findData(scelto));
}

void frmArchivio::AggiornaTesti(Mnemonica& lettere) {
    barra_->AggiornaTesti();
    cmdAnalisi_->setText(lettere.Con(T(Voce::ArchivioAnalisi)));
    lblGruppi_->setText(lettere.Con(T(Voce::ArchivioGruppi)));
    cboGruppi_->setAccessibleName(T(Voce::ArchivioGruppi));
    lblContro_->setText(lettere.Con(T(Voce::ArchivioContro)));
    cmdSalva_->setText(lettere.Con(T(Voce::ArchivioSalvaNote)));
    cmdAnnulla_->setText(lettere.Con(T(Voce::ArchivioAnnullaNote)));
    cmdRiprova_->setText(lettere.Con(T(Voce::ArchivioRiprova)));
    cmdScegli_->setText(lettere.Con(T(Voce::ArchivioCartella)));
    cmdTogli_->setText(lettere.Con(T(Voce::ArchivioTogliRicerca)));
    txtCerca_->setPlaceholderText(T(Voce::ArchivioCerca));
    txtCerca_->setAccessibleName(T(Voce::ArchivioCerca));
    // The glass and the cross inside it.
    for (auto* segno : txtCerca_->findChildren<QToolButton*>()) {
        segno->setAccessibleName(segno->isVisible() ? T(Voce::ArchivioCerca)
                                                    : T(Voce::ArchivioTogliRicerca));
    }
    lista_->setAccessibleName(T(Voce::VoceArchivio));
    tempi_->setAccessibleName(T(Voce::ArchivioTempi));
    schedaNote_->Titolo(T(Voce::Note));
    schedaNote_->Nota(T(Voce::ArchivioNoteDi));
    txtNote_->setAccessibleName(T(Voce::Note));
    lblCambiate_->setText(T(Voce::ArchivioCambiate));
    schedaImpostazioni_->Titolo(T(Voce::ArchivioImpostazioni));
    schede_->setAccessibleName(T(Voce::ArchivioTempi));
    // Their caption changes with the rows and with the work; their letters are fixed.
    impostazioni_->setAccessibleName(T(Voce::ArchivioImpostazioni));
    impostazioni_->Lati(T(Voce::ArchivioPrima), T(Voce::ArchivioQuesta));
    letteraConfronta_ = lettere.Con(T(Voce::ArchivioConfronta));
    letteraFerma_ = lettere.Con(T(Voce::FermaAllineamento));
    letteraRiprendi_ = lettere.Con(T(Voce::ArchivioRiprendi));
    RiempiGruppi();
    lista_->AdattaColonne();
    DisponiStretta();
    modello_->Ritesta();
    AggiornaLato();
    AggiornaConto();
    AggiornaAvviso();
    AggiornaStato();
    AggiornaTitolo();
}

void frmArchivio::DisponiStretta() {
    const std::array<std::pair<QWidget*, Voce>, 3> carte = {
        {{schedaTempi_, Voce::ArchivioTempi},
         {schedaNote_, Voce::Note},
         {schedaImpostazioni_, Voce::ArchivioImpostazioni}}};
    const bool era = schede_->count() > 0;
    if (stretta_ && !era) {
        for (const auto& [carta, voce] : carte) schede_->addTab(carta, T(voce));
    } else if (!stretta_ && era) {
        for (const auto& [carta, voce] : carte) {
            colonna_->addWidget(carta);
            carta->show();
        }
    }
    if (stretta_) {
        for (int i = 0; i < schede_->count(); ++i) {
            schede_->setTabText(i, T(carte[static_cast<std::size_t>(i)].second));
        }
    }
    if (stretta_) {
        impostazioni_->Quote({0.22, 0.27, 0.18, 0.22, 0.11});
    } else {
        impostazioni_->Quote({0.18, 0.38, 0.16, 0.18, 0.10});
    }
    colonna_->setVisible(!stretta_);
    schede_->setVisible(stretta_);
    // The buttons at the end of the bar keep their room.
    etichettaGruppi_->setVisible(!stretta_);
}

void frmArchivio::resizeEvent(QResizeEvent* evento) {
    Dialogo::resizeEvent(evento);
    const Misure misure(*this);
    const bool stretta = width() < misure.Largo(kStretta);
    const bool prima = divisore_->sizes().value(1) == 0 || !disposta_;
    if (stretta == stretta_ && !prima) return;
    disposta_ = true;
    stretta_ = stretta;
    DisponiStretta();
    const int lato = stretta ? misure.Largo(kLatoStretto) : misure.Largo(kLato);
    divisore_->setSizes({width() - lato - 3 * kMargineFinestra, lato});
    AggiornaStato();
}

}  // namespace lapvane
