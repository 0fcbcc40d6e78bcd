"""Faults at the calls of each command that changes the disk, and at those of the start behind it. See tools/prove.sh."""

import argparse
import collections
import errno
import hashlib
import io
import os
import shutil
import subprocess
import sys
import time
import zipfile
from concurrent.futures import ProcessPoolExecutor

ONCE = [errno.ENOSPC, errno.EIO, errno.EACCES, errno.EROFS, errno.EDQUOT, errno.EMFILE]
KINDS = {
    "killed": ["kill"],
    "cut short": ["half"],
    "no room": ["full"],
    "error once": [str(number) for number in ONCE],
    "error for good": ["%d+" % number for number in ONCE],
}
# Their list is written before the catalogue counts its tracks, or they go on with the next file where one fails.
TWO_PARTS = {
    "remap", "remove-track", "remove-new-track", "drop", "drop-folder", "local-save", "transfer", "pack-folder",
    "pack-zip"
}
# Where old bytes are kept: by the program, and by its sibling that resets the catalogue.
STORES = ("recovery/", "reset/")
# What is gathered there goes at the next run of that command.
SCRATCH = "tmp/PackFolder"


def files_of(folder):
    found = {}
    for place, _, names in os.walk(folder):
        for name in names:
            path = os.path.join(place, name)
            with open(path, "rb") as file:
                found[os.path.relpath(path, folder)] = file.read()
    return found


def lines_of(content):
    return [line.strip() for line in content.replace(b"\r", b"\n").split(b"\n") if line.strip()]


def entries_of(content):
    """Of an archive names and content, whenever it was packed; a torn one as it stands."""
    try:
        with zipfile.ZipFile(io.BytesIO(content)) as archive:
            return sorted((entry.filename, entry.CRC, entry.file_size) for entry in archive.infolist())
    except zipfile.BadZipFile:
        return content


def meaning(name, content):
    """What a user would miss: of a list its entries, of the database its keys, in whatever order."""
    if content is None:
        return None
    if name.endswith((".m3u", ".tmp")):
        return lines_of(content)
    if name.endswith(".zip"):
        return entries_of(content)
    if not name.endswith((".dat", ".bak")):
        return content
    keys, section = {}, b""
    for line in lines_of(content):
        if line.startswith(b"["):
            section = line
        else:
            key, _, value = line.partition(b"=")
            if value or b"=" not in line:
                keys[section, key] = keys.get((section, key), b"") + value
    return keys


def is_part_of_index(now, new):
    """An index that was not finished: whole lines of it."""
    return now is None or (set(now.split(b"\r\n")) <= set(new.split(b"\r\n")) and now.endswith(b"\r\n"))


def losses(command, before, after, found):
    """Names of files that are neither as before nor as after, with their kind."""
    kept = {hashlib.sha256(content).digest() for name, content in found.items() if name.startswith(STORES)}
    bad = []
    for name in sorted(set(before) | set(after) | set(found)):
        if name.startswith((*STORES, SCRATCH)):
            continue
        old, new, now = before.get(name), after.get(name), found.get(name)
        if meaning(name, now) in (meaning(name, old), meaning(name, new)):
            continue
        if name.endswith(".idx") and new is not None and is_part_of_index(now, new):
            continue
        safe = old is not None and hashlib.sha256(old).digest() in kept
        if safe and command in TWO_PARTS:
            continue
        if old is None and new is not None and command in TWO_PARTS:
            continue
        bad.append(("left over" if old is None else "in the store" if safe else "LOST", name))
    return bad


