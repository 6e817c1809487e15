#pragma once

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QWidget>

#include "platform/Platform.h"

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

/// The controls of one channel, as a row of the channel list's grid. Their object names end in the
/// channel's number.
class RigaCanale : public QObject {
    Q_OBJECT
 public:
    /// Row `riga` of `griglia`, whose widgets belong to `parent`.
    RigaCanale(int c, QWidget* parent, QGridLayout* griglia, int riga);

    void Mostra(bool visibile);
    void Nome(const QString& nome);
    void Unita(const QString& unita);
    void ImpostaColore(Colore colore) { shpColor->ImpostaColore(colore); }
    /// What the scale option is called for those who cannot see it.
    void NomeScala(const QString& nome);

    QCheckBox* chkGrafico;
    CampioneColore* shpColor;
    QLabel* lblNomeCampo;
    QLabel* lblUM;
    QRadioButton* optScala;

 protected:
    bool eventFilter(QObject* oggetto, QEvent* evento) override;

 private:
    QString nomeScala_;
};

}  // namespace lapvane
