#include "reports/dlgDatiSessione.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "analysis/AnalisiDati.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "reports/Circuiti.h"
#include "reports/DatiSessione.h"
#include "reports/DisegnoTracciato.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"
#include "widgets/Mnemonica.h"
#include "widgets/Rotella.h"

namespace lapvane {

namespace {

constexpr Voce kTestoNegativo = Voce::SettoreNegativo;
constexpr Voce kTestoSomma = Voce::SommaSettori;

QString Rifilato(const std::string& testo) {
    return InQt(Rifila(testo));
}

/// The number that a track length begins with; none for a text that begins with no number.
std::optional<double> Metri(const std::string& testo) {
    if (const auto intero = LeggiNumero(testo)) return intero;
    const double inizio = CampoNumerico(testo.data(), testo.data() + testo.size());
    return inizio == 0.0 ? std::nullopt : std::optional(inizio);
}

void Avvisa(Voce testo) {
    platform().MsgBox(Testo(testo), Buttons::Ok, Icon::Information, platform().ExeName());
}

/// Keeps the place of a widget while it is hidden.
void TieniPosto(QWidget* widget) {
    QSizePolicy regola = widget->sizePolicy();
    regola.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(regola);
}

QLabel* Etichetta(QWidget* dove, const char* nome, QWidget* compagno = nullptr) {
    auto* etichetta = new QLabel(dove);
    etichetta->setObjectName(QString::fromLatin1(nome));
    etichetta->setBuddy(compagno);
    return etichetta;
}

QPlainTextEdit* Foglio(QWidget* dove, const char* nome, int righe) {
    auto* foglio = new QPlainTextEdit(dove);
    foglio->setObjectName(QString::fromLatin1(nome));
    foglio->setTabChangesFocus(true);
    const int bordo =
        2 * (foglio->frameWidth() + static_cast<int>(foglio->document()->documentMargin()));
    foglio->setMinimumHeight(foglio->fontMetrics().lineSpacing() * righe + bordo);
    return foglio;
}

}  // namespace

dlgDatiSessione::dlgDatiSessione(AnalisiDati& analisi, QWidget* parent)
    : QDialog(parent), analisi_(analisi) {
    setObjectName(QStringLiteral("dlgDatiSessione"));
    auto* colonna = new QVBoxLayout(this);
    auto* parti = new QHBoxLayout;
    parti->setSpacing(12);
    parti->addWidget(CreaSessione(), 2);
    parti->addWidget(CreaCircuito(), 3);
    colonna->addLayout(parti, 1);

    OKButton_ = new QPushButton(QStringLiteral("OK"), this);
    OKButton_->setObjectName(QStringLiteral("OKButton"));
    OKButton_->setDefault(true);
    CancelButton_ = new QPushButton(this);
    CancelButton_->setObjectName(QStringLiteral("CancelButton"));
    auto* pulsanti = new QHBoxLayout;
    pulsanti->addStretch(1);
    pulsanti->addWidget(OKButton_);
    pulsanti->addWidget(CancelButton_);
    colonna->addLayout(pulsanti);
    connect(OKButton_, &QPushButton::clicked, this,
            [this] { Protetto([this] { OKButton_Click(); }); });
    connect(CancelButton_, &QPushButton::clicked, this, &QDialog::reject);

    ListaCircuiti.clear();
    CaricaListaCircuiti();
    RiempiCboCircuito();
    RiempiCampiSessione();
    AggiornaTesti();
    const QSize schermo = screen() != nullptr ? screen()->availableSize() : QSize(1366, 768);
    resize(QSize(1040, 620).boundedTo(schermo));
}

QLineEdit* dlgDatiSessione::Casella(QWidget* dove, const char* nome) {
    auto* casella = new QLineEdit(dove);
    casella->setObjectName(QString::fromLatin1(nome));
    return casella;
}

QWidget* dlgDatiSessione::CreaSessione() {
    fraSessione_ = new QGroupBox(this);
    fraSessione_->setObjectName(QStringLiteral("fraSessione"));
    QWidget* qui = fraSessione_;
    txtSessione_ = Casella(qui, "txtSessione");
    txtDataSessione_ = Casella(qui, "txtDataSessione");
    txtOraSessione_ = Casella(qui, "txtOraSessione");
    cboCircuito_ = new QComboBox(qui);
    cboCircuito_->setObjectName(QStringLiteral("cboCircuito"));
    cboCircuito_->setEditable(true);
    cboCircuito_->setInsertPolicy(QComboBox::NoInsert);
    cboCircuito_->setFocusPolicy(Qt::StrongFocus);
    cboCircuito_->setMinimumContentsLength(16);
    cboCircuito_->installEventFilter(this);
    txtLunghezzaTracciato_ = Casella(qui, "txtLunghezzaTracciato");
    txtLunghezzaTracciato_->installEventFilter(this);
    txtVeicolo_ = Casella(qui, "txtVeicolo");
    txtPiloti_ = Foglio(qui, "txtPiloti", 2);
    txtNote_ = Foglio(qui, "txtNote", 3);

    lblSessione_ = Etichetta(qui, "lblSessione", txtSessione_);
    lblData_ = Etichetta(qui, "lblData", txtDataSessione_);
    lblOra_ = Etichetta(qui, "lblOra", txtOraSessione_);
    lblCircuito_ = Etichetta(qui, "lblCircuito", cboCircuito_);
    lblLunghTracciato_ = Etichetta(qui, "lblLunghTracciato", txtLunghezzaTracciato_);
    lblMetri_ = Etichetta(qui, "lblMetri");
    lblVeicolo_ = Etichetta(qui, "lblVeicolo", txtVeicolo_);
    lblPiloti_ = Etichetta(qui, "lblPiloti", txtPiloti_);
    lblNote_ = Etichetta(qui, "lblNote", txtNote_);

    auto* griglia = new QGridLayout(qui);
    griglia->setVerticalSpacing(8);
    griglia->setHorizontalSpacing(10);
    griglia->setColumnStretch(1, 1);
    int riga = 0;
    const auto aggiungi = [&](QLabel* etichetta, QWidget* campo) {
        const bool alto = qobject_cast<QPlainTextEdit*>(campo) != nullptr;
        griglia->addWidget(etichetta, riga, 0, alto ? Qt::AlignTop : Qt::AlignVCenter);
        if (campo == txtLunghezzaTracciato_) {
            griglia->addWidget(campo, riga, 1);
            griglia->addWidget(lblMetri_, riga, 2);
        } else {
            griglia->addWidget(campo, riga, 1, 1, 2);
        }
        ++riga;
    };
    aggiungi(lblSessione_, txtSessione_);
    aggiungi(lblData_, txtDataSessione_);
    aggiungi(lblOra_, txtOraSessione_);
    aggiungi(lblCircuito_, cboCircuito_);
    aggiungi(lblLunghTracciato_, txtLunghezzaTracciato_);
    aggiungi(lblVeicolo_, txtVeicolo_);
    aggiungi(lblPiloti_, txtPiloti_);
    griglia->setRowStretch(riga - 1, 2);
    aggiungi(lblNote_, txtNote_);
    griglia->setRowStretch(riga - 1, 3);

    connect(cboCircuito_, &QComboBox::activated, this,
            [this] { Protetto([this] { cboCircuito_Click(); }); });
    return fraSessione_;
}

QWidget* dlgDatiSessione::CreaCircuito() {
    fraCircuito_ = new QGroupBox(this);
    fraCircuito_->setObjectName(QStringLiteral("fraCircuito"));
    Picture1_ = new DisegnoTracciato(fraCircuito_);
    Picture1_->setObjectName(QStringLiteral("Picture1"));
    Picture1_->setMinimumSize(320, 320);  // fifteen numbers have room
    auto* riga = new QHBoxLayout(fraCircuito_);
    riga->setSpacing(12);
    riga->addWidget(Picture1_, 1);
    riga->addWidget(CreaSettori());
    return fraCircuito_;
}

QWidget* dlgDatiSessione::CreaSettori() {
    auto* qui = new QWidget(fraCircuito_);
    cboNumSettori_ = new QComboBox(qui);
    cboNumSettori_->setObjectName(QStringLiteral("cboNumSettori"));
    cboNumSettori_->setFocusPolicy(Qt::StrongFocus);
    cboNumSettori_->installEventFilter(this);
    for (int n = 1; n <= kSettoriMassimi; ++n) cboNumSettori_->addItem(QString::number(n));
    cboNumSettori_->setMaxVisibleItems(kSettoriMassimi);
    cboNumSettori_->setCurrentIndex(-1);
    connect(cboNumSettori_, &QComboBox::activated, this,
            [this] { Protetto([this] { cboNumSettori_Click(); }); });
    lblNSettori_ = Etichetta(qui, "lblNSettori", cboNumSettori_);
    lblSettori_ = Etichetta(qui, "lblSettori");

    auto* griglia = new QGridLayout(qui);
    griglia->setContentsMargins(0, 0, 0, 0);
    griglia->setVerticalSpacing(3);
    griglia->setHorizontalSpacing(8);
    griglia->setColumnStretch(1, 1);
    griglia->addWidget(lblNSettori_, 0, 0, 1, 2);
    griglia->addWidget(cboNumSettori_, 1, 0, 1, 2);
    griglia->setRowMinimumHeight(2, 6);
    griglia->addWidget(lblSettori_, 3, 0, 1, 2);
    for (int i = 0; i < kSettoriMassimi; ++i) {
        const auto posto = static_cast<std::size_t>(i);
        QLineEdit* casella = Casella(qui, ("txtX" + std::to_string(i)).c_str());
        casella->setAlignment(Qt::AlignRight);
        casella->setMaximumWidth(casella->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 11);
        casella->installEventFilter(this);
        QLabel* numero = Etichetta(qui, ("lblNumSetc" + std::to_string(i)).c_str());
        numero->setText(QString::number(i + 1));
        numero->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        QFont grassetto = numero->font();
        grassetto.setBold(true);
        numero->setFont(grassetto);
        TieniPosto(casella);
        TieniPosto(numero);
        griglia->addWidget(numero, 4 + i, 0);
        griglia->addWidget(casella, 4 + i, 1);
        txtX_[posto] = casella;
        lblNumSetc_[posto] = numero;
    }
    griglia->setRowStretch(4 + kSettoriMassimi, 1);
    return qui;
}

void dlgDatiSessione::AggiornaTesti() {
    CalcolaBaseTesti();
    Mnemonica lettere;
    fraSessione_->setTitle(Mnemonica::Senza(InQt(Testo(Voce::TitoloDatiSessione))));
    fraCircuito_->setTitle(Mnemonica::Senza(InQt(Testo(Voce::Circuito))));
    lblSessione_->setText(lettere.Con(InQt(Testo(Voce::Sessione))));
    lblData_->setText(lettere.Con(InQt(Testo(Voce::Data))));
    lblOra_->setText(lettere.Con(InQt(Testo(Voce::Ora))));
    lblCircuito_->setText(lettere.Con(InQt(Testo(Voce::Circuito))));
    lblLunghTracciato_->setText(lettere.Con(InQt(Testo(Voce::LunghezzaTracciato))));
    lblMetri_->setText(Mnemonica::Senza(InQt(Testo(Voce::Metri))));
    lblVeicolo_->setText(lettere.Con(InQt(Testo(Voce::Vettura))));
    lblPiloti_->setText(lettere.Con(InQt(Testo(Voce::Piloti))));
    lblNote_->setText(lettere.Con(InQt(Testo(Voce::Note))));
    lblNSettori_->setText(lettere.Con(InQt(Testo(Voce::NumeroSettori))));
    lblSettori_->setText(Mnemonica::Senza(InQt(Testo(Voce::Settori))));
    CancelButton_->setText(lettere.Con(InQt(Testo(Voce::Annulla))));
    Picture1_->setAccessibleName(InQt(Testo(Voce::Circuito)));
    for (int i = 0; i < kSettoriMassimi; ++i) {
        txtX_[static_cast<std::size_t>(i)]->setAccessibleName(InQt(Testo(Voce::ColonnaSettore)) +
                                                              QString::number(i + 1));
    }
    AggiornaTitolo();
}

void dlgDatiSessione::AggiornaTitolo() {
    QString titolo = cboCircuito_->currentText();
    const QString lunghezza = Rifilato(DatiSessione.LunghTracciato);
    if (titolo.isEmpty()) {
        titolo = InQt(Testo(Voce::TitoloDatiSessione));
    } else if (!lunghezza.isEmpty()) {
        titolo += QStringLiteral(" - ") + lunghezza + QStringLiteral(" m.");
    }
    setWindowTitle(titolo);
}

void dlgDatiSessione::RiempiCboCircuito() {
    cboCircuito_->clear();
    for (const std::string& nome : ListaCircuiti) cboCircuito_->addItem(InQt(nome));
    cboCircuito_->setMaxVisibleItems(16);
}

void dlgDatiSessione::RiempiCampiSessione() {
    txtSessione_->setText(Rifilato(DatiSessione.Sessione));
    txtDataSessione_->setText(Rifilato(DatiSessione.DataSessione));
    txtOraSessione_->setText(Rifilato(DatiSessione.OraSessione));
    const QString circuito = Rifilato(DatiSessione.Circuito);
    cboCircuito_->setCurrentIndex(cboCircuito_->findText(circuito));
    cboCircuito_->setEditText(circuito);
    lunghezzaLetta_ = Rifilato(DatiSessione.LunghTracciato);
    txtLunghezzaTracciato_->setText(lunghezzaLetta_);
    txtVeicolo_->setText(Rifilato(DatiProgetto.Veicolo));
    txtPiloti_->setPlainText(Rifilato(DatiSessione.Piloti));
    txtNote_->setPlainText(Rifilato(DatiSessione.NoteSessione));
    cboCircuito_Click();
}

void dlgDatiSessione::cboCircuito_Click() {
    circuitoLetto_ = cboCircuito_->currentText();
    const std::string nome = DaQt(circuitoLetto_);
    // Nothing of the circuit before may be written to the files of this one, or the other way
    // round.
    FileSettori_.clear();
    divisione_ = {};
    const auto punti = LeggiFileTracciato(nome);
    Picture1_->ImpostaPunti(punti.value_or(std::vector<PuntoTracciato>{}));
    if (punti) {
        FileSettori_ = FileCircuito(nome, "sec");
        if (const auto file = LeggiFileSettori(nome, kSettoriMassimi)) {
            divisione_.Prendi(file->Settori);
            // Kept: the length of the open log's session changes here, whatever ends the dialog.
            if (file->Lunghezza) DatiSessione.LunghTracciato = TestoNumero(*file->Lunghezza);
            lunghezzaLetta_ = InQt(DatiSessione.LunghTracciato);
            txtLunghezzaTracciato_->setText(lunghezzaLetta_);
        }
    }
    MostraSettori();
    AggiornaTitolo();
}

void dlgDatiSessione::cboNumSettori_Click() {
    divisione_.Dividi(MetriInteri(DatiSessione.LunghTracciato), cboNumSettori_->currentIndex() + 1);
    MostraSettori();
    AggiornaTitolo();
}

void dlgDatiSessione::txtLunghezzaTracciato_Fine() {
    // Kept: it is the session of the open log that changes, even if Cancel follows.
    DatiSessione.LunghTracciato = DaQt(txtLunghezzaTracciato_->text());
    lunghezzaLetta_ = txtLunghezzaTracciato_->text();
    cboNumSettori_Click();
}

void dlgDatiSessione::txtX_Fine(int i) {
    const auto nuovo = LeggiIntero(DaQt(txtX_[static_cast<std::size_t>(i)]->text()));
    if (nuovo) divisione_.Cambia(i, *nuovo, MetriInteri(DatiSessione.LunghTracciato));
    MostraSettori();
}

/// Shows the division: a box a sector in use, the picture and the number. The last box only shows
/// what the others leave over.
void dlgDatiSessione::MostraSettori() {
    const int numero = divisione_.NumSettori;
    cboNumSettori_->setCurrentIndex(numero - 1);
    for (int i = 0; i < kSettoriMassimi; ++i) {
        const auto posto = static_cast<std::size_t>(i);
        const bool inUso = i < numero;
        txtX_[posto]->setVisible(inUso || i == 0);
        lblNumSetc_[posto]->setVisible(inUso || i == 0);
        txtX_[posto]->setReadOnly(i >= numero - 1);
        txtX_[posto]->setText(inUso ? QString::number(divisione_.SettoriCircuito[posto])
                                    : QString());
    }
    DisegnaSettori();
}

void dlgDatiSessione::DisegnaSettori() {
    Picture1_->Settori(divisione_.SettoriCircuito,
                       Metri(DatiSessione.LunghTracciato).value_or(0.0));
}

/// A name that was typed: one of the list whatever its case, or one of its own.
void dlgDatiSessione::CircuitoScritto() {
    const int voce = cboCircuito_->findText(cboCircuito_->currentText(), Qt::MatchFixedString);
    if (voce >= 0) {
        const QString nome = cboCircuito_->itemText(voce);
        cboCircuito_->setCurrentIndex(voce);
        cboCircuito_->setEditText(nome);
    }
    if (cboCircuito_->currentText() != circuitoLetto_) cboCircuito_Click();
}

int dlgDatiSessione::IndiceCasella(const QObject* oggetto) const {
    const auto trovata = std::find(txtX_.begin(), txtX_.end(), oggetto);
    return trovata == txtX_.end() ? -1 : static_cast<int>(trovata - txtX_.begin());
}

/// Enter in a box of the division. False where it means OK.
bool dlgDatiSessione::Invio(QObject* oggetto) {
    if (oggetto == txtLunghezzaTracciato_) {
        txtLunghezzaTracciato_Fine();
        txtLunghezzaTracciato_->selectAll();
        return true;
    }
    if (oggetto == cboCircuito_) {
        if (cboCircuito_->currentText() == circuitoLetto_) return false;
        CircuitoScritto();
        return true;
    }
    const int i = IndiceCasella(oggetto);
    if (i < 0) return false;
    if (i < divisione_.NumSettori - 1) {
        txtX_Fine(i);
        txtX_[static_cast<std::size_t>(i)]->selectAll();
    }
    return true;
}

/// The focus leaves a box of the division.
void dlgDatiSessione::Lascia(QObject* oggetto) {
    if (oggetto == nullptr) return;
    if (oggetto == txtLunghezzaTracciato_) {
        // Passing through the box is no change of the length, and must not level the sectors.
        if (txtLunghezzaTracciato_->text() != lunghezzaLetta_) txtLunghezzaTracciato_Fine();
    } else if (oggetto == cboCircuito_) {
        CircuitoScritto();
    } else if (const int i = IndiceCasella(oggetto); i >= 0 && i < divisione_.NumSettori - 1) {
        txtX_Fine(i);
    }
}

bool dlgDatiSessione::eventFilter(QObject* oggetto, QEvent* evento) {
    bool preso = false;
    if (evento->type() == QEvent::KeyPress) {
        const auto* tasto = static_cast<QKeyEvent*>(evento);
        if (tasto->key() == Qt::Key_Return || tasto->key() == Qt::Key_Enter) {
            Protetto([&] { preso = Invio(oggetto); });
        } else if (IndiceCasella(oggetto) >= 0) {
            // Whole metres: digits only.
            const QString scritto = tasto->text();
            const bool comando = tasto->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
            preso = !comando && !scritto.isEmpty() && scritto[0].isPrint() &&
                    (scritto[0] < QLatin1Char('0') || scritto[0] > QLatin1Char('9'));
        }
    } else if (evento->type() == QEvent::FocusOut && !chiuso_) {
        // Neither another window nor a menu of the box itself takes the user away from it.
        const Qt::FocusReason motivo = static_cast<QFocusEvent*>(evento)->reason();
        if (motivo != Qt::ActiveWindowFocusReason && motivo != Qt::PopupFocusReason) {
            Protetto([&] { Lascia(oggetto); });
        }
    }
    return preso || RotellaDiPassaggio(oggetto, evento) || QDialog::eventFilter(oggetto, evento);
}

void dlgDatiSessione::ScriviSettori() {
    if (FileSettori_.empty()) return;
    const std::string testo =
        ScriviTestoSettori(DatiSessione.LunghTracciato, divisione_.SettoriCircuito);
    try {
        ScriviFile(FileSettori_, testo, "writing the sectors");
    } catch (const ErroreRuntime& errore) {
        // A program folder that cannot be written to is no matter while nothing changes there.
        try {
            if (LeggiFile(FileSettori_, "reading the sectors", testo.size() + 1) == testo) return;
        } catch (const ErroreRuntime&) {
            // The message is the same.
        }
        SegnalaScrittura(errore, Voce::SettoriNonSalvati);
    }
}

void dlgDatiSessione::OKButton_Click() {
    Lascia(focusWidget());
    if (const int negativo = divisione_.PrimoNegativo(); negativo >= 0) {
        Avvisa(kTestoNegativo);
        txtX_[static_cast<std::size_t>(negativo)]->setFocus();
        return;
    }
    const auto lunghezza = Metri(DaQt(txtLunghezzaTracciato_->text()));
    if (!lunghezza || static_cast<double>(divisione_.Somma()) != *lunghezza) {
        Avvisa(kTestoSomma);
        if (!lunghezza) {
            txtLunghezzaTracciato_->setFocus();
        } else if (divisione_.NumSettori == 0) {
            cboNumSettori_->setFocus();
        }
        return;
    }
    DatiSessione.Sessione = DaQt(txtSessione_->text());
    DatiSessione.DataSessione = DaQt(txtDataSessione_->text());
    DatiSessione.OraSessione = DaQt(txtOraSessione_->text());
    DatiSessione.Circuito = DaQt(cboCircuito_->currentText());
    DatiSessione.LunghTracciato = DaQt(txtLunghezzaTracciato_->text());
    // Kept: the vehicle of the project, not that of the session.
    DatiProgetto.Veicolo = DaQt(txtVeicolo_->text());
    DatiSessione.Piloti = DaQt(txtPiloti_->toPlainText());
    DatiSessione.NoteSessione = DaQt(txtNote_->toPlainText());
    ScriviSettori();
    analisi_.SalvaDatiSessione();
    accept();
}

void dlgDatiSessione::done(int esito) {
    chiuso_ = true;
    QDialog::done(esito);
}

bool dlgDatiSessione::event(QEvent* evento) {
    if (evento->type() == QEvent::WindowActivate) Protetto([this] { AggiornaTesti(); });
    return QDialog::event(evento);
}

}  // namespace lapvane
