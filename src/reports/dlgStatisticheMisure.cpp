#include "reports/dlgStatisticheMisure.h"

#include <QVBoxLayout>
#include <algorithm>

#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "reports/CanaliLog.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "widgets/Tabella.h"

namespace lapvane {

namespace {

constexpr int kTwipPixel = 15;
constexpr int kAltezza = 6720 / kTwipPixel;

QString DueDecimali(const std::string& numero) {
    return InQt(
        Formatta(LeggiNumero(numero).value_or(0.0), "#0.##", platform().DecimalSeparator()));
}

}  // namespace

dlgStatisticheMisure::dlgStatisticheMisure(const AnalisiPubblica& analisi, QWidget* parent,
                                           const std::filesystem::path& log)
    : Dialogo("dlgStatisticheMisure", parent) {
    setWindowTitle(InQt(Testo(Voce::StatisticheCanali)));
    auto* MSFlexGrid1 = new Tabella(this);
    MSFlexGrid1->setObjectName(QStringLiteral("MSFlexGrid1"));
    MSFlexGrid1->setAccessibleName(windowTitle());
    MSFlexGrid1->NomeCsv(log, "-channels.csv");
    MSFlexGrid1->Quote({8.0 / 19.0, 3.0 / 19.0, 3.0 / 19.0, 4.0 / 19.0});
    MSFlexGrid1->Titoli({InQt(Testo(Voce::Canale)), InQt(Testo(Voce::Minimo)),
                         InQt(Testo(Voce::Massimo)), InQt(Testo(Voce::Media))});
    std::vector<QStringList> celle;
    for (int c = kPrimoCanale; c <= std::min(analisi.NumCampi(), kUltimoCanale); ++c) {
        celle.push_back({InQt(analisi.GetNomeMisura(c)), DueDecimali(analisi.GetMinVal(c)),
                         DueDecimali(analisi.GetMaxVal(c)), DueDecimali(analisi.GetMediaVal(c))});
    }
    MSFlexGrid1->Riempi(celle);

    auto* colonna = new QVBoxLayout(this);
    colonna->addWidget(MSFlexGrid1);
    MSFlexGrid1->setMinimumWidth(MSFlexGrid1->LarghezzaPerTesti());
    resize(minimumSizeHint().width(), kAltezza);
}

}  // namespace lapvane
