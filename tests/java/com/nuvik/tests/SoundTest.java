package com.nuvik.tests;

import static com.nuvik.wyx.k4tr.OS.wyxErrorHandler;
import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotEquals;

import com.nuvik.wyx.dovr.OS;
import java.io.ByteArrayOutputStream;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.concurrent.CyclicBarrier;
import java.util.concurrent.ExecutionException;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import org.junit.After;
import org.junit.Before;
import org.junit.Test;

/** Sounds as Java uses them, on an output whose time the tests let pass. */
public final class SoundTest {
    private final List<String> errors = Collections.synchronizedList(new ArrayList<>());
    private int sound;

    @Before
    public void open() {
        wyxErrorHandler =
                (function, code, message) -> errors.add(function + " " + code + " " + message);
        SoundOutput.setSpeed(0);
        SoundOutput.record(true);
        sound = OS.Sound_New();
        assertNotEquals(0, sound);
    }

    @After
    public void close() {
        OS.Sound_Dispose(sound);
        assertEquals(0, SoundOutput.count());
        SoundOutput.record(false);
        SoundOutput.setSpeed(1);
        assertEquals(Collections.emptyList(), errors);
    }

    private static byte[] samples(int count) {
        byte[] samples = new byte[count];
        for (int i = 0; i < count; i++) samples[i] = (byte) (i % 251);
        return samples;
    }

    private static byte[] repeated(byte[] bytes, int times) {
        ByteArrayOutputStream all = new ByteArrayOutputStream();
        for (int i = 0; i < times; i++) all.write(bytes, 0, bytes.length);
        return all.toByteArray();
    }

    /** A WAVE file of 8 bytes a millisecond. */
    static byte[] wave(byte[] samples) {
        ByteBuffer file = ByteBuffer.allocate(44 + samples.length).order(ByteOrder.LITTLE_ENDIAN);
        file.put("RIFF".getBytes()).putInt(36 + samples.length).put("WAVEfmt ".getBytes()).putInt(16);
        file.putShort((short) 1).putShort((short) 1).putInt(8000).putInt(8000);
        file.putShort((short) 1).putShort((short) 8);
        file.put("data".getBytes()).putInt(samples.length).put(samples);
        return file.array();
    }

    private void play(byte[] file, int loops) {
        OS.Sound_Play(sound, file, file.length, loops);
    }

    /** What was played, when the sound is silent. */
    private byte[] playedToTheEnd() {
        OS.Sound_Stop(sound);
        return SoundOutput.recorded();
    }

    /** Runs the work on several threads at a time, which start together. */
    private static void together(List<Callable<Void>> work)
            throws InterruptedException, ExecutionException {
        ExecutorService threads = Executors.newFixedThreadPool(work.size());
        CyclicBarrier start = new CyclicBarrier(work.size());
        List<Future<Void>> results = new ArrayList<>();
        for (Callable<Void> job : work) {
            results.add(
                    threads.submit(
                            () -> {
                                start.await();
                                return job.call();
                            }));
        }
        for (Future<Void> result : results) result.get();
        threads.shutdown();
    }

    @Test
    public void aFileIsPlayedSampleBySample() {
        byte[] file = wave(samples(80));
        play(file, 0);
        SoundOutput.pass(10);
        assertArrayEquals(file, playedToTheEnd());
    }

    @Test
    public void aFileIsPlayedOnceMoreThanItIsLooped() {
        play(wave(samples(40)), 4);
        SoundOutput.pass(1000);
        assertArrayEquals(wave(repeated(samples(40), 5)), playedToTheEnd());
    }

    @Test
    public void anEndlessSoundPlaysUntilItIsStopped() {
        play(wave(samples(40)), -1);
        SoundOutput.pass(5003);
        assertEquals(1, SoundOutput.count());
        OS.Sound_Stop(sound);
        assertEquals(0, SoundOutput.count());
        byte[] expected = Arrays.copyOf(repeated(samples(40), 1001), 5003 * 8);
        assertArrayEquals(wave(expected), SoundOutput.recorded());
    }

    @Test
    public void aFileIsNotNeededWhenItPlays() {
        byte[] file = wave(samples(80));
        byte[] expected = file.clone();
        play(file, 0);
        Arrays.fill(file, (byte) 0);
        System.gc();
        SoundOutput.pass(10);
        assertArrayEquals(expected, playedToTheEnd());
    }

    @Test
    public void aSoundPlaysInRealTime() {
        SoundOutput.setSpeed(1);
        play(wave(samples(80)), -1);
        while (SoundOutput.recorded().length < 44 + 800) Thread.yield();
        OS.Sound_Stop(sound);
        byte[] played = SoundOutput.recorded();
        byte[] rounds = repeated(samples(80), played.length / 80 + 1);
        assertArrayEquals(wave(Arrays.copyOf(rounds, played.length - 44)), played);
    }

    @Test
    public void bytesThatAreNoSoundAreAnError() {
        play(new byte[100], 0);
        play(new byte[0], -1);
        OS.Sound_Play(sound, null, 100, 0);
        byte[] file = wave(samples(80));
        OS.Sound_Play(sound, file, file.length + 1, 0);
        assertEquals(Collections.nCopies(4, "Sound_Play -3 null"), errors);
        assertEquals(0, SoundOutput.count());
        errors.clear();
    }

    @Test
    public void anErrorOnAnotherThreadReachesTheHandlerThere() throws Exception {
        together(
                Collections.singletonList(
                        () -> {
                            play(new byte[100], 0);
                            return null;
                        }));
        assertEquals(Collections.singletonList("Sound_Play -3 null"), errors);
        errors.clear();
    }

    @Test
    public void noSoundIsStoppedAndDisposedOf() {
        OS.Sound_Stop(0);
        OS.Sound_Dispose(0);
        OS.Sound_Stop(sound);
        OS.Sound_Stop(sound);
    }

    @Test
    public void soundsArePlayedWhole() {
        assertEquals(-1, OS.Sound_GetPreferredChunkSize(sound));
        assertEquals(-1, OS.Sound_GetPreferredChunkSize(0));
    }

    @Test
    public void aSoundIsStoppedByAnotherThread() throws Exception {
        byte[] file = wave(samples(80));
        Callable<Void> stop =
                () -> {
                    OS.Sound_Stop(sound);
                    return null;
                };
        for (int i = 0; i < 200; i++) {
            play(file, -1);
            together(Arrays.asList(stop, stop));
            assertEquals(0, SoundOutput.count());
        }
    }

    @Test
    public void soundsOfSeveralThreadsLiveSideBySide() throws Exception {
        byte[] file = wave(samples(80));
        Callable<Void> live =
                () -> {
                    for (int i = 0; i < 250; i++) {
                        int own = OS.Sound_New();
                        OS.Sound_Play(own, file, file.length, i % 4 - 1);
                        if (i % 2 == 0) OS.Sound_Stop(own);
                        OS.Sound_Dispose(own);
                    }
                    return null;
                };
        SoundOutput.record(false);
        together(Arrays.asList(live, live, live, live));
        assertEquals(0, SoundOutput.count());
    }

    @Test
    public void severalThreadsPlayAndStopOneSound() throws Exception {
        byte[] file = wave(samples(80));
        Callable<Void> use =
                () -> {
                    for (int i = 0; i < 250; i++) {
                        play(file, i % 3 - 1);
                        if (i % 5 == 0) OS.Sound_Stop(sound);
                    }
                    return null;
                };
        SoundOutput.record(false);
        together(Arrays.asList(use, use, use));
        OS.Sound_Stop(sound);
        assertEquals(0, SoundOutput.count());
    }
}
