/** Result and photograph at the same place, parted by a divider; zoom and pan move both. */
import { combined, IDENTITY, inverse, mapped, type Affine } from '../pipeline/affine.js';
import type { Point } from '../pipeline/library.js';
import type { StageReport } from '../pipeline/run.js';
import { paintOverlays } from './overlay_painter.js';

const LEAST_SCALE = 0.02;
const MOST_SCALE = 32;
const ZOOM_STEP = 1.25;
const PAN_STEP = 48;
const DIVIDER_STEP = 0.02;

export interface Shown {
    readonly result: ImageBitmap;
    /** From the photograph's places to the result's. */
    readonly map: Affine;
    readonly reports: readonly StageReport[];
}

interface View {
    readonly scale: number; // of the canvas' CSS pixels to the result's
    readonly x: number;
    readonly y: number;
}

export class Viewer {
    private photograph: ImageBitmap | null = null;
    private shown: Shown | null = null;
    private view: View = { scale: 1, x: 0, y: 0 };
    private fitted = true;
    private part = 0.5;
    private pointers = new Map<number, Point>();
    private asked = false;
    readonly hidden = new Set<string>();

    constructor(
        private readonly box: HTMLElement,
        private readonly canvas: HTMLCanvasElement,
        private readonly divider: HTMLElement,
        private readonly zoomed: (scale: number) => void,
    ) {
        new ResizeObserver(() => this.resized()).observe(box);
        this.listenToPointers();
        this.listenToDivider();
        box.addEventListener('wheel', (event) => this.wheel(event), { passive: false });
        box.addEventListener('keydown', (event) => this.key(event));
    }

    open(photograph: ImageBitmap): void {
        this.photograph?.close();
        this.photograph = photograph;
        this.fitted = true;
    }

    show(shown: Shown): void {
        const before = this.shown;
        this.shown = shown;
        if (this.fitted || !before) this.fit();
        else this.view = keptPlace(this.view, before.map, shown.map, this.middle());
        before?.result.close();
        this.draw();
    }

    fit(): void {
        if (!this.shown) return;
        const { width, height } = this.shown.result;
        const { clientWidth, clientHeight } = this.box;
        const scale =
            Math.min(clientWidth / width, clientHeight / height, 1) * (clientWidth > 500 ? 0.97 : 1);
        this.fitted = true;
        this.setView({ scale, x: (clientWidth - width * scale) / 2, y: (clientHeight - height * scale) / 2 });
    }

    /** So that each pixel of the picture is one of the screen. */
    exact(): void {
        this.zoomTo(1 / devicePixelRatio, this.middle());
    }

    zoomBy(steps: number): void {
        this.zoomTo(this.view.scale * ZOOM_STEP ** steps, this.middle());
    }

    draw(): void {
        if (this.asked) return;
        this.asked = true;
        requestAnimationFrame(() => {
            this.asked = false;
            this.paint();
        });
    }

    private middle(): Point {
        return { x: this.box.clientWidth / 2, y: this.box.clientHeight / 2 };
    }

    private setView(view: View): void {
        this.view = view;
        this.zoomed(view.scale * devicePixelRatio);
        this.draw();
    }

    private zoomTo(scale: number, at: Point): void {
        const next = Math.min(Math.max(scale, LEAST_SCALE), MOST_SCALE);
        const factor = next / this.view.scale;
        this.fitted = false;
        this.setView({
            scale: next,
            x: at.x - (at.x - this.view.x) * factor,
            y: at.y - (at.y - this.view.y) * factor,
        });
    }

    private panBy(x: number, y: number): void {
        this.fitted = false;
        this.setView({ ...this.view, x: this.view.x + x, y: this.view.y + y });
    }

    private resized(): void {
        this.canvas.width = Math.round(this.box.clientWidth * devicePixelRatio);
        this.canvas.height = Math.round(this.box.clientHeight * devicePixelRatio);
        if (this.fitted) this.fit();
        this.paint();
    }

    // ---- Painting ----

    /** From the result's places to the canvas'; whole pixels of the screen, so that 1:1 is exact. */
    private onCanvas(): Affine {
        const { scale, x, y } = this.view;
        const ratio = devicePixelRatio;
        return [scale * ratio, 0, Math.round(x * ratio), 0, scale * ratio, Math.round(y * ratio)];
    }

    private paint(): void {
        const context = this.canvas.getContext('2d')!;
        context.setTransform(1, 0, 0, 1, 0, 0);
        context.clearRect(0, 0, this.canvas.width, this.canvas.height);
        if (!this.shown || !this.photograph) return;
        const split = Math.round(this.part * this.canvas.width);
        const view = this.onCanvas();
        this.within(context, split, this.canvas.width, () => {
            this.picture(context, this.shown!.result, view);
            context.lineJoin = 'round';
            paintOverlays(context, this.shown!.reports, this.shown!.map, view, this.hidden);
        });
        this.within(context, 0, split, () =>
            this.picture(context, this.photograph!, combined(view, this.shown!.map)),
        );
    }

    private within(context: CanvasRenderingContext2D, left: number, right: number, draw: () => void): void {
        if (right <= left) return;
        context.save();
        context.beginPath();
        context.rect(left, 0, right - left, this.canvas.height);
        context.clip();
        draw();
        context.restore();
    }

