"""The libFuzzer programs of tests/fuzz, for scripts/fuzz: how one is run, watched, and what it finds made small."""

import hashlib
import pathlib
import queue
import re
import signal
import subprocess
import tempfile
import threading
import time

LONGEST_RUN = 25  # seconds for one input
MOST_MEMORY = 2048  # MiB
MINIMISING = 60  # seconds for each finding
MOST_LOOKS = 5  # after so many findings the target finds the same again and again
STATUS = re.compile(r"#(\d+)\s.*?\bcov: (\d+)")
RUNS = re.compile(r"stat::number_of_executed_units: *(\d+)")
SUMMARY = re.compile(r"SUMMARY: (.*)")


def names_of_targets(root):
    """All that tests/fuzz builds, in its order."""
    return re.findall(r"vorka_fuzz_target\((\w+)", (root / "tests/fuzz/CMakeLists.txt").read_text())


class Target:
    """What it learns stays in `state`: inputs that reach new code in corpus/NAME, findings in findings/NAME."""

    def __init__(self, name, root, build, state):
        self.name = name
        self.program = build / "tests/fuzz" / name
        self.seeds = root / "tests/fuzz/seeds" / name
        self.corpus = state / "corpus" / name
        self.findings = state / "findings" / name
        self.runs = self.coverage = 0
        for folder in (self.corpus, self.findings):
            folder.mkdir(parents=True, exist_ok=True)

    def run(self, seconds, tell, stop):
        """Looks for so long; `tell` is called now and then. Findings, made small: paths with words about them. A finding
        that was there before counts again."""
        end = time.monotonic() + seconds
        found = {}
        earlier, looks = 0, 0
        while end - time.monotonic() > 0.5 and not stop.is_set() and looks < MOST_LOOKS:
            looks += 1
            with tempfile.TemporaryDirectory(dir=self.findings) as new:
                self.look(end - time.monotonic(), pathlib.Path(new), lambda runs: tell(earlier + runs), stop)
                earlier += self.runs
                artifacts = list(pathlib.Path(new).iterdir())
                for path in artifacts:
                    kept = self.minimised(path)
                    found[kept] = self.words_about(kept)
            if not artifacts and end - time.monotonic() > 2 and not stop.is_set():
                found[self.program] = "ended by itself: " + self.last_words[-200:].replace("\n", " ")
        self.runs = earlier
        return list(found.items())

    def look(self, seconds, folder, tell, stop):
        command = [self.program, self.corpus, self.seeds, f"-max_total_time={max(int(seconds), 1)}", f"-timeout={LONGEST_RUN}",
                   f"-report_slow_units={LONGEST_RUN}",
                   f"-rss_limit_mb={MOST_MEMORY}", f"-artifact_prefix={folder}/", "-print_final_stats=1", "-verbosity=1"]
        process = subprocess.Popen([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.PIPE, text=True, errors="replace", start_new_session=True,
                                   cwd=folder)
        lines = queue.Queue()
        threading.Thread(target=lambda: [lines.put(line) for line in (*process.stderr, None)], daemon=True).start()
        said = []
        self.runs = 0
        try:
            while (line := next_of(lines, stop)) is not None:
                if not line:
                    tell(self.runs)
                    continue
                said = [*said[-40:], line]
                if status := STATUS.match(line):
                    self.runs, self.coverage = int(status[1]), int(status[2])
                    tell(self.runs)
        finally:
            if process.poll() is None:
                process.send_signal(signal.SIGINT)  # it ends in order, and has written what it learnt
            try:
                process.wait(LONGEST_RUN)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        while line := next_of(lines, None):  # what it says at its end
            said.append(line)
        self.last_words = "".join(said)
        if runs := RUNS.search(self.last_words):
            self.runs = int(runs[1])
        if coverage := re.findall(r"\bcov: (\d+)", self.last_words):
            self.coverage = int(coverage[-1])

    def minimised(self, path):
        """A finding as small as libFuzzer makes it, named after what it holds."""
        small = path.with_name(path.name + ".small")
        run_quietly([self.program, "-minimize_crash=1", f"-max_total_time={MINIMISING}", f"-timeout={LONGEST_RUN}",
                     f"-exact_artifact_path={small}", path], MINIMISING + 2 * LONGEST_RUN)
        if small.exists() and small.stat().st_size <= path.stat().st_size:
            path = small
        kind = path.name.partition("-")[0]
        kept = self.findings / f"{kind}-{hashlib.sha1(path.read_bytes()).hexdigest()}"
        kept.write_bytes(path.read_bytes())
        return kept

    def words_about(self, path):
        """What the sanitizers, or libFuzzer, say of a finding in one line."""
        told = run_quietly([self.program, f"-timeout={LONGEST_RUN}", path], 2 * LONGEST_RUN)
        summary = SUMMARY.search(told)
        return summary[1] if summary else "no longer fails"


def next_of(lines, stop):
    """A line; "" if there is none for a while; None at the end."""
    if stop and stop.is_set():
        return None
    try:
        return lines.get(timeout=0.5)
    except queue.Empty:
        return ""


def run_quietly(command, patience):
    try:
        done = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, timeout=patience, start_new_session=True,
                              cwd=pathlib.Path(command[-1]).parent)
        return done.stdout.decode("latin-1")
    except subprocess.TimeoutExpired:
        return ""
