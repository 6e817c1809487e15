// What the list of runs says of itself: how many, what is being read, what is wrong.
#include <QLineEdit>
#include <QProgressBar>
#include <algorithm>

#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "runs/DisegnoModello.h"
#include "runs/DisegnoUscite.h"
#include "runs/frmArchivio.h"
#include "shell/LoadStrings.h"
#include "widgets/BarraTasti.h"
#include "widgets/StrisciaAvviso.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

QString T(Voce voce) {
    return InQt(Testo(voce));
}

}  // namespace

void frmArchivio::AggiornaConto() {
    const int tutte = modello_->Elenco().Tutte();
    const int mostrate = modello_->Elenco().Mostrate();
    QString testo;
    if (mostrate != tutte) {
        testo = T(Voce::ArchivioConto).arg(mostrate).arg(tutte);
    } else if (tutte > 0) {
        testo = tutte == 1 ? T(Voce::ArchivioContoUna) : T(Voce::ArchivioContoTutte).arg(tutte);
    }
    lblConto_->setText(testo);
}

void frmArchivio::AggiornaInvito() {
    const bool lavora = archivio_.InCorso() != Archivio::Fase::Ferma;
    if (modello_->rowCount() > 0) {
        lista_->Invito({}, nullptr);
    } else if (archivio_.Cartella().empty()) {
        lista_->Invito(T(Voce::ArchivioVuoto), cmdScegli_);
    } else if (modello_->Elenco().Tutte() > 0) {
        lista_->Invito(T(Voce::ArchivioNonTrovato).arg(txtCerca_->text().simplified()), cmdTogli_);
    } else if (lavora) {
        lista_->Invito({}, nullptr);
    } else {
        lista_->Invito(T(Voce::ArchivioNiente), cmdScegli_);
    }
}

void frmArchivio::AggiornaAvviso() {
    QStringList righe;
    for (const auto& [csv, note] : pendenti_) {
        righe << T(Voce::ArchivioNotePerse).arg(PercorsoInQt(csv.filename())) + QLatin1Char(' ') +
                     note.Perche;
    }
    if (!archivio_.Mancante().empty()) {
        righe << T(Voce::ArchivioAssente).arg(PercorsoInQt(archivio_.Mancante()));
    }
    avviso_->Mostra(righe);
}

void frmArchivio::Annuncia(const QString& frase) {
    annuncio_ = frase;
    if (!frase.isEmpty()) tmrAnnuncio_.start();
    AggiornaStato();
}

void frmArchivio::AggiornaStato() {
    const Archivio::Fase fase = archivio_.InCorso();
    const bool legge = fase == Archivio::Fase::Legge;
    const int lette = archivio_.Lette();
    const int tutte = std::max(archivio_.DaLeggere(), 1);
    QString testo;
    if (fase == Archivio::Fase::Elenca) {
        testo = T(Voce::ArchivioCercaLog).arg(archivio_.Trovate());
    } else if (legge || fermato_) {
        testo = T(legge ? Voce::ArchivioLettura : Voce::ArchivioInterrotta).arg(lette).arg(tutte);
    }
    lblLettura_->setText(testo);
    progresso_->setVisible(legge);
    progresso_->setRange(0, tutte);
    progresso_->setValue(lette);
    cmdFerma_->setVisible(!testo.isEmpty());
    cmdFerma_->setText(fermato_ ? letteraRiprendi_ : letteraFerma_);
    const std::filesystem::path& cartella = archivio_.Cartella();
    lblStato_->setText(!annuncio_.isEmpty() ? annuncio_
                       : cartella.empty()
                           ? QString()
                           : T(Voce::ArchivioSottocartelle).arg(PercorsoInQt(cartella)));
    const auto guai = std::count_if(modello_->Uscite().begin(), modello_->Uscite().end(),
                                    [](const Uscita& una) { return una.ChiedeAttenzione(); });
    QStringList destra;
    if (guai > 0) {
        destra << (guai == 1 ? T(Voce::ArchivioGuaio) : T(Voce::ArchivioGuai).arg(guai));
    }
    if (!stretta_) destra << T(Voce::ArchivioAiuto);
    lblAiuto_->setText(destra.join(QStringLiteral(" · ")));
}

void frmArchivio::AggiornaTitolo() {
    QString titolo = T(Voce::VoceArchivio);
    if (!archivio_.Cartella().empty()) {
        titolo += QStringLiteral(" – ") + PercorsoInQt(archivio_.Cartella().filename());
    }
    setWindowTitle(titolo);
}

}  // namespace lapvane
