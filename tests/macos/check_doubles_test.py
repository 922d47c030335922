#!/usr/bin/env python3
"""Sees whether check_doubles.py finds what it is there to find.

    check_doubles_test.py FLAG...     clang's, for GNUstep's Foundation and the runtime's headers

What stands in for an SDK is made of the doubles themselves: with those they agree. Then defects
are put into it, and each has to be named. Ends with 77 where libclang for Python is missing.
"""

import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent

# In which header what becomes what, and how the difference is told.
DEFECTS = [
    ("AppKit/Menus.h", "cancelTracking;", "cancelTrackingSoon;",
     "-[NSMenu cancelTracking]: ['void'], the SDK has nothing"),
    ("AppKit/Menus.h", "(NSInteger)index", "(NSUInteger)index", "-[NSMenu itemAtIndex:]: "),
    ("AppKit/Application.h", "NSAlertFirstButtonReturn = 1000", "NSAlertFirstButtonReturn = 1",
     "NSAlertFirstButtonReturn: "),
    ("libproc.h", "uint32_t typeinfo", "uint64_t typeinfo", "proc_listpids: "),
    ("sys/sysctl.h", "pid_t e_ppid;", "int e_new; pid_t e_ppid;",
     "eproc.e_ppid: [264, 4], the SDK has [268, 4]"),
    ("mach/mach.h", "natural_t wire_count;", "",
     "vm_statistics64.wire_count: [12, 4], the SDK has nothing"),
]


def stand_in(folder):
    """What the doubles declare, and the rest as an SDK has it."""
    shutil.copytree(HERE / "include", folder)
    whole = folder / "sys/resource.h"
    whole.write_text("#ifndef _SYS_RESOURCE_H_\n" + whole.read_text() + "#endif\n")
    foundation = folder / "Foundation/Foundation.h"
    foundation.write_text(foundation.read_text().replace("(Apple)", "(Tolerance)"))
    # Objective-C sees dispatch's objects as objects.
    dispatch = folder / "dispatch/dispatch.h"
    text = re.sub(r"^struct \w+ .*\{\};\n", "", dispatch.read_text(), flags=re.MULTILINE)
    text = re.sub(r"^typedef struct (dispatch_\w+)_s\* (\w+);",
                  r"@protocol OS_\1\n@end\ntypedef NSObject<OS_\1>* \2;", text, flags=re.MULTILINE)
    dispatch.write_text("#import <Foundation/Foundation.h>\n" + text)


def check(folder, flags):
    command = [sys.executable, str(HERE / "check_doubles.py"), f"-I{folder}", *flags]
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    return run.returncode, run.stdout + run.stderr


def main():
    try:
        import clang.cindex  # pylint: disable=import-outside-toplevel,unused-import
    except ImportError:
        print("skipped: libclang for Python (python3-clang) is not installed")
        return 77
    flags = sys.argv[1:]
    failures = []
    with tempfile.TemporaryDirectory() as path:
        sdk = Path(path) / "sdk"
        stand_in(sdk)
        status, told = check(sdk, flags)
        if status != 0 or ", 0 differences" not in told:
            failures.append("the doubles differ from what was made of them:\n" + told)

        for header, before, after, _ in DEFECTS:
            text = (sdk / header).read_text()
            if text.count(before) != 1:
                failures.append(f"{header}: '{before}' stands there {text.count(before)} times")
            (sdk / header).write_text(text.replace(before, after))
        status, told = check(sdk, flags)
        if status != 1:
            failures.append(f"ends with {status} where there are differences")
        failures += [f"{header}: {after}: not told" for header, _, after, words in DEFECTS
                     if words not in told]
        if failures:
            failures.append(told)

        (sdk / "libproc.h").write_text("#error no such header\n")
        status, told = check(sdk, flags)
        if status != 1 or "libproc.h" not in told:
            failures.append("a header that can't be read is not told:\n" + told)
    print("\n".join(failures) or "all is told")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
