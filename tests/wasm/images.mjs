// Images and lists that tests share.
import { Image } from '../../build/wasm/package/index.js';

/** Bytes that look like noise, the same ones on every run. */
export function noise(rows, cols, channels, seed = 1) {
    const image = new Image(rows, cols, channels);
    let state = seed;
    for (let k = 0; k < image.data.length; ++k) {
        state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
        image.data[k] = state >>> 24;
    }
    return image;
}

export function filled(rows, cols, channels, value) {
    const image = new Image(rows, cols, channels);
    image.data.fill(value);
    return image;
}

/** Twelve rows of letters, 255 on 0. */
export function page() {
    const image = new Image(500, 700, 1);
    for (let top = 70; top < 430; top += 30)
        for (let left = 80; left < 620; left += 16)
            for (let row = top; row < top + 14; ++row)
                image.data.fill(255, row * 700 + left, row * 700 + left + 10);
    return image;
}
