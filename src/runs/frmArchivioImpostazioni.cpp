// The settings of the chosen run against those of another.
#include <QComboBox>
#include <QHBoxLayout>
#include <algorithm>
#include <vector>

#include "device/Differenze.h"
#include "device/DisegnoDifferenze.h"
#include "logs/Impostazioni.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "project/DatiProgetto.h"
#include "runs/DisegnoModello.h"
#include "runs/frmArchivio.h"
#include "shell/LoadStrings.h"
#include "widgets/Scheda.h"
#include "widgets/style/Misure.h"

namespace lapvane {

namespace {

constexpr std::size_t kControMassime = 60;  // runs to choose from for the settings

QString T(Voce voce) {
    return InQt(Testo(voce));
}

/// Whether run `a` was before run `b`.
bool Prima(const Uscita& a, const Uscita& b) {
    return std::pair(a.Giorno, a.Minuto) < std::pair(b.Giorno, b.Minuto);
}

bool StessoCircuito(const Uscita& a, const Uscita& b) {
    return a.Circuito == b.Circuito;
}

}  // namespace

/// "17 May 2026, 11:05, Free practice 1"
QString frmArchivio::NomeUscita(const Uscita& uscita) const {
    QStringList parti;
    for (const std::string& parte : {TestoData(uscita), TestoOra(uscita), uscita.Sessione}) {
        if (!parte.empty()) parti << InQt(parte);
    }
    if (uscita.Sessione.empty()) parti << PercorsoInQt(uscita.Csv.stem());
    return parti.join(QStringLiteral(", "));
}

/// The last run before this one whose settings are known: on the same circuit with the same car
/// where there is one, else with the same car, else any.
const Uscita* frmArchivio::UscitaPrima(const Uscita& uscita) const {
    const Uscita* migliore = nullptr;
    const auto grado = [&](const Uscita& una) {
        const bool auto_ = una.Veicolo == uscita.Veicolo;
        return auto_ && StessoCircuito(una, uscita) ? 2 : auto_ ? 1 : 0;
    };
    for (const Uscita& una : modello_->Uscite()) {
        if (!una.File.Impostazioni.CE() || !Prima(una, uscita)) continue;
        if (migliore == nullptr || grado(una) > grado(*migliore) ||
            (grado(una) == grado(*migliore) && Prima(*migliore, una))) {
            migliore = &una;
        }
    }
    return migliore;
}

/// What the settings can be laid against: the run before, the other one of two that are chosen, the
/// newest of the same circuit.
void frmArchivio::RiempiContro() {
    const Uscita* uscita = Corrente();
    cboContro_->clear();
    controDi_.clear();
    if (uscita == nullptr || !uscita->File.Impostazioni.CE()) return;
    if (const Uscita* prima = UscitaPrima(*uscita)) {
        controDi_ = prima->Csv;
        const bool conOra = !TestoData(*prima).empty() && !TestoOra(*prima).empty();
        const QString quando =
            conOra ? InQt(TestoData(*prima) + ", " + TestoOra(*prima)) : NomeUscita(*prima);
        cboContro_->addItem(T(Voce::ArchivioPrecedente).arg(quando), QString());
    }
    const auto scelte = Scelte();
    std::vector<const Uscita*> altre;
    for (const Uscita& una : modello_->Uscite()) {
        if (una.Csv == uscita->Csv || !una.File.Impostazioni.CE()) continue;
        const bool scelta = scelte.size() == 2 && (una.Csv == scelte[0] || una.Csv == scelte[1]);
        if (scelta || una.Csv == scelte_.Contro || StessoCircuito(una, *uscita)) {
            altre.push_back(&una);
        }
    }
    std::sort(altre.begin(), altre.end(),
              [](const Uscita* a, const Uscita* b) { return Prima(*b, *a); });
    if (altre.size() > kControMassime) altre.resize(kControMassime);
    for (const Uscita* una : altre) {
        cboContro_->addItem(NomeUscita(*una), PercorsoInQt(una->Csv));
    }
    int posto = cboContro_->findData(PercorsoInQt(scelte_.Contro));
    if (scelte.size() == 2) {
        const auto& altra = scelte[0] == uscita->Csv ? scelte[1] : scelte[0];
        posto = std::max(posto, cboContro_->findData(PercorsoInQt(altra)));
    }
    cboContro_->setCurrentIndex(std::max(posto, 0));
}

void frmArchivio::AggiornaImpostazioni() {
    const Uscita* uscita = Corrente();
    std::vector<Differenza> differenze;
    QString invito;
    QString nota;
    const QString dato = cboContro_->currentData().toString();
    const std::filesystem::path contro = dato.isEmpty() ? controDi_ : PercorsoDaQt(dato);
    RecordProgetto ora;
    RecordProgetto prima;
    const auto guasta = [](const std::filesystem::path& csv) {
        return T(Voce::ArchivioCopiaGuasta).arg(PercorsoInQt(FileImpostazioni(csv).filename()));
    };
    if (uscita == nullptr) {
        invito = T(Voce::ArchivioScegliUscita);
    } else if (!uscita->File.Impostazioni.CE()) {
        invito = T(Voce::ArchivioSenzaCopia);
    } else if (contro.empty()) {
        invito = T(Voce::ArchivioSenzaAltra);
    } else if (!LeggiImpostazioni(uscita->Csv, ora)) {
        invito = guasta(uscita->Csv);
    } else if (!LeggiImpostazioni(contro, prima)) {
        invito = guasta(contro);
    } else {
        differenze = Differenze(prima, ora);
        if (differenze.empty()) invito = T(Voce::ArchivioUguali);
        nota = differenze.size() == 1 ? T(Voce::ArchivioDifferenza)
                                      : T(Voce::ArchivioDifferenze).arg(differenze.size());
    }
    const bool scelta = cboContro_->count() > 0;
    cboContro_->setToolTip(cboContro_->currentText());
    lblContro_->setVisible(scelta);
    cboContro_->setVisible(scelta);
    schedaImpostazioni_->Nota(nota);
    impostazioni_->setVisible(!differenze.empty());
    lblImpostazioni_->setVisible(differenze.empty());
    lblImpostazioni_->setText(invito);
    impostazioni_->Mostra(differenze);
}

QWidget* frmArchivio::CreaImpostazioni() {
    schedaImpostazioni_ = new Scheda("schedaImpostazioni");
    auto* riga = new QHBoxLayout;
    riga->setContentsMargins(10, kSpazio, 10, kSpazio);
    riga->setSpacing(kSpazio);
    cboContro_ = new QComboBox;
    cboContro_->setObjectName(QStringLiteral("cboContro"));
    cboContro_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    lblContro_ = Etichetta(schedaImpostazioni_, "lblContro", cboContro_);
    riga->addWidget(lblContro_);
    riga->addWidget(cboContro_, 1);
    schedaImpostazioni_->Contenuto()->addLayout(riga);
    impostazioni_ = new TabellaDifferenze;
    impostazioni_->setObjectName(QStringLiteral("impostazioni"));

    lblImpostazioni_ = new QLabel;
    lblImpostazioni_->setObjectName(QStringLiteral("lblImpostazioni"));
    lblImpostazioni_->setAlignment(Qt::AlignCenter);
    lblImpostazioni_->setWordWrap(true);
    lblImpostazioni_->setForegroundRole(QPalette::PlaceholderText);
    lblImpostazioni_->setContentsMargins(16, 8, 16, 16);
    schedaImpostazioni_->Contenuto()->addWidget(impostazioni_, 1);
    schedaImpostazioni_->Contenuto()->addWidget(lblImpostazioni_, 1);
    return schedaImpostazioni_;
}

}  // namespace lapvane
