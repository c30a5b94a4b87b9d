#!/usr/bin/env python3
"""check_links.py TREE: every link of the pages (*.md) to a file of the tree leads somewhere, its heading included."""
import pathlib
import re
import sys

LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
HEADING = re.compile(r"^#+ +(.*?) *$", re.MULTILINE)


def anchors(page):
    """The names that headings have in links."""
    text = re.sub(r"```.*?```", "", page.read_text(encoding="utf-8"), flags=re.DOTALL)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in HEADING.findall(text)}


def faults(tree):
    for page in sorted(tree.rglob("*.md")):
        if page.relative_to(tree).parts[0] in ("build", "out", ".git"):
            continue
        for link in LINK.findall(page.read_text(encoding="utf-8")):
            if "://" in link:
                continue
            file, _, anchor = link.partition("#")
            target = page.parent / file if file else page
            if not target.exists():
                yield f"{page.relative_to(tree)}: {link}: there is no such file"
            elif anchor and anchor not in anchors(target):
                yield f"{page.relative_to(tree)}: {link}: there is no such heading"


def main():
    told = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(told))
    return 1 if told else 0


if __name__ == "__main__":
    sys.exit(main())
