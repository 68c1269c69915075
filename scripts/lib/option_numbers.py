"""Numbers on the command line of a script, read strictly: what Python's int takes beside digits (blanks, underscores, a
plus, the digits of other scripts) is no number here, and neither is what lies out of bounds."""

import argparse
import re

MOST = 1_000_000_000


def whole(least=0, most=MOST):
    """For `type=` of argparse: a whole number from `least` to `most`."""
    def read(text):
        if not re.fullmatch("-?[0-9]{1,18}", text) or not least <= int(text) <= most:
            raise argparse.ArgumentTypeError(f'takes a number from {least} to {most}, not "{text}"')
        return int(text)
    return read


def seconds(most=MOST, may_be_0=False):
    """The same for a time, above 0 unless that is one too, with a fraction if need be."""
    def read(text):
        is_number = re.fullmatch(r"[0-9]{1,9}(\.[0-9]{1,9})?", text)
        if not is_number or float(text) > most or float(text) == 0 and not may_be_0:
            raise argparse.ArgumentTypeError(f'takes seconds{"" if may_be_0 else " above 0"}, not "{text}"')
        return float(text)
    return read
