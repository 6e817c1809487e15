#pragma once

#include "device/ProgrammaStrumento.h"
#include "widgets/Dialogo.h"

namespace lapvane {

/// The window of a run through the whole instrument: a heading, the growing list of the steps, the
/// closing line. Closing it while the run is on stops the run.
class dlgStrumento : public Dialogo, private VistaStrumento {
    Q_OBJECT
 public:
    explicit dlgStrumento(QWidget* parent = nullptr);

    /// Plays a run (`mnuProgramDevice_Click` or `mnuReadDevice_Click`) and stays until the person
    /// closes what it leaves open.
    void Esegui(void (*corsa)(VistaStrumento&));
    /// Reads the instrument into a copy and shows what differs from the project; a read that did
    /// not come through shows nothing more.
    void Confronta();

    void done(int esito) override;

 private:
    void Mostra(const std::string& titolo) override;
    bool Visibile() const override { return isVisible(); }
    void Puntatore(Pointer puntatore) override;
    void Aggiungi(const std::string& testo) override;
    void Chiusura(const std::string& testo) override;
    void Scarica() override;

    QLabel* Label1_ = nullptr;
    QLabel* Label2_ = nullptr;
    QLabel* Label3_ = nullptr;
    QPushButton* cmdConfronta_ = nullptr;  // there only behind a project that was written
    bool confronta_ = false;
    bool inCorso_ = false;
};

}  // namespace lapvane
