// Exchanges by the browser's fetch. Each has a number; what becomes of it is told exactly once, and
// never from within trellisport_fetch.
addToLibrary({
    // Exchanges under way, by their numbers, and what can be heard of them.
    $exchanges: 'new Map()',
    $replyKinds: { REPLY: 0, CANCELLED: 1, TIMED_OUT: 2, UNREACHABLE: 3, LOST: 4, TOO_LARGE: 5 },

    trellisport_fetch__deps: ['$exchanges', '$replyKinds', '$UTF8ToString', '$giveText'],
    trellisport_fetch: (number, method, url, headers, body, bodySize, timeout, limit) => {
        const abort = new AbortController();
        const exchange = { abort, ended: replyKinds.UNREACHABLE };
        exchanges.set(number, exchange);
        const stop = (kind) => {
            if (!abort.signal.aborted) {
                exchange.ended = kind;
                abort.abort();
            }
        };
        exchange.cancel = () => stop(replyKinds.CANCELLED);
        // A time without anything sent or received; of what is sent, the browser tells nothing.
        const progress = () => {
            clearTimeout(exchange.timer);
            exchange.timer = setTimeout(() => stop(replyKinds.TIMED_OUT), timeout);
        };
        const end = (kind, status, lines, parts, size) => {
            clearTimeout(exchange.timer);
            exchanges.delete(number);
            giveText(lines);
            const memory = _trellisport_reply_memory(size);
            let offset = memory;
            for (const part of parts) {
                HEAPU8.set(part, offset);
                offset += part.length;
            }
            _trellisport_reply(number, kind, status);
        };
        const request = {
            method: UTF8ToString(method),
            headers: JSON.parse(UTF8ToString(headers)),
            body: body ? HEAPU8.slice(body, body + bodySize) : undefined,
            redirect: 'manual',
            credentials: 'omit',
            referrerPolicy: 'no-referrer',
            signal: abort.signal,
        };
        const exchangeAll = async (address) => {
            progress();
            const response = await fetch(address, request);
            exchange.ended = replyKinds.LOST;
            progress();
            if (response.type === 'opaqueredirect') {
                // The browser does not say where to, nor by which status.
                return [0, '', [], 0];
            }
            const lines = [...response.headers].map((header) => header.join(':')).join('\n');
            if (!response.ok) {
                // The status is all that counts of it.
                response.body?.cancel().catch(() => {});
                return [response.status, lines, [], 0];
            }
            const parts = [];
            let size = 0;
            const reader = response.body?.getReader();
            for (let piece = await reader?.read(); piece && !piece.done; piece = await reader.read()) {
                progress();
                size += piece.value.length;
                if (size > limit) {
                    stop(replyKinds.TOO_LARGE);
                }
                parts.push(piece.value);
            }
            return [response.status, lines, parts, size];
        };
        exchangeAll(UTF8ToString(url)).then(
            (reply) => end(replyKinds.REPLY, ...reply),
            () => end(exchange.ended, 0, '', [], 0));
    },

    trellisport_cancel_fetch__deps: ['$exchanges'],
    trellisport_cancel_fetch: (number) => {
        exchanges.get(number)?.cancel();
    },
});
