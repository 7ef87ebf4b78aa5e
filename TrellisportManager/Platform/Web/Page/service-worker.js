// Keeps the program's own files, so that it starts without the network, and shows messages while it does
// not run. Nothing that the service answers is ever kept.
'use strict';

// The build writes these: what the program consists of, and a name that changes with it.
const files = ['@files@'];
const cacheName = 'console-@version@';
const home = new URL('./', self.registration?.scope ?? self.location.href).href;

self.addEventListener('install', (event) => {
    event.waitUntil(caches.open(cacheName).then((cache) => cache.addAll(files)));
});

self.addEventListener('activate', (event) => {
    event.waitUntil((async () => {
        for (const name of await caches.keys()) {
            if (name.startsWith('console-') && name !== cacheName) {
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
        const cache = await caches.open(cacheName);
        return await cache.match(wanted) ?? fetch(request);
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

function read(content) {
    let payload = null;
    try {
        payload = JSON.parse(content);
    } catch {
        // No JSON: a text, perhaps.
    }
    const isObject = typeof payload === 'object' && payload !== null && !Array.isArray(payload);
    const alert = isObject ? payload.aps?.alert : undefined;
    const isForMachines = /^\s*[[{]/.test(content) || content.includes('\ufffd');
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

// How the console wants a message presented that arrives while it is in front; in every way when it does
// not run, or does not answer soon.
const everyWay = 1 | 2 | 16;
const [badge, sound] = [1, 2];
async function presentation(content) {
    const front = (await windows()).find((client) => client.visibilityState === 'visible');
    if (!front) {
        return everyWay;
    }
    const { port1, port2 } = new MessageChannel();
    const answer = new Promise((resolve) => {
        port1.onmessage = (event) => resolve(event.data);
        setTimeout(() => resolve(everyWay), 500);
    });
    front.postMessage({ arrived: content }, [port2]);
    return answer;
}

async function showBadge() {
    const waiting = await self.registration.getNotifications();
    await self.navigator.setAppBadge?.(waiting.filter(({ data }) => data?.options & badge).length);
}

self.addEventListener('push', (event) => {
    event.waitUntil((async () => {
        const content = event.data?.text() ?? '';
        const { title, body, isUrgent, id } = read(content);
        const options = await presentation(content);
        // Browsers show what arrives, or think ill of it; so the banner is not a choice. The same message
        // once more takes the place of the first.
        await self.registration.showNotification(title, {
            body,
            tag: id,
            icon: '192.png',
            requireInteraction: isUrgent,
            silent: !(options & sound),
            data: { content, options },
        });
        await showBadge();
    })());
});

self.addEventListener('notificationclose', (event) => event.waitUntil(showBadge()));

self.addEventListener('notificationclick', (event) => {
    event.notification.close();
    event.waitUntil((async () => {
        const [open] = await windows();
        // Not every system lets a page come to the front; it is told nevertheless.
        const client = open ? await open.focus().catch(() => open) : await self.clients.openWindow(home);
        client?.postMessage({ opened: event.notification.data.content });
        await showBadge();
    })());
});
