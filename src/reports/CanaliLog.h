#pragma once

namespace lapvane {

constexpr int kPrimoCanale = 3;    ///< first channel column of a log's data file
constexpr int kUltimoCanale = 20;  ///< last channel column that an analysis can hold

}  // namespace lapvane
