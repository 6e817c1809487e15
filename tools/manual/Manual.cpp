#include "tools/manual/Manual.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <ostream>
#include <set>
#include <stdexcept>

#include "platform/TabelleErrore.h"
#include "platform/Testo1252.h"
#include "project/DatiProgetto.h"
#include "tools/manual/Markdown.h"
#include "tools/manual/Tables.h"
#include "tools/manual/Texts.h"
#include "tools/texttable/texttable.h"

namespace lapvane::manual {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMessageChapter = "09-messages";

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(path.string() + " cannot be read");
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteFile(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    if (!out) throw std::runtime_error(path.string() + " cannot be written");
}

std::vector<std::string> Split(const std::string& text, char mark) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == mark) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

/// Size of a PNG, from its header.
Picture PngSize(const fs::path& path) {
    const std::string head = ReadFile(path).substr(0, 24);
    if (head.size() < 24 || head.substr(1, 3) != "PNG") return {};
    const auto at = [&head](std::size_t from) {
        int value = 0;
        for (std::size_t i = from; i < from + 4; ++i) {
            value = value * 256 + static_cast<unsigned char>(head[i]);
        }
        return value;
    };
    return {{}, at(16), at(20)};
}

/// "NN-name.png" in the folder of a tour, by name.
std::map<std::string, fs::path> TourPictures(const fs::path& folder) {
    std::map<std::string, fs::path> pictures;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().stem().string();
        const std::size_t dash = name.find('-');
        if (entry.path().extension() != ".png" || dash == std::string::npos) continue;
        pictures.emplace(name.substr(dash + 1), entry.path());
    }
    return pictures;
}

struct Chapter {
    std::string Name;  ///< without extension
    std::string Title;
    fs::path File;
    Page Made;
    std::vector<std::string> Links;  ///< to other places of the manual, as they were written
};

/// One language of the manual.
class Edition {
 public:
    Edition(const Folders& folders, Texts texts, std::ostream& errors)
        : folders_(folders),
          texts_(std::move(texts)),
          errors_(errors),
          code_(texts_.Pick("it", "en")),
          pictures_(
              TourPictures(texts_.Italian() ? folders.PicturesItalian : folders.PicturesEnglish)) {
        ReadFields();
    }

    void Make() {
        std::vector<fs::path> files;
        for (const fs::directory_entry& entry :
             fs::directory_iterator(folders_.Source / "docs/manual" / code_)) {
            if (entry.path().extension() == ".md") files.push_back(entry.path());
        }
        std::sort(files.begin(), files.end());
        for (const fs::path& file : files) MakeChapter(file);
        for (const Chapter& chapter : chapters_) CheckLinks(chapter);
        CheckMessages();
    }

    const std::vector<Chapter>& Chapters() const { return chapters_; }
    int Faults() const { return faults_; }

    /// A fault of this edition as a whole.
    void Fault(const fs::path& file, int line, const std::string& what) {
        ++faults_;
        errors_ << file.string() << ':' << line << ": " << what << '\n';
    }

    void Write(const fs::path& out) const {
        for (std::size_t i = 0; i < chapters_.size(); ++i) {
            WriteFile(out / code_ / (chapters_[i].Name + ".html"), PageOf(i));
        }
        WriteFile(out / code_ / "index.html", ContentsPage());
        WriteFile(out / code_ / "search.js", SearchData());
        fs::create_directories(out / code_ / "pictures");
        for (const auto& [name, file] : used_) {
            fs::copy_file(file, out / code_ / "pictures" / (name + ".png"),
                          fs::copy_options::overwrite_existing);
        }
    }

    std::string ContentsList(const std::string& prefix) const {
        std::string html = "<ol class=\"contents\">\n";
        for (const Chapter& chapter : chapters_) {
            html += "<li><a href=\"" + prefix + chapter.Name + ".html\">" +
                    EscapedHtml(chapter.Title) + "</a></li>\n";
        }
        return html + "</ol>\n";
    }
    const char* Title() const { return texts_.Pick("Lapvane: manuale", "Lapvane: manual"); }
    const char* Code() const { return code_.c_str(); }

