"""Where and with what a run was made."""

import json
import re
import shlex
import subprocess
from collections.abc import Iterable, Iterator
from pathlib import Path
from typing import Any

_PEERS = {
    "Xerces-C++": "xerces-c",
    "ICU": "icu-uc",
    "libxml2": "libxml-2.0",
    "Expat": "expat",
    "pugixml": "pugixml",
    "TinyXML-2": "tinyxml2",
    "Qt": "Qt6Core",
    "Google Benchmark": "benchmark",
}
# One of headers only, which no .pc file tells of.
_PACKAGES = {"RapidXML": "librapidxml-dev"}
_FLAGS = re.compile(r"-(O|m|std=|march|D ?NDEBUG|f(?!PIC|visibility|diagnostics))")


def describe(context: dict[str, Any], build: Path, sysroot: Path) -> Iterator[tuple[str, str]]:
    """Names of facts, and the facts."""
    yield "Date", str(context["date"])[:10]
    yield "Processor", f"{_processor()}, {context['num_cpus']} cores"
    yield "System", _system()
    yield "Compiler", _compiler(build)
    yield "Libraries", ", ".join(_versions(sysroot))


def _processor() -> str:
    text = Path("/proc/cpuinfo").read_text(encoding="utf-8")
    model = re.search(r"^model name\s*: (.*)$", text, re.MULTILINE)
    return " ".join(model[1].split()) if model else "unknown"


def _system() -> str:
    text = Path("/etc/os-release").read_text(encoding="utf-8")
    name = re.search(r'^PRETTY_NAME="?([^"\n]*)', text, re.MULTILINE)
    return name[1] if name else "unknown"


def _compiler(build: Path) -> str:
    """As the library itself was compiled."""
    commands = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    command = next(each["command"] for each in commands if "/tqxml/writer/" in each["file"])
    words = shlex.split(command)
    flags = [word for word in words[1:] if _FLAGS.match(word)]
    return f"{_first_line([words[0], '--version'])}, `{' '.join(flags)}`"


def _first_line(command: list[str]) -> str:
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    return run.stdout.partition("\n")[0].strip()


def _versions(sysroot: Path) -> Iterable[str]:
    for name, module in _PEERS.items():
        version = _pc_version(sysroot, module)
        if version:
            yield f"{name} {version}"
    for name, package in _PACKAGES.items():
        version = _first_line(["dpkg-query", "-W", "-f", "${Version}", package])
        if version:
            yield f"{name} {version}"


def _pc_version(sysroot: Path, module: str) -> str | None:
    multiarch = "i386-linux-gnu" if sysroot != Path("/") else "*"
    for folder in (f"usr/lib/{multiarch}/pkgconfig", "usr/lib/pkgconfig", "usr/share/pkgconfig"):
        for path in sysroot.glob(f"{folder}/{module}.pc"):
            return _pc_field(path)
    return None


def _pc_field(path: Path) -> str:
    found = re.search(r"^Version: *(.*)$", path.read_text(encoding="utf-8"), re.MULTILINE)
    return found[1].strip() if found else "unknown"
