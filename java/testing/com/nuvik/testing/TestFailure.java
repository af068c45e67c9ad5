package com.nuvik.testing;

/** What a test wanted and the device did not do, in one sentence. */
public final class TestFailure extends AssertionError {
    private static final long serialVersionUID = 1;

    TestFailure(String sentence) {
        super(sentence);
    }

    TestFailure(String sentence, Throwable cause) {
        super(sentence, cause);
    }
}
