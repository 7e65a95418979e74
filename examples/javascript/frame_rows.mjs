// Rows of text in a camera frame. usage: frame_rows.mjs FRAME COLS ROWS   (NV21, without padding)
// prints: 15 rows, the first of 48 letters
import { readFile } from 'node:fs/promises';
import { load } from 'orvex_991';

const orvex = await load();

/** Rectangles of letters, row by row; dark print on light paper. */
function textRows(frame, rows, cols) {
    const gray = orvex.bgr2gray(orvex.yuv2bgr(frame, rows, cols));
    const { dst: binary } = orvex.threshold(gray, 0, 255, 8 | 1); // Otsu, dark becomes 255
    const components = orvex.connectdComponent(binary);
    // Neither specks nor the desk around.
    const letters = components.filter(({ height }) => height > 4 && height < Math.floor(rows / 20));
    return orvex.divideComponentsToRows(letters);
}

const [file, cols, rows] = process.argv.slice(2);
const text = textRows(await readFile(file), Number(rows), Number(cols));
console.log(`${text.length} rows, the first of ${text[0].length} letters`);
