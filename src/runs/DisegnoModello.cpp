#include "runs/DisegnoModello.h"

#include <algorithm>
#include <utility>

#include "platform/Platform.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"
#include "runs/DisegnoUscite.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace {

QString T(Voce voce) {
    return InQt(Testo(voce));
}

const QString kScende = QStringLiteral(" ▾");
const QString kSale = QStringLiteral(" ▴");

}  // namespace

DisegnoModello::DisegnoModello(const Archivio& archivio, QObject* parent)
    : QAbstractTableModel(parent), archivio_(archivio), decimale_(platform().DecimalSeparator()) {
    elenco_.Prendi(uscite_);
}

void DisegnoModello::Cambia(const std::function<void()>& come) {
    beginResetModel();
    come();
    Componi();
    endResetModel();
}

bool DisegnoModello::Aggiorna() {
    if (revisione_ == archivio_.Revisione()) return false;
    Cambia([this] {
        revisione_ = archivio_.Revisione();
        uscite_ = archivio_.Uscite();
        posti_.clear();
        for (int posto = 0; posto < std::ssize(uscite_); ++posto) {
            posti_.emplace(uscite_[static_cast<std::size_t>(posto)].Csv.native(), posto);
        }
        elenco_.Prendi(uscite_);
    });
    return true;
}

void DisegnoModello::AggiornaUscita(const Uscita& uscita) {
    const auto suo = posti_.find(uscita.Csv.native());
    if (suo == posti_.end()) return;
    uscite_[static_cast<std::size_t>(suo->second)] = uscita;
    const int riga = rigaDi_[static_cast<std::size_t>(suo->second)];
    if (riga >= 0) Q_EMIT dataChanged(index(riga, 0), index(riga, kColonneUscite - 1));
}

void DisegnoModello::Cerca(const QString& testo) {
    Cambia([&] { elenco_.Cerca(DaQt(testo)); });
}

void DisegnoModello::Ordina(ColonnaUscite colonna, bool discendente) {
    Cambia([&] { elenco_.Ordina(colonna, discendente); });
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, kColonneUscite - 1);
}

void DisegnoModello::Raggruppa(GruppoPer gruppo) {
    Cambia([&] {
        piegati_.clear();
        elenco_.Raggruppa(gruppo);
    });
}

void DisegnoModello::Piega(int riga, bool aperto) {
    const int gruppo = righe_[static_cast<std::size_t>(riga)].Gruppo;
    const std::string& nome = elenco_.Gruppi()[static_cast<std::size_t>(gruppo)].Nome;
    if (piegati_.contains(nome) != aperto) return;
    Cambia([&] {
        if (aperto) {
            piegati_.erase(nome);
        } else {
            piegati_.insert(nome);
        }
    });
}

void DisegnoModello::Ritesta() {
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, kColonneUscite - 1);
    if (!righe_.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColonneUscite - 1));
}

/// The lines of the list without those of folded groups.
void DisegnoModello::Componi() {
    righe_.clear();
    righe_.reserve(elenco_.Righe().size());
    rigaDi_.assign(uscite_.size(), -1);
    for (const RigaElenco& riga : elenco_.Righe()) {
        if (riga.Uscita >= 0 && !piegati_.empty() &&
            piegati_.contains(elenco_.Gruppi()[static_cast<std::size_t>(riga.Gruppo)].Nome)) {
            continue;
        }
        if (riga.Uscita >= 0) {
            rigaDi_[static_cast<std::size_t>(riga.Uscita)] = static_cast<int>(righe_.size());
        }
        righe_.push_back(riga);
    }
}

int DisegnoModello::Posto(int riga) const {
    if (riga < 0 || riga >= rowCount()) return -1;
    return righe_[static_cast<std::size_t>(riga)].Uscita;
}

bool DisegnoModello::TestataA(int riga) const {
    return riga >= 0 && riga < rowCount() && Posto(riga) < 0;
}

const Uscita* DisegnoModello::UscitaA(int riga) const {
    const int posto = Posto(riga);
    return posto < 0 ? nullptr : &uscite_[static_cast<std::size_t>(posto)];
}

int DisegnoModello::RigaDi(const std::filesystem::path& csv) const {
    const auto suo = posti_.find(csv.native());
    return suo == posti_.end() ? -1 : rigaDi_[static_cast<std::size_t>(suo->second)];
}

std::array<QString, kColonneUscite> DisegnoModello::PiuLunghi() const {
    std::array<QString, kColonneUscite> testi;
    for (const auto colonna : {ColonnaUscite::Circuito, ColonnaUscite::Sessione,
                               ColonnaUscite::Piloti, ColonnaUscite::Veicolo}) {
        std::string lunga;
        for (const Uscita& uscita : uscite_) {
            std::string testo = TestoColonna(uscita, colonna, decimale_);
            if (testo.size() > lunga.size()) lunga = std::move(testo);
        }
        testi[static_cast<std::size_t>(colonna)] = InQt(lunga);
    }
    return testi;
}

