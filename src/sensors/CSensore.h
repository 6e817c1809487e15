#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "sensors/Curve.h"

namespace lapvane {

/// One sensor curve: raw values of an instrument input against physical values.
class CSensore {
 public:
    static constexpr std::size_t kElementi = 21;  ///< elements of each axis; 0 to 19 are used
    static constexpr std::size_t kPunti = 20;     ///< points of the instrument's table

    std::int16_t NumPunti() const { return numPunti_; }
    void NumPunti(std::int16_t numero) { numPunti_ = numero; }
    /// Raw axis and physical axis; error 9 for an index outside 0 to 20.
    double X(int i) const { return x_[Indice(i)]; }
    void X(int i, double valore) { x_[Indice(i)] = valore; }
    double Y(int i) const { return y_[Indice(i)]; }
    void Y(int i, double valore) { y_[Indice(i)] = valore; }
    const std::string& Tipo() const { return tipo_; }
    void Tipo(std::string_view tipo) { tipo_ = tipo; }
    const std::filesystem::path& NomeFile() const { return nomeFile_; }
    void NomeFile(const std::filesystem::path& file) { nomeFile_ = file; }
    const std::string& Nome() const { return nome_; }
    void Nome(std::string_view nome) { nome_ = nome; }

 private:
    static std::size_t Indice(int i);

    std::int16_t numPunti_ = 0;
    std::array<double, kElementi> x_{};
    std::array<double, kElementi> y_{};
    std::string tipo_;
    std::filesystem::path nomeFile_;
    std::string nome_;
};

/// The sensor library, in the order of the file names.
extern std::vector<CSensore> LibreriaSensori;

/// Adds every sensor file of the folder `sensors` to the library, which it does not empty. A file
/// that is no sensor file, or is cut short, or declares more points than a curve holds, is reported
/// and left out. A folder that is missing counts as empty; one that cannot be listed is reported.
void CaricaLibreriaSensori();

/// Removes all sensors, one by one from the front.
void SvuotaLibreriaSensori();

/// Finds the sensor of that name and leaves its curve, scaled by the factor of its type, in `x` and
/// `y`. Without such a sensor the axes stay as they are. The number of points that it has set.
std::size_t CaricaCurvaSensore(std::string_view nome, AsseCurva& x, AsseCurva& y);
/// The same in `CurvaX` and `CurvaY`.
void CaricaCurvaSensore(std::string_view nome);

/// The curve of a channel that is not enabled: zeros. Element 20 is left alone.
void AzzeraCurvaSensore();

/// The name of the first sensor of that type whose 20 points equal these axes (already divided by
/// the factor) exactly; the empty text if there is none.
std::string CercaNomeSensore(std::string_view tipo, const AsseCurva& x, const AsseCurva& y);
/// The same for `CurvaX` and `CurvaY`.
std::string CercaNomeSensore(std::string_view tipo);

}  // namespace lapvane
