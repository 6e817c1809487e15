#include "widgets/Icone.h"

#include <QString>
#include <QtGlobal>

#include "platform/qt/TestoQt.h"

// A resource in a static library is linked in only if somebody asks for it by name.
static void InizializzaRisorse() {
    Q_INIT_RESOURCE(icons);
}

namespace lapvane {

QString FileIcona(std::string_view nome) {
    static const bool pronte = [] {
        InizializzaRisorse();
        return true;
    }();
    static_cast<void>(pronte);
    return QStringLiteral(":/icons/") + InQt(nome) + QStringLiteral(".svg");
}

QIcon Icona(std::string_view nome) {
    return QIcon(FileIcona(nome));
}

}  // namespace lapvane
