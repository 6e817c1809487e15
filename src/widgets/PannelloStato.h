#pragma once

#include <QFrame>
#include <QIcon>
#include <QString>

namespace lapvane {

/// One panel of a status bar: a picture and a text that is shortened in the middle where it does
/// not fit (the whole of it is the tool tip).
class PannelloStato : public QFrame {
    Q_OBJECT
 public:
    explicit PannelloStato(QWidget* parent = nullptr);

    /// Shows the text when events run next: of those that come and go before, nobody sees any.
    void ImpostaTesto(const QString& testo);
    void ImpostaImmagine(const QIcon& immagine);
    const QString& Testo() const { return testo_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    int LarghezzaImmagine() const;

    void Mostra();

    QString testo_;
    QString mostrato_;     ///< what it shows, and has told to those who read windows aloud
    bool atteso_ = false;  ///< the text of now will be shown when events run
    QIcon immagine_;
};

}  // namespace lapvane
