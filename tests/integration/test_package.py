"""What cpack makes of a build: the package for Debian, looked at but not installed, and the archive of the source.
scripts/try_package installs a package; here is what each build can tell."""

import gzip
import os
import re
import shutil
import subprocess
import tarfile
from pathlib import Path

import pytest
from engine import PROGRAM

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(PROGRAM).resolve().parent


def run(*command, **settings):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=300, check=True,
                          stdin=subprocess.DEVNULL, **settings).stdout


def made(folder, settings, ending):
    """The one file that cpack leaves in the folder."""
    run("cpack", "--config", BUILD / settings, "-B", folder)
    found = [path for path in folder.iterdir() if path.is_file()]
    assert len(found) == 1 and found[0].name.endswith(ending)
    return found[0]


# --- The package ---

needs_debian = pytest.mark.skipif(
    not shutil.which("dpkg-shlibdeps") or not shutil.which("gzip") or os.environ.get("VORKA_SANITIZED") == "1",
    reason="it takes Debian's dpkg-dev, and a build that has bitbases")


@pytest.fixture(scope="module")
def package(tmp_path_factory):
    return made(tmp_path_factory.mktemp("package"), "CPackConfig.cmake", ".deb")


@pytest.fixture(scope="module")
def unpacked(package, tmp_path_factory):
    folder = tmp_path_factory.mktemp("unpacked")
    run("dpkg-deb", "--extract", package, folder)
    return folder


@needs_debian
def test_package_says_what_it_is_and_needs(package):
    told = dict(re.findall(r"(?m)^([A-Z][\w-]+): (.*)$", run("dpkg-deb", "--field", package)))
    assert (told["Package"], told["Section"], told["Priority"]) == ("vorka", "games", "optional")
    assert package.name == f"vorka_{told['Version']}_{told['Architecture']}.deb"
    assert {"libc6", "libstdc++6"} <= {word.split()[0] for word in told["Depends"].split(", ")}
    assert "@" in told["Maintainer"]


@needs_debian
def test_package_holds_programs_bitbases_and_compressed_texts(unpacked):
    for path in ("games/vorka", "games/vorka-uci", "games/vorka-xboard", "games/vorka-table-builder",
                 "games/vorka-check-tables", "lib/vorka/kp_kp.vbb",
                 "lib/vorka/kpp_kp_ram.vbb", "share/man/man6/vorka.6.gz", "share/man/man6/vorka-uci.6.gz",
                 "share/doc/vorka/changelog.gz", "share/doc/vorka/changelog.Debian.gz", "share/doc/vorka/copyright"):
        assert (unpacked / "usr" / path).is_file(), path
    names = [path.name for path in unpacked.rglob("*")]
    assert "LICENSE" not in names and not [name for name in names if name.endswith(".6")]
    manual = gzip.decompress((unpacked / "usr/share/man/man6/vorka.6.gz").read_bytes()).decode()
    assert manual == (ROOT / "packaging/man/vorka.6").read_text()


@needs_debian
def test_unpacked_package_runs(unpacked, tmp_path):
    said = subprocess.run([unpacked / "usr/games/vorka"], input="tb\nquit\n", cwd=tmp_path, capture_output=True,
                          text=True, check=True)
    assert said.stdout.count("(loaded)") == 2


@needs_debian
@pytest.mark.skipif(not shutil.which("lintian"), reason="there is no lintian")
def test_lintian_finds_nothing(package):
    # A build without optimisation and hardening is no release.
    found = subprocess.run(["lintian", "--allow-root", "--fail-on", "error,warning", "--suppress-tags",
                            "hardening-no-pie,hardening-no-fortify-functions", package], capture_output=True, text=True)
    assert found.returncode == 0, found.stdout


# --- The source ---

needs_git = pytest.mark.skipif(not (ROOT / ".git").exists() or not shutil.which("git"), reason="there is no git")


@needs_git
def test_source_archive_holds_what_git_knows_and_nothing_that_was_built(tmp_path):
    archive = made(tmp_path, "CPackSourceConfig.cmake", ".tar.gz")
    top = archive.name.removesuffix(".tar.gz")
    with tarfile.open(archive) as opened:
        paths = {member.name.removeprefix(f"{top}/") for member in opened if not member.isdir()}
    known = run("git", "ls-files", "--cached", "--others", "--exclude-standard", cwd=ROOT).splitlines()
    assert paths == {path for path in known if (ROOT / path).exists()}
