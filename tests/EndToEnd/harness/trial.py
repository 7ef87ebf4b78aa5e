"""What every program has in common that tries the console from outside."""

import argparse
import shutil
import sys
import time
import traceback
from pathlib import Path

from harness.checks import CheckFailed


def read_options(description, *names):
    """The paths that the command line gives for these names and for the artifacts, whose folder is
    there then, and empty."""
    parser = argparse.ArgumentParser(description=description)
    for name in (*names, "artifacts"):
        parser.add_argument(f"--{name}", required=True, type=Path)
    options = parser.parse_args()
    shutil.rmtree(options.artifacts, ignore_errors=True)
    options.artifacts.mkdir(parents=True)
    return options


def carry_out(checks, console, service, folder):
    """Calls checks and ends both programs, whatever happens. Gives the exit status; when a check
    failed, the folder holds the screen's picture and what the screen said."""
    begin = time.monotonic()
    try:
        checks()
    except Exception as error:
        _keep_evidence(folder, console)
        if isinstance(error, CheckFailed):
            print(f"FAILED  {error}")
        else:
            traceback.print_exc(file=sys.stdout)
        print(f"The picture, the tree and the programs' output are in {folder}")
        return 1
    finally:
        # After a failure both still run; they end with the test at the latest.
        for program in (console, service):
            try:
                program.stop()
            except Exception as error:
                print(f"at the end: {error}")
    print(f"All checks hold, in {time.monotonic() - begin:.0f} s.")
    return 0


def _keep_evidence(folder, console):
    try:
        console.save_picture(folder / "screen.png")
        if console.running():
            (folder / "screen.txt").write_text("\n".join(console.look().lines()),
                                               encoding="utf-8")
    except Exception as error:  # The failure that is being kept matters more.
        print(f"not everything could be kept: {error}")
