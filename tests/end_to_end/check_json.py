"""Holds what the program prints to the schema that docs/json.md promises.

    check_json.py PROGRAM docs/json.md

Every member is to be promised there; every promise in the schema is to be explained in a table.
"""
import json
import re
import subprocess
import sys

import jsonschema


def unknown_members(value, schema, place):
    """The members that the schema does not name."""
    if isinstance(value, dict):
        known = schema.get("properties", {})
        for name, member in value.items():
            if name not in known:
                yield f"{place}.{name}"
            else:
                yield from unknown_members(member, known[name], f"{place}.{name}")
    elif isinstance(value, list):
        for element in value:
            yield from unknown_members(element, schema.get("items", {}), f"{place}[]")


def named_members(schema):
    for name, member in schema.get("properties", {}).items():
        yield name
        yield from named_members(member)
        yield from named_members(member.get("items", {}))


def main(program, document):
    with open(document, encoding="utf-8") as file:
        text = file.read()
    schema = json.loads(re.search(r"```json\n(.*?)```", text, re.DOTALL)[1])
    explained = set(re.findall(r"`(\w+)`", "\n".join(re.findall(r"^\|([^|]*)\|", text, re.MULTILINE))))

    # A server with a worker, both of the test's own.
    works = ("import subprocess as s; w = s.Popen(['cat'], stdin=s.PIPE, stdout=s.DEVNULL); "
             "print(w.pid, flush=True); input(); w.communicate()")
    server = subprocess.Popen(["vllm", "-c", works, "serve", "m"], executable=sys.executable,
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              start_new_session=True)  # else its leader, whoever that is, leads it
    worker = int(server.stdout.readline())
    printed = subprocess.run([program, "--json"], stdin=subprocess.DEVNULL, capture_output=True,
                             timeout=60, check=True).stdout
    server.communicate(b"\n")  # ends it
    assert printed.isascii() and printed.count(b"\n") == 1 and printed.endswith(b"\n")
    sample = json.loads(printed)
    jsonschema.Draft7Validator(schema).validate(sample)
    roles = {process["pid"]: process["role"] for process in sample["processes"]}
    assert roles.get(server.pid) == "inference", "the test's own server is not listed"

    families = {family["head"]: family for family in sample["families"]}
    members = [member["pid"] for member in families[server.pid]["members"]]
    assert members == [server.pid, worker], "the server's family is not listed"

    faults = [f"not promised: {member}" for member in set(unknown_members(sample, schema, ""))]
    faults += [f"not explained: {name}" for name in set(named_members(schema)) - explained]
    assert not faults, "\n".join(faults)


main(*sys.argv[1:])
