#include "logs/BufferLog.h"

namespace lapvane {

std::array<std::string, kGiriTabella> TabellaGiri;
std::vector<std::string> BlocchiLog;
std::int32_t NumBlocchi = 0;
std::int16_t NumeroGiri = 0;
std::string BloccoDati1;
std::string BloccoDati2;

StatoLog& logInMemoria() {
    static StatoLog stato;
    return stato;
}

void AzzeraBufferLog() {
    for (std::string& giro : TabellaGiri) giro = "00:00.00";
    BlocchiLog.clear();
    NumBlocchi = 0;
    NumeroGiri = 0;
    BloccoDati1.clear();
    BloccoDati2.clear();
    logInMemoria() = {};
}

}  // namespace lapvane
