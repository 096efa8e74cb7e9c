#!/usr/bin/env python3
"""Validates the SARIF logs that pdscheck's cases expect against the SARIF 2.1.0 schema.

In each case folder, every run of cmd that asks for --format=sarif has its expected
standard output validated. Exits 77 (a skip) when the schema or Debian's
python3-jsonschema is missing, 1 when a log is not valid.

  validate_sarif.py SCHEMA CASE_FOLDER...
"""
import json
import os
import shlex
import sys


def sarif_outputs(case_dir):
    """The expected outputs of the case's SARIF runs."""
    number = 0
    with open(os.path.join(case_dir, "cmd"), encoding="utf-8") as f:
        for line in f:
            if not line.strip() or line.lstrip().startswith("#"):
                continue
            number += 1
            if "--format=sarif" in shlex.split(line):
                yield os.path.join(case_dir, "expected.%d.out" % number)


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    try:
        import jsonschema
    except ImportError:
        print("skipped: python3-jsonschema is not installed")
        return 77
    if not os.path.exists(sys.argv[1]):
        print("skipped: no schema at " + sys.argv[1])
        return 77
    with open(sys.argv[1], encoding="utf-8") as f:
        schema = json.load(f)
    validator = jsonschema.validators.validator_for(schema)(schema)
    logs = [path for case in sys.argv[2:] for path in sarif_outputs(case)]
    invalid = 0
    for path in logs:
        with open(path, encoding="utf-8") as f:
            errors = list(validator.iter_errors(json.load(f)))
        for error in errors:
            print("%s: %s at %s" % (path, error.message, "/".join(map(str, error.absolute_path))))
        invalid += bool(errors)
    print("%d of %d SARIF logs valid" % (len(logs) - invalid, len(logs)))
    return 1 if invalid or not logs else 0


if __name__ == "__main__":
    sys.exit(main())