    private picture(
        context: CanvasRenderingContext2D,
        bitmap: ImageBitmap,
        [a, b, c, d, e, f]: Affine,
    ): void {
        const scale = Math.sqrt(Math.abs(a * e - b * d));
        context.save();
        context.transform(a, d, b, e, c, f);
        context.imageSmoothingEnabled = scale < 1;
        context.imageSmoothingQuality = 'medium';
        context.drawImage(bitmap, 0, 0);
        context.restore();
    }

    // ---- Pointers and keys ----

    private listenToPointers(): void {
        const place = (event: PointerEvent): Point => {
            const { left, top } = this.box.getBoundingClientRect();
            return { x: event.clientX - left, y: event.clientY - top };
        };
        this.canvas.addEventListener('pointerdown', (event) => {
            if (event.pointerType === 'mouse' && event.button > 1) return;
            this.canvas.setPointerCapture(event.pointerId);
            this.pointers.set(event.pointerId, place(event));
        });
        this.canvas.addEventListener('pointermove', (event) =>
            this.pointerMoved(event.pointerId, place(event)),
        );
        for (const end of ['pointerup', 'pointercancel'] as const)
            this.canvas.addEventListener(end, (event) => this.pointers.delete(event.pointerId));
        this.canvas.addEventListener('dblclick', (event) => {
            const { left, top } = this.box.getBoundingClientRect();
            if (this.fitted)
                this.zoomTo(1 / devicePixelRatio, { x: event.clientX - left, y: event.clientY - top });
            else this.fit();
        });
    }

    private pointerMoved(id: number, to: Point): void {
        const from = this.pointers.get(id);
        if (!from) return;
        const other = [...this.pointers].find(([key]) => key !== id)?.[1];
        this.pointers.set(id, to);
        if (!other) {
            this.panBy(to.x - from.x, to.y - from.y);
            return;
        }
        const apart = (one: Point): number => Math.max(1, Math.hypot(one.x - other.x, one.y - other.y));
        this.panBy((to.x - from.x) / 2, (to.y - from.y) / 2);
        this.zoomTo((this.view.scale * apart(to)) / apart(from), {
            x: (to.x + other.x) / 2,
            y: (to.y + other.y) / 2,
        });
    }

    private wheel(event: WheelEvent): void {
        event.preventDefault();
        const { left, top } = this.box.getBoundingClientRect();
        const lines = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 16 : 1;
        const at = { x: event.clientX - left, y: event.clientY - top };
        this.zoomTo(this.view.scale * Math.exp((-event.deltaY * lines) / 400), at);
    }

    private key(event: KeyboardEvent): void {
        if (event.target !== this.box || event.ctrlKey || event.metaKey || event.altKey) return;
        const actions: Record<string, () => void> = {
            ArrowLeft: () => this.panBy(PAN_STEP, 0),
            ArrowRight: () => this.panBy(-PAN_STEP, 0),
            ArrowUp: () => this.panBy(0, PAN_STEP),
            ArrowDown: () => this.panBy(0, -PAN_STEP),
            '+': () => this.zoomBy(1),
            '=': () => this.zoomBy(1),
            '-': () => this.zoomBy(-1),
            '0': () => this.fit(),
            '1': () => this.exact(),
        };
        const action = actions[event.key];
        if (!action) return;
        event.preventDefault();
        action();
    }

    // ---- The divider ----

    private listenToDivider(): void {
        this.divider.addEventListener('pointerdown', (event) => {
            event.preventDefault();
            this.divider.focus();
            this.divider.setPointerCapture(event.pointerId);
        });
        this.divider.addEventListener('pointermove', (event) => {
            if (!this.divider.hasPointerCapture(event.pointerId)) return;
            const { left, width } = this.box.getBoundingClientRect();
            this.divide((event.clientX - left) / width);
        });
        this.divider.addEventListener('keydown', (event) => {
            const to: Record<string, number> = {
                ArrowLeft: this.part - DIVIDER_STEP,
                ArrowDown: this.part - DIVIDER_STEP,
                ArrowRight: this.part + DIVIDER_STEP,
                ArrowUp: this.part + DIVIDER_STEP,
                PageDown: this.part - 5 * DIVIDER_STEP,
                PageUp: this.part + 5 * DIVIDER_STEP,
                Home: 0,
                End: 1,
            };
            const part = to[event.key];
            if (part === undefined) return;
            event.preventDefault();
            this.divide(part);
        });
        this.divide(this.part);
    }

    /** @param part  of the width that shows the photograph */
    divide(part: number): void {
        this.part = Math.min(Math.max(part, 0), 1);
        const percent = Math.round(100 * this.part);
        this.box.style.setProperty('--part', `${100 * this.part}%`);
        this.box.classList.toggle('only-result', percent < 8);
        this.box.classList.toggle('only-original', percent > 92);
        this.divider.setAttribute('aria-valuenow', String(percent));
        this.divider.setAttribute('aria-valuetext', `original ${percent} %, result ${100 - percent} %`);
        this.draw();
    }
}

/** The view that shows at `at` what was there before, as large as it was, though the result's extents changed. */
function keptPlace(view: View, before: Affine, after: Affine, at: Point): View {
    const change = combined(after, inverse(before));
    const place = mapped(change, { x: (at.x - view.x) / view.scale, y: (at.y - view.y) / view.scale });
    const grown = Math.sqrt(Math.abs(change[0] * change[4] - change[1] * change[3]));
    if (change.every((term, k) => Math.abs(term - IDENTITY[k]!) < 1e-9)) return view;
    const scale = Math.min(Math.max(view.scale / grown, LEAST_SCALE), MOST_SCALE);
    return { scale, x: at.x - place.x * scale, y: at.y - place.y * scale };
}
