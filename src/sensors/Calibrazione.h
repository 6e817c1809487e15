#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "sensors/TabellaPunti.h"

namespace lapvane {

/// A fuel level curve by measurement: each step pairs the raw value of the fuel input with the
/// litres in the tank and enters the pair into the table of points.
class Calibrazione {
 public:
    static constexpr std::size_t kIngressoBenzina = 4;  ///< of the analogue inputs
    static constexpr int kPuntiMassimi = 19;

    explicit Calibrazione(TabellaPunti& tabella) : tabella_(tabella) {}

    /// 1 after a measure, 2 after `FineProcedura`, 3 when it was given up; 0 before all.
    std::int16_t StatoCalibrazione = 0;
    /// Raw value that the next measure enters.
    std::int16_t ValoreBenzina = 0;

    /// Points taken so far.
    int NumeroPunto() const { return numeroPunto_; }
    /// Whether the table has no room for another measure.
    bool Piena() const { return numeroPunto_ >= kPuntiMassimi; }

    /// Litres as they are entered: "0.0" for none, a point for a comma, one decimal at least.
    static std::string SistemaLitri(std::string_view litri);
    /// Enters `ValoreBenzina` and the litres into the next row; nothing when `Piena`.
    void Misura(const std::string& litri);
    /// Turns a curve that falls over, and fills the rows left with the end of the input's range.
    void FineProcedura();

 private:
    TabellaPunti& tabella_;
    std::int16_t numeroPunto_ = 0;
    std::array<std::string, 21> storiaX_;
    std::array<std::string, 21> storiaY_;
};

}  // namespace lapvane
