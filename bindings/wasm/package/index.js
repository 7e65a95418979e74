export { Image } from './image.js';
export { load } from './load.js';
export { OrvexError } from './error.js';

/** How warps and resizes sample; any other number is legal and gives an all-zero output. */
export const INTERP_LINEAR = 0;

/** Operations of morphologyBinary. */
export const MORPH_DILATE = 0;
export const MORPH_ERODE = 1;
export const MORPH_OPEN = 2;
export const MORPH_CLOSE = 3;
