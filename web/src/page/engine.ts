/** The page's side of the worker: one photograph, the newest settings, and a new worker when one breaks. */
import type { Settings } from '../pipeline/settings.js';
import type { FromWorker, ToWorker } from '../worker/protocol.js';

export type Ready = Extract<FromWorker, { type: 'ready' }>;
export type Done = Extract<FromWorker, { type: 'done' }>;

export interface Listener {
    ready(message: Ready): void;
    opened(bitmap: ImageBitmap): void;
    refused(words: string): void;
    done(message: Done): void;
    /** `resumed`: a new worker does what the old one did not finish. */
    broken(words: string, resumed: boolean): void;
}

/** So many workers in a row may break before the page waits for other settings. */
const MOST_RESTARTS = 2;

export class Engine {
    private worker: Worker | null = null;
    private photo = 0;
    private run = 0;
    private breaks = 0;
    private file: Blob | null = null;
    /** Not yet known to be a picture. */
    private opening: Blob | null = null;
    private encoded: ((blob: Blob) => void) | null = null;

    constructor(private readonly listener: Listener) {
        this.worker = this.started();
    }

    open(file: Blob): void {
        // The first file comes by itself; a worker that has broken by then counts.
        if (this.file || this.opening) this.breaks = 0;
        this.worker ??= this.started();
        this.reopen(file);
    }

    /** Overtakes what was asked for before. */
    compute(settings: Settings, show: string | null): void {
        if (this.worker) this.post({ type: 'run', run: ++this.run, settings, show });
        else this.resume();
    }

    /** After so many breaks that the page has waited for other settings. */
    private resume(): void {
        const file = this.opening ?? this.file;
        if (file) this.open(file);
    }

    /** The picture that the last run showed, as PNG. */
    picture(): Promise<Blob> {
        return new Promise((resolve) => {
            this.encoded = resolve;
            this.post({ type: 'encode' });
        });
    }

    private started(): Worker {
        const worker = new Worker(new URL('../worker/worker.ts', import.meta.url), { type: 'module' });
        worker.onmessage = ({ data }: MessageEvent<FromWorker>) => {
            if (worker === this.worker) this.heard(data);
        };
        worker.onerror = (event) => {
            event.preventDefault();
            if (worker === this.worker) this.restart(event.message || 'it could not be started');
        };
        return worker;
    }

    private reopen(file: Blob): void {
        this.opening = file;
        this.run += 1; // whatever still runs is about the photograph before
        this.post({ type: 'open', photo: ++this.photo, file });
    }

    private post(message: ToWorker): void {
        this.worker?.postMessage(message);
    }

    private heard(message: FromWorker): void {
        switch (message.type) {
            case 'ready':
                this.listener.ready(message);
                break;
            case 'opened':
                if (message.photo !== this.photo) break;
                this.file = this.opening;
                this.opening = null;
                this.listener.opened(message.bitmap);
                break;
            case 'refused':
                if (message.photo !== this.photo) break;
                this.opening = null;
                this.listener.refused(message.words);
                break;
            case 'done':
                if (message.run !== this.run) break;
                this.breaks = 0;
                this.listener.done(message);
                break;
            case 'encoded':
                this.encoded?.(message.blob);
                break;
            case 'broken':
                this.restart(message.words);
                break;
        }
    }

    private restart(words: string): void {
        this.worker?.terminate();
        this.worker = null;
        this.breaks += 1;
        const file = this.breaks <= MOST_RESTARTS ? (this.opening ?? this.file) : null;
        this.listener.broken(words, file !== null);
        if (!file) return; // open() starts the next one
        this.worker = this.started();
        this.reopen(file);
    }
}
