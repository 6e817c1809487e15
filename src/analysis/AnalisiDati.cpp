#include "analysis/AnalisiDati.h"

#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "reports/DatiSessione.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"
#include "shell/Principale.h"
#include "shell/StatoShell.h"

namespace lapvane {

namespace {

/// Line colours of channels 3 to 20 until a session file says otherwise.
constexpr std::array<Colore, 18> kColoriCanali = {
    Rgb(192, 0, 0),     Rgb(255, 0, 0),     Rgb(192, 64, 0),    Rgb(255, 128, 0), Rgb(192, 192, 0),
    Rgb(128, 128, 0),   Rgb(0, 192, 0),     Rgb(0, 128, 0),     Rgb(0, 192, 192), Rgb(0, 128, 128),
    Rgb(128, 128, 255), Rgb(0, 0, 192),     Rgb(128, 0, 128),   Rgb(192, 0, 192), Rgb(255, 0, 255),
    Rgb(255, 128, 255), Rgb(255, 192, 255), Rgb(192, 192, 255),
};

}  // namespace

AnalisiDati::AnalisiDati(VistaAnalisi& vista, GraphControl& ntGraph1, GraphControl& ntGraphAll)
    : vista_(vista), NTGraph1(ntGraph1), NTGraphAll(ntGraphAll) {
    TempiGiro.resize(kGiriMassimi + 1);
    TempiSessione.resize(kGiriMassimi + 1);
    RigheDeiGiri = CercaGiri({}, 0);
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c) {
        const auto i = static_cast<std::size_t>(c);
        ColoreCanale[i] = kColoriCanali[i - kPrimoCanale];
        FiltroCanale[i] = 1;
        SpessoreCanale[i] = 1;
    }
}

int AnalisiDati::UltimoCanaleFile() const {
    return std::min(NumCampi, kUltimoCanale);
}

void AnalisiDati::IniziaCaricamento() {
    vista_.SelezionaScheda(0);
    TracciatoVisibile = false;
    Decimazione = 1;
    principale().TestoPannello(Pannello::Percorso, Testo(Voce::LetturaFileDati));
    principale().TestoPannello(Pannello::Progresso, Testo(Voce::CaricamentoDati));
}

void AnalisiDati::MostraCanali() {
    for (int c = kPrimoCanale; c <= kUltimoCanale; ++c) {
        vista_.ColoreCanale(c, ColoreCanale[static_cast<std::size_t>(c)]);
        vista_.MostraCanale(c, c <= NumCampi);
        vista_.SegnaCanale(c, chkGrafico[static_cast<std::size_t>(c)]);
    }
    principale().TestoPannello(Pannello::Percorso, {});
    principale().TestoPannello(Pannello::Progresso, Testo(Voce::DatiCaricati));
    MostraNomiSchede();
}

void AnalisiDati::ConcludiCaricamento() {
    LeggiDatiSessione();
    if (!DatiSessione.Circuito.empty()) LeggiSettori();
    CompilaTabellaGiri();
    PreparaPanoramica();
    DisegnaAllarmi(NTGraphAll);
    AnalisiCaricata = true;
    SelezionaPrimoGiro();
}

void AnalisiDati::SelezionaPrimoGiro() {
    const int giro = PrimoGiroValido();
    if (giro > kGiriMassimi) return;  // no stretch has rows: a window without curves
    vista_.CellaCorrente(giro, 1);
    MSFlexGrid1_Click(giro, 1);
}

void AnalisiDati::MostraAvanzamento(const std::string& percento) {
    principale().TestoPannello(Pannello::Progresso, Testo(Voce::CaricamentoDati) + percento + " %");
}

void AnalisiDati::FileMancante(const std::string& nome) {
    platform().MsgBox(Testo(Voce::IlFile) + " " + nome + " " + Testo(Voce::NonTrovato), Buttons::Ok,
                      Icon::Critical, platform().ExeName());
}

std::string AnalisiDati::NomeDaTabella(int c) const {
    // The lambda in its two units, columns 15 and 16, has one name.
    return Testo(c == kUltimoNomeInTabella ? Voce::CanaleLambda : Dopo(Voce::CanaleTempo, c - 1));
}

void AnalisiDati::ImpostaCanali(GraphControl& grafico) {
    grafico.Titolo({});
    grafico.EtichettaX({});
    grafico.EtichettaY({});
    grafico.PulisciGrafico();
    RigheDeiGiri =
        CercaGiriColonna(Tabella().Colonna(kColonnaGiro, Piano::Laterale), Tabella().PrimaRiga());
    if (UltimaScheda == 0) {
        std::string unita;
        for (int c = 1; c <= UltimoCanaleFile(); ++c) {
            const auto i = static_cast<std::size_t>(c);
            std::string nome = TitoloColonna(c);
            // Kept: a title without a unit stays the channel's name and takes the unit of the
            // channel before it.
            if (const std::size_t parentesi = nome.find('['); parentesi != std::string::npos) {
                unita = nome.substr(parentesi);
                nome = NomeDaTabella(c);
            }
            NomeCampo[i] = nome;
            UnitaCampo[i] = unita;
            vista_.NomeCampo(c, nome);
            vista_.UnitaCampo(c, unita);
            ElementoCanale[i] = {};
            FiltroCanale[i] = 1;
            SpessoreCanale[i] = 1;
        }
    }
    principale().TestoPannello(Pannello::Progetto, {});
    principale().TestoPannello(Pannello::Percorso, TestoDaPercorso(NomeFileDati));
    principale().TestoPannello(Pannello::Progresso, {});
}

std::string AnalisiDati::TitoloCanale(int c) const {
    const auto i = static_cast<std::size_t>(c);
    return NomeCampo[i] + " " + UnitaCampo[i];
}

void AnalisiDati::RefreshLanguage() {
    CalcolaBaseTesti();
    for (int c = 1; c <= kUltimoNomeInTabella; ++c) {
        const auto i = static_cast<std::size_t>(c);
        if (nomeDato_[i]) continue;
        NomeCampo[i] = NomeDaTabella(c);
        vista_.NomeCampo(c, NomeCampo[i]);
    }
    MostraNomiSchede();
}

void AnalisiDati::MostraNomiSchede() {
    const std::string giro = giroScelto_ ? EtichettaGiro(GiroSelezionato) : std::string();
    vista_.TestoScheda(0, Testo(Voce::Grafici) + giro);
    vista_.TestoScheda(1, Testo(Voce::Allarmi) + giro);
}

void AnalisiDati::ChiudiAnalisi() {
    AnalisiCaricata = false;
    principale().TestoPannello(Pannello::Progetto, DatiProgetto.NomeProgetto);
    principale().TestoPannello(Pannello::Percorso, TestoDaPercorso(PercorsoProgetto));
    principale().TestoPannello(Pannello::Progresso, {});
    vista_.Scarica();
}

void AnalisiDati::Form_Unload() {
    scaricata_ = true;
    ScorrimentoAttivo = false;
    if (FileLatiTrovati) {
        SalvaDatiSessione();
        NTGraph1.PulisciGrafico();
        NTGraphAll.PulisciGrafico();
    }
    AnalisiCaricata = false;
    AnalisiInCorso = false;
}

void AnalisiDati::MostraControlli(bool visibile) {
    vista_.MostraControlli(visibile);
    if (TracciatoVisibile) vista_.MostraMappa(visibile);
}

}  // namespace lapvane
