#include "widgets/Stampante.h"

#include "platform/Platform.h"
#include "platform/qt/TestoQt.h"
#include "shell/Domande.h"

namespace lapvane {

std::unique_ptr<QtPrinter> ScegliStampante(const std::string& titolo,
                                           const std::filesystem::path& nome,
                                           QPageLayout::Orientation verso,
                                           const QPrinterInfo& predefinita) {
    std::unique_ptr<QtPrinter> stampante;
    if (!predefinita.isNull()) {
        stampante = std::make_unique<QtPrinter>(predefinita, verso);
    } else {
        const auto scelto = platform().AskSave(
            {titolo, nome.parent_path(), "PDF (*.pdf)|*.pdf", nome.filename(), ".pdf"});
        if (!scelto) return nullptr;
        if (!PuoSostituire(*scelto)) return nullptr;
        stampante = std::make_unique<QtPrinter>(*scelto, verso);
    }
    stampante->Titolo(InQt(titolo));
    return stampante;
}

}  // namespace lapvane
