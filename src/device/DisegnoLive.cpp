#include "device/DisegnoLive.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyleOptionGroupBox>
#include <algorithm>
#include <cmath>

#include "platform/qt/TestoQt.h"
#include "shell/NumeroTesto.h"
#include "widgets/Dialogo.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Pennello.h"

namespace lapvane {

namespace {

constexpr int kMemoriaLibera = 15;
constexpr int kMargine = 12;
constexpr int kAltoLinea = 34;
constexpr double kPuntiMinimi = 20.0;  // of a figure that is read from a metre away
constexpr int kMinimoLinea = 14;
constexpr int kDestra = 6;  // behind the unit
constexpr int kSpazioRighe = 10;
constexpr int kSottoTitolo = 4;
constexpr int kMinimoColonna = 160;
constexpr int kFondoScala = 1023;     // of a raw value
constexpr double kPunto = 2.0;        // radius of the line's end
constexpr double kMedio = 1.5;        // of the letters: the free memory, all decimals of which show
constexpr double kMinimaCifra = 0.7;  // of the letters, for a value with many decimals
constexpr QRgb kRosso = 0xFFFF0000;
constexpr QLatin1String kPiuLargo("00.000");  // the widest value in use; wider ones get smaller

/// The fields row by row; what belongs together stands together.
constexpr int kPosti[PannelloLive::kRighe][PannelloLive::kColonne] = {
    {0, 2, 10, 12}, {3, 4, 5, 6}, {14, 16, 11, 13}, {7, 9, 8, 15}};

int Larga(const QFontMetrics& misure) {
    int larga = 0;
    for (char c = '0'; c <= '9'; ++c)
        larga = std::max(larga, misure.horizontalAdvance(QLatin1Char(c)));
    return larga;
}

int Largo(const QFontMetrics& misure, const QString& testo) {
    const int cella = Larga(misure);
    int largo = 0;
    for (const QChar c : testo) largo += c.isDigit() ? cella : misure.horizontalAdvance(c);
    return largo;
}

/// Each digit in a cell of the widest one, the last at `destra`.
void ScriviCifre(QPainter& penna, int destra, int base, const QString& testo) {
    const QFontMetrics misure = penna.fontMetrics();
    const int cella = Larga(misure);
    int x = destra;
    for (auto c = testo.crbegin(); c != testo.crend(); ++c) {
        const int suo = misure.horizontalAdvance(*c);
        const int largo = c->isDigit() ? cella : suo;
        penna.drawText(x - largo + (largo - suo) / 2, base, QString(*c));
        x -= largo;
    }
}

QFont Medio(QFont carattere) {
    carattere.setPointSizeF(carattere.pointSizeF() * kMedio);
    return carattere;
}

QFont Grassa(QFont carattere, bool grassa) {
    carattere.setWeight(grassa ? QFont::DemiBold : QFont::Normal);
    return carattere;
}

}  // namespace

void NomeLive::Coda(const QString& coda) {
    coda_ = coda;
    update();
}

QString NomeLive::Unita() const {
    const auto apre = text().indexOf(QLatin1String(" ["));
    if (apre < 0 || !text().endsWith(QLatin1Char(']'))) return {};
    return text().sliced(apre + 2).chopped(1);
}

QString NomeLive::Mostrato() const {
    const QString nome = Unita().isEmpty() ? text() : text().section(QLatin1String(" ["), 0, 0);
    return coda_.isEmpty() ? nome : nome + QStringLiteral(", ") + coda_;
}

QSize NomeLive::minimumSizeHint() const {
    const QFontMetrics piccola(Carattere(*this, Scrittura::Piccola));
    return {piccola.horizontalAdvance(Mostrato()), fontMetrics().height()};
}

void NomeLive::paintEvent(QPaintEvent*) {
    QPainter penna(this);
    const QString nome = Mostrato();
    if (penna.fontMetrics().horizontalAdvance(nome) > width())
        penna.setFont(Carattere(*this, Scrittura::Piccola));
    penna.setPen(ColoriDi(*this).Text2);
    penna.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                   penna.fontMetrics().elidedText(nome, Qt::ElideRight, width()));
}

