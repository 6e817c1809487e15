#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFocusFrame>
#include <QLineEdit>
#include <QPushButton>

#include "platform/qt/ConversioniQt.h"
#include "widgets/Contrasto.h"
#include "widgets/style/Stile.h"
#include "widgets/style/Tavolozza.h"
#include "widgets/style/Vesti.h"

using namespace lapvane;

TEST(Tavolozza, CanBeReadInBothThemes) {
    for (const Tema tema : {Tema::Chiaro, Tema::Scuro}) {
        const QPalette p = PalettaDi(tema);
        const Colori& c = ColoriDi(tema);
        const QColor finestra = p.color(QPalette::Window), base = p.color(QPalette::Base),
                     alt = p.color(QPalette::AlternateBase), testo = p.color(QPalette::Text),
                     testo2 = p.color(QPalette::PlaceholderText), accento = p.color(QPalette::Link),
                     tenue = p.color(QPalette::Inactive, QPalette::Highlight);
        const struct {
            QColor Sopra;
            std::vector<QColor> Sotto;
            double Almeno;
        } casi[] = {
            {testo,
             {finestra, c.Bar, base, alt, tenue, p.color(QPalette::Button), c.LossSoft},
             4.5},
            {testo2, {finestra, c.Bar, base, alt, tenue, c.Plot, c.LossSoft}, 4.5},
            {p.color(QPalette::HighlightedText), {p.color(QPalette::Highlight)}, 4.5},
            {p.color(QPalette::Inactive, QPalette::HighlightedText), {tenue}, 4.5},
            {p.color(QPalette::ToolTipText), {p.color(QPalette::ToolTipBase)}, 4.5},
            {accento, {base, finestra, c.Bar}, 4.5},
            {c.AccentText, {c.Accent}, 4.5},
            {c.Gain, {base, c.GainSoft, tenue}, 4.5},
            {c.Loss, {base, c.LossSoft, tenue}, 4.5},
            {c.Ok, {base, finestra, tenue}, 4.5},
            {c.Warn, {base, c.WarnSoft, finestra}, 4.5},
            {c.Err, {base, c.ErrSoft, finestra}, 4.5},
            {c.Stale, {base, alt}, 4.5},
            {p.color(QPalette::Dark), {base, finestra}, 3.0},
        };
        for (const auto& caso : casi) {
            for (const QColor& sotto : caso.Sotto) {
                EXPECT_GE(Contrasto(DaQColor(caso.Sopra), DaQColor(sotto)), caso.Almeno)
                    << caso.Sopra.name().toStdString() << " " << sotto.name().toStdString();
            }
        }
        for (const ColoreGiro& giro : c.Giri) {
            const double bianco = Contrasto(DaQColor(giro.Tinta), Rgb(255, 255, 255));
            EXPECT_EQ(giro.Carattere, bianco >= 4.5 ? QColor(Qt::white) : QColor(Qt::black));
            EXPECT_GE(Contrasto(DaQColor(giro.Tinta), DaQColor(c.Plot)), 3.0) << giro.Lettera;
        }
    }
}

TEST(Vesti, DressesWhatComesAndFollowsTheTheme) {
    ImpostaTema(Tema::Scuro);
    QWidget finestra;
    auto* pulsante = new QPushButton(QStringLiteral("OK"), &finestra);
    auto* edit = new QLineEdit(&finestra);
    auto* elenco = new QComboBox(&finestra);
    elenco->addItem(QStringLiteral("1"));
    finestra.show();
    const int alto = finestra.fontMetrics().height() + 10;
    for (const QWidget* w : std::initializer_list<QWidget*>{pulsante, edit, elenco}) {
        EXPECT_EQ(w->sizeHint().height(), alto) << w->metaObject()->className();
        EXPECT_EQ(w->palette().color(QPalette::Base), ColoriDi(Tema::Scuro).Base);
    }
    // Another theme, while the program runs.
    ImpostaTema(Tema::Chiaro);
    QCoreApplication::processEvents();
    EXPECT_EQ(edit->palette().color(QPalette::Base), ColoriDi(Tema::Chiaro).Base);
    // The ring goes with the focus from window to window.
    QDialog altra;
    auto* suo = new QPushButton(&altra);
    for (auto& [w, p] : {std::pair<QWidget*, QPushButton*>{&finestra, pulsante}, {&altra, suo}}) {
        w->show();
        QApplication::setActiveWindow(w);
        p->setFocus();
        const auto anelli = w->findChildren<QFocusFrame*>();
        ASSERT_EQ(anelli.size(), 1);
        EXPECT_EQ(anelli.front()->widget(), p);
    }
    EXPECT_TRUE(finestra.findChildren<QFocusFrame*>().isEmpty());
    ImpostaTema({});
}
