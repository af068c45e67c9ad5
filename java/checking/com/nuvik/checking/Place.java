package com.nuvik.checking;

/** Where a handle was made or disposed of: a stack. */
final class Place extends Throwable {
    private static final long serialVersionUID = 1;

    Place(String what) {
        super(what);
    }

    /** The innermost frame that is the program's own. */
    static StackTraceElement callerIn(Throwable place) {
        StackTraceElement[] stack = place.getStackTrace();
        for (StackTraceElement frame : stack)
            if (!frame.isNativeMethod()) return frame;
        return stack[0];
    }

    /** It is printed as what happened there, without the name of its class. */
    @Override
    public String toString() {
        return getMessage();
    }
}
