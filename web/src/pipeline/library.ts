/** The library by the names that the pipeline uses. */
export type { ImageLike as Picture, Orvex as Library, Point, Rect, Size } from 'orvex_991';
export { OrvexError as LibraryError } from 'orvex_991';
