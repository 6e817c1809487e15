#include "tools/manual/Messages.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <optional>
#include <regex>
#include <utility>

#include "sensors/Configurazione.h"
#include "sensors/SensoriEditor.h"

namespace lapvane::manual {

namespace {

namespace fs = std::filesystem;

enum class What { Expression, Caption, Data };

/// Where the texts of a part of a message come from: in files that begin with `File`, the part
/// `Part` is what the groups of `Pattern` find in the files that begin with `Where`. Data (paths,
/// numbers, names) has no pattern.
struct Rule {
    const char* File;
    const char* Part;
    What Kind;
    const char* Where = "";
    const char* Pattern = "";
};

constexpr const char* kEnd =
    R"(ScambioEditor k\w+ = \{\s*\d+,\s*Voce::\w+,\s*Voce::\w+,\s*(Voce::\w+),)";

const std::vector<Rule> kRules = {
    {"shell/Protetto", "descrizione", What::Data},
    {"shell/Protetto", "soccorso", What::Caption, "shell/Protetto",
     R"(Testo\((Voce::Soccorso\w+)\))"},
    {"shell/FrasiErrore", "Motivo(errore)", What::Caption, "shell/FrasiErrore",
     R"(return Testo\((Voce::\w+)\))"},
    {"shell/FrasiErrore", "Testo(perduto)", What::Caption, "", R"((Voce::\w+NonSalvat\w)\);)"},
    {"logs/Soccorso", "cosa", What::Caption, "logs/Soccorso",
     R"(cosa \+= "\\r\\n" \+ Testo\((Voce::\w+)\))"},
    {"logs/Scarico", "mancanze", What::Caption, "logs/Scarico",
     R"((Voce::(?:Scarico|TabellaGiri)\w+))"},
    {"sensors/ImpostaSensore", "motivo", What::Data},  // as behind every write that failed
    {"sensors/ImpostaSensore", "Utf8In1252(nome)", What::Data},
    {"sensors/ImpostaSensore", "Testo(rifiuto)", What::Caption, "sensors/ImpostaSensore",
     R"(\b(Voce::Motivo\w+)\b)"},
    {"sensors/ImpostaSensore", "percorso", What::Data},
    {"sensors/CSensore", "nome", What::Data},
    {"shell/Domande", "scelto", What::Data},
    {"shell/frmMain", "nome", What::Data},
    {"shell/frmMain", "Testo(domanda)", What::Expression, "shell/frmMain",
     R"(LasciaNote\((Voce::\w+)\))"},
    {"analysis/FileMancante", "nome", What::Data},
    {"project/FileProgetto", "DatiProgetto.NomeProgetto", What::Data},
    {"device/RecordStrumento", "Campo(valore.Didascalia, valore.Testo)", What::Data},
    {"device/RecordStrumento", "Campo(campo.Didascalia, valore.Scritto)", What::Data},
    {"device/RecordStrumento", "Ammessi(campo)", What::Data},
    {"device/RecordStrumento", "elenco", What::Data},
    {"device/ProgrammaStrumento", "Testo(manca)", What::Expression, "device/ProgrammaStrumento",
     R"(\b(Voce::Manca\w+)\b)"},
    {"sensors/frmConfigurazione", "Ammessi(*CampoDi(kNumeriSetup[*i].Casella))", What::Data},
    {"sensors/frmSensori", "Testo(kCanaliSensore[primo].Titolo)", What::Data},
    {"sensors/frmSensori", "Testo(kCanaliSensore[secondo].Titolo)", What::Data},
    {"sensors/frmSensori", "campi_->Testo(kCanaliSensore[secondo].cboChann)", What::Data},
    {"widgets/CasellaNumerica", "DaQt(nome)", What::Data},
    {"reports/dlgSetGraph", "Testo(didascalia)", What::Data},
    {"reports/dlgSetGraph", "ammessi", What::Data},
    {"project/FileProgetto", "testo", What::Expression, "project/FileProgetto",
     R"(rifiuta\(((?:[^;"]|"[^"]*")*)\);)"},
    {"project/FileProgetto", "inizio", What::Expression, "project/FileProgetto",
     R"(inizio =\s*([^;]*);)"},
    {"device/SerialComm", "testo", What::Expression, "device/SerialComm",
     R"re(MostraErroreControllo\(("[^"]*")\))re"},
    {"sensors/frmSensori", "Testo(testo)", What::Expression, "sensors/frmSensori", kEnd},
    {"sensors/frmSensori", "Testo(testo)", What::Expression, "sensors/frmSensori",
     R"(informa\((k\w+),)"},
    {"sensors/frmSensori", "Testo(testo)", What::Expression, "sensors/frmSensori",
     R"(k\w+Interrotta = (Voce::\w+))"},
    {"sensors/frmEditor", "Testo(corpo)", What::Expression, "sensors/frm",
     R"(Conferma\([\w.]+, ([\w:]+)\))"},
    {"sensors/frmEditor", "Testo(scambio.TestoFine)", What::Expression, "sensors/frm", kEnd},
    {"device/ProgrammaStrumento", "Testo(verso_.Domanda)", What::Expression,
     "device/ProgrammaStrumento", R"(Verso k\w+ = \{(Voce::\w+),)"},
    {"device/ProgrammaStrumento", "Testo(verso_.Interrotta)", What::Expression,
     "device/ProgrammaStrumento", R"(Verso k\w+ = \{Voce::\w+,\s*Voce::\w+,\s*(Voce::\w+),)"},
    {"reports/dlgDatiSessione", "Testo(testo)", What::Expression, "reports/dlgDatiSessione",
     R"(Avvisa\((Voce::\w+)\))"},
};

