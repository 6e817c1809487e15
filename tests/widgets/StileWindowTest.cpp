#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFocusFrame>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QVBoxLayout>

#include "platform/qt/ConversioniQt.h"
#include "tools/support/Fit.h"
#include "widgets/Contrasto.h"
#include "widgets/Dialogo.h"
#include "widgets/Sfondo.h"
#include "widgets/style/Icone.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Stile.h"
#include "widgets/style/Tavolozza.h"
#include "widgets/style/Vesti.h"

using namespace lapvane;

TEST(Tavolozza, CanBeReadInAllThemes) {
    for (const Tema tema : {Tema::Chiaro, Tema::Scuro, Tema::Box}) {
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
            {c.AccentText, {c.Warn, c.Err}, 3.0},  // signs of boxes
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

namespace {

/// Rows of boxes in a window, with OK below them.
class Righe : public Dialogo {
 public:
    explicit Righe(int quante) : Dialogo("Righe", nullptr) {
        auto* colonna = new QVBoxLayout(this);
        for (int i = 0; i < quante; ++i) colonna->addWidget(righe.emplace_back(new QLineEdit));
        colonna->addLayout(RigaPulsanti(nullptr, {CreaOK([] {})}));
    }
    std::vector<QLineEdit*> righe;
    QPushButton* Ok() { return OKButton_; }
};

}  // namespace

TEST(Dialogo, WhatIsHigherThanTheScreenScrollsAboveItsButtons) {
    Righe finestra(60);
    finestra.righe.front()->setFocus();
    finestra.show();
    QCoreApplication::processEvents();
    EXPECT_LE(finestra.height(), finestra.screen()->availableSize().height());
    EXPECT_EQ(finestra.focusWidget(), finestra.righe.front());
    EXPECT_EQ(finestra.Ok()->visibleRegion(), QRegion(finestra.Ok()->rect()));
    EXPECT_TRUE(finestra.righe.back()->visibleRegion().isEmpty());
    finestra.Ok()->setFocus();
    QTest::keyClick(finestra.Ok(), Qt::Key_Backtab);
    EXPECT_FALSE(finestra.righe.back()->visibleRegion().isEmpty()) << "the focus is in view";
}

TEST(ModoBox, MeasuresWhatIsOpenAndGivesItBack) {
    Righe finestra(2);
    auto* piccola = Etichetta(&finestra, "piccola");
    piccola->setFont(Carattere(finestra, Scrittura::Piccola));
    finestra.righe.front()->setFixedWidth(100);
    finestra.show();
    const QSize prima = finestra.size();
    const double punti = QApplication::font().pointSizeF();
    ImpostaModoBox(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(finestra.Ok()->font().pointSizeF(), 14.0);
    EXPECT_EQ(piccola->font().pointSizeF(), 13.0);
    EXPECT_GE(finestra.Ok()->height(), finestra.fontMetrics().height() + 14);
    EXPECT_GT(finestra.righe.front()->width(), 110);
    EXPECT_GT(finestra.height(), prima.height() + 20);
    EXPECT_EQ(ColoriDi(finestra).Text, QColor(Qt::black));
    ImpostaModoBox(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(piccola->font().pointSizeF(), punti - 1.0);
    EXPECT_EQ(finestra.righe.front()->width(), 100);
    EXPECT_EQ(finestra.size(), prima);
}

TEST(Icona, HasTheColoursOfTheThemeAndIsGreyWhereItIsOff) {
    const auto centro = [](const QIcon& icona, QIcon::Mode modo, int lato = 24) {
        return icona.pixmap(QSize(lato, lato), modo).toImage().pixelColor(lato / 8, lato / 2);
    };
    const QIcon segno = QApplication::style()->standardIcon(QStyle::SP_MessageBoxCritical);
    for (const Tema tema : {Tema::Chiaro, Tema::Scuro}) {
        ImpostaTema(tema);
        for (const int lato : {24, 400}) {
            EXPECT_EQ(centro(segno, QIcon::Normal, lato), ColoriDi(tema).Err);
        }
        const QColor spento = centro(segno, QIcon::Disabled);
        EXPECT_TRUE(spento.alpha() < 128 && spento.saturation() == 0)
            << spento.name().toStdString();
    }
    ImpostaTema({});
}

TEST(Sfondo, IsTheSameWithoutTheDrawingItKeepsAndFollowsSizeAndTheme) {
    Sfondo sfondo;
    sfondo.show();
    for (const Tema tema : {Tema::Chiaro, Tema::Scuro}) {
        ImpostaTema(tema);
        QCoreApplication::processEvents();
        for (const int lato : {200, 300, 200}) {
            sfondo.resize(2 * lato, lato);
            const QImage tenuto = sfondo.grab().toImage();
            const QRect nastro(lato * 4 / 5, lato / 2, 50, 60);
            EXPECT_EQ(sfondo.grab(nastro).toImage(), tenuto.copy(nastro));
            EXPECT_EQ(tenuto.pixelColor(0, 0), ColoriDi(tema).Window);
            sfondo.Tieni(false);
            EXPECT_EQ(sfondo.grab().toImage(), tenuto);
            sfondo.Tieni(true);
            sfondo.grab();
        }
    }
    ImpostaTema({});
}

TEST(Fit, FindsWhatAPersonDoesNotSee) {
    Righe finestra(3);
    finestra.show();
    EXPECT_EQ(Fit(&finestra), QStringList());
    auto* parole = Etichetta(&finestra, "parole");
    parole->setText(QStringLiteral("Fuel pressure"));
    parole->setGeometry(0, 0, 20, 20);
    auto* fuori = new QLineEdit(&finestra);
    fuori->setGeometry(finestra.width() - 10, 0, 20, 10);
    for (QWidget* w : std::initializer_list<QWidget*>{parole, fuori}) w->show();
    finestra.Ok()->parentWidget()->layout()->setEnabled(false);
    finestra.Ok()->move(0, finestra.height() - 5);
    const QString guasti = Fit(&finestra).join(QLatin1Char('\n'));
    for (const char* guasto : {"Fuel pressure", "reaches beyond", "OKButton\" is out of view"}) {
        EXPECT_TRUE(guasti.contains(QLatin1String(guasto))) << guasti.toStdString();
    }
    finestra.resize(3000, 3000);
    EXPECT_TRUE(Fit(&finestra).front().startsWith(QLatin1String("the window is 3000")));
}
