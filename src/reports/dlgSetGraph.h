#pragma once

#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <cstdint>

#include "analysis/AnalisiDati.h"

namespace lapvane {

/// A button that shows a colour and nothing else.
class PulsanteColore : public QPushButton {
    Q_OBJECT
 public:
    using QPushButton::QPushButton;
    void ImpostaColore(Colore colore);
    Colore ColoreScelto() const { return colore_; }

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    Colore colore_ = 0;
};

/// How one channel is shown: name, unit, filter, colour, line width, scale. It exchanges filter,
/// width and scale through the fields of the analysis that end in `Dialogo`.
class dlgSetGraph : public QDialog {
    Q_OBJECT
 public:
    explicit dlgSetGraph(AnalisiDati& analisi, QWidget* parent = nullptr);

    /// The channel, 0 to 20; set by the caller before the window is shown.
    std::int16_t NumeroCanale = 0;

 protected:
    void showEvent(QShowEvent* evento) override;
    bool event(QEvent* evento) override;

 private:
    void Disponi();
    void Carica();
    void AggiornaTesti();
    void ScegliColore();
    void Conferma();
    /// Shows the message of a box that holds no number of its range, and selects its text.
    void NumeroErrato(QWidget* casella);

    AnalisiDati& analisi_;
    QLineEdit* txtNomeCampo_ = nullptr;
    QLineEdit* txtUM_ = nullptr;
    QLineEdit* txtFiltro_ = nullptr;
    PulsanteColore* cmdColor_ = nullptr;
    QComboBox* cboWidth_ = nullptr;
    QGroupBox* fraScalaDisegno_ = nullptr;
    QLineEdit* txtMinVal_ = nullptr;
    QLineEdit* txtMaxVal_ = nullptr;
    QLabel* lblNomeCampo_ = nullptr;
    QLabel* lblUM_ = nullptr;
    QLabel* lblFiltro_ = nullptr;
    QLabel* lblColoreGrafico_ = nullptr;
    QLabel* lblSpessoreLinea_ = nullptr;
    QLabel* lblMinValDisegno_ = nullptr;
    QLabel* lblMaxValDisegno_ = nullptr;
    QPushButton* CancelButton_ = nullptr;
    QString testoMin_;  ///< what the load put into the scale boxes
    QString testoMax_;
    bool caricata_ = false;
};

}  // namespace lapvane
