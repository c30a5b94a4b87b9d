#!/usr/bin/env python3
"""What docs/operators.md takes from a started Debian and a test's machine lacks, by the name under which it is called.

systemctl starts what the units say, as the user and with the folders and limits that they say, and waits until it is
ready. apt-get and journalctl do nothing: the programs are there, and there is no journal.
"""

import os
import pathlib
import pwd
import re
import resource
import shlex
import signal
import socket
import subprocess
import sys
import time

PACKAGED = pathlib.Path("/mnt/tree/packaging/module")
PROCESSES = pathlib.Path("/run/test-units")
LONGEST = 30


class Unit:
    """The settings of a unit: NAME@INSTANCE.service of the package, with INSTANCE for each %i."""

    def __init__(self, name):
        self.name = name
        template, _, instance = name.partition("@")
        text = (PACKAGED / f"{template}@.service").read_text()
        self._settings = re.findall(r"^(\w+)=(.*)$", text.replace("%i", instance).replace("%t", "/run"), re.MULTILINE)

    def all(self, key):
        return [value for name, value in self._settings if name == key]

    def one(self, key, otherwise=""):
        return (self.all(key) or [otherwise])[-1]

    def environment(self):
        """As systemd takes the quotes off; a line that a shell would read otherwise has more than one word."""
        lines = self.all("Environment")
        for file in self.all("EnvironmentFile"):
            lines += [line for line in pathlib.Path(file).read_text().splitlines() if "=" in line]
        words = [shlex.split(line) for line in lines]
        for line, read in zip(lines, words):
            if len(read) != 1:
                sys.exit(f"not one word to a shell: {line}")
        return dict(word.split("=", 1) for word, in words)

    def make_folders(self, user):
        for key, base in (("RuntimeDirectory", "/run"), ("StateDirectory", "/var/lib"), ("LogsDirectory", "/var/log")):
            for folder in self.all(key):
                path = pathlib.Path(base, folder)
                path.mkdir(exist_ok=True)
                path.chmod(int(self.one(key + "Mode", "0755"), 8))
                os.chown(path, user.pw_uid, user.pw_gid)

    def command(self, environment):
        """As systemd reads ExecStart: ${NAME} is one word, $NAME as many as it has."""
        words = []
        for word in shlex.split(self.one("ExecStart")):
            if re.fullmatch(r"\$\w+", word):
                words += environment.get(word[1:], "").split()
            else:
                words.append(re.sub(r"\$\{(\w+)\}", lambda found: environment.get(found[1], ""), word))
        return [words[0].replace("/usr/bin/", "/mnt/build/bin/"), *words[1:]]

    def spawn(self, ready=None):
        user = pwd.getpwnam(self.one("User"))
        self.make_folders(user)
        environment = {key: os.environ[key] for key in ("PATH", "LD_LIBRARY_PATH", "LC_ALL")}
        environment |= {"HOME": user.pw_dir, **self.environment()}
        if ready:
            environment["NOTIFY_SOCKET"] = ready
        return subprocess.Popen(self.command(environment), env=environment, user=user.pw_uid, group=user.pw_gid,
                                extra_groups=[], umask=int(self.one("UMask"), 8), cwd=user.pw_dir,
                                start_new_session=True)


def remember(name, number):
    PROCESSES.mkdir(exist_ok=True)
    (PROCESSES / name).write_text(str(number))


def stop(name):
    place = PROCESSES / name
    if not place.exists():
        return
    number = int(place.read_text())
    place.unlink()
    os.kill(number, signal.SIGTERM)
    until = time.monotonic() + LONGEST
    while pathlib.Path(f"/proc/{number}/exe").exists() and os.readlink(f"/proc/{number}/exe"):
        if time.monotonic() > until:
            sys.exit(f"{name} does not end")
        time.sleep(0.01)


def start_broker():
    limits = "".join(file.read_text() for file in
                     pathlib.Path("/etc/systemd/system/mosquitto.service.d").glob("*.conf"))
    wanted = int(re.search(r"^LimitNOFILE=(\d+)$", limits, re.MULTILINE)[1])
    files = min(wanted, resource.getrlimit(resource.RLIMIT_NOFILE)[1])  # a machine's root may not have the right to more
    process = subprocess.Popen(["mosquitto", "-c", "/etc/mosquitto/mosquitto.conf"], start_new_session=True,
                               preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (files, files)))
    remember("mosquitto", process.pid)
    until = time.monotonic() + LONGEST
    while socket.socket().connect_ex(("127.0.0.1", 8883)) != 0:
        if process.poll() is not None or time.monotonic() > until:
            sys.exit("mosquitto does not listen")
        time.sleep(0.01)


def start_module(name):
    """Until it says that it is ready, as systemd waits for a service of the type notify."""
    with socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as heard:
        address = f"/run/{name}.notify"
        pathlib.Path(address).unlink(missing_ok=True)
        heard.bind(address)
        os.chmod(address, 0o777)
        heard.settimeout(LONGEST)
        process = Unit(name).spawn(ready=address)
        remember(name, process.pid)
        while b"READY=1" not in heard.recv(4096):
            pass


def start(name):
    name = name.removesuffix(".service")
    if name == "mosquitto":
        start_broker()
    elif name.endswith(".timer"):
        process = Unit(name.removesuffix(".timer")).spawn()
        if process.wait() not in (0, *map(int, Unit(name.removesuffix(".timer")).one("SuccessExitStatus").split())):
            sys.exit(f"{name} failed")
    else:
        start_module(name)


def systemctl(words):
    command, *units = [word for word in words if not word.startswith("--")]
    for unit in units:
        if command in ("stop", "restart"):
            stop(unit)
        if command in ("start", "restart", "enable"):
            start(unit)


if __name__ == "__main__" and os.path.basename(sys.argv[0]) == "systemctl":
    systemctl(sys.argv[1:])
