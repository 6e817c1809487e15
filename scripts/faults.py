"""Plants the faults of tests/faults/*.faults in a copy of the tree and runs the tests on each.

A table is a text file. A line without a colon at its start names the source file of the entries behind it;
an entry is

    harm: what it would do to a person
    in:   more of the text around it, where the next line stands in the file more than once (optional)
    was:  the text as it stands: an expression, or whole statements up to ; or }
    now:  the text with the fault (statements may be nothing)
    build: why it can't be switched at run time; it gets a build of its own (optional)
    lives: why no test kills it though one could (optional): counts as a survivor, fails no run
    equal: why nobody could ever tell (optional): it is not counted

Blanks and line breaks count for nothing when a text is looked for. Every text must be there just once.
"""

import argparse
import concurrent.futures
import contextlib
import hashlib
import os
import re
import resource
import signal
import subprocess
import sys
import tempfile
import time
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
WORK = ROOT / "build/faults"
TREE = WORK / "tree"
BUILD = TREE / "build/release"
SUITES = {"logic": "lapvane_tests", "windows": "lapvane_window_tests"}
LIMIT = {"logic": 120, "windows": 240}  # seconds, many times what a suite takes
PROCESSOR = 20  # seconds of it
KEYS = ("harm", "in", "was", "now", "build", "lives", "equal")
OWN_BUILDS = 10


class Fault:
    def __init__(self, table, line, file):
        self.table, self.line, self.file = table, line, file
        self.fields = {}
        self.number = 0
        self.killer = None

    def __getattr__(self, name):
        return self.fields.get("in" if name == "around" else name, "")

    @property
    def place(self):
        return f"{self.table}:{self.line}"

    @property
    def room(self):
        parts = self.file.split("/")
        if parts[0] == "src":
            window = re.match(r"(frm|dlg|Disegno|main\.cpp)", parts[-1])
            if parts[1:3] == ["platform", "qt"] or parts[1] == "widgets" or window:
                return "windows", "/".join(parts[1:-1]) or "main"
            return "logic", parts[1]
        return ("tools" if parts[0] == "tools" else "logic"), "/".join(parts[:-1])

    @property
    def key(self):
        text = "\0".join((self.file, self.around, self.was, self.now))
        return hashlib.sha256(text.encode()).hexdigest()[:16]


def fail(text):
    sys.exit(f"faults: {text}")


def read_tables():
    found = []
    for table in sorted((ROOT / "tests/faults").glob("*.faults")):
        file = fault = None
        for line, text in enumerate(table.read_text().split("\n"), 1):
            name, _, value = text.partition(":")
            if not text.strip() or text.startswith("#"):
                continue
            if name not in KEYS:
                file, fault = text.strip(), None
                if not (ROOT / file).is_file():
                    fail(f"{table.name}:{line}: there is no {file}")
                continue
            if name == "harm":
                fault = Fault(table.name, line, file)
                found.append(fault)
            if fault is None or file is None or name in fault.fields:
                fail(f"{table.name}:{line}: {name} stands where it belongs to nothing")
            fault.fields[name] = value.strip()
    for number, fault in enumerate(found, 1):
        fault.number = number
        if not fault.harm or not fault.was or "now" not in fault.fields or fault.was == fault.now:
            fail(f"{fault.place}: needs harm, was and a now that differs")
        if not fault.now and not is_statement(fault.was):
            fail(f"{fault.place}: nothing can't stand for an expression")
        if not fault.build and not all(balanced(text) for text in (fault.was, fault.now)):
            fail(f"{fault.place}: a bracket without its other one")
    if sum(bool(fault.build) for fault in found) > OWN_BUILDS:
        fail(f"more than {OWN_BUILDS} entries with a build of their own")
    return found


def balanced(text):
    text = re.sub(r'"(\\.|[^"])*"|\'(\\.|[^\'])*\'', "", text)
    return all(text.count(one) == text.count(other) for one, other in ("()", "[]", "{}"))


def is_statement(text):
    return text.endswith((";", "}"))


def pattern(text):
    tokens = re.findall(r"\w+|[^\w\s]", text)
    joined = r"\s*".join(re.escape(token) for token in tokens)
    return re.compile((r"(?<!\w)" if tokens[0][0].isalnum() else "") + joined
                      + (r"(?!\w)" if tokens[-1][-1].isalnum() else ""))


def once(fault, what, text, start, end):
    hits = list(pattern(what).finditer(text, start, end))
    if len(hits) != 1:
        fail(f"{fault.place}: stands {len(hits)} times in {fault.file}: {what}")
    return hits[0].span()


def span_of(fault, text):
    start, end = once(fault, fault.around, text, 0, len(text)) if fault.around else (0, len(text))
    return once(fault, fault.was, text, start, end)


