"""Variants of the settings, as files such as settings/variants.txt list them. For scripts/sensitivity and scripts/screening."""

import re

from selfplay_matches import Trouble


def read_variants(text):
    """A list of (group, name, settings), in the order of the file. Trouble with the line and what is wrong."""
    variants, group = [], ""
    for number, line in enumerate(text.splitlines(), 1):
        line = line.strip()
        if not line or line.startswith("#"):
            continue
        if line.startswith("[") and line.endswith("]"):
            group = line[1:-1]
            continue
        name, colon, settings = (part.strip() for part in line.partition(":"))
        words = settings.split()
        if not colon or not name or not words:
            raise Trouble(f"line {number}: not NAME: SETTING=VALUE ..")
        for word in words:
            if not re.fullmatch(r"\w+=[\w,.-]+", word):
                raise Trouble(f"line {number}: not SETTING=VALUE: \"{word}\"")
        if (group, name) in [variant[:2] for variant in variants]:
            raise Trouble(f"line {number}: \"{name}\" is there already")
        variants.append((group, name, " ".join(words)))
    if not variants:
        raise Trouble("no variants")
    return variants
