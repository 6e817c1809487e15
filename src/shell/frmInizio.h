#pragma once

#include <QLabel>
#include <QScrollArea>
#include <array>
#include <functional>
#include <map>
#include <vector>

#include "shell/Voci.h"
#include "widgets/Sfondo.h"

class QAction;
class QBoxLayout;
class QGridLayout;
class QPushButton;
class QVBoxLayout;

namespace lapvane {

class CartaAzione;
class Scheda;

/// A recent file as the start page shows it.
struct RecenteInizio {
    QString Nome;
    QString Riga;
    QString Data;
    bool operator==(const RecenteInizio&) const = default;
};

/// What the start page has to know.
struct StatoInizio {
    bool Strumento = false;  ///< it answers
    QString Identita;
    QString Porta;
    bool Progetto = false;  ///< one is open
    QString NomeProgetto;
    QString Percorso;
    bool LogDaSalvare = false;
    int Lingua = -1;
    std::vector<RecenteInizio> Progetti;
    std::vector<RecenteInizio> Log;
    bool operator==(const StatoInizio&) const = default;
};

/// The ground of the main window: what one does next, the likeliest first, and the recent files. A
/// card is its command: on when that is on, and with its key.
class frmInizio : public Sfondo {
    Q_OBJECT
 public:
    explicit frmInizio(QWidget* parent = nullptr);

    /// The parts of the page, each with its cards in two columns.
    enum class Parte { Configurazione, Strumento, Progetto, Analisi };

    /// A card for a command, before the first `Mostra`. Its picture and key are those of the
    /// action.
    void Aggiungi(Parte parte, QAction* azione, Voce riga, bool soloConProgetto = false);
    /// A card that is no command of the menu.
    CartaAzione* Aggiungi(Parte parte, const char* nome, Voce titolo, Voce riga, const QIcon& icona,
                          std::function<void()> azione);
    /// The same that stands in for a command as long as no project is open.
    void SenzaProgetto(QAction* azione, Voce riga, std::function<void()> invece);

    std::function<void(int)> ApriProgetto;  ///< of the list of recent ones
    std::function<void(int)> ApriLog;
    std::function<void()> SalvaLog;
    std::function<void()> Manuale;
    std::function<void()> Tasti;

    /// Shows it where it is another than before.
    void Mostra(const StatoInizio& stato);

 protected:
    void resizeEvent(QResizeEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    struct Carta {
        Parte Dove;
        QAction* Azione;  // null: no command of the menu
        Voce Titolo;
        Voce Riga;
        CartaAzione* Pulsante;
        bool SoloConProgetto = false;
        std::function<void()> Invece;  // without a project
        Voce RigaInvece{};
    };
    struct Lista {
        Scheda* Cornice = nullptr;
        QLabel* Vuota = nullptr;
        std::array<CartaAzione*, 4> Righe{};
    };

    void CreaTesta(QVBoxLayout* colonna);
    void CreaParti(QVBoxLayout* colonna);
    void CreaStriscia(QVBoxLayout* colonna);
    Lista CreaLista(const char* nome, const char* icona, QVBoxLayout* colonna,
                    std::function<void(int)> frmInizio::*apri);
    void CreaRimandi(QVBoxLayout* colonna);
    QPushButton* Rimando(const char* nome, std::function<void()> frmInizio::*apri);
    void Premuta(const Carta& carta);
    void Riempi(const Lista& lista, Voce titolo, const std::vector<RecenteInizio>& righe);
    void MostraCarte();
    void AggiornaCarta(const Carta& carta);
    void Colonne();
    void AccorciaTesta();
    void Caratteri();
    std::vector<Parte> Ordine() const;

    StatoInizio stato_;
    std::vector<Carta> carte_;
    QScrollArea* scorre_ = nullptr;
    QBoxLayout* colonne_ = nullptr;
    QWidget* sinistra_ = nullptr;
    QVBoxLayout* parti_ = nullptr;
    QLabel* lblNome_ = nullptr;
    QLabel* lblDomanda_ = nullptr;
    struct Gruppo {
        QWidget* Tutto = nullptr;
        QLabel* Titolo = nullptr;
        QLabel* Nota = nullptr;
        QGridLayout* Carte = nullptr;
    };
    std::map<Parte, Gruppo> gruppi_;
    QWidget* striscia_ = nullptr;
    QLabel* lblLogDaSalvare_ = nullptr;
    QPushButton* cmdPiuTardi_ = nullptr;
    QPushButton* cmdSalvaLog_ = nullptr;
    Lista progetti_;
    Lista log_;
    QPushButton* cmdManuale_ = nullptr;
    QPushButton* cmdTasti_ = nullptr;
    bool rimandata_ = false;  // the strip, until the next download
};

}  // namespace lapvane
