#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks the code blocks and links of the pages: check_blocks.py TOOL LIBRARY PAGE...

A block is one of these, by its language and content:
- a run of lines of a file in examples/, tests/package/ or bench/values/, whatever its
  indentation;
- `console`, or `diff` that begins with "$ ": commands, each with its output, which is compared;
- `sh`: commands; those that call confgrove are run and must succeed, and each script that is named
  must exist;
- `cpp`: a program, or the inside of a main function, in which `config` is app.cfg unless it makes one
  itself: it is compiled and run. A `text` block right behind it is its output; a `diff` block is what
  it changes in a file;
- `cfg`: a file that `confgrove check` finds nothing to say about;
- `json`: an object, or what stands between its braces.
The blocks of the chapter Messages of format.md are the examples of confgrove explain, which
tests/tool/problems_test.sh runs. A block without language is output, or a console block if it begins with "$ ". All blocks of a page
are run in one directory. It begins with the files of examples/tidewatch and tests/docs/PAGE, and gets
those of tests/docs/PAGE/N before the block N, counted from 1. All of them were last changed at
2024-02-03 04:05:06.
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import textwrap
import time
from dataclasses import dataclass

ROOT = pathlib.Path(__file__).resolve().parent.parent
UNCHECKED = ("vim",)
EXPLAINED = ("format.md", "Messages")
FILE_TIME = time.mktime((2024, 2, 3, 4, 5, 6, 0, 0, -1))


@dataclass
class Block:
    page: pathlib.Path
    line: int
    language: str
    text: str
    adjoins: bool  # the block before it ends just above
    chapter: str

    def place(self):
        return f"{self.page}:{self.line}"


class Failures:
    def __init__(self):
        self.count = 0

    def add(self, place, reason, detail=""):
        self.count += 1
        print(f"{place}: {reason}", file=sys.stderr)
        if detail:
            print(textwrap.indent(detail, "    "), file=sys.stderr)


def blocks_of(page, text):
    found, language, lines, start, last_end, chapter = [], None, [], 0, -10, ""
    for number, line in enumerate(text.split("\n"), 1):
        fence = re.match(r"^ {0,3}```(\w*)\s*$", line)
        if fence and language is None:
            language, lines, start = fence[1], [], number
        elif fence:
            body = "".join(f"{one}\n" for one in lines)
            found.append(Block(page, start, language, body, start - last_end <= 2, chapter))
            language, last_end = None, number
        elif language is not None:
            lines.append(line)
        elif line.startswith("## "):
            chapter = line[3:]
    return found


def normal(text):
    """Without the indentation that all lines share, tabs kept."""
    return textwrap.dedent(text).strip("\n") + "\n"


def sample_files():
    paths = [p for d in ("examples", "tests/package", "bench/values") for p in (ROOT / d).rglob("*") if p.is_file()]
    return [f"\n{p.read_bytes().decode('latin-1')}" for p in paths]


def is_sample(block, files):
    text = block.text.encode().decode("latin-1")
    if any(f"\n{text}" in content for content in files):
        return True
    # The inside of a function, say, stands further to the right in its file.
    for indent in ("  ", "    ", "\t"):
        moved = "".join(indent + line if line.strip() else line for line in text.splitlines(True))
        if any(f"\n{moved}" in content for content in files):
            return True
    return False


class Page:
    """Runs the blocks of one page in its directory."""

    def __init__(self, work, tool, library, failures):
        self.work, self.library, self.failures = work, library, failures
        self.environment = dict(os.environ, PATH=f"{pathlib.Path(tool).parent}:{os.environ['PATH']}",
                                LC_ALL="C.UTF-8")

    def run(self, command):
        return subprocess.run(command, cwd=self.work, env=self.environment, text=True, timeout=120,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, errors="surrogateescape", check=False)

    def compare(self, block, wanted, found):
        if wanted.rstrip("\n") != found.rstrip("\n"):
            self.failures.add(block.place(), "the output is another", found)

    def console(self, block):
        command, wanted, here = None, [], None
        for line in block.text.splitlines() + ["$ true"]:
            if here is not None:  # what the command reads
                command += "\n" + line
                here = None if line == here else here
            elif not line.startswith("$ "):
                wanted.append(line)
            else:
                if command is not None:
                    self.compare(block, "\n".join(wanted), self.run(["bash", "-c", command]).stdout)
                command, wanted = line[2:], []
                marker = re.search(r"<<'(\w+)'", command)
                here = marker[1] if marker else None

    def shell(self, block):
        for line in block.text.splitlines():
            words = line.split()
            if words and words[0].startswith(("scripts/", ".ci/")) and not (ROOT / words[0]).is_file():
                self.failures.add(block.place(), f"there is no {words[0]}")
            if words and words[0] == "confgrove":
                done = self.run(["bash", "-c", line])
                if done.returncode != 0:
                    self.failures.add(block.place(), f"exit code {done.returncode}: {line}", done.stdout)

    def program_of(self, block):
        if "int main(" in block.text:
            return block.text
        body = "".join(x for x in block.text.splitlines(True) if not x.startswith("#include"))
        headers = [f"confgrove/{p.name}" for p in sorted((ROOT / "include/confgrove").glob("*.h"))]
        headers += ["cstdio", "iostream", "memory", "string", "vector"]
        opening = 'std::unique_ptr<Config> config(ConfCreate("app", ConfCreateOpen));\n'
        if re.search(r"\bconfig\(", body):
            opening = ""
        includes = "".join(f"#include <{name}>\n" for name in headers)
        return f"{includes}int main() {{\n{opening}{body}}}\n"

    def texts(self):
        return {p.name: p.read_bytes() for p in self.work.glob("*.cfg")}

    def changed(self, block, before):
        """Whether a file of the directory has changed as the diff in `block` tells."""
        old, new = ("".join(line[1:] for line in block.text.splitlines(True) if line[0] in marks)
                    for marks in (" -", " +"))
        after = self.texts()
        if not any(text.decode("latin-1").replace(old, new, 1).encode("latin-1") == after.get(name)
                   for name, text in before.items() if old in text.decode("latin-1")):
            self.failures.add(block.place(), "no file has changed so")

    def cpp(self, block, result):
        (self.work / "block.cpp").write_text(self.program_of(block))
        built = self.run(["g++", "-std=c++17", "-Wall", "-Wextra", "-Wno-unused-variable", "-I",
                          str(ROOT / "include"), "block.cpp", self.library, "-o", "block"])
        if built.returncode != 0:
            self.failures.add(block.place(), "doesn't compile", built.stdout)
            return
        before = self.texts()
        done = self.run(["./block"])
        if done.returncode != 0:
            self.failures.add(block.place(), f"exit code {done.returncode}", done.stdout)
        elif result is not None and result.language == "diff":
            self.changed(result, before)
        elif result is not None:
            self.compare(result, result.text, done.stdout)

    def cfg(self, block):
        (self.work / "block.cfg").write_text(block.text)
        done = self.run(["confgrove", "check", "block.cfg"])
        if done.returncode != 0 or done.stdout:
            self.failures.add(block.place(), "confgrove check has something to say", done.stdout)

    def json(self, block):
        for text in (block.text, "{" + block.text + "}"):
            try:
                json.loads(text)
                return
            except ValueError:
                pass
        self.failures.add(block.place(), "no JSON")


