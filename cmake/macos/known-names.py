#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Burnwick developers
# SPDX-License-Identifier: MIT
"""known-names.py FRAMEWORKS DECLARATIONS OBJECT...

Compares with the description of macOS' frameworks (TypeScript declarations in the folder FRAMEWORKS):
- every method, property and enumerator of the headers below DECLARATIONS: that its class has it, of that type and
  value;
- every constant named k... there: that it exists;
- every selector, class, C function and constant that the Mach-O objects name.
Prints what differs, and fails then.
"""
import pathlib
import re
import struct
import sys

FRAMEWORKS = ["AppKit", "CoreFoundation", "CoreServices", "Foundation", "Runtime", "Security",
              "ServiceManagement", "UserNotifications"]
OWN_PREFIX = "BW"
SCALARS = {"CGFloat", "NSInteger", "NSUInteger", "NSTimeInterval", "NSStringEncoding", "NSFontWeight", "double",
           "long long", "int", "unichar"}
TEXTS = {"NSString", "NSNotificationName", "NSAppearanceName", "NSAttributedStringKey", "NSToolbarItemIdentifier"}
STRUCTS = {"NSPoint": "CGPoint", "NSSize": "CGSize", "NSRect": "CGRect"}
# Its methods are those of many categories, some of which the description leaves out.
SKIPPED = {"NSObject"}


def joined(selector):
    """The name of a selector in the description: initWithBytes:length: is initWithBytesLength."""
    first, *rest = selector.rstrip(":").split(":")
    return first + "".join(part[:1].upper() + part[1:] for part in rest)


class Description:
    def __init__(self, folder):
        self.words = set()
        self.bodies = {}
        self.parents = {}
        self.enums = {}
        for framework in FRAMEWORKS:
            text = (folder / f"{framework}.d.ts").read_text()
            self.words |= set(re.findall(r"\w+", text))
            for kind in re.finditer(r"^declare (?:class|interface) (\w+)([^{\n]*)\{\n(.*?)^\}", text, re.M | re.S):
                name, head, body = kind.groups()
                self.bodies[name] = self.bodies.get(name, "") + body
                self.parents.setdefault(name, set()).update(re.findall(r"[A-Z]\w+", re.sub(r"<.*?>", "", head)))
            for enum in re.finditer(r"^declare const (\w+): \{\n(.*?)^\};", text, re.M | re.S):
                self.enums[enum.group(1)] = dict(re.findall(r"^  (\w+): (-?\d+),", enum.group(2), re.M))

    def lines_of(self, owner, name):
        """Lines that declare the name in the class, its ancestors and their protocols."""
        pending, seen, lines = [owner], set(), []
        while pending:
            current = pending.pop()
            if current in seen:
                continue
            seen.add(current)
            pending += self.parents.get(current, ())
            lines += re.findall(rf"^  (?:static |readonly |get |set )*{name}\??[(:<].*$", self.bodies.get(current, ""), re.M)
        return lines


def described_type(kind, enums):
    """A pattern for the type in the description; None where it has no counterpart, as for pointers and blocks."""
    kind = re.sub(r"\b(nullable|_Nullable|_Nonnull|const|__unsafe_unretained)\b", "", kind).strip()
    bare = re.sub(r"<.*", "", kind).rstrip("* ").strip()
    if kind == "BOOL":
        return "boolean"
    if kind == "void":
        return "void"
    if kind in SCALARS:
        return "number"
    if kind in STRUCTS:
        return STRUCTS[kind]
    if bare in TEXTS:
        return "string"
    if kind in enums:
        return rf"interop\.Enum<typeof {kind}>"
    if kind.endswith("*") and bare.startswith(("NS", "UN", "SM")) and kind.count("*") == 1 and "State" not in bare:
        return bare
    return None


def check_method(description, owner, line, enums):
    static, returned, rest = re.match(r"([-+]) \((.*?)\)(?=\w)(.*);", line).groups()
    parts = re.findall(r"(\w+):\(((?:[^()]|\([^()]*(?:\([^()]*\))*[^()]*\))*)\)\w+", rest)
    selector = "".join(f"{name}:" for name, _ in parts) or rest
    found = description.lines_of(owner, joined(selector))
    if not found:
        return f"{owner} has no method {selector}"
    wanted = [pattern for _, kind in parts if (pattern := described_type(kind, enums))]
    result = described_type(returned, enums)
    for text in found:
        if static == "+" and not text.lstrip().startswith("static"):
            continue
        arguments, _, end = text.rpartition("): ")
        if all(re.search(rf": (?:\w+ \| )*{pattern}", arguments) for pattern in wanted) and (
                result is None or re.match(rf"{result}\b|this|InstanceType", end)):
            return None
    return f"{owner} declares {selector} otherwise: {found[0].strip()}"


