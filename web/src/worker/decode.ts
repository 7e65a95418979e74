/** From a file or a camera's frame to pixels. */
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
