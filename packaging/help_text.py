"""Reads what a program says under --help."""

import subprocess
from dataclasses import dataclass, field

HEADINGS = {
    "en": {"commands": "Commands", "options": "Options:", "arguments": "Arguments:", "usage": "Usage:"},
    "zh": {"commands": "命令", "options": "选项：", "arguments": "参数：", "usage": "用法："},
}


@dataclass
class Entry:
    """A row of a list: "--bus <DIR>" and what it means; a command or an argument without its dashes."""
    term: str
    text: str


@dataclass
class Help:
    synopsis: str
    paragraphs: list = field(default_factory=list)
    commands: list = field(default_factory=list)
    options: list = field(default_factory=list)
    arguments: list = field(default_factory=list)


def ask(program, language, *command):
    """The Help of a program, or of a command of it. Raises where the program fails."""
    words = [program, *command, "--lang", language, "--help"]
    said = subprocess.run(words, check=True, capture_output=True, timeout=60).stdout.decode()
    return read(said, language)


def read(said, language):
    headings = HEADINGS[language]
    lines = said.splitlines()
    if not lines or not lines[0].startswith(headings["usage"]):
        raise ValueError(f"a help text begins with '{headings['usage']}', not with '{lines[:1]}'")
    told = Help(lines[0][len(headings["usage"]):].strip().partition(" ")[2])
    rows = None
    for line in lines[1:]:
        if line.startswith(headings["commands"]):
            rows = told.commands
        elif line.startswith(headings["options"]):
            rows = told.options
        elif line.startswith(headings["arguments"]):
            rows = told.arguments
        elif rows is None:
            told.paragraphs += [line] if line else []
        elif line.startswith("   "):
            rows[-1].text = join(rows[-1].text, line.strip())
        elif line.strip():
            term, _, text = line.strip().partition("  ")
            rows.append(Entry(term, text.strip()))
    return told


def join(text, more):
    """Chinese is broken between any two characters, English at its blanks."""
    if not text:
        return more
    return text + more if ord(text[-1]) > 0x2E80 and ord(more[0]) > 0x2E80 else f"{text} {more}"
