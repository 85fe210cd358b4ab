#!/usr/bin/env python3
"""Holds JSON documents of wlanctl against the schemas of their verbs.

  validate.py SCHEMA_FOLDER FILE...  files of one or more documents; the exit code of document-PID-STATUS.json must be STATUS
  validate.py SCHEMA_FOLDER          the same for each line of standard input, a file's path: answers with its findings and
                                     an empty line, so that one process serves a whole program of tests
"""
import json
import pathlib
import re
import sys

import jsonschema


def schema_name(verb):
    """A verb with words of its own, such as "wps pbc", has one schema; usage that names no verb has another."""
    return (verb.split(" ")[0] if verb else "usage") + ".json"


class Schemas:
    """Read when a document first asks for them: a test program knows few verbs."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.texts = {}

    def text(self, name):
        if name not in self.texts:
            path = self.folder / name
            self.texts[name] = json.loads(path.read_text(encoding="utf-8")) if path.exists() else None
            if self.texts[name] is not None:
                jsonschema.Draft202012Validator.check_schema(self.texts[name])
        return self.texts[name]

    def findings(self, document):
        verb = document.get("verb") if isinstance(document, dict) else None
        name = schema_name(verb if isinstance(verb, str) else "")
        schema = self.text(name)
        if schema is None:
            return [f"there is no schema {name}"]
        envelope = self.text("envelope.json")
        resolver = jsonschema.RefResolver(schema["$id"], schema, store={text["$id"]: text for text in (schema, envelope)})
        validator = jsonschema.Draft202012Validator(schema, resolver=resolver)
        return [f"{error.json_path}: {error.message[:400]}" for error in validator.iter_errors(document)]


def documents_of(text):
    decoder = json.JSONDecoder()
    position = 0
    while text[position:].strip():
        position += len(text[position:]) - len(text[position:].lstrip())
        document, position = decoder.raw_decode(text, position)
        yield document


def findings_of(schemas, path):
    """Lines about a file: what is wrong, and what is in it then."""
    text = path.read_text(encoding="utf-8", errors="replace")
    is_named_by_status = re.fullmatch(r"document-\d+-(\d+)\.json", path.name)
    findings = []
    try:
        documents = list(documents_of(text))
        if not documents:
            findings.append("no document")
        for document in documents:
            findings += schemas.findings(document)
            said = document.get("exit_code") if isinstance(document, dict) else None
            if is_named_by_status and said != int(is_named_by_status[1]):
                findings.append(f"says exit code {said}, was {is_named_by_status[1]}")
    except ValueError as error:
        findings.append(f"no JSON: {error}")
    if findings:
        findings = [f"{path.name}: {finding}" for finding in findings] + [line for line in text[:2000].splitlines() if line]
    return findings


def main(arguments):
    schemas = Schemas(arguments[0])
    bad = False
    for name in arguments[1:]:
        for line in findings_of(schemas, pathlib.Path(name)):
            bad = True
            print(line)
    if len(arguments) == 1:
        for line in sys.stdin:
            print("\n".join([*findings_of(schemas, pathlib.Path(line.rstrip("\n"))), ""]), flush=True)
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