bool IsSpace(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

/// Without blanks at the ends, and with one blank for each run of them outside quotes.
std::string Tidy(std::string_view text) {
    std::string tidy;
    bool quoted = false;
    for (const char c : text) {
        if (c == '"' && (tidy.empty() || tidy.back() != '\\')) quoted = !quoted;
        if (!quoted && IsSpace(c)) {
            if (!tidy.empty() && tidy.back() != ' ') tidy += ' ';
        } else {
            tidy += c;
        }
    }
    while (!tidy.empty() && tidy.back() == ' ') tidy.pop_back();
    return tidy;
}

/// End of the part that begins at `from`: the first of `marks` outside quotes and brackets, or the
/// bracket that closes around it.
std::size_t PartEnd(std::string_view text, std::size_t from, std::string_view marks) {
    int depth = 0;
    for (std::size_t i = from; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"') {
            for (++i; i < text.size() && text[i] != '"'; ++i) i += text[i] == '\\' ? 1 : 0;
        } else if (c == '(' || c == '[' || c == '{') {
            ++depth;
        } else if (c == ')' || c == ']' || c == '}') {
            if (depth-- == 0) return i;
        } else if (depth == 0 && marks.find(c) != std::string_view::npos) {
            return i;
        }
    }
    return text.size();
}

/// A literal as the program shows it. The escapes of the messages are these alone.
std::string Unquote(std::string_view literal) {
    std::string text;
    for (std::size_t i = 1; i + 1 < literal.size(); ++i) {
        if (literal[i] != '\\') {
            text += literal[i];
            continue;
        }
        ++i;
        if (literal[i] == '"' || literal[i] == '\\') text += literal[i];
    }
    return text;
}

bool HasLetters(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; });
}

class Scanner {
 public:
    Scanner(const fs::path& src, const std::map<std::string, int>& names) : names_(names) {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(src)) {
            const fs::path& path = entry.path();
            if (path.extension() != ".cpp" && path.extension() != ".h") continue;
            std::ifstream in(path, std::ios::binary);
            files_[path.lexically_relative(src).generic_string()] = {
                std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        }
        used_.assign(kRules.size(), 0);
    }

