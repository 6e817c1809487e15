#include "reports/dlgReportGiri.h"

#include <QDate>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

#include "platform/PuntatoreOccupato.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "widgets/Stampante.h"
#include "widgets/Tabella.h"

namespace lapvane {

namespace {

constexpr int kOrdinePerGiro = 1;
constexpr int kOrdinePerTempo = 2;
constexpr int kRigheVisibili = 16;

}  // namespace

dlgReportGiri::dlgReportGiri(const AnalisiPubblica& analisi, const std::filesystem::path& filePdf,
                             QWidget* parent)
    : Dialogo("dlgReportGiri", parent), log_(filePdf.stem()) {
    setWindowTitle(InQt(Testo(Voce::ReportGiri)));
    MSFlexGrid1_ = new Tabella(this);
    MSFlexGrid1_->setObjectName(QStringLiteral("MSFlexGrid1"));
    MSFlexGrid1_->setAccessibleName(windowTitle());
    MSFlexGrid1_->NomeCsv(filePdf, "-report.csv");
    MSFlexGrid1_->Quote({0.2, 0.2, 0.28, 0.28});
    MSFlexGrid1_->Titoli({InQt(Testo(Voce::Sessione)), InQt(Testo(Voce::Giro)),
                          InQt(Testo(Voce::Tempo)), InQt(TitoloVelocita())});
    std::vector<QStringList> celle;
    for (int giro = 1; giro <= analisi.NumGiri(); ++giro) {
        // Index 1 of the analysis is the stretch before the first mark.
        const int indice = giro + 1;
        giri_.push_back({analisi.GetSessioneTempo(indice), TestoNumero(giro),
                         analisi.GetTempoGiro(indice), analisi.GetVelocitaGiro(indice)});
        const RigaReport& riga = giri_.back();
        celle.push_back(
            {InQt(riga.Sessione), InQt(riga.Giro), InQt(riga.Tempo), InQt(riga.Velocita)});
    }
    MSFlexGrid1_->Riempi(celle);
    MSFlexGrid1_->Numeri();

    Mnemonica lettere;
    auto* riga = new QHBoxLayout;
    const auto pulsante = [&](const char* nome, Voce testo, std::function<void()> azione) {
        QPushButton* const nuovo = CreaPulsante(nome, std::move(azione));
        nuovo->setText(lettere.Con(InQt(Testo(testo))));
        riga->addWidget(nuovo);
    };
    pulsante("cmdGiri", Voce::OrdinaPerGiro, [this] { MSFlexGrid1_->Ordina(kOrdinePerGiro); });
    pulsante("cmdTempi", Voce::OrdinaPerTempo, [this] { MSFlexGrid1_->Ordina(kOrdinePerTempo); });
    riga->addStretch(1);
    pulsante("cmdStampa", Voce::Stampa, [this] { Stampa(); });

    ApriStampante = [titolo = Testo(Voce::ReportGiri), filePdf] {
        return ScegliStampante(titolo, filePdf);
    };

    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(MSFlexGrid1_, 1);
    colonna->addLayout(riga);
    MSFlexGrid1_->setMinimumWidth(MSFlexGrid1_->LarghezzaPerTesti());
    const QSize minima = minimumSizeHint();
    resize(minima.width(), minima.height() - MSFlexGrid1_->minimumSizeHint().height() +
                               MSFlexGrid1_->AltezzaPer(kRigheVisibili));
    MSFlexGrid1_->setFocus();
}

void dlgReportGiri::Stampa() {
    const std::unique_ptr<QtPrinter> stampante = ApriStampante();
    if (stampante == nullptr) return;
    const PuntatoreOccupato occupato;
    QStringList piede;
    if (!log_.empty()) piede << PercorsoInQt(log_);
    piede << InQt(Testo(Voce::StampatoIl))
                 .arg(QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")));
    StampaReport(*stampante, giri_, DaQt(piede.join(QStringLiteral("  \u00B7  "))));
}

}  // namespace lapvane
