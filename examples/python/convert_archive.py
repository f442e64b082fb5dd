#!/usr/bin/env python3
"""Converts an archive of raw frames to pictures, on all processors of this machine or of a Dask cluster.

    convert_archive.py archive pictures --from BayerRG10 --size 1920x1080
    convert_archive.py archive pictures --from Mono12p --size 640x480 --raw Mono16 --scheduler tcp://head:8786

Dask distributes the work (Debian: python3-distributed, python3-pil). Without --scheduler it starts workers on this
machine. A real cluster is a scheduler and workers, on one machine or on many:

    dask-scheduler --host head
    dask-worker tcp://head:8786 --nthreads 1 --nworkers auto

Its workers need the package lmimaging and Pillow, the same Python as this script, and the two directories under the
same paths.

The script may be run again at any time: it converts those files only whose picture is missing or older than they are.
A worker that dies is replaced, and its files are converted again. A picture is written under another name, and gets
its own name when it is whole. Only one script may work on a directory of pictures at a time. A file that cannot be
converted is reported, the others are converted, and the exit code is 1.
"""

import argparse
import io
import itertools
import json
import os
import pathlib
import sys
import tempfile

from distributed import Client, as_completed
from PIL import Image

import lmimaging

PART = ".lmimaging-part"  # the ending of files that are being written
SETTINGS = "convert_archive.json"


def picture_of(path, settings):
    """The bytes of the file that a raw frame becomes."""
    data = path.read_bytes()
    source, size, raw = settings["from"], tuple(settings["size"]), settings["raw"]
    expected = lmimaging.required_size(source, size)
    if len(data) != expected:
        raise ValueError(f"it has {len(data)} bytes; a frame of {source} of {size[0]} x {size[1]} pixels has {expected}")
    if raw is not None:
        return bytes(memoryview(lmimaging.convert(data, source, raw, size=size)).cast("B"))
    if settings["gray"]:
        picture = lmimaging.convert(data, source, "Mono8", size=size)
    else:
        picture = lmimaging.Development(**settings["development"]).develop(data, source, "RGB8", size=size)
    file = io.BytesIO()
    Image.fromarray(picture).save(file, "png")
    return file.getvalue()


def convert(source, destination, settings):
    """Converts one file, on a worker. The destination is there as a whole, or not at all."""
    time = os.stat(source).st_mtime_ns  # before it is read: a source that changes meanwhile is newer than its picture
    content = picture_of(pathlib.Path(source), settings)
    destination = pathlib.Path(destination)
    destination.parent.mkdir(parents=True, exist_ok=True)
    handle, part = tempfile.mkstemp(PART, ".", destination.parent)
    try:
        with os.fdopen(handle, "wb") as file:
            file.write(content)
            os.fchmod(file.fileno(), 0o644)
            os.fsync(file.fileno())
        os.utime(part, ns=(time, time))
        os.replace(part, destination)
    except BaseException:
        os.unlink(part)
        raise


def is_done(source, destination):
    try:
        return os.stat(destination).st_mtime_ns >= os.stat(source).st_mtime_ns
    except FileNotFoundError:
        return False


def pairs(arguments, ending):
    """The sources with what each becomes, in the order of their names."""
    for source in sorted(arguments.archive.glob(arguments.pattern)):
        if source.is_file():
            name = source.relative_to(arguments.archive)
            yield str(source), str(arguments.pictures / name.with_name(name.name + ending))


def keep_settings(directory, settings):
    """Notes how the pictures are made. One directory never gets pictures of different settings."""
    path = directory / SETTINGS
    if not path.exists():
        part = directory / f".{os.getpid()}{PART}"
        part.write_text(json.dumps(settings, indent=2) + "\n")
        os.replace(part, path)
    elif json.loads(path.read_text()) != settings:
        sys.exit(f"convert_archive: {path} says that the pictures were made otherwise; allowed: another directory, "
                 "or the same arguments")


