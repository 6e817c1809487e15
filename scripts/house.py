"""The rooms of the house and the arrows between them, the globals of its headers, the words of its messages.

Reads every C++ file of the work tree that git does not ignore. Fails, with file and line, on
- an include that no arrow allows,
- files that include each other in a circle, and arrows that do,
- a file that no room claims, or more than one, and a room without files,
- an exception that nothing needs any more,
- a mutable variable in a header of src/, or the state behind an accessor there, that AzzeraTutto of the
  tests does not put back,
- a message box of Qt outside of platform/qt,
- a question to the disk by way of the library outside of platform/: on Windows that ends at 260 characters,
- a text that the table calls one of a message, or a row of the run-time errors, that src/ nowhere names.
With --files it only prints the files that it looks at, with --sources FILE ... a source through which the
compiler sees each of those.
"""

import pathlib
import re
import subprocess
import sys

WINDOW = "(frm|dlg|Disegno)[A-Z]"  # CMakeLists.txt sorts by the same names
ANY = r"\w+"


def logic(folder):
    return rf"src/{folder}/(?!{WINDOW}){ANY}"


def windows(folder):
    return rf"src/{folder}/{WINDOW}{ANY}"


# From the ground up: room, its files without .h and .cpp, the rooms that it may include beside itself.
BASE = ["platform", "shell"]
QT = [*BASE, "platform/qt", "widgets", "widgets/style"]
LOGIC = [*BASE, "project", "sensors", "device", "logs", "reports", "analysis", "compare", "runs"]
WINDOWS = ["project windows", "sensors windows", "device windows", "logs windows", "reports windows",
           "compare windows", "analysis windows", "runs windows", "shell windows"]
PROGRAM = [*LOGIC, *QT, *WINDOWS]

ROOMS = [
    ("platform", rf"src/platform/{ANY}", []),
    ("shell", logic("shell"), ["platform"]),
    ("project", logic("project"), BASE),
    ("sensors", logic("sensors"), [*BASE, "project"]),
    ("device", logic("device"), [*BASE, "project", "sensors"]),
    ("logs", logic("logs"), [*BASE, "project", "device"]),
    ("reports", logic("reports"), [*BASE, "project"]),
    ("analysis", logic("analysis"), [*BASE, "project", "reports"]),
    ("compare", logic("analysis/compare"), [*BASE, "project", "reports", "analysis"]),
    ("runs", logic("runs"), [*BASE, "project", "device", "logs", "reports", "analysis", "compare"]),
    ("platform/qt", rf"src/platform/qt/{ANY}", ["platform"]),
    ("widgets/style", rf"src/widgets/style/{ANY}", ["platform", "platform/qt"]),
    ("widgets", rf"src/widgets/{ANY}", [*BASE, "platform/qt", "widgets/style"]),
    ("project windows", windows("project"), [*QT, "project"]),
    ("sensors windows", windows("sensors"), [*QT, "project", "sensors", "device"]),
    ("device windows", windows("device"), [*QT, "project", "sensors", "device"]),
    ("logs windows", windows("logs"), [*QT, "project", "device", "logs"]),
    ("reports windows", windows("reports"), [*QT, "project", "reports"]),
    ("compare windows", windows("analysis/compare"),
     [*QT, "project", "reports", "analysis", "compare", "reports windows"]),
    ("analysis windows", windows("analysis"),
     [*QT, "project", "reports", "analysis", "compare", "reports windows", "compare windows"]),
    ("runs windows", windows("runs"),
     [*QT, "project", "device", "logs", "reports", "analysis", "compare", "runs",
      "device windows", "reports windows", "analysis windows", "compare windows"]),
    ("shell windows", windows("shell"), [*LOGIC, *QT, *WINDOWS]),
    ("main", r"src/main", ["platform/qt", "shell windows"]),
    ("instrument", rf"instrument/{ANY}", [*BASE, "sensors", "device"]),
    ("tools/support", rf"tools/support/{ANY}", LOGIC),
    ("tools/texttable", rf"tools/texttable/{ANY}", ["platform"]),
    ("tools/pictures", rf"tools/pictures/{ANY}", ["widgets/style"]),
    ("tools/laptool", rf"tools/laptool/{ANY}", [*LOGIC, "tools/support"]),
    ("tools/makesample", rf"tools/makesample/{ANY}", [*LOGIC, "instrument", "tools/support"]),
    ("tools/manual", rf"tools/manual/{ANY}", [*LOGIC, "instrument", "tools/texttable"]),
    ("tools/soak", rf"tools/soak/{ANY}", [*PROGRAM, "instrument", "tools/support"]),
    ("tools/tour", rf"tools/tour/{ANY}", [*PROGRAM, "instrument", "tools/support"]),
    ("bench", rf"bench/{ANY}", [*PROGRAM, "instrument", "tools/support"]),
    ("tests/support", rf"tests/support/{ANY}", [*PROGRAM, "instrument", "tools/support"]),
    ("tests", rf"tests/(?!support/|fuzz/){ANY}/(compare/)?{ANY}",
     [*PROGRAM, "instrument", "tools/support", "tools/texttable", "tools/laptool", "tests/support"]),
    ("tests/fuzz", rf"tests/fuzz/{ANY}", [*LOGIC, "instrument", "tools/support", "tools/texttable"]),
]

