#include "widgets/style/Tavolozza.h"

#include <QApplication>
#include <QVariant>
#include <QWidget>
#include <algorithm>

#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr const char* kTemaAMano = "temaAMano";
constexpr const char* kVestito = "vestito";  // property of the application
constexpr int kMezzaLuce = 128;

Tema TemaDi(const QPalette& paletta) {
    if (paletta.color(QPalette::Active, QPalette::Window) == ColoriDi(Tema::Box).Window) {
        return Tema::Box;
    }
    return paletta.color(QPalette::Active, QPalette::Window).lightness() < kMezzaLuce
               ? Tema::Scuro
               : Tema::Chiaro;
}

}  // namespace

const Colori& ColoriDi(const QPalette& paletta) {
    return ColoriDi(TemaDi(paletta));
}

const Colori& ColoriDi(const QWidget& widget) {
    return ColoriDi(widget.palette());
}

const ColoreGiro& GiroDi(const Colori& colori, char lettera) {
    const auto trovato =
        std::find_if(colori.Giri.begin(), colori.Giri.end(),
                     [lettera](const ColoreGiro& giro) { return giro.Lettera == lettera; });
    return trovato == colori.Giri.end() ? colori.Giri.front() : *trovato;
}

QColor Gradazione(const Colori& colori, double quota) {
    const double doppia = std::clamp(quota, 0.0, 1.0) * 2.0;
    const auto& [meno, mezzo, piu] = colori.Gradazione;
    return doppia < 1.0 ? Tinta(meno, mezzo, doppia) : Tinta(mezzo, piu, doppia - 1.0);
}

QPalette PalettaDi(Tema tema) {
    const Colori& c = ColoriDi(tema);
    QPalette p;
    for (const auto& [ruolo, colore] : {std::pair{QPalette::Window, c.Window},
                                        {QPalette::WindowText, c.Text},
                                        {QPalette::Base, c.Base},
                                        {QPalette::AlternateBase, c.Alt},
                                        {QPalette::Text, c.Text},
                                        {QPalette::PlaceholderText, c.Text2},
                                        {QPalette::Button, c.Raised},
                                        {QPalette::ButtonText, c.Text},
                                        {QPalette::BrightText, c.SelText},
                                        {QPalette::Light, c.Raised},
                                        {QPalette::Midlight, c.Grid},
                                        {QPalette::Mid, c.Line},
                                        {QPalette::Dark, c.Edge},
                                        {QPalette::Shadow, c.Edge},
                                        {QPalette::Link, c.Accent},
                                        {QPalette::LinkVisited, c.Accent},
                                        {QPalette::Highlight, c.Sel},
                                        {QPalette::HighlightedText, c.SelText},
                                        {QPalette::ToolTipBase, c.Tip},
                                        {QPalette::ToolTipText, c.TipText}}) {
        p.setColor(ruolo, colore);
    }
    for (const auto gruppo : {QPalette::Inactive, QPalette::Disabled}) {
        p.setColor(gruppo, QPalette::Highlight, c.SelSoft);
        p.setColor(gruppo, QPalette::HighlightedText, c.Text);
    }
    for (const auto ruolo :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText,
          QPalette::HighlightedText, QPalette::Link, QPalette::LinkVisited}) {
        p.setColor(QPalette::Disabled, ruolo, c.Off);
    }
    return p;
}

Tema TemaInUso() {
    if (ModoBox()) return Tema::Box;
    const QVariant aMano = qApp->property(kTemaAMano);
    return aMano.isValid() ? static_cast<Tema>(aMano.toInt()) : TemaDi(QApplication::palette());
}

void ImpostaTema(std::optional<Tema> tema) {
    qApp->setProperty(kTemaAMano, tema ? QVariant(static_cast<int>(*tema)) : QVariant());
    AggiornaTema();
}

void AggiornaTema() {
    // Without a palette of its own the application has the desktop's.
    if (qApp->property(kVestito).toBool()) QApplication::setPalette(QPalette());
    QApplication::setPalette(PalettaDi(TemaInUso()));
    qApp->setProperty(kVestito, true);
}

}  // namespace lapvane
