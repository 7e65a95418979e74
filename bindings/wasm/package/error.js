const MEANINGS = {
    1: 'an input check failed',
    2: 'the operation failed',
    3: 'no memory for pixels, or an image without the pixels that it needs',
    4: 'out of range',
};
const WARNING = '[warn] input error ';

function messageOf(code, reason, lines) {
    if (reason) return reason;
    const warning = lines.find((line) => line.includes(WARNING));
    if (!warning) return MEANINGS[code];
    return 'input error ' + warning.slice(warning.indexOf(WARNING) + WARNING.length).trimEnd();
}

export class OrvexError extends Error {
    constructor(code, reason = '', lines = []) {
        super(messageOf(code, reason, lines));
        this.name = 'OrvexError';
        this.code = code;
        this.reason = reason;
        this.lines = lines;
    }
}
