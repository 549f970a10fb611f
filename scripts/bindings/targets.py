"""The files that are made, and which of them are not current."""
from bindings import csharp, pascal, python
from bindings.header import HOSTS, ROOT

TARGETS = {"pascal/QELEngine.pas": pascal.make, "csharp/QELEngine.cs": csharp.make, "python/qelengine.py": python.make}


def write(interface):
    for path, make in TARGETS.items():
        target = HOSTS / path
        text = make(interface)
        if not target.exists() or target.read_text("utf-8") != text:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_text(text, encoding="utf-8", newline="\n")
            print(target.relative_to(ROOT))
