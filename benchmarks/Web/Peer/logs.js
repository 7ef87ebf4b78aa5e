import {
    elementScroll, measureElement, observeElementOffset, observeElementRect, Virtualizer,
} from '@tanstack/virtual-core';
import { ask, element, showError } from './service.js';

const tints = { tool_call: '#0a84ff', tool_result: '#64d2ff', claude_response: '#bf5af2',
    error: '#ff453a', info: '#8e8e93' };

function makeRow(entry, index) {
    const row = element('article', 'entry', '');
    row.role = 'listitem';
    row.dataset.index = index;
    row.style.setProperty('--tint', tints[entry.log_type] ?? '#8e8e93');
    const header = element('header', '', '');
    header.append(element('b', '', entry.log_type.replaceAll('_', ' ')),
        element('time', '', (entry.created_at ?? '').slice(0, 19).replace('T', ' ')));
    row.append(header, element('p', '', entry.content));
    return row;
}

// Gives what ends it.
function makeList(page, entries) {
    const all = element('div', 'all', '');
    page.replaceChildren(all);
    const rows = new Map();
    const draw = (list) => {
        const items = list.getVirtualItems();
        const wanted = new Set(items.map((item) => item.index));
        let haveLeft = false;
        for (const [index, row] of rows) {
            if (!wanted.has(index)) {
                rows.delete(index);
                row.remove();
                haveLeft = true;
            }
        }
        if (haveLeft) {
            list.measureElement(null);
        }
        const come = [];
        for (const { index, start } of items) {
            let row = rows.get(index);
            if (!row) {
                row = makeRow(entries[index], index);
                rows.set(index, row);
                come.push(row);
            }
            const place = `translateY(${start}px)`;
            if (row.style.transform !== place) {
                row.style.transform = place;
            }
        }
        all.append(...come);
        all.style.height = `${list.getTotalSize()}px`;
        come.forEach((row) => list.measureElement(row));
    };
    const list = new Virtualizer({
        count: entries.length,
        getScrollElement: () => page,
        estimateSize: () => 110,
        gap: 8,
        paddingStart: 16,
        paddingEnd: 16,
        overscan: 5,
        scrollToFn: elementScroll,
        observeElementRect,
        observeElementOffset,
        measureElement,
        onChange: draw,
    });
    const end = list._didMount();
    list._willUpdate();
    draw(list);
    return end;
}

/** Shows a project's log until what it returns is called. */
export function showLogs(page, project) {
    const abort = new AbortController();
    let end = () => {};
    ask(`/projects/${project}/logs`, abort.signal).then((entries) => {
        end = makeList(page, entries);
    }).catch((problem) => showError(page, problem));
    return () => {
        abort.abort();
        end();
        page.replaceChildren();
    };
}
