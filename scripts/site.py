#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What the documentation site takes besides Doxygen.

site.py pages OUTPUT PAGE...   the pages, with names for their headings that links can lead to
site.py headers OUTPUT FILE... headers, with their comments made into Doxygen's
site.py links DIRECTORY        fails unless every link within a built site leads somewhere
"""
import html
import html.parser
import pathlib
import re
import sys
import urllib.parse


def slug(heading):
    plain = re.sub(r"[`*]|\[([^]]*)\]\([^)]*\)", r"\1", heading).lower()
    return re.sub(r" ", "-", re.sub(r"[^\w\- ]", "", plain))


def page_id(path):
    """README.md of the top is the main page; that of a directory has its name."""
    if path.stem != "README":
        return "page_" + path.stem.lower()
    return "page_" + path.parent.name if path.parent.name else "mainpage"


# --- Pages --------------------------------------------------------------------------------------

def outside_blocks(text, change):
    """Changes what isn't in a fenced block."""
    parts = re.split(r"(^```.*?^```$)", text, flags=re.M | re.S)
    return "".join(part if part.startswith("```") else change(part) for part in parts)


def outside_code(text, change):
    """Changes what isn't between backquotes."""
    parts = re.split(r"(`[^`\n]*`)", text)
    return "".join(part if part.startswith("`") else change(part) for part in parts)


def page_of(path, pages):
    def link(match):
        text, target = match[1], match[2]
        if re.match(r"https?:", target):
            return match[0]
        name, _, anchor = target.partition("#")
        page = (path.parent / name) if name else path
        known = {p.resolve(): p for p in pages}.get(page.resolve())
        if known is None:
            return text  # a file that isn't part of the site
        return f"[{text}](@ref {page_id(known)}{'_' + anchor if anchor else ''})"

    seen = {}  # how often each name was given: equal headings are numbered

    def heading(match):
        marks, title = match[1], match[2]
        anchor = slug(title)
        seen[anchor] = seen.get(anchor, -1) + 1
        anchor += f"-{seen[anchor]}" if seen[anchor] else ""
        name = page_id(path) if len(marks) == 1 else f"{page_id(path)}_{anchor}"
        return f"{marks} {title} {{#{name}}}"

    def code(match):
        # A quote without its partner would open a text that runs to the next one, blocks and all.
        return f"<tt>{html.escape(match[1])}</tt>" if match[1].count('"') % 2 else match[0]

    def change(text):
        text = re.sub(r"`([^`\n]*)`", code, text)
        text = re.sub(r"^(#{1,6}) +(.*?) *$", heading, text, flags=re.M)
        text = re.sub(r"\[([^]]*)\]\(([^)\s]+)\)", link, text)
        return re.sub(r"<!--.*?-->", "", text, flags=re.S)

    # Doxygen colours what it knows; the language in braces is how it is told.
    text = outside_blocks(path.read_text(), change)
    return re.sub(r"^```(\w+)$", lambda m: "```{.cpp}" if m[1] == "cpp" else "```{.unparsed}", text,
                  flags=re.M)


# --- Headers ------------------------------------------------------------------------------------

def escaped(text):
    return outside_code(text, lambda part: re.sub(r"([\\@#<>&%])", r"\\\1", part))


def header_of(path):
    """A comment above or behind a declaration is of that; one that stands alone is of the file."""
    lines = path.read_text().split("\n")
    out, behind, index = [], None, 0
    while index < len(lines):
        line = lines[index]
        alone = re.match(r"^( *)// ?(.*)$", line)
        trailing = re.match(r"^(.*\S.*?)// ?(.*)$", line) if not alone else None
        if alone and behind == len(alone[1]):  # goes on from the line above
            out.append(f"{alone[1]}///< {escaped(alone[2])}")
        elif alone:
            block = []
            while index < len(lines) and (more := re.match(r"^ *// ?(.*)$", lines[index])):
                block.append(more[1])
                index += 1
            block = [text for text in block if not text.startswith("SPDX-")]
            of_file = index >= len(lines) or not lines[index].strip() or lines[index].startswith("#")
            opening = [f"{alone[1]}/// \\file"] if of_file else []
            out += opening + [f"{alone[1]}/// {escaped(text)}" for text in block]
            out += [""] if of_file else []
            behind = None
            continue
        elif trailing and not line.startswith("#"):
            behind = len(trailing[1])
            out.append(f"{trailing[1]}///< {escaped(trailing[2])}")
        else:
            behind = None
            out.append(line)
        index += 1
    return "\n".join(out)


# --- Links of the site --------------------------------------------------------------------------

class Links(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.names, self.targets = set(), []

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        self.names.update(value for key, value in attrs.items() if key in ("id", "name") and value)
        self.targets += [attrs[key] for key in ("href", "src") if attrs.get(key)]


def check_links(directory):
    pages = {}
    for path in directory.rglob("*.html"):
        pages[path.resolve()] = Links()
        pages[path.resolve()].feed(path.read_text())
    count = broken = 0
    for path, page in pages.items():
        for target in page.targets:
            url = urllib.parse.urlparse(target)
            if url.scheme:
                continue
            count += 1
            file = (path.parent / urllib.parse.unquote(url.path)).resolve() if url.path else path
            anchor = urllib.parse.unquote(url.fragment)
            known = pages.get(file)
            if not file.exists() or (anchor and known is not None and anchor not in known.names):
                broken += 1
                print(f"{path.name}: a link to {target}, which isn't there", file=sys.stderr)
    print(f"{len(pages)} pages of the site, {count} links within it")
    sys.exit(1 if broken else 0)


def main():
    what, directory, names = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3:]
    if what == "links":
        check_links(directory)
    files = [pathlib.Path(name) for name in names]
    for file in files:
        made = directory / (f"{page_id(file)}.md" if what == "pages" else file)
        made.parent.mkdir(parents=True, exist_ok=True)
        made.write_text(page_of(file, files) if what == "pages" else header_of(file))


main()
