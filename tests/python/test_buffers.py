"""What `convert` takes and gives: kinds of buffers, strides, `out`, threads."""

import ctypes
import mmap
import subprocess
import sys
import threading
import time

import numpy as np
import pytest

import lmimaging


@pytest.fixture
def frame(random):
    return random.integers(0, 1024, (12, 20), np.uint16)


def to_rgb(source, **arguments):
    return lmimaging.convert(source, "BayerRG10", "RGB8", demosaic="bilinear", **arguments)


def test_every_buffer_gives_the_same_picture(frame):
    expected = to_rgb(frame)
    assert expected.shape == (12, 20, 3) and expected.dtype == np.uint8
    content = frame.tobytes()
    mapped = mmap.mmap(-1, len(content))
    mapped[:] = content
    native = (ctypes.c_uint8 * len(content)).from_buffer_copy(content)
    flat = [content, bytearray(content), memoryview(content), mapped, native, frame.reshape(-1), content + b"chunk"]
    for source in flat:
        assert (to_rgb(source, size=(20, 12)) == expected).all(), type(source)
    for source in (frame.view(np.int16), memoryview(frame), frame.view(np.uint8)):
        assert (to_rgb(source, size=(20, 12)) == expected).all(), source
    read_only = frame.copy()
    read_only.flags.writeable = False
    assert (to_rgb(read_only) == expected).all()


def test_a_source_of_any_strides_is_read_right(frame):
    crops = [
        frame[2:9, 4:15],
        frame[:1],
        frame[:, :4],
        frame[::2],
        frame[::-1],
        frame[:, ::2],
        frame.T,
        frame[::-1, ::-1],
    ]
    for crop in crops:
        assert (lmimaging.convert(crop, "Mono10", "Mono8") == crop >> 2).all(), crop.strides
    for crop in crops[:1] + crops[4:]:
        assert (to_rgb(crop) == to_rgb(crop.copy())).all(), crop.strides
    planes = np.arange(3 * 8 * 10, dtype=np.uint8).reshape(3, 8, 10)
    for crop in (planes, planes[:, 1:5], planes[:, :, 2:7], planes[::-1]):
        assert (lmimaging.convert(crop, "RGB8_Planar", "RGB8") == np.moveaxis(crop, 0, -1)).all(), crop.strides
    rows = planes.reshape(24, 10)
    assert (lmimaging.convert(rows, "RGB8_Planar", "RGB8", size=(10, 8)) == np.moveaxis(planes, 0, -1)).all()


def test_padded_lines(frame):
    expected = to_rgb(frame)
    padded = np.full((12, 47), 0xEE, np.uint8)
    padded[:, :40] = frame.view(np.uint8)
    assert (to_rgb(padded, size=(20, 12)) == expected).all()
    assert (to_rgb(padded.tobytes(), size=(20, 12), line_size=47) == expected).all()
    # Nothing lies behind the last line's pixels.
    assert (to_rgb(padded.tobytes()[:-7], size=(20, 12), line_size=47) == expected).all()


def test_out_is_written_in_place_and_nothing_else(frame):
    expected = to_rgb(frame)
    new = np.zeros_like(expected)
    assert to_rgb(frame, out=new) is new
    assert (new == expected).all()

    canvas = np.full((14, 30, 3), 7, np.uint8)
    window = canvas[1:13, 5:25]
    assert to_rgb(frame, out=window) is window
    assert (window == expected).all()
    window[:] = 7
    assert (canvas == 7).all()

    room = bytearray(b"\7" * (expected.nbytes + 5))
    assert to_rgb(frame, out=room) is room
    assert room == expected.tobytes() + b"\7" * 5


def test_every_pair_takes_bytes_arrays_and_windows_alike(random):
    width, height = 12, 6
    room = random.integers(0, 256, 8 * width * height, np.uint8)
    for from_, to in lmimaging.converters():
        layout = {"bayer": "BG"} if from_.bayer else {}
        expected = lmimaging.convert(room, from_, to, size=(width, height), **layout)
        source = lmimaging.convert(room, from_, from_, size=(width, height))
        if source.ndim > 1 and not from_.interlaced:
            assert (lmimaging.convert(source, from_, to, **layout) == expected).all(), (from_, to)
        if expected.ndim > 1 and not to.planar:
            canvas = np.full((height, width + 3, *expected.shape[2:]), 7, expected.dtype)
            window = canvas[:, 1:-2]
            window[:] = 0
            lmimaging.convert(room, from_, to, size=(width, height), out=window, **layout)
            assert (window == expected).all(), (from_, to)
            assert (canvas[:, 0] == 7).all() and (canvas[:, -2:] == 7).all(), (from_, to)


