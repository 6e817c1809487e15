#include "reports/dlgReportGiri.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/PuntatoreOccupato.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Protetto.h"
#include "widgets/Mnemonica.h"
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
    : QDialog(parent) {
    setObjectName(QStringLiteral("dlgReportGiri"));
    CalcolaBaseTesti();
    setWindowTitle(InQt(Testo(Voce::ReportGiri)));
    MSFlexGrid1_ = new Tabella(this);
    MSFlexGrid1_->setObjectName(QStringLiteral("MSFlexGrid1"));
    MSFlexGrid1_->setAccessibleName(windowTitle());
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

    Mnemonica lettere;
    const auto pulsante = [&](const char* nome, Voce testo) {
        auto* const nuovo = new QPushButton(lettere.Con(InQt(Testo(testo))), this);
        nuovo->setObjectName(QString::fromLatin1(nome));
        return nuovo;
    };
    auto* cmdGiri = pulsante("cmdGiri", Voce::OrdinaPerGiro);
    auto* cmdTempi = pulsante("cmdTempi", Voce::OrdinaPerTempo);
    auto* cmdStampa = pulsante("cmdStampa", Voce::Stampa);
    connect(cmdGiri, &QPushButton::clicked, this,
            [this] { Protetto([this] { MSFlexGrid1_->Ordina(kOrdinePerGiro); }); });
    connect(cmdTempi, &QPushButton::clicked, this,
            [this] { Protetto([this] { MSFlexGrid1_->Ordina(kOrdinePerTempo); }); });
    connect(cmdStampa, &QPushButton::clicked, this, [this] { Protetto([this] { Stampa(); }); });

    ApriStampante = [titolo = Testo(Voce::ReportGiri), filePdf] {
        return ScegliStampante(titolo, filePdf);
    };

    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(MSFlexGrid1_, 1);
    auto* riga = new QHBoxLayout;
    riga->addWidget(cmdGiri);
    riga->addWidget(cmdTempi);
    riga->addStretch(1);
    riga->addWidget(cmdStampa);
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
    StampaReport(*stampante, giri_);
}

}  // namespace lapvane
