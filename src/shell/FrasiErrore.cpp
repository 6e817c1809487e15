#include "shell/FrasiErrore.h"

#include "platform/Platform.h"
#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"

namespace lapvane {

std::string FraseErrore(const Parole& parole) {
    return Testi.empty() || IndiceLingua != 0 ? parole.Inglese : parole.Italiano;
}

std::string Motivo(const ErroreRuntime& errore) {
    switch (errore.Numero()) {
        case NumeroErrore::DiskFull:
            return Testo(Voce::MotivoPieno);
        case NumeroErrore::PathAccess:
            return Testo(Voce::MotivoNegato);
        case NumeroErrore::FileNotFound:
        case NumeroErrore::PathNotFound:
            return Testo(Voce::MotivoSparito);
        case NumeroErrore::DeviceIo:
            return Testo(Voce::MotivoGuasto);
        default:
            return FraseErrore(ParoleDi(errore.Numero()));
    }
}

std::string FraseScrittura(const ErroreRuntime& errore, Voce perduto) {
    return Testo(Voce::NonScritto) + "\r\n" + TestoDaPercorso(errore.File()) + "\r\n" +
           Motivo(errore) + "\r\n\r\n" + Testo(perduto);
}

void SegnalaScrittura(const ErroreRuntime& errore, Voce perduto) {
    platform().MousePointer(Pointer::Normal);
    platform().MsgBox(FraseScrittura(errore, perduto), Buttons::Ok, Icon::Critical,
                      platform().ExeName());
}

}  // namespace lapvane
