"""Nothing that the service says becomes part of the page."""

import dashboard_chapter
import workspace_chapter
from exchange_chapter import handle, handle_as_usual
from harness.checks import chapter, check, check_equal

MARKUP = '<img src="made-up" onerror="globalThis.ran = true">'
TYPED = """async (address, request) => {
    const [, field] = [[/\\/projects$/, 'title'], [/\\/projects\\/[^/]+$/, 'title'],
        [/\\/messages$/, 'message_text'], [/\\/logs$/, 'content']].find(([path]) => path.test(address)) ?? [];
    if (!field) { return null; }
    const put = (record) => ({ ...record, [field]: '%(markup)s' });
    const reply = await (await usualFetch(address, request)).json();
    return new Response(JSON.stringify(!Array.isArray(reply) ? put(reply)
        : reply.filter(({ id }) => field !== 'title' || id === '%(id)s').slice(0, 1).map(put)));
}"""
# What the toolkit would show to screen readers lies here, if its own elements were switched on.
DRAWN = "document.getElementById('qt-shadow-container').shadowRoot"


def run(console, service, browser):
    chapter("Texts are texts")
    project = next(one for one in service.get("/projects")
                   if workspace_chapter.projects_chapter.typeable(one)
                   and service.project_part(one, "messages") and service.project_part(one, "logs"))
    dashboard_chapter.start(console, service)
    handle(browser, TYPED % {"markup": MARKUP, "id": project["id"]})
    dashboard_chapter.show_tab(console, "Projects")
    check_typed(console, browser, "a title")
    console.press("button", MARKUP)
    for tab in ("Chat", "Logs"):
        workspace_chapter.open_tab(console, tab)
        check_typed(console, browser, f"what {tab} holds")
    handle_as_usual(browser)
    workspace_chapter.go_back(console)


def check_typed(console, browser, what):
    """What is seen of it, and what the page has become."""
    console.wait_for(f"{what} is said as it was typed", lambda seen: seen.has("label", MARKUP))
    picture = console.picture_at_rest()
    check(f"{what} is drawn as it was typed", letters(picture, console.look().first("label", MARKUP)) > 150)
    check_equal(f"{what}: elements beside those that are made for it", browser.call("evaluate", code=f"""
        [...document.querySelectorAll('#spoken *')].map((element) => element.tagName)
            .filter((name) => name !== 'DIV' && name !== 'BUTTON')
            .concat([document, {DRAWN}].flatMap((all) => [...all.querySelectorAll('[onerror]')])
                .map((element) => element.tagName))"""), [])
    check_equal(f"{what}: what the toolkit has for screen readers", browser.call("evaluate", code=f"""
        [...{DRAWN}.querySelectorAll('.qt-window-a11y-container')]
            .map((holder) => holder.childElementCount)"""), [0])
    check_equal(f"{what}: what ran and was fetched",
                [browser.call("evaluate", code="globalThis.ran ?? null"),
                 *[address for _, address in browser.call("requests") if "made-up" in address]], [None])


def letters(picture, node):
    """How many columns of the place are drawn on."""
    light = picture.brightness()
    rows = range(max(node.y, 0), min(node.bottom, picture.height))
    return sum(any(light[y * picture.width + x] > 100 for y in rows)
               for x in range(max(node.x, 0), min(node.right, picture.width)))