void CifraLive::Grande(const QFont& carattere, int base) {
    grande_ = carattere;
    base_ = base;
    update();
}

QFont CifraLive::Minima() const {
    QFont carattere = Grassa(grande_, isEnabled());
    carattere.setPointSizeF(kMinimaCifra * (font().pointSizeF() > 0.0 ? font().pointSizeF() : 9.0));
    return carattere;
}

QSize CifraLive::minimumSizeHint() const {
    const QFontMetrics misure(Minima());
    return {Largo(misure, text()), misure.height()};
}

void CifraLive::paintEvent(QPaintEvent*) {
    if (text().isEmpty()) return;
    QFont carattere = Grassa(grande_, isEnabled());
    const double minima = Minima().pointSizeF();
    while (carattere.pointSizeF() > minima && Largo(QFontMetrics(carattere), text()) > width())
        carattere.setPointSizeF(std::max(minima, carattere.pointSizeF() - 0.5));
    QString testo = text();
    const QFontMetrics misure(carattere);
    // Its first digits must never be the ones that are cut off.
    while (testo.size() > 1 && Largo(misure, testo) > width())
        testo = testo.chopped(testo.endsWith(u'\u2026') ? 2 : 1) + u'\u2026';
    QPainter penna(this);
    penna.setFont(carattere);
    const Colori& colori = ColoriDi(*this);
    penna.setPen(isEnabled() ? colori.Text : colori.Stale);
    const int base = base_ >= 0 ? base_ : (height() + misure.capHeight()) / 2;
    ScriviCifre(penna, width(), base, testo);
}

RiquadroLive::RiquadroLive(const CampoLive& campo, QWidget* parent)
    : QWidget(parent), memoria_(campo.Campo == kMemoriaLibera) {
    const auto nome = [&campo](const char* quale) {
        return QString::fromLatin1(quale) + QString::number(campo.Campo);
    };
    lblNomeCampo = new NomeLive(this);
    lblNomeCampo->setObjectName(nome("lblNomeCampo"));
    txtValoreCampo = new CifraLive(this);
    txtValoreCampo->setObjectName(nome("txtValoreCampo"));
    txtValoreCampo->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblUM = Etichetta(this, nome("lblUM").toStdString());
    for (QLabel* parte :
         {static_cast<QLabel*>(lblNomeCampo), static_cast<QLabel*>(txtValoreCampo), lblUM}) {
        parte->setTextFormat(Qt::PlainText);
    }
}

void RiquadroLive::Valore(const QString& testo, std::int64_t ora) {
    if (txtValoreCampo->text() != testo) txtValoreCampo->setText(testo);
    const std::string valore = DaQt(testo);
    if (minuto_.Aggiungi(CampoNumerico(valore.data(), valore.data() + valore.size()), ora))
        update(PostoLinea());
}

void RiquadroLive::UnitaPropria(const QString& unita) {
    unita_ = unita;
    update();
}

void RiquadroLive::Fermo(bool fermo) {
    txtValoreCampo->setEnabled(!fermo);
    if (fermo_ == fermo) return;
    fermo_ = fermo;
    update();
}

void RiquadroLive::Allarme(bool acceso) {
    if (allarme_ == acceso) return;
    allarme_ = acceso;
    update();
}

QString RiquadroLive::UnitaMostrata() const {
    if (!lblUM->text().isEmpty()) return {};  // its own label shows it
    return unita_.isEmpty() ? lblNomeCampo->Unita() : unita_;
}

int RiquadroLive::LarghezzaUnita() const {
    const QString unita = lblUM->text().isEmpty() ? UnitaMostrata() : lblUM->text();
    return QFontMetrics(Carattere(*this, Scrittura::Piccola)).horizontalAdvance(unita);
}

