/** Beside the page: decodes, runs the stages, and forgets about runs that a newer one has overtaken. */
import { Image, load } from 'orvex_991';
import { Pipeline, type Photograph } from '../pipeline/run.js';
import { decoded, pixelsOf, Refused } from './decode.js';
import type { FromWorker, ToWorker } from './protocol.js';

type Run = Extract<ToWorker, { type: 'run' }>;

const began = performance.now();
let photograph: Photograph | null = null;
let wanted: Run | null = null;
let running = false;
let shownPixels: ImageData | null = null;

function post(message: FromWorker, moved: Transferable[] = []): void {
    self.postMessage(message, { transfer: moved });
}

/** Lets messages that have arrived be heard; unlike a timer it does not wait. */
const heard = new MessageChannel();
function breathe(): Promise<void> {
    return new Promise((resolve) => {
        heard.port1.onmessage = () => resolve();
        heard.port2.postMessage(null);
    });
}

const ready = load().then((library) => {
    post({ type: 'ready', milliseconds: performance.now() - began });
    return new Pipeline(library, () => performance.now(), breathe);
});

async function open(photo: number, file: Blob): Promise<void> {
    wanted = null;
    try {
        const bitmap = await decoded(file);
        photograph = { key: photo, picture: Image.fromImageData(pixelsOf(bitmap)) };
        post({ type: 'opened', photo, bitmap }, [bitmap]);
    } catch (error) {
        if (!(error instanceof Refused)) throw error;
        post({ type: 'refused', photo, words: error.message });
    }
}

async function work(): Promise<void> {
    if (running) return;
    running = true;
    const pipeline = await ready;
    while (wanted && photograph) {
        const run: Run = wanted;
        const photo: Photograph = photograph;
        wanted = null;
        const start = performance.now();
        const reports = await pipeline.run(photo, run.settings, () => wanted !== null);
        if (!reports) continue;
        const milliseconds = performance.now() - start;
        const reached = run.show === null || reports.some((report) => report.id === run.show);
        const shown = reached ? run.show : (reports.at(-1)?.id ?? null);
        shownPixels = Image.toImageData(pipeline.pictureAfter(shown, photo));
        const bitmap = await createImageBitmap(shownPixels);
        post({ type: 'done', run: run.run, reports, bitmap, shown, milliseconds }, [bitmap]);
    }
    running = false;
}

async function encode(): Promise<void> {
    if (!shownPixels) return;
    const canvas = new OffscreenCanvas(shownPixels.width, shownPixels.height);
    canvas.getContext('2d')!.putImageData(shownPixels, 0, 0);
    post({ type: 'encoded', blob: await canvas.convertToBlob({ type: 'image/png' }) });
}

function broken(error: unknown): void {
    post({ type: 'broken', words: error instanceof Error ? error.message : String(error) });
}

ready.catch(broken);
self.onmessage = ({ data }: MessageEvent<ToWorker>) => {
    switch (data.type) {
        case 'open':
            open(data.photo, data.file).catch(broken);
            break;
        case 'run':
            wanted = data;
            work().catch(broken);
            break;
        case 'encode':
            encode().catch(broken);
            break;
    }
};