def switched(text, spans):
    """The text with every fault of `spans` [(start, end, fault)] behind its switch."""
    def render(start, end, inside):
        out, at = "", start
        inside = sorted(inside, key=lambda one: (one[0], -one[1], one[2].number))
        while inside:
            first, last, fault = inside.pop(0)
            held = [one for one in inside if one[0] < last]
            inside = inside[len(held):]
            if any(one[1] > last for one in held):
                fail(f"{fault.place}: overlaps {[one[2].place for one in held if one[1] > last][0]}")
            was = render(first, last, held)
            on = f"::faults::On({fault.number})"
            out += text[at:first]
            if is_statement(fault.was):
                out += f"if ({on}) {{ {fault.now} }} else {{ {was} }}"
            else:
                out += f"({on} ? ({fault.now}) : ({was}))"
            at = last
        return out + text[at:end]

    return '#include "faults/Switch.h"\n' + render(0, len(text), spans)


def planted(faults, alone=None):
    """File -> text: `faults` behind their switches, or the one fault `alone` as it stands."""
    files = {}
    for file in sorted({fault.file for fault in faults}):
        text = (ROOT / file).read_text()
        if alone:
            start, end = span_of(alone, text)
            files[file] = text[:start] + alone.now + text[end:]
        else:
            files[file] = switched(text, [(*span_of(one, text), one) for one in faults if one.file == file])
    return files


def write_if_new(path, data):
    if path.is_file() and path.read_bytes() == data:
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(data)


def copy_tree(files):
    """The tree as it stands in the working copy, with the texts of `files` in place of its own."""
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT, check=True,
                            capture_output=True, text=True).stdout.split("\0")
    kept = {name for name in listed if name and (ROOT / name).is_file()}
    for name in kept:
        data = files[name].encode() if name in files else (ROOT / name).read_bytes()
        write_if_new(TREE / name, data)
        if (ROOT / name).stat().st_mode & 0o100:
            (TREE / name).chmod(0o755)
    write_if_new(TREE / "src/faults/Switch.h", (ROOT / "tests/faults/Switch.h").read_bytes())
    kept.add("src/faults/Switch.h")
    for path in TREE.rglob("*"):
        name = path.relative_to(TREE)
        if path.is_file() and name.parts[0] != "build" and str(name) not in kept:
            path.unlink()


def run_or_fail(command, log):
    with open(log, "w") as out:
        if subprocess.run(command, cwd=TREE, stdout=out, stderr=subprocess.STDOUT).returncode:
            lines = open(log, errors="replace").readlines()
            sys.stderr.write("".join([line for line in lines if "error: " in line] or lines[-40:]))
            fail(f"{command[0]} failed, the whole of it is in {log}")


def build():
    if not (BUILD / "build.ninja").is_file():
        # A fault need not be good style: nothing is warned of.
        run_or_fail(["cmake", "--preset", "release", "-DLAPVANE_BENCH=OFF", "-DCMAKE_CXX_FLAGS=-w"],
                    WORK / "configure.log")
    run_or_fail(["cmake", "--build", str(BUILD), "--target", *SUITES.values(), "lapvane_data",
                 "--", "-k", "0"],
                WORK / "build.log")


def run_suite(suite, number, only=None):
    """None when all tests passed, else the name of the test that failed, or what happened."""
    environment = dict(os.environ, LAPVANE_FAULT=str(number), QT_QPA_PLATFORM="offscreen")
    if os.access("/dev/shm", os.W_OK):
        environment["TMPDIR"] = "/dev/shm"  # most of a suite's time is a disk that is waited for
    command = [str(BUILD / "bin" / SUITES[suite]), "--gtest_brief=1", "--gtest_fail_fast"]
    if only:
        command.append(f"--gtest_filter={only}")

    def limits():
        resource.setrlimit(resource.RLIMIT_AS, (6 << 30, 6 << 30))
        resource.setrlimit(resource.RLIMIT_CPU, (PROCESSOR, PROCESSOR))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    with tempfile.TemporaryFile() as out:
        process = subprocess.Popen(command, cwd=BUILD / "tests", env=environment, stdin=subprocess.DEVNULL,
                                   stdout=out, stderr=subprocess.STDOUT, preexec_fn=limits,
                                   start_new_session=True)
        try:
            code = process.wait(LIMIT[suite])
        except subprocess.TimeoutExpired:
            code = -signal.SIGKILL
        # What a test has started and could not end goes with it.
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, signal.SIGKILL)
        process.wait()
        out.seek(0)
        said = out.read().decode(errors="replace")
    if code in (-signal.SIGXCPU, -signal.SIGKILL):
        return "does not end"
    if code == 0:
        return None
    named = re.search(r"\[  FAILED  \] (\w+[./]\w+)", said)
    return named.group(1) if named else f"ends with {code}"


