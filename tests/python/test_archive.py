"""The example that converts archives: complete and whole pictures, whatever happens to workers and to the script."""

import contextlib
import json
import os
import pathlib
import signal
import subprocess
import sys
import time

import numpy as np
import pytest
from PIL import Image

import lmimaging

pytest.importorskip("distributed")
SCRIPT = pathlib.Path(__file__).parents[2] / "examples/python/convert_archive.py"
SIZE = (640, 480)
FRAMES = 40


@pytest.fixture
def archive(tmp_path, random):
    for i in range(FRAMES):
        path = tmp_path / "archive" / f"day{i % 2}" / f"{i:02}.raw"
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(random.integers(0, 256, lmimaging.required_size("BayerRG12p", SIZE), np.uint8).tobytes())
    return tmp_path


def command(archive, *arguments):
    run = [sys.executable, SCRIPT, "archive", "pictures", "--from", "BayerRG12p", "--size", "640x480", "--workers", "2"]
    return subprocess.Popen([*run, *arguments], cwd=archive, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)


def workers_of(parent):
    found = []
    for entry in pathlib.Path("/proc").iterdir():
        try:
            if entry.name.isdigit() and int((entry / "stat").read_text().rsplit(")", 1)[1].split()[1]) == parent:
                if b"spawn_main" in (entry / "cmdline").read_bytes():
                    found.append(int(entry.name))
        except OSError:  # it has ended
            pass
    return found


def pictures(archive):
    return sorted((archive / "pictures").glob("*/*.png"))


def wait_for_pictures(archive, count):
    end = time.monotonic() + 120
    while len(pictures(archive)) < count:
        assert time.monotonic() < end
        time.sleep(0.01)


@pytest.mark.skipif(not sys.platform.startswith("linux"), reason="reads /proc")
def test_everything_is_converted_though_workers_and_the_script_are_killed(archive):
    short = archive / "archive/day1/short.raw"
    short.write_bytes(b"1234")

    script = command(archive)
    wait_for_pictures(archive, 3)
    workers = workers_of(script.pid)
    os.kill(script.pid, signal.SIGKILL)
    for worker in workers:
        with contextlib.suppress(ProcessLookupError):  # it has noticed
            os.kill(worker, signal.SIGKILL)
    script.communicate()
    done = len(pictures(archive))
    assert 3 <= done < FRAMES

    script = command(archive)
    wait_for_pictures(archive, done + 3)
    workers = workers_of(script.pid)
    assert len(workers) == 2
    os.kill(workers[0], signal.SIGKILL)
    told, errors = script.communicate()
    assert len(pictures(archive)) == FRAMES
    for path in pictures(archive):
        raw = (archive / "archive" / path.relative_to(archive / "pictures")).with_suffix("")
        expected = lmimaging.Development().develop(raw.read_bytes(), "BayerRG12p", "RGB8", size=SIZE)
        assert (np.asarray(Image.open(path)) == expected).all(), path
    assert {path.suffix for path in archive.glob("pictures/**/*") if path.is_file()} == {".png", ".json"}
    assert script.returncode == 1
    assert f"{short.relative_to(archive)}: it has 4 bytes" in errors
    assert f", {done} were there, 1 failed" in told

    short.unlink()
    os.utime(archive / "archive/day0/00.raw")  # newer than its picture
    script = command(archive)
    told, _ = script.communicate()
    assert (told, script.returncode) == (f"1 converted, {FRAMES - 1} were there, 0 failed\n", 0)
    refused = command(archive, "--raw", "RGB8")
    assert "pictures were made otherwise" in refused.communicate()[1] and refused.returncode == 1


@contextlib.contextmanager
def running(directory, program, *arguments):
    process = subprocess.Popen([sys.executable, "-m", f"distributed.cli.{program}", "--no-dashboard", *arguments],
                               cwd=directory, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        yield
    finally:
        process.kill()
        process.wait()


def test_workers_of_a_cluster_are_in_another_directory(archive):
    elsewhere = archive / "elsewhere"
    elsewhere.mkdir()
    notes = archive / "scheduler.json"
    with running(elsewhere, "dask_scheduler", "--host", "127.0.0.1", "--port", "0", "--scheduler-file", notes), \
         running(elsewhere, "dask_worker", "--no-nanny", "--scheduler-file", notes):
        end = time.monotonic() + 120
        while not notes.exists() or not notes.read_text().endswith("}"):
            assert time.monotonic() < end
            time.sleep(0.05)
        script = command(archive, "--pattern", "day0/0*", "--scheduler", json.loads(notes.read_text())["address"])
        assert script.communicate()[0] == "5 converted, 0 were there, 0 failed\n"
    assert len(pictures(archive)) == 5
