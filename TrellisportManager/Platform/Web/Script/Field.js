// The page's field, through which the toolkit types. It holds what the console's field holds, so that
// keyboards find the words that they mean.
addToLibrary({
    $pageField: { isComposing: false, isLeft: false, get: () => document.querySelector('body > input') },

    trellisport_watch_field__deps: ['$pageField', '$giveText', 'trellisport_field_edited'],
    trellisport_watch_field: () => {
        const listen = (name, act) => window.addEventListener(name, (event) => {
            // What is pasted may have several lines, which this field can't hold: the toolkit has them.
            if (event.target === pageField.get() && event.inputType !== 'insertFromPaste') {
                event.stopImmediatePropagation();
                act(event.target);
            }
        }, { capture: true });
        const tell = ({ value, selectionEnd }) => {
            if (!pageField.isLeft) {
                giveText(value);
                _trellisport_field_edited(selectionEnd);
            }
        };
        listen('compositionstart', () => {
            pageField.isComposing = true;
        });
        listen('compositionupdate', () => {});
        listen('compositionend', (field) => {
            pageField.isComposing = false;
            tell(field);
        });
        listen('input', tell);
    },

    // Another field has the focus. A keyboard that is still composing is to begin anew.
    trellisport_leave_field__deps: ['$pageField'],
    trellisport_leave_field: () => {
        if (pageField.isComposing) {
            const field = pageField.get();
            pageField.isLeft = true;
            field.blur();
            field.focus();
            pageField.isLeft = pageField.isComposing = false;
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
        const [start, end] = [Math.min(anchor, cursor), Math.max(anchor, cursor)];
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
