// The whole road on the simulated instrument: find it, download, convert, and hold the files
// against what the instrument remembers.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "device/SerialComm.h"
#include "instrument/Circuito.h"
#include "instrument/SerialeStrumento.h"
#include "instrument/Sessione.h"
#include "instrument/Strumento.h"
#include "logs/BufferLog.h"
#include "logs/Conversione.h"
#include "logs/Scarico.h"
#include "shell/LoadStrings.h"
#include "shell/StatoShell.h"
#include "support/Cartelle.h"
#include "support/PlatformProva.h"

namespace lapvane {
namespace {

using prova::PlatformProva;
using prova::PrincipaleProva;
using strumento::Circuito;
using strumento::ModoSessione;
using strumento::SerialeStrumento;
using strumento::Strumento;

class VistaMuta : public VistaScarico {
 public:
    bool Visibile() const override { return Aperta; }
    void Stato(const std::string& testo) override { Ultimo = testo; }
    void Percento(int percento) override { Percentuale = percento; }
    void AbilitaOK(bool) override {}
    void Scarica() override { Aperta = false; }
    bool Aperta = true;
    std::string Ultimo;
    int Percentuale = 0;
};

class DalloStrumento : public ::testing::Test {
 protected:
    DalloStrumento() {
        prova::CaricaTestiVeri(1);
        AzzeraBufferLog();
        finestra.Seriale = &porta;
    }
    void Sessione(ModoSessione modo, int giri = 3) {
        RegistraSessione(Circuito::Leggi(prova::CartellaDati() / "tracks" / "Fontebruna.trk"),
                         {modo, giri}, apparecchio.Dati);
    }
    void Scarica() {
        tmrComm_Timer();
        ASSERT_TRUE(StrumentoPresente);
        Scarico(vista).Esegui();
    }

    PlatformProva macchina;
    PrincipaleProva finestra;
    Strumento apparecchio;
    SerialeStrumento porta{apparecchio, [this] { return macchina.Orologio; },
                           [this](int ms) { macchina.Orologio += ms; }};
    VistaMuta vista;
};

TEST_F(DalloStrumento, FilesAgreeWithWhatWasDriven) {
    Sessione(ModoSessione::Normale);
    Scarica();
    EXPECT_EQ(NumBlocchi, apparecchio.Dati.Blocchi());
    EXPECT_EQ(NumeroGiri, 3);
    EXPECT_EQ(vista.Percentuale, 100);
    for (std::int32_t b = 0; b < NumBlocchi; ++b) {
        ASSERT_EQ(BlocchiLog[static_cast<std::size_t>(b)], apparecchio.Dati.Blocco(b)) << b;
    }
    const FileLog file = ComponiLog();
    // Rows by lap column, in the order of the file: out lap, three laps, in lap.
    std::vector<std::pair<std::string, int>> stretti;
    std::istringstream righe(file.Txt);
    std::string riga;
    std::getline(righe, riga);
    while (std::getline(righe, riga)) {
        const std::string giro = riga.substr(riga.rfind(';') + 1);
        if (stretti.empty() || stretti.back().first != giro) stretti.push_back({giro, 0});
        ++stretti.back().second;
    }
    ASSERT_EQ(stretti.size(), 5u);
    EXPECT_EQ(stretti[0].first, "1\r");
    EXPECT_EQ(stretti[4].first, "5\r");
    std::istringstream tempi(file.Tim);
    std::getline(tempi, riga);
    EXPECT_EQ(riga, "1.4\r");
    for (std::size_t giro = 1; giro <= 3; ++giro) {
        std::getline(tempi, riga);
        EXPECT_TRUE(riga.ends_with(", 1\r")) << riga;
        const double secondi = std::stod(riga.substr(0, 2)) * 60 + std::stod(riga.substr(3, 5));
        // Marks fall on the grid of whole seconds.
        EXPECT_NEAR(stretti[giro].second / 10.0, secondi, 1.0) << giro;
    }
}

TEST_F(DalloStrumento, EmptyMemoryGivesNothingAndFullMemoryEverything) {
    Sessione(ModoSessione::Vuota);
    Scarica();
    EXPECT_EQ(NumBlocchi, 0);
    EXPECT_EQ(vista.Ultimo, Testo(Voce::NessunDatoScaricato));
    Sessione(ModoSessione::Piena);
    Scarica();
    EXPECT_EQ(NumBlocchi, 16378);
    EXPECT_EQ(vista.Ultimo, Testo(Voce::ScaricamentoCompletato));
    const FileLog file = ComponiLog();
    EXPECT_EQ(std::count(file.Csv.begin(), file.Csv.end(), '\n'), 163781);
}

TEST_F(DalloStrumento, MisbehaviourCostsItsPageOrItsRetryAndNoMore) {
    Sessione(ModoSessione::Normale);
    const std::int32_t tutti = apparecchio.Dati.Blocchi();
    struct Caso {
        const char* Guasto;
        std::int32_t Mancanti;
        std::size_t Box;
    };
    apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto("badsum:3"));
    macchina.Risposte = {Answer::Ok};
    Scarica();
    EXPECT_EQ(tutti - NumBlocchi, 2);
    EXPECT_EQ(macchina.Mostrati.at(0).Testo,
              Testo(Voce::ScaricoManca) + "\r\n\r\n" + Testo(Voce::ScaricoPagine) + " 1");
    EXPECT_FALSE(logInMemoria().Parziale);
    for (const Caso caso : {Caso{"blank:5", 2, 0}, Caso{"drop:14:9:2", 0, 2},
                            Caso{"cut:60:14:4:1", 0, 1}, Caso{"delay:4000:14:2:1", 0, 0}}) {
        apparecchio.Difetti.Togli();
        apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto(caso.Guasto));
        macchina.Mostrati.clear();
        macchina.BoxLiberi = true;
        vista.Aperta = true;
        Scarica();
        EXPECT_EQ(tutti - NumBlocchi, caso.Mancanti) << caso.Guasto;
        EXPECT_EQ(macchina.Mostrati.size(), caso.Box) << caso.Guasto;
        for (const auto& box : macchina.Mostrati)
            EXPECT_EQ(box.Testo, Testo(Voce::StrumentoNonRisponde));
    }
}

TEST_F(DalloStrumento, InstrumentThatFallsSilentIsGivenUpWithWhatIsThere) {
    Sessione(ModoSessione::Normale);
    apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto("silent:14:41"));
    macchina.BoxLiberi = true;
    Scarica();
    EXPECT_EQ(NumBlocchi, 40);
    EXPECT_FALSE(vista.Aperta);
    EXPECT_TRUE(finestra.Menu(Comando::SaveData));
    EXPECT_EQ(FaseComunicazione, 0);
    tmrComm_Timer();
    EXPECT_FALSE(StrumentoPresente);
    apparecchio.Difetti.Togli();
    tmrComm_Timer();
    EXPECT_TRUE(StrumentoPresente) << "it is found again when it answers again";
}

TEST_F(DalloStrumento, ExtraCharactersBehindTheHandshakeHideTheInstrument) {
    apparecchio.Difetti.Aggiungi(strumento::LeggiGuasto("extra:2:1"));
    tmrComm_Timer();
    EXPECT_FALSE(StrumentoPresente);
    EXPECT_FALSE(porta.PortOpen());
}

}  // namespace
}  // namespace lapvane
