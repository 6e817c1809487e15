#include "analysis/compare/DisegnoValori.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

#include "analysis/compare/DisegnoNumeri.h"
#include "platform/qt/TestoQt.h"
#include "shell/LoadStrings.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr double kAria = 10.0;  // above and below what stands in a row
constexpr int kDecimaliTempo = 2;
constexpr Voce kEstremi[] = {Voce::MinimoBreve, Voce::MassimoBreve, Voce::MediaBreve};
constexpr Voce kTratto[] = {Voce::Tempo, Voce::CanaleDistanza, Voce::TempoPerso};

QString Metri(double metri) {
    return Numero(metri, 0) + QStringLiteral(" m");
}

QString Secondi(double secondi) {
    return Numero(secondi, kDecimaliTempo) + QStringLiteral(" s");
}

}  // namespace

DisegnoValori::DisegnoValori(QWidget* parent) : DisegnoTabella(parent) {}

void DisegnoValori::Imposta(TabellaCursore tabella, char fuoco) {
    const auto stessi = [](const RigaCursore& a, const RigaCursore& b) {
        return a.Lettera == b.Lettera && a.Nome == b.Nome;
    };
    const bool stessa = tabella.Titoli == tabella_.Titoli &&
                        std::equal(tabella.Righe.begin(), tabella.Righe.end(),
                                   tabella_.Righe.begin(), tabella_.Righe.end(), stessi);
    if (!stessa) colonne_.clear();
    tabella_ = std::move(tabella);
    fuoco_ = fuoco;
    Rinnova();
}

int DisegnoValori::Decimali(int canale) const {
    const auto c = static_cast<std::size_t>(canale);
    return c < tabella_.Decimali.size() ? tabella_.Decimali[c] : 0;
}

QString DisegnoValori::Titolo() const {
    if (tabella_.Righe.empty()) return {};
    return InQt(lapvane::Testo(Voce::AlPunto)) + QLatin1Char(' ') + Metri(tabella_.Metri);
}

QString DisegnoValori::Nota() const {
    if (tabella_.Righe.empty()) return {};
    return Secondi(tabella_.Secondi) + QLatin1Char(' ') +
           InQt(lapvane::Testo(Voce::DelRiferimento));
}

/// A value with the difference below it.
double DisegnoValori::AltaRiga() const {
    return std::ceil(Scritti().Corpo.Riga() + Scritti().Piccolo.Riga() + kAria);
}

/// Three lines.
double DisegnoValori::AltaTratto() const {
    return std::ceil(3.0 * (Scritti().Corpo.Riga() + 1.0) + kAria);
}

/// Makes the columns as wide as what stands in them.
void DisegnoValori::Allarga() {
    ScrittoriQuadri& scritti = Scritti();
    const auto numero = static_cast<std::size_t>(Canali());
    const bool nuove = colonne_.size() != numero + 1;
    if (nuove) colonne_.assign(numero + 1, {});
    const auto almeno = [this](std::size_t colonna, double largo) {
        Colonna& c = colonne_[colonna];
        c.Minima = std::max(c.Minima, std::ceil(largo));
    };
    almeno(0, scritti.Forte.LargoCifre(QStringLiteral("+0.00")));
    for (std::size_t c = 0; c < numero; ++c) {
        almeno(c + 1, scritti.Piccolo.Largo(InQt(tabella_.Titoli[c])));
    }
    if (tabella_.Due) {
        for (const Voce voce : kTratto) {
            almeno(0, scritti.Piccolo.Largo(InQt(lapvane::Testo(voce))));
        }
    }
    for (const RigaCursore& riga : tabella_.Righe) {
        almeno(0, scritti.Forte.LargoCifre(Differenza(riga.Distacco, kDecimaliTempo)));
        if (tabella_.Due) {
            for (const QString& testo :
                 {Secondi(riga.Tempo), Metri(riga.Metri),
                  Differenza(riga.Perso, kDecimaliTempo) + QStringLiteral(" s")}) {
                almeno(0, scritti.Corpo.LargoCifre(testo));
            }
        }
        for (std::size_t c = 0; c < std::min(numero, riga.Canali.size()); ++c) {
            const ValoreCursore& valore = riga.Canali[c];
            if (!valore.Esiste) continue;
            const int decimali = Decimali(static_cast<int>(c));
            almeno(c + 1, scritti.Corpo.LargoCifre(Numero(valore.Qui, decimali)));
            almeno(c + 1, scritti.Piccolo.LargoCifre(Differenza(valore.Differenza, decimali)));
            if (!tabella_.Due) continue;
            for (const double estremo : {valore.Minimo, valore.Massimo}) {
                almeno(c + 1, scritti.Corpo.LargoCifre(Numero(estremo, decimali)));
            }
        }
    }
}