def lay_out(directory, work):
    """Copies the files of a directory, not those below it, where the page's blocks are run."""
    for file in directory.iterdir() if directory.is_dir() else ():
        if file.is_file():
            shutil.copy(file, work)
            os.utime(work / file.name, (FILE_TIME, FILE_TIME))


def kind_of(block):
    if block.text.startswith("$ ") and block.language in ("", "diff"):
        return "console"
    return block.language or "output"


def check_blocks(page, blocks, files, tool, library, failures, counts):
    with tempfile.TemporaryDirectory() as directory:
        work, given = pathlib.Path(directory), ROOT / "tests/docs" / page.stem
        lay_out(ROOT / "examples/tidewatch", work)
        lay_out(given, work)
        runner = Page(work, tool, library, failures)
        runs = {"console": runner.console, "sh": runner.shell, "cfg": runner.cfg, "json": runner.json}
        before = None  # the kind of the block above, if this one is right behind it
        for number, block in enumerate(blocks, 1):
            lay_out(given / str(number), work)
            kind = kind_of(block)
            behind_code = before == "cpp" and block.adjoins
            if (page.name, block.chapter) == EXPLAINED:
                kind = "of explain"
            elif kind in UNCHECKED:
                kind += " (unchecked)"
            elif kind not in ("console", "sh") and is_sample(block, files):
                kind = "of a file"
            elif kind == "cpp":
                follower = blocks[number] if number < len(blocks) else None
                shown = follower and follower.adjoins and kind_of(follower) in ("output", "text", "diff")
                runner.cpp(block, follower if shown else None)
            elif kind in runs:
                runs[kind](block)
            elif not (behind_code and kind in ("output", "text", "diff")):
                failures.add(block.place(), f"a block of '{kind}' that nothing checks")
            counts[kind] = counts.get(kind, 0) + 1
            before = kind


def anchors_of(text):
    text = re.sub(r"^```.*?^```", "", text, flags=re.M | re.S)
    anchors = set()
    for heading in re.findall(r"^#{1,6} +(.*?) *$", text, flags=re.M):
        plain = re.sub(r"[`*]|\[([^]]*)\]\([^)]*\)", r"\1", heading).lower()
        anchors.add(re.sub(r" ", "-", re.sub(r"[^\w\- ]", "", plain)))
    return anchors


def check_links(page, text, failures):
    count = 0
    text = re.sub(r"^```.*?^```|`[^`\n]*`", "", text, flags=re.M | re.S)
    for target in re.findall(r"\[[^]]*\]\(([^)\s]+)\)", text):
        count += 1
        path, _, anchor = target.partition("#")
        if re.match(r"https?:", target):
            continue
        file = (page.parent / path) if path else page
        if not file.exists():
            failures.add(page, f"a link to {target}, which isn't there")
        elif anchor and anchor not in anchors_of(file.read_text()):
            failures.add(page, f"a link to {target}, which has no such heading")
    return count


def main():
    tool, library, *names = sys.argv[1:]
    tool, library = os.path.abspath(tool), os.path.abspath(library)
    os.chdir(ROOT)
    failures, counts, links, files = Failures(), {}, 0, sample_files()
    for name in names:
        page = pathlib.Path(name)
        text = page.read_text()
        check_blocks(page, blocks_of(page, text), files, tool, library, failures, counts)
        links += check_links(page, text, failures)
    listed = ", ".join(f"{count} {kind}" for kind, count in sorted(counts.items()))
    print(f"{len(names)} pages, {links} links; blocks: {listed}")
    sys.exit(1 if failures.count else 0)


main()
