"""What a phone's keyboard does: it composes words, takes them back and puts others there."""

import dashboard_chapter
import decisions_chapter
import exchange_chapter
import projects_chapter
import workspace_chapter
from harness.checks import chapter, check_equal, wait_until
from web_chapter import FIELD

BIDS = "Max Daily Bids"


def run(console, service, browser):
    dashboard_chapter.start(console, service)
    run_words(console, browser)
    run_other_field(console, browser)
    run_lines(console, service, browser)


def compose(browser, text, **replaced):
    """What the keyboard shows while a word grows; replaced: the place of the words that it is for."""
    browser.call("protocol", method="Input.imeSetComposition",
                 parameters={"text": text, "selectionStart": len(text), "selectionEnd": len(text), **replaced})


def put(browser, text):
    """What the keyboard is sure of, in the place of what it composes."""
    browser.call("protocol", method="Input.insertText", parameters={"text": text})


def delete(browser):
    """As keyboards of phones do it, without a key."""
    browser.call("evaluate", code="void document.execCommand('delete')")


def check_field(console, browser, name, text, page_text=None):
    """page_text: what the page's field holds where that is not all of the text."""
    wait_until(f"{name} holds {text!r}", lambda: console.field_text(name) == text,
               detail=lambda: console.field_text(name))
    wanted = text if page_text is None else page_text
    check_equal(f"what keyboards see of {name}",
                browser.call("evaluate", code=f"{FIELD}.value"), wanted)


def run_words(console, browser):
    chapter("Words that a phone's keyboard composes")
    search = projects_chapter.SEARCH
    dashboard_chapter.show_tab(console, "Projects")
    console.focus(search)
    for part in ("H", "He", "Hello"):
        compose(browser, part)
    check_field(console, browser, search, "Hello")
    put(browser, "Hello")
    check_field(console, browser, search, "Hello")
    compose(browser, "Hallo", replacementStart=0, replacementEnd=5)
    check_field(console, browser, search, "Hallo")
    put(browser, "Hallo")
    put(browser, " \U0001f44d\U0001f44d")
    check_field(console, browser, search, "Hallo \U0001f44d\U0001f44d")
    delete(browser)
    check_field(console, browser, search, "Hallo \U0001f44d")
    console.keys("Home")
    compose(browser, "Oh")
    put(browser, "Oh ")
    check_field(console, browser, search, "Oh Hallo \U0001f44d")
    console.keys("ctrl+a")
    put(browser, "all")
    check_field(console, browser, search, "all")
    compose(browser, "and")
    console.press("button", "Clear text")
    check_field(console, browser, search, "")
    compose(browser, "new")
    check_field(console, browser, search, "new")


def run_other_field(console, browser):
    """A word that is still composed is its field's, and stays there."""
    chapter("Another field while a word is composed")
    dashboard_chapter.show_tab(console, "Settings")
    console.focus(BIDS)
    before = console.field_text(BIDS)
    check_field(console, browser, BIDS, before)
    delete(browser)
    check_field(console, browser, BIDS, before[:-1])
    put(browser, "7")
    check_field(console, browser, BIDS, before[:-1] + "7")
    dashboard_chapter.show_tab(console, "Projects")
    console.focus(projects_chapter.SEARCH)
    check_field(console, browser, projects_chapter.SEARCH, "new")


def run_lines(console, service, browser):
    chapter("An answer of several lines")
    exchange_chapter.open_decisions(console, service)
    workspace_chapter.open_tab(console, "Decisions")
    answer = decisions_chapter.FIELD
    console.focus(answer)
    put(browser, "Yes, go on.")
    console.keys("Enter")
    compose(browser, "Bit")
    put(browser, "Bit ")
    check_field(console, browser, answer, "Yes, go on.\nBit ", "Bit ")
    compose(browser, "But", replacementStart=0, replacementEnd=3)
    put(browser, "But")
    check_field(console, browser, answer, "Yes, go on.\nBut ", "But ")
    console.keys("ArrowUp", "Home")
    put(browser, "!")
    check_field(console, browser, answer, "!Yes, go on.\nBut ", "!Yes, go on.")
    # A finger that slides over the keyboard moves the cursor in the page's field alone.
    browser.call("evaluate", code=f"{FIELD}.setSelectionRange(4, 4)")
    console.look_at_rest()
    console.keys("Backspace")
    check_field(console, browser, answer, "!Ye, go on.\nBut ", "!Ye, go on.")
    console.keys("ctrl+a")
    put(browser, "No")
    check_field(console, browser, answer, "No")
    console.keys("Enter")
    put(browser, "ne")
    console.keys("ctrl+a")
    delete(browser)
    check_field(console, browser, answer, "")
    compose(browser, "Hm")
    # The key that ends a word is the keyboard's, whatever its name is.
    browser.call("evaluate", code=f"void {FIELD}.dispatchEvent(" +
                 "new KeyboardEvent('keydown', { key: 'Enter', keyCode: 229, bubbles: true }))")
    put(browser, "Hm.")
    check_field(console, browser, answer, "Hm.")
