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
        const address = UTF8ToString(url);
        if (address.startsWith('mailto:')) {
            // A letter needs no tab, and an empty one would stay.
            Object.assign(document.createElement('a'), { href: address }).click();
        } else {
            // With noopener the browser answers nothing, so what it refuses can't be seen.
            window.open(address, '_blank', 'noopener,noreferrer');
        }
    },

    // How much larger than usual the user wants text: by the browser's setting, and on some phones by the
    // system's, which only a font of the system's follows. There 17 is usual, and on desks 13.
    trellisport_text_scale: () => {
        const size = (element) => parseFloat(getComputedStyle(element).fontSize);
        const hasSystemSize = navigator.maxTouchPoints > 0 && CSS.supports('font', '-apple-system-body');
        return size(document.documentElement) / 16 *
            (hasSystemSize ? size(document.getElementById('text-size')) / 17 : 1);
    },

    // The first picture of the program is there.
    trellisport_show_page: () => {
        document.getElementById('start').hidden = true;
    },

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
        // One whose user changes the size of texts.
        new ResizeObserver(() => _trellisport_page_changed()).observe(document.getElementById('text-size'));
    },
});
