#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The K520 authors
"""Measures what the tests notice: makes small changes to the core, one at a time, builds each, and
runs the tests over it until one fails.

    tools/mutate.py --seed 1 --count 50 --cli

A change is one operator, one constant, one condition or one call. It is made in a copy of the last
commit, so the sources here are never touched. The same seed gives the same changes as long as src
is the same. "Not caught" has to be judged by hand: either a test is missing, or the change means
the same. Window files are not changed, and the tests of the windows are run only with --windows,
after all others. With --quick a search for weak places takes less time: what it says is not caught
may be caught by the replays or the faults. A failure counts when the test fails again, alone: on a
busy machine some fail for want of time.
"""

import argparse
import hashlib
import json
import os
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
# The folders of the core, from the ground up: none includes one that comes after it.
FOLDERS = (
    "base", "app", "image", "settings", "channels", "memview", "document",
    "link/port", "link/simulator", "link/protocol", "link/session", "program",
)  # fmt: skip


def tests_of(folder):
    return f"k520_{folder.replace('/', '_')}_tests"


# Quick ones first; a test belongs to the first pattern of its program that takes it.
STEPS = (
    *((tests_of(folder), "-*Faults.*") for folder in FOLDERS),
    ("k520_cli_tests", "Contract*"),
    ("replays", ""),
    ("k520_cli_tests", "-Contract*"),
    ("k520_link_session_tests", "*Faults.*"),
    ("k520_fault_tests", "*"),
    ("k520_program_fault_tests", "*"),
    ("k520_house_tests", "*"),
)
WINDOWS = ("k520_desktop_tests", "*")
SLOW = {"replays", "k520_fault_tests", "k520_program_fault_tests"}  # --quick leaves them out
MOST_REPEATS = 3  # of tests that fail and then do not
REPLAYS = ("link", "image", "edit", "session", "startUp", "profile", "csv", "commandLine", "radio")
MOST_MEMORY = 4 << 30
LEAST_PATIENCE = 30  # seconds for one test program
PATIENCE = 6  # times what the program takes without a change

# Operators stand between blanks, or before the end of a line: so no template or reference is taken.
OPERATORS = {
    "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"),
    "==": ("!=",), "!=": ("==",), "&&": ("||",), "||": ("&&",),
    "+": ("-",), "-": ("+",), "+=": ("-=",), "-=": ("+=",),
}  # fmt: skip
OPERATOR = re.compile(r"(?<= )(?:<=|>=|==|!=|&&|\|\||\+=|-=|[<>+-])(?=[ \n])")
NUMBER = re.compile(r"(?<![\w.'])(?:0[xX][0-9a-fA-F']+|[0-9][0-9']*)(?=[uUlL]*(?![\w.']))")
TRUTH = re.compile(r"\b(?:true|false)\b")
CONDITION = re.compile(r"\b(?:if|while) \(")
CALL = re.compile(r"(?<=[;{}):])\s*\n[ ]+(?=[A-Za-z_])[\w:.\[\]>-]*\w\(")
NO_CALL = re.compile(r"(?:if|for|while|switch|return|throw|static_assert|sizeof|catch)\b")
# What a mask leaves blank: comments, texts, characters and lines for the preprocessor.
MASKED = re.compile(
    r"""//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'|^[ ]*\#[^\n]*""",
    re.DOTALL | re.MULTILINE,
)


@dataclass(frozen=True)
class Change:
    """One small change to a file: what stands from `start` to `end` becomes `new`."""

    file: str
    line: int
    start: int
    end: int
    old: str
    new: str

    def words(self):
        """What is changed, for a cell of the report's table."""
        if not self.new.strip(";"):
            return f"`{one_line(self.old)}` left out"
        return f"`{one_line(self.old)}` to `{one_line(self.new)}`"


@dataclass
class Step:
    """A test program with the tests that it is to run, and how many seconds it may take."""

    program: str
    pattern: str = ""  # of the test framework; "" where the program knows none
    patience: float = 600


def one_line(text):
    text = " ".join(text.split())
    text = text if len(text) <= 60 else text[:57] + "..."
    return text.replace("|", "\\|")


def masked(source):
    """The source with everything blank that is not code; places stay."""
    return MASKED.sub(lambda found: re.sub(r"[^\n]", " ", found.group()), source)