 private:
    void ReadFields() {
        const fs::path file = folders_.Source / "docs/manual/fields.tsv";
        int number = 0;
        for (const std::string& line : Split(ReadFile(file), '\n')) {
            ++number;
            if (line.empty() || number == 1) continue;
            const auto columns = Split(line, '\t');
            if (columns.size() != 3) {
                Fault(file, number, "3 columns expected");
                continue;
            }
            fields_[columns[0]] = Fill(columns[texts_.Italian() ? 1 : 2], file, number);
        }
        std::set<std::string> known;
        for (const DescrizioneCampo& field : kCampiProgetto) {
            known.emplace(field.Nome);
            if (!fields_.contains(std::string(field.Nome))) {
                Fault(file, 1, "no meaning for the field " + std::string(field.Nome));
                fields_[std::string(field.Nome)];
            }
        }
        for (const auto& [name, meaning] : fields_) {
            if (!known.contains(name)) Fault(file, 1, name + " is no field of the project");
        }
    }

    /// Puts the program's texts and tables in the place of what stands in double braces.
    std::string Fill(const std::string& line, const fs::path& file, int number) {
        std::string filled;
        for (std::size_t from = 0;;) {
            const std::size_t open = line.find("{{", from);
            filled += line.substr(from, open - from);
            if (open == std::string::npos) return filled;
            const std::size_t close = line.find("}}", open);
            if (close == std::string::npos) {
                Fault(file, number, "\"{{\" without \"}}\"");
                return filled;
            }
            filled += Value(line.substr(open + 2, close - open - 2), file, number);
            from = close + 2;
        }
    }

    std::string Value(const std::string& name, const fs::path& file, int line) {
        int number = 0;
        const auto end = std::from_chars(name.data(), name.data() + name.size(), number);
        if (end.ec == std::errc() && end.ptr == name.data() + name.size()) {
            if (texts_.Has(number)) return Escaped(texts_.Of(number));
            Fault(file, line, "there is no text " + name);
            return {};
        }
        if (name.starts_with("error:")) {
            const int error = std::atoi(name.c_str() + 6);
            if (const auto words = RunTimeError(error, texts_)) return Escaped(*words);
            Fault(file, line, "there is no run-time error " + name.substr(6));
            return {};
        }
        if (const auto known = texts_.ByName.find(name); known != texts_.ByName.end()) {
            return Escaped(texts_.Of(known->second));
        }
        if (auto table = Table(name, texts_, fields_)) return *table;
        Fault(file, line, "nothing is called {{" + name + "}}");
        return {};
    }

    void MakeChapter(const fs::path& file) {
        Chapter chapter;
        chapter.Name = file.stem().string();
        chapter.File = file;
        std::string markdown;
        int number = 0;
        for (const std::string& line : Split(ReadFile(file), '\n')) {
            ++number;
            if (chapter.Name == kMessageChapter) NoteMessages(line);
            markdown += Fill(line, file, number) + '\n';
        }
        const Resolver resolver{
            [&](const std::string& name) { return FindPicture(name, file); },
            [&](const std::string& target) {
                chapter.Links.push_back(target);
                const std::size_t dot = target.find(".md");
                return dot == std::string::npos ? target
                                                : std::string(target).replace(dot, 3, ".html");
            },
            [&](int line, const std::string& what) { Fault(file, line, what); }};
        chapter.Made = Render(markdown, resolver);
        std::set<std::string> ids;
        for (const Heading& heading : chapter.Made.Headings) {
            if (heading.Level == 1 && chapter.Title.empty()) chapter.Title = heading.Text;
            if (!ids.insert(heading.Id).second) Fault(file, 1, "#" + heading.Id + " twice");
        }
        if (chapter.Title.empty()) Fault(file, 1, "no title");
        chapters_.push_back(std::move(chapter));
    }

