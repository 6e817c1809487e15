// The change between the desktop's letters and those of the pit lane in windows that are open.
#include <QApplication>
#include <QFontInfo>
#include <QLayout>
#include <QPointer>
#include <QScreen>
#include <QWidget>
#include <cmath>
#include <vector>

#include "widgets/style/Misure.h"
#include "widgets/style/Tavolozza.h"
#include "widgets/style/Vesti.h"

namespace lapvane {

namespace {

constexpr double kPuntiBox = 14.0;
constexpr const char* kData = "misuraData";      // size of a window that the last change gave it
constexpr const char* kRidata = "misuraRidata";  // ... and the one that it had before
constexpr double kPasso = 2.0;  // points; a letter that is off by less is so by a fixed step

double Punti(const QFont& carattere) {
    const double punti = carattere.pointSizeF();
    return punti > 0.0 ? punti : QFontInfo(carattere).pointSizeF();
}

/// What a widget was given by hand, in the letters that it was made for.
struct Misurato {
    QPointer<QWidget> Widget;
    double Punti;  // of a font of its own; 0: it has its window's
    QSize Minima;
    QSize Massima;
    QSize Finestra;  // of a window that is open
};

std::vector<Misurato> MisureDate() {
    std::vector<Misurato> tutti;
    for (QWidget* w : QApplication::allWidgets()) {
        const bool suo = w->testAttribute(Qt::WA_SetFont) &&
                         (w->font().resolveMask() & QFont::SizeResolved) != 0;
        const bool finestra = w->isWindow() && w->isVisible() && !w->isMaximized() &&
                              !w->isFullScreen() && w->windowType() != Qt::Popup &&
                              w->windowType() != Qt::ToolTip;
        tutti.push_back({w, suo ? Punti(w->font()) : 0.0, w->minimumSize(), w->maximumSize(),
                         finestra ? w->size() : QSize()});
    }
    return tutti;
}

int Scalata(int lunghezza, double rapporto) {
    return lunghezza <= 0 || lunghezza >= QWIDGETSIZE_MAX ? lunghezza
                                                          : qRound(lunghezza * rapporto);
}

QSize Scalata(QSize misura, double rapporto) {
    return {Scalata(misura.width(), rapporto), Scalata(misura.height(), rapporto)};
}

/// A font of a widget's own keeps its step of the scale: so many points more or less, or so many
/// times as large. One that has seen to itself meanwhile is left alone, and so are its sizes.
void Adatta(const Misurato& prima, double puntiPrima, double punti, double rapporto) {
    QWidget& w = *prima.Widget;
    if (prima.Punti > 0.0 && Punti(w.font()) == prima.Punti) {
        const double scarto = prima.Punti - puntiPrima;
        QFont carattere = w.font();
        carattere.setPointSizeF(std::abs(scarto) < kPasso ? punti + scarto
                                                          : prima.Punti * punti / puntiPrima);
        w.setFont(carattere);
    }
    if (w.isWindow()) return;  // its layout gives it its least size
    if (w.maximumSize() == prima.Massima && w.minimumSize() == prima.Minima) {
        w.setMaximumSize(Scalata(prima.Massima, rapporto));
        w.setMinimumSize(Scalata(prima.Minima, rapporto));
    }
}

/// A window grows with its letters as far as the screen lets it, and has its old size back when it
/// has theirs.
void Ridimensiona(QWidget& finestra, const QSize& prima, double rapporto) {
    // Before that it could not be smaller than with the letters that it had.
    if (finestra.layout() != nullptr) finestra.layout()->activate();
    const QSize ridata = finestra.property(kRidata).toSize();
    const bool mia = finestra.property(kData).toSize() == prima;
    const bool indietro = mia && !ridata.isEmpty();
    QSize misura = indietro ? ridata : Scalata(prima, rapporto);
    if (const QScreen* schermo = finestra.screen(); schermo != nullptr && !indietro) {
        const QSize cornice = finestra.frameGeometry().size() - finestra.size();
        misura = misura.boundedTo(schermo->availableSize() - cornice);
    }
    finestra.resize(misura);
    finestra.setProperty(kRidata, prima);
    finestra.setProperty(kData, finestra.size());
}

}  // namespace

void ImpostaModoBox(bool acceso) {
    static QFont delDesktop;
    if (acceso == ModoBox()) return;
    const QFont prima = QApplication::font();
    if (acceso) delDesktop = prima;
    QFont dopo = delDesktop;
    if (acceso) dopo.setPointSizeF(std::max(kPuntiBox, Punti(delDesktop)));
    const double rapporto = static_cast<double>(QFontMetrics(dopo).height()) /
                            static_cast<double>(QFontMetrics(prima).height());

    const std::vector<Misurato> tutti = MisureDate();
    UsaMisureBox(acceso);
    QApplication::setFont(dopo);
    AggiornaTema();
    // The windows hear of both later, and would be measured with the letters that they had.
    for (const auto tipo : {QEvent::ApplicationFontChange, QEvent::ApplicationPaletteChange}) {
        QCoreApplication::sendPostedEvents(nullptr, tipo);
    }
    for (const Misurato& uno : tutti) {
        if (uno.Widget) Adatta(uno, Punti(prima), Punti(dopo), rapporto);
    }
    for (const Misurato& uno : tutti) {
        // What has no font of its own has had no reason yet to ask for sizes and margins.
        QEvent stile(QEvent::StyleChange);
        if (uno.Widget) QApplication::sendEvent(uno.Widget, &stile);
    }
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    for (const Misurato& uno : tutti) {
        if (!uno.Widget || uno.Finestra.isEmpty()) continue;
        if (uno.Widget->inherits("QMessageBox")) {
            // It measures itself when it gets a text, and only then.
            uno.Widget->setProperty("text", uno.Widget->property("text"));
            continue;
        }
        Ridimensiona(*uno.Widget, uno.Finestra, rapporto);
    }
}

}  // namespace lapvane
