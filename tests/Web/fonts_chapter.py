"""Fonts for what the console's own ones lack: each is fetched when it is needed, and no more of it."""

import json

import dashboard_chapter
import decisions_chapter
import projects_chapter
import workspace_chapter
from exchange_chapter import handle, handle_as_usual, open_decisions
from harness.checks import chapter, check, check_equal, wait_until

HEBREW, ARABIC, JAPANESE, KOREAN = "\u05e9\u05dc\u05d5\u05dd", "\u0645\u0631\u062d\u0628\u0627", \
    "\u6771\u4eac \u30d7\u30ed", "\ud55c\uad6d\uc5b4"
THAI, THAI_FONT = "\u0e44\u0e17\u0e22", "NotoSansThai-Regular"
THUMB, GERMANY = "\U0001f44d", "\U0001f1e9\U0001f1ea"
PEOPLE = ("\U0001f468", "\U0001f469", "\U0001f467")
FAMILY = "\u200d".join(PEOPLE)
SCRIPTS = {HEBREW: "DejaVuSans", ARABIC: "DejaVuSans", JAPANESE: "DroidSansFallbackFull",
           KOREAN: "wqy-microhei", THUMB: "NotoColorEmoji"}
# What a browser fetches for one emoji, in bytes.
LITTLE = 300_000
# One emoji in a title is narrower, and two are not.
ONE = 25

# Projects of these titles alone, and fonts as long as there are some.
TITLES = """async (address, request) => {
    if (%s && address.endsWith('.ttf')) { throw new TypeError('Failed to fetch'); }
    if (!address.endsWith('/projects')) { return null; }
    const all = await (await usualFetch(address, request)).json();
    return new Response(JSON.stringify(%s.map((title, index) =>
        ({ ...all[index], bid_status: 'awarded', title }))));
}"""


def run(console, service, browser, app):
    run_scripts(console, service, browser, app)
    run_emoji(console, service, browser, app)
    run_composed(console, service, browser)
    handle_as_usual(browser)


def run_scripts(console, service, browser, app):
    chapter("Fonts of other scripts, which can't be had at first")
    before = start(console, service, browser)
    show(console, browser, list(SCRIPTS), without_fonts=True)
    squares = titles(console, SCRIPTS)
    check("without their fonts the console shows something for each", all(map(width, squares.values())))
    # A text that is shown, or the network's return, is the time to ask again.
    show(console, browser, list(SCRIPTS))
    browser.call("evaluate", code="void dispatchEvent(new Event('online'))")
    for text, font in SCRIPTS.items():
        wait_until(f"{font} draws {text}", lambda one=text: is_drawn(console, one, squares[one]), 60)
        check(f"{font} draws {text}", True)
    check_equal("what was fetched", sorted(stems(fetched(browser, before))), sorted(set(SCRIPTS.values())))
    check("the emoji is in colour, and the other texts are not",
          [text for text in SCRIPTS if is_colourful(titles(console, [text])[text])] == [THUMB])
    size = sum((app / f"{name}.br").stat().st_size for name in fetched(browser, before)
               if name.startswith("NotoColorEmoji"))
    check(f"the emoji took {size} bytes", 0 < size < LITTLE)


def run_emoji(console, service, browser, app):
    chapter("Emoji that are several characters")
    whole = max(app.glob("NotoColorEmoji.*.ttf"), key=lambda path: path.stat().st_size).name
    before = start(console, service, browser)
    apart = " ".join(PEOPLE)
    show(console, browser, [apart])
    wait_until("each by itself is in colour", lambda: is_colourful(titles(console, [apart])[apart]), 60)
    show(console, browser, [GERMANY])
    wait_until("a flag is one", lambda: is_colourful(titles(console, [GERMANY])[GERMANY])
               and width(titles(console, [GERMANY])[GERMANY]) < ONE, 60)
    check("neither needs all of the font",
          len(fetched(browser, before)) == 2 and whole not in fetched(browser, before))
    show(console, browser, [FAMILY])
    wait_until("joined they are one", lambda: 0 < width(titles(console, [FAMILY])[FAMILY]) < ONE, 60)
    check_equal("how often all of the font was fetched", fetched(browser, before).count(whole), 1)


def run_composed(console, service, browser):
    """What is typed is in the field, and not yet the field's."""
    chapter("Text that is being composed")
    before = start(console, service, browser)
    handle_as_usual(browser)
    console.keys("F5")
    open_decisions(console, service)
    workspace_chapter.open_tab(console, "Decisions")
    console.focus(decisions_chapter.FIELD)
    check("its font was not needed before", THAI_FONT not in stems(fetched(browser, before)))
    browser.call("protocol", method="Input.imeSetComposition",
                 parameters={"text": THAI, "selectionStart": 0, "selectionEnd": 0})
    wait_until("its font is fetched", lambda: THAI_FONT in stems(fetched(browser, before)))
    check_equal("what the field holds meanwhile", console.field_text(decisions_chapter.FIELD), "")
    browser.call("protocol", method="Input.insertText", parameters={"text": THAI})
    console.wait_for("it is taken in the end",
                     lambda seen: console.field_text(decisions_chapter.FIELD) == THAI)
    check("its font is there before it is taken", True)


def start(console, service, browser):
    """A visit anew, at the projects; gives the number of requests before it."""
    console.stop()
    before = len(browser.call("requests"))
    dashboard_chapter.start(console, service)
    handle(browser, TITLES % ("false", "[]"))
    dashboard_chapter.show_tab(console, "Projects")
    return before


def show(console, browser, wanted, without_fonts=False):
    handle(browser, TITLES % (json.dumps(without_fonts), json.dumps(wanted)))
    console.keys("F5")
    console.wait_for("the projects have these titles", lambda seen: all(
        seen.all("label", title) for title in wanted))


def fetched(browser, before):
    """The names of the font files that were asked for since then."""
    return [name for _, address in browser.call("requests")[before:]
            if (name := address.rpartition("/")[2]).endswith(".ttf")]


def stems(names):
    return [name.partition(".")[0] for name in names]


def titles(console, wanted):
    """What is drawn where these titles are: rows of pixels, each of which is red, green and blue."""
    seen = console.look_at_rest()
    picture = console.picture_at_rest()
    size = len(picture.pixels) // (picture.width * picture.height)

    def drawn(node):
        return [[picture.pixels[at:at + 3] for at in range((y * picture.width + node.x) * size,
                                                           (y * picture.width + node.right) * size, size)]
                for y in range(node.y, node.bottom)]

    return {title: drawn(seen.first("label", title)) for title in wanted}


def is_drawn(console, title, squares):
    rows = titles(console, [title])[title]
    return rows != squares and width(rows) > 0


def is_colourful(rows):
    return sum(max(pixel) - min(pixel) > 80 for row in rows for pixel in row) > 30


def width(rows):
    """From the first to the last column with something bright."""
    bright = [x for row in rows for x, pixel in enumerate(row) if max(pixel) > 100]
    return max(bright) - min(bright) + 1 if bright else 0
