"""Builds programs for a script in Python, by the functions that the other scripts have in packages.sh and build.sh."""

import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]


def build(preset, directory, targets, packages=()):
    """Installs what the build lacks and builds. Whether that went well; what failed has been told."""
    words = ('. "$root/scripts/lib/packages.sh"; . "$root/scripts/lib/build.sh"; '
             'ensure_packages "${build_packages[@]}" $3 && build_with_progress "$1" "$2" -- $4')
    try:
        done = subprocess.run(["bash", "-c", words, "build", preset, str(directory), " ".join(packages), " ".join(targets)],
                              env=dict(os.environ, root=str(ROOT)))
    except KeyboardInterrupt:
        sys.exit(130)
    return done.returncode == 0