DisegnoTabella::Misura DisegnoValori::Disponi(double larghezza) {
    Allarga();
    ScrittoriQuadri& scritti = Scritti();
    const Misure misure(*this);
    double nome = 0.0;
    for (const RigaCursore& riga : tabella_.Righe) {
        nome = std::max(nome, scritti.Corpo.Largo(InQt(riga.Nome)));
    }
    larghezzaGiro_ = std::max(kSpazio + misure.Lettera + kSpazio + nome,
                              kSpazio + scritti.Piccolo.Largo(InQt(lapvane::Testo(Voce::Giro))));
    Misura misura;
    misura.Testata = misure.Testata;
    const auto righe = static_cast<double>(tabella_.Righe.size());
    misura.Alta = righe * AltaRiga();
    if (tabella_.Due && righe > 0.0) {
        misura.Alta += misure.Testata + (righe + 1.0) * AltaTratto();
    }
    misura.Fisse = std::ceil(larghezzaGiro_ + colonne_[0].Minima + 2.0 * kSpazio);
    double voluta = misura.Fisse;
    for (std::size_t c = 1; c < colonne_.size(); ++c) voluta += colonne_[c].Minima + 2.0 * kSpazio;
    // What is left over goes to all columns alike.
    const double aggiunta =
        std::max(0.0, (larghezza - voluta) / std::max(1.0, static_cast<double>(Canali()) + 1.0));
    double x = larghezzaGiro_;
    for (Colonna& colonna : colonne_) {
        colonna.Sinistra = x;
        colonna.Larga = colonna.Minima + 2.0 * kSpazio + aggiunta;
        x += colonna.Larga;
    }
    misura.Fisse = colonne_[0].Sinistra + colonne_[0].Larga;
    misura.Larga = x;
    return misura;
}

/// The place of a column's text, which stands at its right end.
QRectF DisegnoValori::Cella(int colonna, double alto, double alta) const {
    const Colonna& c = colonne_[static_cast<std::size_t>(colonna)];
    return {c.Sinistra, alto, c.Larga - kSpazio, alta};
}

void DisegnoValori::DisegnaTestata(QPainter& penna, bool fisse) {
    if (tabella_.Righe.empty()) return;
    Scrittore& piccolo = Scritti().Piccolo;
    const double alta = Misurata().Testata;
    penna.setFont(piccolo.Carattere());
    penna.setPen(ColoriDi(*this).Text2);
    if (fisse) {
        piccolo.Scrivi(penna, QRectF(kSpazio, 0.0, larghezzaGiro_, alta),
                       Qt::AlignLeft | Qt::AlignVCenter, InQt(lapvane::Testo(Voce::Giro)));
        piccolo.Scrivi(penna, Cella(0, 0.0, alta), Qt::AlignRight | Qt::AlignVCenter,
                       QStringLiteral("\u0394 s"));
        return;
    }
    for (int c = 0; c < Canali(); ++c) {
        piccolo.Scrivi(penna, Cella(c + 1, 0.0, alta), Qt::AlignRight | Qt::AlignVCenter,
                       InQt(tabella_.Titoli[static_cast<std::size_t>(c)]));
    }
}

void DisegnoValori::DisegnaRighe(QPainter& penna, bool fisse) {
    double alto = Misurata().Testata;
    for (const RigaCursore& riga : tabella_.Righe) {
        DisegnaFondo(penna, riga, alto, AltaRiga());
        DisegnaGiro(penna, riga, alto, fisse);
        alto += AltaRiga();
    }
    if (!tabella_.Due || tabella_.Righe.empty()) return;
    DisegnaTitoliTratto(penna, alto, fisse);
    alto += Misurata().Testata + AltaTratto();
    for (const RigaCursore& riga : tabella_.Righe) {
        DisegnaFondo(penna, riga, alto, AltaTratto());
        DisegnaTratto(penna, riga, alto, fisse);
        alto += AltaTratto();
    }
}

void DisegnoValori::DisegnaFondo(QPainter& penna, const RigaCursore& riga, double alto,
                                 double alta) {
    const Colori& colori = ColoriDi(*this);
    const QRectF tutta(0.0, alto, std::max<double>(Misurata().Larga, viewport()->width()), alta);
    if (riga.Lettera == fuoco_) penna.fillRect(tutta, colori.SelSoft);
    FiloBasso(penna, tutta, colori.Grid);
}

