#!/usr/bin/env python3
"""Lets random users trade in two windows for long and tells what grows. Called by scripts/soak.

One window shows the market: a feed tells a day's quotes, its broker and its trading module live as long as it does. The
other one practises a recorded day at 600 times its pace, and begins it again and again: a new broker and module each
time. Each has a screen that nobody sees and a user of its own, see tests/terminal/support/RandomUser.h.
"""
import argparse
import contextlib
import hashlib
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLES = ROOT / "examples"
BETWEEN_SAMPLES = 5  # seconds
GROWTH_AT_MOST = 0.01  # of resident memory, in the second half
MINUTES_OF_A_DAY = 240
QUOTES_A_SECOND = 10  # of a security: as many as a replay at 600 times its pace has
PRACTICE_SECONDS = 25  # a day at 600 times its pace, and a moment after it
PRACTISED = ("600536", "20230711")
FED = ("000001_20180115", "600519_20260327")
PAGE_MB = os.sysconf("SC_PAGE_SIZE") / 1e6
# what of a process must not grow, besides its memory; the objects are Qt's, the parts are widgets
COUNTED = ("descriptors", "threads", "objects", "widgets")


# What runs

def screen(stack):
    """The name of a display that nobody sees."""
    server = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1440x900x24", "-nolisten", "tcp"],
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    stack.callback(end, server)
    return f":{server.stdout.readline().strip()}"


def end(process):
    process.terminate()
    try:
        return process.wait(30)
    except subprocess.TimeoutExpired:
        process.kill()
        return process.wait()


class Window:
    """A terminal with a random user in it, and the processes that it starts."""

    def __init__(self, stack, name, place, asked, options, user):
        self.name = name
        self.log = place / f"{name}.log"
        self.companions = []  # which the window needs
        self._journal = place / f"{name}.user"
        words = ":".join(["randomuser", f"journal={self._journal}", *user])
        surroundings = dict(os.environ, DISPLAY=screen(stack), QT_QPA_PLATFORM="xcb", QT_QPA_GENERIC_PLUGINS=words,
                            QT_PLUGIN_PATH=str(asked.programs.parent / "plugins"))
        with self.log.open("w") as log:
            self.process = subprocess.Popen(
                [asked.programs / "tradeterminal", "--lang", "en", "--size", "1400x860", *options],
                env=surroundings, stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        stack.callback(end, self.process)

    def processes(self):
        """Role -> process id."""
        found = {"terminal": self.process.pid}
        for child in children_of(self.process.pid):
            with contextlib.suppress(OSError):
                name = pathlib.Path(f"/proc/{child}/comm").read_text().strip()
                role = {"mosquitto": "broker", "trademodule": "module"}.get(name)
                arguments = pathlib.Path(f"/proc/{child}/cmdline").read_bytes().split(b"\0")
                if role and (role == "broker" or b"serve" in arguments):
                    found[role] = child
        return found

    def told_by_user(self):
        """Objects, widgets, acts, orders, cancellations: the last line of the journal."""
        lines = self._journal.read_text().splitlines() if self._journal.exists() else []
        return [int(word) for word in lines[-1].split()] if lines else [0] * 5

    def log_lines(self):
        return len(self.log.read_bytes().splitlines())


def children_of(process):
    with contextlib.suppress(OSError):
        return [int(word) for word in pathlib.Path(f"/proc/{process}/task/{process}/children").read_text().split()]
    return []


def start_market(stack, place, asked):
    ledger = place / "market.db"
    module = [asked.programs / "trademodule", "--ledger", ledger]
    quietly([*module, "import", EXAMPLES / "statement.csv"])
    quietly([*module, "account", "--cash", "100000000"])
    window = Window(stack, "market", place, asked,
                    ["--data", EXAMPLES, "--ledger", ledger, "--code", "000001", "--period", "minute",
                     "--overlays", "cost,trades,orders"], [f"seed={asked.seed}"])
    speed = MINUTES_OF_A_DAY / asked.minutes
    for day in FED:
        feed = subprocess.Popen(
            [sys.executable, EXAMPLES / "feeds" / "minute_feed.py", EXAMPLES / "minute" / f"{day}.csv",
             "--socket", socket_below(place), "--speed", str(speed),
             "--parts", str(max(4, round(QUOTES_A_SECOND * 60 / speed)))],
            stdout=subprocess.DEVNULL)
        window.companions.append(feed)
        stack.callback(end, feed)
    return window


def socket_below(place):
    """Of the only broker so far, once it is there."""
    for _ in range(300):
        for socket in (place / "run").glob("tradebus-*/bus.sock"):
            return socket
        time.sleep(0.1)
    sys.exit("soak: the broker of the market's window has not come")


def start_practice(stack, place, asked):
    code, day = PRACTISED
    name = hashlib.sha256(b"soak").hexdigest()[:16]
    folder = place / "data" / "tradechart" / "tradeterminal" / "practice" / name
    folder.mkdir(parents=True)
    ledger = folder / "account.db"
    quietly([asked.programs / "trademodule", "--ledger", ledger, "practice", "--day", day, "--cash", "10000000",
             "--hold", f"{code} 20000 50.30"])
    shutil.copy(ledger, folder / "begun.db")
    (folder / "session.json").write_text(json.dumps({"name": "soak", "data": str(EXAMPLES), "code": code, "day": day,
                                                     "begun": "2026-01-01T00:00:00Z"}))
    return Window(stack, "practice", place, asked,
                  ["--practice", "soak", "--replay", "600", "--overlays", "cost,trades,orders"],
                  [f"seed={asked.seed + 1}", f"begins-again={PRACTICE_SECONDS}"])


def quietly(command):
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)


