package com.orvex991;

/** What the library throws. */
public final class ImageException extends RuntimeException {
    private static final long serialVersionUID = 1;

    /**
     * 1: an input check failed (the library printed which) or a format is not supported; 2: an operation failed, or a
     * detector found nothing; 3: memory could not be had; 4: an index is out of range.
     */
    public final int code;

    ImageException(int code, String message) {
        super(message.isEmpty() ? "code " + code : "code " + code + ": " + message);
        this.code = code;
    }
}
