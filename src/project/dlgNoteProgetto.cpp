#include "project/dlgNoteProgetto.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"
#include "shell/StatoShell.h"
#include "widgets/Mnemonica.h"

namespace lapvane {

dlgNoteProgetto::dlgNoteProgetto(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("dlgNoteProgetto"));
    struct Campo {
        const char* Nome;
        std::string RecordProgetto::*Membro;
        Voce Testo;
    };
    constexpr Campo kCampi[] = {
        {"NomeProgetto", &RecordProgetto::NomeProgetto, Voce::NomeProgetto},
        {"DataCreazione", &RecordProgetto::DataCreazione, Voce::DataCreazione},
        {"DataUltimaModifica", &RecordProgetto::DataUltimaModifica, Voce::DataUltimaModifica},
        {"AutoreProgetto", &RecordProgetto::AutoreProgetto, Voce::Autore},
        {"Strumento", &RecordProgetto::Strumento, Voce::NoteStrumento},
        {"Veicolo", &RecordProgetto::Veicolo, Voce::NoteVettura},
    };
    auto* griglia = new QGridLayout;
    griglia->setHorizontalSpacing(10);
    griglia->setVerticalSpacing(8);
    griglia->setColumnStretch(1, 1);
    int posto = 0;
    // Trimmed: an empty field comes back from its file as one blank.
    for (const Campo& campo : kCampi) {
        std::string& valore = DatiProgetto.*campo.Membro;
        auto* casella = new QLineEdit(InQt(Rifila(valore)), this);
        casella->setObjectName(QStringLiteral("txt") + QString::fromLatin1(campo.Nome));
        auto* etichetta = new QLabel(this);
        etichetta->setObjectName(QStringLiteral("lbl") + QString::fromLatin1(campo.Nome));
        etichetta->setBuddy(casella);
        griglia->addWidget(etichetta, posto, 0);
        griglia->addWidget(casella, posto, 1);
        righe_.push_back({casella, &valore, etichetta, campo.Testo});
        ++posto;
    }
    txtNoteProgetto_ = new QPlainTextEdit(InQt(Rifila(DatiProgetto.NoteProgetto)), this);
    txtNoteProgetto_->setObjectName(QStringLiteral("txtNoteProgetto"));
    txtNoteProgetto_->setTabChangesFocus(true);
    lblNoteProgetto_ = new QLabel(this);
    lblNoteProgetto_->setObjectName(QStringLiteral("lblNoteProgetto"));
    lblNoteProgetto_->setBuddy(txtNoteProgetto_);
    griglia->addWidget(lblNoteProgetto_, posto, 0, Qt::AlignTop);
    griglia->addWidget(txtNoteProgetto_, posto, 1);
    griglia->setRowStretch(posto, 1);

    auto* OKButton = new QPushButton(QStringLiteral("OK"), this);
    OKButton->setObjectName(QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    connect(OKButton, &QPushButton::clicked, this,
            [this] { Protetto([this] { OKButton_Click(); }); });
    CancelButton_ = new QPushButton(this);
    CancelButton_->setObjectName(QStringLiteral("CancelButton"));
    connect(CancelButton_, &QPushButton::clicked, this, &QDialog::reject);
    auto* pulsanti = new QHBoxLayout;
    pulsanti->addStretch(1);
    pulsanti->addWidget(OKButton);
    pulsanti->addWidget(CancelButton_);

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(20, 16, 20, 14);
    colonna->setSpacing(14);
    colonna->addLayout(griglia, 1);
    colonna->addLayout(pulsanti);
    AggiornaTesti();
    resize(560, 420);
    allInizio_ = Scritto();
}

std::vector<QString> dlgNoteProgetto::Scritto() const {
    std::vector<QString> testi{txtNoteProgetto_->toPlainText()};
    for (const Riga& riga : righe_) testi.push_back(riga.Casella->text());
    return testi;
}

bool dlgNoteProgetto::Cambiate() const {
    return Scritto() != allInizio_;
}

void dlgNoteProgetto::AggiornaTesti() {
    CalcolaBaseTesti();
    Mnemonica lettere;
    setWindowTitle(InQt(Testo(Voce::TitoloNoteProgetto)));
    for (const Riga& riga : righe_) riga.Etichetta->setText(lettere.Con(InQt(Testo(riga.Testo))));
    lblNoteProgetto_->setText(lettere.Con(InQt(Testo(Voce::NoteNote))));
    CancelButton_->setText(lettere.Con(InQt(Testo(Voce::Annulla))));
}

bool dlgNoteProgetto::event(QEvent* evento) {
    if (evento->type() == QEvent::WindowActivate) Protetto([this] { AggiornaTesti(); });
    return QDialog::event(evento);
}

void dlgNoteProgetto::OKButton_Click() {
    for (const Riga& riga : righe_) *riga.Campo = DaQt(riga.Casella->text());
    // The file keeps a field a line, and is read by position.
    QString note = txtNoteProgetto_->toPlainText();
    note.replace(QLatin1Char('\n'), QLatin1Char(' '));
    DatiProgetto.NoteProgetto = DaQt(note);
    ProgettoModificato = true;
    accept();
}

}  // namespace lapvane
