#!/usr/bin/env python3
"""A trading module as small as it can be: it answers charts from a file of trades, and takes no orders.

    trading_module.py trades.csv /opt/terminal

The second is the folder of the terminal's program, or the socket of a broker; the first has the columns date, time,
code, market, side, price, quantity, oldest first. Needs python3-paho-mqtt. See docs/bus-protocol.md and docs/messages.md."""
import contextlib, csv, datetime, hashlib, json, os, socket, sys, urllib.parse, uuid
import paho.mqtt.client as mqtt
from paho.mqtt.properties import PacketTypes, Properties

NUMBER_OF = {"SH": "1", "SZ": "2"}
COMMANDS = ("HolderCostPrice", "TodayTrade", "HistoryTrade", "EntrustTodayTrade", "EntrustHistoryTrade")

class UnixClient(mqtt.Client):
    """A client of a broker that listens on a Unix socket: the library's own client knows TCP only."""
    def _create_socket_connection(self):
        connection = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        connection.connect(self.path)
        return connection

def socket_of(directory):
    """The Unix socket of the bus of the program in a directory, and of TRADEBUS_INSTANCE."""
    name, instance = os.fsencode(os.path.realpath(directory)), os.environb.get(b"TRADEBUS_INSTANCE", b"")
    digest = hashlib.sha256(name + (b"\0" + instance if instance else b"")).hexdigest()[:16]
    return f"{os.environ.get('XDG_RUNTIME_DIR') or f'/run/user/{os.getuid()}'}/tradebus-{digest}/bus.sock"

def text(question, key, among=None):
    value = question.get(key)
    if not isinstance(value, str) or not value or (among and value not in among):
        raise ValueError(f'"{key}" is {value!r}, but must be {" or ".join(among) if among else "a text that is not empty"}')
    return value

def day(question, key, kind=str):
    with contextlib.suppress(ValueError):
        if type(question.get(key)) is kind and len(str(question[key])) == 8:
            return datetime.datetime.strptime(str(question[key]), "%Y%m%d").strftime("%Y%m%d")
    raise ValueError(f'"{key}" is {question.get(key)!r}, but must be a day yyyymmdd, as a {kind.__name__}')

def row_of(trade):
    """What overlays read, and what the combined overlay reads again."""
    return {"orderdate": trade["date"], "opertime": trade["time"], "bizdate": trade["date"], "matchtime": trade["time"],
            "bsflag2": trade["side"], "matchprice": trade["price"], "matchqty": trade["quantity"], "date": trade["date"],
            "buy": trade["side"] == "B", "price": float(trade["price"]), "vol": int(trade["quantity"])}

def data_of(question, trades):
    """What is asked for; a ValueError that names the key for what cannot be understood."""
    command, code, market = text(question, "cmd", COMMANDS), text(question, "stkcode"), text(question, "market", NUMBER_OF)
    own = [trade for trade in trades if (trade["code"], trade["market"]) == (code, market)]
    today = datetime.datetime.now(datetime.timezone(datetime.timedelta(hours=8))).strftime("%Y%m%d")
    if command == "HolderCostPrice":
        held = cost = 0  # a moving average
        for trade in own:
            bought, shares = trade["side"] == "B", int(trade["quantity"])
            cost = cost + shares * float(trade["price"]) if bought else cost - cost / held * shares
            held = held + shares if bought else held - shares
        return {"stkcode": code, "market": NUMBER_OF[market], **({"costprice": f"{cost / held:.3f}"} if held else {})}
    if command == "HistoryTrade":
        first, last = day(question, "start"), day(question, "end")
        return [row_of(trade) for trade in own if first <= trade["date"] <= last and trade["date"] != today]
    if command == "EntrustHistoryTrade":
        day(question, "date", int)
    return [row_of(trade) for trade in own if trade["date"] == today] if command == "TodayTrade" else []  # no orders

def answer_to(question, trades):
    try:
        result = {"success": True, "errcode": 0, "msg": "", "data": data_of(question, trades)}
    except ValueError as error:
        result = {"success": False, "errcode": 1, "msg": str(error)}
    again = {key: question[key] for key in ("cmd", "stkcode", "screenId", "objectId") if key in question}
    if question.get("cmd") == "HolderCostPrice":  # the combined overlay reads the cost here
        again["costprice"] = result.get("data", {}).get("costprice", "nan")
    return json.dumps({**again, **result})

def take(client, trades, message):
    """Answers on the question's screen; without one, to its sender."""
    try:
        question = dict(json.loads(message.payload))
    except (ValueError, TypeError, RecursionError):  # no JSON, or no object
        question = {}
    asker, properties = message.properties, Properties(PacketTypes.PUBLISH)
    screen, sender = question.get("screenId"), getattr(asker, "ResponseTopic", None)
    topic = urllib.parse.quote(screen, safe="") + "/TradeQuery" if screen and isinstance(screen, str) else sender
    properties.CorrelationData = getattr(asker, "CorrelationData", b"")
    if topic and "success" not in question:  # what has "success" is an answer of somebody else's
        client.publish(topic, answer_to(question, trades), properties=properties)

account = list(csv.DictReader(open(sys.argv[1], encoding="utf-8")))
word = {"instance": uuid.uuid4().hex, "fence": 0}
def join(client, *_):  # at every join: the broker may be another one
    client.subscribe("Global/TradeQuery", options=mqtt.SubscribeOptions(noLocal=True))
    client.publish("Global/TradePresence", json.dumps({**word, "online": True}), qos=1, retain=True)

version = [mqtt.CallbackAPIVersion.VERSION2] if hasattr(mqtt, "CallbackAPIVersion") else []
module = UnixClient(*version, protocol=mqtt.MQTTv5)
module.path, module.on_connect = sys.argv[2] if sys.argv[2].endswith(".sock") else socket_of(sys.argv[2]), join
module.on_message = lambda client, _, message: take(client, account, message)
module.will_set("Global/TradePresence", json.dumps({**word, "online": False}), qos=1, retain=True)
module.connect("localhost")
module.loop_forever()
