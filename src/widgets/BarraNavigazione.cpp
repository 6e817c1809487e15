#include "widgets/BarraNavigazione.h"

#include <QEvent>
#include <QHBoxLayout>
#include <algorithm>

namespace lapvane {

namespace {

constexpr double kPocoZoom = 0.9;
constexpr double kMoltoZoom = 0.5;
constexpr int kMargine = 4;
constexpr int kMargineTesto = 16;  // of a button's letters, both sides

void Colora(QPushButton* pulsante, bool verde) {
    QPalette colori;
    if (verde) {
        colori.setColor(QPalette::Button, QColor(0, 255, 0));
        colori.setColor(QPalette::ButtonText, Qt::black);
    }
    pulsante->setPalette(colori);
}

void AdattaPulsante(QPushButton* pulsante) {
    const QString testo = pulsante->text();
    const QString largo = testo.size() > 1 ? testo : QStringLiteral("000");
    pulsante->setFixedWidth(pulsante->fontMetrics().horizontalAdvance(largo) + kMargineTesto);
}

}  // namespace

BarraNavigazione::BarraNavigazione(QWidget* parent) : QWidget(parent) {
    gruppi_ = new QBoxLayout(QBoxLayout::LeftToRight, this);
    gruppi_->setContentsMargins(0, 2 * kMargine, 0, 0);
    gruppi_->setSpacing(kMargine);
    auto* riga = new QHBoxLayout;
    riga->setSpacing(kMargine);
    gruppi_->addLayout(riga);
    auto* lblZoom = new QLabel(QStringLiteral("ZOOM"), this);
    lblZoom->setObjectName(QStringLiteral("lblZoom"));
    riga->addWidget(lblZoom);
    struct Zoomata {
        const char* Nome;
        const char* Testo;
        double Fattore;
        bool Fuori;
    };
    constexpr std::array<Zoomata, 4> kZoom = {{{"cmdZoomIn10", "+10%", kPocoZoom, false},
                                               {"cmdZoomIn50", "+50%", kMoltoZoom, false},
                                               {"cmdZoomOut10", "-10%", kPocoZoom, true},
                                               {"cmdZoomOut50", "-50%", kMoltoZoom, true}}};
    for (std::size_t i = 0; i < kZoom.size(); ++i) {
        const Zoomata& z = kZoom[i];
        QPushButton* const pulsante = Pulsante(z.Nome, QString::fromLatin1(z.Testo));
        pulsante->setAccessibleName(QStringLiteral("Zoom ") + QString::fromLatin1(z.Testo));
        connect(pulsante, &QPushButton::clicked, this,
                [this, z] { Q_EMIT Zoom(z.Fattore, z.Fuori); });
        (i < zoomIn_.size() ? zoomIn_[i] : zoomOut_[i - zoomIn_.size()]) = pulsante;
        riga->addWidget(pulsante);
    }
    riga->addStretch(1);
    riga = new QHBoxLayout;
    riga->setSpacing(kMargine);
    riga->addStretch(1);
    gruppi_->addLayout(riga);
    struct Spostamento {
        const char* Nome;
        char16_t Segno;
        int Passi;
    };
    constexpr std::array<Spostamento, 4> kSposta = {{{"cmdSpostaSX10", u'\u00AB', -10},
                                                     {"cmdSpostaSX1", u'\u2039', -1},
                                                     {"cmdSpostaDX1", u'\u203A', 1},
                                                     {"cmdSpostaDX10", u'\u00BB', 10}}};
    scorri_[0] = Pulsante("cmdScorriSX", QString(QChar(u'\u25C0')));
    scorri_[1] = Pulsante("cmdScorriDX", QString(QChar(u'\u25B6')));
    connect(scorri_[0], &QPushButton::clicked, this, [this] { Q_EMIT ScorriPremuto(-1); });
    connect(scorri_[1], &QPushButton::clicked, this, [this] { Q_EMIT ScorriPremuto(1); });
    riga->addWidget(scorri_[0]);
    for (std::size_t i = 0; i < kSposta.size(); ++i) {
        const Spostamento& s = kSposta[i];
        sposta_[i] = Pulsante(s.Nome, QString(QChar(s.Segno)));
        sposta_[i]->setAutoRepeat(true);
        connect(sposta_[i], &QPushButton::clicked, this, [this, s] { Q_EMIT Sposta(s.Passi); });
        riga->addWidget(sposta_[i]);
    }
    riga->addWidget(scorri_[1]);
}

QSize BarraNavigazione::minimumSizeHint() const {
    // Of both groups one below the other, whichever way they stand now.
    const QLayout* const zoom = gruppi_->itemAt(0)->layout();
    const QLayout* const sposta = gruppi_->itemAt(1)->layout();
    return {std::max(zoom->minimumSize().width(), sposta->minimumSize().width()),
            gruppi_->minimumSize().height()};
}

void BarraNavigazione::resizeEvent(QResizeEvent* evento) {
    QWidget::resizeEvent(evento);
    int largo = kMargine;
    for (int i = 0; i < 2; ++i) largo += gruppi_->itemAt(i)->layout()->minimumSize().width();
    const auto verso = width() < largo ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
    if (verso == gruppi_->direction()) return;
    gruppi_->setDirection(verso);
    updateGeometry();  // at once: those around it make room for the second row
}

QPushButton* BarraNavigazione::Pulsante(const char* nome, const QString& testo) {
    auto* pulsante = new QPushButton(testo, this);
    pulsante->setObjectName(QString::fromLatin1(nome));
    pulsante->setAutoDefault(false);
    AdattaPulsante(pulsante);
    return pulsante;
}

void BarraNavigazione::changeEvent(QEvent* evento) {
    QWidget::changeEvent(evento);
    if (evento->type() != QEvent::FontChange) return;
    for (QPushButton* const pulsante : findChildren<QPushButton*>()) AdattaPulsante(pulsante);
}

void BarraNavigazione::AbilitaZoomIn(bool acceso) {
    for (QPushButton* const pulsante : zoomIn_) pulsante->setEnabled(acceso);
}

void BarraNavigazione::ScattoZoom(bool fuori) {
    (fuori ? zoomOut_ : zoomIn_)[0]->click();
}

void BarraNavigazione::Scorri(bool sinistra, bool sinistraVerde, bool destra, bool destraVerde) {
    scorri_[0]->setEnabled(sinistra);
    scorri_[1]->setEnabled(destra);
    Colora(scorri_[0], sinistraVerde);
    Colora(scorri_[1], destraVerde);
}

void BarraNavigazione::Nomi(const QString& sposta, const QString& scorri) {
    constexpr std::array<const char*, 4> kPassi = {" -10", " -1", " +1", " +10"};
    for (std::size_t i = 0; i < sposta_.size(); ++i) {
        sposta_[i]->setAccessibleName(sposta + QString::fromLatin1(kPassi[i]));
        sposta_[i]->setToolTip(sposta);
    }
    for (QPushButton* const pulsante : scorri_) {
        pulsante->setAccessibleName(scorri + QLatin1Char(' ') + pulsante->text());
        pulsante->setToolTip(scorri);
    }
}

}  // namespace lapvane
