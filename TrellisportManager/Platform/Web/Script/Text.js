// Texts by the rules of the browser's language library. Texts come as UTF-8; what is damaged counts as
// U+FFFD.
addToLibrary({
    $languages: {},
    $languages__postset: `
        languages.isTurkic = /^(tr|az)\\b/i.test(navigator.language);
        languages.characters = new Intl.Segmenter('und', { granularity: 'grapheme' });
        languages.words = new Intl.Segmenter('und', { granularity: 'word' });
        languages.decoder = new TextDecoder('utf-8', { ignoreBOM: true });`,

    $textAt__deps: ['$languages'],
    $textAt: (bytes, size) => languages.decoder.decode(HEAPU8.subarray(bytes, bytes + size)),

    // The text with letter case and spelling taken away. Small letters first, for the few capitals that
    // are none of their own small letters; then capitals, because there the two letters that some small
    // ones stand for show. But the dotless i is none of the others.
    $folded__deps: ['$languages'],
    $folded: (text) => {
        const apart = text.normalize('NFD');
        const capitals = languages.isTurkic
            ? apart.toLocaleLowerCase('tr').toLocaleUpperCase('tr')
            : apart.split('\u0131').map((part) => part.toLowerCase().toUpperCase()).join('\u0131');
        return capitals.normalize('NFD');
    },

    trellisport_is_turkic__deps: ['$languages'],
    trellisport_is_turkic: () => languages.isTurkic,

    trellisport_fold__deps: ['$textAt', '$folded', '$giveText'],
    trellisport_fold: (text, size) => {
        giveText(folded(textAt(text, size)));
    },

    // Whether the text holds the folded part as a run of whole characters.
    trellisport_holds__deps: ['$textAt', '$folded', '$languages'],
    trellisport_holds: (text, size, part, partSize) => {
        const searched = textAt(text, size);
        const wanted = textAt(part, partSize);
        const whole = folded(searched);
        let found = whole.indexOf(wanted);
        if (found < 0) {
            return false;
        }
        const ends = new Set([0]);
        let length = 0;
        for (const { segment } of languages.characters.segment(searched)) {
            length += folded(segment).length;
            ends.add(length);
        }
        while (found >= 0 && !(ends.has(found) && ends.has(found + wanted.length))) {
            found = whole.indexOf(wanted, found + 1);
        }
        return found >= 0;
    },

    trellisport_prefix__deps: ['$textAt', '$languages', '$giveText'],
    trellisport_prefix: (text, size, count) => {
        const whole = textAt(text, size);
        let end = 0;
        for (const { segment } of languages.characters.segment(whole)) {
            if (count-- === 0) {
                break;
            }
            end += segment.length;
        }
        giveText(whole.slice(0, end));
    },

    trellisport_uppercased__deps: ['$textAt', '$giveText'],
    trellisport_uppercased: (text, size) => {
        giveText(textAt(text, size).toUpperCase());
    },

    trellisport_lowercased__deps: ['$textAt', '$giveText'],
    trellisport_lowercased: (text, size) => {
        giveText(textAt(text, size).toLowerCase());
    },

    // The letter as it begins a word.
    $initial: (letter) => {
        // Two letters in one have a third form for it; and of these two the second is the letter.
        const own = { '\u01c4': '\u01c5', '\u01c7': '\u01c8', '\u01ca': '\u01cb', '\u01f1': '\u01f2',
            '\u02bcN': '\u02bcN' };
        if (/[\u10d0-\u10fa\u10fd-\u10ff]/.test(letter)) {
            // Georgian has capitals for whole words only.
            return letter;
        }
        const apart = letter.normalize('NFD');
        if (apart.length > 1 && apart.endsWith('\u0345')) {
            // The iota below stays there, where capitals alone have it beside them.
            return (apart.slice(0, -1).toUpperCase() + '\u0345').normalize('NFC');
        }
        const capitals = letter.toUpperCase();
        const [first] = capitals;
        return own[capitals] ?? first + capitals.slice(first.length).toLowerCase();
    },

    trellisport_capitalized__deps: ['$textAt', '$languages', '$initial', '$giveText'],
    trellisport_capitalized: (text, size) => {
        const whole = textAt(text, size);
        // All of it at once: what a sigma becomes depends on what stands around it.
        const small = whole.toLowerCase();
        let result = '';
        let at = 0;
        for (const { segment } of languages.words.segment(whole)) {
            const end = at + segment.toLowerCase().length;
            const letter = segment.match(/\p{Cased}/u);
            if (letter) {
                result += small.slice(at, at + letter.index) + initial(letter[0]);
                at += letter.index + letter[0].toLowerCase().length;
            }
            result += small.slice(at, end);
            at = end;
        }
        giveText(result);
    },
});
