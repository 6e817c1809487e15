#include "widgets/style/Icone.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>
#include <utility>

#include "platform/qt/TestoQt.h"
#include "widgets/style/Tavolozza.h"

// A resource in a static library is linked in only if somebody asks for it by name.
static void InizializzaRisorse() {
    Q_INIT_RESOURCE(icons);
}

namespace lapvane {

namespace {

/// The drawing with its colours changed for the theme. The drawings are made for the light one.
QByteArray Tinto(const QString& percorso, Tema tema) {
    QFile file(percorso);
    if (!file.open(QIODevice::ReadOnly)) return {};
    QByteArray svg = file.readAll();
    const Colori& luce = ColoriDi(Tema::Chiaro);
    const Colori& c = ColoriDi(tema);
    const auto cambia = [&svg](const QColor& da, const QColor& a) {
        svg.replace(da.name().toLatin1(), a.name().toLatin1());
    };
    if (tema == Tema::Scuro) cambia(QColor(0xB87200), QColor(0xD08300));  // settings
    if (tema == Tema::Box) cambia(QColor(0x76839A), c.Edge);              // the thing
    for (const auto& [da, a] : {std::pair{luce.Accent, c.Accent},
                                {luce.Warn, c.Warn},
                                {luce.Err, c.Err},
                                {luce.AccentText, c.AccentText}}) {
        cambia(da, a);
    }
    return svg;
}

class MotoreIcona : public QIconEngine {
 public:
    explicit MotoreIcona(QString percorso) : percorso_(std::move(percorso)) {}

    void paint(QPainter* penna, const QRect& posto, QIcon::Mode modo, QIcon::State stato) override {
        const double scala = penna->device()->devicePixelRatio();
        const QPixmap immagine = scaledPixmap(posto.size() * scala, modo, stato, scala);
        penna->drawPixmap(posto, immagine);
    }

    QPixmap pixmap(const QSize& misura, QIcon::Mode modo, QIcon::State stato) override {
        return scaledPixmap(misura, modo, stato, 1.0);
    }

    /// `misura` is in pixels of the screen.
    QPixmap scaledPixmap(const QSize& misura, QIcon::Mode modo, QIcon::State, qreal) override {
        const Tema tema = TemaInUso();
        const QString chiave = QStringLiteral("%1 %2 %3 %4 %5")
                                   .arg(percorso_)
                                   .arg(misura.width())
                                   .arg(misura.height())
                                   .arg(static_cast<int>(tema))
                                   .arg(static_cast<int>(modo));
        QPixmap immagine;
        if (QPixmapCache::find(chiave, &immagine)) return immagine;
        QSvgRenderer disegno(Tinto(percorso_, tema));
        disegno.setAspectRatioMode(Qt::KeepAspectRatio);
        immagine = QPixmap(misura);
        immagine.fill(Qt::transparent);
        QPainter penna(&immagine);
        disegno.render(&penna, QRectF(QPointF(), misura));
        penna.end();
        if (modo == QIcon::Disabled) {
            const QStyleOption opzioni;
            immagine = QApplication::style()->generatedIconPixmap(modo, immagine, &opzioni);
        }
        QPixmapCache::insert(chiave, immagine);
        return immagine;
    }

    QIconEngine* clone() const override { return new MotoreIcona(*this); }

 private:
    QString percorso_;
};

}  // namespace

QString FileIcona(std::string_view nome) {
    static const bool pronte = [] {
        InizializzaRisorse();
        return true;
    }();
    static_cast<void>(pronte);
    return QStringLiteral(":/icons/") + InQt(nome) + QStringLiteral(".svg");
}

QIcon Icona(std::string_view nome) {
    return QIcon(new MotoreIcona(FileIcona(nome)));
}

}  // namespace lapvane
