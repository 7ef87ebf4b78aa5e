"""The settings: what the service holds, a change, a save that fails, and what a restart finds."""

from urllib.parse import urlsplit

from dashboard_chapter import show_tab
from harness.checks import chapter, check, check_equal
from harness.walk import check_walk

FIELDS = {"Max Daily Bids": "max_daily_bids", "Revenue Target ($)": "daily_revenue_target",
          "Max Concurrent": "max_concurrent_projects"}
PREVIEW = "Preview Mode"
SAVE = "Save Changes"


def is_on(screen):
    return "checked" in screen.first("check box", PREVIEW).states


def check_shown(console, what, config):
    screen = console.wait_for(f"{what}: the settings are there",
                              lambda seen: seen.has("button", SAVE))
    check_equal(f"{what}: {PREVIEW}", is_on(screen),
                config.get("preview_mode", "true").lower() == "true")
    for label, key in FIELDS.items():
        check_equal(f"{what}: {label}", console.field_text(label), config.get(key, ""))


def save(console):
    console.press("button", SAVE)


def run(console, service):
    """Gives what the service holds in the end."""
    chapter("Settings")
    before = service.get("/config")
    with service.paused():
        show_tab(console, "Settings")
        screen = console.wait_for("the settings load", lambda seen: seen.loading())
        check("a spinner turns until the first reply, without fields",
              not screen.all("text") and not screen.all("button", SAVE))
    check_shown(console, "as the service holds them", before)
    check_about(console, service)
    check_walk("settings", console)

    changed = dict(before, preview_mode="false" if before["preview_mode"] == "true" else "true",
                   max_daily_bids="7", daily_revenue_target="")
    run_failed_save(console, service, before, changed)
    run_save(console, service, changed)
    return changed


def check_about(console, service):
    screen = console.look_at_rest()
    for text in ("Server", "trellisport-base", "Dashboard"):
        check(f"the settings say {text!r}", screen.shows(text))
    host = urlsplit(service.base_url).hostname
    links = screen.all("link")
    check_equal("the link's text", [link.name for link in links], [host])
    address = urlsplit(console.opened_by("link", host))
    check_equal("the link leads to the service", (address.scheme, address.hostname),
                ("https", host))


def run_failed_save(console, service, before, changed):
    saves = [request for request in service.writes() if request[1] == "/config"]
    console.press("check box", PREVIEW)
    for label, key in FIELDS.items():
        if changed[key] != before[key]:
            console.type_text(label, changed[key])
    check_equal("saves before anything is saved",
                [request for request in service.writes() if request[1] == "/config"], saves)
    service.fail("/config", 500)
    with service.answers("PUT", "/config"):
        save(console)
    console.wait_for("the button is as before", lambda seen: seen.has("button", SAVE))
    check_shown(console, "edits that could not be saved", changed)
    check_equal("what the service holds", service.get("/config"), before)


def run_save(console, service, changed):
    save(console)
    console.wait_for("Saved is shown", lambda seen: seen.has("button", "Saved"))
    check("Saved is shown", True)
    check_equal("what the service holds", service.get("/config"), changed)
    check_walk("saved settings", console)
    console.wait_for("Saved is gone again", lambda seen: seen.has("button", SAVE))
    check("Saved is gone again", True)
    check_equal("the saves", service.writes()[-2:],
                [("PUT", "/config", 500), ("PUT", "/config", 200)])


def run_after_restart(console, service, config):
    chapter("Settings after the restart")
    check_equal("what the service holds", service.get("/config"), config)
    show_tab(console, "Settings")
    check_shown(console, "found again", config)


def run_failed_first_load(console, service):
    """Needs a console that has not shown its settings yet."""
    chapter("Settings while the service fails")
    service.fail("/config", 500)
    with service.answers("GET", "/config"):
        show_tab(console, "Settings")
    check_shown(console, "unknown", {})
