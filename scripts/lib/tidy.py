#!/usr/bin/env python3
"""Runs clang-tidy over the sources of this tree and tells each finding once. Called by scripts/tidy.

What a run found in a source is kept in build/tidy-cache, named by a hash of everything that the answer depends on:
the source, the headers of the tree that it includes, how it is compiled, the checks, the version of clang-tidy. So
only what changed is looked at again.
"""
import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
CACHE = ROOT / "build" / "tidy-cache"
INCLUDE = re.compile(rb'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)
FINDING = re.compile(r"^(/[^:]+):(\d+):(\d+): (warning|error): (.*)$")


def files_of_the_tree():
    """Paths from its top, of all but what is built or hidden."""
    for folder, inner, names in os.walk(ROOT):
        if folder == str(ROOT):
            inner[:] = [name for name in inner if name not in ("build", "out") and not name.startswith(".")]
        yield from (os.path.relpath(os.path.join(folder, name), ROOT) for name in names)


class Sources:
    """The sources of the tree, their commands and what they include."""

    def __init__(self, build):
        self.files = set(files_of_the_tree())
        self.commands = {}
        for entry in json.loads((build / "compile_commands.json").read_text()):
            path = os.path.relpath(os.path.join(entry["directory"], entry["file"]), ROOT)
            if path in self.files:
                self.commands.setdefault(path, entry)
        self._included = {}

    def includes(self, path):
        """Files of the tree that `path` includes itself."""
        if path not in self._included:
            found = set()
            for name in INCLUDE.findall((ROOT / path).read_bytes()):
                name = name.decode()
                beside = os.path.normpath(os.path.join(os.path.dirname(path), name))
                found.update({name, beside} & self.files)
            self._included[path] = found
        return self._included[path]

    def depends_on(self, path):
        """`path` and everything of the tree that it includes, sorted."""
        seen, waiting = set(), [path]
        while waiting:
            current = waiting.pop()
            if current not in seen:
                seen.add(current)
                waiting.extend(self.includes(current))
        return sorted(seen)


class Tidy:
    def __init__(self, program, build, sources):
        self._program, self._build, self._sources = program, build, sources
        version = subprocess.run([program, "--version"], check=True, capture_output=True).stdout
        configs = [(ROOT / path).read_bytes() for path in sorted(sources.files) if path.endswith(".clang-tidy")]
        self._common = b"\0".join([version, *configs])

    def _key(self, path):
        digest = hashlib.sha256(self._common)
        digest.update(self._sources.commands[path]["command"].encode())
        for name in self._sources.depends_on(path):
            digest.update(b"\0" + name.encode() + b"\0" + (ROOT / name).read_bytes())
        return digest.hexdigest()

    def look_at(self, path):
        """Findings in `path` and its headers, and whether clang-tidy had to run."""
        kept = CACHE / (self._key(path) + ".json")
        if kept.exists():
            kept.touch()
            return json.loads(kept.read_text()), False
        run = subprocess.run([self._program, "--quiet", "-p", str(self._build), path], cwd=ROOT,
                             capture_output=True, text=True)
        findings = []
        for line in run.stdout.splitlines():
            match = FINDING.match(line)
            if match:
                file, row, column, _, text = match.groups()
                # a header is included by a link of the build tree
                file = os.path.relpath(os.path.realpath(file), ROOT)
                findings.append([file, int(row), int(column), text])
        if run.returncode != 0 and not findings:
            raise RuntimeError(f"{path}: clang-tidy failed\n{run.stdout}{run.stderr}")
        kept.write_text(json.dumps(findings))
        return findings, True


def forget_old_answers():
    """Answers that nobody asked for in two weeks belong to sources that are gone."""
    oldest = time.time() - 14 * 24 * 3600
    for kept in CACHE.glob("*.json"):
        if kept.stat().st_mtime < oldest:
            kept.unlink()


def changed_since(revision):
    listed = subprocess.run(["git", "diff", "--name-only", "-z", revision, "--"], cwd=ROOT, check=True,
                            capture_output=True, text=True).stdout
    return {path for path in listed.split("\0") if path}


def enough_to_see(changed, sources):
    """Sources that show what is found in the changed files: those among them, and one for each other header."""
    chosen = changed & set(sources.commands)
    shown = {name for path in chosen for name in sources.depends_on(path)}
    for path in sorted(sources.commands):
        if (changed - shown) & set(sources.depends_on(path)):
            chosen.add(path)
            shown.update(sources.depends_on(path))
    return chosen


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True)
    parser.add_argument("--build", required=True, type=pathlib.Path)
    parser.add_argument("--since")
    parser.add_argument("files", nargs="*")
    arguments = parser.parse_args()

    sources = Sources(arguments.build)
    wanted = sorted(sources.commands)
    if arguments.files:
        named = {os.path.relpath(os.path.abspath(name), ROOT) for name in arguments.files}
        wanted = [path for path in wanted if named & set(sources.depends_on(path))]
    if arguments.since:
        chosen = enough_to_see(changed_since(arguments.since), sources)
        wanted = [path for path in wanted if path in chosen]

    CACHE.mkdir(parents=True, exist_ok=True)
    forget_old_answers()
    tidy = Tidy(arguments.program, arguments.build, sources)
    began = time.monotonic()
    findings, looked_at = set(), 0
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0)) if hasattr(os, "sched_getaffinity")
                                               else os.cpu_count()) as pool:
        for found, ran in pool.map(tidy.look_at, wanted):
            looked_at += ran
            findings.update(map(tuple, found))

    for file, row, column, text in sorted(findings):
        print(f"{file}:{row}:{column}: {text}")
    print(f"{len(wanted)} sources, {looked_at} of them looked at anew in {time.monotonic() - began:.0f} s: "
          f"{len(findings)} finding{'' if len(findings) == 1 else 's'}", file=sys.stderr)
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
