#pragma once

#include "platform/GraphControl.h"

namespace lapvane {

/// A graph that only looks at what it is told to draw.
class QuietGraph : public GraphControl {
 public:
    void Titolo(const std::string&) override {}
    void EtichettaX(const std::string&) override {}
    void EtichettaY(const std::string&) override {}
    void ColoreAsse(Colore) override {}
    void ColoreSfondo(Colore) override {}
    void ColoreCornice(Colore) override {}
    void MostraGriglia(bool) override {}
    void MostraNumeriY(bool) override {}
    void PulisciGrafico() override { element_ = 1; }
    std::int16_t ElementoCorrente() const override { return element_; }
    void ColoreElemento(Colore) override {}
    void SpessoreElemento(std::int16_t) override {}
    void NomeElemento(const std::string&) override {}
    void ImpostaIntervallo(double xMin, double xMax, double yMin, double yMax, int) override {
        range_ = {xMin, xMax, yMin, yMax};
    }
    IntervalloGrafico LeggiIntervallo() const override { return range_; }
    void ScalaY(double) override {}
    void DisegnaArray(std::span<const double> x, std::span<const double> y, std::int16_t, double,
                      int, const MisureCanale&) override {
        if (!x.empty()) sum_ = x.front() + x.back();
        if (!y.empty()) sum_ = y.front() + y.back();
        points_ = static_cast<std::int32_t>(x.size());
        ++element_;
    }
    void AggiungiPunto(double, double) override {}
    int NumeroCursori() const override { return cursors_; }
    void AggiungiCursore() override { ++cursors_; }
    void ImpostaModoCursore(ModoCursore) override {}
    void ColoreCursore(Colore) override {}
    void CursoreVisibile(bool) override {}
    void CursoreX(double x) override { cursor_ = x; }
    double CursoreX() const override { return cursor_; }
    void CursoreY(double) override {}
    void CursoreAttivo(bool on) override { follows_ = on; }
    bool CursoreAttivo() const override { return follows_; }
    std::int32_t IndiceDaX(double, double) const override { return points_ > 0 ? points_ - 1 : 0; }
    void ImpostaModoMouse(ModoMouse) override {}

 private:
    IntervalloGrafico range_;
    std::int16_t element_ = 1;
    int cursors_ = 0;
    double cursor_ = 0.0;
    bool follows_ = true;
    std::int32_t points_ = 0;
    volatile double sum_ = 0.0;
};

}  // namespace lapvane
