#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <array>
#include <functional>
#include <string_view>

#include "reports/EditorSessione.h"
#include "widgets/Dialogo.h"

namespace lapvane {

class DisegnoTracciato;

/// What is known about the analysed log, and the division of its track.
class dlgDatiSessione : public Dialogo {
    Q_OBJECT
 public:
    /// Fills the boxes from `DatiSessione` and the files of its circuit. Error 76 if the folder of
    /// the tracks is missing. `salvaDatiSessione` writes the session of the open log, behind an OK
    /// that holds.
    explicit dlgDatiSessione(std::function<void()> salvaDatiSessione, QWidget* parent = nullptr);

    void done(int esito) override;

 protected:
    bool eventFilter(QObject* oggetto, QEvent* evento) override;

 private:
    QWidget* CreaSessione();
    void CreaCampi(QWidget* qui);
    QWidget* CreaCircuito();
    QWidget* CreaSettori();
    static QLineEdit* Casella(QWidget* dove, std::string_view nome);

    void AggiornaTesti(Mnemonica& lettere) override;
    void Stringi() override;
    void AggiornaTitolo();
    void RiempiCboCircuito();
    void RiempiCampiSessione();
    EditorSessione::Campi CampiScritti() const;
    void MostraLunghezza(const std::string& lunghezza);
    void cboCircuito_Click();
    void cboNumSettori_Click();
    void txtLunghezzaTracciato_Fine();
    void txtX_Fine(int i);
    void OKButton_Click();
    void MostraSettori();
    void CircuitoScritto();
    bool Invio(QObject* oggetto);
    void Lascia(QObject* oggetto);
    int IndiceCasella(const QObject* oggetto) const;

    std::function<void()> SalvaDatiSessione_;
    EditorSessione editor_;
    QString circuitoLetto_;
    QString lunghezzaLetta_;  ///< the track length that the division is for
    bool chiuso_ = false;

    QGroupBox* fraSessione_ = nullptr;
    QGroupBox* fraCircuito_ = nullptr;
    QLabel* lblSessione_ = nullptr;
    QLabel* lblData_ = nullptr;
    QLabel* lblOra_ = nullptr;
    QLabel* lblCircuito_ = nullptr;
    QLabel* lblLunghTracciato_ = nullptr;
    QLabel* lblMetri_ = nullptr;
    QLabel* lblVeicolo_ = nullptr;
    QLabel* lblPiloti_ = nullptr;
    QLabel* lblNote_ = nullptr;
    QLabel* lblSettori_ = nullptr;
    QLabel* lblNSettori_ = nullptr;
    QLineEdit* txtSessione_ = nullptr;
    QLineEdit* txtDataSessione_ = nullptr;
    QLineEdit* txtOraSessione_ = nullptr;
    QComboBox* cboCircuito_ = nullptr;
    QLineEdit* txtLunghezzaTracciato_ = nullptr;
    QLineEdit* txtVeicolo_ = nullptr;
    QPlainTextEdit* txtPiloti_ = nullptr;
    QPlainTextEdit* txtNote_ = nullptr;
    QComboBox* cboNumSettori_ = nullptr;
    std::array<QLineEdit*, kSettoriMassimi> txtX_{};
    std::array<QLabel*, kSettoriMassimi> lblNumSetc_{};
    DisegnoTracciato* Picture1_ = nullptr;
};

}  // namespace lapvane
