#pragma once

#include "analysis/Cursore.h"
#include "analysis/PartiAnalisi.h"
#include "analysis/Quadro.h"

namespace lapvane {

/// Direction of the automatic scroll.
enum class Verso { SX, DX };

/// The automatic scroll of one graph: a loop inside its click that lets events through.
class Scorrimento {
 public:
    Scorrimento(Quadro& quadro, PartiAnalisi& parti, const Cursore& cursore)
        : quadro_(quadro), parti_(parti), cursore_(cursore) {}

    bool ScorrimentoAttivo() const { return attivo_; }
    /// Scrolls until `Ferma`, the end of the lap or `Abbandona`.
    void Avvia(Verso verso);
    /// Buttons and cursor are as before, and the loop ends behind the events that it waits for.
    void Ferma();
    /// The window is gone: the loop ends and touches nothing any more.
    void Abbandona();

 private:
    bool Fine(Verso verso) const;
    void Passo(Verso verso);

    Quadro& quadro_;
    PartiAnalisi& parti_;
    const Cursore& cursore_;
    bool attivo_ = false;
    bool abbandonato_ = false;
};

}  // namespace lapvane
