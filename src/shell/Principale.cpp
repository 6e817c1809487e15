#include "shell/Principale.h"

#include <cassert>

namespace lapvane {

namespace {
Principale* laPrincipale = nullptr;
}

Principale& principale() {
    assert(laPrincipale != nullptr);
    return *laPrincipale;
}

void ImpostaPrincipale(Principale* principale) {
    laPrincipale = principale;
}

}  // namespace lapvane
