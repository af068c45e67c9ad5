package com.nuvik.program;

import com.nuvik.wyx.WYXErrorHandler;

/** What a native throws that failed, when {@link #HANDLER} is the error handler. */
public final class NativeFailure extends RuntimeException {
    /** Makes an exception of every error of a native, which surfaces from the native. */
    public static final WYXErrorHandler HANDLER =
            new WYXErrorHandler() {
                public void respond(String function, int code, String message) {
                    throw new NativeFailure(function, code, message);
                }
            };

    private static final long serialVersionUID = 1;

    /** Which native failed. */
    private final String function;

    /** How it failed. */
    private final int code;

    private NativeFailure(String function, int code, String message) {
        super(function + ": " + message + " (" + code + ")");
        this.function = function;
        this.code = code;
    }

    /**
     * Which native failed.
     *
     * @return its name, such as "Shell_New"
     */
    public String getFunction() {
        return function;
    }

    /**
     * How it failed.
     *
     * @return one of {@link com.nuvik.wyx.ErrorCode}
     */
    public int getCode() {
        return code;
    }
}
