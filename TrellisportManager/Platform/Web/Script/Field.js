// The page's field, through which the toolkit types. It holds the paragraph of the console's field in which
// the cursor is, so that keyboards find the words that they mean.
addToLibrary({
    $pageField: {
        isComposing: false,
        // What the keyboard still has belongs to another field.
        isLeft: false,
        // What the console last knew of it.
        known: '',
        selected: [0, 0],
        get: () => document.querySelector('body > input'),
    },

    trellisport_watch_field__deps: ['$pageField', '$giveText', 'trellisport_field_edited', 'trellisport_field_wanted'],
    trellisport_watch_field: () => {
        const listen = (name, act) => window.addEventListener(name, (event) => {
            if (event.target === pageField.get()) {
                act(event.target, event);
            }
        }, { capture: true });
        const tell = (field) => {
            const { value, selectionStart, selectionEnd, selectionDirection } = field;
            pageField.known = value;
            pageField.selected = [selectionStart, selectionEnd];
            giveText(value);
            const isBackward = selectionDirection === 'backward';
            _trellisport_field_edited(isBackward ? selectionEnd : selectionStart,
                isBackward ? selectionStart : selectionEnd);
        };
        listen('compositionstart', (field, event) => {
            event.stopImmediatePropagation();
            pageField.isComposing = true;
            pageField.isLeft = false;
        });
        listen('compositionupdate', (field, event) => event.stopImmediatePropagation());
        listen('compositionend', (field, event) => {
            event.stopImmediatePropagation();
            const { isLeft } = pageField;
            pageField.isComposing = pageField.isLeft = false;
            if (isLeft) {
                _trellisport_field_wanted();
            } else {
                tell(field);
            }
        });
        listen('input', (field, event) => {
            // What is pasted may have several lines, which this field can't hold: the toolkit has them.
            if (event.inputType === 'insertFromPaste') {
                return;
            }
            event.stopImmediatePropagation();
            pageField.isLeft &&= event.isComposing;
            if (!pageField.isLeft) {
                tell(field);
            }
        });
        listen('keydown', (field, event) => {
            if (event.keyCode === 229) {
                // The keyboard keeps it for what it composes; some browsers call it Enter nevertheless.
                event.stopImmediatePropagation();
            }
            if (!pageField.isComposing) {
                // The toolkit selects in its own way when it asks for the keyboard.
                _trellisport_field_wanted();
            }
        });
        // Keyboards of phones move the cursor, too.
        document.addEventListener('selectionchange', () => {
            const field = pageField.get();
            // What has another text tells of it by itself.
            if (!field || document.activeElement !== field || pageField.isComposing ||
                field.value !== pageField.known) {
                return;
            }
            const [start, end] = pageField.selected;
            const { selectionStart, selectionEnd } = field;
            if (selectionStart === start && selectionEnd === end) {
                return;
            }
            // That is no more than the toolkit's way, see above.
            if (selectionStart === selectionEnd && (selectionEnd === start || selectionEnd === end)) {
                _trellisport_field_wanted();
            } else {
                tell(field);
            }
        });
    },

    // Another field has the focus. A keyboard that is still composing is to begin anew.
    trellisport_leave_field__deps: ['$pageField'],
    trellisport_leave_field: () => {
        if (pageField.isComposing) {
            const field = pageField.get();
            pageField.isLeft = true;
            field.blur();
            field.focus();
        }
    },

    // Gives whether it holds that now: not while a keyboard composes, which would lose what it has.
    trellisport_fill_field__deps: ['$pageField', '$textAt'],
    trellisport_fill_field: (text, size, anchor, cursor) => {
        const field = pageField.get();
        if (!field || pageField.isComposing) {
            return false;
        }
        const value = textAt(text, size);
        if (field.value !== value) {
            field.value = value;
        }
        pageField.known = value;
        pageField.selected = [Math.min(anchor, cursor), Math.max(anchor, cursor)];
        const [start, end] = pageField.selected;
        if (field.selectionStart !== start || field.selectionEnd !== end) {
            field.setSelectionRange(start, end, anchor > cursor ? 'backward' : 'forward');
        }
        return true;
    },

    trellisport_place_field__deps: ['$pageField'],
    trellisport_place_field: (x, y) => {
        Object.assign(pageField.get()?.style ?? {}, { left: `${x}px`, top: `${y}px` });
    },
});
