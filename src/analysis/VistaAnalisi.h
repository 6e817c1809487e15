#pragma once

#include <string>
#include <vector>

#include "platform/Colore.h"
#include "reports/Circuiti.h"

namespace lapvane {

/// States of the tool bar's keys that an analysis changes.
struct StatoBarra {
    bool SovrappostiPremuto = true;
    bool SeparatiPremuto = false;
    bool SeparatiAcceso = true;
    bool ZoomPremuto = false;
    bool ZoomAcceso = true;
};

/// States of one of the two scroll buttons.
struct StatoScorri {
    bool Acceso = true;
    bool Verde = false;  ///< it scrolls
};

/// What an analysis asks of its window. Channels are named by column number, 1 to 20; cells of the
/// lap table by row and column from 0, row 0 being the heading and column 0 the lap's label. A
/// channel, row or column that the window does not have is passed over. All text is Windows-1252.
class VistaAnalisi {
 public:
    virtual ~VistaAnalisi() = default;

    virtual void MostraCanale(int c, bool visibile) = 0;           ///< a channel's controls
    virtual void NomeCampo(int c, const std::string& nome) = 0;    ///< lblNomeCampo
    virtual void UnitaCampo(int c, const std::string& unita) = 0;  ///< lblUM
    virtual void ColoreCanale(int c, Colore colore) = 0;           ///< shpColor
    /// optScala, cmdSetGraph and txtValore as those of a ticked channel or of one that is not.
    virtual void SegnaCanale(int c, bool spuntato) = 0;
    virtual void Valore(int c, const std::string& testo) = 0;  ///< txtValore
    virtual void SelezionaScala(int c) = 0;                    ///< optScala chosen
    virtual void SelezionaScheda(int scheda) = 0;              ///< SSTab1
    virtual void TestoScheda(int scheda, const std::string& testo) = 0;
    virtual void SpuntaAssi(bool tempo, bool distanza) = 0;  ///< chkTempo, chkDistanza
    virtual void MostraControlli(
        bool visibile) = 0;                       ///< fraMisure, SSTab1 and what moves the graph
    virtual void AbilitaZoomIn(bool acceso) = 0;  ///< cmdZoomIn10, cmdZoomIn50
    virtual void Scorri(const StatoScorri& sinistra, const StatoScorri& destra) = 0;
    virtual void Lampada(int k, bool accesa) = 0;  ///< shpAlarm
    virtual void Barra(const StatoBarra& stato) = 0;
    /// Repaints the window at once.
    virtual void Rinfresca() = 0;

    // The track map: Picture1, lblCircuito, txtCircuito, lblPiloti, txtPiloti.
    virtual void MostraMappa(bool visibile) = 0;
    virtual void Mappa(std::vector<PuntoTracciato> punti, const std::string& circuito,
                       const std::string& piloti) = 0;
    virtual void MarcatoreMappa(int punto) = 0;

    // The lap table MSFlexGrid1.
    virtual void MostraGriglia(bool visibile) = 0;
    virtual void RigheGriglia(int righe) = 0;
    virtual void LarghezzaColonna(int colonna, int twip) = 0;  ///< 15 twips a pixel, at least
    virtual void Cella(int riga, int colonna, const std::string& testo) = 0;
    virtual void SfondoCella(int riga, int colonna, Colore colore) = 0;
    virtual void CaratteriCella(int riga, int colonna, Colore colore) = 0;
    virtual void CellaCorrente(int riga, int colonna) = 0;
    virtual void SegnaGiro(int riga) = 0;  ///< the row of the lap that is drawn

    /// A file of the log is read up to that percentage; false: a person wants no more of it.
    virtual bool Lettura(int percento) = 0;

    /// Closes the window; its unload runs as part of that.
    virtual void Scarica() = 0;
};

}  // namespace lapvane
