#include "widgets/style/Icone.h"

#include <QApplication>
#include <QDataStream>
#include <QIconEngine>
#include <QMap>
#include <QPainter>
#include <QPixmapCache>
#include <QResource>
#include <QStyle>
#include <QStyleOption>
#include <utility>

#include "platform/qt/TestoQt.h"
#include "widgets/style/Tavolozza.h"

// A resource in a static library is linked in only if somebody asks for it by name.
static void InizializzaRisorse() {
    Q_INIT_RESOURCE(pictures);
}

namespace lapvane {

namespace {

/// Buttons that have a name of their own and the drawing of another.
constexpr std::pair<std::string_view, const char*> kStesso[] = {{"ApriCartella", "Open"},
                                                                {"CsvArchivio", "SalvaCsv"},
                                                                {"StampaArchivio", "Stampa"},
                                                                {"StampaConfronto", "Stampa"},
                                                                {"TuttoIlGiro", "DimOriginali"}};

/// The drawing's file of pictures for the theme; that for the light, if the theme has none.
QByteArray Immagini(const QString& disegno, Tema tema) {
    static const bool pronte = [] {
        InizializzaRisorse();
        return true;
    }();
    static_cast<void>(pronte);
    const auto file = [&disegno](const char* cartella) {
        return QStringLiteral(":/pictures/%1/%2").arg(QLatin1String(cartella), disegno);
    };
    QResource sue(file(tema == Tema::Scuro ? "dark" : tema == Tema::Box ? "box" : "light"));
    if (!sue.isValid()) sue.setFileName(file("light"));
    return sue.uncompressedData();
}

/// The picture that is least but wide enough, in a width of pixels; a null one if there is no such
/// drawing.
QImage Letta(const QString& disegno, Tema tema, int larghezza) {
    const QByteArray file = Immagini(disegno, tema);
    QDataStream lettore(file);
    QMap<qint32, QByteArray> immagini;
    lettore >> immagini;
    if (immagini.isEmpty()) return {};
    const auto trovata = immagini.lowerBound(larghezza);
    return QImage::fromData(trovata == immagini.end() ? immagini.last() : trovata.value(), "PNG");
}

/// The drawing as large as there is room, in its middle.
QPixmap Dipinta(const QString& disegno, Tema tema, const QSize& misura) {
    QImage letta = Letta(disegno, tema, misura.width());
    if (letta.size() == misura) return QPixmap::fromImage(letta);
    if (!letta.isNull())
        letta = letta.scaled(misura, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPixmap immagine(misura);
    immagine.fill(Qt::transparent);
    QPainter penna(&immagine);
    penna.drawImage(QRect(QPoint(), misura).center() - letta.rect().center(), letta);
    return immagine;
}

class MotoreIcona : public QIconEngine {
 public:
    explicit MotoreIcona(QString disegno) : disegno_(std::move(disegno)) {}

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
                                   .arg(disegno_)
                                   .arg(misura.width())
                                   .arg(misura.height())
                                   .arg(static_cast<int>(tema))
                                   .arg(static_cast<int>(modo));
        QPixmap immagine;
        if (QPixmapCache::find(chiave, &immagine)) return immagine;
        immagine = Dipinta(disegno_, tema, misura);
        if (modo == QIcon::Disabled) {
            const QStyleOption opzioni;
            immagine = QApplication::style()->generatedIconPixmap(modo, immagine, &opzioni);
        }
        QPixmapCache::insert(chiave, immagine);
        return immagine;
    }

    QIconEngine* clone() const override { return new MotoreIcona(*this); }

 private:
    QString disegno_;
};

}  // namespace

QIcon Icona(std::string_view nome) {
    for (const auto& [pulsante, disegno] : kStesso) {
        if (nome == pulsante) return Icona(disegno);
    }
    return QIcon(new MotoreIcona(InQt(nome)));
}

}  // namespace lapvane
