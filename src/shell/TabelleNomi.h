#pragma once

#include <string>
#include <vector>

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

/// Fills the tables; at load and after each change of language.
void CaricaTabelleNomi();

}  // namespace lapvane
