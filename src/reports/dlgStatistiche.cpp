#include "reports/dlgStatistiche.h"

#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "widgets/Tabella.h"

namespace lapvane {

namespace {

constexpr int kLarghezza = 380;

}  // namespace

dlgStatistiche::dlgStatistiche(const FigureSessione& figure, QWidget* parent,
                               const std::filesystem::path& log)
    : Dialogo("dlgStatistiche", parent) {
    setWindowTitle(InQt(Testo(Voce::StatisticheSessione)));
    auto* MSFlexGrid1 = new Tabella(this);
    MSFlexGrid1->setObjectName(QStringLiteral("MSFlexGrid1"));
    MSFlexGrid1->setAccessibleName(windowTitle());
    MSFlexGrid1->NomeCsv(log, "-statistics.csv");
    MSFlexGrid1->Quote({3.0 / 5.0, 1.88 / 5.0});

    // The labels of the worst lap are those of the best one.
    const std::array<std::pair<Voce, std::string>, 10> righe = {
        {{Voce::StatisticaGiriCompletati, TestoNumero(figure.NumGiri)},
         {Voce::TempoTotale, figure.TempoTotale},
         {Voce::TempoMedio, figure.TempoMedio},
         {Voce::VelocitaMedia, figure.VelocitaMedia},
         {Voce::GiroMigliore, TestoNumero(figure.GiroMigliore)},
         {Voce::TempoSulGiro, figure.TempoMigliore},
         {Voce::VelocitaSulGiro, figure.VelocitaMigliore},
         {Voce::GiroPeggiore, TestoNumero(figure.GiroPeggiore)},
         {Voce::TempoSulGiro, figure.TempoPeggiore},
         {Voce::VelocitaSulGiro, figure.VelocitaPeggiore}}};
    std::vector<QStringList> celle;
    celle.reserve(righe.size());
    for (const auto& [testo, valore] : righe) celle.push_back({InQt(Testo(testo)), InQt(valore)});
    MSFlexGrid1->Riempi(celle);

    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(MSFlexGrid1);
    MSFlexGrid1->setMinimumHeight(MSFlexGrid1->AltezzaPer(static_cast<int>(righe.size())));
    MSFlexGrid1->setMinimumWidth(MSFlexGrid1->LarghezzaPerTesti());
    const int larghezza = std::max(minimumSizeHint().width(), kLarghezza);
    if (figure.GiriEsclusi > 0) {
        QLabel* lblGiriEsclusi = Etichetta(this, "lblGiriEsclusi");
        lblGiriEsclusi->setText(
            InQt(Testo(Voce::GiriSenzaTempo) + " " + TestoNumero(figure.GiriEsclusi)));
        lblGiriEsclusi->setWordWrap(true);
        // The height of a text in several lines is no layout's minimum by itself.
        const QMargins bordi = colonna->contentsMargins();
        lblGiriEsclusi->setMinimumHeight(
            lblGiriEsclusi->heightForWidth(larghezza - bordi.left() - bordi.right()));
        colonna->addWidget(lblGiriEsclusi);
    }
    resize(larghezza, minimumSizeHint().height());
}

}  // namespace lapvane
