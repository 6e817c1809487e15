#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "widgets/AsseGrafico.h"

namespace lapvane {

/// Draws antialiased lines with round joins and ends into an opaque picture in memory. Each line is
/// first gathered as a mask of coverage, pixel by pixel the highest of its segments, and laid over
/// the picture once: a jagged line shows neither beads nor notches at its corners, and costs a
/// fraction of what a general path rasterizer needs for it.
class Tracciatore {
 public:
    Tracciatore();
    ~Tracciatore();
    Tracciatore(const Tracciatore&) = delete;
    Tracciatore& operator=(const Tracciatore&) = delete;

    /// Pixels 0xffRRGGBB, row by row; `Passo` is the distance of two rows in pixels.
    struct Tela {
        std::uint32_t* Pixel = nullptr;
        std::ptrdiff_t Passo = 0;
    };
    /// Pixels from `Sinistra`, `Alto` up to but without `Destra`, `Basso`.
    struct Campo {
        int Sinistra = 0;
        int Alto = 0;
        int Destra = 0;
        int Basso = 0;
    };

    /// Where the next lines go. They touch nothing outside of the field, which must lie inside the
    /// picture.
    void Inizia(const Tela& tela, const Campo& campo);
    /// A line through the points, which are finite and at most 10000 pixels away from the field. A
    /// pixel's middle lies at 0.5; `larghezza` is in pixels, at least 1.
    void Linea(std::span<const PuntoGrafico> punti, double larghezza, std::uint32_t colore);

 private:
    struct Segmento;
    struct Profilo;

    const Profilo& ProfiloDi(double larghezza);
    Segmento Prepara(const PuntoGrafico& a, const PuntoGrafico& b) const;
    void Copri(const Segmento& s);
    template <bool Alto>
    void CopriLungo(const Segmento& s);
    template <bool Alto>
    void CopriTesta(const Segmento& s, int da, int a);
    template <bool Alto>
    void CopriCorpo(const Segmento& s, int da, int a);
    template <bool Alto, int Pixel>
    void CopriColProfilo(const Segmento& s, int da, int a);
    template <bool Alto>
    void Segna(int lungo, int daTraverso, int aTraverso);
    void Stendi(std::uint32_t colore);

    Tela tela_;
    Campo campo_;
    // The mask is the field with a border, so that a line's breadth need not be cut at its edge.
    int larghezza_ = 0;
    int altezza_ = 0;
    float raggio_ = 0.0F;           ///< from the line's middle to where its coverage ends
    std::size_t passo_ = 0;         ///< bytes from row to row
    std::size_t passoTessere_ = 0;  ///< words from row to row of the marks
    std::vector<std::uint8_t> maschera_;
    std::vector<std::uint64_t> tessere_;  ///< one bit for eight pixels that may be covered
    int primaRiga_ = 0;                   ///< rows with marks
    int ultimaRiga_ = -1;
    std::vector<std::unique_ptr<Profilo>> profili_;
    const Profilo* profilo_ = nullptr;  ///< of the line's width
};

}  // namespace lapvane
