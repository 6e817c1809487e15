#pragma once

#include <array>
#include <string>
#include <vector>

#include "shell/Voci.h"

namespace lapvane {

// Names and units by list position; those with texts follow the language.
extern std::vector<std::string> ListaLingue;
extern std::vector<std::string> ListaUMVelocita;
extern std::vector<std::string> ListaUMTemperatura;
extern std::vector<std::string> ListaUMPressione;
extern std::vector<std::string> ListaIngressiAN;
extern std::vector<std::string> ListaCanaliA;
extern std::vector<std::string> ListaCanaliB;
extern std::vector<std::string> ListaTipiSensore;
extern std::vector<std::string> ListaAllarmeBase;
extern std::vector<std::string> ListaAllarmi;
extern std::vector<std::string> ListaAllarmeExtra;

/// The entries of `ListaTipiSensore`: the curve channels by their numbers.
inline constexpr std::array<Voce, 9> kTestiTipiSensore = {
    Voce::TipoTemperaturaOlio,  Voce::TipoPressioneOlio,    Voce::TipoPressioneBenzina,
    Voce::TipoTemperaturaAcqua, Voce::TipoLivelloBenzina,   Voce::TipoMarcia,
    Voce::SondaLambda,          Voce::CanalePressioneTurbo, Voce::CanaleSensoreG};

/// Fills the tables; at load and after each change of language.
void CaricaTabelleNomi();

}  // namespace lapvane
