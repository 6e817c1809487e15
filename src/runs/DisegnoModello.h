#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "runs/Archivio.h"
#include "runs/ElencoUscite.h"

namespace lapvane {

/// The runs of an archive as the list shows them: filtered, sorted, in groups of which some are
/// folded. Texts are made when they are asked for.
class DisegnoModello : public QAbstractTableModel {
    Q_OBJECT
 public:
    explicit DisegnoModello(const Archivio& archivio, QObject* parent = nullptr);

    /// Takes over what the archive has now. False: nothing has changed since.
    bool Aggiorna();
    /// Takes other values of one run, which stays where it is until the rows are sorted anew.
    void AggiornaUscita(const Uscita& uscita);
    void Cerca(const QString& testo);
    void Ordina(ColonnaUscite colonna, bool discendente);
    /// Sorts anew as before: values have come.
    void Riordina() { Ordina(elenco_.Ordine(), elenco_.Discendente()); }
    void Raggruppa(GruppoPer gruppo);
    void Piega(int riga, bool aperto);
    /// The texts are to be made anew, as in another language.
    void Ritesta();

    const ElencoUscite& Elenco() const { return elenco_; }
    /// The run of a row; null: the head of a group, or no row at all.
    const Uscita* UscitaA(int riga) const;
    bool TestataA(int riga) const;
    /// The longest text of each column that holds what a person has written, of all runs.
    std::array<QString, kColonneUscite> PiuLunghi() const;
    /// All runs, as they were at the last `Aggiorna`: the archive's places don't hold that long.
    const std::vector<Uscita>& Uscite() const { return uscite_; }
    /// The row of a run; -1: it does not show.
    int RigaDi(const std::filesystem::path& csv) const;
    /// The words of a run's group, as its head has them: name and what stands behind it.
    QString NomeGruppo(int gruppo) const;
    QString SottoGruppo(int gruppo) const;

    int rowCount(const QModelIndex& padre = {}) const override;
    int columnCount(const QModelIndex& padre = {}) const override;
    QVariant data(const QModelIndex& indice, int ruolo) const override;
    QVariant headerData(int sezione, Qt::Orientation verso, int ruolo) const override;
    Qt::ItemFlags flags(const QModelIndex& indice) const override;

 private:
    void Cambia(const std::function<void()>& come);
    void Componi();
    int Posto(int riga) const;
    QVariant DatoGruppo(int gruppo, int colonna, int ruolo) const;
    QVariant DatoUscita(int posto, ColonnaUscite colonna, int ruolo) const;

    const Archivio& archivio_;
    ElencoUscite elenco_;
    std::vector<RigaElenco> righe_;
    std::vector<Uscita> uscite_;
    std::unordered_map<std::filesystem::path::string_type, int> posti_;  ///< in `uscite_`, by path
    std::vector<int> rigaDi_;        ///< by place in `uscite_`; -1: it does not show
    std::set<std::string> piegati_;  ///< names of the groups that are folded
    std::uint64_t revisione_ = 0;
    char decimale_ = '.';
};

}  // namespace lapvane