    Picture FindPicture(const std::string& name, const fs::path& file) {
        const auto found = pictures_.find(name);
        if (found == pictures_.end()) {
            Fault(file, 1, "the tour left no picture " + name);
            return {};
        }
        used_.insert(*found);
        Picture picture = PngSize(found->second);
        picture.File = "pictures/" + name + ".png";
        return picture;
    }

    void CheckLinks(const Chapter& chapter) {
        for (const std::string& link : chapter.Links) {
            const std::size_t hash = std::min(link.find('#'), link.size());
            const std::string to = link.substr(0, hash);
            const std::string id = link.substr(std::min(hash + 1, link.size()));
            const auto target =
                std::find_if(chapters_.begin(), chapters_.end(), [&](const Chapter& other) {
                    return to.empty() ? other.Name == chapter.Name : other.Name + ".md" == to;
                });
            if (target == chapters_.end()) {
                Fault(chapter.File, 1, "a link to " + link + ", which is no chapter");
                continue;
            }
            const auto& headings = target->Made.Headings;
            if (!id.empty() && std::none_of(headings.begin(), headings.end(),
                                            [&id](const Heading& h) { return h.Id == id; })) {
                Fault(chapter.File, 1, "a link to " + link + ", where nothing is");
            }
        }
    }

    /// Which texts a line of the message chapter names.
    void NoteMessages(const std::string& line) {
        const bool heading = line.starts_with("###");
        for (std::size_t at = line.find("{{"); at != std::string::npos;
             at = line.find("{{", at + 1)) {
            const std::string name = line.substr(at + 2, line.find("}}", at) - at - 2);
            if (name.starts_with("error:")) {
                if (heading) errorsTold_.insert(std::atoi(name.c_str() + 6));
            } else if (const auto known = texts_.ByName.find(name); known != texts_.ByName.end()) {
                textsTold_.insert(known->second);
                if (heading) textsHeaded_.insert(known->second);
            } else if (const int number = std::atoi(name.c_str()); number > 0) {
                textsTold_.insert(number);
                if (heading) textsHeaded_.insert(number);
            }
        }
    }

    /// What the table of texts calls a message must have its place in the chapter, and no heading
    /// there may be of a text that is none.
    void CheckMessages() {
        const fs::path file =
            folders_.Source / "docs/manual" / code_ / (std::string(kMessageChapter) + ".md");
        for (int number = 1; number <= static_cast<int>(texts_.All.size()); ++number) {
            const texttable::Place place = texts_.Places[static_cast<std::size_t>(number - 1)];
            const bool headed = textsHeaded_.contains(number);
            const std::string text = "text " + std::to_string(number) + " (" + texts_.Of(number);
            if (place == texttable::Place::Heading && !headed) {
                Fault(file, 1, text + ") has no heading in the chapter of messages");
            } else if (place == texttable::Place::Part && !textsTold_.contains(number)) {
                Fault(file, 1, text + ") has no place in the chapter of messages");
            } else if (place != texttable::Place::Heading && headed) {
                Fault(file, 1, text + ") has a heading there, which its table does not ask for");
            }
        }
        for (const RigaErrore& error : kErrori) {
            const int number = static_cast<int>(error.Numero);
            if (errorsTold_.contains(number)) continue;
            Fault(file, 1, "run-time error " + std::to_string(number) + " has no heading there");
        }
    }

    std::string Navigation(std::size_t current) const {
        std::string html = "<nav class=\"side\" aria-label=\"" +
                           std::string(texts_.Pick("Capitoli", "Chapters")) +
                           "\">\n<input id=\"search\" type=\"search\" placeholder=\"" +
                           texts_.Pick("Cerca nel manuale", "Search the manual") +
                           "\" autocomplete=\"off\">\n<ol id=\"found\" hidden></ol>\n<ol>\n";
        for (std::size_t i = 0; i < chapters_.size(); ++i) {
            const Chapter& chapter = chapters_[i];
            html += "<li><a href=\"" + chapter.Name + ".html\"" +
                    (i == current ? " aria-current=\"page\"" : "") + ">" +
                    EscapedHtml(chapter.Title) + "</a>";
            if (i == current) {
                html += "<ol>\n";
                for (const Heading& heading : chapter.Made.Headings) {
                    if (heading.Level != 2) continue;
                    html += "<li><a href=\"#" + heading.Id + "\">" + EscapedHtml(heading.Text) +
                            "</a></li>\n";
                }
                html += "</ol>";
            }
            html += "</li>\n";
        }
        return html + "</ol>\n</nav>\n";
    }

