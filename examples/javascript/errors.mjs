// What the library prints, and what it throws.
// prints: bgr2gray
// prints: code 1: input error 1 == src.channels
import { Image, load, OrvexError } from 'orvex_991';

const orvex = await load();
const photo = new Image(480, 640, 3);
orvex.bgr2gray(photo); // silent

orvex.onLines = (lines) => console.log(lines[0].split('] ')[1].split(' ')[0]);
orvex.bgr2gray(photo); // D cv_imgproc.cpp:108] bgr2gray cost time: 0.153421ms
orvex.onLines = null;

try {
    orvex.otsu(photo);
} catch (error) {
    if (!(error instanceof OrvexError)) throw error;
    console.log(`code ${error.code}: ${error.message}`); // error.lines has what was printed
}
