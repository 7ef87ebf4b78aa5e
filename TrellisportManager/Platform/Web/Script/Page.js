// The page: its address, links, the user's text size, the edges that a phone keeps for itself.
addToLibrary({
    // Hands a text to C++, which takes it when the call returns (JsText.h).
    $giveText__deps: ['trellisport_text_buffer', '$lengthBytesUTF8', '$stringToUTF8Array'],
    $giveText: (text) => {
        const size = lengthBytesUTF8(text);
        const buffer = _trellisport_text_buffer(size + 1);
        stringToUTF8Array(text, HEAPU8, buffer, size + 1);
        return _trellisport_text_buffer(size);
    },

    trellisport_page_origin__deps: ['$giveText'],
    trellisport_page_origin: () => {
        giveText(location.origin);
    },

    trellisport_open_link__deps: ['$UTF8ToString'],
    trellisport_open_link: (url) => {
        // With noopener the browser answers nothing, so what it refuses can't be seen.
        window.open(UTF8ToString(url), '_blank', 'noopener,noreferrer');
    },

    // How much larger than usual the user wants text.
    trellisport_text_scale: () =>
        parseFloat(getComputedStyle(document.documentElement).fontSize) / 16,

    // In points: top, right, bottom, left.
    trellisport_safe_area: (insets) => {
        const style = getComputedStyle(document.getElementById('safe-area'));
        ['paddingTop', 'paddingRight', 'paddingBottom', 'paddingLeft'].forEach((edge, index) => {
            HEAPF64[(insets >> 3) + index] = parseFloat(style[edge]) || 0;
        });
    },

    trellisport_watch_page__deps: ['trellisport_page_changed'],
    trellisport_watch_page: () => {
        // A page that is resized, turned or zoomed.
        window.addEventListener('resize', () => _trellisport_page_changed());
    },
});
