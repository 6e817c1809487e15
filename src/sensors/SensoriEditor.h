#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sensors/CampiEditor.h"
#include "sensors/CanaliSensore.h"
#include "shell/Editor.h"
#include "shell/Voci.h"

namespace lapvane {

// What the editor of the sensor assignment works with, apart from its window.

/// Entries of every list of sampling rates.
inline constexpr std::array<std::string_view, 3> kFrequenze = {"1 Hz", "10 Hz", "20 Hz"};

/// The library's sensors that fit a curve channel, in the library's order, duplicates and all.
std::vector<std::string> NomiSensori(std::size_t canale);

/// Shows a project. A name that the library lacks shows all the same; an index that its list does
/// not have shows nothing.
void MostraDatiSensori(const RecordProgetto& record, ControlliEditor& controlli);

/// What a click on a channel's enable box switches.
void AbilitaCanale(const CanaleSensore& canale, ControlliEditor& controlli);

/// The first channel that is on and has no sensor's name.
std::optional<std::size_t> CanaleSenzaNome(const ControlliEditor& controlli);

/// The first pair of channels that are on and share an analogue input.
std::optional<std::pair<std::size_t, std::size_t>> CanaliInConflitto(
    const ControlliEditor& controlli);

/// The first pair of channels that are on and share an analogue input, whether or not they may:
/// those that may not come first.
std::optional<std::pair<std::size_t, std::size_t>> CanaliInsieme(const ControlliEditor& controlli);

/// A number box's text as it is stored; empty if that is no number of 16 bits.
std::optional<std::int16_t> LeggiNumero(const NumeroSensori& numero, std::string_view testo);

/// Stores everything but the analogue inputs; the number boxes hold numbers.
void SalvaDatiSensori(const ControlliEditor& controlli, RecordProgetto& record);
void SalvaIngressiSensori(const ControlliEditor& controlli, RecordProgetto& record);

/// Leaves in `CurvaX` and `CurvaY` what goes to the instrument as the curve of a channel.
void PreparaCurva(std::size_t canale, const ControlliEditor& controlli);

/// Names a channel's sensor by the curve that the instrument has sent.
void NominaCurva(std::size_t canale, ControlliEditor& controlli);

}  // namespace lapvane
