package com.nuvik.testing;

import java.security.Permission;

/**
 * Lets System.exit of an application end it, and not the tests; one that is stopped makes no new threads,
 * as an executor does in place of those that die. Everything else is allowed.
 */
@SuppressWarnings("removal")
final class ExitGuard extends SecurityManager {
    private static final int PATIENCE = 20_000;

    @Override
    public void checkExit(int code) {
        Application application = Application.ofThisThread();
        if (application != null) application.exit(code, PATIENCE);
    }

    @Override
    public void checkAccess(ThreadGroup group) {
        Application application = Application.ofThisThread();
        if (application != null && application.isStopped()) throw new ThreadDeath();
    }

    @Override
    public void checkPermission(Permission permission) {}

    @Override
    public void checkPermission(Permission permission, Object context) {}
}