def test_threads_share_a_frame_by_its_lines(random):
    frame = random.integers(0, 1024, (240, 320), np.uint16)
    out = np.full((240, 320, 3), 7, np.uint8)
    to_rgb(frame, out=out, lines=(60, 80))
    assert (out[:60] == 7).all() and (out[140:] == 7).all()
    stripes = [(0, 60), (140, 2), (142, 98)]
    threads = [threading.Thread(target=to_rgb, args=(frame,), kwargs={"out": out, "lines": lines}) for lines in stripes]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert (out == to_rgb(frame)).all()


def test_out_that_does_not_fit_is_refused_untouched(frame):
    expected = to_rgb(frame)
    read_only = np.zeros_like(expected)
    read_only.flags.writeable = False
    cases = [
        (np.zeros((20, 12, 3), np.uint8), "shape"),
        (np.zeros((12, 20, 4), np.uint8), "shape"),
        (np.zeros((12, 20, 3), np.uint16), "uint16"),
        (np.zeros((12, 40, 3), np.uint8)[:, ::2], "apart"),
        (np.zeros((12, 20, 3), np.uint8)[::-1], "apart"),
        (read_only, "read-only"),
        (bytes(expected.nbytes), "read-only"),
        (bytearray(expected.nbytes - 1), str(expected.nbytes)),
    ]
    for out, word in cases:
        with pytest.raises(ValueError, match=word) as error:
            to_rgb(frame, out=out)
        assert "out" in str(error.value) or "destination" in str(error.value)
        assert not any(bytes(memoryview(out).tobytes())), word
    with pytest.raises(TypeError, match="out: a list has no buffer"):
        to_rgb(frame, out=[0] * expected.nbytes)


def test_overlapping_images_are_refused(frame):
    room = np.zeros(4096, np.uint8)
    source = room[: frame.nbytes].view(np.uint16).reshape(frame.shape)
    source[:] = frame
    with pytest.raises(ValueError, match="overlap"):
        to_rgb(source, out=room[100 : 100 + 720].reshape(12, 20, 3))
    assert (source == frame).all()
    to_rgb(source, out=room[frame.nbytes : frame.nbytes + 720].reshape(12, 20, 3))
    assert (room[frame.nbytes : frame.nbytes + 720].reshape(12, 20, 3) == to_rgb(frame)).all()


def test_another_thread_runs_during_a_conversion(random):
    frame = random.integers(0, 1024, (1080, 1920), np.uint16)
    out = np.empty((1080, 1920, 3), np.uint8)
    steps = [0]
    done = threading.Event()

    def count():
        while not done.is_set():
            steps[0] += 1
            time.sleep(0)

    thread = threading.Thread(target=count)
    thread.start()
    interval = sys.getswitchinterval()
    sys.setswitchinterval(1000)  # from now on a thread runs until it gives the interpreter lock away
    try:
        before = steps[0]
        for _ in range(1000):
            to_rgb(frame, out=out)
            if steps[0] != before:
                break
        assert steps[0] != before
    finally:
        sys.setswitchinterval(interval)
        done.set()
        thread.join()


def test_a_thread_that_converts_does_not_keep_the_interpreter_from_its_end():
    script = """
import threading, time, numpy, lmimaging

def work():
    while True:
        lmimaging.convert(bytes(200 * 200), "BayerRG8", "RGB8", size=(200, 200))
        begun.set()

begun = threading.Event()
for _ in range(2):
    threading.Thread(target=work, daemon=True).start()
begun.wait(10)
"""
    for _ in range(5):
        ended = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True, timeout=60)
        assert (ended.returncode, ended.stderr) == (0, "")


def test_a_buffer_stays_while_it_is_converted(frame):
    room = bytearray(12 * 20 * 3)
    to_rgb(frame, out=room)
    room.append(0)  # and is let go afterwards
