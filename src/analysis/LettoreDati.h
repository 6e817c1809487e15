#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace lapvane {

constexpr std::size_t kTitoloMassimo = 255;  ///< characters; no heading of a log comes near

/// Reads a file of numbers with a heading line and fields delimited by ";", straight from its
/// bytes. Lines end with LF or CR LF (or CR alone, where the file has no LF). A decimal point and a
/// decimal comma are both understood. The text must outlive the reader.
class LettoreDati {
 public:
    explicit LettoreDati(std::string_view testo);

    /// The heading line.
    std::string_view Titolo() const { return titolo_; }
    /// Lines after the heading; empty lines at the end of the file do not count.
    std::int32_t NumeroRecord() const { return numero_; }

    /// Reads the next line: field f goes to `colonne[f][riga]`. A field that is empty is not
    /// written, one that is no number gives 0, surplus fields are passed over. False at the end of
    /// the file, nothing is written then.
    bool LeggiRiga(std::span<double* const> colonne, std::int32_t riga);

 private:
    std::string_view titolo_;
    const char* p_ = nullptr;
    const char* fine_ = nullptr;
    std::int32_t numero_ = 0;
    char aCapo_ = '\n';
};

/// The file's bytes; empty if it cannot be read, which shows as a log without rows. A huge file
/// that has no lines is not read, with a message.
std::string LeggiLog(const std::filesystem::path& percorso);

}  // namespace lapvane
