#!/usr/bin/env python3
"""Holds the doubles of a Mac's libraries against the headers of a macOS SDK.

    tests/macos/check_doubles.py [FLAG...]

Whatever a double declares must be in the SDK: classes, protocols, methods, properties, functions
and constants with the same types and values, the fields of records at the same place and as large.
Needs libclang for Python (`pip install libclang`).
The flags tell clang where the SDK is: on a Mac, -isysroot "$(xcrun --show-sdk-path)". Prints what
differs; the exit status is 0 when nothing does.
"""

import re
import sys
import tempfile
from pathlib import Path

from clang.cindex import CursorKind, Index, TranslationUnit

DOUBLES = Path(__file__).resolve().parent / "include"
APPKIT = "#import <AppKit/AppKit.h>\n"
ACCESSIBILITY = "#include <ApplicationServices/ApplicationServices.h>\n"
DISPATCH = "#include <dispatch/dispatch.h>\n"
KERNEL = ("#include <libproc.h>\n#include <mach/mach.h>\n#include <sys/proc.h>\n"
          "#include <sys/sysctl.h>\n")
LANGUAGE = ["-x", "objective-c++", "-std=c++20"]

CONTAINERS = {
    CursorKind.OBJC_INTERFACE_DECL: "class",
    CursorKind.OBJC_CATEGORY_DECL: "class",
    CursorKind.OBJC_PROTOCOL_DECL: "protocol",
}
METHODS = {CursorKind.OBJC_INSTANCE_METHOD_DECL: "-", CursorKind.OBJC_CLASS_METHOD_DECL: "+"}


def kind_of(cursor):
    try:
        return cursor.kind
    except ValueError:  # an attribute that the binding does not know
        return None


def spelled(a_type):
    """A type without what only Swift and the analyzer read."""
    text = a_type.get_canonical().spelling
    text = re.sub(r"\b(_Nonnull|_Nullable|_Null_unspecified|__kindof|__autoreleasing|__strong)\b",
                  "", text)
    text = re.sub(r"\bconst\b", "", text)
    text = re.sub(r"\bNSObject<OS_(\w+)>", r"\1_s", text)  # what C++ calls dispatch's objects
    while (shorter := re.sub(r"(\b[A-Z]\w*)<[^<>]*>", r"\1", text)) != text:
        text = shorter  # NSArray<NSView *>
    return re.sub(r"\s+", "", text)


def signature(method, owner):
    types = [spelled(method.result_type)] + [spelled(a.type) for a in method.get_arguments()]
    return [owner + "*" if t in ("instancetype", owner) else t for t in types]


def value_of(constant):
    """The value of a constant that is written as a number."""
    tokens = "".join(t.spelling for t in constant.get_tokens())
    return tokens.partition("=")[2].strip("()")


def fields(record):
    """The named fields of a structure: name to place and size, in bytes."""
    found = {}
    for field in record.type.get_fields():
        if field.spelling and " " not in field.spelling:
            place = record.type.get_offset(field.spelling) // 8
            found[f"{record.spelling}.{field.spelling}"] = [place, field.type.get_size()]
    return found


def is_in(cursor, places):
    if cursor.location.file is None:
        return False
    path = Path(cursor.location.file.name).resolve()
    return any(place == path or place in path.parents for place in places)


def owner_of(container):
    if kind_of(container) == CursorKind.OBJC_CATEGORY_DECL:
        for child in container.get_children():
            if kind_of(child) == CursorKind.OBJC_CLASS_REF:
                return child.spelling
    return container.spelling


def declarations(unit, places=None):
    """What stands in these files or folders, or anywhere: name to types or value."""
    found = {}
    parents = {}
    pending = list(unit.cursor.get_children())
    while pending:
        cursor = pending.pop()
        if kind_of(cursor) == CursorKind.LINKAGE_SPEC or kind_of(cursor) == CursorKind.UNEXPOSED_DECL:
            pending.extend(cursor.get_children())
        if places and not is_in(cursor, places):
            continue
        if kind_of(cursor) in CONTAINERS:
            owner = owner_of(cursor)
            found[f"{CONTAINERS[kind_of(cursor)]} {owner}"] = []
            for child in cursor.get_children():
                if kind_of(child) in METHODS:
                    name = f"{METHODS[kind_of(child)]}[{owner} {child.spelling}]"
                    found[name] = signature(child, owner)
                elif kind_of(child) in (CursorKind.OBJC_SUPER_CLASS_REF, CursorKind.OBJC_PROTOCOL_REF):
                    parents.setdefault(owner, []).append(child.spelling)
        elif kind_of(cursor) == CursorKind.STRUCT_DECL:
            pending.extend(cursor.get_children())  # records that it declares itself
            if cursor.spelling and " " not in cursor.spelling:
                found.update(fields(cursor))
        elif kind_of(cursor) == CursorKind.FUNCTION_DECL:
            found[cursor.spelling] = signature(cursor, "")
        elif kind_of(cursor) == CursorKind.VAR_DECL:
            found[cursor.spelling] = [spelled(cursor.type), value_of(cursor)]
        elif kind_of(cursor) == CursorKind.ENUM_DECL:
            for one in cursor.get_children():
                if kind_of(one) == CursorKind.ENUM_CONSTANT_DECL:
                    found[one.spelling] = [spelled(cursor.enum_type), one.enum_value]
    return found, parents


def inherited(name, sdk, parents):
    """The declaration of this name by the SDK, by the class itself or by what it inherits."""
    match = re.fullmatch(r"([-+])\[(\w+) (.*)\]", name)
    if not match:
        return sdk.get(name)
    pending = [match[2]]
    for owner in pending:  # it grows: a class and a protocol may have one name
        types = sdk.get(f"{match[1]}[{owner} {match[3]}]")
        if types is not None:
            return [match[2] + "*" if t == owner + "*" else t for t in types]
        pending.extend(p for p in parents.get(owner, []) if p not in pending)
    return None


def parse(source, flags):
    unit = TranslationUnit.from_source("check.mm", LANGUAGE + flags,
                                       unsaved_files=[("check.mm", source)], index=Index.create())
    for diagnostic in unit.diagnostics:
        if diagnostic.severity >= 3:
            sys.exit(f"{diagnostic.location}: {diagnostic.spelling}")
    return unit


def declared_by_doubles(source, names, flags):
    places = [DOUBLES / name for name in names]
    with tempfile.TemporaryDirectory() as path:  # these doubles, and no others
        for place in places:
            (Path(path) / place.name).symlink_to(place)
        return declarations(parse(source, [f"-I{path}"] + flags), places)[0]


def main():
    flags = sys.argv[1:]
    doubles = declared_by_doubles(APPKIT, ["AppKit", "Foundation"], flags)
    doubles |= declared_by_doubles(ACCESSIBILITY, ["ApplicationServices"], flags)
    doubles |= declared_by_doubles(DISPATCH, ["dispatch"], flags)
    # One double adds to a header that an SDK has whole: that one is left out by its guard.
    doubles |= declared_by_doubles(KERNEL, ["libproc.h", "mach", "sys"],
                                   flags + ["-D_SYS_RESOURCE_H_"])
    sdk, parents = declarations(parse(APPKIT + ACCESSIBILITY + DISPATCH + KERNEL, flags))
    differences = 0
    for name, types in sorted(doubles.items()):
        expected = inherited(name, sdk, parents)
        if expected != types:
            differences += 1
            print(f"{name}: {types}, the SDK has {'nothing' if expected is None else expected}")
    print(f"{len(doubles)} declarations, {differences} differences")
    return 1 if differences or not doubles else 0


if __name__ == "__main__":
    sys.exit(main())
