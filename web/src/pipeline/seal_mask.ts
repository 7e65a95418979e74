/** A mask small enough to be handed to the page. */
import { Image } from 'orvex_991';
import type { Picture } from './library.js';

/** A mask of this many columns at most is drawn; that of the library comes from 320. */
const MASK_COLS = 640;

/** Every n-th pixel of every n-th row, n being the least that leaves MASK_COLS columns. */
export function thinned({ rows, cols, data }: Picture): Picture {
    const step = Math.max(1, Math.ceil(cols / MASK_COLS));
    const [thinRows, thinCols] = [Math.ceil(rows / step), Math.ceil(cols / step)];
    const thin = new Image(thinRows, thinCols, 1);
    for (let row = 0; row < thinRows; ++row)
        for (let col = 0; col < thinCols; ++col)
            thin.data[row * thinCols + col] = data[(row * cols + col) * step]!;
    return thin;
}