QRect RiquadroLive::PostoLinea() const {
    const int sopra = kSpazio + Misure(*this).Linea;
    const QFontMetrics minima(Carattere(*this, Scrittura::Testa));
    const int alto = std::min(std::max(kAltoLinea, height() / 3),
                              height() - kSpazio - sopra - minima.ascent() - kSpazio);
    if (alto < kMinimoLinea) return {};
    return {kMargine, height() - kSpazio - alto, width() - 2 * kMargine, alto};
}

QRect RiquadroLive::PostoCifra(int larghezzaUnita) const {
    const QRect linea = PostoLinea();
    const int sopra = kSpazio + Misure(*this).Linea;
    const int sotto = linea.isNull() ? height() - kSpazio : linea.top();
    const int destra = width() - kDestra - larghezzaUnita - kSpazio;
    return {kSpazio, sopra, destra - kSpazio, sotto - sopra};
}

void RiquadroLive::Disponi(const QFont& cifra, int larghezzaUnita) {
    const Misure m(*this);
    lblNomeCampo->setGeometry(kMargine, kSpazio, width() - kMargine - kDestra, m.Linea);
    const QRect posto = PostoCifra(larghezzaUnita);
    // One base line for all figures, the small ones of the free memory too.
    const int base = (posto.height() + QFontMetrics(cifra).capHeight()) / 2;
    txtValoreCampo->setGeometry(posto);
    txtValoreCampo->Grande(memoria_ ? Medio(font()) : cifra, base);
    const QFont piccola = Carattere(*this, Scrittura::Piccola);
    lblUM->setFont(piccola);
    QPalette tavolozza = palette();
    tavolozza.setColor(QPalette::WindowText, ColoriDi(*this).Text2);
    lblUM->setPalette(tavolozza);
    const QFontMetrics misure(piccola);
    lblUM->setGeometry(posto.right() + 1 + kSpazio, posto.top() + base - misure.ascent(),
                       larghezzaUnita, misure.height());
    update();
}

void RiquadroLive::paintEvent(QPaintEvent* evento) {
    QPainter penna(this);
    const Colori& colori = ColoriDi(*this);
    const QColor fondo = fermo_ ? colori.Alt : colori.Base;
    if (allarme_) {
        Riquadro(penna, rect(), kRaggioScheda, fondo, QColor(kRosso), 2.0);
    } else if (fermo_) {
        Riquadro(penna, rect(), kRaggioScheda, fondo);
        penna.setRenderHint(QPainter::Antialiasing);
        penna.setPen(QPen(colori.Edge, Filo(penna), Qt::DashLine));
        penna.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRaggioScheda,
                              kRaggioScheda);
    } else {
        Riquadro(penna, rect(), kRaggioScheda, fondo, colori.Line);
    }
    if (const QString unita = UnitaMostrata(); !unita.isEmpty()) {
        penna.setFont(lblUM->font());
        penna.setPen(colori.Text2);
        penna.drawText(lblUM->geometry(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                       unita);
    }
    if (const QRect linea = PostoLinea(); evento->rect().intersects(linea)) DisegnaLinea(penna);
}