# Made by the build, so not in the tree.
GENERATED = {"shell/Voci.h": "shell"}

# Arrows that run upward and are on their way out: who, and what it includes.
EXCEPTIONS = []

SUFFIXES = (".cpp", ".h", ".cc", ".cxx", ".hpp", ".hxx", ".c", ".inl")
INCLUDE_ROOTS = ["src", ".", "tests"]
TEXTS = "data/testi.tsv"
ERRORS = "src/platform/TabelleErrore.h"
SEAMS = ("platform", "principale")  # whoever makes the object sets it and takes it away
RESET = ("tests/support/Azzera.cpp", "AzzeraTutto")

faults = []  # (file, line, text)


def fault(file, line, text):
    faults.append((file, line, text))


def circle(starts, following):
    """A list of nodes that leads back to its first, or None. `following` gives a node's neighbours."""
    done, path = set(), []

    def visit(node):
        if node in path:
            return path[path.index(node):] + [node]
        if node in done:
            return None
        path.append(node)
        for other in following(node):
            if found := visit(other):
                return found
        path.pop()
        done.add(node)
        return None

    for start in starts:
        if found := visit(start):
            return found
    return None


def tracked():
    """The C++ files of the tree: what git does not ignore or, in a copy without git, all but the builds."""
    listed = subprocess.run(
        ["git", "-c", "safe.directory=*", "ls-files", "--cached", "--others", "--exclude-standard"],
        check=False, capture_output=True, text=True) if pathlib.Path(".git").exists() else None
    if listed is not None:
        listed.check_returncode()
        names = listed.stdout.split("\n")
    else:
        names = [str(path) for path in pathlib.Path(".").rglob("*")
                 if path.parts[0] not in ("build", "out") and not path.parts[0].startswith(".")]
    return sorted({name for name in names
                   if name.endswith(SUFFIXES) and pathlib.Path(name).is_file()})


def rooms_of(files):
    """The room of each file."""
    room_of, used = {}, set()
    for file in files:
        stem = re.sub(r"\.(cpp|h)$", "", file)
        claims = [room for room, pattern, _ in ROOMS if re.fullmatch(pattern, stem)]
        if len(claims) != 1:
            fault(file, 1, "no room claims this file" if not claims
                  else "more than one room claims this file: " + ", ".join(claims))
        if claims:
            room_of[file] = claims[0]
            used.add(claims[0])
    for room, _, _ in ROOMS:
        if room not in used:
            fault("scripts/house.py", 1, f"the room \"{room}\" has no files")
    return room_of


