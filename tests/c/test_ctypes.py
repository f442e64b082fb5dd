"""The interface for C, called from Python by ctypes, with the declarations of docs/c.md's kind and no compiler.

Usage: test_ctypes.py PATH_OF_LIBRARY
"""

import ctypes
import sys
import unittest
from ctypes import byref, c_char_p, c_int64, c_size_t, c_uint32, c_void_p, sizeof

lib = ctypes.CDLL(sys.argv.pop())
lib.lmiMessage.restype = c_char_p


class Sized(ctypes.Structure):
    def __init__(self, **members):
        super().__init__(structSize=sizeof(self), **members)


class Format(Sized):
    _fields_ = [("structSize", c_size_t), ("type", c_int64), ("name", c_char_p), ("pfncName", c_char_p),
                ("fourccName", c_char_p), ("pfnc", c_uint32), ("fourcc", c_uint32), ("flags", c_uint32),
                ("isMosaic", c_uint32), ("sampleDepth", c_uint32), ("reserved", c_uint32)]


class Image(Sized):
    _fields_ = [("structSize", c_size_t), ("type", c_int64), ("data", c_void_p), ("size", c_size_t),
                ("width", c_size_t), ("height", c_size_t), ("lineSize", c_size_t)]


Job = ctypes.CFUNCTYPE(None, c_void_p, c_size_t)
Executor = ctypes.CFUNCTYPE(None, c_void_p, c_size_t, Job, c_void_p)


class Options(Sized):
    _fields_ = [("structSize", c_size_t), ("filter", c_void_p), ("executor", Executor), ("context", c_void_p),
                ("threads", c_size_t), ("firstLine", c_size_t), ("lines", c_size_t), ("flags", c_uint32),
                ("depth", c_uint32)]


def image(name, width, height, content=b""):
    format = Format()
    assert lib.lmiFindFormat(name, byref(format)) == 0, lib.lmiMessage()
    size = c_size_t()
    assert lib.lmiRequiredSize(c_int64(format.type), c_size_t(width), c_size_t(height), c_size_t(0), byref(size)) == 0
    buffer = ctypes.create_string_buffer(content, size.value)
    view = Image(type=format.type, data=ctypes.addressof(buffer), size=size, width=width, height=height)
    view.buffer = buffer
    return view


class CInterface(unittest.TestCase):
    def test_converts_on_threads_of_python(self):
        width, height = 1024, 1024
        content = bytes(range(256)) * (width * height // 256)
        source = image(b"Mono8", width, height, content)
        destination = image(b"RGB8", width, height)
        indices = []

        def execute(_, count, job, job_context):
            for index in range(count):
                indices.append(index)
                job(job_context, index)

        options = Options(executor=Executor(execute), threads=4)
        self.assertEqual(lib.lmiConvert(byref(source), byref(destination), byref(options)), 0, lib.lmiMessage())
        self.assertEqual(indices, [0, 1, 2, 3])
        self.assertEqual(destination.buffer.raw, b"".join(bytes([value]) * 3 for value in content))

    def test_says_what_is_wrong(self):
        source = image(b"Mono8", 4, 4)
        destination = image(b"RGB8", 4, 5)
        self.assertEqual(lib.lmiConvert(byref(source), byref(destination), None), 18)
        self.assertIn(b"destination is 4 x 5 pixels; it must be as large as source", lib.lmiMessage())


if __name__ == "__main__":
    unittest.main()
