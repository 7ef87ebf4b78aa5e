"""The elements for screen readers by themselves: the console's own script, in an empty page."""

from pathlib import Path

from harness.checks import chapter, check_equal

SCRIPT = (Path(__file__).resolve().parents[2]
          / "TrellisportManager/Platform/Web/Script/Accessibility.js")
# As the linker would put it together: tell(node) tells what is on the screen.
LINKED = """
    const $library = {};
    const addToLibrary = (library) => Object.assign($library, library);
    %s
    const spokenElements = new Map();
    const spokenElement = $library.$spokenElement;
    const speakNode = $library.$speakNode;
    const textAt = (text) => text;
    const fetchFontsFor = () => {};
    const node = (id, role, name, ...children) => ({ id: String(id), role, name, children, action: '',
        states: '', x: 0, y: 0, width: 9, height: 9 });
    const tell = (root) => $library.trellisport_speak(JSON.stringify({ root }), 0);
    const spoken = document.getElementById('spoken').children;
"""


def run(console, browser):
    chapter("Elements for screen readers")
    console.stop()

    def seen(code):
        page = "document.body.innerHTML = '<div id=spoken></div>';"
        return browser.call("evaluate", code=f"(() => {{ {page} {LINKED % SCRIPT.read_text()} {code} }})()")

    check_equal("what had its words in children and has them itself", seen("""
        tell(node(1, '', '', node(2, 'button', 'Save', node(3, 'text', 'Save'))));
        const button = spoken[0].firstChild;
        tell(node(1, '', '', node(2, 'button', 'Save')));
        return [button.textContent, button.childElementCount, button === spoken[0].firstChild];"""),
        ["Save", 0, True])
    check_equal("what has its words in children from then on", seen("""
        tell(node(1, '', '', node(2, 'button', 'Save')));
        tell(node(1, '', '', node(2, 'button', 'Save', node(3, 'text', 'Save'))));
        const [button] = spoken[0].children;
        return [button.textContent, button.childElementCount, button.ariaLabel];"""), ["Save", 1, "Save"])
    check_equal("what is told once more, and how often the page changes for it", seen("""
        const root = node(1, '', '', node(2, 'text', 'One'), node(3, 'text', '<b>Two</b>'));
        tell(root);
        const watch = new MutationObserver(() => {});
        watch.observe(spoken[0], { subtree: true, childList: true, attributes: true, characterData: true });
        tell(root);
        return [...[...spoken[0].children].map((one) => one.textContent), watch.takeRecords().length];"""),
        ["One", "<b>Two</b>", 0])
