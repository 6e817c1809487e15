// What is told of the chosen run: its lap times and its notes.
#include <QPlainTextEdit>
#include <QTime>
#include <vector>

#include "analysis/compare/DisegnoNumeri.h"
#include "platform/ErroreRuntime.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "runs/DisegnoModello.h"
#include "runs/DisegnoTempi.h"
#include "runs/NoteUscita.h"
#include "runs/frmArchivio.h"
#include "shell/FrasiErrore.h"
#include "shell/LoadStrings.h"
#include "widgets/Scheda.h"
#include "widgets/style/Tavolozza.h"

namespace lapvane {

namespace {

QString T(Voce voce) {
    return InQt(Testo(voce));
}

}  // namespace

void frmArchivio::AggiornaLato() {
    AggiornaTempi();
    MostraNote();
    tmrLato_.start(0);
}

void frmArchivio::AggiornaTempi() {
    const Uscita* uscita = Corrente();
    std::vector<TempoDisegnato> giri;
    if (uscita != nullptr) {
        for (int i = 0; i < uscita->Giri(); ++i) {
            giri.push_back({uscita->NumeroGiro(i), uscita->Tempi[static_cast<std::size_t>(i)]});
        }
        const QString sessione = InQt(uscita->Sessione);
        schedaTempi_->Titolo(sessione.isEmpty() ? PercorsoInQt(uscita->Csv.stem()) : sessione);
        QStringList nota;
        nota << InQt(TestoData(*uscita)) +
                    (TestoOra(*uscita).empty() ? QString() : QStringLiteral(", ")) +
                    InQt(TestoOra(*uscita));
        for (const std::string& parte : {uscita->Circuito, uscita->Piloti}) {
            if (!parte.empty()) nota << InQt(parte);
        }
        schedaTempi_->Nota(nota.join(QStringLiteral(" · ")));
    } else {
        schedaTempi_->Titolo(T(Voce::ArchivioTempi));
        schedaTempi_->Nota({});
    }
    const std::int32_t media = uscita != nullptr ? uscita->MediaCinque : 0;
    tempi_->Imposta(
        std::move(giri), media, T(Voce::ArchivioMediaDi).arg(TempoGiro(media)),
        uscita == nullptr ? T(Voce::ArchivioScegliUscita) : T(Voce::ArchivioSenzaTempi));
    const QString guaio = uscita != nullptr ? InQt(FraseProblema(*uscita)) : QString();
    QPalette paletta = palette();
    paletta.setColor(QPalette::WindowText, ColoriDi(*this).Warn);
    lblGuaio_->setPalette(paletta);
    lblGuaio_->setText(QStringLiteral("▲ ") + guaio);
    lblGuaio_->setVisible(!guaio.isEmpty());
}

/// The notes of the chosen run; those of the one before are saved first.
void frmArchivio::MostraNote() {
    const Uscita* uscita = Corrente();
    const std::filesystem::path csv = uscita != nullptr ? uscita->Csv : std::filesystem::path();
    // A copy: what is saved changes the list.
    const QString note = uscita != nullptr ? InQt(uscita->Note) : QString();
    if (csv == noteDi_ && !csv.empty()) {
        const bool intatte = txtNote_->toPlainText() == noteSalvate_ && !txtNote_->hasFocus();
        if (!intatte || note == noteSalvate_) return;
    }
    SalvaLeNote();
    noteDi_ = csv;
    noteSalvate_ = note;
    const auto pendente = pendenti_.find(csv);
    txtNote_->setPlainText(pendente != pendenti_.end() ? pendente->second.Testo : note);
    txtNote_->setEnabled(uscita != nullptr);
    NoteToccate();
}

void frmArchivio::NoteToccate() {
    const bool cambiate = !noteDi_.empty() && txtNote_->toPlainText() != noteSalvate_;
    QPalette paletta = palette();
    paletta.setColor(QPalette::WindowText, ColoriDi(*this).Warn);
    lblCambiate_->setPalette(paletta);
    lblCambiate_->setVisible(cambiate);
    cmdAnnulla_->setEnabled(cambiate);
    cmdSalva_->setEnabled(cambiate);
}

/// Saves the notes that were changed. What no disk takes is kept here and told; false then.
bool frmArchivio::SalvaLeNote() {
    const QString testo = txtNote_->toPlainText();
    if (noteDi_.empty()) return true;
    if (testo == noteSalvate_) {
        if (pendenti_.erase(noteDi_) > 0) AggiornaAvviso();
        return true;
    }
    if (!ScriviNote(noteDi_, testo)) return false;
    noteSalvate_ = testo;
    NoteToccate();
    return true;
}

bool frmArchivio::ScriviNote(const std::filesystem::path& csv, const QString& testo) {
    bool salvate = true;
    try {
        SalvaNote(csv, DaQt(testo));
        pendenti_.erase(csv);
        Annuncia(T(Voce::ArchivioNoteSalvate)
                     .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss"))));
    } catch (const ErroreRuntime& errore) {
        pendenti_[csv] = {testo, InQt(Motivo(errore))};
        salvate = false;
    }
    AggiornaAvviso();
    int posto = archivio_.Trova(csv);
    if (!salvate || posto < 0) return salvate;
    archivio_.Rileggi(posto);
    posto = archivio_.Trova(csv);
    if (posto >= 0) {
        modello_->AggiornaUscita(archivio_.Uscite()[static_cast<std::size_t>(posto)]);
    }
    // The search comes to know of it later: whoever saves may just be changing rows.
    if (!tmrRinnova_.isActive()) tmrRinnova_.start();
    return true;
}

void frmArchivio::RiprovaNote() {
    SalvaLeNote();
    const auto prima = pendenti_;
    for (const auto& [csv, note] : prima) {
        if (csv != noteDi_) ScriviNote(csv, note.Testo);
    }
}

}  // namespace lapvane
