#include "tools/manual/Tables.h"

#include <initializer_list>
#include <variant>

#include "analysis/Schema.h"
#include "device/Diagnostica.h"
#include "device/TabelleRecord.h"
#include "instrument/Options.h"
#include "logs/Conversione.h"
#include "platform/TabelleErrore.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "sensors/Allarmi.h"
#include "sensors/Configurazione.h"
#include "sensors/Curve.h"
#include "sensors/ImpostaSensore.h"
#include "shell/NumeroTesto.h"

namespace lapvane::manual {

namespace {

void Row(std::string& table, std::initializer_list<std::string> cells) {
    table += '|';
    for (const std::string& cell : cells) table += ' ' + cell + " |";
    table += '\n';
}

std::string Heading(std::initializer_list<std::string> cells) {
    std::string table;
    Row(table, cells);
    table += '|';
    for (std::size_t i = 0; i < cells.size(); ++i) table += "---|";
    table += '\n';
    return table;
}

std::string Number(std::int64_t value) {
    return TestoNumero(value);
}

std::string Code(std::string_view text) {
    return "`" + std::string(text) + "`";
}

std::string Block(const std::string& text) {
    return "```\n" + text + (text.ends_with('\n') ? "" : "\n") + "```\n";
}

std::string Project(const Texts& texts, const std::map<std::string, std::string>& fields) {
    std::string table =
        Heading({texts.Pick("N.", "No."), texts.Pick("Chiave", "Key"), texts.Pick("Tipo", "Kind"),
                 texts.Pick("Nuovo", "New"), texts.Pick("Significato", "Meaning")});
    int number = 0;
    for (const DescrizioneCampo& field : kCampiProgetto) {
        const bool text = std::holds_alternative<std::string RecordProgetto::*>(field.Campo);
        const bool flag = std::holds_alternative<bool RecordProgetto::*>(field.Campo);
        const bool wide = std::holds_alternative<std::int32_t RecordProgetto::*>(field.Campo);
        const char* kind = text   ? texts.Pick("testo", "text")
                           : flag ? "0 / 1"
                           : wide ? texts.Pick("32 bit", "32 bits")
                                  : texts.Pick("16 bit", "16 bits");
        const std::string name(field.Nome);
        Row(table, {Number(++number), Code("ID_" + name), kind,
                    text ? texts.Pick("spazio", "blank") : Number(field.Nuovo), fields.at(name)});
    }
    return table;
}

std::string Titles(const Texts& texts, const std::string& titles) {
    std::string table = Heading({texts.Pick("Colonna", "Column"), texts.Pick("Titolo", "Title")});
    int number = 0;
    for (std::size_t from = 0; from < titles.size();) {
        const std::size_t end = std::min(titles.find(';', from), titles.size());
        Row(table, {Number(++number), Code(Utf8Da1252(titles.substr(from, end - from)))});
        from = end + 1;
    }
    return table;
}

std::string SensorTypes(const Texts& texts) {
    std::string table =
        Heading({texts.Pick("Parola nel file", "Word in the file"),
                 texts.Pick("Nella finestra", "In the window"), "X", "Y",
                 texts.Pick("Passo di Y nello strumento", "Step of Y in the instrument")});
    for (const TipoSensore& type : kTipiSensore) {
        const int factor = FattoreSensore(type.Tipo);
        Row(table, {Code(type.Tipo), Escaped(texts.Of(type.Testo)),
                    Utf8Da1252(std::string(type.EtichettaX)),
                    Escaped(Utf8Da1252(std::string(type.EtichettaY))),
                    TestoNumero(1.0 / factor, texts.Italian() ? ',' : '.')});
    }
    return table;
}

std::string SetupNumbers(const Texts& texts) {
    std::string table =
        Heading({texts.Pick("Casella", "Box"), texts.Pick("Valori ammessi", "Range")});
    for (const NumeroSetup& number : kNumeriSetup) {
        Row(table, {Escaped(texts.Of(number.Didascalia)), Ammessi(*CampoDi(number.Casella))});
    }
    return table;
}

std::string Thresholds(const Texts& texts) {
    std::string table = Heading({texts.Pick("Allarme", "Alarm"), texts.Pick("Massimo", "Highest"),
                                 texts.Pick("Decimali", "Decimals")});
    for (const SogliaAllarme& threshold : kSoglie) {
        const int decimals = threshold.Fattore >= 1000 ? 3 : threshold.Fattore >= 10 ? 1 : 0;
        Row(table, {Escaped(texts.Of(threshold.Didascalia)), std::string(threshold.Massimo),
                    Number(decimals)});
    }
    return table;
}

std::string Live(const Texts& texts) {
    std::string table = Heading({texts.Pick("Casella", "Box"), texts.Pick("Unit\xC3\xA0", "Unit")});
    for (const CampoLive& field : CampiLive) {
        if (field.Testo == Voce::Nessuna) continue;  // the second value of the box before
        const int unit = field.Misura == 'V'   ? 27
                         : field.Misura == 'T' ? 29
                         : field.Misura == 'P' ? 28
                                               : 0;
        const std::string project = texts.Pick("quella del progetto: ", "that of the project: ");
        Row(table,
            {Escaped(texts.Of(field.Testo)), unit == 0 ? "" : project + Escaped(texts.Of(unit))});
    }
    return table;
}

/// Words of a run-time error in the language of the page.
std::string Words(const Parole& words, const Texts& texts) {
    return Utf8Da1252(texts.Italian() ? words.Italiano : words.Inglese);
}

std::string Doing(const Texts& texts) {
    std::string list;
    for (const Parole& words : kLavori) list += "- " + Escaped(Words(words, texts)) + '\n';
    return list;
}

}  // namespace

std::optional<std::string> Table(std::string_view name, const Texts& texts,
                                 const std::map<std::string, std::string>& fields) {
    const int language = texts.Italian() ? 0 : 1;
    if (name == "project") return Project(texts, fields);
    if (name == "csv") return Titles(texts, TitoliCsv(language, "Km/h", "\xB0 C"));
    if (name == "txt") return Titles(texts, TitoliTxt(language));
    if (name == "sensor-types") return SensorTypes(texts);
    if (name == "setup-numbers") return SetupNumbers(texts);
    if (name == "live") return Live(texts);
    if (name == "thresholds") return Thresholds(texts);
    if (name == "schema") return Block(TestoSchema("run.csv", 16, "run.txt", 10));
    if (name == "instrument") return Block(strumento::HelpText());
    if (name == "doing") return Doing(texts);
    if (name == "version") return LAPVANE_VERSION;
    return std::nullopt;
}

std::optional<std::string> RunTimeError(int number, const Texts& texts) {
    for (const RigaErrore& error : kErrori) {
        if (static_cast<int>(error.Numero) != number) continue;
        return Number(number) + ": " + Words(error.Testo, texts);
    }
    return std::nullopt;
}

}  // namespace lapvane::manual
