package com.nuvik.checking;

import java.lang.invoke.MethodType;
import java.lang.reflect.Field;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.util.HashMap;
import java.util.LinkedHashSet;
import java.util.Map;
import java.util.Set;
import java.util.TreeMap;

/** The methods that displays call, as they are registered, and what of that cannot work. */
final class Callbacks {
    /** By the display's number, which no other has after it. */
    private static final Map<Integer, Callbacks> OF_DISPLAYS = new HashMap<>();

    private final Map<Integer, Class<?>> receivers = new TreeMap<>();
    private boolean hasRegistry;
    private boolean hasListeners;

    private Callbacks() {}

    /** A display is given its registry: what is wrong with that, or null. */
    static synchronized String begin(int display) {
        Callbacks callbacks = of(display);
        if (callbacks.hasRegistry) return "the display has its registry already";
        callbacks.hasRegistry = true;
        return null;
    }

    /**
     * A method is registered: what is wrong with that, or null. The signature is
     * null for no event and empty for one that a companion library may fire.
     */
    static synchronized String register(
            int display, int id, String className, String method, String signature) {
        Callbacks callbacks = of(display);
        if (!callbacks.hasRegistry) return "the display has no registry; Display_InitCallbacks makes it";
        if (signature == null) return "there is no event " + id;
        if (className == null || method == null) return "a class and a method are wanted";
        if (callbacks.receivers.containsKey(id)) return "the event " + id + " is registered already";
        try {
            ClassLoader loader = Callbacks.class.getClassLoader();
            Class<?> receiver = Class.forName(className.replace('/', '.'), false, loader);
            boolean isCompanions = signature.isEmpty();
            if (!isCompanions && !hasMethod(receiver, method, signature))
                return receiver.getName() + " has no instance method " + method + signature;
            callbacks.receivers.put(id, receiver);
            return null;
        } catch (ClassNotFoundException missing) {
            return "there is no class " + className;
        }
    }

    /** An object is to hear a widget's events: what is wrong with that, or null. */
    static synchronized String listen(int display, Object listener) {
        if (listener == null) return null;
        Callbacks callbacks = of(display);
        callbacks.hasListeners = true;
        if (callbacks.receivers.isEmpty()) return null; // the methods may follow
        for (Class<?> receiver : callbacks.receivers.values())
            if (receiver.isInstance(listener)) return null;
        return listener.getClass().getName()
                + " is none of the classes whose methods are registered: "
                + Set.copyOf(callbacks.receivers.values());
    }

    /**
     * The events that the listeners of some display cannot hear, as no method is registered for them: by
     * the names of their constants. The library drops such an event before it calls anything, so that
     * nobody can tell whether there was one.
     */
    static synchronized Set<String> unheard() throws ReflectiveOperationException {
        Set<String> names = new LinkedHashSet<>();
        for (Field constant : Class.forName("com.nuvik.wyx.k4tr.OS").getFields()) {
            if (!constant.getName().startsWith("CB_")) continue;
            Integer event = constant.getInt(null);
            for (Callbacks callbacks : OF_DISPLAYS.values())
                if (callbacks.hasListeners && !callbacks.receivers.containsKey(event))
                    names.add(constant.getName());
        }
        return names;
    }

    private static Callbacks of(int display) {
        return OF_DISPLAYS.computeIfAbsent(display, one -> new Callbacks());
    }

    private static boolean hasMethod(Class<?> receiver, String name, String signature) {
        for (Class<?> one = receiver; one != null; one = one.getSuperclass())
            for (Method method : one.getDeclaredMethods())
                if (method.getName().equals(name)
                        && !Modifier.isStatic(method.getModifiers())
                        && signatureOf(method).equals(signature)) return true;
        return false;
    }

    private static String signatureOf(Method method) {
        return MethodType.methodType(method.getReturnType(), method.getParameterTypes())
                .toMethodDescriptorString();
    }
}
