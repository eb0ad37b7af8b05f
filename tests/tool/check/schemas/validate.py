#!/usr/bin/env -S python3 -B
"""validate.py SCHEMA [--lines]: checks the JSON on standard input, or each line of it, against a JSON schema."""

import json
import sys

import jsonschema

with open(sys.argv[1], encoding="utf-8") as file:
    schema = json.load(file)
Validator = jsonschema.validators.validator_for(schema, default=jsonschema.Draft7Validator)
Validator.check_schema(schema)
validator = Validator(schema)
text = sys.stdin.buffer.read().decode("utf-8")
failed = False
for document in text.splitlines() if "--lines" in sys.argv else [text]:
    for error in validator.iter_errors(json.loads(document)):
        failed = True
        print(f"{'/'.join(map(str, error.absolute_path))}: {error.message}")
sys.exit(failed)
