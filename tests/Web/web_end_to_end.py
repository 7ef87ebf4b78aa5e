"""Uses the console in a phone's browser against the real practice service.

    web_end_to_end.py --service FILE --app DIR --modules DIR --artifacts DIR

--app is what ./web has built; --modules is where Playwright is installed. When a check fails, the
artifacts hold the page's picture, what it said, and the programs' output.
"""

import shutil
import sys
import tempfile
from pathlib import Path

import address_chapter
import elements_chapter
import end_to_end
import exchange_chapter
import fonts_chapter
import history_chapter
import missing_fonts_chapter
import pictures_chapter
import push_chapter
import texts_chapter
import typing_chapter
import version_chapter
import web_chapter
from browser import Browser, trust
from browser_console import BrowserConsole
from harness.practice_service import PracticeService
from harness.trial import carry_out, read_options

PHONE = (390, 844)


def main():
    options = read_options(__doc__, "service", "app", "modules")
    folder = options.artifacts
    place = Path(tempfile.mkdtemp(prefix="web-", dir="/tmp"))
    try:
        home = place / "home"
        home.mkdir()
        # What is tried there with the files is tried with a copy.
        app = Path(shutil.copytree(options.app, place / "app"))
        service = PracticeService(options.service, place / "data", None, folder / "service.log",
                                  ("--app", app))
        browser = Browser(options.modules.resolve(), home, folder / "browser.log")
        console = BrowserConsole(browser, PHONE)

        def checks():
            service.start()
            trust(home, service.authority)
            browser.start(*PHONE, granted=["notifications"],
                          script=address_chapter.PUSH_SERVICE + web_chapter.FIRST_PICTURE
                          + version_chapter.LONG_WAIT)
            web_chapter.run_first_visit(console, service, browser)
            elements_chapter.run(console, browser)
            service.stop()
            end_to_end.run(console, service)
            web_chapter.run(console, service, browser)
            history_chapter.run(console, service, browser)
            version_chapter.run(console, service, browser, app)
            typing_chapter.run(console, service, browser)
            texts_chapter.run(console, service, browser)
            exchange_chapter.run(console, service, browser)
            address_chapter.run(console, service, browser)
            push_chapter.run(console, service, browser)
            fonts_chapter.run(console, service, browser, app)
            pictures_chapter.run(console, service, browser, folder)
            missing_fonts_chapter.run(console, service, browser)
            console.check_quiet()
            web_chapter.run_broken_visits(console, service, browser, app)
            service.stop()
            browser.stop()

        try:
            return carry_out(checks, console, service, folder)
        finally:
            browser.stop()
    finally:
        shutil.rmtree(place, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
