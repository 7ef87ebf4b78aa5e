// A phone's browser, operated by lines of JSON: each line is one call ({"do": NAME, ...}), and one line
// answers it ({"ok": VALUE} or {"error": TEXT}).
import { createInterface } from 'node:readline';
import { chromium } from 'playwright-core';

let context = null;
let page = null;
let versions = null;
const said = [];
const requests = [];
const opened = [];

// Whether something still changes, or is drawn without its font. A font that has just arrived is seen in the
// second picture at the latest, so that all has to be quiet before these two and behind them.
const busy = () => page.evaluate(async () => {
    const changes = () => document.getElementById('spoken')?.ariaBusy !== 'false'
        || Number(document.getElementById('screen')?.dataset.fontsComing ?? 0) > 0;
    for (let pictures = 0; pictures < 2 && !changes(); ++pictures) {
        await new Promise((resolve) => requestAnimationFrame(() => setTimeout(resolve)));
    }
    return changes();
});

const look = () => page.evaluate(() => {
    const node = (element) => ({
        id: element.dataset.id,
        role: element.dataset.role ?? '',
        name: element.getAttribute('aria-label')
            ?? (['text', 'button', 'status', 'alert'].includes(element.dataset.role) ? element.textContent : ''),
        value: element.dataset.role === 'textbox' ? element.textContent : undefined,
        action: element.dataset.action,
        states: element.dataset.states ?? '',
        place: [element.offsetLeft, element.offsetTop, element.offsetWidth, element.offsetHeight],
        children: [...element.children].map(node),
    });
    const root = document.getElementById('spoken')?.firstElementChild;
    return root ? node(root) : null;
});

// A finger lies on the page of one session.
const sessions = new WeakMap();
const session = async () => {
    if (!sessions.has(page)) {
        sessions.set(page, await context.newCDPSession(page));
    }
    return sessions.get(page);
};
const touch = async (type, x, y) => (await session()).send('Input.dispatchTouchEvent',
    { type, touchPoints: x === undefined ? [] : [{ x, y }] });

const watch = (watched) => {
    page = watched;
    page.on('console', (message) => said.push(`${message.type()}: ${message.text()}`));
    page.on('pageerror', (error) => said.push(`error: ${error.message}`));
    page.on('request', (request) => requests.push([request.method(), request.url()]));
};

const calls = {
    // A profile of its own, which stays in the folder.
    async start({ browser, home, profile, width, height, scale, flags, granted, script }) {
        context = await chromium.launchPersistentContext(profile, {
            executablePath: browser,
            env: { ...process.env, HOME: home },
            args: ['--no-sandbox', '--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader',
                ...(flags ?? [])],
            viewport: { width, height },
            deviceScaleFactor: scale,
            isMobile: true,
            hasTouch: true,
            serviceWorkers: 'allow',
        });
        await context.grantPermissions(granted ?? []);
        if (script) {
            await context.addInitScript(script);
        }
        // What opens beside the console is not followed there: there is no network.
        await context.route((url) => url.hostname !== '127.0.0.1', (route) => {
            opened.push(route.request().url());
            return route.abort();
        });
        watch(context.pages()[0] ?? await context.newPage());
        // A tab beside the console is looked at and closed: browsers draw those behind once a second.
        context.on('page', async (other) => {
            await other.waitForLoadState().catch(() => {});
            opened.push(other.url());
            if (!new URL(other.url(), 'https://none').pathname.startsWith('/app/')) {
                await other.close();
                await page.bringToFront();
            }
        });
        return context.browser()?.version() ?? '';
    },
    async open({ url }) {
        await page.goto(url, { waitUntil: 'commit' });
    },
    async reload() {
        await page.reload({ waitUntil: 'commit' });
    },
    // Leaves the console for an empty page. In the same tab: browsers draw others once a second.
    async leave() {
        await page.goto('about:blank');
    },
    look,
    busy,
    act: ({ id }) => page.evaluate((wanted) => {
        const element = document.querySelector(`#spoken [data-id="${wanted}"]`);
        element?.click();
        return element !== null;
    }, id),
    async keys({ keys }) {
        for (const key of keys) {
            await page.keyboard.press(key);
        }
    },
    type: ({ text }) => page.keyboard.type(text, { delay: 4 }),
    async drag({ path, pause, rest }) {
        await touch('touchStart', ...path[0]);
        for (const point of path.slice(1)) {
            await page.waitForTimeout(pause);
            await touch('touchMove', ...point);
        }
        // A finger that rests: what a busy page hears of it late must not look like a flick.
        const [x, y] = path.at(-1);
        for (let time = 0; time < rest; time += 50) {
            await page.waitForTimeout(50);
            await touch('touchMove', x, y + (time % 100 ? 0 : 0.5));
        }
        await touch('touchEnd');
    },
    tap: ({ x, y }) => page.touchscreen.tap(x, y),
    async picture({ file }) {
        await page.screenshot({ path: file });
    },
    evaluate: ({ code }) => page.evaluate(code),
    back: () => page.goBack({ waitUntil: 'commit', timeout: 2000 }).then(() => true, () => false),
    said: () => said,
    requests: () => requests,
    opened: () => opened,
    async offline({ on }) {
        await context.setOffline(on);
    },
    async scale({ processor }) {
        await (await session()).send('Emulation.setCPUThrottlingRate', { rate: processor });
    },
    // The number by which the browser knows the origin's service worker; null while there is none.
    async registration({ origin }) {
        if (!versions) {
            versions = new Map();
            versions.session = await context.newCDPSession(context.pages()[0]);
            versions.session.on('ServiceWorker.workerRegistrationUpdated', ({ registrations }) => {
                registrations.forEach(({ scopeURL, registrationId, isDeleted }) => {
                    if (!isDeleted) {
                        versions.set(new URL(scopeURL).origin, registrationId);
                    }
                });
            });
            await versions.session.send('ServiceWorker.enable');
        }
        return versions.get(origin) ?? null;
    },
    // As the browser would, when a message has come for it.
    deliver: ({ origin, registration, data }) => versions.session.send(
        'ServiceWorker.deliverPushMessage', { origin, registrationId: registration, data }),
    // What the browser's developers can ask of it.
    protocol: async ({ method, parameters }) => (await session()).send(method, parameters ?? {}),
    async inWorker({ code }) {
        // The browser stops and starts it as it likes; the last is the one that runs.
        const running = context.serviceWorkers().at(-1);
        return (running ?? await context.waitForEvent('serviceworker')).evaluate(code);
    },
    async stop() {
        await context?.close();
        context = null;
    },
};

const answer = async (line) => {
    const { do: name, ...given } = JSON.parse(line);
    let timer = null;
    // Some of what a browser is asked has no limit of its own.
    const limit = new Promise((_, reject) => {
        timer = setTimeout(() => reject(new Error('the browser does not answer')), 60_000);
    });
    try {
        return { ok: await Promise.race([calls[name](given), limit]) ?? null };
    } catch (error) {
        return { error: String(error?.message ?? error) };
    } finally {
        clearTimeout(timer);
    }
};

let last = Promise.resolve();
createInterface({ input: process.stdin })
    .on('line', (line) => {
        last = last.then(() => answer(line)).then((value) => {
            process.stdout.write(`${JSON.stringify(value)}\n`);
        });
    })
    .on('close', () => last.then(() => context?.close()));
