#pragma once

// On a device with a stylus only: notes where the stylus touches windows of this thread.
void watchStylus();
