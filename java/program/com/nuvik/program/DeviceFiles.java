package com.nuvik.program;

/**
 * Where the device's files are. A program names them as the device does, {@code \My Documents\site.txt},
 * and natives such as those of the file dialog take and give such names. Java's own files want the path
 * that is told here: on a desk the device has its files in a folder, which Java does not know as the
 * device's.
 */
public final class DeviceFiles {
    private DeviceFiles() {}

    /**
     * The path for Java of one of the device's files.
     *
     * @param name the file's whole name on the device
     * @return the name itself on a device
     */
    public static String pathOf(String name) {
        String storage = System.getProperty("zemvolt.storage");
        if (storage == null) return name;
        return storage + "/" + name.replace('\\', '/');
    }
}