def closing(code, opening):
    """The place of the bracket that closes the one at `opening`."""
    depth = 0
    for place in range(opening, len(code)):
        depth += {"(": 1, ")": -1}.get(code[place], 0)
        if depth == 0:
            return place
    raise ValueError("a bracket is never closed")


def operator_changes(code):
    for found in OPERATOR.finditer(code):
        if not code[code.rfind("\n", 0, found.start()) + 1 :].lstrip().startswith("template"):
            for new in OPERATORS[found.group()]:
                yield found.start(), found.end(), new


def constant_changes(code):
    for found in NUMBER.finditer(code):
        digits = found.group().replace("'", "")
        base = 16 if digits[:2].lower() == "0x" else 10
        for value in (int(digits, base) + 1, int(digits, base) - 1):
            if value >= 0:
                yield found.start(), found.end(), f"0x{value:X}" if base == 16 else str(value)
    for found in TRUTH.finditer(code):
        yield found.start(), found.end(), "false" if found.group() == "true" else "true"


def condition_changes(code):
    for found in CONDITION.finditer(code):
        first, end = found.end(), closing(code, found.end() - 1)
        # After a declaration the condition comes last; a declaration alone cannot be negated.
        first = code.rfind(";", first, end) + 1 or first
        if not re.search(r"[^=!<>]=[^=]", code[first:end]):
            yield first, end, None


def call_changes(code):
    for found in CALL.finditer(code):
        start = code.rindex("\n", found.start(), found.end()) + 1
        start += len(code[start:]) - len(code[start:].lstrip(" "))
        end = closing(code, found.end() - 1) + 1
        # Calls in a row, as in a.b().c();
        while chained := re.match(r"\s*(?:\.|->)\w+\(", code[end:]):
            end = closing(code, end + chained.end() - 1) + 1
        if code[end : end + 1] == ";" and not NO_CALL.match(code, start):
            yield start, end + 1, ";"


def changes_of(file, source):
    """Every change that a source can be given."""
    code = masked(source)
    for maker in (operator_changes, constant_changes, condition_changes, call_changes):
        for start, end, new in maker(code):
            old = source[start:end]
            new = f"!({old.strip()})" if new is None else new
            yield Change(file, source.count("\n", 0, start) + 1, start, end, old, new)


def sample(tree, files, seed, count):
    """Random lines, one change for each."""
    lines = {}
    for file in sorted(files):
        for change in changes_of(file, (tree / file).read_text(encoding="utf-8")):
            lines.setdefault((file, change.line), []).append(change)
    chooser = random.Random(seed)
    chosen = chooser.sample(sorted(lines), min(count, len(lines)))
    return [chooser.choice(lines[line]) for line in chosen], len(lines)


