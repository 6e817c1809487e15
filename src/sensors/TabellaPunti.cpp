#include "sensors/TabellaPunti.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "sensors/Curve.h"
#include "shell/NumeroTesto.h"
#include "shell/Utility.h"

namespace lapvane {

std::string TestoPunto(double valore) {
    return std::string(Rifila(TestoNumeroConSpazio(valore)));
}

double TabellaPunti::X(int i) const {
    return PrefissoNumerico(Riga(i).X);
}

double TabellaPunti::Y(int i) const {
    return PrefissoNumerico(Riga(i).Y);
}

std::vector<std::string> TabellaPunti::Asse(std::string RigaPunto::*asse) const {
    std::vector<std::string> testi;
    testi.reserve(static_cast<std::size_t>(numPuntiTabella_));
    for (int i = 0; i < numPuntiTabella_; ++i) testi.push_back(Riga(i).*asse);
    return testi;
}

void TabellaPunti::Spunta(int i, bool accesa) {
    RigaPunto& riga = In(i);
    if (riga.Spunta == accesa) return;
    riga.Spunta = accesa;
    Check1_Click(i);
}

/// Rows 0 to `i` are open for typing, and the row below each can be ticked.
void TabellaPunti::AbilitaFino(int i) {
    for (int r = 0; r <= i; ++r) {
        In(r).Caselle = true;
        if (r + 1 < kRighe) In(r + 1).SpuntaAttiva = true;
    }
}

void TabellaPunti::SpegniDa(int i) {
    for (int r = i; r < kRighe; ++r) In(r).Caselle = In(r).SpuntaAttiva = false;
}

void TabellaPunti::Check1_Click(int i) {
    if (i < numPuntiTabella_ - 1) {
        In(i).Spunta = true;
        return;
    }
    if (In(i).Spunta) {
        ++numPuntiTabella_;
        AbilitaFino(i);
        SpegniDa(i + 2);
    } else {
        --numPuntiTabella_;
        AbilitaFino(i - 1);
        // Kept: the boxes of the row itself keep their state and text.
        SpegniDa(i + 1);
    }
    daDisegnare_ = true;
}

void TabellaPunti::SvuotaTabella() {
    // Kept: each tick that goes is a click, which counts the rows in use down and opens the boxes
    // of the rows above again, until these are emptied in their turn.
    for (int i = kRighe - 1; i >= 0; --i) {
        RigaPunto& riga = In(i);
        riga.Caselle = false;
        riga.X.clear();
        riga.Y.clear();
        Spunta(i, false);
    }
}

void TabellaPunti::NuovoSensore() {
    // Kept: counted down from 0 by the ticks that go, so that it is set again at the end.
    numPuntiTabella_ = 0;
    SvuotaTabella();
    for (RigaPunto& riga : righe_) riga.Caselle = riga.SpuntaAttiva = false;
    righe_[0].SpuntaAttiva = true;
    numPuntiTabella_ = 0;
}

void TabellaPunti::MostraSensore(const CSensore& sensore, std::string_view tipo) {
    // A file may declare one point more than the table has rows.
    const int punti = std::min<int>(sensore.NumPunti(), kRighe);
    for (int i = 0; i < punti; ++i) {
        RigaPunto& riga = In(i);
        riga.Caselle = true;
        riga.X = TestoPunto(sensore.X(i));
        riga.Y = TestoPunto(sensore.Y(i));
        if (tipo != "Altro") FormattaDecimali(riga.Y, FattoreSensore(tipo));
        Spunta(i, true);
    }
    for (int i = kRighe - 1; i >= std::max(punti, 0); --i) Spunta(i, false);
}

void TabellaPunti::MostraCurva(int fattore) {
    for (int i = 0; i < kRighe; ++i) {
        const auto n = static_cast<std::size_t>(i);
        CurvaY[n] /= fattore;
        RigaPunto& riga = In(i);
        riga.X = TestoPunto(CurvaX[n]);
        riga.Y = VirgolaInPunto(TestoPunto(CurvaY[n]));
        FormattaDecimali(riga.Y, fattore);
    }
    for (int i = 0; i < kRighe; ++i) {
        In(i).Caselle = In(i).SpuntaAttiva = true;
        Spunta(i, true);
    }
}

std::pair<int, int> TabellaPunti::Insieme(int i) const {
    const auto stesso = [this, i](int n) { return X(n) == X(i) && Y(n) == Y(i); };
    int primo = i, ultimo = i;
    while (primo > 0 && stesso(primo - 1)) --primo;
    while (ultimo + 1 < numPuntiTabella_ && stesso(ultimo + 1)) ++ultimo;
    return {primo, ultimo};
}

double TabellaPunti::XPossibile(int primo, int ultimo, double x, bool cala) const {
    const bool inizio = primo == 0, fine = ultimo + 1 >= numPuntiTabella_;
    double minimo = std::min(0.0, CalcolaLimiti().XMin);
    double massimo = std::numeric_limits<std::int16_t>::max();
    if (!inizio && !fine) {
        minimo = std::min(X(primo - 1), X(ultimo + 1));
        massimo = std::max(X(primo - 1), X(ultimo + 1));
    } else if (!cala) {
        if (!inizio) minimo = X(primo - 1);
        if (!fine) massimo = X(ultimo + 1);
    }
    return std::clamp(std::round(x), minimo, std::max(minimo, massimo));
}

LimitiCurva TabellaPunti::CalcolaLimiti() const {
    LimitiCurva limiti;
    for (int i = 0; i < numPuntiTabella_; ++i) {
        limiti.XMin = std::min(limiti.XMin, X(i));
        limiti.XMax = std::max(limiti.XMax, X(i));
        limiti.YMin = std::min(limiti.YMin, Y(i));
        limiti.YMax = std::max(limiti.YMax, Y(i));
    }
    return limiti;
}

bool TabellaPunti::DaDisegnare() {
    return std::exchange(daDisegnare_, false);
}

}  // namespace lapvane
