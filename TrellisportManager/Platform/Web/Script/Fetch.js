// Exchanges by the browser's fetch. Each has a number; what becomes of it is told exactly once, and
// never from within trellisport_fetch.
addToLibrary({
    // Exchanges under way, by their numbers, and what can be heard of them.
    $exchanges: 'new Map()',
    $replyKinds: { REPLY: 0, CANCELLED: 1, TIMED_OUT: 2, UNREACHABLE: 3, LOST: 4, TOO_LARGE: 5, OTHER: 6 },
    // The bytes of writes that outlive the page; browsers refuse more than 64 KiB of them at a time.
    $lasting: { size: 0, most: 60000 },

    trellisport_fetch__deps: ['$exchanges', '$replyKinds', '$lasting', '$UTF8ToString', '$giveText'],
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
        const progress = (isLate = false) => {
            clearTimeout(exchange.timer);
            const due = Date.now() + timeout;
            // A page that was put to sleep wakes up with what came meanwhile still to be read.
            exchange.timer = setTimeout(
                () => (!isLate && Date.now() > due + 5000 ? progress(true) : stop(replyKinds.TIMED_OUT)),
                timeout);
        };
        const end = (kind, status, lines, parts, size) => {
            clearTimeout(exchange.timer);
            exchanges.delete(number);
            lasting.size -= lastingSize;
            giveText(lines);
            const memory = _trellisport_reply_memory(size);
            if (!memory) {
                _trellisport_reply(number, replyKinds.TOO_LARGE, 0);
                return;
            }
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
        // A write that was begun goes on when the page is left.
        const lastingSize = request.method !== 'GET' && lasting.size + bodySize <= lasting.most ? bodySize : 0;
        lasting.size += lastingSize;
        request.keepalive = lastingSize > 0;
        const exchangeAll = async (address) => {
            if (new URL(address).href !== address) {
                // The browser would write it otherwise: without its dots, it leads to another place.
                exchange.ended = replyKinds.OTHER;
                throw new Error('the address can\'t be sent as it stands');
            }
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
            const tooLarge = () => {
                stop(replyKinds.TOO_LARGE);
                throw new Error('the reply is too large');
            };
            if (Number(response.headers.get('content-length')) > limit) {
                tooLarge();
            }
            const parts = [];
            let size = 0;
            const reader = response.body?.getReader();
            for (let piece = await reader?.read(); piece && !piece.done; piece = await reader.read()) {
                progress();
                size += piece.value.length;
                if (size > limit) {
                    tooLarge();
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
