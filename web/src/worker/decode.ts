/** From a file or a camera's frame to pixels. */
import type { Picture } from '../pipeline/library.js';
import { cutOff, refusal, tooLarge } from './header.js';

export class Refused extends Error {}

/** Files of pictures are smaller. */
const MOST_BYTES = 256 * 1024 * 1024;

/** As it is in the file, upright by its EXIF; @throws Refused with words for the user */
export async function decoded(file: Blob): Promise<ImageBitmap> {
  if (file.size > MOST_BYTES) throw new Refused('the file is larger than 256 MiB');
  const bytes = new Uint8Array(await file.arrayBuffer());
  const against = refusal(bytes);
  if (against) throw new Refused(against);
  if (cutOff(bytes)) throw new Refused('the JPEG is cut off: it ends before its picture does');
  try {
    return await createImageBitmap(file, {
      imageOrientation: 'from-image',
      colorSpaceConversion: 'none',
      premultiplyAlpha: 'none',
    });
  } catch {
    throw new Refused('it is not a picture that this browser can read');
  }
}

/** RGBA of a bitmap; what is transparent lies on white. */
export function pixelsOf(bitmap: ImageBitmap): ImageData {
  const against = tooLarge({ cols: bitmap.width, rows: bitmap.height });
  if (against) throw new Refused(against);
  const canvas = new OffscreenCanvas(bitmap.width, bitmap.height);
  const context = canvas.getContext('2d', { willReadFrequently: true });
  if (!context) throw new Refused('this browser has no memory for it');
  context.fillStyle = 'white';
  context.fillRect(0, 0, bitmap.width, bitmap.height);
  context.drawImage(bitmap, 0, 0);
  return context.getImageData(0, 0, bitmap.width, bitmap.height);
}

/** B, G, R of RGBA. */
export function pictureOf({ data, width, height }: ImageData): Picture {
  const bgr = new Uint8Array(3 * width * height);
  for (let from = 0, to = 0; from < data.length; from += 4, to += 3) {
    bgr[to] = data[from + 2]!;
    bgr[to + 1] = data[from + 1]!;
    bgr[to + 2] = data[from]!;
  }
  return { rows: height, cols: width, channels: 3, data: bgr };
}

/** RGBA of a gray or B, G, R picture. */
export function imageDataOf({ rows, cols, channels, data }: Picture): ImageData {
  const pixels = new Uint32Array(rows * cols);  // little-endian, as every processor that runs browsers
  if (channels === 1) for (let k = 0; k < pixels.length; ++k) pixels[k] = 0xff000000 | (data[k]! * 0x010101);
  else
    for (let k = 0, at = 0; k < pixels.length; ++k, at += 3)
      pixels[k] = 0xff000000 | (data[at]! << 16) | (data[at + 1]! << 8) | data[at + 2]!;
  return new ImageData(new Uint8ClampedArray(pixels.buffer), cols, rows);
}
