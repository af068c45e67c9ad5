package com.nuvik.testing.tests;

import com.nuvik.program.Listener;

/** Does something when the button that it listens to is tapped. */
final class OnTap extends Listener {
    private final Runnable deed;

    OnTap(Runnable deed) {
        this.deed = deed;
    }

    @Override
    public void selected() {
        deed.run();
    }
}