class Workshop:
    """A copy of the last commit with a build of its own."""

    def __init__(self, folder, with_cli, steps, with_windows):
        self.tree = folder / "tree"
        self.build = folder / "build"
        self.home = folder / "home"
        self.with_cli = with_cli
        self.with_windows = with_windows
        self.log = folder / "build.log"
        self.digests = {}  # of the objects without a change
        self.steps = []
        for program, pattern in steps:
            if program == "replays":
                self.steps += [Step(f"replay_{name}") for name in REPLAYS]
            else:
                self.steps.append(Step(program, pattern))

    def leave_out(self, pattern):
        """Runs no test of a pattern."""
        for step in self.steps:
            if step.pattern and pattern:
                step.pattern = without(step.pattern, pattern)

    def arguments_of(self, step, pattern):
        if not step.pattern:
            return [str(self.tree / "fuzz" / "corpus" / step.program.removeprefix("replay_"))]
        return ["--gtest_brief=1", "--gtest_fail_fast", f"--gtest_filter={pattern}"]

    def git(self, *words):
        subprocess.run(["git", "-C", str(self.tree), *words], check=True, stdout=subprocess.DEVNULL)

    def prepare(self):
        """Brings copy and build to the last commit, and returns its name."""
        command = ["git", "-C", str(ROOT), "rev-parse", "HEAD"]
        commit = subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()
        if not self.tree.exists():
            self.tree.parent.mkdir(parents=True, exist_ok=True)
            clone = ["git", "clone", "--quiet", "--shared", "--no-checkout"]
            subprocess.run([*clone, str(ROOT), str(self.tree)], check=True)
        self.git("fetch", "--quiet", str(ROOT), commit)
        self.git("checkout", "--quiet", "--force", "--detach", commit)
        if self.with_windows or not (self.build / "build.ninja").exists():
            self.configure()
        return commit

    def configure(self):
        # What matters is the time from a change to a verdict.
        command = ["cmake", "-G", "Ninja", "-S", str(self.tree), "-B", str(self.build)]
        command += ["-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -g0"]
        windows = "ON" if self.with_windows else "OFF"
        command += [f"-DK520_BUILD_DESKTOP={windows}", "-DK520_WERROR=OFF"]
        if shutil.which("mold"):
            command.append("-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=mold")
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)

    def make(self, *targets, jobs=1):
        with self.log.open("w", encoding="utf-8") as log:
            command = ["ninja", "-C", str(self.build), "-j", str(jobs), *targets]
            return subprocess.run(command, stdout=log, stderr=log, check=False).returncode == 0

    def compiled(self):
        """The sources that can be changed, and the object of each."""
        text = (self.build / "compile_commands.json").read_text(encoding="utf-8")
        objects = {}
        for entry in json.loads(text):
            file = Path(entry["file"]).relative_to(self.tree)
            name = str(file)
            outside = not name.startswith("src/") or name.startswith("src/desktop/")
            if outside or re.search(r"Texts\.cpp$|/main\.cpp$", name):
                continue
            if self.with_cli or not name.startswith("src/cli/"):
                output = re.search(r" -o (\S+)", entry["command"]).group(1)
                objects[name] = self.build / output
        return objects

    def run(self, step):
        """Runs a step: "" when it passes, or else which test fails, and fails again."""
        pattern = step.pattern
        for _ in range(MOST_REPEATS):
            failure = self.run_once(step, pattern)
            test = failure.removeprefix(f"{step.program}: ")
            if not failure or not step.pattern or not re.fullmatch(r"[\w/]+\.[\w/]+", test):
                return failure
            if failure := self.run_once(step, test):
                return failure
            pattern = without(pattern, test)
        return self.run_once(step, pattern)

    def run_once(self, step, pattern):
        shutil.rmtree(self.home, ignore_errors=True)
        self.home.mkdir(parents=True)
        environment = dict(os.environ, HOME=str(self.home), TMPDIR=str(self.home))
        environment["QT_QPA_PLATFORM"] = "offscreen"
        path = self.build / "bin" / step.program
        with subprocess.Popen(
            [str(path), *self.arguments_of(step, pattern)],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
            env=environment, cwd=self.home, start_new_session=True, preexec_fn=limit,
        ) as process:  # fmt: skip
            try:
                output = process.communicate(timeout=step.patience)[0]
            except subprocess.TimeoutExpired:
                return f"{step.program}: does not end"
            finally:
                end_group(process.pid)
        return "" if process.returncode == 0 else f"{step.program}: {failure_in(output)}"

    def check_unchanged(self, jobs):
        """Builds and runs everything without a change, which has to pass."""
        print("Building without a change", file=sys.stderr, flush=True)
        programs = {step.program for step in self.steps}
        if not self.make("k520-cli", *sorted(programs), jobs=jobs):
            sys.exit(f"It does not build: see {self.log}")
        self.digests = {target: digest(target) for target in self.compiled().values()}
        for step in self.steps:
            begin = time.monotonic()
            if failure := self.run(step):
                sys.exit(f"The tests fail without a change: {failure}")
            took = time.monotonic() - begin
            step.patience = max(LEAST_PATIENCE, PATIENCE * took)
            print(f"{step.program} {step.pattern}: {took:.1f} s", file=sys.stderr, flush=True)

    def verdict(self, change, target):
        """What becomes of a change."""
        path = self.tree / change.file
        source = path.read_bytes()
        text = source.decode("utf-8")
        try:
            path.write_text(text[: change.start] + change.new + text[change.end :], "utf-8")
            if not self.make(str(target.relative_to(self.build))):
                return "did not compile", ""
            if digest(target) == self.digests[target]:
                return "means the same", "the same object"
            return self.tested(change)
        finally:
            path.write_bytes(source)

    def tested(self, change):
        below = untouched_by(change.file)
        for step in self.steps:
            if step.program in below:
                continue
            if not self.make(*self.targets_of(step)):
                return "did not compile", ""
            if failure := self.run(step):
                return "caught", failure
        return "not caught", ""

    def targets_of(self, step):
        if not step.pattern:
            # All replays are wanted soon after the first.
            return [other.program for other in self.steps if not other.pattern]
        return [step.program, "k520-cli"] if step.program == "k520_cli_tests" else [step.program]


