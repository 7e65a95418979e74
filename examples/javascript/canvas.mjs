// A page on a canvas, made level. usage in a browser's module: level(canvas)
import { Image, load } from 'orvex_991';

const orvex = await load();

/** The page of a photograph on a canvas, turned level; dark print on light paper. */
export function level(canvas) {
    const context = canvas.getContext('2d');
    const photo = Image.fromImageData(context.getImageData(0, 0, canvas.width, canvas.height));
    const print = orvex.adaptiveThreshold(orvex.bgr2gray(photo), 31, -0.3, true); // dark becomes 255
    const page = orvex.levelPage(photo, orvex.estimateSkew(print));
    canvas.width = page.cols;
    canvas.height = page.rows;
    context.putImageData(Image.toImageData(page), 0, 0);
}
