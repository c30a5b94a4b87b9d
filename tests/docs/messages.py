"""Messages of the bus and their schemas."""
import json
import pathlib


class Schemas:
    """schemas/ of a tree."""

    def __init__(self, tree):
        import jsonschema
        self._kind = jsonschema.Draft7Validator
        self.all = {file.stem: json.loads(file.read_text(encoding="utf-8"))
                    for file in sorted(pathlib.Path(tree, "schemas").glob("*.json"))}

    def faults_of_form(self):
        """What makes a schema no schema."""
        for name, schema in self.all.items():
            for error in self._kind(self._kind.META_SCHEMA).iter_errors(schema):
                yield f"{name}: {error.message}"

    def faults(self, name, message):
        """What is wrong with a message, in words; the first few suffice."""
        errors = sorted(self._kind(self.all[name]).iter_errors(message), key=lambda error: list(map(str, error.path)))
        return [f"{'/'.join(map(str, error.path))}: {error.message}"[:300] for error in errors[:3]]


def schema_of(message):
    """The name of the schema that a message belongs to; nothing for other JSON."""
    if message.get("success") is False:
        return "failure.answer"  # whatever was asked
    if "cmd" in message:
        is_answer = "success" in message or "data" in message
        return f"{message['cmd']}.{'answer' if is_answer else 'question'}"
    if "instance" in message and "online" in message:
        return "TradePresence"
    if "stkcode" in message:
        return "Quote" if "volume" in message else "TradeNotify"
    return None


def objects_in(text):
    """Every JSON object that stands in a text, but for those in others: (where it begins, the object)."""
    decoder, place = json.JSONDecoder(), text.find("{")
    while place >= 0:
        end = place + 1
        try:
            found, end = decoder.raw_decode(text, place)
            if found:
                yield place, found
        except ValueError:
            pass
        place = text.find("{", end)
