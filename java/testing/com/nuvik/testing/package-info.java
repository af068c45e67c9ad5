/**
 * Tests of applications on the emulated device: start one, find its controls, do with them what a
 * person does, and look at what came of it. {@code docs/testing.md} is the way in.
 */
package com.nuvik.testing;
