/** What the service answers, decoded. path: below the interface's own. Throws when it fails. */
export async function ask(path, signal) {
    const reply = await fetch(`/api/v1${path}`, { signal, credentials: 'omit', redirect: 'manual' });
    if (!reply.ok) {
        throw new Error(`HTTP error ${reply.status}`);
    }
    return reply.json();
}

/** An element with a class and a text; an empty class is none. */
export function element(name, kind, text) {
    const made = document.createElement(name);
    made.className = kind;
    made.textContent = text;
    return made;
}

/** In place of what could not be loaded. */
export function showError(page, problem) {
    if (problem.name !== 'AbortError') {
        page.replaceChildren(element('p', 'error', problem.message));
    }
}
