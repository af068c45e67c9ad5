package com.nuvik.wyx;

/** What kind of error {@link WYXErrorHandler} is told. */
public final class ErrorCode {
    private ErrorCode() {}

    /** None; no handler is told of it. */
    public static final int NONE = 0;

    /** The device does not offer it. */
    public static final int NOT_SUPPORTED = -1;

    /** It failed; the message says what did. */
    public static final int FAILED = -3;

    /** There was no memory for it. */
    public static final int OUT_OF_MEMORY = -4;

    /** The image is of no format that the device knows. */
    public static final int NO_DECODER = -6;

    /** The image could not be decoded. */
    public static final int DECODING_FAILED = -8;
}