class Lane:
    def __init__(self, fixture, library, folder):
        self.fixture, self.library, self.there = fixture, library, os.path.join(folder, "there")
        os.makedirs(folder, exist_ok=True)
        self.plain = dict(os.environ, LC_ALL="C.UTF-8", TZ="UTC", QT_HASH_SEED="0", FIXTURE_LENIENT="1")

    def prepare(self, command):
        shutil.rmtree(self.there, ignore_errors=True)
        environment = dict(self.plain, FIXTURE_FOR=command)
        subprocess.run([self.fixture, "prepare", self.there], check=True, env=environment)

    def run(self, command, call=0, way="", log=None):
        environment = dict(self.plain)
        if call or log:
            environment.update(
                LD_PRELOAD=self.library, FAULTY_FOLDER=self.there, FAULTY_CALL=str(call), FAULTY_WAY=way
            )
        if log:
            environment["FAULTY_LOG"] = log
        ended = subprocess.run(
            [self.fixture, command, self.there], env=environment, capture_output=True, check=False, timeout=120
        )
        return ended.returncode

    def calls(self, command):
        log = self.there + ".log"
        if os.path.exists(log):
            os.unlink(log)
        self.run(command, log=log)
        if not os.path.exists(log):
            return []
        with open(log, errors="replace") as file:
            return file.read().splitlines()


def try_points(fixture, library, folder, command, step, offset, nested):
    """All points of one command that fall to this lane: a count and the losses by kind."""
    lane = Lane(fixture, library, folder)
    lane.prepare(command)
    before = files_of(lane.there)
    calls = lane.calls(command)
    lane.run("show")
    after = files_of(lane.there)
    points, found, seconds = collections.Counter(), collections.defaultdict(list), collections.Counter()

    def judge(kind, what):
        lane.run("show")
        points[kind] += 1
        bad = losses(command, before, after, files_of(lane.there))
        if bad:
            found[kind].append("%s, %s: %s" % (command, what, bad))

    for number in range(1 + offset, len(calls) + 1, step):
        for kind, ways in KINDS.items():
            begun = time.time()
            way = ways[(number // step) % len(ways)]
            lane.prepare(command)
            ended = lane.run(command, number, way)
            if ended not in (0, -9):
                found[kind].append("%s ended with %d at call %d" % (command, ended, number))
            judge(kind, "call %d (%s) %s" % (number, calls[number - 1], way))
            seconds[kind] += time.time() - begun
        begun = time.time()
        if nested and (number - 1) // step % nested == 0:
            lane.prepare(command)
            lane.run(command, number, "kill")
            steps = len(lane.calls("show"))
            for second in range(1, steps + 1):
                way = ("kill", "half", str(errno.EIO), "%d+" % errno.ENOSPC)[second % 4]
                lane.prepare(command)
                lane.run(command, number, "kill")
                lane.run("show", second, way)
                judge("start behind it", "killed at %d, then call %d %s" % (number, second, way))
        seconds["start behind it"] += time.time() - begun
    return points, found, seconds


def main():
    told = argparse.ArgumentParser()
    told.add_argument("fixture")
    told.add_argument("library")
    told.add_argument("work")
    told.add_argument("--step", type=int, default=1, help="each n-th call")
    told.add_argument("--nested", type=int, default=4, help="each n-th of these kills is followed by faults of the start")
    told.add_argument("--commands", default="")
    args = told.parse_args()
    commands = args.commands.split(",") if args.commands else subprocess.run(
        [args.fixture], capture_output=True, text=True, check=True
    ).stdout.split()
    points, found, seconds = collections.Counter(), collections.defaultdict(list), collections.Counter()
    with ProcessPoolExecutor(os.cpu_count()) as pool:
        jobs = [
            pool.submit(
                try_points, args.fixture, args.library, os.path.join(args.work, command), command, args.step,
                place % args.step, args.nested,
            )
            for place, command in enumerate(commands)
        ]
        for job in jobs:
            more_points, more_found, more_seconds = job.result()
            points.update(more_points)
            seconds.update(more_seconds)
            for kind, bad in more_found.items():
                found[kind] += bad
    print("%-18s %8s %8s %8s" % ("Kind", "Points", "Bad", "Minutes"))
    for kind in list(KINDS) + ["start behind it"]:
        print("%-18s %8d %8d %8.1f" % (kind, points[kind], len(found[kind]), seconds[kind] / 60))
    for kind, bad in found.items():
        for line in bad[:20]:
            print("%s: %s" % (kind, line))
    if not points or any(found.values()):
        sys.exit(1)


if __name__ == "__main__":
    main()
