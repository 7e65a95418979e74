/** Components that can be letters, and their rows. */
import type { Library, Point, Rect } from './library.js';
import type { CppNames, Flow, Overlay, Values } from './stage.js';
import { number } from './wording.js';

/** More are not drawn: nobody could tell them apart. */
const MOST_DRAWN = 20000;

export function boxes(rects: readonly Rect[], groups: readonly number[]): Overlay {
    return { type: 'boxes', boxes: rects.slice(0, MOST_DRAWN), groups: groups.slice(0, MOST_DRAWN) };
}

const tallest = (rows: number, values: Values): number => Math.floor((rows * number(values, 'most')) / 100);

export function letterFacts({ picture }: Flow, values: Values): { least: number; most: number } {
    return { least: number(values, 'least'), most: tallest(picture.rows, values) };
}

/** The rectangle around some; a row of noise can have more than a call takes arguments. */
export function around(rects: readonly Rect[]): Rect {
    let [left, top, right, bottom] = [Infinity, Infinity, -Infinity, -Infinity];
    for (const { x, y, width, height } of rects) {
        [left, top] = [Math.min(left, x), Math.min(top, y)];
        [right, bottom] = [Math.max(right, x + width), Math.max(bottom, y + height)];
    }
    return { x: left, y: top, width: right - left, height: bottom - top };
}

export function cornersOf({ x, y, width, height }: Rect): Point[] {
    const [right, bottom] = [x + width - 1, y + height - 1];
    return [
        { x, y },
        { x: right, y },
        { x, y: bottom },
        { x: right, y: bottom },
    ];
}

export const lettersOf = (flow: Flow, library: Library): readonly Rect[] =>
    flow.letters ?? library.connectdComponent(flow.picture);

export const rowsOf = (flow: Flow, library: Library): readonly (readonly Rect[])[] =>
    flow.rows ?? library.divideComponentsToRows(lettersOf(flow, library));

function lettersLines(names: CppNames): { lines: string[]; letters: string } {
    if (names.letters) return { lines: [], letters: names.letters };
    return {
        lines: ['Rects letters;', `CImgproc::connectdComponent(${names.picture}, letters, nullptr);`],
        letters: 'letters',
    };
}

export function rowsLines(names: CppNames): { lines: string[]; letters: string; rows: string } {
    const { lines, letters } = lettersLines(names);
    if (names.rows) return { lines, letters, rows: names.rows };
    const grouped = ['orvex_991::vector<Rects> rows;', `CImgproc::divideComponentsToRows(${letters}, rows);`];
    return { lines: [...lines, ...grouped], letters, rows: 'rows' };
}