def untouched_by(file):
    """The tests of the folders below that of a file, which do not link it."""
    folder = file.removeprefix("src/").rpartition("/")[0].removesuffix("/posix")
    below = FOLDERS[: FOLDERS.index(folder)] if folder in FOLDERS else FOLDERS
    return {tests_of(other) for other in below}


def without(pattern, other):
    """A pattern of tests less those of another one."""
    return pattern + (":" if "-" in pattern else "-") + other


def limit():
    """In the test's process: an endless loop must not take all memory."""
    resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def end_group(leader):
    """Ends what a test program has started and left running."""
    try:
        os.killpg(leader, signal.SIGKILL)
    except ProcessLookupError:
        pass


def failure_in(output):
    text = output.decode("utf-8", "replace")
    found = re.search(r"\[  FAILED  \] ([\w./]+)", text)
    # A program that crashed names nobody: the last line is what it did last.
    return found.group(1) if found else "crashed: " + one_line((text.splitlines() or [""])[-1])


def digest(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def report(results, lines, commit, arguments):
    """The table, the count, and the changes to judge."""
    counts = {}
    print("| place | change | outcome | by |\n| --- | --- | --- | --- |")
    for change, (outcome, by) in results:
        counts[outcome] = counts.get(outcome, 0) + 1
        print(f"| {change.file}:{change.line} | {change.words()} | {outcome} | {by} |")
    caught, missed = counts.get("caught", 0), counts.get("not caught", 0)
    print(f"\nCommit {commit[:12]}, seed {arguments.seed}, {len(results)} of {lines} lines.")
    same, broken = counts.get("means the same", 0), counts.get("did not compile", 0)
    print(f"Caught: {caught} of {caught + missed}. Did not compile: {broken}; same object: {same}.")


def options():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n", maxsplit=1)[0])
    parser.add_argument("--seed", type=int, default=1, help="chooses the changes (default 1)")
    parser.add_argument("--count", type=int, default=20, help="how many (default 20)")
    parser.add_argument("--cli", action="store_true", help="change src/cli, too")
    parser.add_argument("--numbers", help="only these of the sample, counted from 1: 3,17")
    parser.add_argument("--leave-out", default="", metavar="PATTERN",
                        help="tests not to run, such as 'ProgramFaults.*'")
    parser.add_argument("--quick", action="store_true", help="no replays and no faults")
    parser.add_argument("--windows", action="store_true", help="the tests of the windows, too")
    parser.add_argument("--list", action="store_true", help="only say what would be changed")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="for the first build")
    parser.add_argument("--build", type=Path, default=ROOT / "build" / "mutants",
                        help="folder for the copy and its build (default build/mutants)")
    return parser.parse_args()


def main():
    arguments = options()
    for number in (signal.SIGINT, signal.SIGTERM):
        signal.signal(number, signal.default_int_handler)
    steps = [step for step in STEPS if not (arguments.quick and step[0] in SLOW)]
    steps += [WINDOWS] if arguments.windows else []
    workshop = Workshop(arguments.build.resolve(), arguments.cli, steps, arguments.windows)
    commit = workshop.prepare()
    objects = workshop.compiled()
    changes, lines = sample(workshop.tree, objects, arguments.seed, arguments.count)
    if arguments.numbers:
        changes = [changes[int(number) - 1] for number in arguments.numbers.split(",")]
    if arguments.list:
        for number, change in enumerate(changes, 1):
            print(f"{number:3} {change.file}:{change.line} {change.words()}")
        return
    workshop.leave_out(arguments.leave_out)
    workshop.check_unchanged(arguments.jobs)
    results = []
    try:
        for number, change in enumerate(changes, 1):
            begin = time.monotonic()
            outcome = workshop.verdict(change, objects[change.file])
            results.append((change, outcome))
            print(f"{number}/{len(changes)} {change.file}:{change.line} {change.words()}: "
                  f"{' '.join(outcome)} ({time.monotonic() - begin:.0f} s)",
                  file=sys.stderr, flush=True)
    except KeyboardInterrupt:
        print("Stopped.", file=sys.stderr)
    report(results, lines, commit, arguments)


if __name__ == "__main__":
    main()
