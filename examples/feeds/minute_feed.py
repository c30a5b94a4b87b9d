#!/usr/bin/env python3
"""Publishes a recorded minute file as quotes of today's market, for every terminal and trading module on the bus.

    minute_feed.py examples/minute/600519_20260327.csv --bus /opt/terminal --speed 60

FILE is <code>_<yyyymmdd>.csv with the columns time,open,high,low,close,volume. Needs python3-paho-mqtt.
docs/bus-protocol.md tells where a bus is, docs/messages.md what a quote holds.
"""
import argparse, csv, datetime, hashlib, json, os, pathlib, socket, sys, time
import paho.mqtt.client as mqtt


def socket_of(directory):
    """The Unix socket of the bus of the program in a directory, and of TRADEBUS_INSTANCE."""
    name = os.fsencode(os.path.realpath(directory))
    instance = os.environb.get(b"TRADEBUS_INSTANCE", b"")
    digest = hashlib.sha256(name + (b"\0" + instance if instance else b"")).hexdigest()[:16]
    runtime = os.environ.get("XDG_RUNTIME_DIR") or f"/run/user/{os.getuid()}"
    return f"{runtime}/tradebus-{digest}/bus.sock"


class UnixClient(mqtt.Client):
    """A client of a broker that listens on a Unix socket: the library's own client knows TCP only."""

    def _create_socket_connection(self):
        connection = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        connection.connect(self.path)
        return connection


def join(path):
    version = [mqtt.CallbackAPIVersion.VERSION2] if hasattr(mqtt, "CallbackAPIVersion") else []
    client = UnixClient(*version, protocol=mqtt.MQTTv5)
    client.path = path
    client.connect("localhost")
    client.loop_start()
    while not client.is_connected():
        time.sleep(0.01)
    return client


def quotes_of(row, minute_end, parts):
    """A bar as it is made: (seconds since its minute began, quote) for each of its parts."""
    first, high, low, last = (float(row[key]) for key in ("open", "high", "low", "close"))
    way = [first, high, low, last] if last < first else [first, low, high, last]
    for part in range(1, parts + 1):
        gone = [first] + way[: 1 + (part * 3) // parts]
        close = last if part == parts else gone[-1]
        now = minute_end - datetime.timedelta(seconds=60 - 60 * part / parts)
        yield 60 * part / parts, {
            "time": now.strftime("%H%M%S"), "open": row["open"], "high": str(max(gone + [close])),
            "low": str(min(gone + [close])), "close": str(close), "volume": str(int(row["volume"]) * part // parts)}


def main():
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument("file", type=pathlib.Path)
    options.add_argument("--bus", default=".", metavar="FOLDER", help="of the terminal's program")
    options.add_argument("--socket", help="of the broker, in place of --bus")
    options.add_argument("--market", choices=["SH", "SZ"], help="SH for codes that begin with 5, 6 or 9, else SZ")
    options.add_argument("--speed", type=float, default=1, help="times as fast as on the day; 0: without a pause")
    options.add_argument("--parts", type=int, default=4, help="quotes of each minute")
    asked = options.parse_args()
    code = asked.file.stem.split("_")[0]
    today = datetime.datetime.now(datetime.timezone(datetime.timedelta(hours=8))).strftime("%Y%m%d")
    head = {"stkcode": code, "market": asked.market or ("SH" if code[0] in "569" else "SZ"), "date": today}
    client = join(asked.socket or socket_of(asked.bus))
    with asked.file.open() as rows:
        for row in csv.DictReader(rows):
            minute_end, gone = datetime.datetime.strptime(row["time"].zfill(4), "%H%M"), 0
            for seconds, quote in quotes_of(row, minute_end, asked.parts):
                time.sleep((seconds - gone) / asked.speed if asked.speed else 0)
                gone = seconds
                told = client.publish("Market/Quote", json.dumps({**head, **quote}))
    told.wait_for_publish()
    client.disconnect()
    client.loop_stop()


if __name__ == "__main__":
    sys.exit(main())