# What is seen

class Track:
    """What was seen of a process in its turn, or of those that followed one another in its place."""

    def __init__(self, judged):
        self.judged = judged
        self.ids = []
        self.times = []
        self.seen = {"memory": [], **{what: [] for what in COUNTED}}

    def take(self, when, process, objects):
        with contextlib.suppress(OSError):
            seen = {"memory": int(pathlib.Path(f"/proc/{process}/statm").read_text().split()[1]) * PAGE_MB,
                    "descriptors": len(os.listdir(f"/proc/{process}/fd")),
                    "threads": len(os.listdir(f"/proc/{process}/task")), "objects": objects[0], "widgets": objects[1]}
            if process not in self.ids:
                self.ids.append(process)
            self.times.append(when)
            for what, value in seen.items():
                self.seen[what].append(value)

    def part(self, what, begin, end_, whole):
        """The values from one share of the whole time to another."""
        return [value for when, value in zip(self.times, self.seen[what]) if begin * whole <= when <= end_ * whole]

    def growth_of_memory(self, whole):
        """In the second half, as a share of what was there in its beginning: a straight line through all samples."""
        points = [(when, value) for when, value in zip(self.times, self.seen["memory"]) if when >= whole / 2]
        if not points:
            return 0.0
        middle = sum(when for when, _ in points) / len(points)
        mean = sum(value for _, value in points) / len(points)
        spread = sum((when - middle) ** 2 for when, _ in points)
        slope = sum((when - middle) * (value - mean) for when, value in points) / spread if spread else 0.0
        return slope * whole / 2 / (mean - slope * (middle - whole / 2))

    def faults(self, whole):
        if not self.judged:
            return
        if len(self.ids) > 1:
            yield f"was {len(self.ids)} processes: it died"
        if not self.part("memory", 0.5, 0.75, whole) or not self.part("memory", 0.75, 1, whole):
            yield "was gone in the second half"
            return
        growth = self.growth_of_memory(whole)
        if growth > GROWTH_AT_MOST:
            yield f"memory grew by {growth:.1%} in the second half"
        for what in COUNTED:
            # they come and go; what leaks raises the least of them
            before, after = min(self.part(what, 0.5, 0.75, whole)), min(self.part(what, 0.75, 1, whole))
            if after > before:
                yield f"{what} grew from {before} to {after} at least"