def run(client, work, settings):
    """Converts with a few files a worker in flight, however many there are; returns the numbers of files."""
    counts = {"converted": 0, "were there": 0, "failed": 0}

    def submitted():
        for source, destination in work:
            if is_done(source, destination):
                counts["were there"] += 1
                continue
            future = client.submit(convert, source, destination, settings, pure=False)
            future.source = source
            yield future

    waiting = submitted()
    in_flight = max(4, 4 * sum(client.nthreads().values()))
    futures = as_completed(itertools.islice(waiting, in_flight))
    for future in futures:
        if future.status == "finished":
            counts["converted"] += 1
        else:
            counts["failed"] += 1
            print(f"convert_archive: {future.source}: {future.exception()}", file=sys.stderr)
        futures.update(itertools.islice(waiting, 1))
    return counts


def client_of(arguments):
    """A connection to the scheduler, or to workers on this machine, which end with it."""
    if not arguments.scheduler:
        return Client(n_workers=arguments.workers or os.cpu_count(), threads_per_worker=1, dashboard_address=None)
    try:
        client = Client(arguments.scheduler)
    except (OSError, ValueError) as error:
        sys.exit(f"convert_archive: --scheduler: '{arguments.scheduler}' does not answer ({error}); allowed: the "
                 "address of a running Dask scheduler, such as tcp://head:8786")
    if not client.nthreads():
        print(f"convert_archive: {arguments.scheduler} has no workers yet; waiting for them", file=sys.stderr)
    return client


def arguments_of_the_command():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("archive", type=pathlib.Path, help="directory of raw frames")
    parser.add_argument("pictures", type=pathlib.Path, help="directory to write to, with the archive's directories")
    parser.add_argument("--from", dest="source", required=True, metavar="TYPE", help="type of the frames")
    parser.add_argument("--size", required=True, metavar="WxH", help="width and height of the frames in pixels")
    parser.add_argument("--raw", metavar="TYPE", help="write raw frames of this type (default: PNG of 8 bits)")
    parser.add_argument("--development", type=pathlib.Path, metavar="FILE", help="a camera's settings, as JSON")
    parser.add_argument("--pattern", default="**/*.raw", help="which files are frames (default: %(default)s)")
    parser.add_argument("--scheduler", metavar="ADDRESS", help="of a Dask cluster (default: workers on this machine)")
    parser.add_argument("--workers", type=int, metavar="N", help="workers on this machine (default: its processors)")
    arguments = parser.parse_args()
    # Workers of a cluster have working directories of their own.
    arguments.archive, arguments.pictures = arguments.archive.absolute(), arguments.pictures.absolute()
    return parser, arguments


def main():
    parser, arguments = arguments_of_the_command()
    if not arguments.archive.is_dir():
        parser.error(f"archive: '{arguments.archive}' is no directory")
    try:
        width, height = (int(number) for number in arguments.size.split("x"))
        known = lmimaging.converters(arguments.source, arguments.raw)
        if not known:
            raise ValueError(f"--raw: there is no converter from {arguments.source} to {arguments.raw}")
        lmimaging.required_size(arguments.source, (width, height))
        development = json.loads(arguments.development.read_text()) if arguments.development else {}
        lmimaging.Development(**development)
    except (OSError, TypeError, ValueError) as error:
        parser.error(str(error))
    settings = {
        "from": arguments.source,
        "size": [width, height],
        "raw": arguments.raw,
        "gray": known[0][0].gray,
        "development": development,
    }
    arguments.pictures.mkdir(parents=True, exist_ok=True)
    keep_settings(arguments.pictures, settings)

    with client_of(arguments) as client:
        counts = run(client, pairs(arguments, ".raw" if arguments.raw else ".png"), settings)
    for part in arguments.pictures.glob(f"**/.*{PART}"):  # of workers that died
        part.unlink()
    print(", ".join(f"{count} {what}" for what, count in counts.items()))
    sys.exit(1 if counts["failed"] else 0)


if __name__ == "__main__":
    main()
