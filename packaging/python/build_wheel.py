"""The PEP 517 backend of the Python module: CMake builds it, together with the library, into a wheel.

The environment variable CMAKE_ARGS has further arguments of CMake, such as -DLM_INSTRUCTION_SETS=avx2.
"""

import base64
import hashlib
import io
import os
import pathlib
import re
import shlex
import subprocess
import sys
import sysconfig
import tarfile
import tempfile
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
VERSION = re.search(r"project\(\w+ VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text()).group(1)
NAME = f"lmimaging-{VERSION}"
METADATA = f"""\
Metadata-Version: 2.1
Name: lmimaging
Version: {VERSION}
Summary: Pixel formats of machine-vision cameras, as NumPy arrays
Requires-Python: >=3.9
Requires-Dist: numpy
"""
# Of the source distribution, beside what is at the root.
SOURCES = ("cmake", "debian/copyright", "include", "packaging", "python", "src", "tools")


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    python = f"cp{sys.version_info.major}{sys.version_info.minor}"
    tag = f"{python}-{python}-{re.sub('[-.]', '_', sysconfig.get_platform())}"
    name = f"{NAME}-{tag}.whl"
    wheel = f"Wheel-Version: 1.0\nGenerator: lmimaging\nRoot-Is-Purelib: false\nTag: {tag}\n"
    with tempfile.TemporaryDirectory() as build:
        files = _built(pathlib.Path(build))
    files[f"{NAME}.dist-info/METADATA"] = METADATA.encode()
    files[f"{NAME}.dist-info/WHEEL"] = wheel.encode()
    path = pathlib.Path(wheel_directory, name)
    part = path.with_suffix(".part")
    with zipfile.ZipFile(part, "w", zipfile.ZIP_DEFLATED) as archive:
        record = ""
        for member, content in files.items():
            archive.writestr(_entry(member), content)
            digest = base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()
            record += f"{member},sha256={digest},{len(content)}\n"
        member = f"{NAME}.dist-info/RECORD"
        archive.writestr(_entry(member), f"{record}{member},,\n")
    part.replace(path)
    return name


def build_sdist(sdist_directory, config_settings=None):
    name = f"{NAME}.tar.gz"
    paths = [path for path in ROOT.iterdir() if path.is_file() and not path.name.startswith(".")]
    for folder in SOURCES:
        path = ROOT / folder
        paths += [path] if path.is_file() else [found for found in path.rglob("*") if found.is_file()]
    part = pathlib.Path(sdist_directory, name + ".part")
    with tarfile.open(part, "w:gz", format=tarfile.PAX_FORMAT) as archive:
        for path in sorted(path for path in paths if "__pycache__" not in path.parts):
            archive.add(path, f"{NAME}/{path.relative_to(ROOT)}")
        information = tarfile.TarInfo(f"{NAME}/PKG-INFO")
        information.size = len(METADATA)
        archive.addfile(information, io.BytesIO(METADATA.encode()))
    part.rename(pathlib.Path(sdist_directory, name))
    return name


def _built(build):
    """The contents of the package by their names in the wheel: the module with the library beside it."""
    package = "wheel/lmimaging"
    options = {
        "CMAKE_BUILD_TYPE": "Release",
        "CMAKE_INSTALL_LIBDIR": package,
        "LM_BUILD_EXAMPLES": "OFF",
        "LM_BUILD_TESTS": "OFF",
        "LM_BUILD_TOOLS": "OFF",
        "LM_PYTHON_INSTALL_DIR": "wheel",
        "LM_PYTHON_REQUIRED": "ON",
        "Python_EXECUTABLE": sys.executable,
    }
    # pip hides the installed packages from this process, but the module is compiled with them.
    environment = {key: value for key, value in os.environ.items() if not key.startswith("PYTHON")}
    configure = ["cmake", "-S", ROOT, "-B", build, *(f"-D{key}={value}" for key, value in options.items())]
    _run([*configure, *shlex.split(os.environ.get("CMAKE_ARGS", ""))], environment)
    _run(["cmake", "--build", build, "--parallel", str(os.cpu_count())], environment)
    stage = build / "stage"
    for component in ("python", "library"):
        _run(["cmake", "--install", build, "--prefix", stage, "--component", component, "--strip"], environment)
    files = {}
    for path in sorted((stage / package).rglob("*")):
        # A wheel has no links: the library is there under the name that programs look for alone.
        is_other_name = path.name.startswith("libLmImagingLib.so.") and path.name.count(".") > 2
        if path.is_file() and not is_other_name and path.name != "libLmImagingLib.so":
            files[str(path.relative_to(stage / "wheel"))] = path.read_bytes()
    return files


def _run(command, environment):
    try:
        subprocess.run(list(map(str, command)), check=True, env=environment, stdout=sys.stderr)
    except FileNotFoundError:
        sys.exit(f"lmimaging: {command[0]} is missing; needed: g++, CMake 3.25, pybind11 2.10, NumPy and Python's headers "
                 "(Debian: g++ cmake make pybind11-dev python3-numpy python3-dev)")


def _entry(name):
    """With a fixed time, so that equal contents are equal wheels."""
    entry = zipfile.ZipInfo(name, (2020, 1, 1, 0, 0, 0))
    entry.compress_type = zipfile.ZIP_DEFLATED
    entry.external_attr = (0o755 if ".so" in name else 0o644) << 16
    return entry
