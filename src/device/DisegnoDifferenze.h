#pragma once

#include <vector>

#include "device/Differenze.h"
#include "shell/Voci.h"
#include "widgets/Tabella.h"

namespace lapvane {

/// The table of what differs between two sides: where, what, on the first side, on the second,
/// unit. Texts stand left; one that its column cuts shows whole under the mouse.
class TabellaDifferenze : public Tabella {
    Q_OBJECT
 public:
    explicit TabellaDifferenze(QWidget* parent = nullptr);

    /// Headings in the language of now, the two sides by these names.
    void Lati(const QString& prima, const QString& ora);
    /// All rows, in their order.
    void Mostra(const std::vector<Differenza>& differenze);
};

}  // namespace lapvane
