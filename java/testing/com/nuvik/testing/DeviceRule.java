package com.nuvik.testing;

import org.junit.rules.TestRule;
import org.junit.runner.Description;
import org.junit.runners.model.Statement;

/**
 * Starts an application before each test and ends it after it. When a test fails, the tree of what was
 * on the screen is printed and the screen is left as a picture.
 *
 * <pre>
 *   &#64;Rule public final DeviceRule rule = new DeviceRule(Tap.class);
 *
 *   &#64;Test public void countsTaps() {
 *       rule.device.button("Tap me").tap();
 *       assertEquals("Tapped once", rule.device.find(Kind.BUTTON, 1).text());
 *   }
 * </pre>
 */
public final class DeviceRule implements TestRule {
    /** The device of the test. */
    public final Device device = new Device();

    private final Class<?> mainClass;
    private final String[] arguments;
    private boolean stopsClock;
    private int width;
    private int height;

    /**
     * A rule that starts nothing: the test does.
     */
    public DeviceRule() {
        this(null);
    }

    /**
     * A rule that starts an application before each test.
     *
     * @param mainClass the class with its method main
     * @param arguments what main is given
     */
    public DeviceRule(Class<?> mainClass, String... arguments) {
        this.mainClass = mainClass;
        this.arguments = arguments;
    }

    /**
     * Lets the tests fail at once on a device with another screen.
     *
     * @param screenWidth pixels
     * @param screenHeight pixels
     * @return this rule
     */
    public DeviceRule wantsScreen(int screenWidth, int screenHeight) {
        width = screenWidth;
        height = screenHeight;
        return this;
    }

    /**
     * Stops the device's clock before each test, as {@link Device#stopClock} does.
     *
     * @return this rule
     */
    public DeviceRule withStoppedClock() {
        stopsClock = true;
        return this;
    }

    @Override
    public Statement apply(Statement test, Description description) {
        return new Statement() {
            @Override
            public void evaluate() throws Throwable {
                run(test, description);
            }
        };
    }

    private void run(Statement test, Description description) throws Throwable {
        Throwable failure = null;
        try {
            if (width != 0) device.mustHaveScreen(width, height);
            if (stopsClock) device.stopClock();
            if (mainClass != null) device.start(mainClass, arguments);
            test.evaluate();
        } catch (Throwable failed) {
            failure = failed;
            if (!isAssumption(failed)) tell(description);
        }
        try {
            device.stop();
        } catch (Throwable notEnded) {
            if (failure == null) throw notEnded;
            failure.addSuppressed(notEnded);
        }
        if (failure != null) throw failure;
    }

    /** A test that is not meant for this device has not failed. */
    private static boolean isAssumption(Throwable thrown) {
        return thrown instanceof org.junit.internal.AssumptionViolatedException;
    }

    private void tell(Description description) {
        String name = description.getClassName() + "." + description.getMethodName();
        Failures.tell(device, name);
    }
}
