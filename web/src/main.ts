/** Puts the page together: settings go to the worker, what comes back is shown. */
import { IDENTITY } from './pipeline/affine.js';
import { commandsOf, cppOf, jsonOf } from './pipeline/exports.js';
import { asLink, fromLink } from './pipeline/link.js';
import type { StageReport } from './pipeline/run.js';
import { initialSettings, type Settings } from './pipeline/settings.js';
import { stageOf } from './pipeline/stages.js';
import { copied, openSheet } from './page/code_sheet.js';
import { found, made, save } from './page/dom.js';
import { Engine, type Done } from './page/engine.js';
import { showFindings, summaryOf } from './page/findings.js';
import { listenToSources, openSample } from './page/sources.js';
import { StageList } from './page/stage_list.js';
import { Viewer } from './page/viewer.js';

let settings: Settings = initialSettings();
/** Of the last run, and the settings that it had. */
let reports: readonly StageReport[] = [];
let reported: Settings = settings;
/** Behind which stage; the last that is on by default. */
let show: string | null | 'last' = 'last';
let photo = { name: '', rows: 0, cols: 0 };
let opening = '';

const status = found('status');
const alert = found('alert');
const showing = found<HTMLSelectElement>('show');

function complain(words: string): void {
    alert.textContent = words;
    alert.hidden = words === '';
}

const viewer = new Viewer(found('viewer'), found<HTMLCanvasElement>('canvas'), found('divider'), (scale) => {
    found('zoom').textContent = `${scale < 0.1 ? (100 * scale).toFixed(1) : Math.round(100 * scale)} %`;
});

const stages = new StageList(found('stages'), (wanted) => {
    settings = wanted;
    remember();
    compute();
});

const engine = new Engine({
    ready({ milliseconds }) {
        performance.measure('library loaded', {
            start: performance.now() - milliseconds,
            duration: milliseconds,
        });
    },
    opened(bitmap) {
        photo = { name: opening, rows: bitmap.height, cols: bitmap.width };
        viewer.open(bitmap);
        compute();
    },
    refused(words) {
        complain(`${opening || 'The file'}: ${words}.`);
        opening = photo.name;
        compute();
    },
    done,
    broken(words, resumed) {
        const next = resumed ? 'It was started again.' : 'It is started again as soon as something changes.';
        complain(`The worker stopped: ${words}. ${next}`);
        busy(false);
    },
});

let remembering = 0;
/** Puts the settings into the address once a slider rests: browsers refuse to be told too often. */
function remember(): void {
    clearTimeout(remembering);
    remembering = window.setTimeout(() => history.replaceState(null, '', asLink(settings)), 250);
}

function choose(file: Blob, name: string): void {
    complain('');
    open(file, name);
}

function open(file: Blob, name: string): void {
    opening = name;
    busy(true);
    engine.open(file);
}

function compute(): void {
    showChoices();
    busy(true);
    const on = settings.filter((one) => one.on);
    engine.compute(settings, show === 'last' ? (on.at(-1)?.id ?? null) : show);
}

let waiting = 0;
/** Quick runs shall not make the page flicker. */
function busy(yes: boolean): void {
    document.body.dataset['settled'] = String(!yes);
    clearTimeout(waiting);
    document.body.classList.remove('busy');
    if (yes) waiting = window.setTimeout(() => document.body.classList.add('busy'), 250);
}

function done(message: Done): void {
    reports = message.reports;
    reported = settings;
    const map = reports.find((report) => report.id === message.shown)?.map ?? IDENTITY;
    stages.report(reports);
    showFindings(photo, reports);
    showOverlayChips();
    viewer.show({ result: message.bitmap, map, reports });
    const title = message.shown === null ? 'Photograph' : stageOf(message.shown).title;
    found('tag').textContent = title;
    found('canvas').setAttribute(
        'aria-label',
        `${photo.name}: the original left of the divider, right of it the result of ${title}, ` +
            `${message.bitmap.width} by ${message.bitmap.height} pixels`,
    );
    const failed = reports.find((report) => report.error);
    const words = failed
        ? `${stageOf(failed.id).title}: ${failed.error!.words} (code ${failed.error!.code}). `
        : '';
    status.textContent = words + summaryOf(reports, message.milliseconds);
    busy(false);
}

function showChoices(): void {
    const on = settings.filter((one) => one.on);
    if (show !== 'last' && show !== null && !on.some((one) => one.id === show)) show = 'last';
    const choices = [
        made('option', { value: 'last' }, 'Result'),
        made('option', { value: '' }, 'Photograph'),
        ...on.map(({ id }) => made('option', { value: id }, `after ${stageOf(id).title}`)),
    ];
    showing.replaceChildren(...choices);
    showing.value = show ?? '';
}

function showOverlayChips(): void {
    const ids = reports.filter((report) => report.overlays.length > 0).map((report) => report.id);
    const box = found('overlays');
    const focused = box.contains(document.activeElement) ? document.activeElement?.id : undefined;
    box.replaceChildren(
        ...ids.map((id) => {
            const chip = made(
                'button',
                { type: 'button', class: 'chip', id: `overlay-${id}` },
                stageOf(id).title,
            );
            chip.setAttribute('aria-pressed', String(!viewer.hidden.has(id)));
            chip.onclick = () => {
                if (!viewer.hidden.delete(id)) viewer.hidden.add(id);
                chip.setAttribute('aria-pressed', String(!viewer.hidden.has(id)));
                viewer.draw();
            };
            return chip;
        }),
    );
    if (focused) document.getElementById(focused)?.focus();
}

function readLink(): void {
    const { settings: linked, complaints } = fromLink(location.hash);
    settings = linked;
    stages.show(settings);
    if (complaints.length > 0) complain(`The link: ${complaints.join('; ')}.`);
}

showing.onchange = () => {
    show = showing.value === '' ? null : showing.value;
    compute();
};
found('smaller').onclick = () => viewer.zoomBy(-1);
found('larger').onclick = () => viewer.zoomBy(1);
found('fit').onclick = () => viewer.fit();
found('exact').onclick = () => viewer.exact();

found('reset').onclick = () => {
    settings = initialSettings();
    show = 'last';
    complain('');
    clearTimeout(remembering);
    history.replaceState(null, '', location.pathname);
    stages.show(settings);
    compute();
};
found('link').onclick = async () => {
    const address = new URL(asLink(settings), location.href).href;
    status.textContent = (await copied(address)) ? 'The link is on the clipboard.' : address;
};
window.addEventListener('hashchange', () => {
    readLink();
    compute();
});

const base = (): string => photo.name.replace(/\.[^.]*$/, '') || 'page';
found('take-picture').onclick = async () => save(await engine.picture(), `${base()}_page.png`);
found('take-json').onclick = () => {
    const blob = new Blob([jsonOf(reported, reports, photo)], { type: 'application/json' });
    save(blob, `${base()}_results.json`);
};
found('take-cpp').onclick = () =>
    openSheet({
        title: 'The same in C++',
        about: 'With orvex_991 alone; angles are those of this photograph.',
        text: cppOf(reported, reports),
        name: 'page_of.cpp',
    });
found('take-commands').onclick = () =>
    openSheet({
        title: 'The same by docprep',
        about: 'One command a stage, the same bytes for the same pixels.',
        text: commandsOf(reported, reports, photo.name),
        name: 'page_of.sh',
    });

listenToSources(choose);
readLink();
showChoices();
void openSample((file, name) => {
    if (opening === '') open(file, name); // a photograph may have been chosen already
});