def includes(text):
    """Line number and name of each include outside comments."""
    for number, line in enumerate(without_comments(text, strings=True).split("\n"), 1):
        if found := re.match(r'\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', line):
            yield number, found[1] or found[2], bool(found[1])


def source_of(file, includers):
    """The source nearest to a file among those that include it, itself for a source; None without."""
    seen, row = {file}, [file]
    while row:
        sources = [name for name in row if name.endswith(".cpp") and not name.startswith("tests/fuzz/")
                   and not name.endswith("Windows.cpp")]
        own = str(pathlib.PurePosixPath(file).with_suffix(".cpp"))
        if sources:
            return min(sources, key=lambda name: (name != own, not name.startswith("src/"), name))
        row = sorted({other for name in row for other in includers.get(name, [])} - seen)
        seen |= set(row)
    return None


def check_arrows(files, texts):
    """Returns which files each file includes."""
    room_of = rooms_of(files)
    allowed = {room: {room, *arrows} for room, _, arrows in ROOMS}
    for room, arrows in allowed.items():
        for unknown in arrows - allowed.keys():
            fault("scripts/house.py", 1, f"\"{room}\" has an arrow to \"{unknown}\", which is no room")
    if found := circle(allowed, lambda room: sorted(allowed.get(room, set()) - {room})):
        fault("scripts/house.py", 1, "the arrows run in a circle: " + " > ".join(found))

    here = set(files)
    graph, line_of, needed = {}, {}, set()
    for file in files:
        for number, name, quoted in includes(texts[file]):
            if name == "QMessageBox" and file.startswith("src/") and room_of.get(file) != "platform/qt":
                fault(file, number, f"#include <{name}>: a box is shown by Platform::MsgBox")
            folders = [str(pathlib.PurePosixPath(file).parent)] if quoted else []
            target = next((path for folder in folders + INCLUDE_ROOTS
                           if (path := str(pathlib.PurePosixPath(folder, name))) in here), None)
            if target is None and quoted and ".." in name:
                fault(file, number, f"#include \"{name}\": say it from the root of its folder")
                continue
            if target is None and name not in GENERATED:
                if quoted:
                    fault(file, number, f"#include \"{name}\": there is no such file in the tree")
                continue
            room = room_of.get(file)
            other = GENERATED.get(name) if target is None else room_of.get(target)
            if target is not None:
                graph.setdefault(file, []).append(target)
                line_of[file, target] = number
            if room is None or other is None or other in allowed[room]:
                continue
            if (file, target) in EXCEPTIONS:
                needed.add((file, target))
                continue
            fault(file, number, f"#include \"{name}\": \"{room}\" may not include \"{other}\"")
    for file, target in EXCEPTIONS:
        if (file, target) not in needed:
            fault("scripts/house.py", 1, f"{file} no longer needs its exception for {target}: "
                  "take the line out of EXCEPTIONS")
    if found := circle(files, lambda file: graph.get(file, [])):
        fault(found[0], line_of[found[0], found[1]], "includes in a circle: " + " > ".join(found))
    return graph


def without_comments(text, strings=False):
    """The text with comments blanked, strings emptied unless wanted, line breaks kept."""
    pattern = r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\''

    def blank(match):
        piece = match[0]
        if piece.startswith("/"):
            return " " + "\n" * piece.count("\n")
        # A single quote between digits groups them.
        if strings or (piece[0] == "'" and text[match.start() - 1].isalnum()):
            return piece
        return '""' + "\n" * piece.count("\n")

    return re.sub(pattern, blank, text, flags=re.S)


def without_templates(text):
    """Takes out what stands in < >, innermost first."""
    before = None
    while before != text:
        before, text = text, re.sub(r"<[^<>;{}]*>", " ", text)
    return text


