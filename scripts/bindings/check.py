"""Holds what the files declare against the DLLs and the header, and the code of the pages against the samples."""
import re

from bindings import csharp, pascal, python
from bindings.dll import popped_bytes, read_exports
from bindings.header import HOSTS, ROOT, Problems
from bindings.targets import TARGETS


def compare(where, declared, exports, popped, problems):
    for name in sorted(exports.keys() - declared.keys()):
        problems.append(f"{where}: {name} is exported, but not declared")
    for name in sorted(declared.keys() - exports.keys()):
        problems.append(f"{where}: {name} is declared, but not exported")
    for name in sorted(declared.keys() & popped.keys()):
        if declared[name] != popped[name]:
            problems.append(f"{where}: {name} is declared with {sorted(declared[name])} bytes of arguments, but takes "
                            f"{sorted(popped[name])} off the stack")


def check_binaries(interface, build, problems):
    exports = {bits: read_exports(build / preset / "bin" / "QELEngine.dll")
               for bits, preset in ((32, "i686"), (64, "x86_64"))}
    popped = {32: popped_bytes(build / "i686" / "bin" / "QELEngine.dll", exports[32]),
              64: {}}  # there the caller keeps the stack; no code tells the count
    header = {bits: {interface.entry(f.name, bits): {f.bytes()} for f in interface.functions} for bits in exports}
    sources = {"include/QELEngine.h": (header, interface.sizes),
               "QELEngine.pas": pascal.read((HOSTS / "pascal/QELEngine.pas").read_text("utf-8")),
               "QELEngine.cs": csharp.read((HOSTS / "csharp/QELEngine.cs").read_text("utf-8")),
               "qelengine.py": python.read(python.load(HOSTS / "python/qelengine.py"))}
    for name, (declared, sizes) in sources.items():
        for bits in exports:
            compare(f"{name}, {bits} bits", declared[bits], exports[bits], popped[bits], problems)
        if sizes != interface.sizes:
            problems.append(f"{name}: record sizes {sizes} are not the header's {interface.sizes}")
    return len(exports[32]) + len(exports[64])


def check_pages(problems):
    """Code that a page says to be from a sample is in it, and all code in languages that no other
    test compiles says so."""
    count = 0
    for page in [*sorted((ROOT / "docs").glob("embedding*.md")), ROOT / "docs/live-values.md"]:
        pattern = r"(?:<!-- from (\S+) -->\n)?```(\w[\w+#]*)\n(.*?)```"
        for source, language, block in re.findall(pattern, page.read_text("utf-8"), re.S):
            where = f"docs/{page.name}: the code \"{block.splitlines()[0].strip()}\""
            if source:
                count += 1
                sample = ROOT / source
                if not sample.exists() or block not in sample.read_text("utf-8"):
                    problems.append(f"{where} is not in {source}")
            elif language in ("c", "c++", "csharp", "pascal", "python"):
                problems.append(f"{where} is from no sample, so nothing compiles it")
    if not count:
        problems.append("the pages show no code of the samples")
    return count


def check(interface, build):
    problems = [f"examples/hosts/{path} is not current: run python3 scripts/bindings" for path, make in TARGETS.items()
                if not (HOSTS / path).exists() or (HOSTS / path).read_text("utf-8") != make(interface)]
    if not problems:
        exports = check_binaries(interface, build, problems)
        blocks = check_pages(problems)
    if problems:
        raise Problems("\n".join(problems))
    print(f"{len(interface.functions)} functions and {len(interface.records)} records in 3 languages, {exports} names "
          f"in 2 DLLs, {blocks} blocks of code in the pages agree")