    Messages Run() {
        int calls = 0;
        for (const auto& [name, text] : files_) {
            place_ = name;
            if (!name.starts_with("platform/") && text.find("QMessageBox") != std::string::npos) {
                Fault("a message box that is not shown by MsgBox");
            }
            static const std::string kCall = ".MsgBox(";
            for (std::size_t at = text.find(kCall); at != std::string::npos;
                 at = text.find(kCall, at + 1)) {
                ++calls;
                const std::size_t from = at + kCall.size();
                place_ = name + ':' +
                         std::to_string(1 + std::count(text.begin(),
                                                       text.begin() + static_cast<long>(at), '\n'));
                Expression(name, text.substr(from, PartEnd(text, from, ",") - from));
            }
        }
        if (calls == 0) Fault("no message box anywhere: the program shows them in another way");
        for (std::size_t i = 0; i < kRules.size(); ++i) {
            if (!used_[i]) Fault(std::string("the rule for ") + kRules[i].Part + " has no use");
        }
        RunTimeErrors();
        return std::move(found_);
    }

 private:
    void Fault(const std::string& what) {
        found_.Faults.push_back((place_.empty() ? "tools/manual" : "src/" + place_) + ": " + what);
    }

    /// Sum of parts, perhaps behind a condition.
    void Expression(const std::string& file, const std::string& text) {
        const std::size_t question = PartEnd(text, 0, "?");
        if (question < text.size() && text[question] == '?') {
            std::size_t colon = question;  // not the first half of "::"
            do {
                colon = PartEnd(text, colon + 1, ":");
                if (colon + 1 < text.size() && text[colon + 1] == ':') {
                    ++colon;
                } else {
                    break;
                }
            } while (colon < text.size());
            Expression(file, text.substr(question + 1, colon - question - 1));
            if (colon < text.size()) Expression(file, text.substr(colon + 1));
            return;
        }
        for (std::size_t from = 0; from < text.size();) {
            const std::size_t end = PartEnd(text, from, "+");
            Part(file, Tidy(std::string_view(text).substr(from, end - from)));
            from = end + 1;
        }
    }

    void Part(const std::string& file, const std::string& part) {
        if (part.starts_with('"')) {
            Literal(Unquote(part));
            return;
        }
        if (part.starts_with("TestoDaPercorso(")) return;
        if (const auto inside = Argument(part, "Testo(")) {
            const std::size_t question = PartEnd(*inside, 0, "?");
            if (question == inside->size()) return Number(file, Tidy(*inside), part);
            const std::size_t colon = PartEnd(*inside, question + 1, ":");
            for (const std::string& way : {inside->substr(question + 1, colon - question - 1),
                                           inside->substr(std::min(colon + 1, inside->size()))}) {
                Number(file, Tidy(way), "Testo(" + Tidy(way) + ")");
            }
            return;
        }
        if (!ByRule(file, part)) Fault("nothing says what the message shows as " + part);
    }

    static std::optional<std::string> Argument(const std::string& part, std::string_view call) {
        if (!part.starts_with(call) || !part.ends_with(')')) return std::nullopt;
        return part.substr(call.size(), part.size() - call.size() - 1);
    }

    /// A number, the name of a constant of that file, or what a rule or a table of the program
    /// says.
    void Number(const std::string& file, const std::string& text, const std::string& part) {
        if (const auto number = Value(file, text)) {
            if (*number != 0) found_.Texts.insert(*number);
            return;
        }
        if (text.ends_with(".TestoManca")) {
            for (const CanaleSensore& channel : kCanaliSensore)
                found_.Texts.insert(static_cast<int>(channel.TestoManca));
            return;
        }
        if (text == "kNumeriSetup[*i].Didascalia") {
            for (const NumeroSetup& number : kNumeriSetup) {
                found_.Texts.insert(static_cast<int>(number.Didascalia));
                found_.Captions.insert(static_cast<int>(number.Didascalia));
            }
            return;
        }
        if (!ByRule(file, part)) Fault("nothing says which text the message shows as " + part);
    }

