#include "tools/laptool/Laptool.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "analysis/compare/ConfrontoGiri.h"
#include "analysis/compare/LogAperto.h"
#include "logs/Conversione.h"
#include "logs/FileScarico.h"
#include "logs/Impostazioni.h"
#include "platform/FileTesto.h"
#include "platform/Testo1252.h"
#include "shell/NumeroTesto.h"

namespace lapvane::laptool {

namespace fs = std::filesystem;

namespace {

using nlohmann::ordered_json;

/// A file by its name in UTF-8, which is not what every system takes a plain text for.
fs::path Named(const std::string& file) {
    return std::u8string(file.begin(), file.end());
}

std::string Seconds(double seconds, int digits) {
    const std::string figure = digits == 2 ? "0.00" : digits == 3 ? "0.000" : "0.0";
    return Formatta(seconds, figure, '.');
}

std::string Hundredths(std::int32_t hundredths) {
    return Seconds(hundredths / 100.0, 2);
}

/// With its sign, also where it is a plus.
std::string Signed(double seconds) {
    const std::string text = Seconds(seconds, 2);
    return text.front() == '-' || text == "0.00" ? text : "+" + text;
}

std::string Pad(const std::string& text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

const char* Words(PercheNo why) {
    switch (why) {
        case PercheNo::Allineato:
            return "its distances make no way";
        case PercheNo::SenzaTempo:
            return "no official time";
        case PercheNo::SenzaRighe:
            return "the log has no rows of it";
        case PercheNo::Interrotto:
            return "rows are missing";
        case PercheNo::SenzaDistanza:
            return "neither distance nor speed";
    }
    return "";
}

LogAperto Open(const std::string& file) {
    LogAperto log{Named(file)};
    if (!log.ConTempi())
        throw Refusal{file + ": there is no .tim file with the lap times beside it"};
    if (!log.ConLaterale())
        throw Refusal{file + ": there is no .txt file with the lap numbers beside it"};
    if (log.Giri().empty()) throw Refusal{file + ": the log has no timed lap"};
    return log;
}

/// A lap of the table: its parts are empty where it can't be aligned.
struct Row {
    int Number = 0;
    std::int32_t Time = 0;
    std::string Session;
    std::vector<std::int32_t> Parts;
    PercheNo Why = PercheNo::Allineato;
};

struct Table {
    std::vector<Row> Rows;
    std::size_t Parts = 1;
    std::int32_t Best = 0;
    GiroIdeale Ideal;
    std::vector<int> IdealOf;  ///< lap numbers
};

Table Fill(const LogAperto& log, int parts) {
    Table table;
    const double length = log.Allineati().Lunghezza();
    const std::vector<double> cuts =
        parts > 0 ? ConfiniUguali(parts, length) : ConfiniSettori(log.Settori(), length);
    table.Parts = cuts.size() + 1;
    std::vector<std::vector<std::int32_t>> whole;
    std::vector<int> numbers;
    for (int i = 0; i < std::ssize(log.Giri()); ++i) {
        Row row{log.Numero(i),
                log.Giri()[static_cast<std::size_t>(i)].Centesimi,
                log.SessioneDelGiro(i),
                {},
                log.Allineati().Esito(i)};
        if (const auto lap = log.Allineati().Allinea(i)) {
            row.Parts = TempiSettori(*lap, cuts, length);
            whole.push_back(row.Parts);
            numbers.push_back(row.Number);
        }
        table.Rows.push_back(std::move(row));
    }
    if (const int best = log.Migliore(); best >= 0) {
        table.Best = log.Giri()[static_cast<std::size_t>(best)].Centesimi;
    }
    table.Ideal = Ideale(whole);
    for (const int of : table.Ideal.Di)
        table.IdealOf.push_back(numbers[static_cast<std::size_t>(of)]);
    return table;
}

std::string LapsCsv(const Table& table) {
    std::string text = "lap,time,session";
    for (std::size_t p = 1; p <= table.Parts; ++p) text += ",sector " + std::to_string(p);
    text += ",gap\n";
    for (const Row& row : table.Rows) {
        text += std::to_string(row.Number) + ",";
        if (row.Time > 0) text += Hundredths(row.Time);
        text += "," + row.Session;
        for (std::size_t p = 0; p < table.Parts; ++p) {
            text += ",";
            if (p < row.Parts.size()) text += Hundredths(row.Parts[p]);
        }
        text += ",";
        if (row.Time > 0) text += Hundredths(row.Time - table.Best);
        text += "\n";
    }
    return text;
}

std::string LapsText(const LogAperto& log, const Table& table) {
    constexpr std::size_t kWidth = 9;
    std::string text = TestoDaPercorso(log.File().filename());
    if (!log.Sessione().Circuito.empty()) text += ", " + log.Sessione().Circuito;
    if (log.Allineati().Lunghezza() > 0.0) {
        text += ", " + Formatta(log.Allineati().Lunghezza(), "0", '.') + " m";
    }
    text += "\n\n  lap     time      gap session";
    for (std::size_t p = 1; p <= table.Parts && table.Parts > 1; ++p) {
        text += Pad("S" + std::to_string(p), kWidth);
    }
    text += "\n";
    for (const Row& row : table.Rows) {
        text += Pad(std::to_string(row.Number), 5) +
                Pad(row.Time > 0 ? Hundredths(row.Time) : "-", kWidth);
        text += Pad(row.Time > 0 ? Signed((row.Time - table.Best) / 100.0) : "-", kWidth);
        text += Pad(row.Session, 8);
        for (std::size_t p = 0; p < row.Parts.size() && table.Parts > 1; ++p) {
            text +=
                Pad(Hundredths(row.Parts[p]) + (row.Parts[p] == table.Ideal.Settori[p] ? "*" : " "),
                    kWidth);
        }
        if (row.Parts.empty()) text += std::string("  ") + Words(row.Why);
        text += "\n";
    }
    if (table.Ideal.Centesimi > 0 && table.Parts > 1) {
        text += "\nideal" + Pad(Hundredths(table.Ideal.Centesimi), kWidth) +
                Pad(Signed((table.Ideal.Centesimi - table.Best) / 100.0), kWidth) + Pad("", 8);
        for (const std::int32_t part : table.Ideal.Settori)
            text += Pad(Hundredths(part) + " ", kWidth);
        text += "\n";
    }
    return Utf8Da1252(text);
}

std::string LapsJson(const LogAperto& log, const Table& table) {
    ordered_json all;
    all["file"] = Utf8Da1252(TestoDaPercorso(log.File()));
    all["circuit"] = Utf8Da1252(log.Sessione().Circuito);
    all["length"] = std::round(log.Allineati().Lunghezza() * 10.0) / 10.0;
    all["laps"] = ordered_json::array();
    for (const Row& row : table.Rows) {
        ordered_json lap;
        lap["lap"] = row.Number;
        if (row.Time > 0) {
            lap["time"] = row.Time / 100.0;
            lap["gap"] = (row.Time - table.Best) / 100.0;
        }
        lap["session"] = Utf8Da1252(row.Session);
        lap["sectors"] = ordered_json::array();
        for (const std::int32_t part : row.Parts) lap["sectors"].push_back(part / 100.0);
        if (row.Parts.empty()) lap["not aligned"] = Words(row.Why);
        all["laps"].push_back(std::move(lap));
    }
    ordered_json& ideal = all["ideal"];
    ideal["time"] = table.Ideal.Centesimi / 100.0;
    ideal["sectors"] = ordered_json::array();
    for (std::size_t p = 0; p < table.Ideal.Settori.size(); ++p) {
        ideal["sectors"].push_back(
            {{"time", table.Ideal.Settori[p] / 100.0}, {"lap", table.IdealOf[p]}});
    }
    return all.dump(2) + "\n";
}

/// A lap on its way into a comparison.
struct Compared {
    int Number = 0;
    GiroAllineato Lap;
};

Compared Take(const LogAperto& log, int number) {
    const int i = log.CercaNumero(number);
    if (i < 0) throw Refusal{"the log has no lap " + std::to_string(number)};
    auto lap = log.Allineati().Allinea(i);
    if (!lap) {
        throw Refusal{"lap " + std::to_string(number) +
                      " can't be compared: " + Words(log.Allineati().Esito(i))};
    }
    return {number, std::move(*lap)};
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// The channel's name, with its unit where another one has the same name.
std::string NameOf(const LogAperto& log, const CanaleLog& channel) {
    const auto& channels = log.Canali();
    const auto same = std::count_if(channels.begin(), channels.end(),
                                    [&](const CanaleLog& c) { return c.Nome == channel.Nome; });
    return same > 1 ? channel.Nome + " [" + channel.Unita + "]" : channel.Nome;
}

const CanaleLog& Find(const LogAperto& log, const std::string& asked) {
    const std::string wanted = Lower(Utf8In1252(asked));
    const auto& channels = log.Canali();
    const auto whole = std::find_if(channels.begin(), channels.end(), [&](const CanaleLog& c) {
        return Lower(c.Nome) == wanted || Lower(c.Nome + " [" + c.Unita + "]") == wanted;
    });
    if (whole != channels.end()) return *whole;
    const auto begins = std::find_if(channels.begin(), channels.end(), [&](const CanaleLog& c) {
        return Lower(c.Nome).starts_with(wanted);
    });
    if (wanted.empty() || begins == channels.end()) {
        std::string names;
        for (const CanaleLog& channel : channels)
            names += (names.empty() ? "" : ", ") + NameOf(log, channel);
        throw Refusal{"the log has no channel \"" + asked + "\"; it has " + Utf8Da1252(names)};
    }
    return *begins;
}

/// The value of a channel where a lap has driven this share of its way.
double At(const LogAperto& log, const Compared& lap, const CanaleLog& channel, double share) {
    return log.Valore(channel.Colonna, lap.Lap.Inizio + lap.Lap.TempoA(share * lap.Lap.Lunghezza));
}

/// What `Compare` prints: its columns, and a row for each place.
struct Comparison {
    std::vector<std::string> Heads;
    std::vector<std::vector<double>> Rows;
};

/// The first of `laps` is the reference.
Comparison Columns(const LogAperto& log, const std::vector<Compared>& laps,
                   const CompareRequest& request) {
    std::vector<const CanaleLog*> channels;
    for (const std::string& name : request.Channels) channels.push_back(&Find(log, name));
    Comparison table;
    table.Heads = {"distance"};
    for (std::size_t i = 1; i < laps.size(); ++i) {
        table.Heads.push_back("delta " + std::to_string(laps[i].Number));
    }
    for (const CanaleLog* channel : channels) {
        for (const Compared& lap : laps) {
            table.Heads.push_back(Utf8Da1252(NameOf(log, *channel)) + " " +
                                  std::to_string(lap.Number));
        }
    }
    const GiroAllineato& reference = laps.front().Lap;
    const double step = request.As == Form::Text ? 50.0 : 1.0;
    for (const double metres : Griglia(reference.Lunghezza, step)) {
        std::vector<double> row = {metres};
        for (std::size_t i = 1; i < laps.size(); ++i) {
            row.push_back(Distacco(laps[i].Lap, reference, metres));
        }
        const double share = std::min(1.0, metres / reference.Lunghezza);
        for (const CanaleLog* channel : channels) {
            for (const Compared& lap : laps) row.push_back(At(log, lap, *channel, share));
        }
        table.Rows.push_back(std::move(row));
    }
    return table;
}

std::string CompareJson(const Comparison& table, const CompareRequest& request) {
    ordered_json json;
    json["reference"] = request.Reference;
    json["laps"] = request.Laps;
    json["columns"] = table.Heads;
    json["rows"] = ordered_json::array();
    for (std::vector<double> row : table.Rows) {
        for (double& value : row) value = std::round(value * 1000.0) / 1000.0;
        json["rows"].push_back(row);
    }
    return json.dump() + "\n";
}

/// Fields between commas, or columns for people, in which `deltas` columns have a sign.
std::string CompareLines(const Comparison& table, std::size_t deltas, bool csv) {
    std::string text;
    const auto field = [&](std::size_t i, const std::string& value) {
        if (csv) {
            text += (i == 0 ? "" : ",") + value;
        } else {
            text += Pad(value, std::max<std::size_t>(table.Heads[i].size() + 2, 10));
        }
    };
    for (std::size_t i = 0; i < table.Heads.size(); ++i) field(i, table.Heads[i]);
    text += "\n";
    for (const std::vector<double>& row : table.Rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const bool delta = i >= 1 && i <= deltas;
            field(i, csv ? Seconds(row[i], 3) : delta ? Signed(row[i]) : Seconds(row[i], 1));
        }
        text += "\n";
    }
    return text;
}

}  // namespace

std::string Laps(const LapsRequest& request) {
    const LogAperto log = Open(request.File);
    const Table table = Fill(log, request.Parts);
    switch (request.As) {
        case Form::Csv:
            return LapsCsv(table);
        case Form::Json:
            return LapsJson(log, table);
        case Form::Text:
            break;
    }
    return LapsText(log, table);
}

std::string Compare(const CompareRequest& request) {
    const LogAperto log = Open(request.File);
    std::vector<Compared> laps = {Take(log, request.Reference)};
    for (const int number : request.Laps) laps.push_back(Take(log, number));
    const Comparison table = Columns(log, laps, request);
    if (request.As == Form::Json) return CompareJson(table, request);
    return CompareLines(table, request.Laps.size(), request.As == Form::Csv);
}

std::string Convert(const ConvertRequest& request) {
    const fs::path csv = Named(request.File);
    if (csv.extension() != ".csv") throw Refusal{"the data file must end in .csv"};
    for (const char* ending : {"csv", "txt", "tim", "set"}) {
        const fs::path file = SenzaFine(csv, 3, ending);
        if (request.Force || !FileEsiste(file)) continue;
        throw Refusal{file.string() + ": there is such a file already (--force)"};
    }
    const auto download =
        LeggiScarico(LeggiFile(Named(request.Raw), Lavoro::LeggereFile, kScaricoMassimo));
    if (!download) throw Refusal{request.Raw + ": no download"};
    if (download->Pagine.empty()) throw Refusal{request.Raw + ": it holds no page"};
    MettiInMemoria(*download);
    ScriviLog(csv, ComponiLog(download->Titoli));
    // Which settings a raw download was driven with nobody knows; those of a log before are not it.
    TogliImpostazioni(csv);
    if (download->Finito) return {};
    return request.Raw +
           ": the download is not whole: " + std::to_string(download->Pagine.size() * kBytePagina) +
           " of " + std::to_string(download->Byte) + " bytes";
}

}  // namespace lapvane::laptool
