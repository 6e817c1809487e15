#pragma once

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/qt/ConversioniQt.h"

namespace lapvane::prova {

/// A word on a page; its top left corner and its right edge in centimetres.
struct Parola {
    QString Testo;
    double X, Y, Destra;
};

struct PaginaPdf {
    double Larghezza = 0.0;
    double Altezza = 0.0;
    std::vector<Parola> Parole;

    const Parola* Trova(const std::string& testo) const {
        for (const Parola& parola : Parole) {
            if (parola.Testo.toStdString() == testo) return &parola;
        }
        return nullptr;
    }
    /// Whether the word (UTF-8) stands there, to 0.05 cm.
    bool Ha(const std::string& testo, double x, double y) const {
        for (const Parola& parola : Parole) {
            if (parola.Testo.toStdString() == testo && std::abs(parola.X - x) <= 0.05 &&
                std::abs(parola.Y - y) <= 0.05) {
                return true;
            }
        }
        return false;
    }
};

/// What a program of poppler (package poppler-utils) makes of a PDF file.
inline QByteArray Poppler(const QString& nome, const QStringList& come) {
    QProcess lettore;
    lettore.start(nome, come);
    if (!lettore.waitForFinished() || lettore.exitCode() != 0) {
        throw std::runtime_error(
            (nome + " cannot do " + come.join(QLatin1Char(' '))).toStdString());
    }
    return lettore.readAllStandardOutput();
}

/// The words of a PDF file as a reader of such files finds them.
inline std::vector<PaginaPdf> LeggiPdf(const std::filesystem::path& file) {
    const QByteArray parole =
        Poppler(QStringLiteral("pdftotext"),
                {QStringLiteral("-bbox"), PercorsoInQt(file), QStringLiteral("-")});
    constexpr double kPuntiCm = 72.0 / 2.54;
    static const QRegularExpression voce(QStringLiteral(
        R"re(<page width="([\d.]+)" height="([\d.]+)"|<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="[\d.]+">([^<]*)<)re"));
    std::vector<PaginaPdf> pagine;
    auto voci = voce.globalMatch(QString::fromUtf8(parole));
    while (voci.hasNext()) {
        const QRegularExpressionMatch trovata = voci.next();
        const auto cm = [&](int gruppo) { return trovata.captured(gruppo).toDouble() / kPuntiCm; };
        if (trovata.hasCaptured(1)) {
            pagine.push_back({cm(1), cm(2), {}});
        } else {
            pagine.back().Parole.push_back({trovata.captured(6), cm(3), cm(4), cm(5)});
        }
    }
    return pagine;
}

/// The first page of a PDF file as a picture, 100 pixels a centimetre.
inline QImage FotoPdf(const std::filesystem::path& file) {
    return QImage::fromData(
        Poppler(QStringLiteral("pdftoppm"),
                {QStringLiteral("-r"), QStringLiteral("254"), QStringLiteral("-png"),
                 QStringLiteral("-singlefile"), PercorsoInQt(file)}));
}
/// Whether something dark stands there, centimetres from the corner.
inline bool Scuro(const QImage& foto, double x, double y) {
    for (int n = -4; n <= 4; ++n) {
        const int px = static_cast<int>(x * 100) + n, py = static_cast<int>(y * 100) + n;
        if (qGray(foto.pixel(px, py)) < 100) return true;
    }
    return false;
}

/// A paper that keeps of a drawing only its texts, each with its place in pixels.
class CartaTesti : public QImage, private QPaintEngine {
 public:
    explicit CartaTesti(const QSize& misura)
        : QImage(misura, QImage::Format_RGB32), QPaintEngine(AllFeatures) {}
    std::vector<Parola> Testi;

 private:
    QPaintEngine* paintEngine() const override { return const_cast<CartaTesti*>(this); }
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    QPaintEngine::Type type() const override { return User; }
    void updateState(const QPaintEngineState&) override {}
    void drawPath(const QPainterPath&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawTextItem(const QPointF& dove, const QTextItem& testo) override {
        const QPointF posto = painter()->transform().map(dove);
        Testi.push_back({testo.text().trimmed(), posto.x(), posto.y(), 0.0});
    }
};

/// The texts of a drawing from the top, each with its place in pixels.
inline std::vector<Parola> TestiDisegnati(const QSize& misura,
                                          const std::function<void(QPainter&)>& disegna) {
    CartaTesti carta(misura);
    QPainter penna(&carta);
    disegna(penna);
    penna.end();
    std::ranges::stable_sort(carta.Testi, {}, &Parola::Y);
    return carta.Testi;
}

}  // namespace lapvane::prova
