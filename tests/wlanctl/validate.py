#!/usr/bin/env python3
"""Holds JSON documents of wlanctl against the schemas of their verbs.

  validate.py SCHEMA_FOLDER FILE...          files of one or more documents
  validate.py SCHEMA_FOLDER --folder FOLDER  every document-PID-STATUS.json in a folder; the exit code must be STATUS
"""
import json
import pathlib
import sys

import jsonschema


def schema_name(verb):
    """A verb with words of its own, such as "wps pbc", has one schema; usage that names no verb has another."""
    return (verb.split(" ")[0] if verb else "usage") + ".json"


class Schemas:
    def __init__(self, folder):
        self.texts = {}
        for path in sorted(pathlib.Path(folder).glob("*.json")):
            self.texts[path.name] = json.loads(path.read_text(encoding="utf-8"))
            jsonschema.Draft202012Validator.check_schema(self.texts[path.name])
        self.by_id = {text["$id"]: text for text in self.texts.values()}

    def findings(self, document):
        name = schema_name(document.get("verb", "")) if isinstance(document, dict) else "usage.json"
        if name not in self.texts:
            return [f"there is no schema {name}"]
        schema = self.texts[name]
        resolver = jsonschema.RefResolver(schema["$id"], schema, store=self.by_id)
        validator = jsonschema.Draft202012Validator(schema, resolver=resolver)
        return [f"{error.json_path}: {error.message[:400]}" for error in validator.iter_errors(document)]


def documents_of(text):
    decoder = json.JSONDecoder()
    position = 0
    while text[position:].strip():
        position += len(text[position:]) - len(text[position:].lstrip())
        document, position = decoder.raw_decode(text, position)
        yield document


def findings_of(schemas, path, status):
    try:
        documents = list(documents_of(path.read_text(encoding="utf-8")))
    except ValueError as error:
        return [f"no JSON: {error}"]
    findings = [] if documents else ["no document"]
    for document in documents:
        findings += schemas.findings(document)
        if status is not None and document.get("exit_code") != status:
            findings.append(f"says exit code {document.get('exit_code')}, was {status}")
    return findings


def main(arguments):
    schemas = Schemas(arguments[0])
    if arguments[1] == "--folder":
        paths = sorted(pathlib.Path(arguments[2]).glob("document-*.json"))
        jobs = [(path, int(path.stem.rsplit("-", 1)[1])) for path in paths]
    else:
        jobs = [(pathlib.Path(name), None) for name in arguments[1:]]
    bad = False
    for path, status in jobs:
        for finding in findings_of(schemas, path, status):
            bad = True
            print(f"{path.name}: {finding}")
        if bad:
            print(path.read_text(encoding="utf-8", errors="replace")[:2000])
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
