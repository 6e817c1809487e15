#include "project/dlgNoteProgetto.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/StatoShell.h"

namespace lapvane {

dlgNoteProgetto::dlgNoteProgetto(QWidget* parent) : Dialogo("dlgNoteProgetto", parent) {
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
        auto* etichetta = Etichetta(this, (std::string("lbl") + campo.Nome).c_str(), casella);
        griglia->addWidget(etichetta, posto, 0);
        griglia->addWidget(casella, posto, 1);
        righe_.push_back({casella, &valore, etichetta, campo.Testo});
        ++posto;
    }
    txtNoteProgetto_ = new QPlainTextEdit(InQt(Rifila(DatiProgetto.NoteProgetto)), this);
    txtNoteProgetto_->setObjectName(QStringLiteral("txtNoteProgetto"));
    txtNoteProgetto_->setTabChangesFocus(true);
    lblNoteProgetto_ = Etichetta(this, "lblNoteProgetto", txtNoteProgetto_);
    griglia->addWidget(lblNoteProgetto_, posto, 0, Qt::AlignTop);
    griglia->addWidget(txtNoteProgetto_, posto, 1);
    griglia->setRowStretch(posto, 1);

    auto* colonna = new QVBoxLayout(this);
    colonna->setContentsMargins(20, 16, 20, 14);
    colonna->setSpacing(14);
    colonna->addLayout(griglia, 1);
    colonna->addLayout(CreaPulsanti(nullptr, [this] { OKButton_Click(); }));
    Testi();
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

void dlgNoteProgetto::AggiornaTesti(Mnemonica& lettere) {
    setWindowTitle(InQt(Testo(Voce::TitoloNoteProgetto)));
    for (const Riga& riga : righe_) riga.Etichetta->setText(lettere.Con(InQt(Testo(riga.Testo))));
    lblNoteProgetto_->setText(lettere.Con(InQt(Testo(Voce::NoteNote))));
    CancelButton_->setText(lettere.Con(InQt(Testo(Voce::Annulla))));
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