void RiquadroLive::DisegnaLinea(QPainter& penna) const {
    const QRectF posto = PostoLinea();
    const auto campo = minuto_.Intervallo(apertura_);
    const double alto = campo.Massimo - campo.Minimo;
    if (posto.isEmpty() || !(alto > 0.0)) return;
    const Colori& colori = ColoriDi(*this);
    const QColor tinta = fermo_ ? colori.Stale : colori.Text2;
    const QRectF area = posto.adjusted(0.0, kPunto, -kPunto, -kPunto);
    const double passo = area.width() / (UltimoMinuto::kPosti - 1);
    std::vector<QPointF> punti;
    punti.reserve(UltimoMinuto::kPosti);
    const auto traccia = [&] {
        if (punti.size() > 1) Spezzata(penna, punti, tinta, 1.2);
        punti.clear();
    };
    for (std::size_t fa = 0; fa < UltimoMinuto::kPosti; ++fa) {
        const auto valore = minuto_.Valore(fa);
        if (!valore) {
            traccia();
            continue;
        }
        const QPointF punto(area.right() - passo * static_cast<double>(fa),
                            area.bottom() - (*valore - campo.Minimo) / alto * area.height());
        if (fa == 0) {
            penna.setRenderHint(QPainter::Antialiasing);
            penna.setPen(Qt::NoPen);
            penna.setBrush(tinta);
            penna.drawEllipse(punto, kPunto, kPunto);
        }
        punti.push_back(punto);
    }
    traccia();
}

PannelloLive::PannelloLive(QWidget* parent) : QWidget(parent) {
    for (const CampoLive& campo : CampiLive)
        riquadri_[static_cast<std::size_t>(campo.Campo)] = new RiquadroLive(campo, this);
    for (QLabel*& titolo : Titoli) titolo = new QLabel(this);
    lblFermi = Etichetta(this, "lblFermi");
    lblFermi->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblFermi->hide();
    Ridisponi();
}

RiquadroLive& PannelloLive::Riquadro(int campo) const {
    return *riquadri_.at(static_cast<std::size_t>(campo));
}

/// The smallest figures of a tile: twice the letters, where that is no more than is needed.
static QFont CifreMinime(const QWidget& pannello) {
    QFont minima = Carattere(pannello, Scrittura::Testa);
    minima.setPointSizeF(std::min(minima.pointSizeF(), kPuntiMinimi));
    return minima;
}

QSize PannelloLive::minimumSizeHint() const {
    const Misure m(*this);
    const QFontMetrics cifra(CifreMinime(*this));
    const int riquadro = kSpazio + m.Linea + cifra.ascent() + kSpazio;
    const QFontMetrics piccola(Carattere(*this, Scrittura::Piccola));
    const int unita = piccola.horizontalAdvance(QStringLiteral("Km/h")) + kDestra;
    const int largo = std::max(kMinimoColonna, kSpazio + Largo(cifra, kPiuLargo) + kSpazio + unita);
    return {kColonne * largo + (kColonne - 1) * kSpazio,
            kRighe * (m.Linea + kSottoTitolo + riquadro) + (kRighe - 1) * kSpazioRighe};
}

QSize PannelloLive::sizeHint() const {
    return minimumSizeHint().expandedTo({1048, 690});
}

/// The figures are three times the letters where that has room, twice at least.
QFont PannelloLive::CarattereCifre(const QSize& posto) const {
    QFont cifra = Carattere(*this, Scrittura::Cifra);
    const double minima = CifreMinime(*this).pointSizeF();
    const auto troppo = [&] {
        const QFontMetrics misure(cifra);
        return Largo(misure, kPiuLargo) > posto.width() || misure.capHeight() > posto.height() - 4;
    };
    while (cifra.pointSizeF() > minima && troppo())
        cifra.setPointSizeF(std::max(minima, cifra.pointSizeF() - 1.0));
    return cifra;
}

