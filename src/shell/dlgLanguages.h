#pragma once

#include <QDialog>
#include <QRadioButton>

namespace lapvane {

/// The choice of language.
class dlgLanguages : public QDialog {
    Q_OBJECT
 public:
    explicit dlgLanguages(QWidget* parent = nullptr);

 protected:
    bool event(QEvent* evento) override;

 private:
    void AggiornaTesti();

    QRadioButton* optItaliano_ = nullptr;
    QRadioButton* optInglese_ = nullptr;
    QPushButton* CancelButton_ = nullptr;
};

}  // namespace lapvane