void DisegnoValori::DisegnaLettera(QPainter& penna, const RigaCursore& riga, const QRectF& posto) {
    const Colori& colori = ColoriDi(*this);
    const double lato = Misure(*this).Lettera;
    LetteraGiro(
        penna,
        QRectF(kSpazio, std::round(posto.top() + (posto.height() - 1.0 - lato) / 2.0), lato, lato),
        GiroDi(colori, riga.Lettera), font());
    penna.setFont(Scritti().Corpo.Carattere());
    penna.setPen(colori.Text);
    Scritti().Corpo.Scrivi(
        penna, QRectF(2.0 * kSpazio + lato, posto.top(), larghezzaGiro_, posto.height()),
        Qt::AlignLeft | Qt::AlignVCenter, InQt(riga.Nome));
}

void DisegnoValori::DisegnaGiro(QPainter& penna, const RigaCursore& riga, double alto, bool fisse) {
    const Colori& colori = ColoriDi(*this);
    const double alta = AltaRiga();
    if (!fisse) {
        for (int c = 0; c < Canali(); ++c) {
            DisegnaCanale(penna, riga, c, Cella(c + 1, alto, alta));
        }
        return;
    }
    DisegnaLettera(penna, riga, QRectF(0.0, alto, larghezzaGiro_, alta));
    const QString testo = Differenza(riga.Distacco, kDecimaliTempo);
    const bool perso = testo.startsWith(QLatin1Char('+'));
    const bool uguale = !perso && !testo.startsWith(QChar(0x2212));
    penna.setPen(perso ? colori.Loss : uguale ? colori.Text : colori.Gain);
    (uguale ? Scritti().Corpo : Scritti().Forte).Cifre(penna, Cella(0, alto, alta), testo);
}

void DisegnoValori::DisegnaCanale(QPainter& penna, const RigaCursore& riga, int canale,
                                  const QRectF& cella) {
    const Colori& colori = ColoriDi(*this);
    ScrittoriQuadri& scritti = Scritti();
    const auto c = static_cast<std::size_t>(canale);
    penna.setPen(colori.Text);
    if (c >= riga.Canali.size() || !riga.Canali[c].Esiste) {
        penna.setPen(colori.Text2);
        scritti.Corpo.Cifre(penna, cella, QStringLiteral("\u2013"));
        return;
    }
    const ValoreCursore& valore = riga.Canali[c];
    const QString testo = Numero(valore.Qui, Decimali(canale));
    if (riga.Lettera == kRiferimento) {
        scritti.Corpo.Cifre(penna, cella, testo);
        return;
    }
    const double sopra = scritti.Corpo.Riga();
    const double sotto = scritti.Piccolo.Riga();
    QRectF posto(cella.left(), cella.top() + (cella.height() - 1.0 - sopra - sotto) / 2.0,
                 cella.width(), sopra);
    scritti.Corpo.Cifre(penna, posto, testo);
    posto.moveTop(posto.bottom() - 1.0);
    posto.setHeight(sotto);
    penna.setPen(colori.Text2);
    scritti.Piccolo.Cifre(penna, posto, Differenza(valore.Differenza, Decimali(canale)));
}

/// Three figures below each other; the painter's pen is that of the last one.
void DisegnoValori::DisegnaTre(QPainter& penna, const QRectF& cella, const QString (&testi)[3]) {
    Scrittore& corpo = Scritti().Corpo;
    QRectF riga = cella;
    riga.setHeight(corpo.Riga() + 1.0);
    riga.moveTop(cella.top() + (cella.height() - 1.0 - 3.0 * riga.height()) / 2.0);
    for (const QString& testo : testi) {
        corpo.Cifre(penna, riga, testo);
        riga.moveTop(riga.bottom());
    }
}

/// The head of the second block: its name, and what the three lines of each column are.
void DisegnoValori::DisegnaTitoliTratto(QPainter& penna, double alto, bool fisse) {
    const Colori& colori = ColoriDi(*this);
    ScrittoriQuadri& scritti = Scritti();
    const double alta = Misurata().Testata;
    const QRectF fascia(0.0, alto, std::max<double>(Misurata().Larga, viewport()->width()),
                        alta + AltaTratto());
    penna.fillRect(fascia, colori.Alt);
    FiloAlto(penna, fascia, colori.Line);
    FiloBasso(penna, fascia, colori.Line);
    penna.setPen(colori.Text);
    penna.setFont(scritti.Forte.Carattere());
    // From both sides of the border, so that the name may be longer than the first columns.
    const double x = fisse ? 0.0 : Misurata().Fisse - InTabella({Misurata().Fisse, 0.0}).x();
    scritti.Forte.Scrivi(penna, QRectF(kSpazio - x, alto, fascia.width(), alta),
                         Qt::AlignLeft | Qt::AlignVCenter, InQt(lapvane::Testo(Voce::FraICursori)));
    penna.setPen(colori.Text2);
    penna.setFont(scritti.Piccolo.Carattere());
    const auto tre = [&](QRectF cella, const Voce(&voci)[3]) {
        const double riga = scritti.Corpo.Riga() + 1.0;
        cella.setTop(cella.top() + (cella.height() - 1.0 - 3.0 * riga) / 2.0);
        cella.setHeight(riga);
        for (const Voce voce : voci) {
            scritti.Piccolo.Scrivi(penna, cella, Qt::AlignRight | Qt::AlignVCenter,
                                   InQt(lapvane::Testo(voce)));
            cella.moveTop(cella.bottom());
        }
    };
    const double sotto = alto + alta;
    if (fisse) {
        tre(Cella(0, sotto, AltaTratto()), kTratto);
        return;
    }
    for (int c = 0; c < Canali(); ++c) tre(Cella(c + 1, sotto, AltaTratto()), kEstremi);
}

