// Keeps the program's own files, so that it starts without the network, and shows messages while it does
// not run. Nothing that the service answers is ever kept.
'use strict';

// The build writes these: what the program consists of, and a name that changes with it.
const files = ['@files@'];
const home = new URL('./', self.registration?.scope ?? self.location.href).href;
// The names belong to the whole origin, where there may be another console.
const family = `console-${new URL(home).pathname}-`;
const cacheName = `${family}@version@`;
importScripts('device-token.js');

self.addEventListener('install', (event) => {
    event.waitUntil((async () => {
        const cache = await caches.open(cacheName);
        await cache.addAll(files);
        // The server may have changed meanwhile: then the page is another version's.
        const page = await (await cache.match(home)).text();
        if (files.some((name) => /\.[0-9a-f]{16}\./.test(name) && !page.includes(name))) {
            throw new Error('the page is not of this version');
        }
    })());
});

self.addEventListener('activate', (event) => {
    event.waitUntil((async () => {
        for (const name of await caches.keys()) {
            if (name.startsWith(family) && name !== cacheName) {
                await caches.delete(name);
            }
        }
    })());
});

self.addEventListener('fetch', (event) => {
    const { request } = event;
    if (request.method !== 'GET' || !request.url.startsWith(home)) {
        return;
    }
    const wanted = request.mode === 'navigate' ? home : request;
    event.respondWith((async () => {
        try {
            const kept = await (await caches.open(cacheName)).match(wanted);
            if (kept) {
                return kept;
            }
        } catch (problem) {
            console.warn(`what was kept can't be read: ${problem.message}`);
        }
        return fetch(request);
    })());
});

// What the system is to show is a line and a few more, without control characters.
function presentable(text, longest, controls) {
    if (typeof text !== 'string') {
        return '';
    }
    const shown = text.replace(controls, ' ').trim();
    return shown.length <= longest ? shown : `${shown.slice(0, longest - 1).replace(/[\ud800-\udbff]$/, '')}\u2026`;
}

// The text that bytes are; empty when they are damaged.
function decoded(bytes) {
    try {
        return new TextDecoder('utf-8', { fatal: true }).decode(bytes);
    } catch {
        return '';
    }
}

function read(content) {
    let payload = null;
    try {
        payload = JSON.parse(content);
    } catch {
        // No JSON: a text, perhaps.
    }
    const isObject = typeof payload === 'object' && payload !== null && !Array.isArray(payload);
    const alert = isObject ? payload.aps?.alert : undefined;
    const isForMachines = /^\s*[[{]/.test(content);
    const body = isObject ? (typeof alert === 'string' ? alert : alert?.body) : isForMachines ? '' : content;
    return {
        title: presentable(alert?.title, 200, /\p{Cc}/gu) || 'TrellisportManager',
        body: presentable(body, 1000, /[^\P{Cc}\n]/gu) || (isObject ? '' : "A message that can't be shown"),
        isUrgent: isObject && payload.type === 'decision_needed',
        id: isObject && typeof payload.id === 'string' ? payload.id : '',
    };
}

async function windows() {
    const all = await self.clients.matchAll({ type: 'window', includeUncontrolled: true });
    return all.filter((client) => client.url.startsWith(home));
}

// The console that somebody looks at.
async function front() {
    return (await windows()).find((client) => client.visibilityState === 'visible');
}

// How the console wants a message presented that arrives while it is in front; in every way when it does
// not run, or does not answer soon.
const everyWay = 1 | 2 | 16;
const [badge, sound] = [1, 2];
async function presentation(content) {
    const seen = await front();
    if (!seen) {
        return everyWay;
    }
    const { port1, port2 } = new MessageChannel();
    const answer = new Promise((resolve) => {
        port1.onmessage = (event) => resolve(event.data);
        setTimeout(() => resolve(everyWay), 500);
    });
    seen.postMessage({ arrived: content }, [port2]);
    return answer;
}

// One after the other: some browsers forget a notification when they are asked for all of them while it
// comes to be shown, and then nobody hears that it was tapped.
let last = Promise.resolve();
function inTurn(act) {
    const result = last.then(act);
    last = result.catch(() => {});
    return result;
}

async function countBadge() {
    try {
        const waiting = await self.registration.getNotifications();
        await self.navigator.setAppBadge?.(waiting.filter(({ data }) => data?.options & badge).length);
    } catch {
        // There is no place for it.
    }
}

const showBadge = () => inTurn(countBadge);

self.addEventListener('push', (event) => {
    event.waitUntil((async () => {
        const content = decoded(event.data?.arrayBuffer() ?? new ArrayBuffer(0));
        const { title, body, isUrgent, id } = read(content);
        const options = await presentation(content);
        // Browsers show what arrives, or think ill of it; so the banner is not a choice. The same message
        // once more takes the place of the first.
        await inTurn(() => self.registration.showNotification(title, {
            body,
            tag: id,
            icon: '192.png',
            requireInteraction: isUrgent,
            silent: !(options & sound),
            data: { content, options },
        }));
        await showBadge();
    })());
});

self.addEventListener('notificationclose', (event) => event.waitUntil(showBadge()));

// What was tapped, until a page says that it listens; but not for ever.
const longest = 60_000;
const tapped = [];

self.addEventListener('notificationclick', (event) => {
    event.notification.close();
    event.waitUntil((async () => {
        const taken = new Promise((resolve) => {
            const one = { content: event.notification.data.content, resolve };
            tapped.push(one);
            setTimeout(() => {
                tapped.splice(0, tapped.length, ...tapped.filter((other) => other !== one));
                resolve();
            }, longest);
        });
        const [open] = await windows();
        // Not every system lets a page come to the front; it is told nevertheless.
        const client = open ? await open.focus().catch(() => open)
            : await self.clients.openWindow(home).catch(() => null);
        client?.postMessage('tapped');
        await showBadge();
        await taken;
    })());
});

self.addEventListener('message', (event) => {
    if (event.data === 'take over') {
        self.skipWaiting();
    } else if (event.data === 'starting' && tapped.length > 0) {
        event.source.postMessage('tapped');
    } else if (event.data === 'listening') {
        for (const { content, resolve } of tapped.splice(0)) {
            event.source.postMessage({ opened: content });
            resolve();
        }
        event.waitUntil(showBadge());
    }
});

// The browser gave this device another address: an open console tells the service, or else we do.
self.addEventListener('pushsubscriptionchange', (event) => event.waitUntil((async () => {
    const seen = await front();
    if (seen) {
        seen.postMessage('address changed');
        return;
    }
    const bytes = new TextEncoder().encode(await deviceToken(self.registration));
    const token = Array.from(bytes, (byte) => byte.toString(16).padStart(2, '0')).join('');
    await fetch(new URL('/api/v1/devices', home), {
        method: 'POST',
        headers: { 'Content-Type': 'application/json' },
        body: JSON.stringify({ device_token: token }),
        redirect: 'manual',
        credentials: 'omit',
        referrerPolicy: 'no-referrer',
    });
})()));
