/** Draws what stages found over the picture that is shown. */
import { combined, inverse, mapped, type Affine } from '../pipeline/affine.js';
import type { Point, Rect } from '../pipeline/library.js';
import type { StageReport } from '../pipeline/run.js';
import type { Overlay } from '../pipeline/stage.js';
import { COLOUR_COUNT, colourOf } from './palette.js';

const SEAL = [229, 40, 60, 150] as const;

/** On a smaller scale the letters' boxes would hide the letters of a row. */
const LEAST_FOR_LETTERS = 0.4;

/** Masks become pictures once; they are the worker's, so the same object means the same mask. */
const masks = new WeakMap<object, OffscreenCanvas>();

function maskPicture(overlay: Extract<Overlay, { type: 'mask' }>): OffscreenCanvas {
    const kept = masks.get(overlay);
    if (kept) return kept;
    const { rows, cols, data } = overlay.mask;
    const pixels = new ImageData(cols, rows);
    for (let k = 0; k < data.length; ++k) if (data[k] !== 0) pixels.data.set(SEAL, 4 * k);
    const canvas = new OffscreenCanvas(cols, rows);
    canvas.getContext('2d')!.putImageData(pixels, 0, 0);
    masks.set(overlay, canvas);
    return canvas;
}

function cornersOf({ x, y, width, height }: Rect): Point[] {
    return [
        { x, y },
        { x: x + width, y },
        { x: x + width, y: y + height },
        { x, y: y + height },
    ];
}

/** Pixels are unit squares; hulls and rectangles run through their centres. */
const centred = (outline: readonly Point[]): Point[] =>
    outline.map(({ x, y }) => ({ x: x + 0.5, y: y + 0.5 }));

function paths(outlines: readonly (readonly Point[])[], groups: readonly number[], map: Affine): Path2D[] {
    const found = Array.from({ length: COLOUR_COUNT }, () => new Path2D());
    outlines.forEach((outline, index) => {
        const path = found[groups[index]! % COLOUR_COUNT]!;
        outline.forEach((corner, k) => {
            const { x, y } = mapped(map, corner);
            if (k === 0) path.moveTo(x, y);
            else path.lineTo(x, y);
        });
        path.closePath();
    });
    return found;
}

/**
 * @param map  from the places that the overlay counts in to those of the canvas
 * @param bold  wide lines and tinted insides; thin lines otherwise
 */
function paint(context: CanvasRenderingContext2D, overlay: Overlay, map: Affine, bold: boolean): void {
    if (overlay.type === 'mask') {
        const [a, b, c, d, e, f] = map;
        context.save();
        context.transform(a, d, b, e, c, f);
        context.imageSmoothingEnabled = true;
        context.drawImage(maskPicture(overlay), 0, 0, overlay.cols, overlay.rows);
        context.restore();
        return;
    }
    const outlines = overlay.type === 'boxes' ? overlay.boxes.map(cornersOf) : overlay.outlines.map(centred);
    paths(outlines, overlay.groups, map).forEach((path, group) => {
        context.strokeStyle = colourOf(group);
        context.lineWidth = bold ? 2 : 1;
        context.stroke(path);
        if (!bold) return;
        context.globalAlpha = 0.16;
        context.fillStyle = colourOf(group);
        context.fill(path);
        context.globalAlpha = 1;
    });
}

/**
 * @param shown  from the photograph to the picture that is shown
 * @param view  from that picture to the canvas
 * @param hidden  stages whose overlays are not wanted
 */
export function paintOverlays(
    context: CanvasRenderingContext2D,
    reports: readonly StageReport[],
    shown: Affine,
    view: Affine,
    hidden: ReadonlySet<string>,
): void {
    const visible = reports.filter((report) => report.overlays.length > 0 && !hidden.has(report.id));
    const rows = visible.some((report) => report.id === 'rows');
    for (const report of visible) {
        if (rows && report.id === 'components') continue; // rows draw the same boxes in their own colours
        const map = combined(view, combined(shown, inverse(report.map)));
        report.overlays.forEach((overlay, index) => {
            const bold = index > 0;
            if (bold || report.overlays.length === 1 || view[0] >= LEAST_FOR_LETTERS)
                paint(context, overlay, map, bold);
        });
    }
}
