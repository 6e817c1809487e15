// The drawings that the toolkit asks the style for.
#include <QStyleOption>

#include "widgets/style/Icone.h"
#include "widgets/style/Misure.h"
#include "widgets/style/Stile.h"

namespace lapvane {

namespace {

/// Name of the drawing for one of the toolkit's signs; null: it keeps its own.
const char* DisegnoPer(QStyle::StandardPixmap quale) {
    switch (quale) {
        case QStyle::SP_MessageBoxInformation:
            return "Informazione";
        case QStyle::SP_MessageBoxQuestion:
            return "Domanda";
        case QStyle::SP_MessageBoxWarning:
            return "Avviso";
        case QStyle::SP_MessageBoxCritical:
            return "Errore";
        case QStyle::SP_DirIcon:
        case QStyle::SP_DirOpenIcon:
        case QStyle::SP_DirClosedIcon:
        case QStyle::SP_DirLinkIcon:
        case QStyle::SP_DirLinkOpenIcon:
            return "Cartella";
        case QStyle::SP_FileIcon:
        case QStyle::SP_FileLinkIcon:
            return "File";
        case QStyle::SP_DirHomeIcon:
            return "Casa";
        case QStyle::SP_ComputerIcon:
        case QStyle::SP_DesktopIcon:
            return "Computer";
        case QStyle::SP_DriveHDIcon:
        case QStyle::SP_DriveCDIcon:
        case QStyle::SP_DriveDVDIcon:
        case QStyle::SP_DriveFDIcon:
        case QStyle::SP_DriveNetIcon:
            return "Disco";
        case QStyle::SP_FileDialogToParent:
            return "CartellaSu";
        case QStyle::SP_FileDialogNewFolder:
            return "CartellaNuova";
        case QStyle::SP_FileDialogBack:
        case QStyle::SP_ArrowBack:
        case QStyle::SP_ArrowLeft:
            return "Indietro";
        case QStyle::SP_ArrowForward:
        case QStyle::SP_ArrowRight:
            return "Avanti";
        case QStyle::SP_FileDialogDetailedView:
            return "Dettagli";
        case QStyle::SP_FileDialogListView:
            return "Elenco";
        default:
            return nullptr;
    }
}

}  // namespace

QIcon Stile::standardIcon(StandardPixmap quale, const QStyleOption* opzioni,
                          const QWidget* widget) const {
    if (const char* nome = DisegnoPer(quale)) return Icona(nome);
    return QProxyStyle::standardIcon(quale, opzioni, widget);
}

QPixmap Stile::standardPixmap(StandardPixmap quale, const QStyleOption* opzioni,
                              const QWidget* widget) const {
    if (const char* nome = DisegnoPer(quale)) return Icona(nome).pixmap(LatoIcona());
    return QProxyStyle::standardPixmap(quale, opzioni, widget);
}

}  // namespace lapvane
