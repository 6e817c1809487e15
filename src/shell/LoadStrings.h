#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/Voci.h"

namespace lapvane {

/// The entries of LANGUAGES.DAT, Italian half then English half; position 0 stays empty.
extern std::vector<std::string> Testi;
/// Half the number of entries, ties to even.
extern std::int32_t MetaTesti;
/// 0 Italian, 1 English; the first line of the file.
extern std::int32_t IndiceLingua;
/// `MetaTesti` times `IndiceLingua`.
extern std::int16_t BaseTesti;

/// Reads LANGUAGES.DAT of the program's folder; ends the program on failure.
void CaricaTesti();

/// Computes `BaseTesti`; every form does so before it sets its captions.
void CalcolaBaseTesti();

/// A text in the current language. One of LANGUAGES.DAT raises error 9 when the table ends before
/// it. Those of the program's own are built in and never missing: in Italian when
/// Italian is chosen, otherwise, and while LANGUAGES.DAT has not been read, in English.
const std::string& Testo(Voce voce);

/// The text `k` places behind another, where texts follow each other in the table.
constexpr Voce Dopo(Voce prima, int k) {
    return static_cast<Voce>(static_cast<int>(prima) + k);
}

/// What the OK of the language dialog writes: the index over line 1 of the LANGUAGES.DAT of the
/// current folder. Kept: not the program's folder, so that a program started elsewhere makes a new
/// file there.
void SalvaLingua();

}  // namespace lapvane
