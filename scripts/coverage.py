"""Prints the covered lines of each folder; lists the others. Arguments: gcovr's JSON, the list."""
import collections
import json
import pathlib
import sys

report, listing = sys.argv[1:]
totals = collections.defaultdict(lambda: [0, 0])
missing = []
for file in json.loads(pathlib.Path(report).read_text())["files"]:
    path = pathlib.Path(file["file"])
    # A line of a template or of an inline function comes once for each of its instances.
    counts = collections.defaultdict(int)
    for line in file["lines"]:
        if not line.get("gcovr/noncode"):
            counts[line["line_number"]] += line["count"]
    text = path.read_text(encoding="utf-8").splitlines()
    for number, count in sorted(counts.items()):
        totals[str(path.parent)][0] += count > 0
        totals[str(path.parent)][1] += 1
        if count == 0:
            missing.append(f"{path}:{number}: {text[number - 1].strip()}")

pathlib.Path(listing).write_text("".join(line + "\n" for line in missing), encoding="utf-8")
print(f"{'folder':20} {'lines':>6} {'run':>6} {'share':>8}")
for folder, (run, lines) in sorted(totals.items()):
    print(f"{folder:20} {lines:6} {run:6} {run / lines:8.1%}")
run, lines = (sum(column) for column in zip(*totals.values()))
print(f"{'logic':20} {lines:6} {run:6} {run / lines:8.1%}")
print(f"What no test runs: {listing}")
