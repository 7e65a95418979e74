// Checked by tsc --strict and never run: that calls of every kind have the types that the declarations promise, and
// that wrong ones are refused.
import { Image, INTERP_LINEAR, load, MORPH_OPEN, OrvexError } from 'orvex_991';
import type { ImageLike, Labels, Orvex, Point, Rect, RotatedRect } from 'orvex_991';

const orvex: Orvex = await load();
const plain: Promise<Orvex> = load({ simd: false });
orvex.onLines = (lines: string[]) => console.log(lines.length);
orvex.onLines = null;

const photo: Image = Image.fromImageData({ width: 1, height: 1, data: new Uint8ClampedArray(4) });
const shown: ImageData = Image.toImageData(photo);
const bytes: Uint8ClampedArray = Image.toRgba(photo);
const own: ImageLike = { rows: 1, cols: 1, channels: 1, data: new Uint8Array(1) };

const gray: Image = orvex.bgr2gray(photo);
const shares: Float32Array = orvex.hist(own);
const { mean, stddev }: { mean: number; stddev: number } = orvex.meanStdDev(gray);
const level: number = orvex.otsu(gray, own);
const { threshold, dst }: { threshold: number; dst: Image } = orvex.threshold(gray, 0, 255, 8 | 1);
const turned: Image = orvex.rot90ClockWise(gray, 1);
const point: Point = orvex.rot90ClockWise({ x: 1, y: 2 }, { width: 3, height: 4 }, 1);
const rect: Rect = orvex.rot90AntiClockWise({ x: 1, y: 2, width: 1, height: 1 }, { width: 3, height: 4 }, 1);
const halved: Image = orvex.resize(gray, 0.5);
const matrix: Float32Array = orvex.getRotationMatrix2D({ x: 0.5, y: 0.5 }, 30, 1);
const warped: Image = orvex.warpAffine(gray, matrix, { width: 3, height: 4 });
const marked: Image = orvex.warpAffine(gray, matrix, { width: 3, height: 4 }, INTERP_LINEAR, new Image(4, 3, 1)).mask;
const opened: Image = orvex.morphologyBinary(gray, { width: 3, height: 3 }, MORPH_OPEN);
const labels: { dst: Labels; num: number } = orvex.bwlabel(gray);
const numbers: Int32Array = labels.dst.data;
const rects: Rect[] = orvex.connectdComponent(gray);
const pixels: Point[][] = orvex.connectdComponent(gray, true).points;
const rows: Rect[][] = orvex.divideComponentsToRows(rects);
const around: RotatedRect = orvex.minAreaRect(orvex.convexHull(pixels[0]!));
const levels: Uint8Array = orvex.saliencyDetect(gray, gray).level_saliency;
const upright: Image = orvex.levelPage(photo, orvex.estimateSkew(dst));

const error = new OrvexError(1);
const code: 1 | 2 | 3 | 4 = error.code;
const said: string = error.message + error.reason + error.lines.join();

// @ts-expect-error  an image is no typed array
orvex.bgr2gray(new Uint8Array(3));
// @ts-expect-error  which operation
orvex.morphologyBinary(gray, { width: 3, height: 3 });
// @ts-expect-error  bytes are whole numbers
orvex.otsu({ rows: 1, cols: 1, channels: 1, data: new Float32Array(1) });
// @ts-expect-error  a rectangle has extents
orvex.rectAffine({ x: 1, y: 1 }, matrix);
// @ts-expect-error  only with points
orvex.connectdComponent(gray).points;
// @ts-expect-error  fields of an image stay
photo.rows = 2;