def check_property(description, owner, line, enums):
    attributes, kind, name = re.match(r"@property(\([^)]*\))? (.*?)(\w+);", line).groups()
    found = description.lines_of(owner, name)
    if not found:
        return f"{owner} has no property {name}"
    pattern = described_type(kind, enums)
    if pattern is not None and not any(re.search(rf"{name}: {pattern}", text) for text in found):
        return f"{owner} declares {name} otherwise: {found[0].strip()}"
    if "readonly" not in (attributes or "") and all("readonly" in text for text in found):
        return f"{owner} declares {name} read-only"
    return None


def check_enum(description, name, members):
    known = description.enums.get(name)
    if known is None:
        return [f"there is no enumeration {name}"]
    wrong = []
    for member, value in re.findall(r"(\w+) = (-?\d+)", members):
        # The description leaves the common part of the names out.
        if not any(short in member and known[short] == value for short in known):
            wrong.append(f"{name} has no {member} = {value}")
    return wrong


def check_declarations(description, folder):
    wrong, texts = [], [header.read_text() for header in sorted(folder.rglob("*.h"))]
    enums = {name for text in texts for name in re.findall(r"NS_(?:ENUM|OPTIONS)\(\w+, (\w+)\)", text)}
    for text in texts:
        constants = set(re.findall(r"\bk(?:Sec|FS)\w+", text))
        wrong += [f"there is no constant {name}" for name in sorted(constants - description.words)]
        for name, members in re.findall(r"typedef NS_(?:ENUM|OPTIONS)\(\w+, (\w+)\) \{(.*?)\}", text):
            wrong += check_enum(description, name, members)
        for owner, body in re.findall(r"^@(?:interface|protocol) (\w+)(.*?)^@end", text, re.M | re.S):
            if owner in SKIPPED:
                continue
            for line in body.splitlines():
                result = None
                if line.startswith(("- (", "+ (")):
                    result = check_method(description, owner, line, enums)
                elif line.startswith("@property"):
                    result = check_property(description, owner, line, enums)
                wrong += [result] if result else []
    return wrong


def sections(data):
    """Name, size and offset of each section, and of the strings of the symbol table."""
    at = 32
    for _ in range(struct.unpack_from("<I", data, 16)[0]):
        command, size = struct.unpack_from("<II", data, at)
        if command == 0x19:  # LC_SEGMENT_64
            for i in range(struct.unpack_from("<I", data, at + 64)[0]):
                section = at + 72 + 80 * i
                length, offset = struct.unpack_from("<QI", data, section + 40)
                yield data[section:section + 16].rstrip(b"\0").decode(), length, offset
        if command == 2:  # LC_SYMTAB
            offset, length = struct.unpack_from("<II", data, at + 16)
            yield "symbols", length, offset
        at += size


def check_object(description, path):
    data = path.read_bytes()
    strings = {}
    for name, length, offset in sections(data):
        strings.setdefault(name, set()).update(data[offset:offset + length].decode(errors="replace").split("\0"))
    symbols = strings.get("symbols", set())
    own = set()
    for symbol in symbols:
        for pattern in (r"[-+]\[\w+(?:\(\w+\))? (\S+)\]", r"_OBJC_IVAR_\$_\w+\.(\w+)"):
            own |= set(re.findall(pattern, symbol))
    for selector in strings.get("__objc_methname", set()) - {""} - own:
        name = joined(selector)
        stem = name[3:] if name.startswith("set") else name
        names = {name, stem[:1].lower() + stem[1:], "is" + stem}
        # .cxx_destruct and encoded properties are the compiler's own.
        if not (names & description.words or selector.startswith(".cxx") or re.match(r"T[#@Q].*,R", selector)):
            yield f"{path.name}: selector {selector}"
    for symbol in symbols:
        name = re.fullmatch(r"_OBJC_CLASS_\$_(\w+)|_((?:NS|UN|SM|CF|FS|kSec|Sec)\w+)", symbol)
        name = name and (name.group(1) or name.group(2))
        if name and not name.startswith(OWN_PREFIX) and name not in description.words:
            yield f"{path.name}: name {name}"


def main():
    description = Description(pathlib.Path(sys.argv[1]))
    wrong = check_declarations(description, pathlib.Path(sys.argv[2]))
    for path in sys.argv[3:]:
        wrong += check_object(description, pathlib.Path(path))
    for line in wrong:
        print(f"known-names: {line}", file=sys.stderr)
    sys.exit(bool(wrong))


main()