void DisegnoValori::DisegnaTratto(QPainter& penna, const RigaCursore& riga, double alto,
                                  bool fisse) {
    const Colori& colori = ColoriDi(*this);
    const double alta = AltaTratto();
    penna.setPen(colori.Text);
    if (fisse) {
        DisegnaLettera(penna, riga, QRectF(0.0, alto, larghezzaGiro_, alta));
        const QRectF cella = Cella(0, alto, alta);
        DisegnaTre(penna, cella, {Secondi(riga.Tempo), Metri(riga.Metri), {}});
        const QString perso = Differenza(riga.Perso, kDecimaliTempo) + QStringLiteral(" s");
        if (perso.startsWith(QLatin1Char('+'))) penna.setPen(colori.Loss);
        if (perso.startsWith(QChar(0x2212))) penna.setPen(colori.Gain);
        DisegnaTre(penna, cella, {{}, {}, riga.Lettera == kRiferimento ? QString() : perso});
        return;
    }
    for (int c = 0; c < Canali(); ++c) {
        const auto i = static_cast<std::size_t>(c);
        if (i >= riga.Canali.size() || !riga.Canali[i].Esiste) continue;
        const ValoreCursore& valore = riga.Canali[i];
        const int decimali = Decimali(c);
        DisegnaTre(penna, Cella(c + 1, alto, alta),
                   {Numero(valore.Minimo, decimali), Numero(valore.Massimo, decimali),
                    Numero(valore.Media, decimali)});
    }
}

QString DisegnoValori::Testo() const {
    if (tabella_.Righe.empty()) return {};
    const auto parola = [](Voce voce) { return InQt(lapvane::Testo(voce)); };
    QStringList titoli{parola(Voce::Giro), QStringLiteral("\u0394 s")};
    if (tabella_.Due) {
        for (const Voce voce : kTratto) titoli.append(parola(voce));
    }
    for (const std::string& titolo : tabella_.Titoli) {
        titoli.append(InQt(titolo));
        titoli.append(QStringLiteral("\u0394 ") + InQt(titolo));
        if (!tabella_.Due) continue;
        for (const Voce voce : kEstremi)
            titoli.append(InQt(titolo) + QLatin1Char(' ') + parola(voce));
    }
    QStringList righe{Titolo() + QLatin1Char('\t') + Nota(), titoli.join(QLatin1Char('\t'))};
    for (const RigaCursore& riga : tabella_.Righe) {
        QStringList celle{QLatin1Char(riga.Lettera) + QStringLiteral(" ") + InQt(riga.Nome),
                          Differenza(riga.Distacco, kDecimaliTempo)};
        if (tabella_.Due) {
            celle << Numero(riga.Tempo, kDecimaliTempo) << Numero(riga.Metri, 0)
                  << Differenza(riga.Perso, kDecimaliTempo);
        }
        for (int c = 0; c < Canali(); ++c) {
            const auto i = static_cast<std::size_t>(c);
            const bool esiste = i < riga.Canali.size() && riga.Canali[i].Esiste;
            const ValoreCursore valore = esiste ? riga.Canali[i] : ValoreCursore{};
            const int decimali = Decimali(c);
            QStringList suoi{Numero(valore.Qui, decimali), Differenza(valore.Differenza, decimali)};
            if (tabella_.Due) {
                suoi << Numero(valore.Minimo, decimali) << Numero(valore.Massimo, decimali)
                     << Numero(valore.Media, decimali);
            }
            for (QString& testo : suoi) celle.append(esiste ? testo : QString());
        }
        righe.append(celle.join(QLatin1Char('\t')));
    }
    return ConTratto(righe.join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

QSize DisegnoValori::sizeHint() const {
    return {298, static_cast<int>(Misure(*this).Testata + 4.0 * AltaRiga())};
}

}  // namespace lapvane
