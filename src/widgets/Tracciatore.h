#pragma once

#include <QSemaphore>
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
///
/// The picture is drawn band by band, all lines of a band before the next: what a band needs stays
/// in the processor's cache, and bands are drawn by all cores at once. The pixels are the same
/// whatever the order.
class Tracciatore {
 public:
    /// `semplice`: with the instructions that every machine has; the pixels are the same.
    explicit Tracciatore(bool semplice = false);
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
    /// An area of one colour.
    struct Macchia {
        Campo Dove;
        std::uint32_t Colore = 0;
    };
    /// What lies below the lines, the later over the earlier, cut at the field. A band gets its
    /// ground just before its lines, while it is at hand. Without one the picture keeps its own.
    void Fondo(std::span<const Macchia> macchie) { fondo_ = macchie; }
    /// Where the field is copied to as well, a band as soon as it is done: the pixels of `tela`
    /// that stand for the same places. Null: nowhere.
    void Copia(const Tela& tela) { copia_ = tela; }
    /// A line through the points, which are finite and at most 10000 pixels away from the field. A
    /// pixel's middle lies at 0.5; `larghezza` is in pixels, at least 1.
    void Linea(std::span<const PuntoGrafico> punti, double larghezza, std::uint32_t colore);
    /// Draws ground and lines since `Inizia`, the later ones over the earlier ones, on at most
    /// `thread` cores; 0: on all. The ground's areas must still be there.
    void Traccia(int thread = 0);

 private:
    struct Segmento;
    struct Profilo;
    struct Stile;
    struct LineaPronta;
    struct Righe;
    struct Lavoro;
    class Fascia;

    std::shared_ptr<const Profilo> ProfiloDi(double larghezza);
    Segmento Prepara(const PuntoGrafico& a, const PuntoGrafico& b, float raggio) const;
    void Aggiungi(LineaPronta& linea, const Segmento& s);
    void Prepara(LineaPronta& linea);
    void Esegui(Lavoro& lavoro, Fascia& fascia);

    bool semplice_;
    Tela tela_;
    Tela copia_;
    Campo campo_;
    std::span<const Macchia> fondo_;
    std::vector<PuntoGrafico> punti_;  ///< of all lines
    std::vector<Segmento> segmenti_;   ///< these and their rows never shrink
    std::vector<Righe> righe_;         ///< of each segment
    std::vector<LineaPronta> linee_;
    std::vector<std::shared_ptr<const Profilo>> profili_;
    std::vector<std::unique_ptr<Fascia>> fasce_;  ///< one for each thread
    QSemaphore pronti_;                           ///< threads that have ended their part
};

}  // namespace lapvane
