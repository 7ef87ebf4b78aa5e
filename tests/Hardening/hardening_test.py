"""Holds scripts/check-hardening against programs built with the release flags and without them."""
import subprocess
import sys

CHECK, HARDENED, PLAIN = sys.argv[1:]
X86_64 = 0x3E
STACK_PROBE = b"\x48\x83\x0c\x24\x00"  # orq $0,(%rsp)


def check(program):
    return subprocess.run([CHECK, program], capture_output=True, text=True)


good = check(HARDENED)
assert good.returncode == 0, good.stderr
with open(HARDENED, "rb") as file:
    content = file.read()
assert content[18] != X86_64 or STACK_PROBE in content, "large frames are not probed page by page"

bad = check(PLAIN)
assert bad.returncode == 1, "a plain program passes"
for flag in ("-pie", "-z relro", "-z now", "-z noexecstack", "-fstack-protector-strong",
             "-D_FORTIFY_SOURCE", "jumps are not guarded"):
    assert flag in bad.stderr, f"{flag} is not missed in a program without it:\n{bad.stderr}"

gone = check(PLAIN + ".missing")
assert gone.returncode == 1 and "can't be read" in gone.stderr
