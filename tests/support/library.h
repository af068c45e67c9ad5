#pragma once
// The library under test, as a Java VM and companion libraries see it: by its exports.

#include <string>
#include <windows.h>

// The loaded image, with the headers that it was linked with.
HMODULE theLibrary();

// An export of the library; fails the test and ends the program when there is none.
void* exportOf(const std::string& name);

// An entry point for companion libraries; Signature is a function type of the header's.
template <class Signature>
Signature* entryPoint(const std::string& name) {
    return reinterpret_cast<Signature*>(exportOf(name));
}