def try_fault(fault, known):
    """Sets what kills the fault: the suite of its own side runs first, a known killer before all."""
    number = 0 if fault.build else fault.number
    order = ["windows", "logic"] if fault.room[0] == "windows" else ["logic", "windows"]
    hint = known.get(fault.key)
    if hint:
        suite, _, test = hint.partition(" ")
        if "." in test and run_suite(suite, number, test):
            fault.killer = hint
            return
    for suite in order:
        found = run_suite(suite, number)
        if found:
            fault.killer = f"{suite} {found}"
            with open(WORK / "killers.txt", "a") as killers:
                killers.write(f"{fault.key}\t{fault.killer}\n")
            return


def chosen_ten(faults, commit):
    pool = [fault for fault in faults if not fault.build and not fault.equal]
    return sorted(pool, key=lambda one: hashlib.sha256((commit + one.key).encode()).hexdigest())[:10]


def run_all(faults, jobs):
    killers = WORK / "killers.txt"
    known = dict(line.split("\t") for line in killers.read_text().splitlines()) if killers.is_file() else {}
    together = [fault for fault in faults if not fault.build]
    copy_tree(planted(together))
    build()
    for suite in SUITES:
        found = run_suite(suite, 0)
        if found:
            fail(f"without any fault {found} of the {suite} tests fails")
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for done, _ in enumerate(pool.map(lambda one: try_fault(one, known), together), 1):
            if sys.stderr.isatty():
                print(f"\r{done} of {len(together)}", end="", file=sys.stderr)
    for fault in faults:
        if fault.build:
            copy_tree(planted([fault], alone=fault))
            build()
            try_fault(fault, known)


def report(faults):
    rooms = defaultdict(lambda: [0, 0])
    for fault in faults:
        if fault.equal:
            if fault.killer:
                print(f"{fault.place}: said to be equal, but {fault.killer} fails")
            continue
        for room in (fault.room, (fault.room[0], "all")):
            rooms[room][0] += 1
            rooms[room][1] += bool(fault.killer)
    print(f"{'room':32} {'faults':>6} {'killed':>6} {'in 100':>6}")
    for (side, room), (count, killed) in sorted(rooms.items(), key=lambda one: (one[0][0], one[0][1] == "all",
                                                                               one[0][1])):
        print(f"{side + ' ' + room:32} {count:6} {killed:6} {100 * killed / count:6.1f}")
    survivors = [fault for fault in faults if not fault.killer and not fault.equal]
    for fault in survivors:
        print(f"\n{fault.place}  {fault.file}\n  {fault.harm}\n  was {fault.was}\n  now {fault.now or '(nothing)'}"
              + (f"\n  known: {fault.lives}" if fault.lives else ""))
    for fault in faults:
        if fault.lives and fault.killer:
            print(f"\n{fault.place}: listed as a survivor, {fault.killer} kills it now")
    return [fault for fault in survivors if not fault.lives]


def main():
    options = argparse.ArgumentParser(description="Plants faults and runs the tests on each.")
    options.add_argument("--check", action="store_true", help="only see that every entry still applies")
    options.add_argument("--ten", metavar="COMMIT", help="ten entries, chosen by this text")
    options.add_argument("--only", metavar="TEXT", help="entries whose table, file or harm holds this text")
    options.add_argument("--jobs", type=int, default=2 * (os.cpu_count() or 1))
    options.add_argument("--killers", action="store_true", help="print what killed each")
    options.add_argument("--fresh", action="store_true", help="forget which test killed what")
    chosen = options.parse_args()
    faults = read_tables()
    planted([fault for fault in faults if not fault.build])
    for fault in faults:
        if fault.build:
            planted([fault], alone=fault)
    print(f"{len(faults)} faults, {sum(bool(one.equal) for one in faults)} of them equal to the code")
    if chosen.check:
        return
    if chosen.ten:
        faults = chosen_ten(faults, chosen.ten)
    if chosen.only:
        faults = [one for one in faults if chosen.only in f"{one.table} {one.file} {one.harm}"]
    WORK.mkdir(parents=True, exist_ok=True)
    if chosen.fresh:
        (WORK / "killers.txt").unlink(missing_ok=True)
    started = time.time()
    run_all(faults, chosen.jobs)
    if chosen.killers:
        for fault in faults:
            print(f"{fault.place}: {fault.killer or 'lives'}")
    unknown = report(faults)
    print(f"\n{time.time() - started:.0f} s")
    if unknown:
        fail(f"{len(unknown)} live that are not listed as known")


if __name__ == "__main__":
    main()
