/** How docprep levels a page, in as far as it is one turn. */
import { Image } from 'orvex_991';
import type { Library, Picture, Size } from './library.js';
import type { Kind } from './stage.js';

/** Skews below this many degrees are not worth the softness that a warp brings. */
const LEAST_SKEW = 0.1;

const BLOCKS_ACROSS_PAGE = 15;
const LEAST_BLOCK = 31;
const CONTRAST_IN_DEVIATIONS = 0.6;
const LEAST_CONTRAST = 10;

/** 255 where a picture has print, as docprep binarises by surroundings; a binary picture is taken as it is. */
export function printOf(picture: Picture, kind: Kind, library: Library): Picture {
    if (kind === 'binary') return picture;
    const gray = picture.channels === 1 ? picture : library.bgr2gray(picture);
    const { rows, cols } = gray;
    const { stddev } = library.meanStdDev(gray);
    // So written, a deviation that is not a number, as nearly constant pictures can have, counts as none.
    if (!(stddev > 0)) return new Image(rows, cols, 1);
    const block = Math.max(Math.trunc(Math.min(rows, cols) / BLOCKS_ACROSS_PAGE), LEAST_BLOCK) | 1;
    const contrast = Math.max(CONTRAST_IN_DEVIATIONS * stddev, LEAST_CONTRAST);
    return library.adaptiveThreshold(gray, block, -contrast / stddev, true);
}

/** The matrix that turns a picture anticlockwise into a result just large enough; none for less than LEAST_SKEW. */
export function levelled(
    picture: Picture,
    degrees: number,
    library: Library,
): { matrix?: Float32Array; size: Size } {
    const { rows, cols } = picture;
    if (Math.abs(degrees) < LEAST_SKEW) return { size: { width: cols, height: rows } };
    const matrix = library.getRotationMatrix2D({ x: (cols - 1) / 2, y: (rows - 1) / 2 }, degrees, 1);
    const size = { width: extent(matrix, 0, picture), height: extent(matrix, 3, picture) };
    matrix[2] = centringShift(matrix, 0, picture, size.width);
    matrix[5] = centringShift(matrix, 3, picture, size.height);
    return { matrix, size };
}

/** Of the mapped picture on the axis whose row of the matrix begins at `at`. */
function extent(matrix: Float32Array, at: number, { rows, cols }: Picture): number {
    // What single precision adds to a quarter turn shall not cost another row of pixels.
    const rounding = 0.01;
    const whole = Math.abs(matrix[at]!) * cols + Math.abs(matrix[at + 1]!) * rows;
    return Math.max(1, Math.ceil(whole - rounding));
}

function centringShift(matrix: Float32Array, at: number, { rows, cols }: Picture, size: number): number {
    return (size - 1) / 2 - (matrix[at]! * (cols - 1) + matrix[at + 1]! * (rows - 1)) / 2;
}
