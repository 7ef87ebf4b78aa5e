// The browser's way back as the console's. There is one entry of ours above the page's own: to leave it
// is to go back in the console, and only where that leads nowhere, out of the page.
addToLibrary({
    trellisport_watch_history: () => {
        const keepEntry = () => {
            if (history.state !== 'console') {
                history.pushState('console', '');
            }
        };
        // Browsers skip entries that were made before the user touched anything. And where the page was
        // left without anything behind it, it stays: the next touch begins anew, and one more way back
        // closes the installed console, which a page can't do by itself.
        ['pointerup', 'keydown'].forEach((event) =>
            window.addEventListener(event, keepEntry, { capture: true }));
        window.addEventListener('popstate', () => {
            if (history.state === 'console') {
                return;
            }
            if (_trellisport_go_back()) {
                keepEntry();
            } else {
                history.back();
            }
        });
    },
});