def declared_variables(statement, scope):
    """The names of the mutable variables that a statement declares."""
    plain = without_templates(statement)
    plain = re.sub(r"\b(alignas|__attribute__|decltype)\s*\([^()]*\)|\[\[.*?\]\]", " ", plain)
    plain = re.sub(r"\b(public|private|protected|Q_SIGNALS|Q_SLOTS)\b[\s\w]*:(?!:)|\bQ_[A-Z_]+\b", " ",
                   plain)
    declared = re.split(r"[={]", plain, maxsplit=1)[0]
    pointer = re.match(r"[^(]*\(\s*[*&]\s*(\w+)[^()]*\)\s*\(", declared)  # to a function
    if pointer:
        declared = pointer[0].split("(")[0] + " " + pointer[1]
    if "(" in declared or re.search(r"\b(constexpr|using|typedef|friend|static_assert|operator|concept|"
                                    r"namespace|requires)\b", declared):
        return []
    words = re.findall(r"\w+|[*&]", re.sub(r"\[[^\]]*\]", " ", declared.split(",")[0]))
    stored = {"static", "extern", "inline", "thread_local", "constinit"}
    if not words or (scope != "namespace" and not stored & set(words)):
        return []
    if words[0] in ("class", "struct", "enum", "union", "template") and not stored & set(words):
        return []
    if "const" in words:
        # Constant is the pointer only with a const behind the last star.
        last = max((i for i, word in enumerate(words) if word == "*"), default=-1)
        if "const" in words[last + 1:]:
            return []
    rest = [word for word in words if word not in stored]
    if len(rest) < 2 or not re.match(r"[A-Za-z_]", rest[-1]):
        return []
    # What else the statement declares, behind commas outside of braces and parentheses.
    before = None
    while before != plain:
        before, plain = plain, re.sub(r"\{[^{}]*\}|\([^()]*\)|\[[^\[\]]*\]", " ", plain)
    others = [re.split("=", part)[0].split() for part in plain.split(",")[1:]]
    return [rest[-1], *(other[-1].strip("*&") for other in others if other)]


def variables(text):
    """Line and name of each mutable variable that lives as long as the program."""
    text = without_comments(text)
    text = re.sub(r"^[ \t]*#(?:[^\n\\]|\\.|\\\n)*", "", text, flags=re.M)
    scopes, statement, line, begun = ["namespace"], "", 1, 1
    depth = 0  # of braces and parentheses inside the statement
    for sign in text:
        if sign == "\n":
            line += 1
        if not statement.strip():
            begun = line
        if depth == 0 and sign == "{":
            head = without_templates(statement).strip()
            kind = None
            if re.match(r"(inline\s+)?namespace\b|extern\s*\"\"$", head):
                kind = "namespace"
            elif re.search(r"\b(class|struct|union)\b", head) and not re.search(r"[=(]", head):
                kind = "type"
            elif re.search(r"\)[^=]*$|\b(enum|do|else|try)\b", head) or not head or "]" in head[-1:]:
                kind = "body"
            if kind:
                scopes.append(kind)
                statement = ""
                continue
        if sign in "{(":
            depth += 1
        elif sign in "})" and depth > 0:
            depth -= 1
        elif sign == "}":
            if len(scopes) > 1:
                scopes.pop()
            statement = ""
            continue
        if sign == ";" and depth == 0:
            for name in declared_variables(statement, scopes[-1]):
                yield begun, name
            statement = ""
            continue
        statement += sign


def reset_text(files, texts):
    """The body of AzzeraTutto with those of the Azzera routines that it calls, and so on."""
    def body(file, name):
        found = re.search(rf"^(?:inline )?void {name}\(\) {{\n(.*?)^}}", texts[file], flags=re.S | re.M)
        return found and without_comments(found[1])

    file, name = RESET
    first = body(file, name) if file in texts else None
    if first is None:
        fault(file, 1, f"there is no {name} here")
        return ""
    bodies, waiting, seen = [], [first], set()
    while waiting:
        bodies.append(waiting.pop())
        for called in set(re.findall(r"\b(Azzera\w+)\(\)", bodies[-1])) - seen:
            seen.add(called)
            waiting += [found for source in files if source.startswith(("src/", "tools/support/"))
                        and (found := body(source, called))]
    return "\n".join(bodies)


