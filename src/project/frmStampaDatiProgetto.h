#pragma once

#include <QGridLayout>
#include <QPainter>
#include <functional>
#include <memory>

#include "platform/qt/QtPrinter.h"
#include "shell/Voci.h"
#include "widgets/Dialogo.h"
#include "widgets/style/Misure.h"

namespace lapvane {

/// The main settings of the project on one page, to be looked at and printed. The paper shows the
/// form as it is laid out: a label that is added to it is printed as well.
class frmStampaDatiProgetto : public Dialogo {
    Q_OBJECT
 public:
    explicit frmStampaDatiProgetto(QWidget* parent = nullptr);

    /// Draws all labels, lines and frames of the form at their places, in pixels of the form,
    /// shifted by two margins.
    void Pagina(QPainter& penna, double margineX, double margineY) const;

    /// Opens the printer; null when the user cancels. At first the system's default printer or a
    /// PDF file.
    std::function<std::unique_ptr<QtPrinter>()> ApriStampante;

 private:
    /// Paper has its measures.
    void Stringi() override {}
    void Titolo(const char* nome, const std::string& testo, Scrittura scrittura);
    void Riga(const char* etichetta, Voce testo, const char* valore, const std::string& contenuto);
    void Linea();
    void cmdPreview_Click();
    void cmdPrint_Click();

    QWidget* foglio_ = nullptr;
    QGridLayout* griglia_ = nullptr;
    int riga_ = 0;
};

/// The surface of the preview: one sheet of paper, drawn by whoever opens it.
class frmSupportoStampa : public Dialogo {
    Q_OBJECT
 public:
    /// `disegna` paints into a page of the paper in use, in pixels of 1/96 inch.
    frmSupportoStampa(std::function<void(QPainter&)> disegna, QWidget* parent = nullptr);

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    std::function<void(QPainter&)> disegna_;
};

}  // namespace lapvane