    std::string Head(const std::string& title) const {
        return std::string("<!DOCTYPE html>\n<html lang=\"") + code_ +
               "\">\n<head>\n<meta charset=\"utf-8\">\n"
               "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
               "<title>" +
               EscapedHtml(title) +
               "</title>\n<link rel=\"stylesheet\" href=\"../style.css\">\n"
               "<script defer src=\"search.js\"></script>\n"
               "<script defer src=\"../manual.js\"></script>\n</head>\n<body>\n";
    }

    std::string Top(const std::string& page) const {
        const char* const other = texts_.Pick("en", "it");
        return std::string("<header><a class=\"name\" href=\"index.html\">") + Title() +
               "</a><a class=\"language\" hreflang=\"" + other + "\" href=\"../" + other + '/' +
               page + "\">" + texts_.Pick("English", "Italiano") + "</a></header>\n";
    }

    std::string PageOf(std::size_t i) const {
        const Chapter& chapter = chapters_[i];
        std::string html = Head(chapter.Title + " - " + Title()) + Top(chapter.Name + ".html") +
                           "<div class=\"page\">\n" + Navigation(i) + "<main>\n" +
                           chapter.Made.Html + "<p class=\"turn\">";
        if (i > 0) {
            html += "<a rel=\"prev\" href=\"" + chapters_[i - 1].Name + ".html\">&larr; " +
                    EscapedHtml(chapters_[i - 1].Title) + "</a>";
        }
        html += "<span></span>";
        if (i + 1 < chapters_.size()) {
            html += "<a rel=\"next\" href=\"" + chapters_[i + 1].Name + ".html\">" +
                    EscapedHtml(chapters_[i + 1].Title) + " &rarr;</a>";
        }
        return html + "</p>\n</main>\n</div>\n</body>\n</html>\n";
    }

    std::string ContentsPage() const {
        std::string html = Head(Title()) + Top("index.html") + "<div class=\"page\">\n" +
                           Navigation(chapters_.size()) + "<main>\n<h1>" + Title() + "</h1>\n<p>" +
                           texts_.Pick("Versione ", "Version ") + LAPVANE_VERSION + "</p>\n";
        for (const Chapter& chapter : chapters_) {
            html += "<h2><a href=\"" + chapter.Name + ".html\">" + EscapedHtml(chapter.Title) +
                    "</a></h2>\n<p class=\"parts\">";
            bool first = true;
            for (const Heading& heading : chapter.Made.Headings) {
                if (heading.Level != 2) continue;
                html += (first ? "" : " &middot; ") + std::string("<a href=\"") + chapter.Name +
                        ".html#" + heading.Id + "\">" + EscapedHtml(heading.Text) + "</a>";
                first = false;
            }
            html += "</p>\n";
        }
        return html + "</main>\n</div>\n</body>\n</html>\n";
    }

    static std::string Quoted(const std::string& text) {
        std::string quoted = "\"";
        for (const char c : text) {
            if (c == '"' || c == '\\') quoted += '\\';
            quoted += c == '<' ? std::string("\\u003c") : std::string(1, c);
        }
        return quoted + '"';
    }

    /// What the search looks through: page, anchor, heading, text.
    std::string SearchData() const {
        std::string js = "const manual = [\n";
        for (const Chapter& chapter : chapters_) {
            for (std::size_t i = 0; i < chapter.Made.Headings.size(); ++i) {
                const Heading& heading = chapter.Made.Headings[i];
                js += "[" + Quoted(chapter.Name + ".html#" + heading.Id) + "," +
                      Quoted(heading.Text) + "," + Quoted(chapter.Title) + "," +
                      Quoted(chapter.Made.Parts[i]) + "],\n";
            }
        }
        return js + "];\n";
    }

