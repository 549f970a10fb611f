"""What a DLL exports, and what its functions take off the stack."""
import re
import subprocess


def objdump(*arguments):
    return subprocess.run(["objdump", *map(str, arguments)], check=True, capture_output=True, text=True).stdout


def read_exports(dll):
    """{name: address} of the flat functions; the class's names are of no use outside C++."""
    text = objdump("-p", dll)
    base = int(re.search(r"^ImageBase\s+([0-9a-f]+)", text, re.M).group(1), 16)
    table = text[text.index("Export Address Table"):]
    addresses = {int(number): base + int(rva, 16) for number, rva in
                 re.findall(r"^\s*\[\s*(\d+)\] \+base\[\s*\d+\] ([0-9a-f]+) Export RVA", table, re.M)}
    names = re.findall(r"^\s*\[\s*(\d+)\] (\S+)$", table[table.index("[Ordinal/Name Pointer]"):], re.M)
    return {name: addresses[int(number)] for number, name in names if not name.startswith(("_Z", "?"))}


def popped_bytes(dll, exports):
    """{name: bytes} that each function of a 32-bit DLL takes off the stack when it returns: all ways
    through its code are followed to their `ret`."""
    code = {}
    last = None
    for address, text in re.findall(r"^\s*([0-9a-f]+):\t(?:[0-9a-f]{2} )+\s*\t?(.*)$", objdump("-d", "-w", dll), re.M):
        address = int(address, 16)
        if last is not None:
            code[last] = (code[last], address)
        code[address] = text.split("#")[0].strip()
        last = address
    code.pop(last, None)
    result = {}
    for name, start in exports.items():
        seen, todo, found = set(), [start], set()
        while todo:
            address = todo.pop()
            if address in seen or address not in code:
                continue
            seen.add(address)
            text, following = code[address]
            word, _, operand = text.partition(" ")
            operand = operand.strip()
            target = re.match(r"(?:0x)?([0-9a-f]+)\b", operand)
            if word.startswith("ret"):
                found.add(int(operand.lstrip("$"), 0) if operand else 0)
                continue
            if word.startswith("j") and target:
                todo.append(int(target.group(1), 16))
            if word not in ("jmp", "ud2"):
                todo.append(following)
        result[name] = found
    return result
