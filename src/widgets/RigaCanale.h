#pragma once

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QWidget>
#include <vector>

#include "platform/Colore.h"

namespace lapvane {

/// A patch of a channel's line colour, as the graph shows it.
class CampioneColore : public QWidget {
    Q_OBJECT
 public:
    explicit CampioneColore(QWidget* parent = nullptr);
    void ImpostaColore(Colore colore);
    QSize sizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    Colore colore_ = 0;
};

/// The value of a column at the cursor: read-only, bold on yellow while its channel is drawn.
class CasellaValore : public QLineEdit {
    Q_OBJECT
 public:
    explicit CasellaValore(QWidget* parent = nullptr);
    void Segna(bool disegnato);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void paintEvent(QPaintEvent* evento) override;
    void changeEvent(QEvent* evento) override;

 private:
    bool disegnato_ = false;
};

/// The controls of one column of the log, as a row of the channel list's grid. Their object names
/// end in the column's number. The time and the distance have a box of the x axis in the place of
/// chkGrafico, and neither colour nor settings.
class RigaCanale : public QObject {
    Q_OBJECT
 public:
    /// Row `riga` of `griglia`, whose widgets belong to `parent`. `asse` is the name of the box of
    /// the x axis; empty for a channel.
    RigaCanale(int c, QWidget* parent, QGridLayout* griglia, int riga, const char* asse = "");

    void Mostra(bool visibile);
    void Nome(const QString& nome);
    void Unita(const QString& unita);
    /// Whether the unit stands in its column or, where that is too much, in the tool tips.
    void UnitaInVista(bool vista);
    void ImpostaColore(Colore colore);
    /// The look and the enabling of a channel that is drawn, or of one that is not.
    void Segna(bool disegnato);
    /// What the scale option and the settings button are called.
    void NomiPulsanti(const QString& scala, const QString& impostazioni);

    QCheckBox* chkGrafico;  ///< of the time and the distance: the box of the x axis
    CampioneColore* shpColor = nullptr;
    QLabel* lblNomeCampo;
    QLabel* lblUM;
    CasellaValore* txtValore;
    QRadioButton* optScala = nullptr;
    QPushButton* cmdSetGraph = nullptr;

 protected:
    bool eventFilter(QObject* oggetto, QEvent* evento) override;

 private:
    std::vector<QWidget*> Tutti() const;
    void Adatta();
    void NomiAccessibili();

    bool visibile_ = true;
    bool unitaInVista_ = true;
    QString scala_;
    QString impostazioni_;
};

}  // namespace lapvane
