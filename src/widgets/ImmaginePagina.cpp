#include "widgets/ImmaginePagina.h"

#include <QImageReader>
#include <QPainter>
#include <algorithm>

#include "platform/Cartelle.h"
#include "platform/qt/ConversioniQt.h"

namespace lapvane {

namespace {

constexpr qint64 kPixelMassimi = 4096LL * 4096LL;
constexpr QSize kTenuta = ImmaginePagina::kGrande * 4;  // enough for a screen at four times
constexpr int kPuntiFitti = 512;  // a picture wider than this is no picture of dots

bool Multiplo(const QSize& misura, const QSize& base) {
    return misura.width() % base.width() == 0 && misura.height() % base.height() == 0;
}

}  // namespace

ImmaginePagina::ImmaginePagina(QWidget* parent) : QWidget(parent) {
    setFixedSize(kNaturale);
}

void ImmaginePagina::Mostra(const QImage& immagine, const QString& assente) {
    immagine_ = immagine;
    assente_ = assente;
    disegnata_ = {};
    update();
}

void ImmaginePagina::Grande(bool grande) {
    setFixedSize(grande ? kGrande : kNaturale);
}

QImage ImmaginePagina::Carica(const std::filesystem::path& file) {
    // A pipe or a device would never end.
    if (!Misura(file)) return {};
    QImageReader lettore(PercorsoInQt(file));
    lettore.setDecideFormatFromContent(true);
    const QSize misura = lettore.size();
    if (!misura.isValid() || misura.isEmpty()) return {};
    if (qint64{misura.width()} * misura.height() > kPixelMassimi) return {};
    QImage immagine = lettore.read();
    if (immagine.isNull()) return {};
    const QSize tenuta = misura.boundedTo(kTenuta);
    if (tenuta != misura) {
        immagine = immagine.scaled(tenuta, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    return immagine.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QImage ImmaginePagina::Adatta(const QImage& immagine, const QSize& misura) {
    const QSize base = immagine.size();
    if (Multiplo(misura, base)) return immagine.scaled(misura);
    QImage punti = immagine;
    if (misura.width() > base.width() && misura.height() > base.height() &&
        base.width() <= kPuntiFitti) {
        // Dots far larger than needed, then averaged down: only the seams get a mixed colour.
        constexpr int kFinezza = 4;
        const int volte = kFinezza * (misura.width() / base.width() + 1);
        punti = immagine.scaled(base * volte);
    }
    return punti.scaled(misura, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void ImmaginePagina::paintEvent(QPaintEvent*) {
    QPainter penna(this);
    if (immagine_.isNull()) {
        const QRect campo = rect().adjusted(0, 0, -1, -1);
        penna.setPen(QPen(palette().color(QPalette::Disabled, QPalette::Text), 1, Qt::DashLine));
        penna.drawRect(campo);
        penna.setPen(palette().color(QPalette::WindowText));
        penna.drawText(campo.adjusted(4, 4, -4, -4), Qt::AlignCenter | Qt::TextWordWrap, assente_);
        return;
    }
    const qreal scala = devicePixelRatioF();
    const QSize misura = (QSizeF(size()) * scala).toSize();
    if (disegnata_.size() != misura) {
        disegnata_ = Adatta(immagine_, misura);
        disegnata_.setDevicePixelRatio(scala);
    }
    penna.drawImage(QPointF(0, 0), disegnata_);
}

}  // namespace lapvane
