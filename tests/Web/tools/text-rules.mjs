// Holds the browser's text rules to the cases that hold for every platform: text-rules.mjs SCRIPT CASES,
// with Script/Text.js and tests/Platform/TextCases.json. The script engine is the same as in a browser.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';

const [script, file] = process.argv.slice(2);
const cases = JSON.parse(readFileSync(file, 'utf8'));

// The script as the linker would put it together, with a memory and a place for what it gives.
function linked() {
    let library = {};
    new Function('addToLibrary', readFileSync(script, 'utf8'))((read) => { library = read; });
    const names = Object.keys(library).filter((name) => !name.endsWith('__deps') && !name.endsWith('__postset'));
    const parts = names.map((name) => `const ${name.replace('$', '')} =
        ${typeof library[name] === 'function' ? library[name] : JSON.stringify(library[name])};`);
    return new Function('navigator', 'HEAPU8', 'giveText', `${parts.join('\n')}
        ${library.$languages__postset}
        return { ${names.map((name) => name.replace('$', '')).join(', ')} };`);
}

function using(language) {
    const memory = new Uint8Array(4096);
    let given = '';
    const rules = linked()({ language }, memory, (text) => { given = text; });
    const put = (text, place) => new TextEncoder().encodeInto(text, memory.subarray(place)).written;
    const change = (name) => (text, ...more) => {
        rules[`trellisport_${name}`](0, put(text, 0), ...more);
        return given;
    };
    return {
        change,
        holds: (text, part) => {
            const folded = change('fold')(part);
            // An empty part is not asked for.
            return folded !== '' &&
                rules.trellisport_holds(0, put(text, 0), 2048, put(folded, 2048));
        },
    };
}

for (const name of ['capitalized', 'uppercased', 'lowercased']) {
    for (const [text, wanted] of cases[name]) {
        assert.equal(using('en').change(name)(text), wanted);
    }
}
for (const [text, count, wanted] of cases.prefix) {
    assert.equal(using('en').change('prefix')(text, count), wanted);
}
for (const [name, language, wanted] of [['found', 'en', true], ['missing', 'en', false],
    ['foundInTurkish', 'tr', true], ['missingInTurkish', 'tr', false]]) {
    assert.ok(cases[name].length > 0);
    for (const [text, part] of cases[name]) {
        assert.equal(using(language).holds(text, part), wanted, `${part} in ${text} (${language})`);
    }
}
