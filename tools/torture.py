#!/usr/bin/env python3
"""Try whether the command line keeps files safe: in little memory, killed while it saves, and with
calls of the system or the memory failing.

Usage: torture.py PROGRAM [--kills N] [--allocations N] [--seed N] [--full]

PROGRAM is a built tracksmith-cli, beside it lies tests/edit_and_back_up of the same build. --full
kills 500 times and lets each allocation of an edit with snapshot, backup and save fail. After each
run the file must hold all of its old or all of its
new bytes, a failure must have been told, and no temporary files may pile up. Ends with 1 and a line
for each fault otherwise.
"""

import argparse
import errno
import os
import random
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from make_fuzz_corpus import END, chunk, event, meta, midi_file, sysex, tempo  # noqa: E402

OK, UNREADABLE, WRITE_FAILED, PART_FAILED = 0, 3, 4, 5
FAULTS = []


def fault(*words):
    FAULTS.append(" ".join(str(word) for word in words))
    print("FAULT:", FAULTS[-1], flush=True)


def song(events):
    """A song with about so many events on a few channels."""
    tracks = [chunk(tempo(0, 500_000), meta(0, 3, b"Song"), sysex(0, b"\x7e\x7f\x09\x01\xf7"), END)]
    for channel in range(4):
        body = bytearray(event(0, 0xC0 | channel, channel))
        for i in range(events // 16):
            key = 36 + (7 * i + channel) % 60
            body += event(60 + channel, 0xB0 | channel, 7, i % 128)
            body += event(0, 0xB0 | channel, 10, key)
            body += event(0, 0x90 | channel, key, 100) + event(60, 0x80 | channel, key, 64)
        tracks.append(chunk(bytes(body), END))
    return midi_file(*tracks)


class Torture:
    def __init__(self, program, folder):
        self.program = program
        self.editor = str(Path(program).parent / "tests" / "edit_and_back_up")
        self.folder = folder
        self.shim = folder / "fail_calls.so"
        self.target = folder / "save" / "song.mid"
        self.target.parent.mkdir()
        self.forms = []

    def run(self, *arguments, environment=None, limit=None):
        def set_limit():
            if limit is not None:
                resource.setrlimit(resource.RLIMIT_AS, (limit, limit))
        program = self.editor if arguments[0] == "edit" else self.program
        words = arguments[1:] if arguments[0] == "edit" else arguments
        return subprocess.run(
            [program, *map(str, words)], stdin=subprocess.DEVNULL, capture_output=True,
            timeout=120, env={**os.environ, **(environment or {})}, preexec_fn=set_limit)

    # The two ways of saving that the runs take in turn, and the bytes that each gives.
    def prepare(self, events):
        self.target.write_bytes(song(events))
        for switches in (["--format", "0"], ["--running-status"], []):
            self.run("convert", "--in-place", *switches, self.target)
            self.forms.append((switches, self.target.read_bytes()))
        first, *self.forms = self.forms
        if self.forms[1][1] != first[1] or self.forms[0][1] == first[1]:
            fault("saving with and without running status gives no two forms")

    def left_behind(self):
        return [name for name in os.listdir(self.target.parent) if name != self.target.name]

    def next_form(self):
        """Switches and result of the form in which the file is not."""
        now = self.target.read_bytes()
        return next((form, result) for form, result in self.forms if result != now)

    def little_memory(self):
        big = self.folder / "million.mid"
        big.write_bytes(song(1_000_000))
        out = self.folder / "out"
        for arguments in (["info", big], ["convert", big, "--format", "0", "--out", out, "-y"],
                          ["convert", big, "--instrument", "genos", "--out", out, "-y"],
                          ["convert", big, big, big, "--out", out, "-y", "--jobs", "4"]):
            done = self.run(*arguments, limit=256 << 20)
            if done.returncode != OK:
                fault("in 256 MB:", *arguments, done.returncode, done.stderr.decode())
        big.unlink()
        print("a million events in an address space of 256 MB: 4 runs")

    def kills(self, count):
        form, _ = self.next_form()
        start = time.monotonic()
        self.run("convert", "--in-place", *form, self.target)
        usual = time.monotonic() - start
        killed = changed = 0
        for _ in range(count):
            before = self.target.read_bytes()
            form, after = self.next_form()
            program = subprocess.Popen(
                [self.program, "convert", "--in-place", *form, str(self.target)],
                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            time.sleep(random.uniform(0, 1.1 * usual))
            program.kill()
            killed += program.wait() == -signal.SIGKILL
            now = self.target.read_bytes()
            changed += now == after
            if now not in (before, after):
                fault("killed while saving: the file is neither old nor new")
            if len(self.left_behind()) > 1:
                fault("temporary files pile up:", self.left_behind())
        if killed < count / 4:
            fault("only", killed, "of", count, "runs were still alive when they were killed")
        form, _ = self.next_form()
        self.run("convert", "--in-place", *form, self.target)
        if self.left_behind():
            fault("left behind for good:", self.left_behind())
        print(f"{count} kills: {killed} in time, {changed} after the file was replaced")

    def counted(self, kind, *arguments):
        count = self.folder / "count"
        count.unlink(missing_ok=True)
        done = self.run(*arguments, environment=self.failing(kind, 0, count=count))
        if done.returncode != OK:
            fault("does not run under", self.shim.name, *arguments, done.stderr.decode())
        return int(count.read_text())

    def failing(self, kind, at, error=errno.EIO, count=None):
        return {"LD_PRELOAD": str(self.shim), "FAIL_KIND": kind, "FAIL_AT": str(at),
                "FAIL_ERROR": str(error), **({"FAIL_COUNT": str(count)} if count else {})}

    # One save with one failing call.
    def save_failing(self, kind, at, error):
        before = self.target.read_bytes()
        form, after = self.next_form()
        done = self.run("convert", "--in-place", *form, self.target,
                        environment=self.failing(kind, at, error))
        self.judge(f"{kind} {at} {errno.errorcode[error]}", done)
        now = self.target.read_bytes()
        if now not in (before, after):
            fault(kind, at, "the file is neither old nor new")
        if done.returncode == OK and now != after:
            fault(kind, at, "the file is old, and nobody was told")
        for name in self.left_behind():  # at most where removing it failed
            os.unlink(self.target.parent / name)
        return done.returncode

    def judge(self, what, done):
        if done.returncode not in (OK, UNREADABLE, WRITE_FAILED, PART_FAILED):
            fault(what, "ended with", done.returncode, done.stderr.decode())
        if done.returncode != OK and not done.stderr.strip():
            fault(what, "ended with", done.returncode, "without a message")

    def file_calls(self):
        total = self.counted("file", "convert", "--in-place", *self.next_form()[0], self.target)
        failed = 0
        for at in range(1, total + 1):
            for error in (errno.EIO, errno.ENOSPC, errno.EACCES, errno.EEXIST):
                failed += self.save_failing("file", at, error) != OK
        print(f"{total} file calls of a save, each failing in 4 ways: {failed} saves failed")

    def allocations(self, count):
        folder = self.folder / "songs"
        folder.mkdir()
        for i in range(4):
            (folder / f"{i}.mid").write_bytes(song(200 + i))
        batch = ["convert", folder, "--instrument", "genos", "--out", self.folder / "batch", "-y",
                 "--jobs", "2"]
        runs = 0
        for arguments, share in ((["convert", "--in-place", *self.next_form()[0], self.target], 4),
                                 (["info", "--json", folder], 5), (batch, 4)):
            total = self.counted("memory", *arguments)
            for at in sorted(random.sample(range(1, total + 1), min(total, count // share))):
                runs += 1
                if "--in-place" in arguments:
                    self.save_failing("memory", at, errno.ENOMEM)
                    continue
                done = self.run(*arguments, environment=self.failing("memory", at))
                self.judge(f"{arguments[0]} memory {at}", done)
        print(f"{runs} allocations failing")


class Editing:
    """An edit with its snapshot, a backup and a save in one run; each moves the song to the other of
    two forms."""

    def __init__(self, torture):
        self.torture = torture
        self.target = torture.folder / "edit" / "song.mid"
        self.target.parent.mkdir()
        self.backups = torture.folder / "backups"
        self.target.write_bytes(song(600))
        torture.run("convert", "--in-place", self.target)
        self.forms = []
        for semitones in ("1", "-1"):
            self.forms.append((semitones, self.target.read_bytes()))
            self.run(semitones)
        if self.target.read_bytes() != self.forms[0][1] or self.forms[0][1] == self.forms[1][1]:
            fault("editing gives no two forms")

    def run(self, semitones, **named):
        return self.torture.run("edit", self.target, self.backups, semitones, **named)

    def next(self):
        """Semitones that lead to the other form, the present form and that one."""
        now = self.target.read_bytes()
        first, second = self.forms
        return (first[0], now, second[1]) if now == first[1] else (second[0], now, first[1])

    def saved(self):
        return {name for name in os.listdir(self.backups) if name.endswith(".mid")}

    def strays(self):
        known = self.saved() | {"index.tsv"}
        return ([name for name in os.listdir(self.target.parent) if name != self.target.name] +
                [name for name in os.listdir(self.backups) if name not in known])

    def look(self, what, before, after, backups):
        if self.target.read_bytes() not in (before, after):
            fault(what, "the file is neither old nor new")
        for name in self.saved() - backups:
            if (self.backups / name).read_bytes() != after:
                fault(what, "a backup is not the song", name)
        if backups - self.saved():
            fault(what, "backups are lost:", backups - self.saved())

    # So many that none is removed to make room.
    def tidy(self):
        for name in sorted(self.saved())[:-5]:
            os.unlink(self.backups / name)
        return self.saved()

    def clean(self):
        for _ in range(2):
            if self.run(self.next()[0]).returncode != OK:
                fault("does not run any more")
        if self.strays():
            fault("left behind for good:", self.strays())

    def kills(self, count):
        start = time.monotonic()
        self.run(self.next()[0])
        usual = time.monotonic() - start
        killed = 0
        for _ in range(count):
            semitones, before, after = self.next()
            backups = self.tidy()
            program = subprocess.Popen(
                [self.torture.editor, str(self.target), str(self.backups), semitones],
                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            time.sleep(random.uniform(0, 1.1 * usual))
            program.kill()
            killed += program.wait() == -signal.SIGKILL
            self.look("killed:", before, after, backups)
        if killed < count / 4:
            fault("only", killed, "of", count, "edits were still alive when they were killed")
        self.clean()
        print(f"{count} kills of an edit with backup and save: {killed} in time")

    def failing_once(self, kind, at, error):
        semitones, before, after = self.next()
        backups = self.tidy()
        done = self.run(semitones, environment=self.torture.failing(kind, at, error))
        what = f"edit, {kind} {at} {errno.errorcode[error]}:"
        self.torture.judge(what, done)
        self.look(what, before, after, backups)
        if done.returncode == OK and self.target.read_bytes() != after:
            fault(what, "the file is old, and nobody was told")
        if done.returncode == OK and self.saved() == backups:
            fault(what, "no backup, and nobody was told")
        return done.returncode != OK

    def failures(self, allocations):
        files = self.torture.counted("file", "edit", self.target, self.backups, self.next()[0])
        memory = self.torture.counted("memory", "edit", self.target, self.backups, self.next()[0])
        chosen = range(1, memory + 1)
        if allocations < memory:
            chosen = sorted(random.sample(chosen, allocations))
        failed = sum(self.failing_once("file", at, random.choice((errno.EIO, errno.ENOSPC)))
                     for at in range(1, files + 1))
        failed += sum(self.failing_once("memory", at, errno.ENOMEM) for at in chosen)
        self.clean()
        print(f"{files} file calls and {len(chosen)} of {memory} allocations of an edit failing: "
              f"{failed} runs failed")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--kills", type=int, default=200)
    parser.add_argument("--allocations", type=int, default=500)
    parser.add_argument("--seed", type=int, default=None)
    parser.add_argument("--full", action="store_true")
    arguments = parser.parse_args()
    kills = 500 if arguments.full else arguments.kills
    seed = arguments.seed if arguments.seed is not None else random.randrange(1 << 32)
    print("seed", seed)
    random.seed(seed)
    folder = Path(tempfile.mkdtemp(prefix="tracksmith_torture"))
    try:
        torture = Torture(str(Path(arguments.program).resolve()), folder)
        source = Path(__file__).resolve().parent / "fail_calls.cpp"
        subprocess.run(["c++", "-std=c++20", "-O1", "-shared", "-fPIC", "-Wall", "-Wextra",
                        "-Werror", str(source), "-ldl", "-o", str(torture.shim)], check=True)
        torture.prepare(20_000)
        torture.little_memory()
        torture.kills(kills // 2)
        torture.file_calls()
        torture.allocations(arguments.allocations)
        editing = Editing(torture)
        editing.kills(kills - kills // 2)
        editing.failures(sys.maxsize if arguments.full else arguments.allocations // 4)
    finally:
        shutil.rmtree(folder, ignore_errors=True)
    return 1 if FAULTS else 0


if __name__ == "__main__":
    sys.exit(main())
