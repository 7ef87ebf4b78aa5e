// Fonts for what the built-in ones lack, each fetched when the first of its characters is shown.
addToLibrary({
    // Those that the page offers and that have not been asked for, null before the first look; and how
    // many are on their way, which the page says for whoever waits until it looks as it should.
    $offeredFonts: { waiting: null, coming: 0 },

    $fontsComing__deps: ['$offeredFonts'],
    $fontsComing: (more) => {
        offeredFonts.coming += more;
        document.getElementById('screen').dataset.fontsComing = String(offeredFonts.coming);
    },

    $fontsOnOffer__deps: ['$offeredFonts'],
    $fontsOnOffer: () => {
        offeredFonts.waiting ??= JSON.parse(document.getElementById('screen').dataset.fonts ?? '[]')
            .map((font) => ({ ...font, characters: new RegExp(font.characters, 'u') }));
        return offeredFonts.waiting;
    },

    // The families' names, a line each.
    trellisport_font_families__deps: ['$fetchFontsFor', '$fontsOnOffer', '$giveText'],
    trellisport_font_families: () => {
        // What is still being composed in a field of several lines is not told as a part of the screen.
        window.addEventListener('compositionupdate', ({ data }) => fetchFontsFor(data), { capture: true });
        giveText(fontsOnOffer().map(({ family }) => family).join('\n'));
    },

    // What can't be had now is offered again after a pause, each longer than the one before, or when the
    // network is back. Pauses are in milliseconds.
    $offerFontAgain__deps: ['$offeredFonts'],
    $offerFontAgain: (font) => {
        font.pause = Math.min(2 * (font.pause ?? 5_000), 600_000);
        const stop = new AbortController();
        const offer = () => {
            stop.abort();
            clearTimeout(timer);
            offeredFonts.waiting.push(font);
            // What is on the screen then (Accessibility.js).
            fetchFontsFor(document.getElementById('spoken').innerHTML);
        };
        const timer = setTimeout(offer, font.pause);
        window.addEventListener('online', offer, { signal: stop.signal });
    },

    $fetchFontsFor__deps: ['$fontsOnOffer', '$fontsComing', '$offeredFonts', '$offerFontAgain'],
    $fetchFontsFor: (text) => {
        const wanted = fontsOnOffer().filter(({ characters }) => characters.test(text));
        if (wanted.length > 0) {
            offeredFonts.waiting = fontsOnOffer().filter((font) => !wanted.includes(font));
        }
        wanted.forEach(async (font) => {
            fontsComing(1);
            try {
                const response = await fetch(font.file, { referrerPolicy: 'no-referrer' });
                if (response.ok) {
                    const content = new Uint8Array(await response.arrayBuffer());
                    const memory = _trellisport_font_memory(content.length);
                    HEAPU8.set(content, memory);
                    _trellisport_font();
                } else if (response.status !== 404 && response.status !== 410) {
                    offerFontAgain(font);
                }
            } catch {
                offerFontAgain(font);
            }
            fontsComing(-1);
        });
    },
});
