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

    // The text with letter case and spelling taken away. Capitals, because there the two letters that
    // some small ones stand for show; but the dotless i is none of the others.
    $folded__deps: ['$languages'],
    $folded: (text) => {
        const apart = text.normalize('NFD');
        const capitals = languages.isTurkic
            ? apart.toLocaleUpperCase('tr')
            : apart.split('\u0131').map((part) => part.toUpperCase()).join('\u0131');
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

    trellisport_capitalized__deps: ['$textAt', '$languages', '$giveText'],
    trellisport_capitalized: (text, size) => {
        // The letters that are two in one have a third form for the beginning of a word.
        const pairs = { '\u01c4': '\u01c5', '\u01c7': '\u01c8', '\u01ca': '\u01cb', '\u01f1': '\u01f2' };
        const initial = (letter) => {
            const capitals = Array.from(letter.toUpperCase());
            return (pairs[capitals[0]] ?? capitals[0]) + capitals.slice(1).join('').toLowerCase();
        };
        let result = '';
        for (const { segment } of languages.words.segment(textAt(text, size))) {
            const letter = segment.match(/\p{Cased}/u);
            result += letter
                ? segment.slice(0, letter.index) + initial(letter[0]) +
                  segment.slice(letter.index + letter[0].length).toLowerCase()
                : segment;
        }
        giveText(result);
    },
});
