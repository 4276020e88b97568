"""Where and with what a run was made."""

import json
import re
import shlex
import subprocess
from collections.abc import Iterator
from pathlib import Path
from typing import Any

# What takes part by a source in bench/, and where in the sysroot its version is told.
_LIBRARIES = (
    ("Xerces-C++", "contenders/xerces.cpp", "xerces-c.pc"),
    ("ICU", "jobs/utf8.cpp", "icu-uc.pc"),
    ("libxml2", "contenders/libxml2.cpp", "libxml-2.0.pc"),
    ("Expat", "contenders/expat.cpp", "expat.pc"),
    ("pugixml", "contenders/pugixml.cpp", "pugixml.pc"),
    ("TinyXML-2", "contenders/tinyxml2.cpp", "tinyxml2.pc"),
    ("RapidXML", "contenders/rapidxml.cpp", "usr/include/rapidxml/rapidxml.hpp"),
    ("Qt", "contenders/qt.cpp", "Qt6Core.pc"),
    ("Google Benchmark", "main.cpp", "benchmark.pc"),
)
_VERSION = re.compile(r"^(?:Version:|// Version) *(.*)$", re.MULTILINE)
_FLAGS = re.compile(r"-(O|m|std=|march|D ?NDEBUG|f(?!PIC|visibility|diagnostics))")


def describe(context: dict[str, Any], build: Path, sysroot: Path) -> Iterator[tuple[str, str]]:
    """Names of facts, and the facts."""
    commands = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    yield "Date", str(context["date"])[:10]
    yield "Processor", f"{_processor()}, {context['num_cpus']} cores"
    yield "System", _system()
    yield "Compiler", _compiler(commands)
    yield "Libraries", ", ".join(versions(commands, sysroot))


def _processor() -> str:
    text = Path("/proc/cpuinfo").read_text(encoding="utf-8")
    model = re.search(r"^model name\s*: (.*)$", text, re.MULTILINE)
    return " ".join(model[1].split()) if model else "unknown"


def _system() -> str:
    text = Path("/etc/os-release").read_text(encoding="utf-8")
    name = re.search(r'^PRETTY_NAME="?([^"\n]*)', text, re.MULTILINE)
    return name[1] if name else "unknown"


def _compiler(commands: list[dict[str, str]]) -> str:
    """As the library itself was compiled."""
    command = next(each["command"] for each in commands if "/tqxml/writer/" in each["file"])
    words = shlex.split(command)
    flags = [word for word in words[1:] if _FLAGS.match(word)]
    return f"{_first_line([words[0], '--version'])}, `{' '.join(flags)}`"


def _first_line(command: list[str]) -> str:
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    return run.stdout.partition("\n")[0].strip()


def versions(commands: list[dict[str, str]], sysroot: Path) -> Iterator[str]:
    """Of the libraries that were compiled in."""
    compiled = [each["file"] for each in commands]
    for name, source, place in _LIBRARIES:
        if any(file.endswith(f"/bench/{source}") for file in compiled):
            yield f"{name} {_version(sysroot, place)}"


def _version(sysroot: Path, place: str) -> str:
    for path in _found(sysroot, place):
        told = _VERSION.search(path.read_text(encoding="utf-8"))
        if told:
            return told[1].strip()
    return "(unknown version)"


def _found(sysroot: Path, place: str) -> Iterator[Path]:
    if not place.endswith(".pc"):
        yield from sysroot.glob(place)
        return
    for folder in ("usr/lib/*/pkgconfig", "usr/lib/pkgconfig", "usr/share/pkgconfig"):
        yield from sysroot.glob(f"{folder}/{place}")