def check_globals(files, texts):
    reset = reset_text(files, texts)
    for file in files:
        if not (file.startswith("src/") and file.endswith(".h")):
            continue
        for line, name in variables(texts[file]):
            if not re.search(rf"\b{name}(\s*=(?!=)|\.(clear|fill|reset)\()|"
                             rf"\bfor \((?!const)[^;]*& \w+ : {name}\)", reset):
                fault(file, line, f"{name} is a mutable variable that {RESET[1]} ({RESET[0]}) does not "
                      "put back")
        for found in re.finditer(r"^(?!const\b)[\w:]+& (\w+)\(\);", texts[file], flags=re.M):
            if found[1] not in SEAMS and not re.search(rf"\b{found[1]}\(\) = ", reset):
                fault(file, texts[file].count("\n", 0, found.start()) + 1,
                      f"{found[1]}() is state that {RESET[1]} ({RESET[0]}) does not put back")


def check_disk(files, texts):
    """The library makes paths; what asks the disk is platform/Cartelle.h and FileTesto.h."""
    asks = re.compile(r"\b(?:fs|filesystem)::((?:recursive_)?directory_(?:iterator|entry)|exists|equivalent|"
                      r"(?:weakly_)?canonical|last_write_time|(?:resize_)?file_size|hard_link_count|status|"
                      r"symlink_status|permissions|re(?:move|name)\w*|copy\w*|create_\w+|is_\w+)\b")
    for file in files:
        if not file.startswith("src/") or file.startswith("src/platform/"):
            continue
        for number, line in enumerate(without_comments(texts[file]).split("\n"), 1):
            if found := asks.search(line):
                fault(file, number, f"{found[1]}: the disk is asked by way of platform/Cartelle.h")


def check_words(files, texts):
    """Texts of messages and words of run-time errors that are still in their tables, unused."""
    said = set()
    for file in files:
        if file.startswith("src/"):
            said |= set(re.findall(r"\b(Voce|NumeroErrore|Lavoro)::(\w+)", texts[file]))
    for number, line in enumerate(pathlib.Path(TEXTS).read_text(encoding="utf-8").split("\n"), 1):
        columns = line.split("\t")
        if len(columns) == 6 and columns[4] in ("heading", "part") and ("Voce", columns[1]) not in said:
            fault(TEXTS, number, f"{columns[1]} is a text of a message, and nothing in src/ names it")
    for number, line in enumerate(texts[ERRORS].split("\n"), 1):
        if found := re.match(r'\s*RIGA\((\w+), (\d?)', line):
            kind = "NumeroErrore" if found[2] else "Lavoro"
            if (kind, found[1]) not in said:
                fault(ERRORS, number, f"nothing in src/ names {kind}::{found[1]}")


def main():
    files = tracked()
    if sys.argv[1:] == ["--files"]:
        print("\n".join(files))
        return
    texts = {file: pathlib.Path(file).read_text(encoding="utf-8") for file in files}
    graph = check_arrows(files, texts)
    if sys.argv[1:2] == ["--sources"]:
        includers = {}
        for file, targets in graph.items():
            for target in targets:
                includers.setdefault(target, []).append(file)
        sources = {source_of(file, includers) for file in sys.argv[2:]} - {None}
        print("\n".join(sorted(sources)))
        return
    check_globals(files, texts)
    check_disk(files, texts)
    check_words(files, texts)
    for file, line, text in sorted(set(faults)):
        print(f"{file}:{line}: {text}")
    if faults:
        sys.exit(1)
    print(f"The house stands: {len(files)} files in {len(ROOMS)} rooms.")


if __name__ == "__main__":
    main()