def watch(windows, tracks, asked):
    """Samples until the time is over; the seconds that it took."""
    began = time.monotonic()
    minute = 0
    while (now := time.monotonic() - began) < asked.minutes * 60:
        for window in windows:
            if window.process.poll() is not None:
                sys.exit(f"soak: the {window.name}'s terminal ended with {window.process.returncode}, "
                         f"see {window.log}")
            if any(process.poll() for process in window.companions):
                sys.exit(f"soak: nobody tells the {window.name}'s quotes any more")
            for role, process in window.processes().items():
                track = tracks[window.name, role]
                track.take(now, process, window.told_by_user() if role == "terminal" else (0, 0))
        if now >= minute * 60:
            print_minute(minute, windows, tracks)
            minute += 1
        time.sleep(BETWEEN_SAMPLES)
    return time.monotonic() - began


def print_minute(minute, windows, tracks):
    for window in windows:
        parts = [f"{role} {track.seen['memory'][-1]:.1f} MB {track.seen['descriptors'][-1]} fd {track.seen['threads'][-1]} th"
                 for (name, role), track in tracks.items() if name == window.name and track.times]
        objects, widgets, acts, orders, cancellations = window.told_by_user()
        print(f"{minute:3} min  {window.name}: {'; '.join(parts)}; {objects} objects, {widgets} widgets, {acts} acts, "
              f"{orders} orders, {cancellations} cancellations, {window.log_lines()} lines of log", flush=True)


# What is told

def print_table(tracks, whole):
    quarters = [(share, share + 0.25) for share in (0, 0.25, 0.5, 0.75)]
    print(f"\n{'least of each quarter':22}" + "".join(f"{what:>32}" for what in ("memory, MB", *COUNTED)) + f"{'growth':>9}")
    for (name, role), track in tracks.items():
        cells = ""
        for what in ("memory", *COUNTED):
            least = [min(track.part(what, *quarter, whole), default=0) for quarter in quarters]
            cells += f"{'  '.join(f'{value:.1f}' if what == 'memory' else str(value) for value in least):>32}"
        growth = f"{track.growth_of_memory(whole):+.2%}" if track.judged else "anew"
        print(f"{name + ' ' + role:22}{cells}{growth:>9}")
    print("growth: of memory in the second half, by a line through all samples; anew: the process begins with each practice")


def traded(asked, place):
    """Orders and trades that are in the market's ledger."""
    counts = []
    for what in ("orders", "trades"):
        told = subprocess.run([asked.programs / "trademodule", "--ledger", place / "market.db", what, "--json"], check=True,
                              stdout=subprocess.PIPE, text=True).stdout
        counts.append(len(json.loads(told)))
    return counts


def soak(asked):
    place = pathlib.Path(tempfile.mkdtemp(prefix="soak-"))
    (place / "run").mkdir(mode=0o700)
    os.environ.update(XDG_RUNTIME_DIR=str(place / "run"), XDG_DATA_HOME=str(place / "data"),
                      XDG_CONFIG_HOME=str(place / "config"))
    tracks = {(name, role): Track(role == "terminal" or name == "market")
              for name in ("market", "practice") for role in ("terminal", "broker", "module")}
    faults = []
    with contextlib.ExitStack() as stack:
        windows = [start_market(stack, place, asked), start_practice(stack, place, asked)]
        whole = watch(windows, tracks, asked)
        for window in windows:
            window.process.send_signal(signal.SIGTERM)
            code = end(window.process)
            if code != 0:
                faults.append(f"{window.name} terminal: ended with {code}")
    print_table(tracks, whole)
    orders, trades = traded(asked, place)
    practices = len(tracks["practice", "module"].ids)
    print(f"{asked.minutes:g} minutes, seed {asked.seed}: {orders} orders in the market's ledger, {trades} trades; "
          f"{practices} practices; " + ", ".join(f"{window.name}: {window.told_by_user()[2]} acts" for window in windows))
    for (name, role), track in tracks.items():
        faults += [f"{name} {role}: {fault}" for fault in track.faults(whole)]
    if orders == 0 or practices < 2:
        faults.append("the users did not trade")
    for fault in faults:
        print(f"GREW OR FAILED  {fault}")
    print(f"logs: {place}")
    return 1 if faults else 0


def main():
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument("programs", type=pathlib.Path, help="folder of the built programs")
    options.add_argument("--minutes", type=float, default=60)
    options.add_argument("--seed", type=int, default=1)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("soak: ended from outside"))
    return soak(options.parse_args())


if __name__ == "__main__":
    sys.exit(main())