QString DisegnoModello::NomeGruppo(int gruppo) const {
    const std::string& nome = elenco_.Gruppi()[static_cast<std::size_t>(gruppo)].Nome;
    if (!nome.empty()) return InQt(nome);
    return T(elenco_.Gruppo() == GruppoPer::Circuito ? Voce::UscitaSenzaCircuito
                                                     : Voce::ArchivioSenzaData);
}

/// "2760 m · 11 runs · best 1:04.22"
QString DisegnoModello::SottoGruppo(int gruppo) const {
    const GruppoUscite& suo = elenco_.Gruppi()[static_cast<std::size_t>(gruppo)];
    QStringList parti;
    if (!suo.LunghTracciato.empty()) parti << InQt(suo.LunghTracciato) + QStringLiteral(" m");
    parti << (suo.Quante == 1 ? T(Voce::ArchivioContoUna)
                              : T(Voce::ArchivioContoTutte).arg(suo.Quante));
    // Times of a day's circuits are no match for one another.
    if (suo.Migliore > 0 && elenco_.Gruppo() == GruppoPer::Circuito) {
        parti << T(Voce::ArchivioMiglioreDi).arg(InQt(TestoTempo(suo.Migliore, decimale_)));
    }
    return parti.join(QStringLiteral("  ·  "));
}

int DisegnoModello::rowCount(const QModelIndex& padre) const {
    return padre.isValid() ? 0 : static_cast<int>(righe_.size());
}

int DisegnoModello::columnCount(const QModelIndex& padre) const {
    return padre.isValid() ? 0 : kColonneUscite;
}

QVariant DisegnoModello::data(const QModelIndex& indice, int ruolo) const {
    if (!indice.isValid() || indice.row() >= rowCount()) return {};
    const RigaElenco& riga = righe_[static_cast<std::size_t>(indice.row())];
    if (ruolo == RuoloGruppo) return riga.Uscita < 0;
    if (riga.Uscita < 0) return DatoGruppo(riga.Gruppo, indice.column(), ruolo);
    return DatoUscita(riga.Uscita, static_cast<ColonnaUscite>(indice.column()), ruolo);
}

QVariant DisegnoModello::DatoGruppo(int gruppo, int colonna, int ruolo) const {
    switch (ruolo) {
        case Qt::DisplayRole:
            return colonna == 0 ? NomeGruppo(gruppo) : QString();
        case RuoloSotto:
            return SottoGruppo(gruppo);
        case RuoloAperto:
            return !piegati_.contains(elenco_.Gruppi()[static_cast<std::size_t>(gruppo)].Nome);
        default:
            return {};
    }
}

QVariant DisegnoModello::DatoUscita(int posto, ColonnaUscite colonna, int ruolo) const {
    const Uscita& uscita = uscite_[static_cast<std::size_t>(posto)];
    switch (ruolo) {
        case Qt::DisplayRole:
            return InQt(TestoColonna(uscita, colonna, decimale_));
        case RuoloGuaio:
            return InQt(FraseProblema(uscita));
        case RuoloPrimo:
            return elenco_.MiglioreDelCircuito(posto);
        case RuoloIncerto:
            return uscita.QuandoDelFile;
        case RuoloSenzaNome:
            return colonna == ColonnaUscite::Sessione && SenzaNome(uscita);
        case RuoloVecchio:
            return !uscita.Sparito.empty();
        case Qt::ToolTipRole: {
            const QString guaio = InQt(FraseProblema(uscita));
            const QString file = PercorsoInQt(uscita.Csv);
            return guaio.isEmpty() ? file : file + QStringLiteral("\n▲ ") + guaio;
        }
        case Qt::TextAlignmentRole:
            return headerData(static_cast<int>(colonna), Qt::Horizontal, ruolo);
        default:
            return {};
    }
}

QVariant DisegnoModello::headerData(int sezione, Qt::Orientation verso, int ruolo) const {
    if (verso != Qt::Horizontal || sezione < 0 || sezione >= kColonneUscite) return {};
    const auto colonna = static_cast<ColonnaUscite>(sezione);
    if (ruolo == Qt::DisplayRole) {
        // An arrow of the style's own would cut the words of a narrow column.
        const QString titolo = T(TitoloColonna(colonna));
        if (colonna != elenco_.Ordine()) return titolo;
        return titolo + (elenco_.Discendente() ? kScende : kSale);
    }
    if (ruolo == Qt::TextAlignmentRole) {
        const bool cifre = colonna >= ColonnaUscite::Giri;
        return static_cast<int>((cifre ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    return {};
}

/// Heads of groups can be the current row, so that keys fold them, and are never chosen.
Qt::ItemFlags DisegnoModello::flags(const QModelIndex& indice) const {
    if (TestataA(indice.row())) return Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

}  // namespace lapvane
