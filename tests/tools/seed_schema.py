# SPDX-License-Identifier: Apache-2.0
"""seed_schema.py READ_SEEDS SCHEMA SEED…: fails unless the schema says of every seed what the
reader says: of those given, which are good, and of hundreds that are made from a good one by one
change each."""
import copy
import json
import os
import subprocess
import sys
import tempfile

import jsonschema

VALUES = [None, True, 0, 1, -1, 1.0, 1.5, 2**31 - 1, 2**31, -(2**31), -(2**31) - 1, 10**30, "",
          "text", "a/b", "a\0b", "é", [], ["a"], [1], {}, {"a": "b"}, {"a": 1}]
# For columns but the first of each kind: the others are read and described in the same words.
FEW_VALUES = [None, True, 1, 1.5, 2**31, "text", "a\0b", {}]
KEYS = ["", "x", "titel", "a b", "a/b", "/a", "a/", "a//b", ".", "..", "a/../b", "a/.b", "...",
        "a=b", "0", "01", "7", "999999999", "1000000000", "-1", "é", "version", "id", "$schema"]


def columns(read_seeds):
    lines = subprocess.check_output([read_seeds, "--columns"], text=True)
    return [line.split() for line in lines.splitlines()]


def good_seed(table):
    """A seed that has every member there is."""
    app = {name: "text" if kind == "text" else 1 for name, kind, _ in table}
    return {
        "$schema": "seed.schema.json",
        "apps": [app, {"id": "other"}],
        "config": {"SYNC_STATE": "2"},
        "settings": {"db/tav/factory_reset": 0, "memory/a": "text"},
        "features": {"custom": {"a/b.c": "text", "d": 1}, "value": {"701": 1}},
        "packages": {"Ab1": {"version": "1.0", "icon": "/icon.png"}},
        "blacklist": ["Ab1"],
    }


def places(value, path=()):
    yield path
    items = value.items() if isinstance(value, dict) else ()
    if isinstance(value, list):
        items = enumerate(value)
    for key, inner in items:
        yield from places(inner, path + (key,))


def at(seed, path):
    for key in path:
        seed = seed[key]
    return seed


def mutants(good):
    """Each differs from the good seed in one place: another value, one less, or one more."""
    for path in places(good):
        is_column = path[:2] == ("apps", 0) and len(path) == 3 and path[2] not in ("id", "size")
        for value in FEW_VALUES if is_column else VALUES:
            if not path:
                yield value
                continue
            mutant = copy.deepcopy(good)
            at(mutant, path[:-1])[path[-1]] = value
            yield mutant
        if path:
            mutant = copy.deepcopy(good)
            del at(mutant, path[:-1])[path[-1]]
            yield mutant
        if isinstance(at(good, path), dict):
            for key in KEYS:
                for value in ("text", 1, {}):
                    mutant = copy.deepcopy(good)
                    at(mutant, path)[key] = value
                    yield mutant


def has_an_id_twice(seed):
    """What the reader refuses and a schema has no words for."""
    apps = seed.get("apps") if isinstance(seed, dict) else None
    ids = [app.get("id") for app in apps if isinstance(app, dict)] if isinstance(apps, list) else []
    return len(set(map(json.dumps, ids))) < len(ids)


def verdicts(read_seeds, texts):
    with tempfile.TemporaryDirectory() as place:
        paths = []
        for number, text in enumerate(texts):
            paths.append(os.path.join(place, f"{number}.json"))
            with open(paths[-1], "w", encoding="utf-8") as file:
                file.write(text)
        answers = subprocess.check_output([read_seeds], input="\n".join(paths) + "\n", text=True)
    return answers.split("\n")[:-1]


def main(read_seeds, schema_path, *seeds):
    with open(schema_path, encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    failures = []

    table = columns(read_seeds)
    described = schema["properties"]["apps"]["items"]["properties"]
    if list(described) != [name for name, _, _ in table]:
        failures.append("the schema's columns are not those of the apps table, in its order")
    for name, kind, initial in table:
        expected = "" if kind == "text" else int(initial)
        if name != "id" and described[name].get("default") != expected:
            failures.append(f"the schema's default of {name} is not {expected!r}")

    texts = []
    for path in seeds:
        with open(path, encoding="utf-8") as file:
            texts.append(file.read())
    made = [mutant for mutant in mutants(good_seed(table)) if not has_an_id_twice(mutant)]
    texts += [json.dumps(mutant) for mutant in [good_seed(table)] + made]
    answers = verdicts(read_seeds, texts)
    assert len(answers) == len(texts), f"{len(answers)} answers to {len(texts)} seeds"
    good = 0
    for number, (text, answer) in enumerate(zip(texts, answers)):
        error = jsonschema.exceptions.best_match(validator.iter_errors(json.loads(text)))
        is_good = answer == "good"
        good += is_good
        if number <= len(seeds) and not (is_good and error is None):
            failures.append(f"not good: {text[:60]}: {answer}; {error and error.message}")
        elif is_good != (error is None):
            failures.append(f"the reader says: {answer}\n  the schema: "
                            f"{error.message[:200] if error else 'good'}")
    print(f"{len(texts)} seeds, {good} of them good; {len(failures)} failures")
    print("\n".join(failures[:20]))
    return 1 if failures or good < 100 or len(texts) - good < 500 else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
