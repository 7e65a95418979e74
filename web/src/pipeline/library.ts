/** What the pipeline uses of the library: pictures, places, and the operations under their own names. */

/** `data` holds rows x cols x channels bytes; 1 channel is gray or binary, 3 are B, G, R. */
export interface Picture {
  readonly rows: number;
  readonly cols: number;
  readonly channels: number;
  readonly data: Uint8Array;
}

export interface Point {
  readonly x: number;
  readonly y: number;
}

export interface Size {
  readonly width: number;
  readonly height: number;
}

export interface Rect extends Point, Size {}

export interface RotatedRect {
  readonly pts: readonly Point[];
  readonly angle: number;
}

/** An operation refused its input or failed; `code` is 1 to 4 as the library's header says. */
export interface LibraryError extends Error {
  readonly code: number;
}

/** The operations of cv_imgproc.h that the stages call, arguments in the header's order. */
export interface Library {
  onLines: ((lines: string[]) => void) | null;
  isLibraryError(error: unknown): error is LibraryError;

  rot90ClockWise_FlipLR(src: Picture, n: number, f: number): Picture;
  resize(src: Picture, scale: number): Picture;
  getRotationMatrix2D(center: Point, angle: number, scale: number): Float32Array;
  warpAffine(src: Picture, matrix: Float32Array, size: Size): Picture;

  bgr2gray(src: Picture): Picture;
  equalizeHist(src: Picture): Picture;
  hist(src: Picture): Float32Array;
  meanStdDev(src: Picture): { mean: number; stddev: number };
  countNonZero(src: Picture): number;

  otsu(src: Picture): number;
  thresholdSeg(src: Picture, level: number): Picture;
  threshold(src: Picture, type: number): { threshold: number; picture: Picture };
  adaptiveThreshold(src: Picture, block: number, ratio: number, inverse: boolean): Picture;
  morphologyBinary(src: Picture, size: Size, type: number): Picture;

  bwlabel(src: Picture): { labels: Int32Array; num: number };
  connectdComponent(src: Picture): Rect[];
  divideComponentsToRows(rects: readonly Rect[]): Rect[][];
  convexHull(points: readonly Point[]): Point[];
  minAreaRect(points: readonly Point[]): RotatedRect;

  getSharpness(src: Picture): number;
  saliencyDetect(src: Picture): Picture;
  redColorDetect(src: Picture, relaxed: boolean): Picture;

  /** docprep's: by how many degrees rows of text fall to the right; `binary` is 255 where there is print. */
  estimateSkew(binary: Picture): number;
}
