#include "device/DisegnoDifferenze.h"

#include <QHeaderView>

#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"

namespace lapvane {

TabellaDifferenze::TabellaDifferenze(QWidget* parent) : Tabella(parent) {
    setObjectName(QStringLiteral("tabDifferenze"));
    Quote({0.12, 0.3, 0.25, 0.25, 0.08});
    setSelectionBehavior(QAbstractItemView::SelectRows);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void TabellaDifferenze::Lati(const QString& prima, const QString& ora) {
    Titoli({InQt(Testo(Voce::ColonnaDove)), InQt(Testo(Voce::ColonnaCosa)), prima, ora,
            InQt(Testo(Voce::ColonnaUnita))});
}

void TabellaDifferenze::Mostra(const std::vector<Differenza>& differenze) {
    std::vector<QStringList> righe;
    righe.reserve(differenze.size());
    for (const Differenza& una : differenze) {
        righe.push_back(
            {InQt(una.Dove), InQt(una.Cosa), InQt(una.Prima), InQt(una.Ora), InQt(una.Unita)});
    }
    Riempi(righe);
    for (int r = 0; r < rowCount(); ++r) {
        for (int c = 0; c < columnCount(); ++c) {
            item(r, c)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
            item(r, c)->setToolTip(item(r, c)->text());
        }
    }
}

}  // namespace lapvane
