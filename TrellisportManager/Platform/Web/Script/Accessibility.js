// What is on the screen, as elements for those who can't see it. They lie over the picture, unseen and
// out of the way of fingers and mice, in the order in which they are read. Texts are only ever set as
// texts.
addToLibrary({
    // By the numbers that the toolkit gives to things, which it never gives twice.
    $spokenElements: 'new Map()',

    $spokenElement__deps: ['$spokenElements', '$stringToNewUTF8', 'free'],
    $spokenElement: (node) => {
        let element = spokenElements.get(node.id);
        if (!element || element.dataset.role !== node.role) {
            element?.remove();
            element = document.createElement(node.role === 'button' ? 'button' : 'div');
            element.dataset.id = node.id;
            element.dataset.role = node.role;
            if (node.role !== 'text' && node.role !== 'button' && node.role !== '') {
                element.setAttribute('role', node.role);
            }
            if (node.role === 'heading') {
                element.setAttribute('aria-level', '2');
            }
            element.tabIndex = -1;
            element.addEventListener('click', (event) => {
                event.stopPropagation();
                const name = stringToNewUTF8(element.spokenName);
                _trellisport_press(node.id, name);
                _free(name);
            });
            spokenElements.set(node.id, element);
        }
        return element;
    },

    // Sets what has changed, and only that: each change may be read aloud.
    $speakNode__deps: ['$spokenElement'],
    $speakNode: (node, seen) => {
        const element = spokenElement(node);
        seen.add(node.id);
        element.spokenName = node.name;
        const set = (name, value) => {
            if (value === undefined) {
                element.removeAttribute(name);
            } else if (element.getAttribute(name) !== value) {
                element.setAttribute(name, value);
            }
        };
        const children = (node.children ?? []).map((child) => speakNode(child, seen));
        const isPlainText = node.role === 'text' || node.role === 'status' || node.role === 'alert';
        if (children.length === 0) {
            const text = isPlainText || node.role === 'button' ? node.name : (node.value ?? '');
            // What had children may have held the same words in them.
            if (element.childElementCount > 0 || element.textContent !== text) {
                element.textContent = text;
            }
            set('aria-label', isPlainText || node.role === 'button' ? undefined : node.name || undefined);
        } else {
            set('aria-label', node.name || undefined);
            children.forEach((child, index) => {
                if (element.childNodes[index] !== child) {
                    element.insertBefore(child, element.childNodes[index] ?? null);
                }
            });
            while (element.childNodes.length > children.length) {
                element.lastChild.remove();
            }
        }
        set('data-action', node.action.toLowerCase().replace('setfocus', 'focus') || undefined);
        set('data-states', node.states || undefined);
        set('aria-description', node.description || undefined);
        set('aria-selected', node.selected);
        set('aria-checked', node.checked);
        set('aria-disabled', node.disabled);
        set('aria-multiline', node.multiline);
        const place = `left:${node.x}px;top:${node.y}px;width:${node.width}px;height:${node.height}px`;
        if (element.dataset.place !== place) {
            element.dataset.place = place;
            Object.assign(element.style, { left: `${node.x}px`, top: `${node.y}px`,
                width: `${node.width}px`, height: `${node.height}px` });
        }
        return element;
    },

    // What is on the screen is changing, and is told when it rests.
    trellisport_speak_later: () => {
        document.getElementById('spoken').ariaBusy = 'true';
    },

    trellisport_speak__deps: ['$spokenElements', '$speakNode', '$fetchFontsFor', '$textAt'],
    trellisport_speak: (json, size) => {
        const holder = document.getElementById('spoken');
        const text = textAt(json, size);
        fetchFontsFor(text);
        const { root, focus } = JSON.parse(text);
        const seen = new Set();
        const element = speakNode(root, seen);
        if (holder.firstChild !== element) {
            holder.replaceChildren(element);
        }
        holder.ariaBusy = 'false';
        for (const [id, old] of spokenElements) {
            if (!seen.has(id)) {
                old.remove();
                spokenElements.delete(id);
            }
        }
        // The keyboard is always on the field that the toolkit types through: it has to say what it is.
        const field = document.querySelector('body > input');
        const name = focus?.name ?? '';
        if (field && field.getAttribute('aria-label') !== name) {
            field.setAttribute('aria-label', name);
        }
    },
});