    std::optional<int> Value(const std::string& file, const std::string& text) const {
        if (text.starts_with("Voce::")) {
            if (text == "Voce::Nessuna") return 0;
            const auto name = names_.find(text.substr(6));
            if (name != names_.end()) return name->second;
        }
        if (text.empty() || text.front() != 'k') return std::nullopt;
        std::smatch match;
        const std::string& source = files_.at(file);
        const std::regex constant("\\b" + text + " = Voce::(\\w+)[,;]");
        if (text.find_first_of("[.(") == std::string::npos &&
            std::regex_search(source, match, constant)) {
            if (const auto name = names_.find(match[1]); name != names_.end()) return name->second;
        }
        return std::nullopt;
    }

    bool ByRule(const std::string& file, const std::string& part) {
        bool known = false;
        for (std::size_t i = 0; i < kRules.size(); ++i) {
            const Rule& rule = kRules[i];
            if (!file.starts_with(rule.File) || part != rule.Part) continue;
            known = true;
            if (std::exchange(used_[i], 1) != 0 || rule.Kind == What::Data) continue;
            bool found = false;
            for (const auto& [name, text] : files_) {
                if (!name.starts_with(rule.Where) || !name.ends_with(".cpp")) continue;
                const std::regex pattern(rule.Pattern);
                for (auto m = std::sregex_iterator(text.begin(), text.end(), pattern);
                     m != std::sregex_iterator(); ++m) {
                    found = true;
                    Found(name, (*m)[1]);
                    if (rule.Kind != What::Caption) continue;
                    // A part of a message that has its place under the heading of the whole.
                    if (const auto number = Value(name, (*m)[1])) found_.Captions.insert(*number);
                }
            }
            if (!found) Fault(std::string("the rule for ") + rule.Part + " finds nothing");
        }
        return known;
    }

    void Found(const std::string& file, const std::string& text) {
        if (text.find_first_of("\"(") != std::string::npos) {
            Expression(file, text);
        } else if (const auto number = Value(file, text)) {
            if (*number != 0) found_.Texts.insert(*number);
        } else if (text != "corpo") {  // the parameter of `Conferma` itself
            Fault("what " + text + " stands for in " + file + " is not to be found");
        }
    }

    void Literal(const std::string& text) {
        const std::string tidy = Tidy(text);
        if (HasLetters(tidy)) found_.Literals.insert(tidy);
    }

    /// The numbers of the run-time errors and what the program can have been doing.
    void RunTimeErrors() {
        place_ = "platform/ErroreRuntime.h";
        const std::string& header = files_.at(place_);
        const std::size_t from = header.find("enum class NumeroErrore");
        const std::string body = header.substr(from, header.find("};", from) - from);
        const std::regex entry(R"((\w+) = (\d+),)");
        for (auto m = std::sregex_iterator(body.begin(), body.end(), entry);
             m != std::sregex_iterator(); ++m) {
            found_.RunTime[std::stoi((*m)[2])] = (*m)[1];
        }
        if (found_.RunTime.empty()) Fault("no numbers of run-time errors");
        place_ = "shell/FrasiErrore.cpp";
        const std::string& phrases = files_.at(place_);
        const std::regex phrase(R"re(\{"([^"]+)", ")re");
        for (auto m = std::sregex_iterator(phrases.begin(), phrases.end(), phrase);
             m != std::sregex_iterator(); ++m) {
            const std::string text = (*m)[1];
            if (std::islower(static_cast<unsigned char>(text.front())) != 0) {
                found_.Doing.push_back(text);
            }
        }
        if (found_.Doing.empty()) Fault("no phrases of run-time errors");
    }

    const std::map<std::string, int>& names_;
    std::map<std::string, std::string> files_;
    std::vector<char> used_;  // by rule
    std::string place_;
    Messages found_;
};

}  // namespace

Messages ScanMessages(const fs::path& src, const std::map<std::string, int>& names) {
    return Scanner(src, names).Run();
}

}  // namespace lapvane::manual
