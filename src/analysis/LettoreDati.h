#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/FileTesto.h"

namespace lapvane {

constexpr std::size_t kTitoloMassimo = 255;  ///< characters; no heading of a log comes near

enum class Conto { Righe, Niente };

/// Reads a file of numbers with a heading line and fields delimited by ";", piece by piece: once to
/// count its lines, once into columns. Lines end with LF or CR LF (or CR alone, where the file has
/// no LF). A decimal point and a decimal comma are both understood.
class LettoreDati {
 public:
    static constexpr std::size_t kPezzo = std::size_t{256} << 10;  // stays in the cache

    /// A text, which must outlive the reader, in pieces of `pezzo` bytes.
    explicit LettoreDati(std::string_view testo, std::size_t pezzo = kPezzo);
    /// A file; errors as those of `LeggiFile`, here and in `LeggiRighe`. Who knows how many lines
    /// are wanted need not have them counted.
    explicit LettoreDati(FileAPezzi file, Conto conto = Conto::Righe);

    /// The heading line, which is the reader's own: it goes with it.
    std::string_view Titolo() const { return titolo_; }
    bool Vuoto() const { return vuoto_; }  ///< there is not one byte
    /// Lines after the heading, if they were counted; empty lines at the end of the file do not
    /// count.
    std::int32_t NumeroRecord() const { return numero_; }

    /// Reads the next lines into rows `da` to `a` - 1: field f goes to `colonne[f][row]`. A field
    /// that is empty is not written, one that is no number gives 0, surplus fields are passed over.
    /// Returns the row behind the last one read, less than `a` at the end of the file.
    std::int32_t LeggiRighe(std::span<double* const> colonne, std::int32_t da, std::int32_t a);

 private:
    /// Where the lines of the file end.
    struct Misure {
        bool ConTitolo = false;  // it has a line end
        std::uint64_t InizioRighe = 0;
        std::uint64_t Fine = 0;     // without the empty lines behind
        std::uint64_t ACapo = 0;    // line ends between both
        std::uint64_t Sospesi = 0;  // behind it so far
    };

    void Inizia(Conto conto);
    std::size_t Prendi(std::uint64_t da, std::span<char> dove) const;
    Misure Conta(char aCapo, Conto conto);
    bool Riempi();
    void Riserva(std::size_t byte);
    std::int32_t LeggiInteri(std::span<double* const> colonne, std::int32_t da, std::int32_t a);

    std::string_view testo_;
    std::optional<FileAPezzi> file_;
    std::size_t pezzo_;
    std::uint64_t byte_ = 0;   // of the file that count
    std::uint64_t letti_ = 0;  // of them that have been in the piece
    std::unique_ptr<char[]> memoria_;
    std::size_t posti_ = 0;
    char* inizio_ = nullptr;      // of the piece
    const char* p_ = nullptr;     // next line
    const char* fine_ = nullptr;  // behind the last whole line
    std::size_t resto_ = 0;       // bytes of a line that is not whole behind it
    std::string titolo_;
    std::int32_t numero_ = 0;
    char aCapo_ = '\n';
    bool vuoto_ = true;
};

/// The reader of a file of a log. What cannot be read shows as a log without rows, as does a huge
/// file that has no lines, with a message.
LettoreDati ApriLog(const std::filesystem::path& percorso, Conto conto = Conto::Righe);

}  // namespace lapvane