void PannelloLive::Ridisponi() {
    const Colori& colori = ColoriDi(*this);
    const auto scrivi = [this](QLabel* etichetta, const QColor& colore) {
        etichetta->setFont(Carattere(*this, Scrittura::Forte));
        QPalette tavolozza = palette();
        tavolozza.setColor(QPalette::WindowText, colore);
        etichetta->setPalette(tavolozza);
    };
    const Misure m(*this);
    const int largo = (width() - (kColonne - 1) * kSpazio) / kColonne;
    const int titoli = kRighe * (m.Linea + kSottoTitolo) + (kRighe - 1) * kSpazioRighe;
    const int alto = (height() - titoli) / kRighe;
    int unita = 0;
    for (const auto& riga : kPosti) {
        for (const int campo : riga) unita = std::max(unita, Riquadro(campo).LarghezzaUnita());
    }
    for (int r = 0; r < kRighe; ++r) {
        const int y = r * (m.Linea + kSottoTitolo + alto + kSpazioRighe);
        QLabel* titolo = Titoli[static_cast<std::size_t>(r)];
        scrivi(titolo, colori.Text);
        titolo->setGeometry(0, y, width() / 2, m.Linea);
        for (int c = 0; c < kColonne; ++c) {
            Riquadro(kPosti[r][c])
                .setGeometry(c * (largo + kSpazio), y + m.Linea + kSottoTitolo, largo, alto);
        }
    }
    scrivi(lblFermi, colori.Warn);
    lblFermi->setGeometry(width() / 2, 0, width() - width() / 2, m.Linea);
    const QFont cifra = CarattereCifre(Riquadro(0).PostoCifra(unita).size());
    for (const auto& riga : kPosti) {
        for (const int campo : riga) Riquadro(campo).Disponi(cifra, unita);
    }
}

void PannelloLive::resizeEvent(QResizeEvent*) {
    Ridisponi();
}

void PannelloLive::changeEvent(QEvent* evento) {
    if (evento->type() == QEvent::FontChange || evento->type() == QEvent::PaletteChange)
        Ridisponi();
    QWidget::changeEvent(evento);
}

CorniceLive::CorniceLive(QWidget* parent, const char* nome) : QGroupBox(parent) {
    setObjectName(QString::fromLatin1(nome));
    lblFermi = Etichetta(this, "lblFermi" + std::string(nome).substr(3));
    lblFermi->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblFermi->hide();
}

void CorniceLive::Fermo(bool fermo) {
    if (fermo_ == fermo) return;
    fermo_ = fermo;
    update();
}

void CorniceLive::resizeEvent(QResizeEvent* evento) {
    QGroupBox::resizeEvent(evento);
    lblFermi->setFont(Carattere(*this, Scrittura::Forte));
    QPalette tavolozza = palette();
    tavolozza.setColor(QPalette::WindowText, ColoriDi(*this).Warn);
    lblFermi->setPalette(tavolozza);
    lblFermi->setGeometry(0, 0, width(), Misure(*this).Linea);
}

void CorniceLive::paintEvent(QPaintEvent* evento) {
    QGroupBox::paintEvent(evento);
    if (!fermo_) return;
    QStyleOptionGroupBox o;
    initStyleOption(&o);
    const QRectF scheda =
        style()->subControlRect(QStyle::CC_GroupBox, &o, QStyle::SC_GroupBoxFrame, this);
    const Colori& colori = ColoriDi(*this);
    QPainter penna(this);
    penna.fillRect(scheda, colori.Window);
    Riquadro(penna, scheda, kRaggioScheda, colori.Alt);
    penna.setRenderHint(QPainter::Antialiasing);
    penna.setPen(QPen(colori.Edge, Filo(penna), Qt::DashLine));
    penna.drawRoundedRect(QRectF(scheda).adjusted(0.5, 0.5, -0.5, -0.5), kRaggioScheda,
                          kRaggioScheda);
}

BarraIngresso::BarraIngresso(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

int BarraIngresso::Pieno() const {
    return width() * std::clamp(valore_, 0, kFondoScala) / kFondoScala;
}

void BarraIngresso::Valore(int valore) {
    const int prima = Pieno();
    valore_ = valore;
    if (Pieno() != prima) update();
}

void BarraIngresso::paintEvent(QPaintEvent*) {
    QPainter penna(this);
    const Colori& colori = ColoriDi(*this);
    const double raggio = height() / 2.0;
    Riquadro(penna, rect(), raggio, colori.Grid);
    if (Pieno() > 0)
        Riquadro(penna, QRectF(0, 0, std::max(Pieno(), height()), height()), raggio, colori.Stale);
}

}  // namespace lapvane