    const Folders& folders_;
    Texts texts_;
    std::ostream& errors_;
    std::string code_;
    std::map<std::string, fs::path> pictures_;
    std::map<std::string, fs::path> used_;
    std::map<std::string, std::string> fields_;
    std::vector<Chapter> chapters_;
    std::set<int> textsTold_;
    std::set<int> textsHeaded_;
    std::set<int> errorsTold_;
    int faults_ = 0;
};

/// Both editions must have the same chapters with the same parts.
void Compare(const Edition& one, Edition& other) {
    const auto places = [](const Edition& edition) {
        std::map<std::string, fs::path> all;
        for (const Chapter& chapter : edition.Chapters()) {
            for (const Heading& heading : chapter.Made.Headings) {
                all[chapter.Name + "#" + heading.Id] = chapter.File;
            }
        }
        return all;
    };
    const auto first = places(one);
    const auto second = places(other);
    for (const auto& [place, file] : first) {
        if (!second.contains(place))
            other.Fault(file, 1, place + " is missing in the other language");
    }
    for (const auto& [place, file] : second) {
        if (!first.contains(place))
            other.Fault(file, 1, place + " is missing in the other language");
    }
}

Texts ReadTexts(const fs::path& tsv, Language language) {
    const texttable::Table table = texttable::ReadTable(ReadFile(tsv));
    if (!table.Faults.empty()) {
        throw std::runtime_error(tsv.string() + ":" + std::to_string(table.Faults[0].Line) + ": " +
                                 table.Faults[0].What);
    }
    Texts texts;
    texts.In = language;
    for (const texttable::Entry& entry : table.Entries) {
        texts.All.push_back(
            Utf8Da1252(language == Language::Italian ? entry.Italian : entry.English));
        texts.Places.push_back(entry.InMessages);
        if (!entry.Name.empty()) texts.ByName[entry.Name] = static_cast<int>(texts.All.size());
    }
    return texts;
}

}  // namespace

std::string Texts::Of(int number) const {
    const std::string& text = All.at(static_cast<std::size_t>(number - 1));
    const std::size_t from = text.find_first_not_of(' ');
    return from == std::string::npos ? text
                                     : text.substr(from, text.find_last_not_of(' ') - from + 1);
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (std::string_view("\\`*_[]<>|&#~").find(c) != std::string_view::npos) escaped += '\\';
        escaped += c;
    }
    return escaped;
}

int MakeManual(const Folders& folders, std::ostream& errors) {
    const fs::path tsv = folders.Source / "data/testi.tsv";
    Edition italian(folders, ReadTexts(tsv, Language::Italian), errors);
    Edition english(folders, ReadTexts(tsv, Language::English), errors);
    italian.Make();
    english.Make();
    Compare(italian, english);
    if (italian.Faults() + english.Faults() > 0) return 1;

    // Made beside its place, so that a failure leaves the old one.
    fs::path made = folders.Out;
    made += ".new";
    fs::remove_all(made);
    italian.Write(made);
    english.Write(made);
    std::string index =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<title>Lapvane</title>\n<link rel=\"stylesheet\" href=\"style.css\">\n</head>\n<body>\n"
        "<div class=\"choice\">\n";
    for (const Edition* edition : {&italian, &english}) {
        index += std::string("<section lang=\"") + edition->Code() + "\">\n<h1><a href=\"" +
                 edition->Code() + "/index.html\">" + edition->Title() + "</a></h1>\n" +
                 edition->ContentsList(std::string(edition->Code()) + "/") + "</section>\n";
    }
    WriteFile(made / "index.html", index + "</div>\n</body>\n</html>\n");
    for (const char* name : {"style.css", "manual.js"}) {
        fs::copy_file(folders.Source / "docs/manual" / name, made / name);
    }
    fs::remove_all(folders.Out);
    fs::rename(made, folders.Out);
    return 0;
}

}  // namespace lapvane::manual
