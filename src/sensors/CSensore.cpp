#include "sensors/CSensore.h"

#include <algorithm>

#include "platform/Cartelle.h"
#include "platform/ErroreRuntime.h"
#include "platform/FileTesto.h"
#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "sensors/Curve.h"
#include "sensors/FileSensore.h"
#include "shell/LoadStrings.h"

namespace lapvane {

namespace fs = std::filesystem;

std::vector<CSensore> LibreriaSensori;

std::size_t CSensore::Indice(int i) {
    if (i < 0 || static_cast<std::size_t>(i) >= kElementi) {
        throw ErroreRuntime(NumeroErrore::Subscript, Lavoro::LeggerePuntoCurva);
    }
    return static_cast<std::size_t>(i);
}

namespace {

constexpr int kPunti = static_cast<int>(CSensore::kPunti);
constexpr std::size_t kMassimoFile = std::size_t{1} << 20;

void Rifiuta(const std::string& nome) {
    platform().MsgBox(Testo(Voce::IlFileConSpazio) + nome + " " + Testo(Voce::NonEUnSensore),
                      Buttons::Ok, Icon::Critical, platform().ExeName());
}

std::vector<fs::path> FileDellaLibreria() {
    const fs::path cartella = CartellaSensori();
    if (GenereDi(cartella) == Genere::Niente) return {};
    try {
        return ElencaPercorsi(cartella);
    } catch (const ErroreRuntime&) {
        Rifiuta(TestoDaPercorso(cartella.filename()));
        return {};
    }
}

}  // namespace

void CaricaLibreriaSensori() {
    const LetturaCartella lettura(CartellaSensori());
    for (const fs::path& percorso : FileDellaLibreria()) {
        std::optional<CSensore> sensore;
        try {
            sensore =
                LeggiSensore(lettura.LeggiFile(percorso, Lavoro::LeggereLibreria, kMassimoFile));
        } catch (const ErroreRuntime&) {
            // A file that cannot be read, or holds a number beyond all range, is rejected alike.
        }
        if (!sensore) {
            Rifiuta(TestoDaPercorso(percorso.filename()));
            continue;
        }
        sensore->NomeFile(percorso);
        LibreriaSensori.push_back(std::move(*sensore));
    }
}

void SvuotaLibreriaSensori() {
    LibreriaSensori.clear();
}

std::size_t CaricaCurvaSensore(std::string_view nome, AsseCurva& x, AsseCurva& y) {
    constexpr double kFondoScalaBit = 1024.0;
    std::size_t messi = 0;
    for (const CSensore& sensore : LibreriaSensori) {
        if (sensore.Nome() != nome) continue;
        const int fattore = FattoreSensore(sensore.Tipo());
        const auto punti = static_cast<std::size_t>(std::max<int>(sensore.NumPunti(), 0));
        for (std::size_t i = 0; i < punti; ++i) {
            x.at(i) = sensore.X(static_cast<int>(i));
            y.at(i) = sensore.Y(static_cast<int>(i)) * fattore;
        }
        messi = std::max(messi, punti);
        // Kept: only a fuel level gets a tail; a shorter curve of another type leaves the elements
        // behind it as the channel before had them.
        if (sensore.Tipo() == "LivelloBenzina") {
            for (std::size_t i = punti; i < CSensore::kPunti; ++i) {
                x[i] = kFondoScalaBit;
                y[i] = punti == 0 ? 0.0 : y[punti - 1];
            }
            messi = std::max(messi, CSensore::kPunti);
        }
        // Kept: the walk goes on, so that of two sensors of one name the last one is sent.
    }
    return messi;
}

void CaricaCurvaSensore(std::string_view nome) {
    CaricaCurvaSensore(nome, CurvaX, CurvaY);
}

void AzzeraCurvaSensore() {
    std::fill_n(CurvaX.begin(), kPunti, 0.0);
    std::fill_n(CurvaY.begin(), kPunti, 0.0);
}

std::string CercaNomeSensore(std::string_view tipo, const AsseCurva& x, const AsseCurva& y) {
    for (const CSensore& sensore : LibreriaSensori) {
        if (sensore.Tipo() != tipo) continue;
        int i = 0;
        // Equal to the last bit: a read value divided by the factor is the number that the decimal
        // text of the file gives.
        while (i < kPunti && sensore.X(i) == x[static_cast<std::size_t>(i)] &&
               sensore.Y(i) == y[static_cast<std::size_t>(i)]) {
            ++i;
        }
        if (i == kPunti) return sensore.Nome();
    }
    return {};
}

std::string CercaNomeSensore(std::string_view tipo) {
    return CercaNomeSensore(tipo, CurvaX, CurvaY);
}

}  // namespace lapvane
