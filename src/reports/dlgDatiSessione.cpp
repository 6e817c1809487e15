#include "reports/dlgDatiSessione.h"

#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "reports/Circuiti.h"
#include "reports/DisegnoTracciato.h"
#include "shell/LoadStrings.h"
#include "shell/Protetto.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

void Avvisa(Voce testo) {
    platform().MsgBox(Testo(testo), Buttons::Ok, Icon::Information, platform().ExeName());
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

dlgDatiSessione::dlgDatiSessione(std::function<void()> salvaDatiSessione, QWidget* parent)
    : Dialogo("dlgDatiSessione", parent), SalvaDatiSessione_(std::move(salvaDatiSessione)) {
    auto* colonna = new QVBoxLayout(this);
    auto* parti = new QHBoxLayout;
    parti->setSpacing(12);
    parti->addWidget(CreaSessione(), 2);
    parti->addWidget(CreaCircuito(), 3);
    colonna->addLayout(parti, 1);
    colonna->addLayout(CreaPulsanti(nullptr, [this] { OKButton_Click(); }));

    RiempiCboCircuito();
    RiempiCampiSessione();
    Testi();
    resize(NelloSchermo(*this, {1040, 620}));
}

QLineEdit* dlgDatiSessione::Casella(QWidget* dove, std::string_view nome) {
    auto* casella = new QLineEdit(dove);
    casella->setObjectName(InQt(nome));
    return casella;
}

QWidget* dlgDatiSessione::CreaSessione() {
    fraSessione_ = Cornice(this, "fraSessione");
    QWidget* qui = fraSessione_;
    CreaCampi(qui);
    lblMetri_ = Etichetta(qui, "lblMetri");

    auto* griglia = new QGridLayout(qui);
    griglia->setVerticalSpacing(8);
    griglia->setHorizontalSpacing(10);
    griglia->setColumnStretch(1, 1);
    int riga = 0;
    const auto aggiungi = [&](QLabel*& etichetta, const char* nome, QWidget* campo) {
        etichetta = Etichetta(qui, nome, campo);
        const bool alto = qobject_cast<QPlainTextEdit*>(campo) != nullptr;
        const bool metri = campo == txtLunghezzaTracciato_;
        griglia->addWidget(etichetta, riga, 0, alto ? Qt::AlignTop : Qt::AlignVCenter);
        griglia->addWidget(campo, riga, 1, 1, metri ? 1 : 2);
        if (metri) griglia->addWidget(lblMetri_, riga, 2);
        ++riga;
    };
    aggiungi(lblSessione_, "lblSessione", txtSessione_);
    aggiungi(lblData_, "lblData", txtDataSessione_);
    aggiungi(lblOra_, "lblOra", txtOraSessione_);
    aggiungi(lblCircuito_, "lblCircuito", cboCircuito_);
    aggiungi(lblLunghTracciato_, "lblLunghTracciato", txtLunghezzaTracciato_);
    aggiungi(lblVeicolo_, "lblVeicolo", txtVeicolo_);
    aggiungi(lblPiloti_, "lblPiloti", txtPiloti_);
    griglia->setRowStretch(riga - 1, 2);
    aggiungi(lblNote_, "lblNote", txtNote_);
    griglia->setRowStretch(riga - 1, 3);

    connect(cboCircuito_, &QComboBox::activated, this,
            [this] { Protetto([this] { cboCircuito_Click(); }); });
    return fraSessione_;
}

void dlgDatiSessione::CreaCampi(QWidget* qui) {
    txtSessione_ = Casella(qui, "txtSessione");
    txtDataSessione_ = Casella(qui, "txtDataSessione");
    txtOraSessione_ = Casella(qui, "txtOraSessione");
    cboCircuito_ = new QComboBox(qui);
    cboCircuito_->setObjectName(QStringLiteral("cboCircuito"));
    cboCircuito_->setEditable(true);
    cboCircuito_->setInsertPolicy(QComboBox::NoInsert);
    cboCircuito_->setMinimumContentsLength(16);
    SenzaRotella(cboCircuito_);
    txtLunghezzaTracciato_ = Casella(qui, "txtLunghezzaTracciato");
    txtLunghezzaTracciato_->installEventFilter(this);
    txtVeicolo_ = Casella(qui, "txtVeicolo");
    txtPiloti_ = Foglio(qui, "txtPiloti", 2);
    txtNote_ = Foglio(qui, "txtNote", 3);
}

QWidget* dlgDatiSessione::CreaCircuito() {
    fraCircuito_ = Cornice(this, "fraCircuito");
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
    SenzaRotella(cboNumSettori_);
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
        QLineEdit* casella = Casella(qui, "txtX" + std::to_string(i));
        casella->setAlignment(Qt::AlignRight);
        casella->setMaximumWidth(casella->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 11);
        casella->installEventFilter(this);
        QLabel* numero = Etichetta(qui, "lblNumSetc" + std::to_string(i));
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

/// The column of the sectors is the highest.
void dlgDatiSessione::Stringi() {
    constexpr int kAria = 6;
    for (QLineEdit* casella : txtX_) casella->setFixedHeight(Misure(*casella).Linea + kAria);
    Dialogo::Stringi();
}

void dlgDatiSessione::AggiornaTesti(Mnemonica& lettere) {
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
    const std::string titolo = EditorSessione::Titolo(DaQt(cboCircuito_->currentText()));
    setWindowTitle(InQt(titolo.empty() ? Testo(Voce::TitoloDatiSessione) : titolo));
}

void dlgDatiSessione::RiempiCboCircuito() {
    cboCircuito_->clear();
    for (const std::string& nome : ListaCircuiti) cboCircuito_->addItem(InQt(nome));
    cboCircuito_->setMaxVisibleItems(16);
}

void dlgDatiSessione::RiempiCampiSessione() {
    const EditorSessione::Campi campi = EditorSessione::Leggi();
    txtSessione_->setText(InQt(campi.Sessione));
    txtDataSessione_->setText(InQt(campi.DataSessione));
    txtOraSessione_->setText(InQt(campi.OraSessione));
    const QString circuito = InQt(campi.Circuito);
    cboCircuito_->setCurrentIndex(cboCircuito_->findText(circuito));
    cboCircuito_->setEditText(circuito);
    MostraLunghezza(campi.LunghTracciato);
    txtVeicolo_->setText(InQt(campi.Veicolo));
    txtPiloti_->setPlainText(InQt(campi.Piloti));
    txtNote_->setPlainText(InQt(campi.NoteSessione));
    cboCircuito_Click();
}

EditorSessione::Campi dlgDatiSessione::CampiScritti() const {
    return {DaQt(txtSessione_->text()),           DaQt(txtDataSessione_->text()),
            DaQt(txtOraSessione_->text()),        DaQt(cboCircuito_->currentText()),
            DaQt(txtLunghezzaTracciato_->text()), DaQt(txtVeicolo_->text()),
            DaQt(txtPiloti_->toPlainText()),      DaQt(txtNote_->toPlainText())};
}

void dlgDatiSessione::MostraLunghezza(const std::string& lunghezza) {
    lunghezzaLetta_ = InQt(lunghezza);
    txtLunghezzaTracciato_->setText(lunghezzaLetta_);
}

void dlgDatiSessione::cboCircuito_Click() {
    circuitoLetto_ = cboCircuito_->currentText();
    if (editor_.ScegliCircuito(DaQt(circuitoLetto_))) {
        MostraLunghezza(EditorSessione::LunghTracciato());
    }
    Picture1_->ImpostaPunti(editor_.Punti());
    MostraSettori();
    AggiornaTitolo();
}

void dlgDatiSessione::cboNumSettori_Click() {
    editor_.Dividi(cboNumSettori_->currentIndex() + 1);
    MostraSettori();
    AggiornaTitolo();
}

void dlgDatiSessione::txtLunghezzaTracciato_Fine() {
    lunghezzaLetta_ = txtLunghezzaTracciato_->text();
    EditorSessione::LunghTracciato(DaQt(lunghezzaLetta_));
    cboNumSettori_Click();
}

void dlgDatiSessione::txtX_Fine(int i) {
    editor_.CambiaSettore(i, DaQt(txtX_[static_cast<std::size_t>(i)]->text()));
    MostraSettori();
}

/// Shows the division: a box a sector in use, the picture and the number. The last box only shows
/// what the others leave over.
void dlgDatiSessione::MostraSettori() {
    const DivisioneSettori& divisione = editor_.Divisione();
    const int numero = divisione.NumSettori;
    cboNumSettori_->setCurrentIndex(numero - 1);
    for (int i = 0; i < kSettoriMassimi; ++i) {
        const auto posto = static_cast<std::size_t>(i);
        const bool inUso = i < numero;
        txtX_[posto]->setVisible(inUso || i == 0);
        lblNumSetc_[posto]->setVisible(inUso || i == 0);
        txtX_[posto]->setReadOnly(i >= numero - 1);
        txtX_[posto]->setText(inUso ? QString::number(divisione.SettoriCircuito[posto])
                                    : QString());
    }
    Picture1_->Settori(divisione.SettoriCircuito, EditorSessione::LunghezzaDisegno());
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
    if (i < editor_.Divisione().NumSettori - 1) {
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
    } else if (const int i = IndiceCasella(oggetto);
               i >= 0 && i < editor_.Divisione().NumSettori - 1) {
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
    return preso || Dialogo::eventFilter(oggetto, evento);
}

void dlgDatiSessione::OKButton_Click() {
    Lascia(focusWidget());
    switch (editor_.Conferma(CampiScritti())) {
        case EditorSessione::Esito::SettoreNegativo:
            Avvisa(Voce::SettoreNegativo);
            txtX_[static_cast<std::size_t>(editor_.Divisione().PrimoNegativo())]->setFocus();
            break;
        case EditorSessione::Esito::LunghezzaErrata:
            Avvisa(Voce::SommaSettori);
            txtLunghezzaTracciato_->setFocus();
            break;
        case EditorSessione::Esito::SommaDiversa:
            Avvisa(Voce::SommaSettori);
            if (editor_.Divisione().NumSettori == 0) cboNumSettori_->setFocus();
            break;
        case EditorSessione::Esito::Fatto:
            SalvaDatiSessione_();
            accept();
            break;
    }
}

void dlgDatiSessione::done(int esito) {
    chiuso_ = true;
    QDialog::done(esito);
}

}  // namespace lapvane
