#pragma once
// What a program of tests says when a fault ends it.

// Said too; the text must live until the next one is given. Null: nothing.
void sayWithFault(const char* text);
