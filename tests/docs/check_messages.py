#!/usr/bin/env python3
"""check_messages.py TREE [TRANSCRIPT...]: every message in the guides and in what the tests have recorded is as the schemas say,
the schemas are JSON Schemas, and docs/asyncapi.yaml has the form of AsyncAPI 3 and leads to all of them.

A transcript has a message per line: {"path": its topic path, "payload": the message}, as `trademodule-check --transcript` writes it.
Only its messages are looked at then.
"""
import json
import pathlib
import sys

import yaml

from messages import Schemas, objects_in, schema_of

GUIDES = ["*.md", "docs/*.md", "examples/*.md", "examples/module/*.md"]
RECORDED = ["tests/fuzz/corpus/answers/*.json", "tests/e2e/*.cpp", "tests/e2e/*.h"]

# What overlays are shown on purpose: as little as they can read, or what they must survive. Each file with how many.
WRONG_ON_PURPOSE = {
    "tests/e2e/CombinedOverlayTest.cpp": 1,
    "tests/e2e/WireModuleTest.cpp": 4,
    "tests/fuzz/corpus/answers/cost.json": 1,
    "tests/fuzz/corpus/answers/deep.json": 1,
    "tests/fuzz/corpus/answers/no-object-among-rows.json": 1,
    "tests/fuzz/corpus/answers/orders.json": 1,
    "tests/fuzz/corpus/answers/repeated-by-an-escape.json": 1,
    "tests/fuzz/corpus/answers/repeated-key-in-a-row.json": 1,
    "tests/fuzz/corpus/answers/rows-like-a-mixture.json": 1,
    "tests/fuzz/corpus/answers/rows-of-other-forms.json": 1,
    "tests/fuzz/corpus/answers/white-space.json": 1,
}


class Count:
    looked_at = 0


def faults_in(schemas, file, name, allowed=0):
    """The messages of a file that are not as the schemas say, unless they are as many as is known."""
    told = []
    for place, message in objects_in(file.read_text(encoding="utf-8", errors="replace")):
        schema = schema_of(message)
        if schema in schemas.all:
            Count.looked_at += 1
            told += [f"{name}: {schema}: {fault}" for fault in schemas.faults(schema, message)[:1]]
    return told if len(told) != allowed else []


def faults_of_messages(schemas, tree):
    for patterns, least in ((GUIDES, 5), (RECORDED, 15)):
        Count.looked_at = 0
        for pattern in patterns:
            for file in sorted(tree.glob(pattern)):
                name = str(file.relative_to(tree))
                yield from faults_in(schemas, file, name, WRONG_ON_PURPOSE.get(name, 0))
        if Count.looked_at < least:
            yield f"{patterns[0]} ...: only {Count.looked_at} messages are found"


# AsyncAPI

def target(document, reference):
    """What a reference inside of the document leads to; nothing where it leads nowhere."""
    for step in reference.removeprefix("#/").split("/"):
        document = document.get(step) if isinstance(document, dict) else None
    return document


def references_in(part):
    if isinstance(part, dict):
        for key, value in part.items():
            if key == "$ref":
                yield value
            else:
                yield from references_in(value)
    elif isinstance(part, list):
        for item in part:
            yield from references_in(item)


def faults_of_operations(api):
    for name, operation in api["operations"].items():
        if operation.get("action") not in ("send", "receive"):
            yield f"operation {name}: neither sends nor receives"
        for side in (operation, operation.get("reply", operation)):
            channel = side["channel"]["$ref"]
            for message in side["messages"]:
                if not message["$ref"].startswith(channel + "/messages/"):
                    yield f"operation {name}: {message['$ref']} is none of its channel's"


def faults_of_channels(api):
    for name, channel in api["channels"].items():
        for parameter in channel.get("parameters", {}):
            if "{" + parameter + "}" not in channel["address"]:
                yield f"channel {name}: no {parameter} in its address"
        if ("{" in channel["address"]) != ("parameters" in channel):
            yield f"channel {name}: what its address holds is not told"
        if not channel["messages"]:
            yield f"channel {name}: no messages"


def faults_of_api(tree, schemas):
    api = yaml.safe_load((tree / "docs/asyncapi.yaml").read_text(encoding="utf-8"))
    if not str(api.get("asyncapi", "")).startswith("3.") or not {"title", "version"} <= set(api.get("info", {})):
        yield "it does not say which AsyncAPI it is, or of what"
    for part in set(api) - {"asyncapi", "id", "info", "defaultContentType", "servers", "channels", "operations", "components"}:
        yield f"{part} is no part of AsyncAPI 3"
    files = set()
    for reference in references_in(api):
        if reference.startswith("#/"):
            if target(api, reference) is None:
                yield f"{reference} leads nowhere"
        else:
            files.add((tree / "docs" / reference).resolve())
    for schema in schemas.all:
        if (tree / "schemas" / f"{schema}.json").resolve() not in files:
            yield f"no message has the schema {schema}"
    yield from (f"there is no {file}" for file in files if not file.exists())
    yield from faults_of_channels(api)
    yield from faults_of_operations(api)


# Transcripts

def faults_of_transcript(schemas, file):
    looked_at = 0
    for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        said = json.loads(line)
        schema = schema_of(said["payload"]) if isinstance(said["payload"], dict) else None
        if said.get("from") == "module" or schema == "TradePresence":
            looked_at += 1
            told = schemas.faults(schema, said["payload"]) if schema in schemas.all else ["no message of the guides"]
            yield from (f"{file.name}, line {number}: {schema}: {fault}" for fault in told)
    if looked_at < 20:
        yield f"{file.name}: only {looked_at} messages of a module"


def main():
    tree = pathlib.Path(sys.argv[1])
    schemas = Schemas(tree)
    if sys.argv[2:]:
        told = [fault for file in sys.argv[2:] for fault in faults_of_transcript(schemas, pathlib.Path(file))]
    else:
        told = [*schemas.faults_of_form(), *(f"docs/asyncapi.yaml: {fault}" for fault in faults_of_api(tree, schemas)),
                *faults_of_messages(schemas, tree)]
    print("\n".join(told))
    return 1 if told else 0


if __name__ == "__main__":
    sys.exit(main())
