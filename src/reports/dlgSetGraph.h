#pragma once

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>

#include "platform/Colore.h"
#include "reports/ImpostazioniCanale.h"
#include "widgets/Dialogo.h"

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

/// How one channel is shown: name, unit, filter, colour, line width, scale. OK changes the values
/// that it was given, Cancel leaves them.
class dlgSetGraph : public Dialogo {
    Q_OBJECT
 public:
    explicit dlgSetGraph(ImpostazioniCanale& valori, QWidget* parent = nullptr);

 private:
    void Disponi();
    void DisponiCampi(QGridLayout* griglia);
    void DisponiScala(QGridLayout* griglia);
    void Carica();
    void AggiornaTesti(Mnemonica& lettere) override;
    void ScegliColore();
    void Conferma();
    /// Shows the message of a box that holds no number of its range, and selects its text.
    void NumeroErrato(QWidget* casella);

    ImpostazioniCanale& valori_;
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
    QString testoMin_;  ///< what the load put into the scale boxes
    QString testoMax_;
};

}  // namespace lapvane
